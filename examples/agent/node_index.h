/* Finding nodes of a configuration: a hash table, so that a list of any length costs what it holds.
 *
 * A node is found by its parent, its row of the model and its identity there. Parents are told by
 * numbers that are never used twice, and not by addresses: what lies in a node that has been
 * deleted is not found any more, without being taken out piece by piece.
 */
#ifndef AGENT_NODE_INDEX_H
#define AGENT_NODE_INDEX_H

#include "model.h"

#include <stddef.h>
#include <stdint.h>

/* The number of the document element, which has no entry itself. */
enum { NODE_INDEX_TOP = 0 };

typedef struct NodeEntry {
    XML_DOM_Node* node; /* set to NULL to take the entry out */
    size_t number;      /* the node's, as the parent of others; never 0 in an entry */
    bool whole;         /* for the caller: false at first */
    const ModelRow* row;
    size_t parent;
    uint64_t hash;
} NodeEntry;

/* All zero at first. */
typedef struct NodeIndex {
    NodeEntry* entries; /* a power of two of them, at most half of them used */
    size_t size;
    size_t used;
    size_t lastNumber;
} NodeIndex;

/* The entry of a node, or NULL. It is valid until the next one is added. */
NodeEntry* nodeIndexFind(const NodeIndex* index, size_t parent, const ModelRow* row,
                         const char* identity);

/* Adds a node that is not there yet, and gives it a number. NULL without memory. */
NodeEntry* nodeIndexAdd(NodeIndex* index, size_t parent, const ModelRow* row, const char* identity,
                        XML_DOM_Node* node);

/* Forgets all that lies in a node: for one whose children have been deleted. */
void nodeIndexForgetBelow(NodeIndex* index, NodeEntry* entry);

/* Adds all that lies below `top`, a configuration. False without memory, and when a node is there
 * already: then it is in `*twin`, which is NULL otherwise. */
bool nodeIndexTree(NodeIndex* index, const XML_DOM_Node* top, const XML_DOM_Node** twin);

void nodeIndexFree(NodeIndex* index);

#endif
