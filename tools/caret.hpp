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

// The offset of a place; the end of the text, or of the line, when there is no such place.
std::size_t offsetOf(std::string_view text, Place place);

// Places of a text from its front to its end: together they take one pass.
class PlaceFinder {
public:
    explicit PlaceFinder(std::string_view text) : text_{text} {}

    // The place of an offset that is not below the one before.
    Place at(std::size_t offset);
    // The line of the latest place, without its end, and the offset of that place in it.
    std::string_view line();
    std::size_t offsetInLine() const;

private:
    std::string_view text_;
    Place place_;
    std::size_t at_ = 0;
    std::size_t lineBegin_ = 0;
    std::size_t lineEnd_ = std::string_view::npos;  // npos: not searched for yet
};

// Fills in the source line and the caret line for the problem's line and column in `text` (UTF-8).
// Both stay empty when the text has no such line.
void showPlace(Problem& problem, std::string_view text);

// A problem at a byte offset of `text`.
Problem problemAt(const std::string& file, std::string_view text, std::size_t offset,
                  std::string message, ToolCode code);

// A problem at the latest place of `finder`.
Problem problemAt(const std::string& file, PlaceFinder& finder, Place place, std::string message,
                  ToolCode code);

}  // namespace netxml::tool
