// Looking prefixes up in a tree.
#pragma once

#include "dom/node.hpp"
#include "support/text.hpp"

namespace netxml {

// The declaration that binds `xml` where nothing else does. Never part of a list, never freed.
extern constinit const XML_DOM_NsDecl kXmlDeclaration;

// The declaration of the prefix on this node alone, or nullptr. NULL is the empty prefix.
XML_DOM_NsDecl* ownDeclaration(const XML_DOM_Node* node, const char* prefix) noexcept;

// The declaration of the prefix in scope of a node: the nearest one, else the built-in one for
// `xml`, else nullptr. `start` may be nullptr.
const XML_DOM_NsDecl* findDeclaration(const XML_DOM_Node* start, const char* prefix) noexcept;

}  // namespace netxml
