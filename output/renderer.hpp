// The rendering of nodes as XML text, piece by piece. A rendering adds up the statuses of its
// writes: anything but 0 is a failure.
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

class Renderer {
public:
    Renderer(const PieceOut& out, std::uint32_t flags) noexcept : out_{out}, flags_{flags} {}

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

    const PieceOut& out_;
    std::uint32_t flags_;
};

}  // namespace netxml
