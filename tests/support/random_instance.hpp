// Documents for a random schema: its content models are walked, and then something is changed.
#pragma once

#include "tests/support/random.hpp"
#include "tests/support/schema_graph.hpp"

#include <string>
#include <string_view>
#include <vector>

struct InstanceNode {
    enum class Kind { Element, Text, CData };
    struct Attribute {
        std::string name;
        std::string nameSpace;
        std::string value;
    };

    Kind kind = Kind::Element;
    std::string name;
    std::string nameSpace;  // empty for none
    std::string text;
    std::vector<Attribute> attributes;  // no two of one name and namespace
    std::vector<InstanceNode> children;

    // Adds an attribute unless there is one of that name and namespace.
    void set(std::string attribute, std::string attributeNamespace, std::string value);
};

struct Instance {
    InstanceNode root;
    std::string defaultNamespace;  // elements in it have no prefix; empty for none

    // The tree, which the caller deletes.
    XML_DOM_Node* build() const;
    // The document, indented, with each text on a line of its own and every prefix written out.
    std::string text() const;
    // All nodes, each before its children.
    std::vector<InstanceNode*> nodes();
};

class InstanceMaker {
public:
    InstanceMaker(Random& random, const SchemaGraph& graph) : random_{random}, graph_{graph} {}

    Instance make();
    // A list of documents as make() makes them, where only the last one may have been changed.
    Instance makeList(const Schema_ElementDecl& list);

private:
    Instance makeUnchanged();
    void mutateSometimes(Instance& instance);
    struct Use {
        const Schema_AttributeDecl* decl;
        const char* nameSpace;
    };
    using Nodes = std::vector<InstanceNode>;

    std::string within(const char* constraint, const char* target);
    const char* value(const Schema_SimpleType* type);
    const char* simpleContent(const Schema_ComplexType& type);
    void addText(InstanceNode& node, std::string_view text);

    void fill(InstanceNode& node, const Schema_ElementDecl* decl, unsigned depth);
    void fillComplex(InstanceNode& node, const Schema_ComplexType& type, unsigned depth);
    void addContent(Nodes& nodes, const Schema_ComplexType& type, unsigned depth);
    void addGroup(Nodes& nodes, const Schema_ModelGroup* group, unsigned depth);
    void addParticle(Nodes& nodes, const Schema_Object& particle, unsigned depth);
    void addElement(Nodes& nodes, const Schema_ElementDecl& particle, unsigned depth);
    void addAny(Nodes& nodes, const Schema_Wildcard& wildcard, unsigned depth);
    uint32_t repetitions(uint32_t least, uint32_t most);

    void addAttributes(InstanceNode& node, const Schema_ComplexType& type);
    void collect(std::vector<Use>& uses, const Schema_ComplexType& type);
    void collect(std::vector<Use>& uses, const std::vector<const Schema_AttributeDecl*>& list);
    void collect(std::vector<Use>& uses, const Schema_AttributeGroup* group);

    void mutate(Instance& instance);
    void mutateChildren(InstanceNode& parent);
    void replaceChildren(InstanceNode& parent);
    void mutateText(InstanceNode& parent);
    void mutateAttributes(InstanceNode& element);
    InstanceNode stranger();

    Random& random_;
    const SchemaGraph& graph_;
    int room_ = 60;  // elements that may still be made
};
