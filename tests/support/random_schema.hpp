// Random schemas over few names and namespaces, so that declarations collide and content models are
// ambiguous, with every kind of record in every shape.
#pragma once

#include "tests/support/random.hpp"
#include "tests/support/schema_graph.hpp"

#include <map>

class SchemaMaker {
public:
    // Fills an empty graph.
    SchemaMaker(Random& random, SchemaGraph& graph) : random_{random}, graph_{graph} {}

    void make();
    // Whether groups lie deeper in one another than validation goes.
    bool tooDeep() const;
    // Whether there is nothing but one content model.
    bool oneModel() const { return oneModel_; }

private:
    using Decl = Schema_ElementDecl;

    const char* localName() { return random_.anyOf(names_); }
    const char* nameSpace();
    void bounds(uint32_t& least, uint32_t& most);

    void makeSimpleTypes();
    void makeRestriction(SimpleNode& node);
    void makeUnion(SimpleNode& node);
    void addFacets(std::vector<Schema_Facet>& facets, Schema_BuiltinKind kind);
    const Schema_SimpleType* simpleType();
    static Schema_BuiltinKind builtinOf(const Schema_SimpleType* type);

    void makeAttribute(Schema_AttributeDecl& decl);
    void addAttributes(std::vector<const Schema_AttributeDecl*>& list);
    void addGroups(std::vector<const Schema_AttributeGroup*>& list, std::size_t below);
    const Schema_AttributeWildcard* attributeWildcard();
    void makeAttributeGroups();

    void makeTopElement(std::size_t at);
    void makeElement(Decl& decl);
    const Decl* elementParticle();
    const Schema_Wildcard* wildcard();
    const Schema_ModelGroup* group(unsigned level, unsigned deepest);
    Schema_Object particle(unsigned level, unsigned deepest);
    Schema_Object sharedGroup(unsigned room);
    const Schema_ModelGroup* content();

    void makeComplexType(std::size_t at);
    void makeDerivation(ComplexNode& node, std::size_t at);
    void makeTop();
    void makeOneModel();

    Random& random_;
    SchemaGraph& graph_;
    std::vector<const char*> names_;
    const char* target_ = nullptr;
    std::size_t topElements_ = 0;
    std::size_t topAttributes_ = 0;
    std::size_t attributeGroups_ = 0;
    bool deep_ = false;
    bool simpleBounds_ = false;
    bool oneModel_ = false;  // everything about one content model and nothing else
    std::map<const Schema_ModelGroup*, unsigned> heights_;
    std::vector<const Decl*> local_;
};

// Adds a top-level element that holds any number of the others, in any order.
const Schema_ElementDecl& addList(SchemaGraph& graph);

// Adds a long chain or a long array to a schema.
void lengthenSchema(Random& random, SchemaGraph& graph);

// Spoils one place of a schema, so that validation which reaches it cannot go on. Whether that
// place may be within a content model.
bool breakSchema(Random& random, SchemaGraph& graph);

// Values that types accept or refuse.
const char* randomValue(Random& random);
