#include "xsd/value_pattern.hpp"

#include "markup.hpp"
#include "xsd/pattern_translation.hpp"

namespace netxml::xsd {
namespace {

constexpr const char* kBlank = "[ \t\n\r]";

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
