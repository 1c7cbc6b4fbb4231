// Deleting nodes with their subtrees.
#include "dom/link.hpp"
#include "dom/reclaim.hpp"

namespace netxml {
namespace {

// Takes the children off as it goes down, so that the way up needs no memory.
void deleteSubtree(XML_DOM_Node* top) noexcept
{
    Reclaimer reclaimer;
    for (XML_DOM_Node* node = top; node;) {
        if (XML_DOM_Node* child = node->firstChild) {
            node->firstChild = child->nextSibling;
            node = child;
            continue;
        }
        XML_DOM_Node* parent = node == top ? nullptr : node->parent;
        reclaimer.node(node);
        node = parent;
    }
}

}  // namespace

void deleteAfter(XML_DOM_Node* parent, XML_DOM_Node* last) noexcept
{
    XML_DOM_Node* node = last ? last->nextSibling : parent->firstChild;
    if (last) last->nextSibling = nullptr;
    else parent->firstChild = nullptr;
    parent->lastChild = last;
    while (node) {
        XML_DOM_Node* next = node->nextSibling;
        deleteSubtree(node);
        node = next;
    }
}

}  // namespace netxml

using namespace netxml;

void XML_DOM_DelNode(XML_DOM_Node* node)
{
    if (!node) return;
    if (!node->parent && isWholeArena(node)) {
        releaseArena(slabOf(node)->first);
        return;
    }
    if (node->parent) {
        markEdited(node);
        markEdited(node->parent);
        unlinkChild(node);
    }
    deleteSubtree(node);
}
