#include "operation.h"

#include "tree.h"

#include <stddef.h>
#include <string.h>

static const char* const kNames[] = {"merge", "replace", "create", "delete", "remove", "none"};

Operation operationByName(const char* name)
{
    unsigned i = 0;
    while (i < OPERATION_UNKNOWN && XML_Strcmp(kNames[i], name) != 0) ++i;
    return (Operation)i;
}

Operation operationOf(const XML_DOM_Node* element, Operation inherited)
{
    const XML_DOM_Attr* attr = XML_DOM_GetFirstAttr(element);
    for (; attr; attr = XML_DOM_GetNextAttr(attr)) {
        const char* name = NULL;
        const char* namespaceName = NULL;
        XML_DOM_GetAttrNameSpace(attr, &name, &namespaceName);
        if (XML_Strcmp(namespaceName, BASE_NAMESPACE) == 0 && strcmp(name, "operation") == 0)
            return operationByName(XML_DOM_GetAttrValByHandle(attr));
    }
    return inherited;
}
