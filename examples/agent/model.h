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
/* The row behind `row` among those that lie in `parent`, in the order of the schema; the first one
 * for NULL, and NULL behind the last one. */
const ModelRow* modelNextBelow(const ModelRow* parent, const ModelRow* row);
/* The number of a row, below 32; and how many rows lie above it. */
unsigned modelNumber(const ModelRow* row);
unsigned modelDepth(const ModelRow* row);
/* Whether elements of this row hold elements, not a text; and whether many may have its name. */
bool modelHoldsElements(const ModelRow* row);
bool modelIsMany(const ModelRow* row);

/* What tells an element from its siblings of the same row: the key of an entry, the text of one of
 * a leaf-list; empty where there is only one. It belongs to the tree. */
const char* modelIdentity(const ModelRow* row, const XML_DOM_Node* element);

/* The element after `element` in document order, below `top`, of those that the model has; NULL at
 * the end. `*row` is that of `element` and becomes that of the next one. */
XML_DOM_Node* modelNext(const XML_DOM_Node* top, const XML_DOM_Node* element, const ModelRow** row);

/* Adds an empty element where the model's order has it: behind its own kind, and before what the
 * schema wants after it. NULL without memory. Costs a walk over the siblings, except where nothing
 * can come after it, as in all lists with a key. */
XML_DOM_Node* modelAdd(const ModelRow* row, XML_DOM_Node* parent);

#endif
