// Adding and deleting attributes.
#include "dom/link.hpp"
#include "dom/make.hpp"
#include "dom/namespace.hpp"
#include "dom/reclaim.hpp"
#include "netxml/parser.h"

#include <cstring>

namespace netxml {
namespace {

const char* nameOf(const XML_DOM_NsDecl* decl) noexcept
{
    return decl ? decl->name : "";
}

bool hasAttr(const XML_DOM_Node* element, const char* name, const char* namespaceName) noexcept
{
    for (const XML_DOM_Attr* attr = element->firstAttr; attr; attr = attr->next) {
        if (std::strcmp(attr->name, name) == 0 &&
            std::strcmp(nameOf(attr->nameSpace), namespaceName) == 0)
            return true;
    }
    return false;
}

}  // namespace
}  // namespace netxml

using namespace netxml;

XML_DOM_Attr* XML_DOM_AddAttrInner(XML_DOM_Node* element, const char* name, const char* value)
{
    if (!element || !name || !value) return nullptr;
    XML_DOM_Attr* attr = makeAttr(nullptr, name, value);
    if (!attr) return nullptr;
    markEdited(element);
    appendAttr(element, attr);
    return attr;
}

XML_DOM_Attr* XML_DOM_AddAttr(XML_DOM_Node* element, const char* prefix, const char* name,
                              const char* value)
{
    if (!element || !value || element->type != XML_DOM_NODE_ELEMENT) return nullptr;
    if (XML_CheckQName(name) != XML_RET_OK || std::strcmp(name, "xmlns") == 0) return nullptr;
    const XML_DOM_NsDecl* decl = nullptr;
    if (!isEmpty(prefix) && !(decl = findDeclaration(element, prefix))) return nullptr;
    if (hasAttr(element, name, nameOf(decl))) return nullptr;
    XML_DOM_Attr* attr = XML_DOM_AddAttrInner(element, name, value);
    if (attr) attr->nameSpace = decl;
    return attr;
}

void XML_DOM_DelAttr(XML_DOM_Node* element, const char* prefix, const char* name)
{
    if (!element || isEmpty(name)) return;
    XML_DOM_Attr* before = nullptr;
    for (XML_DOM_Attr* attr = element->firstAttr; attr; before = attr, attr = attr->next) {
        const char* bound = attr->nameSpace ? attr->nameSpace->prefix : nullptr;
        if (std::strcmp(attr->name, name) != 0 || XML_Strcmp(bound, prefix) != 0) continue;
        markEdited(element);
        unlinkAttr(element, before, attr);
        Reclaimer{}.attribute(attr);
        return;
    }
}
