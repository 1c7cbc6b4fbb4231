// The end of a tree being built, for plain content: the place in it and the slab's room lie in
// registers while the content is crossed.
#pragma once

#include "dom/lay.hpp"
#include "dom/link.hpp"
#include "dom/namespace.hpp"
#include "parser/bindings.hpp"
#include "parser/internal_text.hpp"
#include "parser/open_name.hpp"
#include "parser/tree_builder.hpp"

namespace netxml {

// The declaration that a prefix is bound to; `xml` may be bound without one.
inline const XML_DOM_NsDecl* declarationOf(const QName& name, const Resolution& resolution) noexcept
{
    if (name.prefix.empty()) return nullptr;
    return resolution.binding ? resolution.binding->declaration : &kXmlDeclaration;
}

// Converts a text and appends a node that holds it.
inline ParseError textual(InternalText& values, TreeBuilder& builder, XML_DOM_NodeType type,
                          const Span& text) noexcept
{
    std::string_view converted{""};
    if (!text.empty()) {
        const ParseError error = values.convert(text, converted);
        if (error != ParseError::None) return error;
    }
    return builder.addTextual(type, converted) ? ParseError::None : ParseError::Internal;
}

class PlainTree {
public:
    // Works on copies, which store() puts back.
    PlainTree(InternalText& values, TreeBuilder& builder, SlabRoom& room,
              XML_DOM_Node*& current) noexcept
        : values_{values}, builder_{builder}, roomOfArena_{room},
          currentOfTree_{current}, room_{room}, current_{current}
    {
    }
    PlainTree(const PlainTree&) = delete;
    PlainTree& operator=(const PlainTree&) = delete;

    void store() noexcept
    {
        roomOfArena_ = room_;
        currentOfTree_ = current_;
    }

    // An element that is no part of the tree yet, and its attributes. False when there is no room.
    [[gnu::always_inline]] bool lay(const QName& name) noexcept
    {
        cursorBefore_ = room_.cursor;
        recordsBefore_ = room_.records;
        element_ = layElement(room_, name.local);
        return element_ != nullptr;
    }
    [[gnu::always_inline]] bool lay(Binding& binding) noexcept
    {
        if (!binding.name.ascii) return false;
        XML_DOM_NsDecl* decl =
            layDecl(room_, binding.isDefault() ? nullptr : &binding.prefixSpan, binding.name);
        binding.declaration = decl;
        if (decl) appendDecl(element_, decl);
        return decl != nullptr;
    }
    [[gnu::always_inline]] bool lay(const QName& name, const Span& value,
                                    const Resolution& nameSpace) noexcept
    {
        XML_DOM_Attr* attr = nullptr;
        if (value.ascii) attr = layAttr(room_, name.local, value);
        else attr = layConverted(name.local, value);
        if (!attr) return false;
        if (!name.prefix.empty()) attr->nameSpace = declarationOf(name, nameSpace);
        appendAttr(element_, attr);
        return true;
    }
    const std::uint8_t* nameLaid() const noexcept
    {
        return reinterpret_cast<const std::uint8_t*>(element_->name);
    }
    void forget() noexcept
    {
        if (!element_) return;
        room_.cursor = cursorBefore_;
        room_.records = recordsBefore_;
        element_ = nullptr;
    }

    [[gnu::always_inline]] ParseError enter(const QName& name, const Resolution& nameSpace,
                                            const Bindings&) noexcept
    {
        if (!name.prefix.empty()) element_->nameSpace = declarationOf(name, nameSpace);
        if (!current_) [[unlikely]]
            return enterRoot();
        appendChild(current_, element_);
        current_ = element_;
        element_ = nullptr;
        return ParseError::None;
    }
    [[gnu::always_inline]] ParseError addText(const Span& text) noexcept
    {
        XML_DOM_Node* node = text.ascii ? layTextual(room_, XML_DOM_NODE_TEXT, text) : nullptr;
        if (!node) return addByTree(text);
        appendChild(current_, node);
        return ParseError::None;
    }
    ParseError leave(const OpenName&, const Bindings&) noexcept
    {
        current_ = current_->parent;
        return ParseError::None;
    }

private:
    ParseError enterRoot() noexcept
    {
        roomOfArena_ = room_;
        const bool entered = builder_.enter(element_);
        room_ = roomOfArena_;
        current_ = currentOfTree_;
        element_ = nullptr;
        return entered ? ParseError::None : ParseError::Internal;
    }

    // The way of texts that are long, beyond ASCII, or too much for the slab at hand.
    ParseError addByTree(const Span& text) noexcept
    {
        roomOfArena_ = room_;
        currentOfTree_ = current_;
        const ParseError error = textual(values_, builder_, XML_DOM_NODE_TEXT, text);
        room_ = roomOfArena_;
        return error;
    }
    XML_DOM_Attr* layConverted(const Span& name, const Span& value) noexcept
    {
        std::string_view text;
        if (values_.convert(value, text) != ParseError::None) return nullptr;
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
        return layAttr(room_, name, {bytes, text.size(), false, false});
    }

    InternalText& values_;
    TreeBuilder& builder_;
    SlabRoom& roomOfArena_;
    XML_DOM_Node*& currentOfTree_;
    SlabRoom room_;
    char* cursorBefore_ = nullptr;  // without the element
    std::uint32_t recordsBefore_ = 0;
    XML_DOM_Node* current_;
    XML_DOM_Node* element_ = nullptr;
};

}  // namespace netxml
