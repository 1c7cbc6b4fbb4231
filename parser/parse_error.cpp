#include "parser/parse_error.hpp"

#include <cstddef>

namespace netxml {
namespace {

struct Message {
    std::uint32_t code;
    const char* text;
};

// Searched in this order; the last row stands for every other code.
// Kept: code 38 has no full stop, 1500 a capital inside, and no rule gives 41.
// clang-format off
constexpr Message kMessages[] = {
    {2,     "memory allocation failed."},
    {72,    "start tag expected, '<' not found."},
    {4,     "document is empty."},
    {5,     "extra content at the end of the document."},
    {9,     "invalid character."},
    {32,    "unsupported encoding."},
    {33,    "string not started expecting \" or '."},
    {34,    "string not closed expecting \" or '."},
    {45,    "comment not terminated."},
    {46,    "no target name."},
    {47,    "expecting an end tag for style-sheet."},
    {57,    "parsing XML declaration: '?>' expected."},
    {61,    "DOCTYPE improperly terminated."},
    {65,    "expecting a space."},
    {25,    "expecting a ';'."},
    {75,    "expecting a '='."},
    {78,    "standalone accepts only yes or no."},
    {80,    "comment must not contain '--' (double-hyphen)."},
    {96,    "missing version in text declaration."},
    {97,    "unsupported version."},
    {42,    "attribute redefined."},
    {41,    "attribute without value."},
    {63,    "CData not finished."},
    {1,     "internal error."},
    {68,    "name required."},
    {35,    "namespace declare error."},
    {76,    "tag name mismatch."},
    {77,    "tag not finished."},
    {26,    "undeclared entity."},
    {62,    "sequence ']]>' not allowed in content."},
    {201,   "namespace prefix is not defined."},
    {1500,  "transition IO stream enCoding error."},
    {38,    "unescaped '<' not allowed in attributes values"},
    {65535, "unknown error occurred."},
};
// clang-format on
constexpr std::size_t kKnownMessages = sizeof kMessages / sizeof *kMessages - 1;
static_assert(kKnownMessages == 33);

}  // namespace

const char* messageOf(ParseError error) noexcept
{
    std::size_t row = 0;
    while (row < kKnownMessages && kMessages[row].code != static_cast<std::uint32_t>(error)) ++row;
    return kMessages[row].text;
}

}  // namespace netxml
