// A tree as plain vectors and strings, which goes the way of a library's tree and is compared with
// it. It looks everything up where the library remembers, and keeps nothing twice.
#pragma once

#include "netxml/netxml.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct ShadowDecl {
    std::optional<std::string> prefix;  // nothing for the default namespace
    std::string name;
};

struct ShadowAttr {
    std::string name;
    std::string value;
    const ShadowDecl* bound = nullptr;
};

struct ShadowNode {
    XML_DOM_Node* original = nullptr;  // the library's
    XML_DOM_NodeType type = XML_DOM_NODE_ELEMENT;
    std::string text;  // an element's name, or the value
    ShadowNode* parent = nullptr;
    std::vector<std::unique_ptr<ShadowNode>> children;
    std::vector<std::unique_ptr<ShadowDecl>> decls;
    std::vector<ShadowAttr> attrs;
    const ShadowDecl* bound = nullptr;
    std::optional<XML_Encoding> document;  // of a root: the encoding

    bool isElement() const { return type == XML_DOM_NODE_ELEMENT; }
    ShadowNode* top();
    const ShadowNode* top() const { return const_cast<ShadowNode*>(this)->top(); }
    std::size_t indexInParent() const;
    bool liesUnder(const ShadowNode* other) const;  // or is it

    ShadowNode* append(std::unique_ptr<ShadowNode> child);
    // Empty and nothing are the same prefix.
    ShadowDecl* ownDecl(std::string_view prefix) const;
    const ShadowDecl* findDecl(std::string_view prefix) const;
};
using ShadowOwner = std::unique_ptr<ShadowNode>;

// Copies without children, as XML_DOM_CopyNode() does: `to` is where the copy lies already.
void shadowFurnish(ShadowNode& to, const ShadowNode& from);
ShadowOwner shadowCopy(const ShadowNode& from);
void shadowCopyChildren(ShadowNode& to, const ShadowNode& from);
// Lets each node of a copy know the library's one; both have the same shape.
void shadowAdopt(ShadowNode& shadow, XML_DOM_Node* node);

// A document of ASCII text as events tell of it.
ShadowOwner shadowOf(std::string_view document);

// All nodes, each before its children.
void shadowList(ShadowNode& top, std::vector<ShadowNode*>& nodes);
// The tree as XML text in GB18030, without a declaration.
std::string shadowText(const ShadowNode& node);
// Ends the run where the library's tree is another one.
void compareWithShadow(const ShadowNode& top);
