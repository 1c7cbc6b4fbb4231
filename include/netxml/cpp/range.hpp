/**
 * @file
 * Ranges over what is in a tree, for range-for and the algorithms of the standard library.
 *
 * Iterators are forward iterators that give handles by value. One ends with its node: to remove
 * nodes on the way, step on before.
 */
#ifndef NETXML_CPP_RANGE_HPP
#define NETXML_CPP_RANGE_HPP

#include "netxml/cpp/utf8_text.hpp"
#include "netxml/dom.h"

#include <cstddef>
#include <iterator>

namespace netxml {
inline namespace face {
namespace detail {

// Makes the handles whose kind is known from elsewhere.
struct Access {
    template <class Handle, class Raw>
    static Handle make(Raw* raw) noexcept
    {
        return Handle{raw, 0};
    }
};

inline const XML_DOM_Node* elementFrom(const XML_DOM_Node* node) noexcept
{
    while (node && XML_DOM_GetNodeType(node) != XML_DOM_NODE_ELEMENT)
        node = XML_DOM_GetNextSibling(node);
    return node;
}

inline XML_DOM_Node* elementFrom(XML_DOM_Node* node) noexcept
{
    while (node && XML_DOM_GetNodeType(node) != XML_DOM_NODE_ELEMENT)
        node = XML_DOM_GetNextSibling(node);
    return node;
}

// The first node from `node` on, among its siblings, that is an element of that name.
inline XML_DOM_Node* namedFrom(XML_DOM_Node* node, const char* name) noexcept
{
    for (; node; node = XML_DOM_GetNextSibling(node)) {
        const char* found = XML_DOM_GetNodeName(node);
        if (found && std::strcmp(found, name) == 0) return node;
    }
    return nullptr;
}

// The ways through a tree. Each says what comes after something.

struct Siblings {
    XML_DOM_Node* after(const XML_DOM_Node* node) const noexcept
    {
        return XML_DOM_GetNextSibling(node);
    }
};

struct ElementSiblings {
    XML_DOM_Node* after(const XML_DOM_Node* node) const noexcept
    {
        return elementFrom(XML_DOM_GetNextSibling(node));
    }
};

struct NamedSiblings {
    const char* name = nullptr;  // the range's

    XML_DOM_Node* after(const XML_DOM_Node* node) const noexcept
    {
        return namedFrom(XML_DOM_GetNextSibling(node), name);
    }
};

// Each node before its children. Takes no stack: the way back is by the parents.
struct InDocumentOrder {
    const XML_DOM_Node* top = nullptr;

    XML_DOM_Node* after(const XML_DOM_Node* node) const noexcept
    {
        XML_DOM_Node* below = XML_DOM_GetFirstChild(node);
        return below ? below : behind(node);
    }
    // The same without what is below the node.
    XML_DOM_Node* behind(const XML_DOM_Node* node) const noexcept
    {
        for (; node && node != top; node = XML_DOM_GetNodeParent(node)) {
            if (XML_DOM_Node* behind = XML_DOM_GetNextSibling(node)) return behind;
        }
        return nullptr;
    }
};

struct AttributesInOrder {
    XML_DOM_Attr* after(const XML_DOM_Attr* attribute) const noexcept
    {
        return XML_DOM_GetNextAttr(attribute);
    }
};

}  // namespace detail

/**
 * A forward iterator over handles. What it gives is a handle by value, since the tree holds none;
 * so its `reference` is none, but several iterators may walk one range, and each as often as it
 * likes.
 */
template <class Handle, class Walk>
class Iterator {
public:
    /** Keeps the handle for `->`. */
    class Arrow {
    public:
        /** Of what an iterator stands at. */
        explicit Arrow(Handle handle) noexcept : handle_{handle} {}
        /** The handle, good until the end of the expression. */
        const Handle* operator->() const noexcept { return &handle_; }

    private:
        Handle handle_;
    };

    using iterator_category = std::forward_iterator_tag; /**< goes one way, any number of times */
    using value_type = Handle;                           /**< what it gives */
    using difference_type = std::ptrdiff_t;              /**< what std::distance() counts in */
    using pointer = Arrow;                               /**< what `->` gives */
    using reference = Handle;                            /**< what `*` gives: a value */

    /** Stands nowhere, as every end of a range does. */
    Iterator() noexcept = default;
    /** Stands at `at`, and goes on as `walk` says. Ranges make it. */
    Iterator(typename Handle::Raw* at, Walk walk) noexcept : at_{at}, walk_{walk} {}

    /** The handle of what it stands at; an empty one at the end. */
    Handle operator*() const noexcept { return detail::Access::make<Handle>(at_); }
    /** A member of that handle. */
    Arrow operator->() const noexcept { return Arrow{**this}; }
    /** Steps on, which must not be done at the end. */
    Iterator& operator++() noexcept
    {
        at_ = walk_.after(at_);
        return *this;
    }
    /** Steps on, and returns where it was. */
    Iterator operator++(int) noexcept
    {
        Iterator before = *this;
        ++*this;
        return before;
    }
    /** Whether both stand at the same place. */
    friend bool operator==(const Iterator& a, const Iterator& b) noexcept { return a.at_ == b.at_; }
    /** Whether they stand at different places. */
    friend bool operator!=(const Iterator& a, const Iterator& b) noexcept { return a.at_ != b.at_; }

private:
    typename Handle::Raw* at_ = nullptr;
    Walk walk_{};
};

/** What lies along one way through a tree. */
template <class Handle, class Walk>
class Range {
public:
    using value_type = Handle;               /**< what is in it */
    using iterator = Iterator<Handle, Walk>; /**< may outlive the range, but not the tree */
    using const_iterator = iterator;         /**< the same: what it gives are values */

    /** From `first` on, as `walk` says. Handles make it. */
    Range(typename Handle::Raw* first, Walk walk) noexcept : first_{first}, walk_{walk} {}

    /** Stands at the first, or at the end if the range is empty. */
    iterator begin() const noexcept { return {first_, walk_}; }
    /** Stands behind the last. */
    iterator end() const noexcept { return {nullptr, walk_}; }
    /** Whether nothing is in it. */
    bool empty() const noexcept { return !first_; }

private:
    typename Handle::Raw* first_;
    Walk walk_;
};

/**
 * The child elements of one name. It holds the name, and its iterators look there: they must not
 * outlive the range.
 */
template <class Handle>
class NamedRange {
public:
    using value_type = Handle;                                /**< what is in it */
    using iterator = Iterator<Handle, detail::NamedSiblings>; /**< ends with the range */
    using const_iterator = iterator; /**< the same: what it gives are values */

    /** Those of that name from `firstChild` on. Handles make it. */
    NamedRange(typename Handle::Raw* firstChild, std::string_view name) noexcept : name_{name}
    {
        if (!name_) return;  // what no tree can hold is not there
        for (first_ = firstChild; first_; first_ = XML_DOM_GetNextSibling(first_)) {
            const char* found = XML_DOM_GetNodeName(first_);
            if (found && std::strcmp(found, name_.text()) == 0) return;
        }
    }
    NamedRange(const NamedRange&) = delete;
    NamedRange& operator=(const NamedRange&) = delete;

    /** Stands at the first, or at the end if there is none of that name. */
    iterator begin() const& noexcept { return {first_, {name_.text()}}; }
    /** Stands behind the last. */
    iterator end() const& noexcept { return {nullptr, {name_.text()}}; }
    void begin() const&& = delete;
    void end() const&& = delete;
    /** Whether there is none of that name. */
    bool empty() const noexcept { return !first_; }

private:
    detail::TreeText name_;
    typename Handle::Raw* first_ = nullptr;
};

}  // namespace face
}  // namespace netxml

#endif
