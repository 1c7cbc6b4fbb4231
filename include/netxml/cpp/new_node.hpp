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

// What a prefix stands for at an element, in a string of the tree; NULL where nothing declares it.
//
// The interface does not answer this, but a child that is bound by the prefix does. It is there for
// this call alone, in front of the others, where neither putting in nor taking out costs a walk.
inline Result<const char*> resolve(XML_DOM_Node* element, const char* prefix)
{
    const Detached probe{XML_DOM_CreateElementNode("probe")};
    if (!probe) return noMemory();
    XML_DOM_Node* first = XML_DOM_GetFirstChild(element);
    const uint32_t status = first ? XML_DOM_InsertBeforeNode(first, probe.get())
                                  : XML_DOM_AddChildNode(element, probe.get());
    const char* name = nullptr;
    if (status == XML_RET_OK && XML_DOM_SetNodeNameSpace(probe.get(), prefix) == XML_RET_OK)
        static_cast<void>(XML_DOM_GetNodeNameSpace(probe.get(), nullptr, &name));
    return name;
}

// Calls `use` with each element from `top` down, or attribute of one, that has its name by that
// string of the tree; the other argument is NULL.
template <class Use>
void eachUse(XML_DOM_Node* top, const char* space, Use&& use)
{
    for (XML_DOM_Node* node = top; node; node = InDocumentOrder{top}.after(node)) {
        if (XML_DOM_GetNodeType(node) != XML_DOM_NODE_ELEMENT) continue;
        const char* found = nullptr;
        static_cast<void>(XML_DOM_GetNodeNameSpace(node, nullptr, &found));
        if (found == space) use(node, nullptr);
        XML_DOM_Attr* attribute = XML_DOM_GetFirstAttr(node);
        for (; attribute; attribute = XML_DOM_GetNextAttr(attribute)) {
            static_cast<void>(XML_DOM_GetAttrNameSpace(attribute, nullptr, &found));
            if (found == space) use(nullptr, attribute);
        }
    }
}

// Declares a prefix on an element, unless that declares it so already. False if it declares it
// otherwise, or memory ran out.
inline bool declared(XML_DOM_Node* element, const TreeText& prefix, const char* name)
{
    if (XML_DOM_AddNodeNameSpace(element, prefix.text(), name) == XML_RET_OK) return true;
    const Result<const char*> found = resolve(element, prefix.text());
    return found && *found && std::strcmp(*found, name) == 0;
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

// Declares a prefix on an element that may have used it: a name that has it from above would be
// written with the new declaration around it. It is refused for another namespace, and for the same
// one it is bound anew: a name is bound to the nearest declaration of its prefix.
inline Status declareAnew(XML_DOM_Node* element, std::string_view prefix, std::string_view name)
{
    const TreeText prefixText{prefix};
    const TreeText nameText{name};
    if (prefix.empty() || !prefixText || !nameText) return declare(element, prefix, name);
    const Result<const char*> found = resolve(element, prefixText.text());
    if (!found) return found.error();
    const char* outer = *found;
    bool used = false;
    if (outer && std::strcmp(outer, nameText.text()) != 0)
        eachUse(element, outer, [&](XML_DOM_Node*, XML_DOM_Attr*) { used = true; });
    if (used)
        return failure(ErrorKind::Argument, "the prefix \"" + std::string{prefix} +
                                                "\" is in use here for another namespace");
    if (Status made = declare(element, prefix, name); !made || !outer) return made;
    eachUse(element, outer, [&](XML_DOM_Node* node, XML_DOM_Attr* attribute) {
        static_cast<void>(node ? XML_DOM_SetNodeNameSpace(node, prefixText.text())
                               : XML_DOM_SetAttrNsInner(attribute, prefixText.text()));
    });
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

// The default namespace that a copy, or something below it, counts on without declaring it, as the
// source has it: "" for none; NULL where nothing counts on it.
inline const char* missingDefault(const XML_DOM_Node* copy, const XML_DOM_Node* source) noexcept
{
    const InDocumentOrder copies{copy};
    const InDocumentOrder sources{source};
    while (copy) {
        const char* prefix = nullptr;
        const char* name = nullptr;
        static_cast<void>(XML_DOM_GetNodeNameSpace(copy, &prefix, &name));
        const bool isElement = XML_DOM_GetNodeType(copy) == XML_DOM_NODE_ELEMENT;
        if (isElement && !name) {
            static_cast<void>(XML_DOM_GetNodeNameSpace(source, &prefix, &name));
            return name ? name : "";
        }
        // Below an element that finds its default in the copy, all do.
        const bool covered = isElement && !prefix;
        copy = covered ? copies.behind(copy) : copies.after(copy);
        source = covered ? sources.behind(source) : sources.after(source);
    }
    return nullptr;
}

// A detached copy of a node with all below it. An element that counts on a default namespace other
// than `outer`, or on none, declares it.
inline Result<Detached> copy(const XML_DOM_Node* source, const char* outer)
{
    Detached made{XML_DOM_CopyNode(source)};
    if (!made) return noMemory();
    if (XML_DOM_GetNodeType(source) != XML_DOM_NODE_ELEMENT) return made;
    if (XML_DOM_CopySubTree(made.get(), source) != XML_RET_OK) return noMemory();
    const char* space = missingDefault(made.get(), source);
    if (space && XML_Strcmp(space, outer) != 0 && !declared(made.get(), TreeText{{}}, space))
        return noMemory();
    return made;
}

inline Result<XML_DOM_Node*> addCopy(const Place& place, ConstNode source)
{
    if (!source) return emptyHandle();
    if (Status there = place.check(); !there) return there.error();
    const Result<const char*> outer = resolve(place.parent, "");
    if (!outer) return outer.error();
    Result<Detached> made = copy(source.raw(), *outer);
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

// The attribute of that name in that namespace, "" for none; NULL if the element has it not.
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

inline Error byAnotherPrefix()
{
    return failure(ErrorKind::Argument, "the element has the attribute by another prefix");
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
    return byAnotherPrefix();
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
    const char* space = "";
    if (!name.prefix().empty()) {
        const Result<const char*> found = resolve(element, prefix.text());
        if (!found) return found.error();
        if (!*found && !wanted) return undeclared(name.prefix());
        if (*found && wanted && std::strcmp(*found, wantedText.text()) != 0)
            return failure(ErrorKind::Argument, "the prefix \"" + std::string{name.prefix()} +
                                                    "\" means another namespace here");
        if (!*found) {
            if (findAttribute(element, local.text(), wantedText.text())) return byAnotherPrefix();
            if (Status made = declare(element, name.prefix(), *wanted); !made) return made;
        }
        space = *found ? *found : wantedText.text();
    }
    if (findAttribute(element, local.text(), space))
        return replaceAttribute(element, prefix, local, text, space);
    if (!XML_DOM_AddAttr(element, prefix.text(), local.text(), text.text())) return noMemory();
    return {};
}

}  // namespace detail
}  // namespace face
}  // namespace netxml

#endif
