#include "schema/validate/subject.hpp"

#include "support/text_hash.hpp"

#include <cstdint>

namespace netxml {
Subject makeSubject(const XML_DOM_Node* node, const char* parentDefault) noexcept
{
    if (!node) return Subject{};
    const XML_DOM_NsDecl* own = node->firstNs ? ownDeclaration(node, nullptr) : nullptr;
    const char* inScope = own ? own->name : parentDefault;
    const char* namespaceName = node->nameSpace ? node->nameSpace->name : inScope;
    const auto address = reinterpret_cast<std::uintptr_t>(namespaceName);
    const std::uint32_t hash =
        textHash(orEmpty(node->name)) ^ static_cast<std::uint32_t>(address >> 4);
    return {node, namespaceName, inScope, hash};
}

const XML_DOM_Node* elementFrom(const XML_DOM_Node* node) noexcept
{
    while (node && node->type != XML_DOM_NODE_ELEMENT) node = node->nextSibling;
    return node;
}

}  // namespace netxml
