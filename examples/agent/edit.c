#include "edit.h"

#include "model.h"
#include "rpc_error.h"
#include "tree.h"

/* Where the walk stands on one level: an element of the edit, its fellow in the configuration, and
 * what is to happen to the children. */
typedef struct Level {
    const ModelRow* row;
    const XML_DOM_Node* edit;
    XML_DOM_Node* target;
    Operation operation;
} Level;

static bool refuseData(XML_DOM_Node** error, const char* tag, const XML_DOM_Node* element,
                       const char* message)
{
    return refuse(
        error, &(RpcError){.type = "application", .tag = tag, .node = element, .message = message});
}

/* Whether the operation may be done at all, with or without a node in the configuration. */
static bool checkPresence(Operation operation, const XML_DOM_Node* found, const XML_DOM_Node* edit,
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

/* Gives the element of the edit its fellow: the one found, emptied if it is replaced, or a new one.
 */
static XML_DOM_Node* makeTarget(const Level* level, XML_DOM_Node* found, XML_DOM_Node* parent)
{
    if (!found) return modelAdd(level->row, parent);
    if (level->operation == OPERATION_REPLACE) removeChildren(found);
    return found;
}

/* Applies one element; `parent` is the fellow of its parent. The level is complete but for its
 * target, which stays NULL when there is nothing to do below. */
static bool applyElement(Level* level, XML_DOM_Node* parent, XML_DOM_Node** error)
{
    XML_DOM_Node* found = modelFind(level->row, parent, level->edit);
    if (!checkPresence(level->operation, found, level->edit, error)) return false;
    if (level->operation == OPERATION_DELETE || level->operation == OPERATION_REMOVE) {
        XML_DOM_DelNode(found);
        return true;
    }
    level->target = makeTarget(level, found, parent);
    if (!level->target) return false;
    if (modelHoldsElements(level->row) || level->operation == OPERATION_NONE) return true;
    return setText(level->target, textOf(level->edit));
}

bool editApply(XML_DOM_Node* configuration, const XML_DOM_Node* config, Operation inherited,
               XML_DOM_Node** error)
{
    Level levels[MODEL_DEPTH] = {{modelTop(), config, configuration, inherited}};
    Level* level = levels; /* the level that holds `edit`; the model has no more than there are */
    const XML_DOM_Node* edit = firstElement(config);
    *error = NULL;
    while (edit || level != levels) {
        if (!edit) { /* up */
            edit = nextElement(level->edit);
            --level;
            continue;
        }
        Level next = {modelChild(level->row, edit), edit, NULL,
                      operationOf(edit, level->operation)};
        if (!applyElement(&next, level->target, error)) return false;
        if (next.target && modelHoldsElements(next.row)) {
            *++level = next;
            edit = firstElement(edit);
        } else {
            edit = nextElement(edit);
        }
    }
    return true;
}
