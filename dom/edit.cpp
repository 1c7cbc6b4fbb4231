// Linking nodes and changing what they hold.
#include "dom/link.hpp"
#include "dom/make.hpp"
#include "netxml/parser.h"

using namespace netxml;

uint32_t XML_DOM_AddChildNode(XML_DOM_Node* parent, XML_DOM_Node* child)
{
    if (!parent || !child || parent->type != XML_DOM_NODE_ELEMENT) return XML_RET_FAIL;
    if (child->parent || child->document) return XML_RET_FAIL;
    markEdited(parent);
    markEdited(child);
    appendChild(parent, child);
    return XML_RET_OK;
}

// Kept: the new node's kind, parent and document are not looked at.
uint32_t XML_DOM_InsertBeforeNode(XML_DOM_Node* reference, XML_DOM_Node* node)
{
    if (!reference || !node || !reference->parent) return XML_RET_FAIL;
    markEdited(reference->parent);
    markEdited(reference);
    markEdited(node);
    XML_DOM_Node* before = predecessorOf(reference);
    if (before) before->nextSibling = node;
    else reference->parent->firstChild = node;
    node->nextSibling = reference;
    node->parent = reference->parent;
    return XML_RET_OK;
}

uint32_t XML_DOM_SetNodeValue(XML_DOM_Node* node, const char* value)
{
    if (!node || !value || *value == '\0') return XML_RET_FAIL;
    if (node->type != XML_DOM_NODE_TEXT && node->type != XML_DOM_NODE_CDATA) return XML_RET_FAIL;
    markEdited(node);
    const bool done = replaceString(node->value, node->home, Home::kSecondString, value);
    return done ? XML_RET_OK : XML_RET_FAIL;
}

uint32_t XML_DOM_SetNodeName(XML_DOM_Node* node, const char* name)
{
    if (!node || !name || node->type != XML_DOM_NODE_ELEMENT) return XML_RET_FAIL;
    if (XML_CheckQName(name) != XML_RET_OK) return XML_RET_FAIL;
    markEdited(node);
    const bool done = replaceString(node->name, node->home, Home::kFirstString, name);
    return done ? XML_RET_OK : XML_RET_FAIL;
}
