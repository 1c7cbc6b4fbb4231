#include "edit.h"

#include "node_index.h"
#include "rpc_error.h"
#include "tidy.h"
#include "tree.h"

#include <string.h>

/* Putting an element in front of others costs a walk over its siblings: so many are put where they
 * belong, and those that follow are appended and sorted in the end. */
enum { FEW = 64 };

/* Where the walk stands on one level: an element of the edit, its fellow in the configuration, and
 * what is to happen to the children. */
typedef struct Level {
    const ModelRow* row;
    const XML_DOM_Node* edit;
    XML_DOM_Node* target;
    size_t number; /* of the target in the index */
    Operation operation;
    bool made; /* the target was not there before */
} Level;

typedef struct Edit {
    NodeIndex index; /* of the configuration */
    unsigned inserted;
    bool untidy; /* something is marked, or out of order */
    bool changed;
    XML_DOM_Node** error;
} Edit;

static bool refuseData(XML_DOM_Node** error, const char* tag, const XML_DOM_Node* element,
                       const char* message)
{
    return refuse(
        error, &(RpcError){.type = "application", .tag = tag, .node = element, .message = message});
}

/* Whether the operation may be done at all, with or without a node in the configuration. */
static bool checkPresence(Operation operation, const NodeEntry* found, const XML_DOM_Node* edit,
                          XML_DOM_Node** error)
{
    if (operation == OPERATION_CREATE && found)
        return refuseData(error, "data-exists", edit, "What is to be created exists already.");
    if (operation == OPERATION_DELETE && !found)
        return refuseData(error, "data-missing", edit, "What is to be deleted does not exist.");
    if (operation == OPERATION_NONE && !found)
        return refuseData(error, "data-missing", edit, "The configuration has no such node.");
    return true;
}

/* ------------------------------------------------------------------------------------------------
 * Steps
 */

static bool removeNode(Edit* edit, NodeEntry* entry)
{
    XML_DOM_Node* node = entry->node;
    entry->node = NULL;
    edit->untidy = true;
    return tidyMark(node);
}

static void empty(Edit* edit, NodeEntry* entry)
{
    if (XML_DOM_GetFirstChild(entry->node)) edit->changed = true;
    removeChildren(entry->node);
    nodeIndexForgetBelow(&edit->index, entry);
}

static XML_DOM_Node* addNode(Edit* edit, const ModelRow* row, XML_DOM_Node* parent)
{
    const bool last = !modelNextBelow(modelParent(row), row);
    if (last || edit->inserted++ < FEW) return modelAdd(row, parent);
    edit->untidy = true;
    return addElement(parent, row->name);
}

/* Gives the element of the edit a new fellow. */
static bool makeTarget(Edit* edit, Level* level, const Level* above, const char* identity)
{
    level->made = true;
    level->target = addNode(edit, level->row, above->target);
    const NodeEntry* entry = level->target ? nodeIndexAdd(&edit->index, above->number, level->row,
                                                          identity, level->target)
                                           : NULL;
    if (entry) level->number = entry->number;
    /* A container may turn out to be of no use, see leave(). */
    if (level->row->kind != MODEL_CONTAINER) edit->changed = true;
    return entry != NULL;
}

static bool setLeaf(Edit* edit, XML_DOM_Node* leaf, const char* text)
{
    if (strcmp(textOf(leaf), text) == 0) return true;
    edit->changed = true;
    return setText(leaf, text);
}

/* Applies one element, below `above`. The level is complete but for its target, which stays NULL
 * when there is nothing to do below. */
static bool applyElement(Edit* edit, Level* level, const Level* above)
{
    const char* identity = modelIdentity(level->row, level->edit);
    NodeEntry* found = nodeIndexFind(&edit->index, above->number, level->row, identity);
    if (!checkPresence(level->operation, found, level->edit, edit->error)) return false;
    if (level->operation == OPERATION_DELETE || level->operation == OPERATION_REMOVE) {
        if (found) edit->changed = true;
        return !found || removeNode(edit, found);
    }
    if (found) {
        const bool emptied =
            level->operation == OPERATION_REPLACE && modelHoldsElements(level->row);
        if (emptied) empty(edit, found);
        level->target = found->node;
        level->number = found->number;
    } else if (!makeTarget(edit, level, above, identity)) {
        return false;
    }
    if (modelHoldsElements(level->row) || level->operation == OPERATION_NONE) return true;
    return setLeaf(edit, level->target, textOf(level->edit));
}

/* ------------------------------------------------------------------------------------------------
 * The walk
 */

static bool isEmpty(const XML_DOM_Node* container)
{
    const XML_DOM_Node* child = firstElement(container);
    while (child && tidyIsMarked(child)) child = nextElement(child);
    return !child;
}

/* Behind the last child of a level: a container that a merge made only to find nothing to remove in
 * it goes again. */
static bool leave(Edit* edit, const Level* level, const Level* above)
{
    if (!level->made || level->row->kind != MODEL_CONTAINER) return true;
    if (level->operation != OPERATION_MERGE || !firstElement(level->edit) ||
        !isEmpty(level->target)) {
        edit->changed = true;
        return true;
    }
    NodeEntry* entry = nodeIndexFind(&edit->index, above->number, level->row, "");
    return !entry || removeNode(edit, entry);
}

static bool applyBelow(Edit* edit, const Level* top)
{
    Level levels[MODEL_DEPTH] = {*top}; /* the model has no more */
    Level* level = levels;              /* the one that holds `element` */
    const XML_DOM_Node* element = firstElement(top->edit);
    while (element || level != levels) {
        if (!element) { /* up */
            if (!leave(edit, level, level - 1)) return false;
            element = nextElement(level->edit);
            --level;
            continue;
        }
        Level next = {modelChild(level->row, element),        element, NULL, 0,
                      operationOf(element, level->operation), false};
        if (!applyElement(edit, &next, level)) return false;
        if (next.target && modelHoldsElements(next.row)) {
            *++level = next;
            element = firstElement(element);
        } else {
            element = nextElement(element);
        }
    }
    return true;
}

bool editApply(XML_DOM_Node* configuration, const XML_DOM_Node* config, Operation inherited,
               bool* changed, XML_DOM_Node** error)
{
    Edit edit = {{NULL, 0, 0, 0}, 0, false, false, error};
    const XML_DOM_Node* twin = NULL;
    *error = NULL;
    if (inherited == OPERATION_REPLACE) { /* what the edit holds is all there is to be */
        edit.changed = XML_DOM_GetFirstChild(configuration) != NULL;
        removeChildren(configuration);
        inherited = OPERATION_MERGE;
    }
    const Level top = {modelTop(), config, configuration, NODE_INDEX_TOP, inherited, false};
    const bool applied = nodeIndexTree(&edit.index, configuration, &twin) &&
                         applyBelow(&edit, &top) && (!edit.untidy || tidy(configuration));
    nodeIndexFree(&edit.index);
    *changed = edit.changed;
    return applied;
}
