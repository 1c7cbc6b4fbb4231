#include "tests/support/schema_graph.hpp"

#include <algorithm>

namespace {

template <typename Item>
const Item* arrayOf(const std::vector<Item>& items)
{
    return items.empty() ? nullptr : items.data();
}

template <typename Item>
uint32_t countOf(const std::vector<Item>& items)
{
    return static_cast<uint32_t>(items.size());
}

template <typename Node>
void syncAttributes(Node& node)
{
    node.record.attributes = arrayOf(node.attributes);
    node.record.attributeCount = countOf(node.attributes);
    node.record.attributeGroups = arrayOf(node.attributeGroups);
    node.record.attributeGroupCount = countOf(node.attributeGroups);
}

template <typename Node>
void syncFacets(Node& node)
{
    node.record.facets = arrayOf(node.facets);
    node.record.facetCount = countOf(node.facets);
}

}  // namespace

void SchemaGraph::sync()
{
    for (GroupNode& node : groups) {
        node.record.particles = arrayOf(node.particles);
        node.record.particleCount = countOf(node.particles);
    }
    for (SimpleNode& node : simpleTypes) {
        node.record.members = arrayOf(node.members);
        node.record.memberCount = countOf(node.members);
        syncFacets(node);
    }
    for (DerivationNode& node : derivations) {
        syncAttributes(node);
        syncFacets(node);
    }
    for (ComplexNode& node : complexTypes) syncAttributes(node);
    for (AttributeGroupNode& node : attributeGroups) syncAttributes(node);
}

SchemaGraph::Saved SchemaGraph::save() const
{
    return {elements,        attributes,   wildcards,   attributeWildcards,
            groups,          complexTypes, derivations, simpleTypes,
            attributeGroups, top,          elementForm, attributeForm};
}

void SchemaGraph::restore(const Saved& saved)
{
    const auto copyAll = [](const auto& from, auto& to) {
        std::copy(from.begin(), from.end(), to.begin());
    };
    copyAll(saved.elements, elements);
    copyAll(saved.attributes, attributes);
    copyAll(saved.wildcards, wildcards);
    copyAll(saved.attributeWildcards, attributeWildcards);
    copyAll(saved.groups, groups);
    copyAll(saved.complexTypes, complexTypes);
    copyAll(saved.derivations, derivations);
    copyAll(saved.simpleTypes, simpleTypes);
    copyAll(saved.attributeGroups, attributeGroups);
    top = saved.top;
    elementForm = saved.elementForm;
    attributeForm = saved.attributeForm;
    sync();
}

RegisteredSchema::RegisteredSchema(const SchemaGraph& graph) : top_{graph.top}
{
    Schema_InitRoot(&root_);
    root_.elementFormDefault = graph.elementForm;
    root_.attributeFormDefault = graph.attributeForm;
    for (const Schema_Object& object : top_) Schema_RegTopObject(&root_, &object);
}

RegisteredSchema::~RegisteredSchema()
{
    for (const Schema_Object& object : top_) Schema_DeregTopObject(&root_, &object);
    Schema_ExitRoot(&root_);
}
