#include "schema/validate/namespace_match.hpp"

#include "support/text.hpp"

namespace netxml {
namespace {

constexpr char kAny[] = "##any";
constexpr char kOther[] = "##other";

bool isListed(const char* name, const char* list) noexcept
{
    const std::size_t size = std::strlen(name);
    for (;;) {
        const char* space = std::strchr(list, ' ');
        const std::size_t item = space ? static_cast<std::size_t>(space - list) : std::strlen(list);
        if (item != 0 && item == size && std::memcmp(list, name, size) == 0) return true;
        if (!space) return false;
        list = space + 1;
    }
}

}  // namespace

// Kept: a document's own namespace "##any" satisfies every constraint.
bool namespaceMatches(const char* name, const char* constraint, const char* target) noexcept
{
    name = orEmpty(name);
    constraint = orEmpty(constraint);
    if (*constraint != '#' && *name != '#') {  // as most are
        if (std::strcmp(name, constraint) == 0) return !std::strchr(constraint, ' ');
        return std::strchr(constraint, ' ') && isListed(name, constraint);
    }
    if (std::strcmp(constraint, kAny) == 0 || std::strcmp(name, kAny) == 0) return true;
    if (std::strcmp(constraint, kOther) == 0) return *name != '\0' && !sameText(name, target);
    if (std::strchr(constraint, ' ')) return isListed(name, constraint);
    return std::strcmp(name, constraint) == 0;
}

}  // namespace netxml
