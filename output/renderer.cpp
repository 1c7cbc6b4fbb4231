#include "output/renderer.hpp"

namespace netxml {

std::uint32_t Renderer::declaration(const XML_DOM_Node* node) noexcept
{
    if (!node->document) return XML_RET_OK;
    std::uint32_t sum = put("<?xml version=\"");
    sum = addStatus(sum, text(node->document->version));
    sum = addStatus(sum, put("\" encoding=\""));
    sum = addStatus(sum, text(encodingName(node->document->encoding)));
    return addStatus(sum, put("\"?>"));
}

std::uint32_t Renderer::name(const XML_DOM_NsDecl* bound, const char* local) noexcept
{
    std::uint32_t sum = XML_RET_OK;
    if (bound) {
        sum = text(bound->prefix);
        sum = addStatus(sum, put(":"));
    }
    return addStatus(sum, text(local));
}

// A value between its quotes, with the equals sign in front.
std::uint32_t Renderer::quoted(const char* value) noexcept
{
    std::uint32_t sum = put("=\"");
    sum = addStatus(sum, putEscaped(out_, value));
    return addStatus(sum, put("\""));
}

std::uint32_t Renderer::namespaces(const XML_DOM_Node* element) noexcept
{
    std::uint32_t sum = XML_RET_OK;
    for (const XML_DOM_NsDecl* decl = element->firstNs; decl && sum == XML_RET_OK;
         decl = decl->next) {
        if (leavesOut(decl, flags_)) continue;
        sum = put(" xmlns");
        if (decl->prefix) {
            sum = addStatus(sum, put(":"));
            sum = addStatus(sum, text(decl->prefix));
        }
        sum = addStatus(sum, quoted(decl->name));
    }
    return sum;
}

std::uint32_t Renderer::attributes(const XML_DOM_Node* element) noexcept
{
    std::uint32_t sum = XML_RET_OK;
    for (const XML_DOM_Attr* attr = element->firstAttr; attr && sum == XML_RET_OK;
         attr = attr->next) {
        sum = put(" ");
        sum = addStatus(sum, name(attr->nameSpace, attr->name));
        sum = addStatus(sum, quoted(attr->value));
    }
    return sum;
}

// After a failure the rest of a list is left out, but the tag is closed.
std::uint32_t Renderer::startTag(const XML_DOM_Node* element, TagMode mode) noexcept
{
    std::uint32_t sum = put("<");
    sum = addStatus(sum, name(element->nameSpace, element->name));
    sum = addStatus(sum, namespaces(element));
    sum = addStatus(sum, attributes(element));
    const bool empty = mode == TagMode::Whole && !element->firstChild;
    return addStatus(sum, put(empty ? "/>" : ">"));
}

// Kept: a CDATA value is written as it is, also one that holds "]]>", and an empty one as an empty
// piece.
std::uint32_t Renderer::begin(const XML_DOM_Node* node, TagMode mode) noexcept
{
    if (node->type == XML_DOM_NODE_ELEMENT) return startTag(node, mode);
    if (node->type == XML_DOM_NODE_TEXT) return putEscaped(out_, node->value);
    if (node->type != XML_DOM_NODE_CDATA) return XML_RET_OK;
    std::uint32_t sum = put("<![CDATA[");
    sum = addStatus(sum, put(node->value));
    return addStatus(sum, put("]]>"));
}

std::uint32_t Renderer::end(const XML_DOM_Node* node, TagMode mode) noexcept
{
    if (node->type != XML_DOM_NODE_ELEMENT) return XML_RET_OK;
    if (mode == TagMode::Whole && !node->firstChild) return XML_RET_OK;
    std::uint32_t sum = put("</");
    sum = addStatus(sum, name(node->nameSpace, node->name));
    return addStatus(sum, put(">"));
}

// By the rule a node is its begin, its children up to the first that fails, and its end; it fails
// when any of these does. So the elements that are open when something fails have failed with it,
// from the innermost one outwards: `failed` counts them.
std::uint32_t Renderer::whole(const XML_DOM_Node* top) noexcept
{
    std::uint32_t sum = XML_RET_OK;
    std::size_t depth = 0;   // of `node` below `top`
    std::size_t failed = 0;  // the outermost so many of the nodes from `top` to `node`
    for (const XML_DOM_Node* node = top;;) {
        const std::uint32_t begun = begin(node, TagMode::Whole);
        sum = addStatus(sum, begun);
        if (begun != XML_RET_OK) failed = depth + 1;
        if (node->type == XML_DOM_NODE_ELEMENT && node->firstChild) {
            node = node->firstChild;
            ++depth;
            continue;
        }
        for (;;) {
            if (depth == 0) return sum;
            const bool goesOn = failed <= depth;  // this node did not fail
            if (goesOn && node->nextSibling) break;
            node = node->parent;
            --depth;
            const std::uint32_t ended = end(node, TagMode::Whole);
            sum = addStatus(sum, ended);
            if (ended != XML_RET_OK || !goesOn) failed = depth + 1;
        }
        node = node->nextSibling;
    }
}

}  // namespace netxml
