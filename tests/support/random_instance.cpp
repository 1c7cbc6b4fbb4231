#include "tests/support/random_instance.hpp"

#include "tests/support/plain_validator.hpp"
#include "tests/support/random_schema.hpp"

#include <algorithm>

namespace {

const char* safe(const char* text)
{
    return text ? text : "";
}

template <typename Decl>
const Decl* finalOf(const Decl* decl)
{
    while (decl->ref) decl = decl->ref;
    return decl;
}

const char* byForm(bool global, Schema_Form form, Schema_Form otherwise, const char* nameSpace)
{
    if (global) return nameSpace;
    return (form ? form : otherwise) == SCHEMA_FORM_QUALIFIED ? nameSpace : nullptr;
}

}  // namespace

// A namespace that a constraint admits.
std::string InstanceMaker::within(const char* constraint, const char* target)
{
    const std::string text = safe(constraint);
    if (text == "##any") return random_.one<const char*>({"", "urn:a", "urn:b", "urn:c", "##any"});
    if (text == "##other") {
        const std::string other = random_.one<const char*>({"urn:b", "urn:c", "urn:a"});
        return other == safe(target) ? "urn:d" : other;
    }
    const std::size_t space = text.find(' ');
    if (space == std::string::npos) return text;
    return random_.percent(50) ? text.substr(0, space) : text.substr(space + 1);
}

// A value that the type accepts, if one is found soon.
const char* InstanceMaker::value(const Schema_SimpleType* type)
{
    const char* result = randomValue(random_);
    for (int i = 0; i < 20 && !plainAccepts(type, result); ++i) result = randomValue(random_);
    return result;
}

const char* InstanceMaker::simpleContent(const Schema_ComplexType& type)
{
    const Schema_Derivation* derivation = type.derivation;
    if (!derivation) return randomValue(random_);
    if (derivation->baseKind == SCHEMA_KIND_COMPLEX_TYPE)
        return simpleContent(*static_cast<const Schema_ComplexType*>(derivation->base));
    const auto* base = static_cast<const Schema_SimpleType*>(derivation->base);
    if (derivation->kind != SCHEMA_KIND_SIMPLE_RESTRICTION) return value(base);
    Schema_SimpleType restricted{};
    restricted.members = &base;
    restricted.memberCount = 1;
    restricted.facets = derivation->facets;
    restricted.facetCount = derivation->facetCount;
    return value(&restricted);
}

void InstanceMaker::addText(InstanceNode& node, std::string_view text)
{
    InstanceNode child;
    child.kind = random_.percent(90) ? InstanceNode::Kind::Text : InstanceNode::Kind::CData;
    child.text = text;
    node.children.insert(node.children.begin() +
                             static_cast<std::ptrdiff_t>(random_.below(node.children.size() + 1)),
                         std::move(child));
}

Instance InstanceMaker::make()
{
    Instance instance = makeUnchanged();
    mutateSometimes(instance);
    return instance;
}

Instance InstanceMaker::makeList(const Schema_ElementDecl& list)
{
    Instance whole;
    whole.root.name = list.name;
    whole.root.nameSpace = safe(list.namespaceName);
    for (std::size_t count = random_.between(1, 8); count != 0; --count) {
        room_ = 20;
        Instance item = makeUnchanged();
        whole.defaultNamespace = item.defaultNamespace;
        whole.root.children.push_back(std::move(item.root));
        if (random_.percent(30)) whole.root.children.push_back(whole.root.children.back());
    }
    Instance last;
    last.root = std::move(whole.root.children.back());
    mutateSometimes(last);
    whole.root.children.back() = std::move(last.root);
    if (random_.percent(5)) mutateSometimes(whole);
    return whole;
}

void InstanceMaker::mutateSometimes(Instance& instance)
{
    for (std::size_t count = random_.weighted({60, 28, 8, 4}); count != 0; --count)
        mutate(instance);
}

Instance InstanceMaker::makeUnchanged()
{
    std::vector<const Schema_ElementDecl*> tops;
    for (const Schema_Object& object : graph_.top)
        if (object.kind == SCHEMA_KIND_ELEMENT && object.def)
            tops.push_back(static_cast<const Schema_ElementDecl*>(object.def));
    const Schema_ElementDecl* top = random_.anyOf(tops);
    for (int i = 0; i < 4 && (top->abstract || top->typeKind != SCHEMA_KIND_COMPLEX_TYPE); ++i)
        top = random_.anyOf(tops);

    Instance instance;
    instance.root.name = top->name;
    instance.root.nameSpace = within(top->namespaceName, nullptr);
    fill(instance.root, finalOf(top), 0);
    if (random_.percent(20)) instance.defaultNamespace = "urn:a";
    return instance;
}

void InstanceMaker::fill(InstanceNode& node, const Schema_ElementDecl* decl, unsigned depth)
{
    --room_;
    if (!decl->type) {
        if (random_.percent(20)) addText(node, "any");
        if (random_.percent(5)) node.children.push_back(stranger());
        return;
    }
    if (decl->typeKind == SCHEMA_KIND_COMPLEX_TYPE)
        addAttributes(node, *static_cast<const Schema_ComplexType*>(decl->type));
    else if (random_.percent(6)) mutateAttributes(node);
    if (decl->nillable && random_.percent(50)) return;
    if (decl->fixed) {
        if (*safe(decl->value)) addText(node, decl->value);
    } else if (decl->typeKind == SCHEMA_KIND_COMPLEX_TYPE) {
        fillComplex(node, *static_cast<const Schema_ComplexType*>(decl->type), depth);
    } else {
        const char* text = value(static_cast<const Schema_SimpleType*>(decl->type));
        if (*text || random_.percent(50)) addText(node, text);
    }
}

void InstanceMaker::fillComplex(InstanceNode& node, const Schema_ComplexType& type, unsigned depth)
{
    // What must be there may be there again and again below itself: at some point it is left out.
    if (depth < 5 && room_ > -200) addContent(node.children, type, depth);
    const bool simple = type.derivation && type.derivation->kind >= SCHEMA_KIND_SIMPLE_RESTRICTION;
    if (simple) addText(node, simpleContent(type));
    if (type.mixed && random_.percent(40)) addText(node, "mixed");
}

void InstanceMaker::addContent(Nodes& nodes, const Schema_ComplexType& type, unsigned depth)
{
    const Schema_Derivation* derivation = type.derivation;
    if (!derivation) return addGroup(nodes, type.content, depth);
    if (derivation->kind != SCHEMA_KIND_COMPLEX_RESTRICTION &&
        derivation->baseKind == SCHEMA_KIND_COMPLEX_TYPE)
        addContent(nodes, *static_cast<const Schema_ComplexType*>(derivation->base), depth);
    if (derivation->kind < SCHEMA_KIND_SIMPLE_RESTRICTION)
        addGroup(nodes, derivation->content, depth);
}

uint32_t InstanceMaker::repetitions(uint32_t least, uint32_t most)
{
    if (most <= least || room_ <= 0) return least;
    const uint32_t more = random_.percent(85) ? 2 : 6;
    return static_cast<uint32_t>(random_.between(least, std::min(most, least + more)));
}

void InstanceMaker::addGroup(Nodes& nodes, const Schema_ModelGroup* group, unsigned depth)
{
    if (!group || group->particleCount == 0) return;
    if (group->compositor == SCHEMA_COMPOSITOR_ALL) {
        std::vector<uint32_t> order(group->particleCount);
        for (uint32_t i = 0; i < group->particleCount; ++i) order[i] = i;
        for (std::size_t i = order.size(); i > 1; --i)
            std::swap(order[i - 1], order[random_.below(i)]);
        for (const uint32_t i : order)
            addElement(nodes, *static_cast<const Schema_ElementDecl*>(group->particles[i].def),
                       depth);
        return;
    }
    for (uint32_t n = repetitions(group->minOccurs, group->maxOccurs); n != 0 && room_ > -20; --n) {
        if (group->compositor == SCHEMA_COMPOSITOR_CHOICE) {
            addParticle(nodes, group->particles[random_.below(group->particleCount)], depth);
            continue;
        }
        for (uint32_t i = 0; i < group->particleCount; ++i)
            addParticle(nodes, group->particles[i], depth);
    }
}

void InstanceMaker::addParticle(Nodes& nodes, const Schema_Object& particle, unsigned depth)
{
    if (particle.kind == SCHEMA_KIND_MODEL_GROUP)
        return addGroup(nodes, static_cast<const Schema_ModelGroup*>(particle.def), depth);
    if (particle.kind == SCHEMA_KIND_WILDCARD) {
        const auto& any = *static_cast<const Schema_Wildcard*>(particle.def);
        for (uint32_t n = repetitions(any.minOccurs, any.maxOccurs); n != 0 && room_ > -20; --n)
            addAny(nodes, any, depth);
        return;
    }
    const auto& element = *static_cast<const Schema_ElementDecl*>(particle.def);
    for (uint32_t n = repetitions(element.minOccurs, element.maxOccurs); n != 0 && room_ > -20; --n)
        addElement(nodes, element, depth);
}

void InstanceMaker::addElement(Nodes& nodes, const Schema_ElementDecl& particle, unsigned depth)
{
    const Schema_ElementDecl* decl = finalOf(&particle);
    InstanceNode node;
    node.name = decl->name;
    node.nameSpace =
        within(byForm(particle.ref, decl->form, graph_.elementForm, decl->namespaceName), nullptr);
    if (decl->abstract) {
        for (const Schema_Object& object : graph_.top) {
            const auto* top = static_cast<const Schema_ElementDecl*>(object.def);
            if (object.kind != SCHEMA_KIND_ELEMENT || !top || !top->substitutionGroupName ||
                XML_Strcmp(top->substitutionGroupName, decl->name) != 0)
                continue;
            node.name = top->name;
            node.nameSpace = within(top->namespaceName, nullptr);
            decl = finalOf(top);
            break;
        }
    }
    fill(node, decl, depth + 1);
    nodes.push_back(std::move(node));
}

void InstanceMaker::addAny(Nodes& nodes, const Schema_Wildcard& wildcard, unsigned depth)
{
    InstanceNode node = stranger();
    node.nameSpace = within(wildcard.namespaceName, wildcard.targetNamespace);
    for (const Schema_Object& object : graph_.top) {
        const auto* top = static_cast<const Schema_ElementDecl*>(object.def);
        if (object.kind != SCHEMA_KIND_ELEMENT || !top || random_.percent(30)) continue;
        if (node.nameSpace != safe(top->namespaceName)) continue;
        node.name = top->name;
        node.children.clear();
        fill(node, finalOf(top), depth + 1);
        break;
    }
    --room_;
    nodes.push_back(std::move(node));
}

void InstanceMaker::collect(std::vector<Use>& uses,
                            const std::vector<const Schema_AttributeDecl*>& list)
{
    for (const Schema_AttributeDecl* record : list) {
        const Schema_AttributeDecl* decl = finalOf(record);
        uses.push_back(
            {decl, byForm(record->ref, decl->form, graph_.attributeForm, decl->namespaceName)});
    }
}

void InstanceMaker::collect(std::vector<Use>& uses, const Schema_AttributeGroup* group)
{
    group = finalOf(group);
    collect(uses, {group->attributes, group->attributes + group->attributeCount});
    for (uint32_t i = 0; i < group->attributeGroupCount; ++i)
        collect(uses, group->attributeGroups[i]);
}

void InstanceMaker::collect(std::vector<Use>& uses, const Schema_ComplexType& type)
{
    collect(uses, {type.attributes, type.attributes + type.attributeCount});
    for (uint32_t i = 0; i < type.attributeGroupCount; ++i) collect(uses, type.attributeGroups[i]);
    const Schema_Derivation* derivation = type.derivation;
    if (!derivation) return;
    collect(uses, {derivation->attributes, derivation->attributes + derivation->attributeCount});
    for (uint32_t i = 0; i < derivation->attributeGroupCount; ++i)
        collect(uses, derivation->attributeGroups[i]);
    if (derivation->baseKind == SCHEMA_KIND_COMPLEX_TYPE)
        collect(uses, *static_cast<const Schema_ComplexType*>(derivation->base));
}

void InstanceMaker::addAttributes(InstanceNode& node, const Schema_ComplexType& type)
{
    std::vector<Use> uses;
    collect(uses, type);
    for (const Use& use : uses) {
        const unsigned chance = use.decl->use == SCHEMA_USE_REQUIRED     ? 96
                                : use.decl->use == SCHEMA_USE_PROHIBITED ? 2
                                                                         : 40;
        if (!random_.percent(chance)) continue;
        node.set(use.decl->name, safe(use.nameSpace),
                 use.decl->fixed ? safe(use.decl->value) : value(use.decl->type));
    }
    bool any = type.anyAttribute;
    if (type.derivation) any |= type.derivation->anyAttribute != nullptr;
    if (any && random_.percent(30)) mutateAttributes(node);
}
