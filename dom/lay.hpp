// Laying records with short strings into the slab at hand: the common case of making them, inline.
// Each returns nullptr when there is no room or a string is long; make.hpp does the rest then.
#pragma once

#include "dom/slab.hpp"
#include "support/block_copy.hpp"

namespace netxml {

// A zero-filled record with `textSize` bytes behind it, into which whole blocks may be copied.
template <class Record>
[[gnu::always_inline]] inline Record* layRecord(SlabRoom& room, std::size_t textSize) noexcept
{
    const std::size_t total = Arena::sizeOf(sizeof(Record), textSize);
    if (textSize > Arena::kLongText || !room.holds(total)) return nullptr;
    Home home;
    auto* record = static_cast<Record*>(room.take(total, home));
    zeroBlocks<sizeof(Record)>(record);
    record->home = home;
    return record;
}

[[gnu::always_inline]] inline XML_DOM_Node* layElement(SlabRoom& room, const Span& name) noexcept
{
    auto* node = layRecord<XML_DOM_Node>(room, name.size + 1);
    if (!node) return nullptr;
    char* string = reinterpret_cast<char*>(node + 1);
    copyTerminated(string, name);
    node->name = string;
    node->type = XML_DOM_NODE_ELEMENT;
    return node;
}

[[gnu::always_inline]] inline XML_DOM_Node* layTextual(SlabRoom& room, XML_DOM_NodeType type,
                                                       const Span& value) noexcept
{
    auto* node = layRecord<XML_DOM_Node>(room, value.size + 1);
    if (!node) return nullptr;
    char* string = reinterpret_cast<char*>(node + 1);
    copyTerminated(string, value);
    node->value = string;
    node->type = type;
    return node;
}

[[gnu::always_inline]] inline XML_DOM_Attr* layAttr(SlabRoom& room, const Span& name,
                                                    const Span& value) noexcept
{
    auto* attr = layRecord<XML_DOM_Attr>(room, name.size + value.size + 2);
    if (!attr) return nullptr;
    char* strings = reinterpret_cast<char*>(attr + 1);
    copyTerminated(strings, name);
    attr->name = strings;
    strings += name.size + 1;
    copyTerminated(strings, value);
    attr->value = strings;
    return attr;
}

// `prefix` is nullptr for the default namespace.
[[gnu::always_inline]] inline XML_DOM_NsDecl* layDecl(SlabRoom& room, const Span* prefix,
                                                      const Span& name) noexcept
{
    const std::size_t prefixSize = prefix ? prefix->size + 1 : 0;
    auto* decl = layRecord<XML_DOM_NsDecl>(room, prefixSize + name.size + 1);
    if (!decl) return nullptr;
    char* strings = reinterpret_cast<char*>(decl + 1);
    if (prefix) copyTerminated(strings, *prefix);
    decl->prefix = prefix ? strings : nullptr;
    copyTerminated(strings + prefixSize, name);
    decl->name = strings + prefixSize;
    return decl;
}

// A string of a record as a span; `wide` says that whole blocks may be read from it.
[[gnu::always_inline]] inline Span spanOf(const char* text, bool wide) noexcept
{
    const auto* data = reinterpret_cast<const std::uint8_t*>(text);
    return {data, wide ? lengthInBlocks(text) : std::strlen(text), false, wide};
}

}  // namespace netxml
