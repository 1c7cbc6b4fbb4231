// Alternatives of POSIX extended expressions.
#pragma once

#include <string>
#include <vector>

namespace netxml::xsd {

// "a|b". An empty one makes the others optional: "(a|b)?".
std::string alternativesOf(const std::vector<std::string>& expressions);

// The same in parentheses where there are several, so that something may follow.
std::string groupedAlternatives(const std::vector<std::string>& expressions);

}  // namespace netxml::xsd
