#include "xsd/value_pattern.hpp"

#include "markup.hpp"
#include "xsd/pattern_translation.hpp"

#include <algorithm>

namespace netxml::xsd {
namespace {

constexpr const char* kBlank = "[ \t\n\r]";
constexpr std::size_t kMostBytes = 3000;

std::string grouped(const std::string& expression)
{
    return "(" + expression + ")";
}

}  // namespace

std::string collapsed(std::string_view text)
{
    std::string result;
    for (const char c : text) {
        if (tool::kBlanks.find(c) == std::string_view::npos) result += c;
        else if (!result.empty() && result.back() != ' ') result += ' ';
    }
    while (result.ends_with(' ')) result.pop_back();
    return result;
}

std::string listExpression(const std::string& item, const std::string& count)
{
    return grouped(item) + "(" + kBlank + "+" + grouped(item) + ")" + count;
}

bool isTooLong(std::string_view expression)
{
    // In the encoding of trees a character may take twice as many.
    const auto beyondAscii = std::count_if(expression.begin(), expression.end(), [](char c) {
        return static_cast<unsigned char>(c) >= 0x80;
    });
    return expression.size() + static_cast<std::size_t>(beyondAscii) > kMostBytes;
}

FacetRecord patternFacet(const std::string& expression)
{
    return {SCHEMA_FACET_PATTERN, anchored(expression), SCHEMA_BUILTIN_STRING, true};
}

FacetRecord collapsedPatternFacet(const std::string& expression)
{
    const std::string blanks = std::string{kBlank} + "*";
    return patternFacet(blanks + grouped(expression) + blanks);
}

}  // namespace netxml::xsd
