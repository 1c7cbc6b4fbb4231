// Which namespaces a constraint admits.
#include "schema/validate/namespace_match.hpp"

#include <gtest/gtest.h>

namespace {

struct MatchCase {
    const char* why;
    const char* name;
    const char* constraint;
    const char* target;
    bool matches;
};

// clang-format off
constexpr MatchCase kMatches[] = {
    // why                                        name       constraint     target    matches
    {"the same",                                  "u:a",     "u:a",         nullptr,  true},
    {"another",                                   "u:a",     "u:b",         nullptr,  false},
    {"none and none",                             nullptr,   nullptr,       nullptr,  true},
    {"none is the empty one",                     "",        nullptr,       nullptr,  true},
    {"none where one must be",                    nullptr,   "u:a",         nullptr,  false},
    {"one where none may be",                     "u:a",     nullptr,       nullptr,  false},
    {"first of a list",                           "u:a",     "u:a u:b",     nullptr,  true},
    {"last of a list",                            "u:b",     "u:a u:b",     nullptr,  true},
    {"none of a list",                            "u:c",     "u:a u:b",     nullptr,  false},
    {"the beginning of an item",                  "u:",      "u:a u:b",     nullptr,  false},
    {"the empty one is no item",                  "",        "u:a  u:b",    nullptr,  false},
    {"a list is not one name",                    "u:a u:b", "u:a u:b",     nullptr,  false},
    {"any",                                       "u:a",     "##any",       nullptr,  true},
    {"any, and none",                             nullptr,   "##any",       nullptr,  true},
    {"a document's own ##any (Kept)",             "##any",   "u:a",         nullptr,  true},
    {"a document's own ##any, and none (Kept)",   "##any",   nullptr,       nullptr,  true},
    {"other than the target",                     "u:a",     "##other",     "u:b",    true},
    {"not other than the target",                 "u:a",     "##other",     "u:a",    false},
    {"other, without a target",                   "u:a",     "##other",     nullptr,  true},
    {"none is not other",                         nullptr,   "##other",     "u:b",    false},
    {"what only begins like a word",              "#a",      "#a",          nullptr,  true},
    {"and is another",                            "#a",      "#b",          nullptr,  false},
    {"and a plain one",                           "u:a",     "#a",          nullptr,  false},
    {"a plain one in a list with such",           "u:a",     "#a u:a",      nullptr,  true},
    {"such a one in a list",                      "#a",      "u:a #a",      nullptr,  true},
    {"such a one not in a list",                  "#a",      "u:a u:b",     nullptr,  false},
    {"such a one for a plain one",                "#a",      "u:a",         nullptr,  false},
    {"other in a list is no word",                "u:a",     "##other u:b", "u:c",    false},
};
// clang-format on

TEST(NamespaceMatch, SaysWhatAConstraintAdmits)
{
    for (const MatchCase& row : kMatches)
        EXPECT_EQ(netxml::namespaceMatches(row.name, row.constraint, row.target), row.matches)
            << row.why;
}

}  // namespace
