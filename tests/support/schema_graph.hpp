// A schema that owns its records, can be changed at any place and taken back, registered, and
// written as text.
#pragma once

#include "netxml/netxml.h"

#include <deque>
#include <string>
#include <vector>

// A record with the arrays that its pointers lead to.
struct GroupNode {
    Schema_ModelGroup record{};
    std::vector<Schema_Object> particles;
};
struct ComplexNode {
    Schema_ComplexType record{};
    std::vector<const Schema_AttributeDecl*> attributes;
    std::vector<const Schema_AttributeGroup*> attributeGroups;
};
struct DerivationNode {
    Schema_Derivation record{};
    std::vector<const Schema_AttributeDecl*> attributes;
    std::vector<const Schema_AttributeGroup*> attributeGroups;
    std::vector<Schema_Facet> facets;
};
struct SimpleNode {
    Schema_SimpleType record{};
    std::vector<const Schema_SimpleType*> members;
    std::vector<Schema_Facet> facets;
};
struct AttributeGroupNode {
    Schema_AttributeGroup record{};
    std::vector<const Schema_AttributeDecl*> attributes;
    std::vector<const Schema_AttributeGroup*> attributeGroups;
};

// All strings are literals. The addresses of the records never change; after a change of a vector
// sync() brings the records' pointers and counts up to date.
struct SchemaGraph {
    std::deque<Schema_ElementDecl> elements;
    std::deque<Schema_AttributeDecl> attributes;
    std::deque<Schema_Wildcard> wildcards;
    std::deque<Schema_AttributeWildcard> attributeWildcards;
    std::deque<GroupNode> groups;
    std::deque<ComplexNode> complexTypes;
    std::deque<DerivationNode> derivations;
    std::deque<SimpleNode> simpleTypes;
    std::deque<AttributeGroupNode> attributeGroups;
    std::vector<Schema_Object> top;  // in the order of registration; a record may be NULL
    Schema_Form elementForm = SCHEMA_FORM_QUALIFIED;
    Schema_Form attributeForm = SCHEMA_FORM_UNQUALIFIED;

    SchemaGraph() = default;
    SchemaGraph(const SchemaGraph&) = delete;
    SchemaGraph& operator=(const SchemaGraph&) = delete;

    void sync();
    // What stands in the records and vectors now, to be put back later: the same records are
    // filled, none may have been added.
    struct Saved;
    Saved save() const;
    void restore(const Saved& saved);
    // All that can be reached from the top, in lines.
    std::string text() const;
};

struct SchemaGraph::Saved {
    std::deque<Schema_ElementDecl> elements;
    std::deque<Schema_AttributeDecl> attributes;
    std::deque<Schema_Wildcard> wildcards;
    std::deque<Schema_AttributeWildcard> attributeWildcards;
    std::deque<GroupNode> groups;
    std::deque<ComplexNode> complexTypes;
    std::deque<DerivationNode> derivations;
    std::deque<SimpleNode> simpleTypes;
    std::deque<AttributeGroupNode> attributeGroups;
    std::vector<Schema_Object> top;
    Schema_Form elementForm;
    Schema_Form attributeForm;
};

// A graph as a root, while this lives.
class RegisteredSchema {
public:
    explicit RegisteredSchema(const SchemaGraph& graph);
    RegisteredSchema(const RegisteredSchema&) = delete;
    RegisteredSchema& operator=(const RegisteredSchema&) = delete;
    ~RegisteredSchema();

    const Schema_Root* root() const { return &root_; }

private:
    std::vector<Schema_Object> top_;
    Schema_Root root_;
};
