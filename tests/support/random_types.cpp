// Simple types, attributes, and what spoils a schema.
#include "tests/support/random_schema.hpp"

#include <algorithm>

namespace {

using Builtin = void* (*)();

constexpr Builtin kBuiltins[] = {
    Schema_BLDIN_string,  Schema_BLDIN_string,        Schema_BLDIN_string,
    Schema_BLDIN_int,     Schema_BLDIN_int,           Schema_BLDIN_unsignedByte,
    Schema_BLDIN_boolean, Schema_BLDIN_anySimpleType, Schema_BLDIN_language,
    Schema_BLDIN_date,    Schema_BLDIN_time,          Schema_BLDIN_anyURI,
    Schema_BLDIN_QName,   Schema_BLDIN_base64Binary,  Schema_BLDIN_duration,
    Schema_BLDIN_long,    Schema_BLDIN_hexBinary,     Schema_BLDIN_unsignedInt,
};

constexpr const char* kValues[] = {"",           "",         "1",
                                   "5",          "12",       "12",
                                   "300",        "-7",       "abc",
                                   "x",          "true",     "en",
                                   "zh-cn",      "ab",       "aaaa",
                                   "1-5,7",      "AF",       "255.255.255.0",
                                   "2024-05-06", "12:30:00", "2001:db8::1",
                                   "1.3.6",      "u:x",      "P1Y0M0DT0H0M0S",
                                   " ",          "-0",       "2001:db8::/32"};

constexpr const char* kNetworkTypes[] = {"OID",        "_Ipv6Address", "IPV6_ADDR_PREFIX",
                                         "_PortRange", "_VlanRange",   "_Ipv4Mask"};

Schema_Facet randomFacet(Random& random, Schema_BuiltinKind kind)
{
    Schema_Facet facet{};
    facet.baseKind = kind;
    if (random.percent(45)) {
        facet.kind = SCHEMA_FACET_ENUMERATION;
        facet.value = randomValue(random);
    } else if (random.percent(25)) {
        facet.kind = SCHEMA_FACET_PATTERN;
        facet.value = random.one<const char*>({"^[0-9]+$", "a", "^.{1,3}$", "[", "^[a-z-]*$"});
    } else if (random.percent(40)) {
        facet.kind = random.one<Schema_FacetKind>(
            {SCHEMA_FACET_LENGTH, SCHEMA_FACET_MAX_LENGTH, SCHEMA_FACET_MIN_LENGTH,
             SCHEMA_FACET_TOTAL_DIGITS, SCHEMA_FACET_FRACTION_DIGITS});
        facet.value = random.one<const char*>({"0", "1", "2", "3", "-1"});
    } else {
        facet.kind =
            random.one<Schema_FacetKind>({SCHEMA_FACET_MAX_EXCLUSIVE, SCHEMA_FACET_MAX_INCLUSIVE,
                                          SCHEMA_FACET_MIN_EXCLUSIVE, SCHEMA_FACET_MIN_INCLUSIVE});
        facet.value = random.one<const char*>({"0", "5", "12", "100", "2024-05-06"});
    }
    return facet;
}

}  // namespace

const char* randomValue(Random& random)
{
    return random.anyOf(kValues);
}

Schema_BuiltinKind SchemaMaker::builtinOf(const Schema_SimpleType* type)
{
    for (int i = 0; i < 20 && type->kind == SCHEMA_BUILTIN_NONE; ++i) {
        if (type->memberCount != 1) return SCHEMA_BUILTIN_STRING;
        type = type->members[0];
    }
    return type->kind;
}

void SchemaMaker::addFacets(std::vector<Schema_Facet>& facets, Schema_BuiltinKind kind)
{
    for (std::size_t count = random_.weighted({30, 40, 20, 10}); count != 0; --count)
        facets.push_back(randomFacet(
            random_, random_.percent(95) ? kind : Schema_BuiltinKind{SCHEMA_BUILTIN_INT}));
}

const Schema_SimpleType* SchemaMaker::simpleType()
{
    if (!graph_.simpleTypes.empty() && random_.percent(45))
        return &random_.anyOf(graph_.simpleTypes).record;
    return static_cast<const Schema_SimpleType*>(random_.anyOf(kBuiltins)());
}

void SchemaMaker::makeRestriction(SimpleNode& node)
{
    const Schema_SimpleType* base = simpleType();
    while (base == &node.record) base = simpleType();
    node.members = {base};
    node.record.name = random_.percent(95) ? "derived" : nullptr;
    addFacets(node.facets, builtinOf(base));
}

void SchemaMaker::makeUnion(SimpleNode& node)
{
    for (std::size_t count = random_.between(2, 3); node.members.size() < count;) {
        const Schema_SimpleType* member = simpleType();
        if (member != &node.record) node.members.push_back(member);
    }
    if (random_.percent(10)) node.record.kind = SCHEMA_BUILTIN_INT;  // a union all the same
}

void SchemaMaker::makeSimpleTypes()
{
    for (std::size_t count = random_.between(1, 4); count != 0; --count) {
        SimpleNode& node = graph_.simpleTypes.emplace_back();
        switch (random_.weighted({55, 25, 15, 5})) {
        case 0: makeRestriction(node); break;
        case 1: makeUnion(node); break;
        case 2:
            node.record.name = random_.anyOf(kNetworkTypes);
            if (random_.percent(10)) makeRestriction(node);
            break;
        default: node.record.kind = random_.one<Schema_BuiltinKind>({2, 16, 36, 47});
        }
        graph_.sync();
    }
}

void SchemaMaker::makeAttribute(Schema_AttributeDecl& decl)
{
    decl.name = random_.one<const char*>({"p", "q", "r"});
    decl.namespaceName = nameSpace();
    decl.type = simpleType();
    decl.form = static_cast<Schema_Form>(random_.weighted({70, 15, 15}));
    decl.use = random_.one<Schema_AttributeUse>(
        {SCHEMA_USE_OPTIONAL, SCHEMA_USE_OPTIONAL, SCHEMA_USE_OPTIONAL, SCHEMA_USE_OPTIONAL,
         SCHEMA_USE_OPTIONAL, SCHEMA_USE_OPTIONAL, SCHEMA_USE_OPTIONAL, SCHEMA_USE_REQUIRED,
         SCHEMA_USE_REQUIRED, SCHEMA_USE_PROHIBITED});
    if (random_.percent(12)) {
        decl.fixed = 1;
        decl.value = randomValue(random_);
        if (random_.percent(20)) decl.type = nullptr;  // not needed
    }
}

void SchemaMaker::addAttributes(std::vector<const Schema_AttributeDecl*>& list)
{
    for (std::size_t count = random_.weighted({50, 25, 15, 10}); count != 0; --count) {
        if (random_.percent(10)) {
            list.push_back(&random_.anyOf(graph_.attributes));
            continue;
        }
        Schema_AttributeDecl& decl = graph_.attributes.emplace_back();
        if (random_.percent(30))
            decl.ref = &graph_.attributes[random_.below(graph_.attributes.size() - 1)];
        else makeAttribute(decl);
        list.push_back(&decl);
    }
}

void SchemaMaker::addGroups(std::vector<const Schema_AttributeGroup*>& list, std::size_t below)
{
    if (below == 0) return;
    for (std::size_t count = random_.weighted({75, 15, 10}); count != 0; --count)
        list.push_back(&graph_.attributeGroups[random_.below(below)].record);
}

const Schema_AttributeWildcard* SchemaMaker::attributeWildcard()
{
    if (random_.percent(82)) return nullptr;
    Schema_AttributeWildcard& any = graph_.attributeWildcards.emplace_back();
    any.namespaceName = random_.one<const char*>(
        {"##any", "##any", "##other", "urn:a", "urn:b", "urn:a urn:b", nullptr});
    any.targetNamespace = target_;
    any.processContents = static_cast<Schema_ProcessContents>(random_.below(3));
    return &any;
}

void SchemaMaker::makeAttributeGroups()
{
    for (std::size_t count = random_.below(4); count != 0; --count) {
        AttributeGroupNode& node = graph_.attributeGroups.emplace_back();
        addAttributes(node.attributes);
        addGroups(node.attributeGroups, attributeGroups_);
        node.record.anyAttribute = attributeWildcard();
        if (attributeGroups_ != 0 && random_.percent(15))
            node.record.ref = &graph_.attributeGroups[random_.below(attributeGroups_)].record;
        ++attributeGroups_;
    }
}

namespace {

bool breakElement(Random& random, SchemaGraph& graph)
{
    Schema_ElementDecl& decl = random.anyOf(graph.elements);
    Schema_ElementDecl& other = random.anyOf(graph.elements);
    decl.ref = &other;
    if (!other.ref) other.ref = &decl;
    return true;
}

bool breakGroup(Random& random, SchemaGraph& graph)
{
    if (graph.groups.empty()) return breakElement(random, graph);
    GroupNode& node = random.anyOf(graph.groups);
    if (node.particles.empty()) node.particles.emplace_back();
    Schema_Object& particle = random.anyOf(node.particles);
    switch (random.below(6)) {
    case 0: node.record.compositor = random.one<Schema_Compositor>({0, 10, 14, 99}); break;
    case 1: particle.def = nullptr; break;
    case 2: particle.kind = random.one<Schema_ObjectKind>({0, 3, 9, 29}); break;
    case 3: node.record.compositor = SCHEMA_COMPOSITOR_ALL; break;
    case 4: particle = {&node.record, SCHEMA_KIND_MODEL_GROUP}; break;
    default: particle = {&random.anyOf(graph.groups).record, SCHEMA_KIND_MODEL_GROUP};
    }
    return true;
}

bool breakDerivation(Random& random, SchemaGraph& graph)
{
    if (graph.derivations.empty()) return breakGroup(random, graph);
    Schema_Derivation& record = random.anyOf(graph.derivations).record;
    switch (random.below(4)) {
    case 0: record.base = nullptr; break;
    case 1: record.kind = random.one<Schema_ObjectKind>({0, 9, 28}); break;
    case 2: record.baseKind = random.one<Schema_ObjectKind>({0, 10, 14}); break;
    default:
        record.base = &random.anyOf(graph.complexTypes).record;
        record.baseKind = SCHEMA_KIND_COMPLEX_TYPE;
    }
    return false;
}

bool breakSimpleType(Random& random, SchemaGraph& graph)
{
    if (graph.simpleTypes.empty()) return breakGroup(random, graph);
    SimpleNode& node = random.anyOf(graph.simpleTypes);
    node.record.name = "broken";
    switch (random.below(4)) {
    case 0: node.record.kind = random.one<Schema_BuiltinKind>({48, 100}); break;
    case 1:
        node.record.kind = SCHEMA_BUILTIN_NONE;
        node.members.clear();
        break;
    case 2:
        node.record.kind = SCHEMA_BUILTIN_NONE;
        node.members.assign(random.between(1, 3), nullptr);
        break;
    default:
        node.record.kind = SCHEMA_BUILTIN_NONE;
        node.members.resize(random.between(1, 3), &node.record);
        random.anyOf(node.members) = &random.anyOf(graph.simpleTypes).record;
    }
    return false;
}

bool breakAttribute(Random& random, SchemaGraph& graph)
{
    if (graph.attributes.empty()) return breakGroup(random, graph);
    Schema_AttributeDecl& decl = random.anyOf(graph.attributes);
    if (random.percent(50)) {
        decl.type = nullptr;
        decl.fixed = 0;
        return false;
    }
    Schema_AttributeDecl& other = random.anyOf(graph.attributes);
    decl.ref = &other;
    if (!other.ref) other.ref = &decl;
    return false;
}

bool breakAttributeGroup(Random& random, SchemaGraph& graph)
{
    if (graph.attributeGroups.empty()) return breakAttribute(random, graph);
    AttributeGroupNode& node = random.anyOf(graph.attributeGroups);
    const AttributeGroupNode& other = random.anyOf(graph.attributeGroups);
    switch (random.below(4)) {
    case 0: node.attributes.push_back(nullptr); break;
    case 1: node.attributeGroups.push_back(nullptr); break;
    case 2: node.attributeGroups.push_back(&other.record); break;
    default: node.record.ref = &other.record;
    }
    return false;
}

}  // namespace

bool breakSchema(Random& random, SchemaGraph& graph)
{
    static constexpr bool (*kPlaces[])(Random&, SchemaGraph&) = {
        breakElement,    breakGroup,     breakDerivation,
        breakSimpleType, breakAttribute, breakAttributeGroup};
    const bool model = kPlaces[random.weighted({15, 30, 20, 20, 15, 15})](random, graph);
    graph.sync();
    return model;
}
