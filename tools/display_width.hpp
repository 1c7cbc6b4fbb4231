// How many cells of a terminal a character takes.
#pragma once

#include <cstdint>

namespace netxml::tool {

// 2 for wide characters (Chinese, Japanese, Korean, emoji), 0 for combining ones, else 1. A tab is
// not known here.
int cellsOf(std::uint32_t code);

}  // namespace netxml::tool
