// The comparison of a tree with its shadow, by everything that the accessors tell.
#include "fuzz/support/require.hpp"
#include "fuzz/support/shadow_tree.hpp"
#include "fuzz/support/tree_text.hpp"
#include "tests/support/sources.hpp"

namespace {

void sameText(const char* text, const std::string* expected, const char* property)
{
    require((text != nullptr) == (expected != nullptr), property);
    if (text) requireSame(text, *expected, property);
}

std::string pathOf(const ShadowNode& node)
{
    std::string path = node.parent ? pathOf(*node.parent) : "";
    if (!node.isElement()) return path;
    path += "/" + node.text;
    if (!node.parent) return path;
    std::size_t position = 0;
    for (const ShadowOwner& sibling : node.parent->children) {
        if (sibling->isElement() && sibling->text == node.text) ++position;
        if (sibling.get() == &node) break;
    }
    return path + "[" + std::to_string(position) + "]";
}

// Kept: without a prefix an attribute is looked for in its element's default namespace.
const std::string* valueInNamespace(const ShadowNode& node, std::string_view nameSpace,
                                    std::string_view name)
{
    for (const ShadowAttr& attr : node.attrs) {
        if (attr.name != name) continue;
        const bool bound = attr.bound && attr.bound->prefix;
        const ShadowDecl* decl = node.findDecl(bound ? *attr.bound->prefix : "");
        if (decl && decl->name == nameSpace) return &attr.value;
    }
    return nullptr;
}

void compareAttributes(const ShadowNode& shadow)
{
    const XML_DOM_Attr* attr = XML_DOM_GetFirstAttr(shadow.original);
    const std::string* valueOfA = nullptr;
    for (const ShadowAttr& expected : shadow.attrs) {
        require(attr != nullptr, "no attribute is missing");
        const char* name = nullptr;
        const char* nameSpace = nullptr;
        require(XML_DOM_GetAttrNameSpace(attr, &name, &nameSpace) == XML_RET_OK,
                "an attribute tells its namespace");
        sameText(name, &expected.name, "an attribute's name");
        sameText(nameSpace, expected.bound ? &expected.bound->name : nullptr,
                 "an attribute's namespace");
        sameText(XML_DOM_GetAttrValByHandle(attr), &expected.value, "an attribute's value");
        if (!valueOfA && expected.name == "a") valueOfA = &expected.value;
        attr = XML_DOM_GetNextAttr(attr);
    }
    require(attr == nullptr, "there is no other attribute");
    sameText(XML_DOM_GetNodeAttrValByName(shadow.original, "a"), valueOfA,
             "an attribute by its name");
    for (const char* nameSpace : {"urn:a", "urn:b"})
        sameText(XML_DOM_GetNodeNsAttribute(shadow.original, nameSpace, "a"),
                 valueInNamespace(shadow, nameSpace, "a"), "an attribute by its namespace");
    sameText(XML_DOM_GetNodeNsAttribute(shadow.original, nullptr, "a"), valueOfA,
             "an attribute in any namespace");
}

void compareNode(const ShadowNode& shadow)
{
    const XML_DOM_Node* node = shadow.original;
    require(XML_DOM_GetNodeType(node) == shadow.type, "a node's kind");
    sameText(XML_DOM_GetNodeName(node), shadow.isElement() ? &shadow.text : nullptr, "its name");
    sameText(XML_DOM_GetNodeValue(node), shadow.isElement() ? nullptr : &shadow.text, "its value");
    require(XML_DOM_GetNodeParent(node) == (shadow.parent ? shadow.parent->original : nullptr),
            "its parent");

    const char* prefix = nullptr;
    const char* nameSpace = nullptr;
    require(XML_DOM_GetNodeNameSpace(node, &prefix, &nameSpace) == XML_RET_OK, "has a namespace");
    const ShadowDecl* decl = shadow.bound ? shadow.bound : shadow.findDecl("");
    sameText(prefix, decl && decl->prefix ? &*decl->prefix : nullptr, "its prefix");
    sameText(nameSpace, decl ? &decl->name : nullptr, "its namespace");
    compareAttributes(shadow);

    const std::string path = pathOf(shadow);
    std::string buffer(path.size() + 1, '#');
    require(XML_DOM_GetXPath(node, buffer.size(), buffer.data()) == path.size(), "its path's size");
    requireSame(buffer.c_str(), path, "its path");
}

void compareBelow(const ShadowNode& shadow)
{
    compareNode(shadow);
    const XML_DOM_Node* child = XML_DOM_GetFirstChild(shadow.original);
    const std::string* firstText = nullptr;
    const std::string* firstCData = nullptr;
    for (const ShadowOwner& expected : shadow.children) {
        require(child == expected->original, "its children in their order");
        compareBelow(*expected);
        if (!firstText && expected->type == XML_DOM_NODE_TEXT) firstText = &expected->text;
        if (!firstCData && expected->type == XML_DOM_NODE_CDATA) firstCData = &expected->text;
        child = XML_DOM_GetNextSibling(child);
    }
    require(child == nullptr, "it has no other child");
    sameText(XML_DOM_GetFirstTextChildValue(shadow.original), firstText, "its first text");
    sameText(XML_DOM_GetFirstCDataChildValue(shadow.original), firstCData,
             "its first CDATA section");
}

}  // namespace

void compareWithShadow(const ShadowNode& top)
{
    compareBelow(top);
    require(XML_DOM_GetNextSibling(top.original) == nullptr, "a top has no sibling");
    require(XML_DOM_GetRoot(top.original) == (top.document ? top.original : nullptr),
            "its document");
    require(XML_DOM_GetEncoding(top.original) == top.document.value_or(XML_ENCODING_NONE),
            "its encoding");
    const std::string version = "1.0";
    sameText(XML_DOM_GetVersion(top.original), top.document ? &version : nullptr, "its version");

    const auto text = translated(top.original, XML_DOM_WRITE_NO_DECLARATION);
    require(text.has_value(), "it can be written");
    const std::string internal = shadowText(top);
    const bool asItIs = top.document == XML_Encoding{XML_ENCODING_GB18030};
    requireSame(*text, asItIs ? internal : convertTo("UTF-8", internal, "GB18030"),
                "it is written as its shadow is");
}
