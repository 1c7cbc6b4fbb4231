#include "xsd/simple_types.hpp"

#include "xsd/alternatives.hpp"
#include "xsd/declaration_text.hpp"
#include "xsd/value_pattern.hpp"

#include <algorithm>

namespace netxml::xsd {
namespace {

constexpr std::string_view kNetworkTypes[] = {"OID",        "_Ipv6Address", "IPV6_ADDR_PREFIX",
                                              "_PortRange", "_VlanRange",   "_Ipv4Mask"};
constexpr const char* kWord = "[^ \t\n\r]+";

// Whether one value may be spelt in several ways, as numbers, and prefixes of one namespace.
bool hasSpellings(const BuiltinRow& row)
{
    return row.family != Family::Text || row.name == "boolean" || row.name == "QName" ||
           row.name == "NOTATION";
}

std::vector<std::string> words(const std::string& list)
{
    std::vector<std::string> result;
    const std::string text = collapsed(list);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        result.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return result;
}

}  // namespace

SimpleTypes::SimpleTypes(SchemaSet& set, SchemaRecords& records, const SchemaOptions& options,
                         Diagnostics& diagnostics)
    : set_{set}, records_{records}, options_{options}, diagnostics_{diagnostics}
{
}

bool SimpleTypes::isSimple(const Component& component)
{
    return component.node->is("simpleType");
}

const SimpleType& SimpleTypes::add(SimpleType type)
{
    return types_.emplace_back(std::move(type));
}

const SimpleTypeRecord* SimpleTypes::native(const std::string& name)
{
    const auto [place, added] = natives_.try_emplace(name);
    if (added) {
        SimpleTypeRecord& record = records_.simpleTypes.emplace_back();
        record.builtin = name;
        place->second = &record;
    }
    return place->second;
}

const SimpleType& SimpleTypes::builtin(const std::string& name, const Component& from)
{
    std::string meant = name;
    bool asNative = false;
    for (const auto& [type, other] : options_.typeMap) {
        if (type != name) continue;
        if (other == "native") asNative = true;
        else meant = other;
    }
    const BuiltinRow* row = findBuiltin(meant);
    if (!row) {
        diagnostics_.error(from.node->place, "XML Schema has no simple type \"" + name + "\".");
        row = findBuiltin("anySimpleType");
    }
    if (row->difference && !asNative)
        diagnostics_.approximate(from.node->place, std::string{row->difference} + ".");
    return asNative ? nativeType(*row) : standing(*row);
}

const SimpleType& SimpleTypes::instanceType(std::string_view attribute)
{
    return standing(*findBuiltin(attribute == "nil"    ? "boolean"
                                 : attribute == "type" ? "QName"
                                                       : "string"));
}

// The library's own type, with its own rules.
const SimpleType& SimpleTypes::nativeType(const BuiltinRow& row)
{
    const std::string key = std::string{row.name} + " native";
    const auto known = builtins_.find(key);
    if (known != builtins_.end()) return *known->second;
    SimpleType type;
    type.builtin = &row;
    type.ascii = row.ascii;
    type.spelt = hasSpellings(row);
    type.record = native(std::string{row.name});
    return *(builtins_[key] = &add(type));
}

// What stands for a built-in type: the library's own one, made narrower where it admits more.
const SimpleType& SimpleTypes::standing(const BuiltinRow& row)
{
    const std::string key{row.name};
    const auto known = builtins_.find(key);
    if (known != builtins_.end()) return *known->second;
    if (!row.item.empty()) {
        const SimpleType& item = standing(*findBuiltin(row.item));
        SimpleTypeRecord& record = records_.simpleTypes.emplace_back();
        record.identifier = "xs_" + key;
        record.source = "xs:" + key;
        const SimpleType& list = listOf(item, record, {});
        return *(builtins_[key] = &list);
    }
    SimpleType type;
    type.builtin = &row;
    type.ascii = row.ascii;
    type.spelt = hasSpellings(row);
    type.record = native(std::string{row.native});
    type.expression = itemExpression(row);
    if (row.expression) {
        SimpleTypeRecord& record = records_.simpleTypes.emplace_back();
        record.identifier = "xs_" + key;
        record.source = "xs:" + key;
        record.members = {type.record};
        record.facets.push_back(row.native == "string" ? collapsedPatternFacet(row.expression)
                                                       : patternFacet(row.expression));
        type.record = &record;
    }
    return *(builtins_[key] = &add(type));
}

const SimpleType& SimpleTypes::network(const QName& name)
{
    SimpleTypeRecord& record = records_.simpleTypes.emplace_back();
    record.name = name.local;
    record.nameSpace = name.nameSpace;
    record.source = "network type";
    record.members = {native("string")};
    records_.networkTypes.push_back(name.local);
    records_.networkNamespace = name.nameSpace;
    SimpleType type;
    type.record = &record;
    type.ascii = true;
    return add(type);
}

const SimpleType& SimpleTypes::named(const QName& name, const Component& from)
{
    if (name.nameSpace == kSchemaNamespace &&
        (findBuiltin(name.local) || !set_.symbols(Symbol::Type).contains(name)))
        return builtin(name.local, from);
    const auto known = known_.find(name);
    if (known != known_.end()) return *known->second;
    const bool isNetwork =
        !options_.networkNamespace.empty() && name.nameSpace == options_.networkNamespace &&
        std::find(std::begin(kNetworkTypes), std::end(kNetworkTypes), name.local) !=
            std::end(kNetworkTypes);
    if (isNetwork) return *(known_[name] = &network(name));

    const Component component = set_.find(Symbol::Type, name, from);
    if (!component || !isSimple(component)) {
        if (component)
            diagnostics_.error(from.node->place,
                               "\"" + shown(name) + "\" is a complex type; expected a simple one.");
        return builtin("anySimpleType", from);
    }
    if (std::find(open_.begin(), open_.end(), component.node) != open_.end()) {
        diagnostics_.error(from.node->place,
                           "the type \"" + shown(name) + "\" is derived from itself.");
        return builtin("anySimpleType", from);
    }
    SimpleTypeRecord& record = records_.simpleTypes.emplace_back();
    record.name = name.local;
    record.nameSpace = name.nameSpace;
    record.place = component.node->place;
    record.source = declarationText(*component.node);
    const SimpleType& type = lower(component, record);
    known_[name] = &type;
    return type;
}

SimpleTypeRecord& SimpleTypes::anonymous(const Component& at)
{
    SimpleTypeRecord& record = records_.simpleTypes.emplace_back();
    record.place = at.node->place;
    record.source = declarationText(*at.node);
    return record;
}

const SimpleType& SimpleTypes::declared(const Component& at)
{
    const auto known = declared_.find(at.node);
    if (known != declared_.end()) return *known->second;
    const SimpleType& type = lower(at, anonymous(at));
    declared_[at.node] = &type;
    return type;
}

const SimpleType* SimpleTypes::ofDeclaration(const Component& at)
{
    if (const std::string* written = at.node->find("type")) {
        const auto name = set_.resolve(at, *written);
        return name ? &named(*name, at) : nullptr;
    }
    const SchemaNode* inner = at.node->child("simpleType");
    return inner ? &declared(at.with(inner)) : nullptr;
}

const SimpleType& SimpleTypes::lower(const Component& at, SimpleTypeRecord& to)
{
    open_.push_back(at.node);
    const SimpleType* result = nullptr;
    if (const SchemaNode* restriction = at.node->child("restriction")) {
        const Component inner = at.with(restriction);
        const std::string* base = restriction->find("base");
        const auto name = base ? set_.resolve(inner, *base) : std::nullopt;
        const SchemaNode* own = restriction->child("simpleType");
        if (!name && !own)
            diagnostics_.error(restriction->place,
                               "a restriction needs the attribute \"base\" or a simpleType.");
        const SimpleType& from = name  ? named(*name, inner)
                                 : own ? declared(at.with(own))
                                       : builtin("anySimpleType", at);
        result = &restricted(from, inner, to);
    } else if (const SchemaNode* list = at.node->child("list")) {
        result = &lowerList(at.with(list), to);
    } else if (const SchemaNode* alternatives = at.node->child("union")) {
        result = &lowerUnion(at.with(alternatives), to);
    } else {
        diagnostics_.error(at.node->place,
                           "expected \"restriction\", \"list\" or \"union\" in a simpleType.");
        to.members = {native("string")};
        result = &builtin("anySimpleType", at);
    }
    open_.pop_back();
    return *result;
}

const SimpleType& SimpleTypes::lowerList(const Component& at, SimpleTypeRecord& to)
{
    const std::string* written = at.node->find("itemType");
    const SchemaNode* own = at.node->child("simpleType");
    const auto name = written ? set_.resolve(at, *written) : std::nullopt;
    if (!name && !own)
        diagnostics_.error(at.node->place,
                           "a list needs the attribute \"itemType\" or a simpleType.");
    const SimpleType& item = name  ? named(*name, at)
                             : own ? declared(at.with(own))
                                   : builtin("anySimpleType", at);
    return listOf(item, to, at.node->place);
}

// A list is a text that an expression describes.
const SimpleType& SimpleTypes::listOf(const SimpleType& item, SimpleTypeRecord& to,
                                      const SourcePlace& at)
{
    SimpleType type;
    type.record = &to;
    type.isList = true;
    type.ascii = item.ascii;
    type.spelt = item.spelt;
    type.item = item.expression;
    if (item.isList) diagnostics_.error(at, "the items of a list cannot be lists themselves.");
    if (isTooLong(listExpression(type.item, "*"))) type.item.clear();
    if (item.loose || type.item.empty()) {
        diagnostics_.approximate(at, "the items of this list are not checked in full: their type "
                                     "cannot be said by one expression.");
    }
    if (type.item.empty()) type.item = kWord;
    type.expression = "(" + listExpression(type.item, "*") + ")?";
    to.members = {native("string")};
    to.facets.push_back(collapsedPatternFacet(type.expression));
    return add(type);
}

const SimpleType& SimpleTypes::lowerUnion(const Component& at, SimpleTypeRecord& to)
{
    std::vector<const SimpleType*> members;
    const auto addOnce = [&](const SimpleType& member) {
        if (std::find(members.begin(), members.end(), &member) == members.end())
            members.push_back(&member);
    };
    for (const std::string& written : words(at.node->get("memberTypes"))) {
        if (const auto name = set_.resolve(at, written)) addOnce(named(*name, at));
    }
    for (const SchemaNode* node : at.node->children) {
        if (node->is("simpleType")) addOnce(declared(at.with(node)));
    }
    if (members.empty()) {
        diagnostics_.error(at.node->place, "a union needs members.");
        members.push_back(&builtin("anySimpleType", at));
    }
    SimpleType type;
    type.record = &to;
    type.ascii = true;
    std::vector<std::string> expressions;
    for (const SimpleType* member : members) {
        to.members.push_back(member->record);
        type.ascii = type.ascii && member->ascii;
        type.spelt = type.spelt || member->spelt;
        if (!member->expression.empty()) expressions.push_back(member->expression);
        type.loose = type.loose || member->loose;
    }
    if (expressions.size() == members.size()) type.expression = alternativesOf(expressions);
    if (isTooLong(type.expression)) type.expression.clear();
    return add(type);
}

}  // namespace netxml::xsd
