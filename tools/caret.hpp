// The source line of a problem, cut to what a terminal shows, with a caret below the place.
#pragma once

#include "outcome.hpp"

#include <cstddef>
#include <string_view>

namespace netxml::tool {

struct Place {
    std::uint32_t line = 1;
    std::uint32_t column = 1;
};

// The place of a byte offset, by the parser's rule: a line feed ends a line, and so does a carriage
// return that no line feed follows; every other character is a column.
Place placeOf(std::string_view text, std::size_t offset);

// Fills in the source line and the caret line for the problem's line and column in `text` (UTF-8).
// Both stay empty when the text has no such line.
void showPlace(Problem& problem, std::string_view text);

// A problem at a byte offset of `text`.
Problem problemAt(const std::string& file, std::string_view text, std::size_t offset,
                  std::string message, ToolCode code);

}  // namespace netxml::tool
