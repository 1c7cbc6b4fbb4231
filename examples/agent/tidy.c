#include "tidy.h"

#include "model.h"
#include "tree.h"

#include <stddef.h>
#include <string.h>

/* The mark: an attribute that no document can have. */
static const char kMark[] = "-";

/* So many children are taken out one by one: for an edit of a leaf or two nothing is copied. */
enum { FEW = 8 };

bool tidyMark(XML_DOM_Node* element)
{
    removeChildren(element);
    return XML_DOM_AddAttrInner(element, kMark, "") != NULL;
}

bool tidyIsMarked(const XML_DOM_Node* element)
{
    return XML_DOM_GetNodeAttrValByName(element, kMark) != NULL;
}

/* How many children are marked; and whether the others are in order. */
static size_t look(const XML_DOM_Node* parent, const ModelRow* row, bool* ordered)
{
    size_t marked = 0;
    unsigned last = 0;
    *ordered = true;
    for (const XML_DOM_Node* child = firstElement(parent); child; child = nextElement(child)) {
        if (tidyIsMarked(child)) {
            ++marked;
            continue;
        }
        const ModelRow* own = modelChild(row, child);
        const unsigned number = own ? modelNumber(own) : last;
        if (number < last) *ordered = false;
        last = number;
    }
    return marked;
}

static void takeOut(XML_DOM_Node* parent)
{
    XML_DOM_Node* child = firstElement(parent);
    while (child) {
        XML_DOM_Node* next = nextElement(child);
        if (tidyIsMarked(child)) XML_DOM_DelNode(child);
        child = next;
    }
}

/* Not a copy of the node itself, which would declare its namespace once more. */
static bool copyInto(XML_DOM_Node* parent, const XML_DOM_Node* child)
{
    XML_DOM_Node* copy = addElement(parent, XML_DOM_GetNodeName(child));
    return copy && XML_DOM_CopySubTree(copy, child) == XML_RET_OK;
}

/* Copies of what stays are appended row by row; then the originals go, of which each is the first
 * child by then. */
static bool buildAnew(XML_DOM_Node* parent, const ModelRow* row)
{
    size_t count = 0;
    for (const XML_DOM_Node* child = XML_DOM_GetFirstChild(parent); child;
         child = XML_DOM_GetNextSibling(child))
        ++count;
    const ModelRow* below = modelNextBelow(row, NULL);
    for (; below; below = modelNextBelow(row, below)) {
        const XML_DOM_Node* child = XML_DOM_GetFirstChild(parent);
        for (size_t i = 0; i != count; ++i, child = XML_DOM_GetNextSibling(child))
            if (isElement(child) && strcmp(XML_DOM_GetNodeName(child), below->name) == 0 &&
                !tidyIsMarked(child) && !copyInto(parent, child))
                return false;
    }
    for (; count != 0; --count) XML_DOM_DelNode(XML_DOM_GetFirstChild(parent));
    return true;
}

bool tidy(XML_DOM_Node* configuration)
{
    const ModelRow* row = modelTop();
    XML_DOM_Node* element = configuration;
    for (; element; element = modelNext(configuration, element, &row)) {
        bool ordered = true;
        const size_t marked = look(element, row, &ordered);
        if (ordered && marked <= FEW) takeOut(element);
        else if (!buildAnew(element, row)) return false;
    }
    return true;
}
