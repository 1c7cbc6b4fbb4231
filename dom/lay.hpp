// Laying records with short strings into the slab at hand: the common case of making them, inline.
// Each returns nullptr when the slab has no room or a string is long; make.hpp does the rest then.
#pragma once

#include "dom/slab.hpp"
#include "support/block_copy.hpp"

namespace netxml {

// A zero-filled record with one string.
template <class Record>
[[gnu::always_inline]] inline Record* layRecord(Arena& arena, const Span& text,
                                                const char* Record::*field) noexcept
{
    if (text.size > Arena::kLongText) return nullptr;
    Home home;
    void* block = arena.roomyRecord(sizeof(Record), text.size + 1, home);
    if (!block) return nullptr;
    zeroBlocks<sizeof(Record)>(block);
    auto* record = static_cast<Record*>(block);
    record->home = home;
    char* string = reinterpret_cast<char*>(record + 1);
    copyTerminated(string, text);
    record->*field = string;
    return record;
}

[[gnu::always_inline]] inline XML_DOM_Node* layElement(Arena& arena, const Span& name) noexcept
{
    XML_DOM_Node* node = layRecord(arena, name, &XML_DOM_Node::name);
    if (node) node->type = XML_DOM_NODE_ELEMENT;
    return node;
}

[[gnu::always_inline]] inline XML_DOM_Node* layTextual(Arena& arena, XML_DOM_NodeType type,
                                                       const Span& value) noexcept
{
    XML_DOM_Node* node = layRecord(arena, value, &XML_DOM_Node::value);
    if (node) node->type = type;
    return node;
}

[[gnu::always_inline]] inline XML_DOM_Attr* layAttr(Arena& arena, const Span& name,
                                                    Span value) noexcept
{
    if (name.size + value.size > Arena::kLongText) return nullptr;
    Home home;
    void* block = arena.roomyRecord(sizeof(XML_DOM_Attr), name.size + value.size + 2, home);
    if (!block) return nullptr;
    zeroBlocks<sizeof(XML_DOM_Attr)>(block);
    auto* attr = static_cast<XML_DOM_Attr*>(block);
    attr->home = home;
    char* strings = reinterpret_cast<char*>(attr + 1);
    copyTerminated(strings, name);
    attr->name = strings;
    strings += name.size + 1;
    copyTerminated(strings, value);
    attr->value = strings;
    return attr;
}

}  // namespace netxml
