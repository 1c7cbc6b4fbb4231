// The records of a tree. The fields before `home` stand in their fixed order; `home` says where a
// record and its strings lie (dom/slab.hpp).
#pragma once

#include "netxml/dom.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace netxml {

// Where a record lies, and which of its strings are heap blocks of their own.
//
// A record starts out in one block with its strings: a heap block of its own, or a piece of a slab.
// A string that is replaced, or that was too long for the slab, is a heap block and freed by
// itself.
struct Home {
    static constexpr std::uint32_t kFirstString = 1;   // name or prefix
    static constexpr std::uint32_t kSecondString = 2;  // value or namespace name
    static constexpr std::uint32_t kOffsetShift =
        2;  // above: the way back to the slab's start in
            // units of 8 bytes; 0 for a record on the heap
    std::uint32_t bits;

    bool owns(std::uint32_t string) const noexcept { return (bits & string) != 0; }
    bool inSlab() const noexcept { return bits >> kOffsetShift != 0; }
    // Of an offset in bytes, a multiple of 8.
    static constexpr std::uint32_t bitsOf(std::uint32_t offset) noexcept
    {
        return offset >> (3 - kOffsetShift);
    }
    std::size_t slabOffset() const noexcept { return std::size_t{bits >> kOffsetShift} * 8; }
};

}  // namespace netxml

// One namespace declaration of one element.
struct XML_DOM_NsDecl {
    XML_DOM_NsDecl* next;
    const char* prefix;  // owned; NULL for the default namespace
    const char* name;    // owned; may be empty
    netxml::Home home;
};
static_assert(std::is_standard_layout_v<XML_DOM_NsDecl>);
static_assert(offsetof(XML_DOM_NsDecl, name) == 2 * sizeof(void*));

struct XML_DOM_Attr {
    XML_DOM_Attr* next;
    XML_DOM_Node* owner;              // the element; not owned
    const XML_DOM_NsDecl* nameSpace;  // bound declaration; not owned, NULL when unprefixed
    const char* name;                 // owned
    const char* value;                // owned
    netxml::Home home;
};
static_assert(std::is_standard_layout_v<XML_DOM_Attr>);
static_assert(offsetof(XML_DOM_Attr, value) == 4 * sizeof(void*));

// What makes an element the root of a document; owned by that element.
struct XML_DOM_Document {
    XML_DOM_Node* root;
    const char* version;  // the constant "1.0"; never freed
    XML_Encoding encoding;
    netxml::Home home;
};
static_assert(offsetof(XML_DOM_Document, encoding) == 2 * sizeof(void*));

struct XML_DOM_Node {
    XML_DOM_Attr* firstAttr;
    XML_DOM_Attr* lastAttr;
    XML_DOM_NsDecl* firstNs;
    XML_DOM_NsDecl* lastNs;
    const XML_DOM_NsDecl* nameSpace;  // bound declaration; not owned, NULL when unprefixed
    XML_DOM_Document* document;       // owned; only on a document's root
    XML_DOM_Node* firstChild;
    XML_DOM_Node* lastChild;
    XML_DOM_Node* nextSibling;
    XML_DOM_Node* parent;
    const char* name;   // owned; elements only
    const char* value;  // owned; text and CDATA only
    XML_DOM_NodeType type;
    netxml::Home home;
};
static_assert(std::is_standard_layout_v<XML_DOM_Node>);
static_assert(offsetof(XML_DOM_Node, value) == 11 * sizeof(void*));
static_assert(offsetof(XML_DOM_Node, type) == 12 * sizeof(void*));
static_assert(sizeof(XML_DOM_Node) == 12 * sizeof(void*) + 8);

namespace netxml {

inline constexpr char kVersion[] = "1.0";

}  // namespace netxml
