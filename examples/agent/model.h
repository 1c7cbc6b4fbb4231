/* The shape of the configuration, as far as editing needs it and system.xsd does not say it: which
 * elements are lists, and by which child their entries are told apart.
 */
#ifndef AGENT_MODEL_H
#define AGENT_MODEL_H

#include <netxml/dom.h>
#include <stdbool.h>

typedef enum ModelKind {
    MODEL_CONTAINER, /* holds other nodes; at most one of its name */
    MODEL_LIST,      /* one entry of a list: as a container, but many, told apart by a key */
    MODEL_LEAF,      /* holds a text; at most one of its name */
    MODEL_LEAF_LIST  /* one text of many, told apart by itself */
} ModelKind;

typedef struct ModelRow {
    int parent; /* a row above; -1 for the first */
    const char* name;
    ModelKind kind;
    const char* key; /* of a list: the leaf that is its key */
} ModelRow;

/* How deep the configuration is: the document element, and the rows below it. */
enum { MODEL_DEPTH = 6 };

/* The row of the document element. */
const ModelRow* modelTop(void);
/* The row of an element that is a child of what `parent` describes; NULL if the model has none. */
const ModelRow* modelChild(const ModelRow* parent, const XML_DOM_Node* element);
/* The row that `row` lies in. */
const ModelRow* modelParent(const ModelRow* row);
/* Whether elements of this row hold elements, not a text; and whether many may have its name. */
bool modelHoldsElements(const ModelRow* row);
bool modelIsMany(const ModelRow* row);

/* The child of `parent` that is the same node of the configuration as `like`: for a list the entry
 * with the same key. NULL if there is none. */
XML_DOM_Node* modelFind(const ModelRow* row, const XML_DOM_Node* parent, const XML_DOM_Node* like);

/* Adds an empty element where the model's order has it: behind its own kind, and before what the
 * schema wants after it. NULL without memory. */
XML_DOM_Node* modelAdd(const ModelRow* row, XML_DOM_Node* parent);

#endif
