/**
 * @file
 * Handles of nodes and attributes: what they read.
 *
 * | handle        | stands for                        | edits         |
 * |---------------|-----------------------------------|---------------|
 * | Node          | an element, text or CDATA section | its place     |
 * | Element       | an element                        | what it holds |
 * | TextNode      | a text or CDATA section           | its value     |
 * | Attribute     | an attribute                      | nothing: see Element::setAttribute() |
 * | ConstNode, ConstElement, ConstTextNode | the same in a const Document | nothing |
 *
 * Element and TextNode are Nodes, and each converts to its Const form; a Node becomes one of them
 * by asElement() or asText(), which are empty for another kind.
 */
#ifndef NETXML_CPP_HANDLE_HPP
#define NETXML_CPP_HANDLE_HPP

#include "netxml/cpp/path.hpp"

namespace netxml {
inline namespace face {

class Document;
class Node;
class Element;
class TextNode;
template <class RawNode>
class BasicNode;
template <class RawNode>
class BasicElement;
template <class RawNode>
class BasicTextNode;

/** A node of a const Document: reads, and edits nothing. */
using ConstNode = BasicNode<const XML_DOM_Node>;
/** An element of a const Document: reads, and edits nothing. */
using ConstElement = BasicElement<const XML_DOM_Node>;
/** A text or CDATA section of a const Document: reads, and edits nothing. */
using ConstTextNode = BasicTextNode<const XML_DOM_Node>;

/** The kinds of node. */
enum class NodeKind : uint32_t {
    None = 0,                       /**< of an empty handle */
    Element = XML_DOM_NODE_ELEMENT, /**< has a name, attributes and children */
    Text = XML_DOM_NODE_TEXT,       /**< has a value */
    CData = XML_DOM_NODE_CDATA      /**< has a value, written in a CDATA section */
};

namespace detail {

// The handles that a handle leads to.
template <class RawNode>
struct Handles {
    using AnyNode = ConstNode;
    using AnElement = ConstElement;
    using AText = ConstTextNode;
};
template <>
struct Handles<XML_DOM_Node> {
    using AnyNode = Node;
    using AnElement = Element;
    using AText = TextNode;
};

Result<std::string> written(const XML_DOM_Node* node, uint32_t flags);

}  // namespace detail

/**
 * What a Node and a ConstNode read. `RawNode` is XML_DOM_Node, or a const one. Of an empty handle
 * everything is empty.
 */
template <class RawNode>
class BasicNode {
public:
    using Raw = RawNode;                                            /**< what raw() points to */
    using AnyNode = typename detail::Handles<RawNode>::AnyNode;     /**< Node or ConstNode */
    using AnElement = typename detail::Handles<RawNode>::AnElement; /**< Element or ConstElement */
    using AText = typename detail::Handles<RawNode>::AText; /**< TextNode or ConstTextNode */

    /** An empty handle. */
    BasicNode() noexcept = default;
    /** A node of the C functions, which stays whose it is. */
    explicit BasicNode(RawNode* raw) noexcept : raw_{raw} {}
    /** From one that may edit to one that may not. */
    template <class Other, class = std::enable_if_t<std::is_convertible_v<Other*, RawNode*> &&
                                                    !std::is_same_v<Other, RawNode>>>
    BasicNode(BasicNode<Other> other) noexcept : raw_{other.raw()}
    {
    }

    /** Whether it stands for a node. */
    explicit operator bool() const noexcept { return raw_ != nullptr; }
    /** The node, for the C functions; NULL of an empty handle. */
    RawNode* raw() const noexcept { return raw_; }
    /** Whether both stand for the same node. */
    friend bool operator==(BasicNode a, BasicNode b) noexcept { return a.raw_ == b.raw_; }
    /** Whether they stand for different nodes. */
    friend bool operator!=(BasicNode a, BasicNode b) noexcept { return a.raw_ != b.raw_; }

    /** Its kind; NodeKind::None of an empty handle. */
    NodeKind kind() const noexcept { return static_cast<NodeKind>(XML_DOM_GetNodeType(raw_)); }
    /** Whether it stands for an element. */
    bool isElement() const noexcept { return kind() == NodeKind::Element; }
    /** The node as an element; empty if it is none. */
    AnElement asElement() const noexcept
    {
        return detail::Access::make<AnElement>(isElement() ? raw_ : nullptr);
    }
    /** The node as a text or CDATA section; empty if it is none. */
    AText asText() const noexcept
    {
        return detail::Access::make<AText>(isElement() ? nullptr : raw_);
    }

    /** The element around it; empty for a root. */
    AnElement parent() const noexcept
    {
        return detail::Access::make<AnElement>(static_cast<RawNode*>(XML_DOM_GetNodeParent(raw_)));
    }
    /** The sibling behind it, or an empty handle. */
    AnyNode next() const noexcept { return AnyNode{XML_DOM_GetNextSibling(raw_)}; }
    /** The sibling before it, or an empty handle. Costs a walk over all that are before. */
    AnyNode previous() const noexcept
    {
        RawNode* before = nullptr;
        for (RawNode* node = XML_DOM_GetFirstChild(XML_DOM_GetNodeParent(raw_)); node != raw_;
             node = XML_DOM_GetNextSibling(node)) {
            if (!node) return AnyNode{};  // a root stands among no siblings
            before = node;
        }
        return AnyNode{before};
    }
    /** The next sibling that is an element, or an empty handle. */
    AnElement nextElement() const noexcept
    {
        return detail::Access::make<AnElement>(
            static_cast<RawNode*>(detail::elementFrom(XML_DOM_GetNextSibling(raw_))));
    }

    /** The location path, such as "/config/interface[2]/mtu[1]"; of a text its parent's. */
    std::string path() const
    {
        std::string path(128, '\0');
        for (;;) {
            const std::size_t size = XML_DOM_GetXPath(raw_, path.size(), &path[0]);
            if (size + 1 < path.size() || !raw_) {
                path.resize(size);
                return Text::fromTree(path.c_str()).str();
            }
            path.resize(path.size() * 2);
        }
    }

    /** The node with all below it as XML text, without a declaration, in its document's encoding.
     */
    Result<std::string> write() const
    {
        if (!raw_) return detail::emptyHandle();
        return detail::written(raw_, XML_DOM_WRITE_NO_DECLARATION);
    }

protected:
    BasicNode(RawNode* raw, int) noexcept : raw_{raw} {}

    RawNode* raw_ = nullptr;

private:
    friend struct detail::Access;
};

/** An attribute. It is read through its handle, and edited through its element. */
class Attribute {
public:
    using Raw = const XML_DOM_Attr; /**< what raw() points to */

    /** An empty handle. */
    Attribute() noexcept = default;
    /** An attribute of the C functions. */
    explicit Attribute(const XML_DOM_Attr* raw) noexcept : raw_{raw} {}

    /** Whether it stands for an attribute. */
    explicit operator bool() const noexcept { return raw_ != nullptr; }
    /** The attribute, for the C functions; NULL of an empty handle. */
    const XML_DOM_Attr* raw() const noexcept { return raw_; }
    /** Whether both stand for the same attribute. */
    friend bool operator==(Attribute a, Attribute b) noexcept { return a.raw_ == b.raw_; }
    /** Whether they stand for different attributes. */
    friend bool operator!=(Attribute a, Attribute b) noexcept { return a.raw_ != b.raw_; }

    /** The name without its prefix. */
    Text name() const noexcept
    {
        const char* name = nullptr;
        static_cast<void>(XML_DOM_GetAttrNameSpace(raw_, &name, nullptr));
        return Text::fromTree(name);
    }
    /** The name of its namespace; does not exist without one. */
    Text namespaceName() const noexcept
    {
        const char* name = nullptr;
        static_cast<void>(XML_DOM_GetAttrNameSpace(raw_, nullptr, &name));
        return Text::fromTree(name);
    }
    /** The value; does not exist for an empty handle. */
    Text value() const noexcept { return Text::fromTree(XML_DOM_GetAttrValByHandle(raw_)); }
    /** The next attribute of the element, or an empty handle. */
    Attribute next() const noexcept { return Attribute{XML_DOM_GetNextAttr(raw_)}; }

private:
    friend struct detail::Access;
    Attribute(const XML_DOM_Attr* raw, int) noexcept : raw_{raw} {}

    const XML_DOM_Attr* raw_ = nullptr;
};

/** The attributes of an element, in their order. */
using AttributeRange = Range<Attribute, detail::AttributesInOrder>;

/**
 * What an Element and a ConstElement read, besides what a BasicNode does. Of an empty handle
 * everything is empty.
 */
template <class RawNode>
class BasicElement : public detail::Handles<RawNode>::AnyNode {
    using Base = typename detail::Handles<RawNode>::AnyNode;

public:
    using AnElement = typename detail::Handles<RawNode>::AnElement; /**< Element or ConstElement */
    using AnyNode = Base;                                           /**< Node or ConstNode */
    using Children = Range<AnyNode, detail::Siblings>;              /**< what children() gives */
    using Elements = Range<AnElement, detail::ElementSiblings>;     /**< what elements() gives */
    using Descendants = Range<AnyNode, detail::InDocumentOrder>;    /**< what descendants() gives */

    /** An empty handle. */
    BasicElement() noexcept = default;
    /** From one that may edit to one that may not. */
    template <class Other, class = std::enable_if_t<std::is_convertible_v<Other*, RawNode*> &&
                                                    !std::is_same_v<Other, RawNode>>>
    BasicElement(BasicElement<Other> other) noexcept : Base{other.raw()}
    {
    }

    /** The name without its prefix. */
    Text name() const noexcept { return Text::fromTree(XML_DOM_GetNodeName(raw_)); }
    /** Whether that is the name. For ASCII quicker than to compare name(). */
    bool hasName(TextArg name) const noexcept
    {
        const detail::TreeText wanted{name.view()};
        return wanted && raw_ && XML_Strcmp(XML_DOM_GetNodeName(raw_), wanted.text()) == 0;
    }
    /** The prefix that the element is bound by; does not exist without one. */
    Text prefix() const noexcept { return Text::fromTree(space().prefix); }
    /** The name of its namespace; does not exist without one. */
    Text namespaceName() const noexcept
    {
        const char* name = space().name;
        return Text::fromTree(name && *name ? name : nullptr);
    }
    /** The value of the first child that is a text, or else of the first CDATA section. */
    Text text() const noexcept
    {
        const char* value = XML_DOM_GetFirstTextChildValue(raw_);
        return Text::fromTree(value ? value : XML_DOM_GetFirstCDataChildValue(raw_));
    }

    /** The first child of any kind, or an empty handle. */
    AnyNode firstChild() const noexcept { return AnyNode{XML_DOM_GetFirstChild(raw_)}; }
    /** The first child that is an element, or an empty handle. */
    AnElement firstElement() const noexcept
    {
        return make(detail::elementFrom(XML_DOM_GetFirstChild(raw_)));
    }
    /** The first child element of that name in any namespace, or an empty handle. */
    AnElement child(TextArg name) const noexcept
    {
        const detail::TreeText wanted{name.view()};
        return make(wanted ? detail::namedFrom(XML_DOM_GetFirstChild(raw_), wanted.text())
                           : nullptr);
    }
    /** The same in that namespace; the empty text is none. */
    AnElement child(TextArg name, TextArg namespaceName) const noexcept
    {
        const detail::TreeText wanted{name.view()};
        const detail::TreeText space{namespaceName.view()};
        if (!wanted || !space) return {};
        XML_DOM_Node* node = detail::namedFrom(XML_DOM_GetFirstChild(raw_), wanted.text());
        while (node && XML_Strcmp(make(node).space().name, space.text()) != 0)
            node = detail::namedFrom(XML_DOM_GetNextSibling(node), wanted.text());
        return make(node);
    }

    /** The first attribute, or an empty handle. Namespace declarations are none. */
    Attribute firstAttribute() const noexcept { return Attribute{XML_DOM_GetFirstAttr(raw_)}; }
    /** The first attribute of that name in any namespace, or an empty handle. */
    Attribute attribute(TextArg name) const noexcept { return findAttribute(name, nullptr); }
    /** The attribute of that name in that namespace; the empty text is none. */
    Attribute attribute(TextArg name, TextArg namespaceName) const noexcept
    {
        const detail::TreeText space{namespaceName.view()};
        return space ? findAttribute(name, space.text()) : Attribute{};
    }

    /** All children. */
    Children children() const noexcept { return {XML_DOM_GetFirstChild(raw_), {}}; }
    /** The child elements of that name in any namespace. */
    NamedRange<AnElement> children(TextArg name) const noexcept
    {
        return {XML_DOM_GetFirstChild(raw_), name.view()};
    }
    /** The children that are elements. */
    Elements elements() const noexcept
    {
        return {detail::elementFrom(XML_DOM_GetFirstChild(raw_)), {}};
    }
    /** All attributes, in their order. Namespace declarations are none. */
    AttributeRange attributes() const noexcept { return {XML_DOM_GetFirstAttr(raw_), {}}; }
    /** All that is below, each node before its children. */
    Descendants descendants() const noexcept { return {XML_DOM_GetFirstChild(raw_), {raw_}}; }

    /**
     * The first element at a path.
     *
     * Steps are names of children, without prefixes, with a position among the children of that
     * name or without one for all of them: "interface[2]/mtu". A path that begins with "/" begins
     * with the root's name, as path() does.
     *
     * Returns an element that is there; ErrorKind::NotFound where none is, ErrorKind::Argument for
     * what is no path.
     */
    Result<AnElement> find(TextArg path) const
    {
        Result<detail::Path> steps = detail::Path::read(path.view());
        if (!steps) return std::move(steps).error();
        XML_DOM_Node* at = nullptr;
        if (raw_)
            steps->walk(const_cast<XML_DOM_Node*>(raw_), [&](XML_DOM_Node* node) {
                at = node;
                return false;
            });
        if (at) return make(at);
        return detail::failure(ErrorKind::NotFound, "nothing is at " + std::string{path.view()});
    }
    /** The elements at a path, in the order of the document; none for what is no path. */
    std::vector<AnElement> findAll(TextArg path) const
    {
        std::vector<AnElement> found;
        const Result<detail::Path> steps = detail::Path::read(path.view());
        if (steps && raw_)
            steps->walk(const_cast<XML_DOM_Node*>(raw_), [&](XML_DOM_Node* node) {
                found.push_back(make(node));
                return true;
            });
        return found;
    }

protected:
    using Base::raw_;
    BasicElement(RawNode* raw, int) noexcept : Base{raw} {}

private:
    friend struct detail::Access;
    template <class>
    friend class BasicElement;
    struct Space {
        const char* prefix = nullptr;
        const char* name = nullptr;
    };

    static AnElement make(RawNode* raw) noexcept { return detail::Access::make<AnElement>(raw); }
    Space space() const noexcept
    {
        Space space;
        static_cast<void>(XML_DOM_GetNodeNameSpace(raw_, &space.prefix, &space.name));
        return space;
    }
    // A NULL namespace is any.
    Attribute findAttribute(TextArg name, const char* namespaceName) const noexcept
    {
        const detail::TreeText wanted{name.view()};
        const XML_DOM_Attr* attribute = wanted ? XML_DOM_GetFirstAttr(raw_) : nullptr;
        for (; attribute; attribute = XML_DOM_GetNextAttr(attribute)) {
            const char* found = nullptr;
            const char* space = nullptr;
            static_cast<void>(XML_DOM_GetAttrNameSpace(attribute, &found, &space));
            if (XML_Strcmp(found, wanted.text()) == 0 &&
                (!namespaceName || XML_Strcmp(space, namespaceName) == 0))
                break;
        }
        return Attribute{attribute};
    }
};

/**
 * What a TextNode and a ConstTextNode read, besides what a BasicNode does. Of an empty handle
 * everything is empty.
 */
template <class RawNode>
class BasicTextNode : public detail::Handles<RawNode>::AnyNode {
    using Base = typename detail::Handles<RawNode>::AnyNode;

public:
    /** An empty handle. */
    BasicTextNode() noexcept = default;
    /** From one that may edit to one that may not. */
    template <class Other, class = std::enable_if_t<std::is_convertible_v<Other*, RawNode*> &&
                                                    !std::is_same_v<Other, RawNode>>>
    BasicTextNode(BasicTextNode<Other> other) noexcept : Base{other.raw()}
    {
    }

    /** Whether it is a CDATA section. */
    bool isCData() const noexcept { return this->kind() == NodeKind::CData; }
    /** The text, with references resolved; does not exist for an empty handle. */
    Text value() const noexcept { return Text::fromTree(XML_DOM_GetNodeValue(this->raw_)); }

protected:
    BasicTextNode(RawNode* raw, int) noexcept : Base{raw} {}

private:
    friend struct detail::Access;
};

namespace detail {

inline Result<std::string> written(const XML_DOM_Node* node, uint32_t flags)
{
    char* text = nullptr;
    std::size_t size = 0;
    if (XML_DOM_TranslateStr(node, flags, &text, &size) != XML_RET_OK) {
        const char* encoding = XML_DOM_EncodingEnumToStr(XML_DOM_GetEncoding(node));
        return failure(ErrorKind::Encoding,
                       std::string{"the encoding "} + (encoding ? encoding : "UTF-8") +
                           " lacks a character or is not supported, or memory ran out");
    }
    std::string copy{text, size};
    std::free(text);
    return copy;
}

}  // namespace detail
}  // namespace face
}  // namespace netxml

#endif
