// Making single records with their strings, in an arena or each in a heap block of its own.
//
// A record is complete or not made at all. Texts need no terminator and are copied; a view without
// data stands for a string that the record does not have.
#pragma once

#include "dom/slab.hpp"

#include <string_view>

namespace netxml {

// Each returns nullptr when memory runs out. `arena` may be nullptr.
XML_DOM_Node* makeElement(Arena* arena, std::string_view name) noexcept;
XML_DOM_Node* makeTextual(Arena* arena, XML_DOM_NodeType type, std::string_view value) noexcept;
XML_DOM_Attr* makeAttr(Arena* arena, std::string_view name, std::string_view value) noexcept;
XML_DOM_NsDecl* makeDecl(Arena* arena, std::string_view prefix, std::string_view name) noexcept;
XML_DOM_Document* makeDocument(Arena* arena, XML_DOM_Node* root) noexcept;

// Puts a heap copy in place of one of a record's strings; false, and nothing has changed, when
// memory runs out. The new text may be the old one.
bool replaceString(const char*& string, Home& home, std::uint32_t which, const char* text) noexcept;

// The text of a string that may be NULL, as a view without data then.
inline std::string_view viewOf(const char* text) noexcept
{
    return text ? std::string_view{text} : std::string_view{};
}

}  // namespace netxml
