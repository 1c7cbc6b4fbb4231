// Changes to documents, and documents as trees and texts.
#include "tests/support/random_instance.hpp"
#include "tests/support/random_schema.hpp"

#include <algorithm>

void InstanceNode::set(std::string attribute, std::string attributeNamespace, std::string value)
{
    const bool present = std::any_of(attributes.begin(), attributes.end(), [&](const auto& other) {
        return other.name == attribute && other.nameSpace == attributeNamespace;
    });
    if (!present)
        attributes.push_back(
            {std::move(attribute), std::move(attributeNamespace), std::move(value)});
}

InstanceNode InstanceMaker::stranger()
{
    InstanceNode node;
    node.name = random_.one<const char*>({"a", "b", "c", "d", "e", "f"});
    node.nameSpace = random_.one<const char*>({"", "urn:a", "urn:a", "urn:b", "##any"});
    return node;
}

void InstanceMaker::mutate(Instance& instance)
{
    const std::vector<InstanceNode*> nodes = instance.nodes();
    InstanceNode* node = nodes[random_.below(nodes.size())];
    while (node->kind != InstanceNode::Kind::Element) node = nodes[random_.below(nodes.size())];
    if (random_.percent(40)) node = &instance.root;
    switch (random_.weighted({60, 14, 16, 5, 5})) {
    case 0: mutateChildren(*node); break;
    case 1: mutateText(*node); break;
    case 2: mutateAttributes(*node); break;
    case 3: node->name = stranger().name; break;
    default: node->nameSpace = stranger().nameSpace;
    }
}

void InstanceMaker::mutateChildren(InstanceNode& parent)
{
    Nodes& children = parent.children;
    if (children.empty()) return children.push_back(stranger());
    const std::size_t at = random_.below(children.size());
    const auto place = children.begin() + static_cast<std::ptrdiff_t>(at);
    switch (random_.weighted({20, 20, 20, 15, 5, 10, 30})) {
    case 0: children.erase(place); break;
    case 1: children.insert(place, InstanceNode{children[at]}); break;
    case 2: std::swap(children[at], random_.anyOf(children)); break;
    case 3: children.insert(place, stranger()); break;
    case 4: children.clear(); break;
    case 5:
        if (children.size() < 40)
            children.insert(place, random_.between(1, 6), InstanceNode{children[at]});
        break;
    default: replaceChildren(parent);
    }
}

// Any number of what is there, in any order.
void InstanceMaker::replaceChildren(InstanceNode& parent)
{
    const Nodes kinds = parent.children;
    parent.children.clear();
    for (std::size_t count = random_.below(14); count != 0; --count) {
        const InstanceNode& kind = random_.anyOf(kinds);
        const bool leaf = kind.children.empty();
        const std::size_t run =
            leaf && random_.percent(1) ? random_.below(300) : random_.between(1, 3);
        parent.children.insert(parent.children.end(), run, kind);
    }
}

void InstanceMaker::mutateText(InstanceNode& parent)
{
    for (InstanceNode& child : parent.children)
        if (child.kind != InstanceNode::Kind::Element && random_.percent(70)) {
            child.text = randomValue(random_);
            return;
        }
    addText(parent, randomValue(random_));
}

void InstanceMaker::mutateAttributes(InstanceNode& element)
{
    static constexpr const char* kXsi = XML_NAMESPACE_SCHEMA_INSTANCE;
    const char* name = random_.one<const char*>({"p", "q", "r"});
    switch (random_.weighted({20, 20, 30, 8, 8, 8, 6})) {
    case 0:
        if (!element.attributes.empty())
            element.attributes.erase(
                element.attributes.begin() +
                static_cast<std::ptrdiff_t>(random_.below(element.attributes.size())));
        break;
    case 1:
        if (!element.attributes.empty())
            random_.anyOf(element.attributes).value = randomValue(random_);
        break;
    case 2: element.set(name, stranger().nameSpace, randomValue(random_)); break;
    case 3:
        element.set(
            "lang", XML_NAMESPACE_XML,
            random_.one<const char*>({"en", "en", "zh-cn", "EN", "", "far-too-long-for-it-all"}));
        break;
    case 4: element.set("space", XML_NAMESPACE_XML, "preserve"); break;
    case 5: element.set("nil", kXsi, "true"); break;
    default: element.set("type", kXsi, "x");
    }
}

namespace {

void gather(InstanceNode& node, std::vector<InstanceNode*>& nodes)
{
    nodes.push_back(&node);
    for (InstanceNode& child : node.children) gather(child, nodes);
}

// The prefixes that a document declares on its root.
class Prefixes {
public:
    explicit Prefixes(const InstanceNode& root) { add(root); }

    std::string of(const std::string& nameSpace) const
    {
        if (nameSpace.empty()) return "";
        if (nameSpace == XML_NAMESPACE_XML) return "xml";
        const auto at = std::find(names_.begin(), names_.end(), nameSpace);
        return "n" + std::to_string(at - names_.begin());
    }
    const std::vector<std::string>& names() const { return names_; }

private:
    void add(const std::string& nameSpace)
    {
        if (nameSpace.empty() || nameSpace == XML_NAMESPACE_XML) return;
        if (std::find(names_.begin(), names_.end(), nameSpace) == names_.end())
            names_.push_back(nameSpace);
    }
    void add(const InstanceNode& node)
    {
        add(node.nameSpace);
        for (const auto& attribute : node.attributes) add(attribute.nameSpace);
        for (const InstanceNode& child : node.children) add(child);
    }

    std::vector<std::string> names_;
};

XML_DOM_Node* buildNode(const InstanceNode& from, const Prefixes& prefixes, XML_DOM_Node* parent,
                        const std::string& inScope, const std::string& byDefault)
{
    if (from.kind != InstanceNode::Kind::Element) {
        const XML_DOM_NodeType type = from.kind == InstanceNode::Kind::Text
                                          ? XML_DOM_NodeType{XML_DOM_NODE_TEXT}
                                          : XML_DOM_NodeType{XML_DOM_NODE_CDATA};
        XML_DOM_Node* text =
            XML_DOM_CreateTextualNodeInner(type, from.text.data(), from.text.size());
        XML_DOM_AddChildNode(parent, text);
        return text;
    }
    XML_DOM_Node* element = XML_DOM_CreateElementNodeInner(from.name.c_str());
    std::string scope = inScope;
    if (parent) {
        XML_DOM_AddChildNode(parent, element);
    } else {
        for (const std::string& name : prefixes.names())
            XML_DOM_AddNodeNameSpace(element, prefixes.of(name).c_str(), name.c_str());
    }
    if (!byDefault.empty() && from.nameSpace != scope &&
        (from.nameSpace.empty() || from.nameSpace == byDefault)) {
        scope = from.nameSpace;
        XML_DOM_AddNodeNameSpace(element, "", scope.c_str());
    }
    if (from.nameSpace != scope)
        XML_DOM_SetNodeNameSpace(element, prefixes.of(from.nameSpace).c_str());
    for (const auto& attribute : from.attributes)
        XML_DOM_AddAttr(element, prefixes.of(attribute.nameSpace).c_str(), attribute.name.c_str(),
                        attribute.value.c_str());
    for (const InstanceNode& child : from.children)
        buildNode(child, prefixes, element, scope, byDefault);
    return element;
}

void write(const InstanceNode& node, const Prefixes& prefixes, const std::string& indent, bool root,
           std::string& text)
{
    if (node.kind != InstanceNode::Kind::Element) {
        text += indent + (node.kind == InstanceNode::Kind::Text ? "(text \"" : "(cdata \"") +
                node.text + "\")\n";
        return;
    }
    const auto qualified = [&](const std::string& nameSpace, const std::string& name) {
        const std::string prefix = prefixes.of(nameSpace);
        return prefix.empty() ? name : prefix + ":" + name;
    };
    const std::string name = qualified(node.nameSpace, node.name);
    text += indent + "<" + name;
    if (root)
        for (const std::string& declared : prefixes.names())
            text += " xmlns:" + prefixes.of(declared) + "=\"" + declared + "\"";
    for (const auto& attribute : node.attributes)
        text +=
            " " + qualified(attribute.nameSpace, attribute.name) + "=\"" + attribute.value + "\"";
    if (node.children.empty()) {
        text += "/>\n";
        return;
    }
    text += ">\n";
    for (const InstanceNode& child : node.children)
        write(child, prefixes, indent + "  ", false, text);
    text += indent + "</" + name + ">\n";
}

}  // namespace

std::vector<InstanceNode*> Instance::nodes()
{
    std::vector<InstanceNode*> result;
    gather(root, result);
    return result;
}

XML_DOM_Node* Instance::build() const
{
    XML_DOM_Node* tree = buildNode(root, Prefixes{root}, nullptr, "", defaultNamespace);
    XML_DOM_SetRoot(tree);
    return tree;
}

std::string Instance::text() const
{
    std::string text;
    write(root, Prefixes{root}, "", true, text);
    return text;
}
