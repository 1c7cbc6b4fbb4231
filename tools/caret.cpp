#include "caret.hpp"

#include "display_width.hpp"
#include "utf8_text.hpp"

#include <algorithm>

namespace netxml::tool {
namespace {

constexpr int kCells = 100;       // of a source line that are shown
constexpr int kCellsBefore = 60;  // of these in front of the place, unless the line ends early
constexpr int kTabCells = 8;      // at most
constexpr std::string_view kCut = "...";

bool endsLine(std::string_view text, std::size_t at)
{
    if (text[at] == '\n') return true;
    return text[at] == '\r' && (at + 1 == text.size() || text[at + 1] != '\n');
}

std::size_t lineBegin(std::string_view text, std::uint32_t line)
{
    std::size_t at = 0;
    for (std::uint32_t passed = 1; passed < line; ++passed) {
        at = text.find_first_of("\r\n", at);
        while (at != std::string_view::npos && !endsLine(text, at))
            at = text.find_first_of("\r\n", at + 1);
        if (at == std::string_view::npos) return at;
        ++at;
    }
    return at;
}

std::size_t lineEnd(std::string_view text, std::size_t begin)
{
    const std::size_t end = text.find_first_of("\r\n", begin);
    return end == std::string_view::npos ? text.size() : end;
}

std::size_t columnOffset(std::string_view line, std::uint32_t column)
{
    std::size_t at = 0;
    for (std::uint32_t passed = 1; passed < column && at < line.size(); ++passed) {
        ++at;
        while (at < line.size() && continuesCharacter(line[at])) ++at;
    }
    return at;
}

int cellsAt(std::string_view line, std::size_t at)
{
    const Character character = firstCharacter(line.substr(at));
    if (character.code == '\t') return kTabCells;
    return character.code == kNoCharacter ? 1 : cellsOf(character.code);
}

// The part of a line that is shown: grown in front of the place, then behind it, then in front
// again with what is left.
class Window {
public:
    Window(std::string_view line, std::size_t place) : line_{line}, begin_{place}, end_{place}
    {
        growBack(kCellsBefore);
        growForth(kCells);
        growBack(kCells);
    }
    std::size_t begin() const { return begin_; }
    std::size_t end() const { return end_; }

private:
    void growBack(int most)
    {
        while (begin_ != 0) {
            std::size_t previous = begin_ - 1;
            while (previous != 0 && continuesCharacter(line_[previous])) --previous;
            if (!take(cellsAt(line_, previous), most)) return;
            begin_ = previous;
        }
    }
    void growForth(int most)
    {
        while (end_ != line_.size()) {
            if (!take(cellsAt(line_, end_), most)) return;
            end_ += firstCharacter(line_.substr(end_)).size;
        }
    }
    bool take(int cells, int most)
    {
        if (used_ + cells > most) return false;
        used_ += cells;
        return true;
    }

    std::string_view line_;
    std::size_t begin_;
    std::size_t end_;
    int used_ = 0;
};

// Blanks as wide as `text`; tabs stay tabs, so they are as wide whatever the terminal makes of
// them.
std::string blanksFor(std::string_view text)
{
    std::string blanks;
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        if (character.code == '\t') blanks += '\t';
        else blanks.append(static_cast<std::size_t>(cellsOf(character.code)), ' ');
        text.remove_prefix(character.size);
    }
    return blanks;
}

void showInLine(Problem& problem, std::string_view line, std::size_t place)
{
    const Window window{line, place};
    const bool cutFront = window.begin() != 0;

    const std::string before = printable(line.substr(window.begin(), place - window.begin()));
    problem.sourceLine = cutFront ? kCut : std::string_view{};
    problem.sourceLine += before + printable(line.substr(place, window.end() - place));
    if (window.end() != line.size()) problem.sourceLine += kCut;
    problem.caretLine.assign(cutFront ? kCut.size() : 0, ' ');
    problem.caretLine += blanksFor(before) + "^";
}

Problem problemOf(const std::string& file, Place place, std::string message, ToolCode code)
{
    Problem problem;
    problem.file = file;
    problem.line = place.line;
    problem.column = place.column;
    problem.message = std::move(message);
    problem.code = static_cast<std::uint32_t>(code);
    return problem;
}

}  // namespace

Place PlaceFinder::at(std::size_t offset)
{
    for (; at_ < offset && at_ < text_.size(); ++at_) {
        if (endsLine(text_, at_)) {
            ++place_.line;
            place_.column = 1;
            lineBegin_ = at_ + 1;
            lineEnd_ = std::string_view::npos;
        } else if (!continuesCharacter(text_[at_])) {
            ++place_.column;
        }
    }
    return place_;
}

std::string_view PlaceFinder::line()
{
    if (lineEnd_ == std::string_view::npos) lineEnd_ = tool::lineEnd(text_, lineBegin_);
    return text_.substr(lineBegin_, lineEnd_ - lineBegin_);
}

std::size_t PlaceFinder::offsetInLine() const
{
    return at_ - lineBegin_;
}

Place placeOf(std::string_view text, std::size_t offset)
{
    return PlaceFinder{text}.at(offset);
}

std::size_t offsetOf(std::string_view text, Place place)
{
    const std::size_t begin = lineBegin(text, place.line);
    if (begin == std::string_view::npos || begin > text.size()) return text.size();
    const std::string_view line = text.substr(begin, lineEnd(text, begin) - begin);
    return begin + columnOffset(line, place.column);
}

void showPlace(Problem& problem, std::string_view text)
{
    const std::size_t begin =
        problem.line == 0 ? std::string_view::npos : lineBegin(text, problem.line);
    if (begin == std::string_view::npos || begin > text.size()) return;
    const std::string_view line = text.substr(begin, lineEnd(text, begin) - begin);
    showInLine(problem, line, columnOffset(line, problem.column));
}

Problem problemAt(const std::string& file, std::string_view text, std::size_t offset,
                  std::string message, ToolCode code)
{
    Problem problem = problemOf(file, placeOf(text, offset), std::move(message), code);
    showPlace(problem, text);
    return problem;
}

Problem problemAt(const std::string& file, PlaceFinder& finder, Place place, std::string message,
                  ToolCode code)
{
    Problem problem = problemOf(file, place, std::move(message), code);
    const std::string_view line = finder.line();
    showInLine(problem, line, std::min(finder.offsetInLine(), line.size()));
    return problem;
}

}  // namespace netxml::tool
