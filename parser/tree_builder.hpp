// The steps that turn events into a tree, for the direct sink and for the exported callbacks alike.
//
// Texts are in the tree's encoding. What is checked is only what would tear the tree: names,
// declarations and duplicates were the scanner's business.
#pragma once

#include "dom/link.hpp"
#include "dom/slab.hpp"

#include <string_view>

namespace netxml {

class TreeBuilder {
public:
    // `root` and `current` are the caller's place in the tree, both NULL at first. Records come
    // from `arena`, or each from the heap for nullptr.
    TreeBuilder(XML_DOM_Node*& root, XML_DOM_Node*& current, Arena* arena) noexcept
        : root_{root}, current_{current}, arena_{arena}
    {
    }

    // Makes an element the root of a new document, or appends it to the current one, and steps into
    // it. False leaves nothing behind; without a root `current` is then NULL.
    [[nodiscard]] bool enterElement(std::string_view name) noexcept;
    // The same for an element that was made already.
    [[nodiscard]] bool enter(XML_DOM_Node* element) noexcept
    {
        if (!place(element)) return refuse(element);
        current_ = element;
        return true;
    }
    void leaveElement() noexcept { current_ = current_->parent; }

    // Each appends to the current element; nullptr or false when memory runs out or, for text, when
    // there is no element to put it into. A prefix without data declares the default namespace.
    XML_DOM_NsDecl* declare(std::string_view prefix, std::string_view name) noexcept;
    XML_DOM_Attr* addAttribute(std::string_view name, std::string_view value) noexcept;
    [[nodiscard]] bool addTextual(XML_DOM_NodeType type, std::string_view value) noexcept;

    // Appends what was made already.
    void add(XML_DOM_Attr* attr) noexcept
    {
        touch();
        appendAttr(current_, attr);
    }
    void add(XML_DOM_Node* textual) noexcept
    {
        touch();
        appendChild(current_, textual);
    }
    bool takesChildren() const noexcept
    {
        return current_ && current_->type == XML_DOM_NODE_ELEMENT;
    }

private:
    // Records that are not this builder's own may lie in the slabs of a finished tree.
    void touch() const noexcept
    {
        if (!arena_) markEdited(current_);
    }
    bool place(XML_DOM_Node* element) noexcept
    {
        if (!root_) return beginDocument(element);
        if (!takesChildren()) return false;
        add(element);
        return true;
    }
    bool refuse(XML_DOM_Node* element) noexcept;
    bool beginDocument(XML_DOM_Node* element) noexcept;

    XML_DOM_Node*& root_;
    XML_DOM_Node*& current_;
    Arena* arena_;
};

}  // namespace netxml
