#include "schema/validate/subject.hpp"

#include <cstdint>

namespace netxml {
namespace {

// For tables that only save time: collisions there cost a comparison.
std::uint32_t hashOf(const char* text, std::uint32_t hash) noexcept
{
    for (; *text != '\0'; ++text) hash = (hash ^ static_cast<std::uint8_t>(*text)) * 16777619u;
    return hash;
}

}  // namespace

Subject makeSubject(const XML_DOM_Node* node, const char* parentDefault) noexcept
{
    if (!node) return Subject{};
    const XML_DOM_NsDecl* own = node->firstNs ? ownDeclaration(node, nullptr) : nullptr;
    const char* inScope = own ? own->name : parentDefault;
    const char* namespaceName = node->nameSpace ? node->nameSpace->name : inScope;
    const std::uint32_t nameHash = hashOf(node->name, 2166136261u);
    return {node, namespaceName, inScope,
            nameHash ^
                static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(namespaceName) >> 4)};
}

const XML_DOM_Node* elementFrom(const XML_DOM_Node* node) noexcept
{
    while (node && node->type != XML_DOM_NODE_ELEMENT) node = node->nextSibling;
    return node;
}

}  // namespace netxml
