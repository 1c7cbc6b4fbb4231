#include "xsd/components.hpp"

#include "xsd/declaration_text.hpp"

#include <algorithm>
#include <cstdlib>
#include <set>

namespace netxml::xsd {
namespace {

constexpr std::size_t kMostParticles = 100000;  // of one content model

}  // namespace

Components::Components(SchemaSet& set, SchemaRecords& records, SimpleTypes& types,
                       Attributes& attributes, Diagnostics& diagnostics)
    : set_{set}, records_{records}, types_{types}, attributes_{attributes}, diagnostics_{
                                                                                diagnostics}
{
    for (const auto& [name, component] : set.ordered(Symbol::Element)) {
        const std::string* written = component.node->find("substitutionGroup");
        const auto head = written ? set.resolve(component, *written) : std::nullopt;
        if (head && set.find(Symbol::Element, *head, component)) members_.emplace(*head, name);
    }
}

// ------------------------------------------------------------------------------------------------
// Types

Components::Type& Components::anyType()
{
    if (any_) return *any_;
    any_ = &complexTypes_.emplace_back();
    ComplexTypeRecord& record = records_.complexTypes.emplace_back();
    record.identifier = "xs_anyType";
    record.source = "xs:anyType";
    WildcardRecord& wildcard = records_.wildcards.emplace_back();
    wildcard.constraint = "##any";
    wildcard.processContents = SCHEMA_PROCESS_LAX;
    ContentModel any;
    any.kind = ContentModel::Kind::Wildcard;
    any.wildcard = &wildcard;
    any.min = 0;
    any.max = kUnbounded;
    any_->record = &record;
    any_->filled = true;
    any_->mixed = true;
    any_->isAny = true;
    any_->content = group(ContentModel::Kind::Sequence, {any});
    any_->attributes.wildcard = AttributeUses::Wildcard{{}, SCHEMA_PROCESS_LAX, {}};
    return *any_;
}

Components::Type* Components::complexType(const QName& name, const Component& from)
{
    const auto known = named_.find(name);
    if (known != named_.end()) return known->second;
    const Component component = set_.find(Symbol::Type, name, from);
    if (!component) return nullptr;
    Type& type = complexTypes_.emplace_back();
    named_[name] = &type;
    type.at = component;
    type.record = &records_.complexTypes.emplace_back();
    type.record->name = name.local;
    type.record->nameSpace = name.nameSpace;
    type.record->place = component.node->place;
    type.record->source = declarationText(*component.node);
    return &type;
}

Components::Type* Components::anonymousType(const Component& at)
{
    const auto [place, added] = anonymous_.try_emplace(at.node);
    if (!added) return place->second;
    Type& type = complexTypes_.emplace_back();
    anonymous_[at.node] = &type;
    type.at = at;
    type.record = &records_.complexTypes.emplace_back();
    type.record->place = at.node->place;
    type.record->source = declarationText(*at.node);
    return &type;
}

const ComplexTypeRecord* Components::namedType(const QName& name, const Component& from)
{
    const Type* type = complexType(name, from);
    return type ? type->record : nullptr;
}

Components::TypeChoice Components::namedChoice(const QName& name, const Component& from)
{
    const auto& symbols = set_.symbols(Symbol::Type);
    const auto found = symbols.find(name);
    // The schema of schemas declares what is built in, and more.
    const bool builtin = findBuiltin(name.local) || name.local == "anyType";
    if (name.nameSpace == kSchemaNamespace && (builtin || found == symbols.end())) {
        if (name.local == "anyType") return {nullptr, &anyType()};
        return {&types_.builtin(name.local, from), nullptr};
    }
    // Simple types report what is not declared; network types need no declaration.
    if (found == symbols.end() || SimpleTypes::isSimple(found->second))
        return {&types_.named(name, from), nullptr};
    return {nullptr, complexType(name, from)};
}

Components::TypeChoice Components::typeOf(const Component& element)
{
    if (const std::string* written = element.node->find("type")) {
        const auto name = set_.resolve(element, *written);
        return name ? namedChoice(*name, element) : TypeChoice{nullptr, &anyType()};
    }
    if (const SchemaNode* simple = element.node->child("simpleType"))
        return {&types_.declared(element.with(simple)), nullptr};
    if (const SchemaNode* complex = element.node->child("complexType"))
        return {nullptr, anonymousType(element.with(complex))};
    return {nullptr, &anyType()};
}

// ------------------------------------------------------------------------------------------------
// Elements

void Components::checkAbsent(const Component& at)
{
    for (const char* name : {"unique", "key", "keyref"}) {
        if (const SchemaNode* node = at.node->child(name))
            diagnostics_.approximate(node->place, "the identity constraint \"" + node->get("name") +
                                                      "\" is not checked.");
    }
}

void Components::setValue(ElementRecord& record, const Component& at, const TypeChoice& type)
{
    // An empty element has the default or the fixed value, so it is valid.
    if (at.node->find("default")) record.nillable = true;
    const std::string* fixed = at.node->find("fixed");
    if (!fixed) return;
    record.nillable = true;
    if (!type.simple) {
        record.fixed = *fixed;
        return;
    }
    const SimpleType* equal = types_.fixedTo(*type.simple, *fixed, at.node->place);
    if (equal) record.simpleType = equal->record;
    else record.fixed = *fixed;
}

void Components::describe(ElementRecord& record, const Component& at)
{
    record.place = at.node->place;
    record.source = declarationText(*at.node);
    record.nillable = isTrue(at.node->get("nillable"));
    record.abstract = isTrue(at.node->get("abstract"));
    Component typed = at;
    std::set<const SchemaNode*> seen;
    // Without a type of its own an element has that of its head.
    while (!typed.node->find("type") && !typed.node->child("simpleType") &&
           !typed.node->child("complexType") && typed.node->find("substitutionGroup") &&
           seen.insert(typed.node).second) {
        const auto head = set_.resolve(typed, typed.node->get("substitutionGroup"));
        const Component component = head ? set_.find(Symbol::Element, *head, typed) : Component{};
        if (!component) break;
        typed = component;
    }
    const TypeChoice type = typeOf(typed);
    if (type.simple) record.simpleType = type.simple->record;
    else if (type.complex) record.complexType = type.complex->record;
    setValue(record, at, type);
    checkAbsent(at);
    if (record.nillable && isTrue(at.node->get("nillable")))
        diagnostics_.approximate(at.node->place, "an empty element is accepted without "
                                                 "\"xsi:nil\", and its value is not looked at.");
    if (type.complex && type.complex->at && isTrue(type.complex->at.node->get("abstract")))
        diagnostics_.approximate(at.node->place,
                                 "the type of this element is abstract: what \"xsi:type\" says is "
                                 "not read, and what the type itself admits is accepted.");
}

const ElementRecord* Components::topElement(const QName& name, const Component& from)
{
    const auto known = tops_.find(name);
    if (known != tops_.end()) return known->second;
    const Component component = set_.find(Symbol::Element, name, from);
    if (!component) return nullptr;
    ElementRecord& record = records_.elements.emplace_back();
    tops_[name] = &record;
    record.top = true;
    record.name = name.local;
    record.nameSpace = name.nameSpace;
    const std::string* written = component.node->find("substitutionGroup");
    const auto head = written ? set_.resolve(component, *written) : std::nullopt;
    if (head) record.head = {head->local, head->nameSpace};
    describe(record, component);
    return &record;
}

const ElementRecord* Components::localElement(const Component& at)
{
    const auto [place, added] = locals_.try_emplace(at.node);
    if (!added) return place->second;
    ElementRecord& record = records_.elements.emplace_back();
    locals_[at.node] = &record;
    record.name = at.node->get("name");
    const std::string form = at.node->get("form");
    if (form.empty() ? at.document->elementsQualified : form == "qualified") {
        record.nameSpace = at.document->targetNamespace;
    } else {
        record.form = SCHEMA_FORM_UNQUALIFIED;
    }
    record.min = bound(at, "minOccurs");
    record.max = bound(at, "maxOccurs");
    describe(record, at);
    return &record;
}

// ------------------------------------------------------------------------------------------------
// Content models

std::uint32_t Components::bound(const Component& at, const char* name)
{
    const std::string* written = at.node->find(name);
    if (!written) return 1;
    if (*written == "unbounded" && std::string_view{name} == "maxOccurs") return kUnbounded;
    char* end = nullptr;
    const unsigned long value = std::strtoul(written->c_str(), &end, 10);
    if (end == written->c_str() || *end != '\0' || written->starts_with('-')) {
        diagnostics_.error(at.node->place, std::string{"\""} + name + "\" is \"" + *written +
                                               "\"; expected a number.");
        return 1;
    }
    return static_cast<std::uint32_t>(std::min(value, static_cast<unsigned long>(kUnbounded - 1)));
}

void Components::checkGroups()
{
    for (const auto& [name, component] : set_.ordered(Symbol::Group)) {
        particles_ = 0;
        openGroups_.push_back(component.node);
        contentIn(component);
        openGroups_.pop_back();
    }
}

void Components::setBounds(ContentModel& model, const Component& at)
{
    model.min = bound(at, "minOccurs");
    model.max = bound(at, "maxOccurs");
    model.place = at.node->place;
    if (model.max < model.min)
        diagnostics_.error(at.node->place, "\"maxOccurs\" is below \"minOccurs\".");
}

// The one of the children that is a particle, or an empty group.
ContentModel Components::contentIn(const Component& at)
{
    for (const SchemaNode* node : at.node->children) {
        if (node->is("sequence") || node->is("choice") || node->is("all") || node->is("group"))
            return particle(at.with(node));
    }
    ContentModel none;
    none.place = at.node->place;
    return none;
}

ContentModel Components::particle(const Component& at)
{
    // Groups that refer to groups may say exponentially more than is written.
    if (particles_ >= kMostParticles) {
        if (particles_ == kMostParticles)
            diagnostics_.error(at.node->place, "with the groups that it refers to, this content "
                                               "model has more than " +
                                                   std::to_string(kMostParticles) + " particles.");
        particles_ = kMostParticles + 1;
        return ContentModel{};
    }
    ++particles_;
    if (at.node->is("element")) return elementParticle(at);
    if (at.node->is("any")) return wildcardParticle(at);
    if (at.node->is("group")) return groupReference(at);
    using Kind = ContentModel::Kind;
    ContentModel result = group(at.node->is("choice") ? Kind::Choice
                                : at.node->is("all")  ? Kind::All
                                                      : Kind::Sequence,
                                {});
    setBounds(result, at);
    for (const SchemaNode* node : at.node->children) {
        if (node->is("annotation") || node->name.nameSpace != kSchemaNamespace) continue;
        result.parts.push_back(particle(at.with(node)));
    }
    return result;
}

ContentModel Components::groupReference(const Component& at)
{
    ContentModel result;
    result.place = at.node->place;
    const auto name = set_.resolve(at, at.node->get("ref"));
    const Component target = name ? set_.find(Symbol::Group, *name, at) : Component{};
    if (!target) return result;
    if (std::find(openGroups_.begin(), openGroups_.end(), target.node) != openGroups_.end()) {
        diagnostics_.error(at.node->place, "the group \"" + shown(*name) + "\" holds itself.");
        return result;
    }
    openGroups_.push_back(target.node);
    result = contentIn(target);
    openGroups_.pop_back();
    if (result.min != 1 || result.max != 1)
        result = group(ContentModel::Kind::Sequence, {std::move(result)});
    setBounds(result, at);
    return result;
}

// A head as a choice of what may stand in its place, itself included unless it is abstract.
ContentModel Components::substitutes(const QName& head, const Component& at)
{
    std::vector<QName> names{head};
    for (std::size_t i = 0; i != names.size(); ++i) {
        const auto [first, last] = members_.equal_range(names[i]);
        for (auto member = first; member != last; ++member) {
            if (std::find(names.begin(), names.end(), member->second) == names.end())
                names.push_back(member->second);
        }
    }
    ContentModel result = group(ContentModel::Kind::Choice, {});
    result.place = at.node->place;
    for (const QName& name : names) {
        const ElementRecord* element = topElement(name, at);
        // An abstract element without substitutes never matches.
        if (!element || (element->abstract && names.size() > 1)) continue;
        ContentModel leaf;
        leaf.kind = ContentModel::Kind::Element;
        leaf.element = element;
        leaf.place = at.node->place;
        result.parts.push_back(leaf);
    }
    return result;
}

ContentModel Components::elementParticle(const Component& at)
{
    ContentModel result;
    if (const std::string* written = at.node->find("ref")) {
        const auto name = set_.resolve(at, *written);
        if (!name) return result;
        result = substitutes(*name, at);
        if (result.parts.size() == 1) result = result.parts.front();
    } else if (at.node->find("name")) {
        result.kind = ContentModel::Kind::Element;
        result.element = localElement(at);
    } else {
        diagnostics_.error(at.node->place, "an element needs the attribute \"name\" or \"ref\".");
        return result;
    }
    setBounds(result, at);
    return result;
}

ContentModel Components::wildcardParticle(const Component& at)
{
    const std::string process = at.node->get("processContents");
    ContentModel result = group(ContentModel::Kind::Choice, {});
    for (const ConstraintText& text :
         constraintTexts(readConstraint(at.node->get("namespace"), at.document->targetNamespace))) {
        WildcardRecord& wildcard = records_.wildcards.emplace_back();
        wildcard.place = at.node->place;
        wildcard.source = declarationText(*at.node);
        wildcard.constraint = text.constraint;
        wildcard.targetNamespace = text.targetNamespace;
        wildcard.processContents = process == "lax"    ? SCHEMA_PROCESS_LAX
                                   : process == "skip" ? SCHEMA_PROCESS_SKIP
                                                       : SCHEMA_PROCESS_STRICT;
        ContentModel leaf;
        leaf.kind = ContentModel::Kind::Wildcard;
        leaf.wildcard = &wildcard;
        leaf.place = at.node->place;
        result.parts.push_back(leaf);
    }
    if (result.parts.size() == 1) result = result.parts.front();
    setBounds(result, at);
    return result;
}

}  // namespace netxml::xsd
