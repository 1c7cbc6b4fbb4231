#include "edit_check.h"

#include "model.h"
#include "rpc_error.h"
#include "tree.h"

#include <string.h>

/* An element that the model does not have in this place. */
static bool refuseUnknown(XML_DOM_Node** error, const XML_DOM_Node* element)
{
    const char* namespaceName = namespaceOf(element);
    const bool foreign = strcmp(namespaceName, SYSTEM_NAMESPACE) != 0;
    return refuse(error, &(RpcError){.type = "application",
                                     .tag = foreign ? "unknown-namespace" : "unknown-element",
                                     .node = element,
                                     .message = "The configuration has no such element here.",
                                     .badElement = badElementOf(element),
                                     .badNamespace = foreign ? namespaceName : NULL});
}

static bool refuseElement(XML_DOM_Node** error, const XML_DOM_Node* element, const char* message)
{
    return refuse(error, &(RpcError){.type = "application",
                                     .tag = "bad-element",
                                     .node = element,
                                     .message = message,
                                     .badElement = badElementOf(element)});
}

/* The only attribute is `operation`, in NETCONF's namespace, with one of five values; and only in
 * an edit. */
static bool checkAttribute(const XML_DOM_Node* element, const XML_DOM_Attr* attr, bool operations,
                           XML_DOM_Node** error)
{
    const char* name = NULL;
    const char* namespaceName = NULL;
    XML_DOM_GetAttrNameSpace(attr, &name, &namespaceName);
    const bool known = operations && XML_Strcmp(namespaceName, BASE_NAMESPACE) == 0 &&
                       strcmp(name, "operation") == 0;
    if (known && operationByName(XML_DOM_GetAttrValByHandle(attr)) < OPERATION_NONE) return true;
    return refuse(error, &(RpcError){.type = known ? "protocol" : "application",
                                     .tag = known ? "bad-attribute" : "unknown-attribute",
                                     .node = element,
                                     .message = known ? "There is no such operation."
                                                      : "The configuration has no attributes.",
                                     .badAttribute = {name, namespaceName},
                                     .badElement = badElementOf(element)});
}

static bool checkAttributes(const XML_DOM_Node* element, bool operations, XML_DOM_Node** error)
{
    const XML_DOM_Attr* attr = XML_DOM_GetFirstAttr(element);
    while (attr && checkAttribute(element, attr, operations, error))
        attr = XML_DOM_GetNextAttr(attr);
    return !attr;
}

/* Either elements or a text, as the model has it. */
static bool checkContent(const ModelRow* row, const XML_DOM_Node* element, XML_DOM_Node** error)
{
    const XML_DOM_Node* child = XML_DOM_GetFirstChild(element);
    for (; child; child = XML_DOM_GetNextSibling(child)) {
        if (isElement(child) == modelHoldsElements(row)) continue;
        return isElement(child) ? refuseUnknown(error, child)
                                : refuseElement(error, element, "Text has no place here.");
    }
    return true;
}

/* An entry of a list says which one it is. */
static bool checkKey(const ModelRow* row, const XML_DOM_Node* element, XML_DOM_Node** error)
{
    if (row->kind != MODEL_LIST || childNamed(element, row->key)) return true;
    return refuse(error, &(RpcError){.type = "application",
                                     .tag = "missing-element",
                                     .node = element,
                                     .message = "An entry of a list needs its key.",
                                     .badElement = {row->key, SYSTEM_NAMESPACE}});
}

/* Whether the element stands where there may be only one, behind another one. Several <system> in
 * one <config> are edits that follow one another. */
static bool isRepeated(const ModelRow* row, const XML_DOM_Node* element)
{
    if (modelIsMany(row) || modelParent(row) == modelTop()) return false;
    return childNamed(XML_DOM_GetNodeParent(element), row->name) != element;
}

static bool checkElement(const ModelRow* row, const XML_DOM_Node* element, bool operations,
                         XML_DOM_Node** error)
{
    if (!row) return refuseUnknown(error, element);
    if (isRepeated(row, element))
        return refuseElement(error, element, "This element stands here twice.");
    return checkAttributes(element, operations, error) && checkContent(row, element, error) &&
           checkKey(row, element, error);
}

bool editCheck(const XML_DOM_Node* config, bool operations, XML_DOM_Node** error)
{
    const XML_DOM_Node* element = firstElement(config);
    const ModelRow* parent = modelTop();
    while (element) {
        const ModelRow* row = modelChild(parent, element);
        if (!checkElement(row, element, operations, error)) return false;
        const XML_DOM_Node* next = firstElement(element);
        if (next) parent = row;
        else next = nextElement(element);
        /* Up again, to where there is a next one; the model goes along. */
        while (!next && (element = XML_DOM_GetNodeParent(element)) != config) {
            parent = modelParent(parent);
            next = nextElement(element);
        }
        element = next;
    }
    return true;
}
