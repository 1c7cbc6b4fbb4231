#include "filter.h"

#include "model.h"
#include "tree.h"

#include <string.h>

/* One level of the walk: the children of `filter` are applied to those of `source`. */
typedef struct Level {
    const ModelRow* row;
    const XML_DOM_Node* filter;
    const XML_DOM_Node* source;
    XML_DOM_Node* output; /* the copy of `source`; NULL until something is selected in it */
    const XML_DOM_Node* condition; /* the child of `filter` that is at work */
    const XML_DOM_Node* candidate; /* the child of `source` that is looked at */
} Level;

/* ------------------------------------------------------------------------------------------------
 * What a filter says
 */

/* A leaf with a text selects nothing by itself: it is a condition on its siblings. */
static bool isContentMatch(const XML_DOM_Node* condition)
{
    return !firstElement(condition) && *textOf(condition) != '\0';
}

static bool isSelection(const XML_DOM_Node* condition)
{
    return !XML_DOM_GetFirstChild(condition);
}

/* Names match in one namespace, or in any if the filter has none. What has attributes would match
 * those of the configuration, which has none. */
static bool matchesName(const XML_DOM_Node* condition, const XML_DOM_Node* node)
{
    const char* namespaceName = namespaceOf(condition);
    return !XML_DOM_GetFirstAttr(condition) &&
           strcmp(XML_DOM_GetNodeName(condition), XML_DOM_GetNodeName(node)) == 0 &&
           (*namespaceName == '\0' || strcmp(namespaceName, namespaceOf(node)) == 0);
}

static bool matchesContent(const XML_DOM_Node* condition, const XML_DOM_Node* source)
{
    const XML_DOM_Node* node = firstElement(source);
    while (node && !(matchesName(condition, node) && strcmp(textOf(condition), textOf(node)) == 0))
        node = nextElement(node);
    return node != NULL;
}

/* Whether all content matches of a sibling set hold; `*only` tells whether there is nothing else
 * in it. */
static bool matchesSet(const XML_DOM_Node* filter, const XML_DOM_Node* source, bool* only)
{
    *only = true;
    const XML_DOM_Node* condition = firstElement(filter);
    for (; condition; condition = nextElement(condition)) {
        if (!isContentMatch(condition)) *only = false;
        else if (!matchesContent(condition, source)) return false;
    }
    return true;
}

/* ------------------------------------------------------------------------------------------------
 * What is selected
 */

/* An empty copy of `node`. The first one, below `data`, leaves NETCONF's namespace. */
static XML_DOM_Node* addShell(const ModelRow* row, XML_DOM_Node* parent)
{
    if (modelParent(row) != modelTop()) return modelAdd(row, parent);
    XML_DOM_Node* shell = makeElement(row->name, SYSTEM_NAMESPACE);
    if (shell && XML_DOM_AddChildNode(parent, shell) == XML_RET_OK) return shell;
    XML_DOM_DelNode(shell);
    return NULL;
}

/* The copy of `node` in `parent`: the one there, or a new one, which has its key already. */
static XML_DOM_Node* copyOf(const ModelRow* row, XML_DOM_Node* parent, const XML_DOM_Node* node)
{
    XML_DOM_Node* copy = modelFind(row, parent, node);
    if (copy) return copy;
    copy = addShell(row, parent);
    if (!copy || row->kind != MODEL_LIST) return copy;
    return addLeaf(copy, row->key, textOf(childNamed(node, row->key))) ? copy : NULL;
}

/* Selects a node with all below it, and what leads to it: the copies of the levels above. */
static bool selectNode(Level* levels, Level* level, const XML_DOM_Node* node)
{
    for (Level* step = levels + 1; step <= level; ++step) {
        if (!step->output) step->output = copyOf(step->row, step[-1].output, step->source);
        if (!step->output) return false;
    }
    XML_DOM_Node* copy = copyOf(modelChild(level->row, node), level->output, node);
    if (!copy) return false;
    removeChildren(copy);
    return XML_DOM_CopySubTree(copy, node) == XML_RET_OK;
}

/* Looks at one child of the source with one child of the filter; `*down` tells whether to go on
 * with their children first. */
static bool look(Level* levels, Level* level, bool* down)
{
    const XML_DOM_Node* condition = level->condition;
    const XML_DOM_Node* node = level->candidate;
    bool only = false;
    *down = false;
    if (!matchesName(condition, node)) return true;
    if (isContentMatch(condition))
        return strcmp(textOf(condition), textOf(node)) != 0 || selectNode(levels, level, node);
    if (isSelection(condition)) return selectNode(levels, level, node);
    if (!modelHoldsElements(modelChild(level->row, node)) || !matchesSet(condition, node, &only))
        return true;
    if (only) return selectNode(levels, level, node);
    *down = true;
    return true;
}

static bool applyFilter(XML_DOM_Node* data, const XML_DOM_Node* configuration,
                        const XML_DOM_Node* filter)
{
    Level levels[MODEL_DEPTH];
    Level* level = levels;
    *level = (Level){
        modelTop(), filter, configuration, data, firstElement(filter), firstElement(configuration)};
    for (;;) {
        bool down = false;
        if (!level->condition) { /* up */
            if (level-- == levels) return true;
        } else if (!level->candidate) {
            level->condition = nextElement(level->condition);
            level->candidate = firstElement(level->source);
            continue;
        } else if (!look(levels, level, &down)) {
            return false;
        }
        if (!down) {
            level->candidate = nextElement(level->candidate);
            continue;
        }
        const Level* above = level++;
        *level = (Level){modelChild(above->row, above->candidate),
                         above->condition,
                         above->candidate,
                         NULL,
                         firstElement(above->condition),
                         firstElement(above->candidate)};
    }
}

bool filterInto(XML_DOM_Node* data, const XML_DOM_Node* configuration, const XML_DOM_Node* filter)
{
    if (filter) return applyFilter(data, configuration, filter);
    const XML_DOM_Node* system = firstElement(configuration);
    if (!system) return true;
    XML_DOM_Node* copy = addShell(modelChild(modelTop(), system), data);
    return copy && XML_DOM_CopySubTree(copy, system) == XML_RET_OK;
}
