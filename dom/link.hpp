// Linking records into a tree and out of it. Nothing is checked here.
#pragma once

#include "dom/node.hpp"

namespace netxml {

// Links a detached record in at the end.
inline void appendChild(XML_DOM_Node* parent, XML_DOM_Node* child) noexcept
{
    child->parent = parent;
    if (parent->lastChild) parent->lastChild->nextSibling = child;
    else parent->firstChild = child;
    parent->lastChild = child;
}
inline void appendAttr(XML_DOM_Node* element, XML_DOM_Attr* attr) noexcept
{
    attr->owner = element;
    if (element->lastAttr) element->lastAttr->next = attr;
    else element->firstAttr = attr;
    element->lastAttr = attr;
}
inline void appendDecl(XML_DOM_Node* node, XML_DOM_NsDecl* decl) noexcept
{
    if (node->lastNs) node->lastNs->next = decl;
    else node->firstNs = decl;
    node->lastNs = decl;
}

// The sibling before a node that has a parent, or nullptr.
inline XML_DOM_Node* predecessorOf(const XML_DOM_Node* node) noexcept
{
    XML_DOM_Node* sibling = node->parent->firstChild;
    if (sibling == node) return nullptr;
    while (sibling->nextSibling != node) sibling = sibling->nextSibling;
    return sibling;
}

// Takes a node out of its parent.
inline void unlinkChild(const XML_DOM_Node* node) noexcept
{
    XML_DOM_Node* parent = node->parent;
    XML_DOM_Node* before = predecessorOf(node);
    if (before) before->nextSibling = node->nextSibling;
    else parent->firstChild = node->nextSibling;
    if (parent->lastChild == node) parent->lastChild = before;
}

// Takes an attribute out of its element; `before` precedes it, or is nullptr for the first.
inline void unlinkAttr(XML_DOM_Node* element, XML_DOM_Attr* before,
                       const XML_DOM_Attr* attr) noexcept
{
    if (before) before->next = attr->next;
    else element->firstAttr = attr->next;
    if (element->lastAttr == attr) element->lastAttr = before;
}

}  // namespace netxml
