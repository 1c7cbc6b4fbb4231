/* What is to happen to an element of an edit: the attribute `operation` of RFC 6241, section 7.2.
 */
#ifndef AGENT_OPERATION_H
#define AGENT_OPERATION_H

#include <netxml/dom.h>

typedef enum Operation {
    OPERATION_MERGE,
    OPERATION_REPLACE,
    OPERATION_CREATE,
    OPERATION_DELETE,
    OPERATION_REMOVE,
    OPERATION_NONE, /* as a default only */
    OPERATION_UNKNOWN
} Operation;

/* OPERATION_UNKNOWN for any other text and for NULL. */
Operation operationByName(const char* name);

/* What the element says itself, or else what it inherits. */
Operation operationOf(const XML_DOM_Node* element, Operation inherited);

#endif
