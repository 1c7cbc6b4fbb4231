// Sets of characters as POSIX extended expressions over the bytes of a tree's encoding, GB18030.
#pragma once

#include "xsd/code_set.hpp"

#include <string>

namespace netxml::xsd {

struct PosixClass {
    std::string text;      // matches one character of the set; one atom, so a quantifier may follow
    std::string repeated;  // matches the same texts under "*" and "+", and is shorter; or empty
    unsigned positions;    // how many characters and brackets it has
    bool exact;            // false: matches all characters beyond ASCII instead of some of them
    bool nothing;          // the set is empty: `text` matches no text
};

PosixClass posixClass(const CodeSet& set);

// A text as an expression that matches it alone. Several characters are no atom.
std::string posixLiteral(std::string_view utf8);

// Any one character beyond ASCII: two bytes, or four of which the second is a digit.
inline constexpr const char* kBeyondAscii =
    "([^\001-\177][0-9][^\001-\177][0-9]|[^\001-\177][^0-9])";

}  // namespace netxml::xsd
