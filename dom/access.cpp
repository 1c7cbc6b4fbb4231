// Walking a tree and reading its records.
#include "dom/node.hpp"

#include <cstring>

namespace netxml {
namespace {

const char* firstChildValue(const XML_DOM_Node* node, XML_DOM_NodeType type) noexcept
{
    for (const XML_DOM_Node* child = node ? node->firstChild : nullptr; child;
         child = child->nextSibling) {
        if (child->type == type) return child->value;
    }
    return nullptr;
}

}  // namespace
}  // namespace netxml

XML_DOM_Node* XML_DOM_GetNodeParent(const XML_DOM_Node* node)
{
    return node ? node->parent : nullptr;
}

XML_DOM_Node* XML_DOM_GetFirstChild(const XML_DOM_Node* node)
{
    return node ? node->firstChild : nullptr;
}

XML_DOM_Node* XML_DOM_GetNextSibling(const XML_DOM_Node* node)
{
    return node ? node->nextSibling : nullptr;
}

XML_DOM_NodeType XML_DOM_GetNodeType(const XML_DOM_Node* node)
{
    return node ? node->type : 0;
}

const char* XML_DOM_GetNodeName(const XML_DOM_Node* node)
{
    return node ? node->name : nullptr;
}

const char* XML_DOM_GetNodeValue(const XML_DOM_Node* node)
{
    return node ? node->value : nullptr;
}

const char* XML_DOM_GetFirstTextChildValue(const XML_DOM_Node* node)
{
    return netxml::firstChildValue(node, XML_DOM_NODE_TEXT);
}

const char* XML_DOM_GetFirstCDataChildValue(const XML_DOM_Node* node)
{
    return netxml::firstChildValue(node, XML_DOM_NODE_CDATA);
}

XML_DOM_Attr* XML_DOM_GetFirstAttr(const XML_DOM_Node* node)
{
    return node ? node->firstAttr : nullptr;
}

XML_DOM_Attr* XML_DOM_GetNextAttr(const XML_DOM_Attr* attr)
{
    return attr ? attr->next : nullptr;
}

const char* XML_DOM_GetAttrValByHandle(const XML_DOM_Attr* attr)
{
    return attr ? attr->value : nullptr;
}

uint32_t XML_DOM_GetAttrNameSpace(const XML_DOM_Attr* attr, const char** name,
                                  const char** namespaceName)
{
    if (!attr || (!name && !namespaceName)) return XML_RET_FAIL;
    if (name) *name = attr->name;
    if (namespaceName) *namespaceName = attr->nameSpace ? attr->nameSpace->name : nullptr;
    return XML_RET_OK;
}

const char* XML_DOM_GetNodeAttrValByName(const XML_DOM_Node* node, const char* name)
{
    return XML_DOM_GetNodeNsAttribute(node, nullptr, name);
}

int XML_Strcmp(const char* a, const char* b)
{
    return std::strcmp(a ? a : "", b ? b : "");
}
