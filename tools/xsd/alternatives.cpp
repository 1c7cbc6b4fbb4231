#include "xsd/alternatives.hpp"

#include <algorithm>

namespace netxml::xsd {

std::string alternativesOf(const std::vector<std::string>& expressions)
{
    std::string text;
    bool optional = false;
    for (const std::string& one : expressions) {
        if (one.empty()) optional = true;
        else text += (text.empty() ? "" : "|") + one;
    }
    return optional && !text.empty() ? "(" + text + ")?" : text;
}

std::string groupedAlternatives(const std::vector<std::string>& expressions)
{
    const std::string text = alternativesOf(expressions);
    const bool several =
        expressions.size() > 1 && std::none_of(expressions.begin(), expressions.end(),
                                               [](const std::string& one) { return one.empty(); });
    return several ? "(" + text + ")" : text;
}

}  // namespace netxml::xsd
