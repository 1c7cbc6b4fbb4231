#include "xsd/simple_types.hpp"

#include "markup.hpp"
#include "xsd/declaration_text.hpp"
#include "xsd/number_range.hpp"
#include "xsd/pattern_translation.hpp"
#include "xsd/posix_class.hpp"

#include <algorithm>

namespace netxml::xsd {
namespace {

constexpr std::string_view kNetworkTypes[] = {"OID",        "_Ipv6Address", "IPV6_ADDR_PREFIX",
                                              "_PortRange", "_VlanRange",   "_Ipv4Mask"};
constexpr const char* kWord = "[^ \t\n\r]+";
constexpr const char* kBlank = "[ \t\n\r]";
constexpr unsigned kMostCounted = 32;           // characters that an expression counts
constexpr std::size_t kMostIntegerDigits = 18;  // more may be too large for 64 bits

// White space around it left out, and of that inside one blank.
std::string collapsed(std::string_view text)
{
    std::string result;
    for (const char c : text) {
        if (tool::kBlanks.find(c) == std::string_view::npos) result += c;
        else if (!result.empty() && result.back() != ' ') result += ' ';
    }
    while (result.ends_with(' ')) result.pop_back();
    return result;
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

// An empty one makes the others optional.
std::string alternativesOf(const std::vector<std::string>& expressions)
{
    std::string text;
    bool optional = false;
    for (const std::string& one : expressions) {
        if (one.empty()) optional = true;
        else text += (text.empty() ? "" : "|") + one;
    }
    return optional && !text.empty() ? "(" + text + ")?" : text;
}

std::string grouped(const std::string& expression)
{
    return "(" + expression + ")";
}

// Items between white space; `count` is the quantifier of those behind the first.
std::string listExpression(const std::string& item, const std::string& count)
{
    return grouped(item) + "(" + kBlank + "+" + grouped(item) + ")" + count;
}

FacetRecord patternFacet(const std::string& expression)
{
    return {SCHEMA_FACET_PATTERN, anchored(expression), SCHEMA_BUILTIN_STRING, true};
}

// White space around values of most types does not count. Of texts in elements the parser takes it
// away; in attributes it is part of the value.
FacetRecord collapsedPatternFacet(const std::string& expression)
{
    const std::string blanks = std::string{kBlank} + "*";
    return patternFacet(blanks + grouped(expression) + blanks);
}

// Days and months without a year, which the library does not order.
bool isPartOfDate(std::string_view name)
{
    return name == "gDay" || name == "gMonth" || name == "gMonthDay";
}

bool isCollapsed(const SimpleType& type)
{
    if (type.isList) return true;
    return type.builtin && type.builtin->name != "string" &&
           type.builtin->name != "normalizedString" && type.builtin->name != "anySimpleType";
}

bool fitsInteger(const std::optional<DecimalNumber>& number)
{
    return number && number->fraction.empty() && number->integral.size() <= kMostIntegerDigits;
}

unsigned countIn(const std::string& text)
{
    return static_cast<unsigned>(std::min(std::strtoul(text.c_str(), nullptr, 10), 1000000ul));
}

// By whose rules values compare in facets.
constexpr Schema_BuiltinKind kText = SCHEMA_BUILTIN_STRING;
Schema_BuiltinKind kindOf(const SimpleType& type)
{
    return type.builtin ? type.builtin->kind : kText;
}

}  // namespace

// The facets of one restriction, those of one kind together.
struct SimpleTypes::Facets {
    std::vector<const SchemaNode*> patterns;
    std::vector<const SchemaNode*> enumerations;
    std::vector<const SchemaNode*> others;
};

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
    type.item = item.expression;
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
    for (const std::string& written : words(at.node->get("memberTypes"))) {
        if (const auto name = set_.resolve(at, written)) members.push_back(&named(*name, at));
    }
    for (const SchemaNode* node : at.node->children) {
        if (node->is("simpleType")) members.push_back(&declared(at.with(node)));
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
        if (!member->expression.empty()) expressions.push_back(member->expression);
        type.loose = type.loose || member->loose;
    }
    if (expressions.size() == members.size()) type.expression = alternativesOf(expressions);
    return add(type);
}

const SimpleType& SimpleTypes::restricted(const SimpleType& base, const Component& at,
                                          SimpleTypeRecord& to)
{
    Facets facets;
    for (const SchemaNode* node : at.node->children) {
        if (node->is("pattern")) facets.patterns.push_back(node);
        else if (node->is("enumeration")) facets.enumerations.push_back(node);
        else facets.others.push_back(node);
    }
    SimpleType type = base;
    type.record = &to;
    to.members = {base.record};
    addPatterns(facets, to, type);
    const SimpleType shape = type;  // what its patterns say of its characters
    for (const SchemaNode* node : facets.others) {
        const std::string& kind = node->name.local;
        if (node->name.nameSpace != kSchemaNamespace) continue;
        if (kind == "length" || kind == "minLength" || kind == "maxLength")
            addLength(shape, *node, to);
        else if (kind.ends_with("clusive")) addBounds(base, *node, to);
        else if (kind.ends_with("Digits")) addDigits(base, *node, to);
        else continue;
        type.loose = true;
    }
    addEnumerations(base, facets, to, type);
    return add(type);
}

void SimpleTypes::addPatterns(const Facets& facets, SimpleTypeRecord& to, SimpleType& type)
{
    std::vector<std::string> expressions;
    bool ascii = true;
    bool blanks = false;
    for (const SchemaNode* node : facets.patterns) {
        const TranslatedPattern pattern = translatePattern(node->get("value"));
        if (!pattern.mistake.empty()) {
            diagnostics_.approximate(node->place,
                                     "this pattern is not checked: " + pattern.mistake + ".");
            return;
        }
        if (!pattern.difference.empty())
            diagnostics_.approximate(node->place, "in this pattern " + pattern.difference + ".");
        ascii = ascii && pattern.ascii;
        blanks = blanks || pattern.blanks;
        expressions.push_back(pattern.expression);
    }
    if (expressions.empty()) return;
    // Of several in one step one must match.
    const std::string all = alternativesOf(expressions);
    to.facets.push_back(isCollapsed(type) ? collapsedPatternFacet(all) : patternFacet(all));
    if (!type.isList) {
        type.expression = all;
        const bool narrows = type.builtin == nullptr || type.builtin->expression != nullptr;
        const std::string whole = anchored(all);
        type.loose = narrows || blanks || XML_IsMatchRegex(whole.c_str(), "") == 1;
    }
    if (ascii) type.ascii = true;
}

void SimpleTypes::addLength(const SimpleType& base, const SchemaNode& facet, SimpleTypeRecord& to)
{
    const std::string value = collapsed(facet.get("value"));
    const std::string& kind = facet.name.local;
    const unsigned count = countIn(value);
    const std::string number = std::to_string(count);
    if (base.isList) {
        // Of the items behind the first there is one less.
        const std::string less = std::to_string(count == 0 ? 0 : count - 1);
        std::string expression;
        if (count == 0) expression = kind == "minLength" ? base.expression : "";
        else if (kind == "length") expression = listExpression(base.item, "{" + less + "}");
        else if (kind == "minLength") expression = listExpression(base.item, "{" + less + ",}");
        else expression = "(" + listExpression(base.item, "{0," + less + "}") + ")?";
        to.facets.push_back(collapsedPatternFacet(expression));
        return;
    }
    if (!base.builtin || base.builtin->family == Family::Base64) {
        diagnostics_.approximate(facet.place,
                                 "\"" + kind + "\" is not checked for values of this type.");
        return;
    }
    const bool hex = base.builtin->family == Family::HexBinary;
    const bool exact = base.ascii || count == 0 || (kind == "minLength" && count == 1);
    if (!exact && count <= kMostCounted) {
        const std::string most = kind == "minLength" ? number + ","
                                 : kind == "length"  ? number
                                                     : "0," + number;
        to.facets.push_back(
            patternFacet(posixClass(CodeSet{}.complement()).text + "{" + most + "}"));
        return;
    }
    if (!exact)
        diagnostics_.approximate(facet.place, "\"" + kind +
                                                  "\" counts bytes: of characters beyond ASCII "
                                                  "each counts as two or four.");
    const Schema_FacetKind facetKind = kind == "length"      ? SCHEMA_FACET_LENGTH
                                       : kind == "minLength" ? SCHEMA_FACET_MIN_LENGTH
                                                             : SCHEMA_FACET_MAX_LENGTH;
    to.facets.push_back(
        {facetKind, hex ? std::to_string(2 * count) : number, SCHEMA_BUILTIN_STRING});
}

void SimpleTypes::addDigits(const SimpleType& base, const SchemaNode& facet, SimpleTypeRecord& to)
{
    const unsigned count = countIn(collapsed(facet.get("value")));
    const bool total = facet.name.local == "totalDigits";
    const Family family = base.builtin ? base.builtin->family : Family::Text;
    if (family == Family::Integer) {
        if (total)
            to.facets.push_back(
                collapsedPatternFacet("[-+]?0*[0-9]{1," + std::to_string(count) + "}"));
    } else if (family == Family::Decimal && count <= 64) {
        to.facets.push_back(collapsedPatternFacet(total ? totalDigitsExpression(count)
                                                        : fractionDigitsExpression(count)));
    } else {
        diagnostics_.approximate(facet.place, "\"" + facet.name.local +
                                                  "\" is not checked for values of this type.");
    }
}

void SimpleTypes::addBounds(const SimpleType& base, const SchemaNode& facet, SimpleTypeRecord& to)
{
    const std::string value = collapsed(facet.get("value"));
    const std::string& name = facet.name.local;
    const Bound bound = name == "minInclusive"   ? Bound::AtLeast
                        : name == "minExclusive" ? Bound::Above
                        : name == "maxInclusive" ? Bound::AtMost
                                                 : Bound::Below;
    constexpr Schema_FacetKind kKinds[] = {SCHEMA_FACET_MIN_INCLUSIVE, SCHEMA_FACET_MIN_EXCLUSIVE,
                                           SCHEMA_FACET_MAX_INCLUSIVE, SCHEMA_FACET_MAX_EXCLUSIVE};
    const FacetRecord direct{kKinds[static_cast<unsigned>(bound)], value, kindOf(base)};
    const Family family = base.builtin ? base.builtin->family : Family::Text;
    const auto number = readDecimal(value);
    if (family == Family::Integer && fitsInteger(number)) {
        FacetRecord plain = direct;
        if (plain.value.starts_with('+')) plain.value.erase(0, 1);
        to.facets.push_back(plain);
    } else if ((family == Family::Integer || family == Family::Decimal) && number) {
        to.facets.push_back(collapsedPatternFacet(boundExpression(bound, *number)));
    } else if (family == Family::Date && !isPartOfDate(base.builtin->name)) {
        to.facets.push_back(direct);
    } else if (family == Family::Integer || family == Family::Decimal) {
        diagnostics_.error(facet.place, "\"" + value + "\" is no number.");
    } else {
        diagnostics_.approximate(facet.place,
                                 "\"" + name + "\" is not checked for values of this type.");
    }
}

void SimpleTypes::addEnumerations(const SimpleType& base, const Facets& facets,
                                  SimpleTypeRecord& to, SimpleType& type)
{
    if (facets.enumerations.empty()) return;
    const Family family = base.builtin ? base.builtin->family : Family::Text;
    const bool keepsBlanks = base.builtin && base.builtin->name == "string";
    std::vector<std::string> texts;
    std::vector<std::string> numbers;
    bool ascii = true;
    for (const SchemaNode* node : facets.enumerations) {
        const std::string written = node->get("value");
        const std::string value = keepsBlanks ? written : collapsed(written);
        for (const char c : value) ascii = ascii && static_cast<unsigned char>(c) < 0x80;
        texts.push_back(posixLiteral(value));
        const auto number = readDecimal(value);
        const bool compared = family == Family::Integer || family == Family::Decimal;
        if (compared && !number) diagnostics_.error(node->place, "\"" + value + "\" is no number.");
        if (compared && number) numbers.push_back(equalExpression(*number));
        if (family == Family::Float || family == Family::Duration || family == Family::Date)
            diagnostics_.approximate(node->place,
                                     "enumerated values of this type compare as text.");
        if (!compared || (family == Family::Integer && fitsInteger(number)))
            to.facets.push_back({SCHEMA_FACET_ENUMERATION, value,
                                 family == Family::Integer ? kindOf(base) : kText});
    }
    // Numbers of any size are compared by an expression; all of them, since one must match.
    if (!numbers.empty()) {
        const bool direct = std::count_if(to.facets.begin(), to.facets.end(), [](const auto& f) {
                                return f.kind == SCHEMA_FACET_ENUMERATION;
                            }) == static_cast<std::ptrdiff_t>(numbers.size());
        if (!direct) {
            std::erase_if(to.facets,
                          [](const auto& f) { return f.kind == SCHEMA_FACET_ENUMERATION; });
            to.facets.push_back(collapsedPatternFacet(alternativesOf(numbers)));
        }
    }
    type.expression = alternativesOf(numbers.empty() ? texts : numbers);
    type.loose = false;
    type.ascii = ascii;
}

const SimpleType* SimpleTypes::fixedTo(const SimpleType& base, const std::string& value,
                                       const SourcePlace& place)
{
    const Family family = base.builtin ? base.builtin->family : Family::Text;
    const auto number = readDecimal(collapsed(value));
    if ((family != Family::Integer && family != Family::Decimal) || !number) return nullptr;
    SimpleTypeRecord& record = records_.simpleTypes.emplace_back();
    record.place = place;
    record.source = "fixed=\"" + collapsed(value) + "\"";
    record.members = {base.record};
    record.facets.push_back(collapsedPatternFacet(equalExpression(*number)));
    SimpleType type = base;
    type.record = &record;
    return &add(type);
}

}  // namespace netxml::xsd
