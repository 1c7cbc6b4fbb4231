// Long chains of records and long arrays, to which nothing is too long.
#include "tests/support/random_schema.hpp"

#include <algorithm>

namespace {

constexpr const char* kManyNames[] = {
    "k00", "k01", "k02", "k03", "k04", "k05", "k06", "k07", "k08", "k09", "k10", "k11",
    "k12", "k13", "k14", "k15", "k16", "k17", "k18", "k19", "k20", "k21", "k22", "k23",
    "k24", "k25", "k26", "k27", "k28", "k29", "k30", "k31", "k32", "k33", "k34", "k35"};

// Types derived from one another, the last of them behind all others.
void chainBases(Random& random, SchemaGraph& graph)
{
    const Schema_ComplexType* base = &random.anyOf(graph.complexTypes).record;
    const std::size_t length = random.between(5, 30);
    for (std::size_t i = 0; i < length; ++i) {
        ComplexNode& node = graph.complexTypes.emplace_back();
        DerivationNode& derivation = graph.derivations.emplace_back();
        derivation.record.kind =
            random.percent(85) ? SCHEMA_KIND_COMPLEX_EXTENSION : SCHEMA_KIND_SIMPLE_EXTENSION;
        derivation.record.base = base;
        derivation.record.baseKind = SCHEMA_KIND_COMPLEX_TYPE;
        if (random.percent(20)) derivation.attributes.push_back(&random.anyOf(graph.attributes));
        if (random.percent(10) && !graph.groups.empty())
            derivation.record.content = &random.anyOf(graph.groups).record;
        node.record.derivation = &derivation.record;
        base = &node.record;
    }
}

// A value that passes through many types before it is looked at.
const Schema_SimpleType* chainTypes(Random& random, SchemaGraph& graph)
{
    const auto* type = static_cast<const Schema_SimpleType*>(Schema_BLDIN_string());
    for (std::size_t left = random.between(5, 30); left != 0; --left) {
        SimpleNode& node = graph.simpleTypes.emplace_back();
        node.record.name = "link";
        if (random.percent(30))
            node.members.push_back(static_cast<const Schema_SimpleType*>(Schema_BLDIN_int()));
        node.members.push_back(type);
        if (random.percent(10)) node.facets.push_back({"3", SCHEMA_FACET_MAX_LENGTH, 0});
        type = &node.record;
    }
    return type;
}

const Schema_AttributeGroup* chainGroups(Random& random, SchemaGraph& graph)
{
    const Schema_AttributeGroup* group = nullptr;
    for (std::size_t left = random.between(5, 30); left != 0; --left) {
        AttributeGroupNode& node = graph.attributeGroups.emplace_back();
        if (random.percent(20)) node.attributes.push_back(&random.anyOf(graph.attributes));
        if (group && random.percent(30)) node.record.ref = group;
        else if (group)
            node.attributeGroups.assign(left < 6 ? 2 : 1, group);  // shared: reached 32 times
        group = &node.record;
    }
    return group;
}

// References to references, in the place of an element that another one is a reference to.
void chainElements(Random& random, SchemaGraph& graph)
{
    for (Schema_ElementDecl& decl : graph.elements) {
        if (!decl.ref) continue;
        for (std::size_t left = random.between(5, 30); left != 0; --left) {
            Schema_ElementDecl& link = graph.elements.emplace_back();
            link.ref = decl.ref;
            decl.ref = &link;
        }
        return;
    }
}

void addManyAttributes(Random& random, SchemaGraph& graph, ComplexNode& node)
{
    for (const char* name : kManyNames) {
        if (random.percent(20)) continue;
        Schema_AttributeDecl& decl = graph.attributes.emplace_back();
        decl.name = name;
        decl.type = static_cast<const Schema_SimpleType*>(Schema_BLDIN_anySimpleType());
        decl.use = random.percent(50) ? SCHEMA_USE_REQUIRED : SCHEMA_USE_OPTIONAL;
        node.attributes.push_back(&decl);
    }
}

// An all group of many elements in place of a type's content.
void addManyElements(Random& random, SchemaGraph& graph, ComplexNode& node)
{
    GroupNode& group = graph.groups.emplace_back();
    group.record.compositor = SCHEMA_COMPOSITOR_ALL;
    group.record.minOccurs = group.record.maxOccurs = 1;
    for (const char* name : kManyNames) {
        if (random.percent(20)) continue;
        Schema_ElementDecl& decl = graph.elements.emplace_back();
        decl.name = name;
        decl.minOccurs = static_cast<uint32_t>(random.below(2));
        decl.maxOccurs = 1;
        group.particles.push_back({&decl, SCHEMA_KIND_ELEMENT});
    }
    node.record.derivation = nullptr;
    node.record.content = &group.record;
}

}  // namespace

void lengthenSchema(Random& random, SchemaGraph& graph)
{
    ComplexNode& node = graph.complexTypes.front();
    switch (random.below(6)) {
    case 0: chainBases(random, graph); break;
    case 1: random.anyOf(graph.attributes).type = chainTypes(random, graph); break;
    case 2: node.attributeGroups.push_back(chainGroups(random, graph)); break;
    case 3: chainElements(random, graph); break;
    case 4: addManyAttributes(random, graph, node); break;
    default: addManyElements(random, graph, node);
    }
    Schema_ElementDecl& root = graph.elements.front();
    root.type = &graph.complexTypes.back().record;
    if (random.percent(50)) root.type = &node.record;
    root.typeKind = SCHEMA_KIND_COMPLEX_TYPE;
    graph.sync();
}
