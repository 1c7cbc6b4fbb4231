#include "xsd/record_names.hpp"

#include <utility>

namespace netxml::xsd {
namespace {

bool isLetterOrDigit(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

}  // namespace

std::string identifierText(std::string_view text)
{
    constexpr char kDigits[] = "0123456789abcdef";
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (isLetterOrDigit(c)) {
            result += c;
        } else if (byte >= 0x80) {
            result += kDigits[byte / 16];
            result += kDigits[byte % 16];
        } else if (!result.ends_with('_')) {
            result += '_';
        }
    }
    while (result.ends_with('_')) result.pop_back();
    return result;
}

RecordNames::RecordNames(const SchemaRecords& records, std::string prefix)
    : prefix_{std::move(prefix)}, namespaces_{records.namespaceParts}
{
    // Top-level ones have the first choice of names.
    for (const ComplexTypeRecord* type : records.topComplexTypes) {
        name(type, prefix_ + "_" + topName("type", *type, type->name, type->nameSpace));
        complexTypes_.push_back(type);
    }
    for (const ElementRecord* element : records.topElements)
        name(element,
             prefix_ + "_" + topName("element", *element, element->name, element->nameSpace));
    for (const SimpleTypeRecord* type : records.topSimpleTypes) visit(type, "");
    for (const AttributeRecord* attribute : records.topAttributes) visit(attribute, "");
    for (const ElementRecord* element : records.topElements) visitTypeOf(element);
    for (std::size_t i = 0; i != complexTypes_.size(); ++i) visit(complexTypes_[i]);
}

std::string RecordNames::topName(const std::string& kind, const RecordBase& record,
                                 const std::string& name, const std::string& nameSpace) const
{
    if (!record.identifier.empty()) return record.identifier;
    const auto mapped = namespaces_.find(nameSpace);
    const std::string part = mapped == namespaces_.end() ? "" : mapped->second;
    return kind + "_" + (part.empty() ? "" : identifierText(part) + "_") + identifierText(name);
}

// False when it has a name already.
bool RecordNames::name(const RecordBase* record, const std::string& proposed)
{
    const auto [place, added] = names_.try_emplace(record);
    if (!added) return false;
    std::string unique = proposed;
    for (unsigned number = 2; !taken_.insert(unique).second; ++number)
        unique = proposed + "_" + std::to_string(number);
    place->second = unique;
    return true;
}

void RecordNames::visit(const SimpleTypeRecord* type, const std::string& outer)
{
    if (!type) return;
    if (!type->builtin.empty()) {
        builtins_.insert(type->builtin);
        return;
    }
    const bool named = !type->name.empty() || !type->identifier.empty();
    if (!name(type, named ? topName("type", *type, type->name, type->nameSpace) : outer + "_type"))
        return;
    for (const SimpleTypeRecord* member : type->members) visit(member, names_[type]);
    simpleTypes_.push_back(type);
}

void RecordNames::visit(const AttributeRecord* attribute, const std::string& outer)
{
    const bool top = outer.empty() || !attribute->identifier.empty();
    if (!name(attribute,
              top ? topName("attribute", *attribute, attribute->name, attribute->nameSpace)
                  : outer + "_" +
                        identifierText(attribute->ref ? attribute->ref->name : attribute->name) +
                        "_attribute"))
        return;
    if (attribute->ref) visit(attribute->ref, "");
    visit(attribute->type, names_[attribute]);
    attributes_.push_back(attribute);
}

void RecordNames::visit(const AttributeGroupRecord* group, const std::string& outer)
{
    if (!name(group, group->identifier.empty() ? outer + "_attributeGroup" : group->identifier))
        return;
    for (const AttributeRecord* attribute : group->attributes) visit(attribute, names_[group]);
    if (group->anyAttribute) name(group->anyAttribute, names_[group] + "_any");
    groups_.push_back(group);
}

void RecordNames::visitTypeOf(const ElementRecord* element)
{
    visit(element->simpleType, names_[element]);
    if (!element->complexType) return;
    const ComplexTypeRecord* type = element->complexType;
    const std::string proposed =
        type->identifier.empty() ? names_[element] + "_type" : prefix_ + "_" + type->identifier;
    const bool prefixed = proposed.starts_with(prefix_ + "_");
    if (name(type, prefixed ? proposed : prefix_ + "_" + proposed)) complexTypes_.push_back(type);
}

void RecordNames::visitElement(const ElementRecord* element, const std::string& outer)
{
    const std::string& local = element->ref ? element->ref->name : element->name;
    if (!name(element, outer + "_" + identifierText(local))) return;
    if (!element->ref) visitTypeOf(element);
}

void RecordNames::visit(const GroupRecord* group, const std::string& outer)
{
    if (!name(group, outer + "_content")) return;
    unsigned number = 0;
    for (const ParticleRecord& particle : group->particles) {
        if (particle.element) visitElement(particle.element, outer);
        else if (particle.wildcard) name(particle.wildcard, outer + "_any");
        else visit(particle.group, outer + "_" + std::to_string(++number));
    }
}

void RecordNames::visit(const ComplexTypeRecord* type)
{
    // Inside a type names need no prefix: no other file sees them.
    const std::string outer = names_[type].substr(prefix_.size() + 1);
    for (const AttributeRecord* attribute : type->attributes) visit(attribute, outer);
    for (const AttributeGroupRecord* group : type->attributeGroups) visit(group, outer);
    if (type->anyAttribute) name(type->anyAttribute, outer + "_anyAttribute");
    visit(type->textType, outer);
    if (type->content) visit(type->content, outer);
}

}  // namespace netxml::xsd
