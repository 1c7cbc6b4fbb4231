// Visiting a tree in document order.
#include "dom/node.hpp"

uint32_t XML_DOM_ScanTree(XML_DOM_Node* start, XML_DOM_Visit visit, void* context)
{
    if (!start || !visit) return XML_RET_EMPTY;
    std::size_t depth = 0;
    for (XML_DOM_Node* node = start;;) {
        if (visit(node, context) != 0) return XML_RET_FAIL;
        if (node->firstChild) {
            node = node->firstChild;
            ++depth;
            continue;
        }
        while (!node->nextSibling) {
            if (depth == 0) return XML_RET_OK;
            node = node->parent;
            --depth;
        }
        node = node->nextSibling;
    }
}
