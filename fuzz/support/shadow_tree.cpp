#include "fuzz/support/shadow_tree.hpp"

#include "fuzz/support/require.hpp"

namespace {

const ShadowDecl kXmlDecl{"xml", XML_NAMESPACE_XML};

std::string_view prefixOf(const ShadowDecl& decl)
{
    return decl.prefix ? std::string_view{*decl.prefix} : std::string_view{};
}

// What a name of the source is bound to at its copy: the declaration that is there, or else a new
// one as the source has it.
const ShadowDecl* rebound(ShadowNode& to, const ShadowNode& from, const ShadowDecl* bound)
{
    if (!bound) return nullptr;
    if (const ShadowDecl* there = to.findDecl(prefixOf(*bound))) return there;
    const ShadowDecl* source = from.findDecl(prefixOf(*bound));
    require(source != nullptr, "a binding can be resolved");
    to.decls.push_back(std::make_unique<ShadowDecl>(*source));
    return to.decls.back().get();
}

struct Builder {
    ShadowOwner root;
    ShadowNode* current = nullptr;

    static Builder& of(XML_Parser* parser)
    {
        return *static_cast<Builder*>(parser->handler->userData);
    }
    ShadowNode* add(XML_DOM_NodeType type, std::string text)
    {
        auto node = std::make_unique<ShadowNode>();
        node->type = type;
        node->text = std::move(text);
        if (current) return current->append(std::move(node));
        root = std::move(node);
        return root.get();
    }
    static void start(XML_Parser* parser, const char* name, const char* prefix, const char*,
                      uint32_t declCount, const char** decls, uint32_t attrCount, uint32_t,
                      const char** attrs)
    {
        Builder& self = of(parser);
        ShadowNode* node = self.current = self.add(XML_DOM_NODE_ELEMENT, name);
        for (uint32_t i = 0; i < declCount; ++i, decls += 2) {
            auto decl = std::make_unique<ShadowDecl>();
            if (decls[0]) decl->prefix = decls[0];
            decl->name = decls[1];
            node->decls.push_back(std::move(decl));
        }
        if (prefix) node->bound = node->findDecl(prefix);
        for (uint32_t i = 0; i < attrCount; ++i, attrs += 5)
            node->attrs.push_back(
                {attrs[0], attrs[3], attrs[1] ? node->findDecl(attrs[1]) : nullptr});
    }
    static void end(XML_Parser* parser, const char*, const char*, const char*)
    {
        of(parser).current = of(parser).current->parent;
    }
    static void characters(XML_Parser* parser, const char* text, uint32_t length)
    {
        of(parser).add(XML_DOM_NODE_TEXT, {text, length});
    }
    static void cdata(XML_Parser* parser, const char* text, uint32_t length)
    {
        of(parser).add(XML_DOM_NODE_CDATA, {text, length});
    }
};

std::string escaped(const std::string& value)
{
    std::string result;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const char c = value[i];
        const bool border = i == 0 || i + 1 == value.size();
        if (c == '<') result += "&lt;";
        else if (c == '>') result += "&gt;";
        else if (c == '&') result += "&amp;";
        else if (border && c == ' ') result += "&#x20;";
        else if (border && c == '\t') result += "&#x09;";
        else if (border && c == '\n') result += "&#x0a;";
        else if (border && c == '\r') result += "&#x0d;";
        else result += c;
    }
    return result;
}

std::string qualified(const ShadowDecl* bound, const std::string& name)
{
    return bound ? std::string{prefixOf(*bound)} + ":" + name : name;
}

}  // namespace

ShadowNode* ShadowNode::top()
{
    ShadowNode* node = this;
    while (node->parent) node = node->parent;
    return node;
}

std::size_t ShadowNode::indexInParent() const
{
    std::size_t at = 0;
    while (parent->children[at].get() != this) ++at;
    return at;
}

bool ShadowNode::liesUnder(const ShadowNode* other) const
{
    const ShadowNode* node = this;
    while (node && node != other) node = node->parent;
    return node == other;
}

ShadowNode* ShadowNode::append(ShadowOwner child)
{
    child->parent = this;
    children.push_back(std::move(child));
    return children.back().get();
}

ShadowDecl* ShadowNode::ownDecl(std::string_view prefix) const
{
    for (const auto& decl : decls)
        if (prefixOf(*decl) == prefix) return decl.get();
    return nullptr;
}

const ShadowDecl* ShadowNode::findDecl(std::string_view prefix) const
{
    for (const ShadowNode* node = this; node; node = node->parent)
        if (const ShadowDecl* decl = node->ownDecl(prefix)) return decl;
    return prefix == "xml" ? &kXmlDecl : nullptr;
}

void shadowFurnish(ShadowNode& to, const ShadowNode& from)
{
    to.type = from.type;
    to.text = from.text;
    for (const auto& decl : from.decls) to.decls.push_back(std::make_unique<ShadowDecl>(*decl));
    to.bound = rebound(to, from, from.bound);
    for (const ShadowAttr& attr : from.attrs) {
        const ShadowDecl* bound = rebound(to, from, attr.bound);
        to.attrs.push_back({attr.name, attr.value, bound});
    }
}

ShadowOwner shadowCopy(const ShadowNode& from)
{
    auto copy = std::make_unique<ShadowNode>();
    shadowFurnish(*copy, from);
    return copy;
}

void shadowCopyChildren(ShadowNode& to, const ShadowNode& from)
{
    const std::size_t count = from.children.size();
    for (std::size_t i = 0; i < count; ++i) {
        ShadowNode* copy = to.append(std::make_unique<ShadowNode>());
        shadowFurnish(*copy, *from.children[i]);
        shadowCopyChildren(*copy, *from.children[i]);
    }
}

void shadowAdopt(ShadowNode& shadow, XML_DOM_Node* node)
{
    require(node != nullptr, "the tree has as many nodes as its shadow");
    shadow.original = node;
    XML_DOM_Node* child = XML_DOM_GetFirstChild(node);
    for (const ShadowOwner& shadowChild : shadow.children) {
        shadowAdopt(*shadowChild, child);
        child = XML_DOM_GetNextSibling(child);
    }
    require(child == nullptr, "the tree has no more nodes than its shadow");
}

ShadowOwner shadowOf(std::string_view document)
{
    Builder builder;
    XML_SAX_Handler handler{};
    handler.userData = &builder;
    handler.startElementNs = Builder::start;
    handler.endElementNs = Builder::end;
    handler.characters = Builder::characters;
    handler.cdata = Builder::cdata;
    const auto* bytes = reinterpret_cast<const uint8_t*>(document.data());
    if (XML_Parser_ByMem(bytes, static_cast<uint32_t>(document.size()), &handler) != XML_RET_OK)
        return nullptr;
    builder.root->document = XML_ENCODING_UTF_8;
    return std::move(builder.root);
}

void shadowList(ShadowNode& top, std::vector<ShadowNode*>& nodes)
{
    nodes.push_back(&top);
    for (const ShadowOwner& child : top.children) shadowList(*child, nodes);
}

std::string shadowText(const ShadowNode& node)
{
    if (node.type == XML_DOM_NODE_TEXT) return escaped(node.text);
    if (node.type == XML_DOM_NODE_CDATA) return "<![CDATA[" + node.text + "]]>";
    const std::string name = qualified(node.bound, node.text);
    std::string text = "<" + name;
    for (const auto& decl : node.decls) {
        text += decl->prefix ? " xmlns:" + *decl->prefix : " xmlns";
        text += "=\"" + escaped(decl->name) + "\"";
    }
    for (const ShadowAttr& attr : node.attrs)
        text += " " + qualified(attr.bound, attr.name) + "=\"" + escaped(attr.value) + "\"";
    if (node.children.empty()) return text + "/>";
    text += ">";
    for (const ShadowOwner& child : node.children) text += shadowText(*child);
    return text + "</" + name + ">";
}
