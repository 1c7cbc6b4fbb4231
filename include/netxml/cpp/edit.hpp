/**
 * @file
 * Handles that edit.
 *
 * What an operation that fails has begun is taken back: the tree is what it was, but for a
 * namespace that setAttribute() may have declared before memory ran out. Texts given are copied.
 * Editing through a handle that is empty is ErrorKind::Misuse.
 */
#ifndef NETXML_CPP_EDIT_HPP
#define NETXML_CPP_EDIT_HPP

#include "netxml/cpp/new_node.hpp"

namespace netxml {
inline namespace face {

/** A node of a tree that may be edited; it reads what BasicNode does. */
class Node : public BasicNode<XML_DOM_Node> {
public:
    /** An empty handle. */
    Node() noexcept = default;
    /** A node of the C functions, which stays whose it is. */
    explicit Node(XML_DOM_Node* raw) noexcept : BasicNode{raw} {}

    /**
     * Deletes the node with all below it, and empties the handle. Other handles to what is deleted
     * must not be used any more. The root stays: ErrorKind::Misuse. Costs a walk over the siblings
     * before it.
     */
    Status remove()
    {
        if (!raw_) return detail::emptyHandle();
        if (!XML_DOM_GetNodeParent(raw_))
            return detail::failure(ErrorKind::Misuse, "the root cannot be removed");
        XML_DOM_DelNode(std::exchange(raw_, nullptr));
        return {};
    }

    /** Makes an element before this node as Element::addElement() does; Misuse beside a root. */
    Result<Element> insertElementBefore(const Name& name, TextArg text = {}) const;
    /** Makes an element behind this node as Element::addElement() does; Misuse beside a root. */
    Result<Element> insertElementAfter(const Name& name, TextArg text = {}) const;
    /** Makes a text before this node as Element::addText() does; Misuse beside a root. */
    Result<TextNode> insertTextBefore(TextArg text) const;
    /** Makes a text behind this node as Element::addText() does; Misuse beside a root. */
    Result<TextNode> insertTextAfter(TextArg text) const;
    /** Puts a copy before this node as Element::addCopy() does; Misuse beside a root. */
    Result<Node> insertCopyBefore(ConstNode source) const;
    /** Puts a copy behind this node as Element::addCopy() does; Misuse beside a root. */
    Result<Node> insertCopyAfter(ConstNode source) const;

protected:
    Node(XML_DOM_Node* raw, int) noexcept : BasicNode{raw} {}

private:
    friend struct detail::Access;
};

/** A text or CDATA section that may be edited; it reads what BasicTextNode does, and is a Node. */
class TextNode : public BasicTextNode<XML_DOM_Node> {
public:
    /** An empty handle. */
    TextNode() noexcept = default;

    /** Replaces the value. The empty text is refused: remove() the node. */
    Status setValue(TextArg value) const;

private:
    friend struct detail::Access;
    TextNode(XML_DOM_Node* raw, int) noexcept : BasicTextNode{raw, 0} {}
};

/** An element that may be edited; it reads what BasicElement does, and is a Node. */
class Element : public BasicElement<XML_DOM_Node> {
public:
    /** An empty handle. */
    Element() noexcept = default;

    /**
     * Appends an element, with a text in it unless that is empty.
     *
     * See Name for what prefix and namespace mean. ErrorKind::Argument for what is no name, for a
     * prefix that nothing declares here, and for one that may not stand for the namespace.
     */
    Result<Element> addElement(const Name& name, TextArg text = {}) const;
    /**
     * Appends a text, also the empty one. Two that stand side by side are one when the document is
     * parsed again.
     */
    Result<TextNode> addText(TextArg text) const;
    /** Appends a CDATA section. It is written as it is: it must not hold its own end, "]]>". */
    Result<TextNode> addCData(TextArg text) const;
    /**
     * Appends a copy of a node with all below it, also from another document. Its names stay in
     * their namespaces: what has to be declared for that is declared on the copy.
     */
    Result<Node> addCopy(ConstNode source) const;
    /**
     * Makes `text` the one text of the element, in the place of the first that there was, or before
     * its children. Its other texts and CDATA sections go; elements stay. The empty text removes.
     */
    Status setText(TextArg text) const;

    /** Renames the element; prefix and namespace stay. */
    Status rename(TextArg name) const;
    /**
     * Gives an attribute a value. One that is there already moves to the end.
     *
     * The name's prefix must be declared here or above, unless the name has a namespace: then it is
     * declared on this element. ErrorKind::Argument for what is no name, for a prefix that means
     * another namespace here, and where the element has the attribute by another prefix.
     */
    Status setAttribute(const Name& name, TextArg value) const;
    /** Removes the attribute of that name and prefix. Returns whether there was one. */
    bool removeAttribute(const Name& name) const;

    /**
     * Declares a prefix, or, for the empty one, the default namespace: what has no prefix here and
     * below, and no nearer default, is in that one then. ErrorKind::Argument for what may not be
     * declared, if this element declares the prefix otherwise, and if a name here or below has the
     * prefix from above, for another namespace.
     */
    Status declareNamespace(TextArg prefix, TextArg namespaceName) const;
    /** Binds the element to what its place declares for a prefix; the empty one unbinds. */
    Status setPrefix(TextArg prefix) const;

    /** Deletes all children. */
    void clear() const noexcept
    {
        while (XML_DOM_Node* child = XML_DOM_GetFirstChild(raw_)) XML_DOM_DelNode(child);
    }
    /**
     * Makes a document of this element and takes it out of its own, which must not be by the root.
     * The element is copied, and the handle is empty afterwards.
     */
    Result<Document> detach();

private:
    friend struct detail::Access;
    Element(XML_DOM_Node* raw, int) noexcept : BasicElement{raw, 0} {}
};

static_assert(std::is_trivially_copyable_v<Element> && sizeof(Element) == sizeof(void*));
static_assert(std::is_trivially_copyable_v<ConstNode> && sizeof(Attribute) == sizeof(void*));

namespace detail {

template <class Handle>
Result<Handle> handleOf(Result<XML_DOM_Node*> made)
{
    if (!made) return std::move(made).error();
    return Access::make<Handle>(*made);
}

}  // namespace detail

inline Result<Element> Node::insertElementBefore(const Name& name, TextArg text) const
{
    return detail::handleOf<Element>(detail::addElement(detail::Place::before(raw_), name, text));
}

inline Result<Element> Node::insertElementAfter(const Name& name, TextArg text) const
{
    return detail::handleOf<Element>(detail::addElement(detail::Place::after(raw_), name, text));
}

inline Result<TextNode> Node::insertTextBefore(TextArg text) const
{
    return detail::handleOf<TextNode>(
        detail::addText(detail::Place::before(raw_), XML_DOM_NODE_TEXT, text));
}

inline Result<TextNode> Node::insertTextAfter(TextArg text) const
{
    return detail::handleOf<TextNode>(
        detail::addText(detail::Place::after(raw_), XML_DOM_NODE_TEXT, text));
}

inline Result<Node> Node::insertCopyBefore(ConstNode source) const
{
    return detail::handleOf<Node>(detail::addCopy(detail::Place::before(raw_), source));
}

inline Result<Node> Node::insertCopyAfter(ConstNode source) const
{
    return detail::handleOf<Node>(detail::addCopy(detail::Place::after(raw_), source));
}

inline Status TextNode::setValue(TextArg value) const
{
    if (!raw_) return detail::emptyHandle();
    const detail::TreeText text{value.view()};
    if (!text) return text.error("a text");
    if (value.view().empty())
        return detail::failure(ErrorKind::Argument, "a text cannot be made empty");
    if (XML_DOM_SetNodeValue(raw_, text.text()) != XML_RET_OK) return detail::noMemory();
    return {};
}

inline Result<Element> Element::addElement(const Name& name, TextArg text) const
{
    return detail::handleOf<Element>(detail::addElement(detail::Place::last(raw_), name, text));
}

inline Result<TextNode> Element::addText(TextArg text) const
{
    return detail::handleOf<TextNode>(
        detail::addText(detail::Place::last(raw_), XML_DOM_NODE_TEXT, text));
}

inline Result<TextNode> Element::addCData(TextArg text) const
{
    return detail::handleOf<TextNode>(
        detail::addText(detail::Place::last(raw_), XML_DOM_NODE_CDATA, text));
}

inline Result<Node> Element::addCopy(ConstNode source) const
{
    return detail::handleOf<Node>(detail::addCopy(detail::Place::last(raw_), source));
}

inline Status Element::setText(TextArg text) const
{
    if (!raw_) return detail::emptyHandle();
    Node first = firstChild();
    for (Node node = first; node; node = node.next()) {
        if (node.isElement()) continue;
        first = node;
        break;
    }
    XML_DOM_Node* fresh = nullptr;
    if (!text.view().empty()) {
        const detail::Place place =
            first ? detail::Place::before(first.raw()) : detail::Place::last(raw_);
        const Result<XML_DOM_Node*> made = detail::addText(place, XML_DOM_NODE_TEXT, text);
        if (!made) return made.error();
        fresh = *made;
    }
    for (Node node = firstChild(); node;) {
        const Node old = std::exchange(node, node.next());
        if (!old.isElement() && old.raw() != fresh) XML_DOM_DelNode(old.raw());
    }
    return {};
}

inline Status Element::rename(TextArg name) const
{
    if (!raw_) return detail::emptyHandle();
    const detail::TreeText text{name.view()};
    if (Status checked = detail::checkName(text, name.view()); !checked) return checked;
    if (XML_DOM_SetNodeName(raw_, text.text()) != XML_RET_OK) return detail::noMemory();
    return {};
}

inline Status Element::declareNamespace(TextArg prefix, TextArg namespaceName) const
{
    if (!raw_) return detail::emptyHandle();
    return detail::declareAnew(raw_, prefix.view(), namespaceName.view());
}

inline Status Element::setPrefix(TextArg prefix) const
{
    if (!raw_) return detail::emptyHandle();
    const detail::TreeText text{prefix.view()};
    if (!text) return text.error("a prefix");
    if (XML_DOM_SetNodeNameSpace(raw_, text.text()) != XML_RET_OK)
        return detail::undeclared(prefix.view());
    return {};
}

inline bool Element::removeAttribute(const Name& name) const
{
    const detail::TreeText prefix{name.prefix()};
    const detail::TreeText local{name.local()};
    if (!prefix || !local) return false;
    const std::size_t before = detail::countAttributes(raw_);
    XML_DOM_DelAttr(raw_, prefix.text(), local.text());
    return detail::countAttributes(raw_) != before;
}

inline Status Element::setAttribute(const Name& name, TextArg value) const
{
    if (!raw_) return detail::emptyHandle();
    return detail::setAttribute(raw_, name, value.view());
}

}  // namespace face
}  // namespace netxml

#endif
