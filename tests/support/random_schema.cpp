#include "tests/support/random_schema.hpp"

#include <algorithm>

namespace {

struct Bounds {
    uint32_t least;
    uint32_t most;
};

constexpr uint32_t kMany = SCHEMA_UNBOUNDED;

}  // namespace

const char* SchemaMaker::nameSpace()
{
    switch (random_.weighted({78, 8, 8, 3, 1, 1, 1})) {
    case 0: return target_;
    case 1: return nullptr;
    case 2: return "urn:b";
    case 3: return "";
    case 4: return "##any";
    case 5: return "##other";
    default: return "urn:a urn:b";
    }
}

void SchemaMaker::bounds(uint32_t& least, uint32_t& most)
{
    static constexpr Bounds kUsual[] = {{0, 1}, {0, kMany}, {1, kMany}, {2, 2}, {1, 2},
                                        {0, 2}, {2, 3},     {1, 3},     {0, 3}, {3, 3},
                                        {2, 4}, {2, kMany}, {3, kMany}, {3, 5}, {0, 1}};
    static constexpr Bounds kRare[] = {{0, 0}, {1, 0}, {2, 1}, {3, 2}, {5, 9}, {4, 4}, {2, 0}};
    Bounds bounds{1, 1};
    if (!random_.percent(simpleBounds_ ? 75 : 40)) bounds = random_.anyOf(kUsual);
    if (random_.percent(1)) bounds = random_.anyOf(kRare);
    least = bounds.least;
    most = bounds.most;
}

void SchemaMaker::make()
{
    const RegisteredSchema builtins{graph_};  // fills the records of the built-in types
    static constexpr const char* kNames[] = {"a", "b", "c", "d", "e"};
    names_.assign(std::begin(kNames), std::begin(kNames) + random_.between(2, 5));
    target_ = random_.one<const char*>({"urn:a", "urn:a", nullptr});
    deep_ = random_.percent(12);
    simpleBounds_ = random_.percent(50);
    graph_.elementForm = random_.percent(70) ? SCHEMA_FORM_QUALIFIED : SCHEMA_FORM_UNQUALIFIED;
    graph_.attributeForm = random_.percent(70) ? SCHEMA_FORM_UNQUALIFIED : SCHEMA_FORM_QUALIFIED;
    oneModel_ = random_.percent(40);
    if (oneModel_) return makeOneModel();
    makeSimpleTypes();

    topAttributes_ = random_.between(1, 4);
    for (std::size_t i = 0; i < topAttributes_; ++i)
        makeAttribute(graph_.attributes.emplace_back());
    makeAttributeGroups();

    topElements_ = random_.between(2, 6);
    graph_.elements.resize(topElements_);
    graph_.complexTypes.resize(random_.between(1, 4));
    for (std::size_t i = 0; i < topElements_; ++i) makeTopElement(i);
    for (std::size_t i = 0; i < graph_.complexTypes.size(); ++i) makeComplexType(i);
    makeTop();
    graph_.sync();
}

// A document element with children that are not checked, of few names: what counts is how often and
// in which order they come.
void SchemaMaker::makeOneModel()
{
    names_.resize(random_.percent(60) ? 1 : 2);
    deep_ = random_.percent(35);
    simpleBounds_ = random_.percent(30);
    topElements_ = 1;
    Schema_ElementDecl& decl = graph_.elements.emplace_back();
    ComplexNode& node = graph_.complexTypes.emplace_back();
    decl.name = "a";
    decl.namespaceName = target_;
    decl.minOccurs = decl.maxOccurs = 1;
    decl.type = &node.record;
    decl.typeKind = SCHEMA_KIND_COMPLEX_TYPE;
    node.record.content = content();
    graph_.top.push_back({&decl, SCHEMA_KIND_ELEMENT});
    graph_.sync();
}

bool SchemaMaker::tooDeep() const
{
    return std::any_of(heights_.begin(), heights_.end(),
                       [](const auto& height) { return height.second > 6; });
}

void SchemaMaker::makeTop()
{
    for (std::size_t i = 0; i < topElements_; ++i)
        graph_.top.push_back({&graph_.elements[i], SCHEMA_KIND_ELEMENT});
    for (std::size_t i = 0; i < topAttributes_; ++i)
        if (random_.percent(80))
            graph_.top.push_back({&graph_.attributes[i], SCHEMA_KIND_ATTRIBUTE});
    if (random_.percent(3)) graph_.top.push_back({nullptr, SCHEMA_KIND_ELEMENT});
    if (random_.percent(3)) graph_.top.push_back({nullptr, SCHEMA_KIND_ATTRIBUTE});
    for (std::size_t i = graph_.top.size(); i > 1; --i)
        std::swap(graph_.top[i - 1], graph_.top[random_.below(i)]);
}

// A top-level element; others may be in front of it.
void SchemaMaker::makeTopElement(std::size_t at)
{
    Schema_ElementDecl& decl = graph_.elements[at];
    makeElement(decl);
    decl.form = random_.percent(90) ? SCHEMA_FORM_DEFAULT : SCHEMA_FORM_UNQUALIFIED;
    decl.minOccurs = decl.maxOccurs = random_.percent(75) ? 1 : 0;
    if (random_.percent(3)) bounds(decl.minOccurs, decl.maxOccurs);
    decl.abstract = random_.percent(15);
    if (at == 0) return;
    const Schema_ElementDecl& other = graph_.elements[random_.below(at)];
    if (random_.percent(other.abstract ? 60 : 10)) {
        decl.substitutionGroupName = other.name;
        decl.substitutionGroupNamespace = other.namespaceName;
    }
    if (random_.percent(4)) decl.ref = &other;
}

// Everything but a reference and bounds.
void SchemaMaker::makeElement(Decl& decl)
{
    decl.name = localName();
    decl.namespaceName = nameSpace();
    decl.form = static_cast<Schema_Form>(random_.weighted({70, 15, 15}));
    decl.typeKind = SCHEMA_KIND_COMPLEX_TYPE;
    switch (random_.weighted({40, 35, 22, 3})) {
    case 0: decl.type = &random_.anyOf(graph_.complexTypes).record; break;
    case 1:
        decl.type = simpleType();
        decl.typeKind = SCHEMA_KIND_SIMPLE_TYPE;
        break;
    case 2: break;  // not checked
    default: decl.type = Schema_BLDIN_anyType();
    }
    if (random_.percent(5)) {
        decl.fixed = 1;
        decl.value =
            random_.percent(15) ? random_.one<const char*>({"", nullptr}) : randomValue(random_);
    }
    decl.nillable = random_.percent(8);
    decl.abstract = random_.percent(2);
}

const Schema_ElementDecl* SchemaMaker::elementParticle()
{
    if (!local_.empty() && random_.percent(8)) return random_.anyOf(local_);
    Schema_ElementDecl& decl = graph_.elements.emplace_back();
    if (oneModel_) {
        decl.name = localName();
        decl.namespaceName = target_;
    } else if (random_.percent(35)) {
        decl.ref = !local_.empty() && random_.percent(10)
                       ? random_.anyOf(local_)
                       : &graph_.elements[random_.below(topElements_)];
    } else {
        makeElement(decl);
    }
    bounds(decl.minOccurs, decl.maxOccurs);
    local_.push_back(&decl);
    return &decl;
}

const Schema_Wildcard* SchemaMaker::wildcard()
{
    Schema_Wildcard& any = graph_.wildcards.emplace_back();
    any.namespaceName = random_.one<const char*>({"##any", "##any", "##any", "##other", "##other",
                                                  "urn:a", "urn:b", "urn:a urn:b", nullptr, ""});
    any.targetNamespace = random_.percent(90) ? target_ : "urn:b";
    any.processContents = static_cast<Schema_ProcessContents>(random_.below(3));
    bounds(any.minOccurs, any.maxOccurs);
    return &any;
}

// A group that stands in another place, too, if one fits.
Schema_Object SchemaMaker::sharedGroup(unsigned room)
{
    if (heights_.empty()) return {};
    const GroupNode& node = random_.anyOf(graph_.groups);
    const auto height = heights_.find(&node.record);
    if (height == heights_.end() || height->second > room) return {};
    return {&node.record, SCHEMA_KIND_MODEL_GROUP};
}

Schema_Object SchemaMaker::particle(unsigned level, unsigned deepest)
{
    if (level < deepest && random_.percent(deep_ ? 70 : level < 3 ? 40 : 20)) {
        if (random_.percent(10))
            if (const Schema_Object shared = sharedGroup(deepest - level); shared.def)
                return shared;
        return {group(level + 1, deepest), SCHEMA_KIND_MODEL_GROUP};
    }
    if (random_.percent(8)) return {wildcard(), SCHEMA_KIND_WILDCARD};
    return {elementParticle(), SCHEMA_KIND_ELEMENT};
}

const Schema_ModelGroup* SchemaMaker::group(unsigned level, unsigned deepest)
{
    GroupNode& node = graph_.groups.emplace_back();
    bounds(node.record.minOccurs, node.record.maxOccurs);
    const bool all = random_.percent(level == 1 ? 10 : 3);
    node.record.compositor = all                   ? SCHEMA_COMPOSITOR_ALL
                             : random_.percent(55) ? SCHEMA_COMPOSITOR_SEQUENCE
                                                   : SCHEMA_COMPOSITOR_CHOICE;
    std::size_t count = random_.percent(2) ? 0
                        : deep_            ? random_.between(1, 2)
                                           : random_.between(1, 4);
    unsigned height = 1;
    for (; count != 0; --count) {
        if (all) {
            const Schema_ElementDecl* decl = elementParticle();
            node.particles.push_back({decl, SCHEMA_KIND_ELEMENT});
            continue;
        }
        const Schema_Object object = particle(level, deepest);
        node.particles.push_back(object);
        if (object.kind == SCHEMA_KIND_MODEL_GROUP)
            height =
                std::max(height, 1 + heights_[static_cast<const Schema_ModelGroup*>(object.def)]);
    }
    heights_[&node.record] = height;
    return &node.record;
}

const Schema_ModelGroup* SchemaMaker::content()
{
    if (random_.percent(4) && !heights_.empty())
        if (const Schema_Object shared = sharedGroup(6); shared.def)
            return static_cast<const Schema_ModelGroup*>(shared.def);
    unsigned deepest = static_cast<unsigned>(random_.between(1, deep_ ? 6 : 4));
    if (random_.percent(2)) deepest = 7;
    return group(1, deepest);
}

void SchemaMaker::makeComplexType(std::size_t at)
{
    ComplexNode& node = graph_.complexTypes[at];
    node.record.mixed = random_.percent(20);
    if (random_.percent(30)) {
        makeDerivation(node, at);
        if (random_.percent(5)) node.record.content = content();  // not looked at
    } else if (random_.percent(92)) {
        node.record.content = content();
    }
    addAttributes(node.attributes);
    addGroups(node.attributeGroups, attributeGroups_);
    node.record.anyAttribute = attributeWildcard();
}

void SchemaMaker::makeDerivation(ComplexNode& node, std::size_t at)
{
    DerivationNode& derivation = graph_.derivations.emplace_back();
    node.record.derivation = &derivation.record;
    Schema_Derivation& record = derivation.record;
    record.kind = random_.one<Schema_ObjectKind>(
        {SCHEMA_KIND_COMPLEX_EXTENSION, SCHEMA_KIND_COMPLEX_EXTENSION,
         SCHEMA_KIND_COMPLEX_RESTRICTION, SCHEMA_KIND_SIMPLE_RESTRICTION,
         SCHEMA_KIND_SIMPLE_EXTENSION});
    const bool simple = record.kind == SCHEMA_KIND_SIMPLE_RESTRICTION ||
                        record.kind == SCHEMA_KIND_SIMPLE_EXTENSION;
    if (at == 0 || random_.percent(simple ? 65 : 4)) {
        const Schema_SimpleType* base = simpleType();
        record.base = base;
        record.baseKind = SCHEMA_KIND_SIMPLE_TYPE;
        if (simple) addFacets(derivation.facets, builtinOf(base));
    } else {
        record.base = random_.percent(4) ? Schema_BLDIN_anyType()
                                         : &graph_.complexTypes[random_.below(at)].record;
        record.baseKind = SCHEMA_KIND_COMPLEX_TYPE;
        if (simple && random_.percent(50)) addFacets(derivation.facets, SCHEMA_BUILTIN_STRING);
    }
    if (random_.percent(simple ? 5 : 75)) record.content = content();
    addAttributes(derivation.attributes);
    addGroups(derivation.attributeGroups, attributeGroups_);
    record.anyAttribute = attributeWildcard();
}

const Schema_ElementDecl& addList(SchemaGraph& graph)
{
    GroupNode& group = graph.groups.emplace_back();
    group.record.compositor = SCHEMA_COMPOSITOR_CHOICE;
    group.record.maxOccurs = SCHEMA_UNBOUNDED;
    for (const Schema_Object& object : graph.top) {
        if (object.kind != SCHEMA_KIND_ELEMENT || !object.def) continue;
        Schema_ElementDecl& reference = graph.elements.emplace_back();
        reference.ref = static_cast<const Schema_ElementDecl*>(object.def);
        reference.maxOccurs = group.particles.empty() ? SCHEMA_UNBOUNDED : 1;
        group.particles.push_back({&reference, SCHEMA_KIND_ELEMENT});
    }
    // Of one element it is a plain list.
    if (group.particles.size() == 1) group.record.maxOccurs = 1;
    ComplexNode& type = graph.complexTypes.emplace_back();
    type.record.content = &group.record;
    Schema_ElementDecl& list = graph.elements.emplace_back();
    list.name = "list";
    list.type = &type.record;
    list.typeKind = SCHEMA_KIND_COMPLEX_TYPE;
    list.minOccurs = list.maxOccurs = 1;
    graph.top.push_back({&list, SCHEMA_KIND_ELEMENT});
    graph.sync();
    return list;
}
