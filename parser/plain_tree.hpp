// The end of a tree being built, for plain content: the place in it and the slab's room lie in
// registers while the content is crossed.
#pragma once

#include "dom/lay.hpp"
#include "dom/link.hpp"
#include "dom/namespace.hpp"
#include "parser/bindings.hpp"
#include "parser/open_name.hpp"
#include "parser/tree_builder.hpp"

namespace netxml {

// The declaration that a prefix is bound to; `xml` may be bound without one.
inline const XML_DOM_NsDecl* declarationOf(const QName& name, const Resolution& resolution) noexcept
{
    if (name.prefix.empty()) return nullptr;
    return resolution.binding ? resolution.binding->declaration : &kXmlDeclaration;
}

class PlainTree {
public:
    // Works on copies, which store() puts back.
    PlainTree(TreeBuilder& builder, SlabRoom& room, XML_DOM_Node*& current) noexcept
        : builder_{builder}, roomOfArena_{room}, currentOfTree_{current}, room_{room}, current_{
                                                                                           current}
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
        before_ = room_;
        element_ = layElement(room_, name.local);
        return element_ != nullptr;
    }
    [[gnu::always_inline]] bool lay(Binding& binding) noexcept
    {
        XML_DOM_NsDecl* decl =
            layDecl(room_, binding.isDefault() ? nullptr : &binding.prefixSpan, binding.name);
        binding.declaration = decl;
        if (decl) appendDecl(element_, decl);
        return decl != nullptr;
    }
    [[gnu::always_inline]] bool lay(const QName& name, const Span& value,
                                    const Resolution& nameSpace) noexcept
    {
        XML_DOM_Attr* attr = layAttr(room_, name.local, value);
        if (!attr) return false;
        attr->nameSpace = declarationOf(name, nameSpace);
        appendAttr(element_, attr);
        return true;
    }
    void forget() noexcept
    {
        if (element_) room_ = before_;
        element_ = nullptr;
    }

    [[gnu::always_inline]] ParseError enter(const QName& name, const Resolution& nameSpace,
                                            const Bindings&) noexcept
    {
        element_->nameSpace = declarationOf(name, nameSpace);
        if (!current_) return enterRoot();
        appendChild(current_, element_);
        current_ = element_;
        element_ = nullptr;
        return ParseError::None;
    }
    [[gnu::always_inline]] bool addText(const Span& text, ParseError&) noexcept
    {
        XML_DOM_Node* node = layTextual(room_, XML_DOM_NODE_TEXT, text);
        if (node) appendChild(current_, node);
        return node != nullptr;
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

    TreeBuilder& builder_;
    SlabRoom& roomOfArena_;
    XML_DOM_Node*& currentOfTree_;
    SlabRoom room_;
    SlabRoom before_{};  // without the element
    XML_DOM_Node* current_;
    XML_DOM_Node* element_ = nullptr;
};

}  // namespace netxml
