#include "model.h"

#include "tree.h"

#include <stddef.h>
#include <string.h>

/* clang-format off */
enum {
    CONFIGURATION, SYSTEM, HOSTNAME, CONTACT, NAME_SERVER,
    INTERFACES, INTERFACE, INTERFACE_NAME, DESCRIPTION, MTU, ENABLED, ADDRESS, IP, PREFIX_LENGTH,
    USERS, USER, USER_NAME, FULL_NAME, ROLE,
    ROW_COUNT
};

/* The order of rows with the same parent is that of system.xsd. */
static const ModelRow kRows[ROW_COUNT] = {
    [CONFIGURATION]  = {-1,            "configuration", MODEL_CONTAINER, NULL},
    [SYSTEM]         = {CONFIGURATION, "system",        MODEL_CONTAINER, NULL},
    [HOSTNAME]       = {SYSTEM,        "hostname",      MODEL_LEAF,      NULL},
    [CONTACT]        = {SYSTEM,        "contact",       MODEL_LEAF,      NULL},
    [NAME_SERVER]    = {SYSTEM,        "name-server",   MODEL_LEAF_LIST, NULL},
    [INTERFACES]     = {SYSTEM,        "interfaces",    MODEL_CONTAINER, NULL},
    [INTERFACE]      = {INTERFACES,    "interface",     MODEL_LIST,      "name"},
    [INTERFACE_NAME] = {INTERFACE,     "name",          MODEL_LEAF,      NULL},
    [DESCRIPTION]    = {INTERFACE,     "description",   MODEL_LEAF,      NULL},
    [MTU]            = {INTERFACE,     "mtu",           MODEL_LEAF,      NULL},
    [ENABLED]        = {INTERFACE,     "enabled",       MODEL_LEAF,      NULL},
    [ADDRESS]        = {INTERFACE,     "address",       MODEL_LIST,      "ip"},
    [IP]             = {ADDRESS,       "ip",            MODEL_LEAF,      NULL},
    [PREFIX_LENGTH]  = {ADDRESS,       "prefix-length", MODEL_LEAF,      NULL},
    [USERS]          = {SYSTEM,        "users",         MODEL_CONTAINER, NULL},
    [USER]           = {USERS,         "user",          MODEL_LIST,      "name"},
    [USER_NAME]      = {USER,          "name",          MODEL_LEAF,      NULL},
    [FULL_NAME]      = {USER,          "full-name",     MODEL_LEAF,      NULL},
    [ROLE]           = {USER,          "role",          MODEL_LEAF,      NULL},
};
/* clang-format on */

const ModelRow* modelTop(void)
{
    return &kRows[CONFIGURATION];
}

const ModelRow* modelParent(const ModelRow* row)
{
    return row->parent < 0 ? NULL : &kRows[row->parent];
}

const ModelRow* modelChild(const ModelRow* parent, const XML_DOM_Node* element)
{
    const int wanted = (int)(parent - kRows);
    if (strcmp(namespaceOf(element), SYSTEM_NAMESPACE) != 0) return NULL;
    for (const ModelRow* row = kRows; row != kRows + ROW_COUNT; ++row)
        if (row->parent == wanted && strcmp(row->name, XML_DOM_GetNodeName(element)) == 0)
            return row;
    return NULL;
}

const ModelRow* modelNextBelow(const ModelRow* parent, const ModelRow* row)
{
    const int wanted = (int)(parent - kRows);
    for (row = row ? row + 1 : kRows; row != kRows + ROW_COUNT; ++row)
        if (row->parent == wanted) return row;
    return NULL;
}

unsigned modelNumber(const ModelRow* row)
{
    return (unsigned)(row - kRows);
}

unsigned modelDepth(const ModelRow* row)
{
    unsigned depth = 0;
    while ((row = modelParent(row))) ++depth;
    return depth;
}

bool modelHoldsElements(const ModelRow* row)
{
    return row->kind == MODEL_CONTAINER || row->kind == MODEL_LIST;
}

bool modelIsMany(const ModelRow* row)
{
    return row->kind == MODEL_LIST || row->kind == MODEL_LEAF_LIST;
}

/* The text of a child. All there is has one namespace by now, so the name is enough. */
static const char* keyOf(const XML_DOM_Node* element, const char* key)
{
    const XML_DOM_Node* child = firstElement(element);
    while (child && strcmp(XML_DOM_GetNodeName(child), key) != 0) child = nextElement(child);
    return textOf(child);
}

const char* modelIdentity(const ModelRow* row, const XML_DOM_Node* element)
{
    if (row->kind == MODEL_LIST) return keyOf(element, row->key);
    return row->kind == MODEL_LEAF_LIST ? textOf(element) : "";
}

/* The first of an element and its following siblings that the model has. */
static XML_DOM_Node* knownFrom(XML_DOM_Node* element, const ModelRow* parent, const ModelRow** row)
{
    while (element && !(*row = modelChild(parent, element))) element = nextElement(element);
    return element;
}

XML_DOM_Node* modelNext(const XML_DOM_Node* top, const XML_DOM_Node* element, const ModelRow** row)
{
    const ModelRow* parent = *row;
    XML_DOM_Node* next = knownFrom(firstElement(element), parent, row);
    while (!next && element != top) {
        parent = modelParent(parent);
        next = knownFrom(nextElement(element), parent, row);
        element = XML_DOM_GetNodeParent(element);
    }
    return next;
}

/* Whether an element comes behind those of `row`, in the same parent. */
static bool comesAfter(const XML_DOM_Node* element, const ModelRow* row)
{
    if (strcmp(XML_DOM_GetNodeName(element), row->name) == 0) return false;
    return modelChild(modelParent(row), element) > row;
}

XML_DOM_Node* modelAdd(const ModelRow* row, XML_DOM_Node* parent)
{
    if (!modelNextBelow(modelParent(row), row)) return addElement(parent, row->name);
    XML_DOM_Node* later = firstElement(parent);
    while (later && !comesAfter(later, row)) later = nextElement(later);
    return later ? addElementBefore(later, row->name) : addElement(parent, row->name);
}
