// Copying nodes and subtrees.
#include "dom/declaration_scope.hpp"
#include "dom/lay.hpp"
#include "dom/link.hpp"
#include "dom/make.hpp"
#include "dom/reclaim.hpp"

namespace netxml {
namespace {

// Copies single nodes, resolving prefixes at the destination first and at the source else.
class NodeCopier {
public:
    // What is copied lies under `top`.
    NodeCopier(Arena* arena, const XML_DOM_Node* top, const XML_DOM_Node* sourceBase,
               const XML_DOM_Node* targetBase) noexcept
        : arena_{arena}, wide_{top}, source_{sourceBase}, target_{targetBase}
    {
    }

    // A copy without attributes, declarations and children, or nullptr.
    XML_DOM_Node* bare(const XML_DOM_Node* from) noexcept
    {
        const bool isElement = from->type == XML_DOM_NODE_ELEMENT;
        const char* text = isElement ? from->name : from->value;
        if (arena_ && text) {
            SlabRoom& room = arena_->room();
            XML_DOM_Node* copy =
                isElement
                    ? layElement(room, spanOf(text, wide_.has(from->home, Home::kFirstString)))
                    : layTextual(room, from->type,
                                 spanOf(text, wide_.has(from->home, Home::kSecondString)));
            if (copy) return copy;
        }
        return isElement ? makeElement(arena_, viewOf(text))
                         : makeTextual(arena_, from->type, viewOf(text));
    }
    XML_DOM_Attr* bare(const XML_DOM_Attr* from) noexcept
    {
        if (arena_) {
            XML_DOM_Attr* copy = layAttr(
                arena_->room(), spanOf(from->name, wide_.has(from->home, Home::kFirstString)),
                spanOf(from->value, wide_.has(from->home, Home::kSecondString)));
            if (copy) return copy;
        }
        return makeAttr(arena_, viewOf(from->name), viewOf(from->value));
    }
    // Gives an element's copy what the element has. leave() ends the scope that this opens.
    bool furnish(XML_DOM_Node* to, const XML_DOM_Node* from, std::size_t depth) noexcept
    {
        return copyDeclarations(to, from, depth) &&
               bind(to, from->nameSpace, to->nameSpace, depth) && copyAttributes(to, from, depth);
    }
    void leave(std::size_t depth) noexcept
    {
        source_.leave(depth);
        target_.leave(depth);
    }

private:
    bool declare(XML_DOM_Node* to, const XML_DOM_NsDecl* from, std::size_t depth) noexcept
    {
        XML_DOM_NsDecl* decl = makeDecl(arena_, viewOf(from->prefix), viewOf(from->name));
        if (!decl) return false;
        appendDecl(to, decl);
        return target_.add(decl, depth);
    }
    bool copyDeclarations(XML_DOM_Node* to, const XML_DOM_Node* from, std::size_t depth) noexcept
    {
        for (const XML_DOM_NsDecl* decl = from->firstNs; decl; decl = decl->next) {
            if (!declare(to, decl, depth)) return false;
        }
        return source_.enter(from, depth);
    }
    // Finds what the source's prefix is bound to at the copy, and declares it there if nothing
    // does.
    bool bind(XML_DOM_Node* to, const XML_DOM_NsDecl* from, const XML_DOM_NsDecl*& bound,
              std::size_t depth) noexcept
    {
        if (!from) return true;
        if (!target_.find(from->prefix, bound)) return false;
        if (bound) return true;
        const XML_DOM_NsDecl* missing = nullptr;
        if (!source_.find(from->prefix, missing) || !missing || !declare(to, missing, depth))
            return false;
        bound = to->lastNs;
        return true;
    }
    bool copyAttributes(XML_DOM_Node* to, const XML_DOM_Node* from, std::size_t depth) noexcept
    {
        for (const XML_DOM_Attr* attr = from->firstAttr; attr; attr = attr->next) {
            XML_DOM_Attr* copy = bare(attr);
            if (!copy) return false;
            appendAttr(to, copy);
            if (!bind(to, attr->nameSpace, copy->nameSpace, depth)) return false;
        }
        return true;
    }

    Arena* arena_;
    WideStrings wide_;
    DeclarationScope source_;
    DeclarationScope target_;
};

// Copies the children of `source` behind those of `destination`, down to the last that was there.
bool copyChildren(Arena& arena, XML_DOM_Node* destination, const XML_DOM_Node* source) noexcept
{
    NodeCopier copier{&arena, source, source, destination};
    const XML_DOM_Node* last = source->lastChild;
    const XML_DOM_Node* from = source->firstChild;
    XML_DOM_Node* to = destination;
    std::size_t depth = 1;
    for (;;) {
        XML_DOM_Node* copy = copier.bare(from);
        if (!copy) return false;
        appendChild(to, copy);
        if (copy->type == XML_DOM_NODE_ELEMENT && !copier.furnish(copy, from, depth)) return false;
        if (from->firstChild) {
            from = from->firstChild;
            to = copy;
            ++depth;
            continue;
        }
        copier.leave(depth);
        while (depth != 1 && !from->nextSibling) {
            from = from->parent;
            to = to->parent;
            copier.leave(--depth);
        }
        if (depth == 1 && from == last) return true;
        from = from->nextSibling;
    }
}

bool liesInside(const XML_DOM_Node* node, const XML_DOM_Node* top) noexcept
{
    while (node && node != top) node = node->parent;
    return node == top;
}

}  // namespace
}  // namespace netxml

using namespace netxml;

XML_DOM_Node* XML_DOM_CopyNode(const XML_DOM_Node* node)
{
    if (!node) return nullptr;
    NodeCopier copier{nullptr, node, node->parent, nullptr};
    XML_DOM_Node* copy = copier.bare(node);
    if (!copy || copy->type != XML_DOM_NODE_ELEMENT || copier.furnish(copy, node, 1)) return copy;
    XML_DOM_DelNode(copy);
    return nullptr;
}

XML_DOM_Node* XML_DOM_CopyRoot(const XML_DOM_Node* node)
{
    const XML_DOM_Node* root = XML_DOM_GetRoot(node);
    XML_DOM_Node* copy = XML_DOM_CopyNode(root);
    if (!copy) return nullptr;
    if (XML_DOM_SetRoot(copy) == XML_RET_OK) {
        copy->document->encoding = root->document->encoding;
        return copy;
    }
    XML_DOM_DelNode(copy);
    return nullptr;
}

uint32_t XML_DOM_CopySubTree(XML_DOM_Node* destination, const XML_DOM_Node* source)
{
    if (!destination || !source || destination->type != XML_DOM_NODE_ELEMENT) return XML_RET_FAIL;
    if (destination != source && liesInside(destination, source)) return XML_RET_FAIL;
    if (!source->firstChild) return XML_RET_OK;
    markEdited(destination);
    XML_DOM_Node* last = destination->lastChild;
    Arena arena{Arena::kSmallestSlab};
    const bool copied = copyChildren(arena, destination, source);
    arena.seal(false);
    if (copied) return XML_RET_OK;
    deleteAfter(destination, last);
    return XML_RET_FAIL;
}
