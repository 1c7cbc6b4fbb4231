#include "xsd/declaration_text.hpp"

namespace netxml::xsd {
namespace {

constexpr std::size_t kLongestValue = 60;  // bytes; more is cut

std::string commentText(std::string_view text)
{
    std::string result;
    for (const char c : text.substr(0, kLongestValue)) {
        const bool delimits = c == '/' || c == '*';
        const bool afterOne = result.ends_with('/') || result.ends_with('*');
        if (delimits && afterOne) result += ' ';
        result += c >= 0x20 && c <= 0x7E && c != '\\' ? c : '.';
    }
    return text.size() > kLongestValue ? result + "..." : result;
}

}  // namespace

std::string declarationText(const SchemaNode& node)
{
    std::string text = "<" + node.name.local;
    for (const SchemaNode::Attribute& attribute : node.attributes)
        text +=
            " " + commentText(attribute.name.local) + "=\"" + commentText(attribute.value) + "\"";
    return text + ">";
}

}  // namespace netxml::xsd
