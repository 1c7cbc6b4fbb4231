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
    std::uint32_t hash;            // of name and namespace

    explicit operator bool() const noexcept { return node != nullptr; }
    const char* name() const noexcept { return orEmpty(node->name); }
};

// An element whose parent's default namespace is known. Namespaces are handed down so: looking each
// one up from below would cost the depth every time.
Subject makeSubject(const XML_DOM_Node* node, const char* parentDefault) noexcept;

// The first element from a node on, itself or a sibling behind it; nullptr when there is none.
const XML_DOM_Node* elementFrom(const XML_DOM_Node* node) noexcept;

}  // namespace netxml
