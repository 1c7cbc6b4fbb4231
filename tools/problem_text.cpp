#include "problem_text.hpp"

#include "utf8_text.hpp"

namespace netxml::tool {
namespace {

const char* severityName(const Problem& problem)
{
    return problem.severity == Problem::Severity::Error ? "error" : "warning";
}

// A JSON string (RFC 8259, section 7). What is no UTF-8 becomes the replacement character.
std::string quoted(std::string_view text)
{
    std::string result = "\"";
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        if (character.code == '"' || character.code == '\\') {
            result += '\\';
            result += text[0];
        } else if (character.code < 0x20) {
            constexpr char kDigits[] = "0123456789abcdef";
            result += "\\u00";
            result += kDigits[character.code / 16];
            result += kDigits[character.code % 16];
        } else if (character.code == kNoCharacter) {
            appendCharacter(result, 0xFFFD);
        } else {
            result += text.substr(0, character.size);
        }
        text.remove_prefix(character.size);
    }
    return result + "\"";
}

}  // namespace

std::string textOf(const Problem& problem, const Palette& palette)
{
    std::string place = printable(problem.file) + ":";
    if (problem.line != 0)
        place += std::to_string(problem.line) + ":" + std::to_string(problem.column) + ":";
    const std::string severity = std::string{severityName(problem)} + ":";
    const bool error = problem.severity == Problem::Severity::Error;

    std::string text = palette.place(place) + " ";
    text += error ? palette.error(severity) : palette.warning(severity);
    text += ' ';
    text += printable(problem.message) + " [" + std::to_string(problem.code) + "]\n";
    if (problem.violation != 0)
        text += "  at " + printable(problem.path) + ", violation " +
                std::to_string(problem.violation) + "\n";
    if (problem.caretLine.empty()) return text;
    const std::size_t blanks = problem.caretLine.size() - 1;
    text += problem.sourceLine + "\n";
    return text + problem.caretLine.substr(0, blanks) + palette.caret("^") + "\n";
}

std::string jsonOf(const Problem& problem)
{
    const std::string validity = problem.violation == 0
                                     ? std::string{}
                                     : ",\"violation\":" + std::to_string(problem.violation) +
                                           ",\"path\":" + quoted(problem.path);
    return "{\"file\":" + quoted(problem.file) + ",\"line\":" + std::to_string(problem.line) +
           ",\"column\":" + std::to_string(problem.column) + ",\"severity\":\"" +
           severityName(problem) + "\",\"message\":" + quoted(problem.message) +
           ",\"code\":" + std::to_string(problem.code) + validity + "}\n";
}

}  // namespace netxml::tool
