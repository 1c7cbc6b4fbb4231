/**
 * @file
 * How nodes and attributes are made and put in their places. Nothing here is for users.
 */
#ifndef NETXML_CPP_NEW_NODE_HPP
#define NETXML_CPP_NEW_NODE_HPP

#include "netxml/cpp/handle.hpp"

#include <memory>

namespace netxml {
inline namespace face {
namespace detail {

struct DeleteNode {
    void operator()(XML_DOM_Node* node) const noexcept { XML_DOM_DelNode(node); }
};
// A node that no tree owns.
using Detached = std::unique_ptr<XML_DOM_Node, DeleteNode>;

// Where a new node goes: into `parent`, in front of `reference`, or at the end without one.
struct Place {
    XML_DOM_Node* parent;
    XML_DOM_Node* reference;

    static Place last(XML_DOM_Node* parent) noexcept { return {parent, nullptr}; }
    static Place before(XML_DOM_Node* node) noexcept { return {XML_DOM_GetNodeParent(node), node}; }
    static Place after(XML_DOM_Node* node) noexcept
    {
        return {XML_DOM_GetNodeParent(node), XML_DOM_GetNextSibling(node)};
    }

    Status check() const
    {
        if (parent) return {};
        return failure(ErrorKind::Misuse, "the handle is empty, or a root, which has no siblings");
    }
    // Puts a node there; the tree owns it then.
    XML_DOM_Node* take(Detached node) const noexcept
    {
        const uint32_t status = reference ? XML_DOM_InsertBeforeNode(reference, node.get())
                                          : XML_DOM_AddChildNode(parent, node.get());
        return status == XML_RET_OK ? node.release() : nullptr;
    }
};

inline Status checkName(const TreeText& name, std::string_view given)
{
    if (!name) return name.error("a name");
    if (XML_CheckQName(name.text()) == XML_RET_OK) return {};
    return failure(ErrorKind::Argument, '"' + std::string{given} + "\" is no name");
}

inline Error undeclared(std::string_view prefix)
{
    return failure(ErrorKind::Argument,
                   "nothing declares the prefix \"" + std::string{prefix} + "\" here");
}

// What a prefix stands for at an element, as a tree holds it; "" for the default namespace where
// there is none, a value without a text for a prefix that nothing declares.
//
// The interface does not list declarations. But a copy of an element, without its children, has
// those of the element, and can be bound to them. It is made only where no binding in place tells.
inline Result<std::optional<std::string>> resolve(const XML_DOM_Node* element, const char* prefix)
{
    for (const XML_DOM_Node* at = element; at; at = XML_DOM_GetNodeParent(at)) {
        const char* bound = nullptr;
        const char* name = nullptr;
        static_cast<void>(XML_DOM_GetNodeNameSpace(at, &bound, &name));
        if (XML_Strcmp(bound, prefix) == 0) return std::optional<std::string>{name ? name : ""};
        const Detached copy{XML_DOM_CopyNode(at)};
        if (!copy) return noMemory();
        if (XML_DOM_SetNodeNameSpace(copy.get(), prefix) != XML_RET_OK) continue;
        static_cast<void>(XML_DOM_GetNodeNameSpace(copy.get(), &bound, &name));
        if (name) return std::optional<std::string>{name};
    }
    return *prefix == '\0' ? std::optional<std::string>{""} : std::nullopt;
}

// Declares a prefix on an element, unless that declares it so already. False if it declares it
// otherwise, or memory ran out.
inline bool declared(XML_DOM_Node* element, const TreeText& prefix, const char* name)
{
    if (XML_DOM_AddNodeNameSpace(element, prefix.text(), name) == XML_RET_OK) return true;
    const Result<std::optional<std::string>> found = resolve(element, prefix.text());
    return found && *found && **found == name;
}

// Declares a prefix on an element; the empty one is the default namespace.
inline Status declare(XML_DOM_Node* element, std::string_view prefix, std::string_view name)
{
    const TreeText prefixText{prefix};
    const TreeText nameText{name};
    if (!prefixText) return prefixText.error("a prefix");
    if (!nameText) return nameText.error("the name of a namespace");
    if (!prefix.empty()) {
        if (Status checked = checkName(prefixText, prefix); !checked) return checked;
    }
    if (XML_CheckNamespace(prefix.empty() ? nullptr : prefixText.text(), nameText.text()) !=
        XML_RET_OK)
        return failure(ErrorKind::Argument, "the prefix \"" + std::string{prefix} +
                                                "\" may not stand for \"" + std::string{name} +
                                                '"');
    if (!declared(element, prefixText, nameText.text()))
        return failure(ErrorKind::Argument, "the element declares the prefix \"" +
                                                std::string{prefix} +
                                                "\" otherwise, or memory ran out");
    return {};
}

// Gives a new element that is in its place its namespace, declared there if need be.
inline Status bindNew(XML_DOM_Node* element, const Name& name)
{
    const std::optional<std::string_view> wanted = name.namespaceName();
    const TreeText prefix{name.prefix()};
    const TreeText space{wanted.value_or(std::string_view{})};
    if (!prefix) return prefix.error("a prefix");
    if (!space) return space.error("the name of a namespace");
    const bool bound = XML_DOM_SetNodeNameSpace(element, prefix.text()) == XML_RET_OK;
    if (!wanted) return bound ? Status{} : undeclared(name.prefix());
    const char* found = nullptr;
    static_cast<void>(XML_DOM_GetNodeNameSpace(element, nullptr, &found));
    if (bound && XML_Strcmp(found, space.text()) == 0) return {};
    if (Status declared = declare(element, name.prefix(), *wanted); !declared) return declared;
    static_cast<void>(XML_DOM_SetNodeNameSpace(element, prefix.text()));
    return {};
}

// A detached element, perhaps with a text.
inline Result<Detached> makeElement(const Name& name, TextArg text)
{
    const TreeText local{name.local()};
    const TreeText value{text.view()};
    if (Status checked = checkName(local, name.local()); !checked) return checked.error();
    if (!value) return value.error("a text");
    Detached made{text.view().empty() ? XML_DOM_CreateElementNode(local.text())
                                      : XML_DOM_CreateElementWithText(local.text(), value.text())};
    if (!made) return noMemory();
    return made;
}

inline Result<XML_DOM_Node*> addElement(const Place& place, const Name& name, TextArg text)
{
    if (Status there = place.check(); !there) return there.error();
    Result<Detached> made = makeElement(name, text);
    if (!made) return std::move(made).error();
    XML_DOM_Node* element = place.take(*std::move(made));
    if (Status bound = bindNew(element, name); !bound) {
        XML_DOM_DelNode(element);
        return bound.error();
    }
    return element;
}

inline Result<XML_DOM_Node*> addText(const Place& place, XML_DOM_NodeType type, TextArg text)
{
    if (Status there = place.check(); !there) return there.error();
    const TreeText value{text.view()};
    if (!value) return value.error("a text");
    Detached made{type == XML_DOM_NODE_CDATA ? XML_DOM_CreateCDataNode(value.text())
                                             : XML_DOM_CreateTextNode(value.text())};
    if (!made) return noMemory();
    return place.take(std::move(made));
}

// A detached copy of a node with all below it. An element that counts on a default namespace other
// than `outer`, or on none, declares it.
inline Result<Detached> copy(const XML_DOM_Node* source, std::string_view outer)
{
    Detached made{XML_DOM_CopyNode(source)};
    if (!made) return noMemory();
    if (XML_DOM_GetNodeType(source) != XML_DOM_NODE_ELEMENT) return made;
    if (XML_DOM_CopySubTree(made.get(), source) != XML_RET_OK) return noMemory();
    Result<std::optional<std::string>> inner = resolve(source, "");
    if (!inner) return std::move(inner).error();
    const std::string& space = inner->value();
    if (space != outer && !declared(made.get(), TreeText{{}}, space.c_str())) return noMemory();
    return made;
}

inline Result<XML_DOM_Node*> addCopy(const Place& place, ConstNode source)
{
    if (!source) return emptyHandle();
    if (Status there = place.check(); !there) return there.error();
    const Result<std::optional<std::string>> outer = resolve(place.parent, "");
    if (!outer) return outer.error();
    Result<Detached> made = copy(source.raw(), outer->value());
    if (!made) return std::move(made).error();
    return place.take(*std::move(made));
}

inline std::size_t countAttributes(const XML_DOM_Node* element) noexcept
{
    std::size_t count = 0;
    const XML_DOM_Attr* attribute = XML_DOM_GetFirstAttr(element);
    for (; attribute; attribute = XML_DOM_GetNextAttr(attribute)) ++count;
    return count;
}

// Where an attribute stands among the element's; their number if there is none of that name.
inline const XML_DOM_Attr* findAttribute(const XML_DOM_Node* element, const char* name,
                                         const char* space) noexcept
{
    const XML_DOM_Attr* attribute = XML_DOM_GetFirstAttr(element);
    for (; attribute; attribute = XML_DOM_GetNextAttr(attribute)) {
        const char* found = nullptr;
        const char* foundSpace = nullptr;
        static_cast<void>(XML_DOM_GetAttrNameSpace(attribute, &found, &foundSpace));
        if (XML_Strcmp(found, name) == 0 && XML_Strcmp(foundSpace, space) == 0) break;
    }
    return attribute;
}

// Appends the attribute and then deletes the old one, which is the first of its prefix and name.
inline Status replaceAttribute(XML_DOM_Node* element, const TreeText& prefix, const TreeText& local,
                               const TreeText& value, const char* space)
{
    XML_DOM_Attr* fresh = XML_DOM_AddAttrInner(element, local.text(), value.text());
    if (!fresh) return noMemory();
    static_cast<void>(XML_DOM_SetAttrNsInner(fresh, prefix.text()));
    XML_DOM_DelAttr(element, prefix.text(), local.text());
    // If the old one goes by another prefix, it was the new one that went.
    if (findAttribute(element, local.text(), space) == fresh) return {};
    return failure(ErrorKind::Argument, "the element has the attribute by another prefix");
}

inline Status setAttribute(XML_DOM_Node* element, const Name& name, std::string_view value)
{
    const std::optional<std::string_view> wanted = name.namespaceName();
    const TreeText prefix{name.prefix()};
    const TreeText local{name.local()};
    const TreeText text{value};
    const TreeText wantedText{wanted.value_or(std::string_view{})};
    if (!prefix) return prefix.error("a prefix");
    if (!text) return text.error("a value");
    if (!wantedText) return wantedText.error("the name of a namespace");
    if (Status checked = checkName(local, name.local()); !checked) return checked;
    if (name.local() == "xmlns")
        return failure(ErrorKind::Argument, "declareNamespace() declares namespaces");
    if (wanted && wanted->empty() != name.prefix().empty())
        return failure(ErrorKind::Argument, "an attribute has a prefix if it has a namespace");
    std::string space;
    if (!name.prefix().empty()) {
        Result<std::optional<std::string>> found = resolve(element, prefix.text());
        if (!found) return std::move(found).error();
        if (!*found && !wanted) return undeclared(name.prefix());
        if (*found && wanted && **found != wantedText.text())
            return failure(ErrorKind::Argument, "the prefix \"" + std::string{name.prefix()} +
                                                    "\" means another namespace here");
        if (!*found) {
            if (Status made = declare(element, name.prefix(), *wanted); !made) return made;
        }
        space = *found ? **found : wantedText.text();
    }
    if (findAttribute(element, local.text(), space.c_str()))
        return replaceAttribute(element, prefix, local, text, space.c_str());
    if (!XML_DOM_AddAttr(element, prefix.text(), local.text(), text.text())) return noMemory();
    return {};
}

}  // namespace detail
}  // namespace face
}  // namespace netxml

#endif
