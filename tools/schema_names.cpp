#include "schema_names.hpp"

#include <cstddef>

namespace netxml::tool {
namespace {

bool isListed(std::string_view name, std::string_view list)
{
    while (!list.empty()) {
        const std::size_t blank = list.find(' ');
        const std::string_view item = list.substr(0, blank);
        if (!item.empty() && item == name) return true;
        if (blank == std::string_view::npos) break;
        list.remove_prefix(blank + 1);
    }
    return false;
}

}  // namespace

bool namespaceMatches(const char* name, const char* constraint, const char* target)
{
    constexpr std::string_view kAny = "##any";
    const std::string_view given = textOrEmpty(name);
    const std::string_view wanted = textOrEmpty(constraint);
    if (wanted == kAny || given == kAny) return true;
    if (wanted == "##other") return !given.empty() && given != textOrEmpty(target);
    if (wanted.find(' ') != std::string_view::npos) return isListed(given, wanted);
    return given == wanted;
}

bool standsFor(const Schema_ElementDecl& decl, const Schema_ElementDecl& head)
{
    return decl.substitutionGroupName &&
           textOrEmpty(decl.substitutionGroupName) == textOrEmpty(head.name) &&
           textOrEmpty(decl.substitutionGroupNamespace) == textOrEmpty(head.namespaceName);
}

}  // namespace netxml::tool
