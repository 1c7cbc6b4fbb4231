#include "filter.h"

#include "node_index.h"
#include "tree.h"

#include <string.h>

/* One level of the walk: the children of `filter` are applied to those of `source`. */
typedef struct Level {
    const ModelRow* row;
    const XML_DOM_Node* filter;
    const XML_DOM_Node* source;
    size_t sourceNumber;
    XML_DOM_Node* output; /* the copy of `source`; NULL until something is selected in it */
    size_t outputNumber;
    const XML_DOM_Node* condition; /* the child of `filter` that is at work */
    const ModelRow* wanted;        /* what it is about; NULL for nothing that we have */
    const XML_DOM_Node* candidate; /* the child of `source` that is looked at */
    bool single;                   /* the condition names the candidate by its key: no other one */
    uint32_t wholeRows;            /* rows of which all there is has been selected, by number */
} Level;

typedef struct Filter {
    NodeIndex source; /* of the configuration */
    NodeIndex output; /* of what has been selected */
    Level levels[MODEL_DEPTH];
} Filter;

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

/* What a condition is about, below `parent`. Names match in one namespace, or in any if the filter
 * has none. What has attributes would match those of the configuration, which has none. */
static const ModelRow* rowOf(const ModelRow* parent, const XML_DOM_Node* condition)
{
    const char* namespaceName = namespaceOf(condition);
    const char* name = XML_DOM_GetNodeName(condition);
    if (XML_DOM_GetFirstAttr(condition)) return NULL;
    if (*namespaceName != '\0' && strcmp(namespaceName, SYSTEM_NAMESPACE) != 0) return NULL;
    const ModelRow* row = modelNextBelow(parent, NULL);
    while (row && strcmp(row->name, name) != 0) row = modelNextBelow(parent, row);
    return row;
}

static bool isOfRow(const XML_DOM_Node* node, const ModelRow* row)
{
    return strcmp(XML_DOM_GetNodeName(node), row->name) == 0;
}

/* `row` is that of `source`. */
static bool matchesContent(const ModelRow* row, const XML_DOM_Node* condition,
                           const XML_DOM_Node* source)
{
    const ModelRow* leaf = rowOf(row, condition);
    if (!leaf || modelHoldsElements(leaf)) return false;
    const XML_DOM_Node* node = firstElement(source);
    while (node && !(isOfRow(node, leaf) && strcmp(textOf(condition), textOf(node)) == 0))
        node = nextElement(node);
    return node != NULL;
}

/* Whether all content matches of a sibling set hold; `*only` tells whether there is nothing else
 * in it. */
static bool matchesSet(const ModelRow* row, const XML_DOM_Node* filter, const XML_DOM_Node* source,
                       bool* only)
{
    *only = true;
    const XML_DOM_Node* condition = firstElement(filter);
    for (; condition; condition = nextElement(condition)) {
        if (!isContentMatch(condition)) *only = false;
        else if (!matchesContent(row, condition, source)) return false;
    }
    return true;
}

/* The key that a condition on a list asks for, or NULL. */
static const char* wantedKey(const ModelRow* list, const XML_DOM_Node* condition)
{
    const XML_DOM_Node* child = firstElement(condition);
    for (; child; child = nextElement(child)) {
        const ModelRow* row = isContentMatch(child) ? rowOf(list, child) : NULL;
        if (row && strcmp(row->name, list->key) == 0) return textOf(child);
    }
    return NULL;
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

/* An entry of a list has its key from the beginning. */
static bool addKey(Filter* filter, const ModelRow* list, XML_DOM_Node* copy, size_t number,
                   const char* key)
{
    const ModelRow* row = modelNextBelow(list, NULL);
    while (strcmp(row->name, list->key) != 0) row = modelNextBelow(list, row);
    XML_DOM_Node* leaf = modelAdd(row, copy);
    return leaf && setText(leaf, key) && nodeIndexAdd(&filter->output, number, row, "", leaf);
}

/* The copy of `node` below the one of its parent: the one there, or a new one. */
static NodeEntry* copyOf(Filter* filter, XML_DOM_Node* parent, size_t parentNumber,
                         const ModelRow* row, const XML_DOM_Node* node)
{
    const char* identity = modelIdentity(row, node);
    NodeEntry* entry = nodeIndexFind(&filter->output, parentNumber, row, identity);
    if (entry) return entry;
    XML_DOM_Node* copy = addShell(row, parent);
    entry = copy ? nodeIndexAdd(&filter->output, parentNumber, row, identity, copy) : NULL;
    if (!entry || row->kind != MODEL_LIST) return entry;
    if (!addKey(filter, row, copy, entry->number, identity)) return NULL;
    return nodeIndexFind(&filter->output, parentNumber, row, identity); /* it may have moved */
}

/* Selects a node with all below it, and what leads to it: the copies of the levels above. What has
 * been selected as a whole stays as it is, so that no node is copied twice. */
static bool selectNode(Filter* filter, Level* level, const XML_DOM_Node* node)
{
    for (Level* step = filter->levels + 1; step <= level; ++step) {
        if (step->output) continue;
        const NodeEntry* entry =
            copyOf(filter, step[-1].output, step[-1].outputNumber, step->row, step->source);
        if (!entry) return false;
        step->output = entry->node;
        step->outputNumber = entry->number;
    }
    NodeEntry* copy = copyOf(filter, level->output, level->outputNumber, level->wanted, node);
    if (!copy || copy->whole) return copy != NULL;
    copy->whole = true;
    removeChildren(copy->node);
    nodeIndexForgetBelow(&filter->output, copy);
    return XML_DOM_CopySubTree(copy->node, node) == XML_RET_OK;
}

/* ------------------------------------------------------------------------------------------------
 * The walk
 */

/* The first of a node and its following siblings that the condition is about. */
static const XML_DOM_Node* candidateFrom(const Level* level, const XML_DOM_Node* node)
{
    while (node && !isOfRow(node, level->wanted)) node = nextElement(node);
    return node;
}

/* Turns to a condition; NULL is behind the last one. An entry that is named by its key is looked
 * up, so that a filter costs what it names. */
static void startCondition(const Filter* filter, Level* level, const XML_DOM_Node* condition)
{
    level->condition = condition;
    level->candidate = NULL;
    level->wanted = condition ? rowOf(level->row, condition) : NULL;
    if (!level->wanted || (level->wholeRows >> modelNumber(level->wanted) & 1) != 0) return;
    const bool list = level->wanted->kind == MODEL_LIST;
    const char* key = list ? wantedKey(level->wanted, condition) : NULL;
    level->single = key != NULL;
    if (!key) {
        level->candidate = candidateFrom(level, firstElement(level->source));
        return;
    }
    const NodeEntry* entry =
        nodeIndexFind(&filter->source, level->sourceNumber, level->wanted, key);
    level->candidate = entry ? entry->node : NULL;
}

static void endCondition(const Filter* filter, Level* level)
{
    if (level->wanted && isSelection(level->condition))
        level->wholeRows |= UINT32_C(1) << modelNumber(level->wanted);
    startCondition(filter, level, nextElement(level->condition));
}

/* Looks at one child of the source with one child of the filter; `*down` tells whether to go on
 * with their children first. */
static bool look(Filter* filter, Level* level, bool* down)
{
    const XML_DOM_Node* condition = level->condition;
    const XML_DOM_Node* node = level->candidate;
    bool only = false;
    if (isSelection(condition)) return selectNode(filter, level, node);
    if (!modelHoldsElements(level->wanted))
        return !isContentMatch(condition) || strcmp(textOf(condition), textOf(node)) != 0 ||
               selectNode(filter, level, node);
    if (isContentMatch(condition) || !matchesSet(level->wanted, condition, node, &only))
        return true;
    if (only) return selectNode(filter, level, node);
    *down = true;
    return true;
}

/* Goes down to the candidate, unless it has been selected as a whole. */
static bool enter(Filter* filter, const Level* above, Level* level)
{
    const char* identity = modelIdentity(above->wanted, above->candidate);
    const NodeEntry* source =
        nodeIndexFind(&filter->source, above->sourceNumber, above->wanted, identity);
    const NodeEntry* copy =
        above->output ? nodeIndexFind(&filter->output, above->outputNumber, above->wanted, identity)
                      : NULL;
    if (!source || (copy && copy->whole)) return false;
    memset(level, 0, sizeof *level);
    level->row = above->wanted;
    level->filter = above->condition;
    level->source = above->candidate;
    level->sourceNumber = source->number;
    level->output = copy ? copy->node : NULL;
    level->outputNumber = copy ? copy->number : 0;
    startCondition(filter, level, firstElement(level->filter));
    return true;
}

static bool applyFilter(Filter* filter)
{
    Level* level = filter->levels;
    startCondition(filter, level, firstElement(level->filter));
    for (;;) {
        bool down = false;
        if (!level->condition) { /* up */
            if (level == filter->levels) return true;
            --level;
        } else if (!level->candidate) {
            endCondition(filter, level);
            continue;
        } else if (!look(filter, level, &down)) {
            return false;
        }
        if (down && enter(filter, level, level + 1)) {
            ++level;
            continue;
        }
        level->candidate =
            level->single ? NULL : candidateFrom(level, nextElement(level->candidate));
    }
}

bool filterInto(XML_DOM_Node* data, const XML_DOM_Node* configuration, const XML_DOM_Node* filter)
{
    const XML_DOM_Node* system = firstElement(configuration);
    const XML_DOM_Node* twin = NULL;
    if (!system) return true;
    if (!filter) {
        XML_DOM_Node* copy = addShell(modelChild(modelTop(), system), data);
        return copy && XML_DOM_CopySubTree(copy, system) == XML_RET_OK;
    }
    Filter work;
    memset(&work, 0, sizeof work);
    work.levels[0].row = modelTop();
    work.levels[0].filter = filter;
    work.levels[0].source = configuration;
    work.levels[0].sourceNumber = NODE_INDEX_TOP;
    work.levels[0].output = data;
    work.levels[0].outputNumber = NODE_INDEX_TOP;
    const bool applied = nodeIndexTree(&work.source, configuration, &twin) && applyFilter(&work);
    nodeIndexFree(&work.source);
    nodeIndexFree(&work.output);
    return applied;
}
