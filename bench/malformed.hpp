// Documents that are not well-formed, each in one way: who refuses them checks for it.
#pragma once

#include <string_view>

namespace netxml::bench {

struct Malformed {
    const char* what;
    std::string_view text;
};

// clang-format off
inline constexpr Malformed kMalformed[] = {
    {"tags that do not match",                  "<a></b>"},
    {"a second document element",               "<a/><b/>"},
    {"text behind the document element",        "<a/>text"},
    {"a digit at the begin of a name",          "<a><1b/></a>"},
    {"a comma in a name",                       "<a,b></a,b>"},
    {"an attribute without quotes",             "<a b=c/>"},
    {"the same attribute twice",                "<a b=\"1\" b=\"2\"/>"},
    {"the same attribute by two prefixes",
     "<a xmlns:p=\"urn:u\" xmlns:q=\"urn:u\" p:b=\"1\" q:b=\"2\"/>"},
    {"a prefix without a declaration",          "<p:a/>"},
    {"`<` in an attribute",                     "<a b=\"<\"/>"},
    {"a control character in text",             "<a>\x01</a>"},
    {"bytes that are no UTF-8",                 "<a>\xFF\xFE</a>"},
    {"a surrogate in UTF-8",                    "<a>\xED\xA0\x80</a>"},
    {"a reference to nothing",                  "<a>&nothing;</a>"},
    {"a reference to character 0",              "<a>&#0;</a>"},
    {"`]]>` in text",                           "<a>]]></a>"},
    {"`--` in a comment",                       "<a><!-- -- --></a>"},
};
// clang-format on

}  // namespace netxml::bench
