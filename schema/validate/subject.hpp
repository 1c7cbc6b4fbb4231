// An element of the document with what every rule asks of it: its name and namespace.
#pragma once

#include "dom/namespace.hpp"
#include "support/text.hpp"

#include <cstdint>

namespace netxml {

struct Subject {
    const XML_DOM_Node* node;      // nullptr: there is none
    const char* namespaceName;     // nullptr: none
    const char* defaultNamespace;  // in scope of the element; nullptr: none

    explicit operator bool() const noexcept { return node != nullptr; }
    const char* name() const noexcept { return orEmpty(node->name); }
    std::uint32_t hash() const noexcept;  // of name and namespace
};

// An element whose parent's default namespace is known. Namespaces are handed down so: looking each
// one up from below would cost the depth every time.
inline Subject makeSubject(const XML_DOM_Node* node, const char* parentDefault) noexcept
{
    if (!node) return Subject{};
    const XML_DOM_NsDecl* own = node->firstNs ? ownDeclaration(node, nullptr) : nullptr;
    const char* inScope = own ? own->name : parentDefault;
    return {node, node->nameSpace ? node->nameSpace->name : inScope, inScope};
}

// The first element from a node on, itself or a sibling behind it; nullptr when there is none.
inline const XML_DOM_Node* elementFrom(const XML_DOM_Node* node) noexcept
{
    while (node && node->type != XML_DOM_NODE_ELEMENT) node = node->nextSibling;
    return node;
}

// The next element behind a subject, which has the same parent.
inline Subject nextSubject(const Subject& subject, const char* parentDefault) noexcept
{
    return makeSubject(elementFrom(subject.node->nextSibling), parentDefault);
}

}  // namespace netxml
