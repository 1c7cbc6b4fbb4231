#include "xsd/attribute_uses.hpp"

#include "xsd/declaration_text.hpp"

#include <algorithm>

namespace netxml::xsd {
namespace {

Schema_AttributeUse useOf(const std::string& written)
{
    if (written == "required") return SCHEMA_USE_REQUIRED;
    if (written == "prohibited") return SCHEMA_USE_PROHIBITED;
    return SCHEMA_USE_OPTIONAL;
}

}  // namespace

bool isTrue(const std::string& value)
{
    return value == "true" || value == "1";
}

void AttributeUses::put(const QName& name, const AttributeRecord* record)
{
    for (auto& [known, place] : uses) {
        if (known == name) {
            place = record;
            return;
        }
    }
    uses.emplace_back(name, record);
}

Attributes::Attributes(SchemaSet& set, SchemaRecords& records, SimpleTypes& types,
                       Diagnostics& diagnostics)
    : set_{set}, records_{records}, types_{types}, diagnostics_{diagnostics}
{
}

void Attributes::describe(AttributeRecord& record, const Component& at)
{
    record.place = at.node->place;
    record.source = declarationText(*at.node);
    const SimpleType* type = types_.ofDeclaration(at);
    if (!type) type = &types_.builtin("anySimpleType", at);
    record.type = type->record;
    fix(record, *at.node, type);
}

// Numbers equal each other in several spellings.
void Attributes::fix(AttributeRecord& record, const SchemaNode& node, const SimpleType* type)
{
    const std::string* value = node.find("fixed");
    if (!value) return;
    const SimpleType* equal = type ? types_.fixedTo(*type, *value, node.place) : nullptr;
    if (equal) record.type = equal->record;
    else record.fixed = *value;
}

const AttributeRecord* Attributes::top(const QName& name, const Component& from)
{
    const auto known = tops_.find(name);
    if (known != tops_.end()) return known->second;
    const Component component = set_.find(Symbol::Attribute, name, from);
    if (!component) return nullptr;
    AttributeRecord& record = records_.attributes.emplace_back();
    tops_[name] = &record;
    record.name = name.local;
    record.nameSpace = name.nameSpace;
    record.form = SCHEMA_FORM_QUALIFIED;
    describe(record, component);
    return &record;
}

const AttributeRecord* Attributes::local(const Component& at)
{
    const auto [place, added] = locals_.try_emplace(at.node);
    if (!added) return place->second;
    AttributeRecord& record = records_.attributes.emplace_back();
    locals_[at.node] = &record;
    record.name = at.node->get("name");
    const std::string form = at.node->get("form");
    if (form.empty() ? at.document->attributesQualified : form == "qualified") {
        record.form = SCHEMA_FORM_QUALIFIED;
        record.nameSpace = at.document->targetNamespace;
    }
    record.use = useOf(at.node->get("use"));
    describe(record, at);
    return &record;
}

// A record that refers takes everything from the other one, so a use or a fixed value of its own
// needs a copy.
const AttributeRecord* Attributes::reference(const Component& at, const QName& name)
{
    const AttributeRecord* declared = top(name, at);
    if (!declared) return nullptr;
    const auto [place, added] = locals_.try_emplace(at.node);
    if (!added) return place->second;
    AttributeRecord& record = records_.attributes.emplace_back();
    locals_[at.node] = &record;
    const Schema_AttributeUse use = useOf(at.node->get("use"));
    const bool copy = use != declared->use || (at.node->find("fixed") && !declared->fixed);
    if (copy) record = *declared;
    else record.ref = declared;
    if (copy) record.use = use;
    if (copy && !declared->fixed) fix(record, *at.node, nullptr);
    record.place = at.node->place;
    record.source = declarationText(*at.node);
    return &record;
}

void Attributes::addUse(AttributeUses& to, std::set<QName>& own, const Component& at)
{
    const auto put = [&](const QName& name, const AttributeRecord* record) {
        if (!own.insert(name).second)
            diagnostics_.error(at.node->place,
                               "the attribute \"" + shown(name) + "\" is declared here already.");
        to.put(name, record);
    };
    const std::string* written = at.node->find("ref");
    if (written) {
        const auto name = set_.resolve(at, *written);
        const AttributeRecord* record = name ? reference(at, *name) : nullptr;
        if (record) put(*name, record);
        return;
    }
    if (!at.node->find("name")) {
        diagnostics_.error(at.node->place, "an attribute needs the attribute \"name\" or \"ref\".");
        return;
    }
    const AttributeRecord* record = local(at);
    put({record->nameSpace, record->name}, record);
}

// Wildcards beside each other and of groups admit what all of them admit.
void Attributes::addWildcard(AttributeUses& to, const AttributeUses::Wildcard& wildcard)
{
    if (!to.wildcard) to.wildcard = wildcard;
    else to.wildcard->constraint = intersection(to.wildcard->constraint, wildcard.constraint);
}

void Attributes::addGroup(AttributeUses& to, const Component& at)
{
    const auto name = set_.resolve(at, at.node->get("ref"));
    const Component group = name ? set_.find(Symbol::AttributeGroup, *name, at) : Component{};
    if (!group) return;
    if (std::find(open_.begin(), open_.end(), group.node) != open_.end()) {
        diagnostics_.error(at.node->place,
                           "the attribute group \"" + shown(*name) + "\" holds itself.");
        return;
    }
    const std::pair key{group.node, group.document};
    auto known = groups_.find(key);
    if (known == groups_.end()) {
        open_.push_back(group.node);
        known = groups_.emplace(key, declaredIn(group)).first;
        open_.pop_back();
    }
    const AttributeUses& inner = known->second;
    for (const auto& [attribute, record] : inner.uses) to.put(attribute, record);
    if (inner.wildcard) addWildcard(to, *inner.wildcard);
}

AttributeUses Attributes::declaredIn(const Component& at)
{
    AttributeUses result;
    // Its own wildcard says how strictly what matches is checked.
    if (const SchemaNode* any = at.node->child("anyAttribute")) {
        const std::string process = any->get("processContents");
        result.wildcard = AttributeUses::Wildcard{
            readConstraint(any->get("namespace"), at.document->targetNamespace),
            process == "lax"    ? SCHEMA_PROCESS_LAX
            : process == "skip" ? SCHEMA_PROCESS_SKIP
                                : SCHEMA_PROCESS_STRICT,
            any->place};
    }
    std::set<QName> own;
    for (const SchemaNode* node : at.node->children) {
        if (node->is("attribute")) addUse(result, own, at.with(node));
        else if (node->is("attributeGroup")) addGroup(result, at.with(node));
    }
    return result;
}

AttributeUses Attributes::derived(const AttributeUses& base, const AttributeUses& own,
                                  bool extension)
{
    AttributeUses result = base;
    for (const auto& [name, record] : own.uses) result.put(name, record);
    if (!extension) {
        result.wildcard = own.wildcard;  // a restriction's wildcard stands in place of its base's
    } else if (own.wildcard) {
        result.wildcard = own.wildcard;
        if (base.wildcard)
            result.wildcard->constraint =
                unionOf(own.wildcard->constraint, base.wildcard->constraint);
    }
    return result;
}

// What every element may have: the attributes by which a document speaks about its schema, and
// those of the xml: namespace, as the library admits them on elements of simple types.
const AttributeGroupRecord* Attributes::instanceAttributes()
{
    if (instance_) return instance_;
    AttributeGroupRecord& group = records_.attributeGroups.emplace_back();
    group.identifier = "instance_attributes";
    group.source = "attributes that stand on any element";
    for (const char* name : {"type", "nil", "schemaLocation", "noNamespaceSchemaLocation"}) {
        AttributeRecord& record = records_.attributes.emplace_back();
        record.identifier = std::string{"instance_"} + name;
        record.name = name;
        record.nameSpace = kInstanceNamespace;
        record.form = SCHEMA_FORM_QUALIFIED;
        record.type = types_.instanceType(record.name).record;
        group.attributes.push_back(&record);
    }
    AttributeWildcardRecord& any = records_.attributeWildcards.emplace_back();
    any.identifier = "xml_attributes";
    any.constraint = kXmlNamespace;
    any.processContents = SCHEMA_PROCESS_LAX;
    group.anyAttribute = &any;
    return instance_ = &group;
}

void Attributes::fill(ComplexTypeRecord& type, const AttributeUses& uses)
{
    for (const auto& [name, record] : uses.uses) type.attributes.push_back(record);
    if (uses.wildcard) {
        for (const ConstraintText& text : constraintTexts(uses.wildcard->constraint)) {
            AttributeWildcardRecord& wildcard = records_.attributeWildcards.emplace_back();
            wildcard.place = uses.wildcard->place;
            wildcard.constraint = text.constraint;
            wildcard.targetNamespace = text.targetNamespace;
            wildcard.processContents = uses.wildcard->processContents;
            if (!type.anyAttribute) {
                type.anyAttribute = &wildcard;
                continue;
            }
            AttributeGroupRecord& group = records_.attributeGroups.emplace_back();
            group.anyAttribute = &wildcard;
            type.attributeGroups.push_back(&group);
        }
    }
    type.attributeGroups.push_back(instanceAttributes());
}

}  // namespace netxml::xsd
