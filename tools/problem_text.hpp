// A problem as the lines that people read, or as a line of JSON.
#pragma once

#include "color.hpp"
#include "outcome.hpp"

#include <string>

namespace netxml::tool {

// "file:line:column: error: message [code]", for a violation "  at path, violation number", the
// source line and the caret.
std::string textOf(const Problem& problem, const Palette& palette);

// {"file":...,"line":...,"column":...,"severity":...,"message":...,"code":...}, and for a violation
// "violation":... and "path":... behind it.
std::string jsonOf(const Problem& problem);

}  // namespace netxml::tool
