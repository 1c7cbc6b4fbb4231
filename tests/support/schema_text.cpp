// A schema graph as text: each record that can be reached on a line, model groups in one another.
#include "tests/support/schema_graph.hpp"

#include <map>
#include <set>

namespace {

std::string quoted(const char* text)
{
    return text ? "\"" + std::string{text} + "\"" : "NULL";
}

class Writer {
public:
    explicit Writer(const SchemaGraph& graph);
    std::string write();

private:
    std::string id(const void* record, Schema_ObjectKind kind);
    std::string bounds(uint32_t least, uint32_t most) const;
    std::string facets(const std::vector<Schema_Facet>& list) const;
    template <typename Node>
    std::string uses(const Node& node);
    std::string particle(const Schema_Object& object, int depth);
    std::string group(const Schema_ModelGroup* record, int depth);
    std::string line(const void* record, Schema_ObjectKind kind);
    std::string elementLine(const Schema_ElementDecl& decl);
    std::string attributeLine(const Schema_AttributeDecl& decl);
    std::string wildcard(const Schema_AttributeWildcard* record);
    std::string complexLine(const Schema_ComplexType& type);
    std::string derivation(const Schema_Derivation& record);
    std::string simpleLine(const Schema_SimpleType& type);
    std::string attributeGroupLine(const Schema_AttributeGroup& record);
    template <typename Deque>
    void number(const Deque& records, const char* kind);

    const SchemaGraph& graph_;
    std::map<const void*, std::string> names_;
    std::set<const void*> known_;
    std::vector<Schema_Object> open_;
};

template <typename Deque>
void Writer::number(const Deque& records, const char* kind)
{
    std::size_t i = 0;
    for (const auto& record : records) names_[&record] = kind + ("#" + std::to_string(i++));
}

Writer::Writer(const SchemaGraph& graph) : graph_{graph}
{
    number(graph.elements, "element");
    number(graph.attributes, "attribute");
    number(graph.groups, "group");
    number(graph.complexTypes, "complex");
    number(graph.simpleTypes, "simple");
    number(graph.attributeGroups, "attributeGroup");
}

// The name of a record, which gets a line of its own.
std::string Writer::id(const void* record, Schema_ObjectKind kind)
{
    if (!record) return "NULL";
    const auto name = names_.find(record);
    if (name == names_.end()) {
        if (record == Schema_BLDIN_anyType()) return "xs:anyType";
        return "xs:" + std::string{static_cast<const Schema_SimpleType*>(record)->name};
    }
    if (known_.insert(record).second) open_.push_back({record, kind});
    return name->second;
}

std::string Writer::bounds(uint32_t least, uint32_t most) const
{
    const std::string end = most == SCHEMA_UNBOUNDED ? "*" : std::to_string(most);
    return "{" + std::to_string(least) + "," + end + "}";
}

std::string Writer::facets(const std::vector<Schema_Facet>& list) const
{
    std::string text;
    for (const Schema_Facet& facet : list)
        text += " facet " + std::to_string(facet.kind) + "=" + quoted(facet.value) + " by kind " +
                std::to_string(facet.baseKind);
    return text;
}

std::string Writer::wildcard(const Schema_AttributeWildcard* record)
{
    if (!record) return "";
    return " anyAttribute(" + quoted(record->namespaceName) + " target " +
           quoted(record->targetNamespace) + " process " + std::to_string(record->processContents) +
           ")";
}

template <typename Node>
std::string Writer::uses(const Node& node)
{
    std::string text;
    for (const Schema_AttributeDecl* decl : node.attributes)
        text += " " + id(decl, SCHEMA_KIND_ATTRIBUTE);
    text += wildcard(node.record.anyAttribute);
    for (const Schema_AttributeGroup* record : node.attributeGroups)
        text += " " + id(record, SCHEMA_KIND_ATTRIBUTE_GROUP);
    return text;
}

std::string Writer::particle(const Schema_Object& object, int depth)
{
    if (!object.def) return "NULL";
    switch (object.kind) {
    case SCHEMA_KIND_ELEMENT: {
        const auto& decl = *static_cast<const Schema_ElementDecl*>(object.def);
        const Schema_ElementDecl* named = decl.ref ? decl.ref : &decl;
        return id(&decl, object.kind) + (decl.ref ? " ref " : " ") +
               (named->name ? named->name : "NULL") + bounds(decl.minOccurs, decl.maxOccurs);
    }
    case SCHEMA_KIND_WILDCARD: {
        const auto& any = *static_cast<const Schema_Wildcard*>(object.def);
        return "any(" + quoted(any.namespaceName) + " target " + quoted(any.targetNamespace) +
               " process " + std::to_string(any.processContents) + ")" +
               bounds(any.minOccurs, any.maxOccurs);
    }
    case SCHEMA_KIND_MODEL_GROUP:
        return group(static_cast<const Schema_ModelGroup*>(object.def), depth + 1);
    default: return "particle of kind " + std::to_string(object.kind);
    }
}

std::string Writer::group(const Schema_ModelGroup* record, int depth)
{
    if (!record) return "NULL";
    std::string text = names_[record];
    if (depth > 8) return text + " ...";
    switch (record->compositor) {
    case SCHEMA_COMPOSITOR_ALL: text += " all"; break;
    case SCHEMA_COMPOSITOR_CHOICE: text += " choice"; break;
    case SCHEMA_COMPOSITOR_SEQUENCE: text += " sequence"; break;
    default: text += " compositor " + std::to_string(record->compositor);
    }
    text += bounds(record->minOccurs, record->maxOccurs) + "(";
    for (uint32_t i = 0; i < record->particleCount; ++i)
        text += (i ? ", " : "") + particle(record->particles[i], depth);
    return text + ")";
}

std::string Writer::elementLine(const Schema_ElementDecl& decl)
{
    if (decl.ref)
        return " ref " + id(decl.ref, SCHEMA_KIND_ELEMENT) +
               bounds(decl.minOccurs, decl.maxOccurs) + " (own name " + quoted(decl.name) + " in " +
               quoted(decl.namespaceName) + ")";
    std::string text = " " + quoted(decl.name) + " in " + quoted(decl.namespaceName) +
                       bounds(decl.minOccurs, decl.maxOccurs) + " type " +
                       id(decl.type, decl.typeKind);
    if (decl.form) text += " form " + std::to_string(decl.form);
    if (decl.substitutionGroupName)
        text += " substitutes " + quoted(decl.substitutionGroupName) + " in " +
                quoted(decl.substitutionGroupNamespace);
    if (decl.fixed) text += " fixed " + quoted(decl.value);
    if (decl.abstract) text += " abstract";
    if (decl.nillable) text += " nillable";
    return text;
}

std::string Writer::attributeLine(const Schema_AttributeDecl& decl)
{
    if (decl.ref) return " ref " + id(decl.ref, SCHEMA_KIND_ATTRIBUTE);
    std::string text = " " + quoted(decl.name) + " in " + quoted(decl.namespaceName) + " type " +
                       id(decl.type, SCHEMA_KIND_SIMPLE_TYPE);
    if (decl.use) text += decl.use == SCHEMA_USE_REQUIRED ? " required" : " prohibited";
    if (decl.form) text += " form " + std::to_string(decl.form);
    if (decl.fixed) text += " fixed " + quoted(decl.value);
    return text;
}

std::string Writer::derivation(const Schema_Derivation& record)
{
    std::string text =
        " derivation " + std::to_string(record.kind) + " of " +
        (record.baseKind == SCHEMA_KIND_COMPLEX_TYPE || record.baseKind == SCHEMA_KIND_SIMPLE_TYPE
             ? id(record.base, record.baseKind)
             : "kind " + std::to_string(record.baseKind)) +
        " [";
    if (record.content) text += group(record.content, 1);
    for (const DerivationNode& node : graph_.derivations)
        if (&node.record == &record) text += facets(node.facets) + uses(node);
    return text + "]";
}

std::string Writer::complexLine(const Schema_ComplexType& type)
{
    std::string text = type.mixed ? " mixed" : "";
    if (type.content) text += " " + group(type.content, 1);
    if (type.derivation) text += derivation(*type.derivation);
    for (const ComplexNode& node : graph_.complexTypes)
        if (&node.record == &type) text += uses(node);
    return text;
}

std::string Writer::simpleLine(const Schema_SimpleType& type)
{
    std::string text;
    if (type.name) text += " name " + quoted(type.name);
    if (type.kind) text += " kind " + std::to_string(type.kind);
    for (uint32_t i = 0; i < type.memberCount; ++i)
        text += (type.memberCount > 1 ? " member " : " base ") +
                id(type.members[i], SCHEMA_KIND_SIMPLE_TYPE);
    for (const SimpleNode& node : graph_.simpleTypes)
        if (&node.record == &type) text += facets(node.facets);
    return text;
}

std::string Writer::attributeGroupLine(const Schema_AttributeGroup& record)
{
    if (record.ref) return " ref " + id(record.ref, SCHEMA_KIND_ATTRIBUTE_GROUP);
    for (const AttributeGroupNode& node : graph_.attributeGroups)
        if (&node.record == &record) return uses(node);
    return "";
}

std::string Writer::line(const void* record, Schema_ObjectKind kind)
{
    switch (kind) {
    case SCHEMA_KIND_ELEMENT: return elementLine(*static_cast<const Schema_ElementDecl*>(record));
    case SCHEMA_KIND_ATTRIBUTE:
        return attributeLine(*static_cast<const Schema_AttributeDecl*>(record));
    case SCHEMA_KIND_ATTRIBUTE_GROUP:
        return attributeGroupLine(*static_cast<const Schema_AttributeGroup*>(record));
    case SCHEMA_KIND_SIMPLE_TYPE: return simpleLine(*static_cast<const Schema_SimpleType*>(record));
    default: return complexLine(*static_cast<const Schema_ComplexType*>(record));
    }
}

std::string Writer::write()
{
    std::string text = "forms: element " + std::to_string(graph_.elementForm) + " attribute " +
                       std::to_string(graph_.attributeForm) + "\ntop:";
    for (const Schema_Object& object : graph_.top) text += " " + id(object.def, object.kind);
    for (std::size_t i = 0; i < open_.size(); ++i) {
        const Schema_Object object = open_[i];
        const std::string rest = line(object.def, object.kind);
        text += "\n" + names_[object.def] + rest;
    }
    return text + "\n";
}

}  // namespace

std::string SchemaGraph::text() const
{
    return Writer{*this}.write();
}
