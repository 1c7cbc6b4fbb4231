// Declarations on elements, and the binding of names to them.
#include "dom/namespace.hpp"

#include "dom/link.hpp"
#include "dom/make.hpp"

#include <cstring>

namespace netxml {

constinit const XML_DOM_NsDecl kXmlDeclaration{nullptr, "xml", XML_NAMESPACE_XML, {0}};

XML_DOM_NsDecl* ownDeclaration(const XML_DOM_Node* node, const char* prefix) noexcept
{
    XML_DOM_NsDecl* decl = node->firstNs;
    while (decl && XML_Strcmp(decl->prefix, prefix) != 0) decl = decl->next;
    return decl;
}

const XML_DOM_NsDecl* findDeclaration(const XML_DOM_Node* start, const char* prefix) noexcept
{
    for (const XML_DOM_Node* node = start; node; node = node->parent) {
        if (const XML_DOM_NsDecl* decl = ownDeclaration(node, prefix)) return decl;
    }
    return XML_Strcmp(prefix, kXmlDeclaration.prefix) == 0 ? &kXmlDeclaration : nullptr;
}

namespace {

// The rule of the two checked functions: only the default namespace may have an empty name.
uint32_t declare(XML_DOM_Node* node, const char* prefix, const char* namespaceName,
                 uint16_t overwrite)
{
    if (!node) return XML_RET_FAIL;
    if (isEmpty(prefix)) prefix = nullptr;
    if (isEmpty(namespaceName)) {
        if (prefix) return XML_RET_FAIL;
        namespaceName = "";
    }
    return XML_DOM_AddNodeNameSpaceInner(node, prefix, namespaceName, overwrite);
}

// Finds what a prefix binds to; false when it is not empty and nothing declares it.
bool resolve(const XML_DOM_Node* from, const char* prefix, const XML_DOM_NsDecl*& decl)
{
    decl = isEmpty(prefix) ? nullptr : findDeclaration(from, prefix);
    return decl || isEmpty(prefix);
}

}  // namespace
}  // namespace netxml

using namespace netxml;

uint32_t XML_DOM_AddNodeNameSpace(XML_DOM_Node* node, const char* prefix, const char* namespaceName)
{
    return declare(node, prefix, namespaceName, 0);
}

uint32_t XML_DOM_SetNodeDefineNsVal(XML_DOM_Node* node, const char* prefix,
                                    const char* namespaceName)
{
    return declare(node, prefix, namespaceName, 1);
}

uint32_t XML_DOM_AddNodeNameSpaceInner(XML_DOM_Node* node, const char* prefix,
                                       const char* namespaceName, uint16_t overwrite)
{
    if (!node || !namespaceName) return XML_RET_FAIL;
    if (XML_DOM_NsDecl* decl = ownDeclaration(node, prefix)) {
        if (overwrite == 0) return XML_RET_FAIL;
        if (std::strcmp(decl->name, namespaceName) == 0) return XML_RET_OK;
        markEdited(decl);
        return replaceString(decl->name, decl->home, Home::kSecondString, namespaceName)
                   ? XML_RET_OK
                   : XML_RET_FAIL;
    }
    XML_DOM_NsDecl* decl = makeDecl(nullptr, viewOf(prefix), namespaceName);
    if (!decl) return XML_RET_FAIL;
    markEdited(node);
    appendDecl(node, decl);
    return XML_RET_OK;
}

uint32_t XML_DOM_SetNodeNameSpace(XML_DOM_Node* element, const char* prefix)
{
    const XML_DOM_NsDecl* decl = nullptr;
    if (!element || element->type != XML_DOM_NODE_ELEMENT || !resolve(element, prefix, decl))
        return XML_RET_FAIL;
    element->nameSpace = decl;
    return XML_RET_OK;
}

uint32_t XML_DOM_SetAttrNsInner(XML_DOM_Attr* attr, const char* prefix)
{
    const XML_DOM_NsDecl* decl = nullptr;
    if (!attr || !resolve(attr->owner, prefix, decl)) return XML_RET_FAIL;
    attr->nameSpace = decl;
    return XML_RET_OK;
}

uint32_t XML_DOM_GetNodeNameSpace(const XML_DOM_Node* node, const char** prefix,
                                  const char** namespaceName)
{
    if (!node || (!prefix && !namespaceName)) return XML_RET_FAIL;
    const XML_DOM_NsDecl* decl = node->nameSpace ? node->nameSpace : findDeclaration(node, nullptr);
    if (prefix) *prefix = decl ? decl->prefix : nullptr;
    if (namespaceName) *namespaceName = decl ? decl->name : nullptr;
    return XML_RET_OK;
}

// Kept: without a prefix an attribute is looked for in its element's default namespace.
const char* XML_DOM_GetNodeNsAttribute(const XML_DOM_Node* node, const char* namespaceName,
                                       const char* name)
{
    if (!node || !name) return nullptr;
    for (const XML_DOM_Attr* attr = node->firstAttr; attr; attr = attr->next) {
        if (std::strcmp(attr->name, name) != 0) continue;
        if (!namespaceName) return attr->value;
        const char* prefix = attr->nameSpace ? attr->nameSpace->prefix : nullptr;
        const XML_DOM_NsDecl* decl = findDeclaration(attr->owner, prefix);
        if (decl && std::strcmp(decl->name, namespaceName) == 0) return attr->value;
    }
    return nullptr;
}
