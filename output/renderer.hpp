// The rendering of nodes as XML text, over whatever takes the pieces.
//
// An Out has `std::uint32_t put(std::string_view piece)`, which returns a status. A rendering adds
// up the statuses of its writes: anything but 0 is a failure.
#pragma once

#include "dom/node.hpp"
#include "io/encoding.hpp"
#include "netxml/dom.h"
#include "output/escape.hpp"
#include "support/statuses.hpp"

#include <cstring>

namespace netxml {

// Whether the flags leave this declaration out.
inline bool leavesOut(const XML_DOM_NsDecl* decl, std::uint32_t flags) noexcept
{
    return (flags & XML_DOM_WRITE_NO_NETCONF_BASE) != 0 &&
           std::strcmp(decl->name, "urn:ietf:params:xml:ns:netconf:base:1.0") == 0;
}

enum class TagMode {
    Begin,  // an element is always opened with ">" and closed with an end tag
    Whole,  // an element without children is one tag that ends in "/>"
};

template <class Out>
class Renderer {
public:
    Renderer(Out& out, std::uint32_t flags) noexcept : out_{out}, flags_{flags} {}

    // The XML declaration, in front of a document's root only.
    std::uint32_t declaration(const XML_DOM_Node* node) noexcept;
    std::uint32_t begin(const XML_DOM_Node* node, TagMode mode) noexcept;
    std::uint32_t end(const XML_DOM_Node* node, TagMode mode) noexcept;
    // A node with its subtree.
    std::uint32_t whole(const XML_DOM_Node* node) noexcept;

private:
    std::uint32_t put(std::string_view piece) noexcept { return out_.put(piece); }
    std::uint32_t text(const char* string) noexcept
    {
        return string && *string != '\0' ? put(string) : XML_RET_OK;
    }
    std::uint32_t name(const XML_DOM_NsDecl* bound, const char* local) noexcept;
    std::uint32_t quoted(const char* value) noexcept;
    std::uint32_t startTag(const XML_DOM_Node* element, TagMode mode) noexcept;
    std::uint32_t namespaces(const XML_DOM_Node* element) noexcept;
    std::uint32_t attributes(const XML_DOM_Node* element) noexcept;

    Out& out_;
    std::uint32_t flags_;
};

template <class Out>
std::uint32_t Renderer<Out>::declaration(const XML_DOM_Node* node) noexcept
{
    if (!node->document) return XML_RET_OK;
    std::uint32_t sum = put("<?xml version=\"");
    sum = addStatus(sum, text(node->document->version));
    sum = addStatus(sum, put("\" encoding=\""));
    sum = addStatus(sum, text(encodingName(node->document->encoding)));
    return addStatus(sum, put("\"?>"));
}

template <class Out>
std::uint32_t Renderer<Out>::name(const XML_DOM_NsDecl* bound, const char* local) noexcept
{
    std::uint32_t sum = XML_RET_OK;
    if (bound) {
        sum = text(bound->prefix);
        sum = addStatus(sum, put(":"));
    }
    return addStatus(sum, text(local));
}

// A value between its quotes, with the equals sign in front.
template <class Out>
std::uint32_t Renderer<Out>::quoted(const char* value) noexcept
{
    std::uint32_t sum = put("=\"");
    sum = addStatus(sum, putEscaped(out_, value));
    return addStatus(sum, put("\""));
}

template <class Out>
std::uint32_t Renderer<Out>::namespaces(const XML_DOM_Node* element) noexcept
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

template <class Out>
std::uint32_t Renderer<Out>::attributes(const XML_DOM_Node* element) noexcept
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
template <class Out>
std::uint32_t Renderer<Out>::startTag(const XML_DOM_Node* element, TagMode mode) noexcept
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
template <class Out>
std::uint32_t Renderer<Out>::begin(const XML_DOM_Node* node, TagMode mode) noexcept
{
    if (node->type == XML_DOM_NODE_ELEMENT) return startTag(node, mode);
    if (node->type == XML_DOM_NODE_TEXT) return putEscaped(out_, node->value);
    if (node->type != XML_DOM_NODE_CDATA) return XML_RET_OK;
    std::uint32_t sum = put("<![CDATA[");
    sum = addStatus(sum, put(node->value));
    return addStatus(sum, put("]]>"));
}

template <class Out>
std::uint32_t Renderer<Out>::end(const XML_DOM_Node* node, TagMode mode) noexcept
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
template <class Out>
std::uint32_t Renderer<Out>::whole(const XML_DOM_Node* top) noexcept
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
