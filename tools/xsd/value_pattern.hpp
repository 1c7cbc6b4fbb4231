// Patterns for whole values, and the white space of values.
#pragma once

#include "xsd/records.hpp"

#include <string>
#include <string_view>

namespace netxml::xsd {

// White space around it left out, and of that inside one blank.
std::string collapsed(std::string_view text);

// Items between white space; `count` is the quantifier of those behind the first.
std::string listExpression(const std::string& item, const std::string& count);

// Whether an expression has more bytes than C takes in one literal, with what may stand around it.
bool isTooLong(std::string_view expression);

FacetRecord patternFacet(const std::string& expression);
// The same with white space around the value. Of texts in elements the parser takes it away; in
// attributes it is part of the value, and does not count for most types.
FacetRecord collapsedPatternFacet(const std::string& expression);

}  // namespace netxml::xsd
