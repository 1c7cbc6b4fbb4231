// Regular expressions of XML Schema (part 2, appendix F) as POSIX extended ones.
#pragma once

#include <string>
#include <string_view>

namespace netxml::xsd {

struct TranslatedPattern {
    std::string expression;  // not anchored; may have alternatives at its top
    std::string mistake;     // why it could not be read; then the rest says nothing
    bool ascii = true;       // it matches no character beyond ASCII
    bool blanks = false;     // it matches texts with white space
    std::string difference;  // what it matches otherwise than the original; empty when nothing
};

TranslatedPattern translatePattern(std::string_view pattern);

// Matches whole values only. Parentheses are left out where they would change nothing, since the
// library has a faster way for simple expressions.
std::string anchored(const std::string& expression);

}  // namespace netxml::xsd
