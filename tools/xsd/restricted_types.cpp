// Simple types by restriction: each facet as what the library's own facets make of it.
#include "xsd/alternatives.hpp"
#include "xsd/number_range.hpp"
#include "xsd/pattern_translation.hpp"
#include "xsd/posix_class.hpp"
#include "xsd/simple_types.hpp"
#include "xsd/value_pattern.hpp"

#include <algorithm>

namespace netxml::xsd {
namespace {

constexpr unsigned kMostCounted = 32;           // characters that an expression counts
constexpr std::size_t kMostIntegerDigits = 18;  // more may be too large for 64 bits

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
    if (isTooLong(all)) {
        diagnostics_.approximate(facets.patterns.front()->place,
                                 "this pattern is not checked: with the others beside it it comes "
                                 "to too large an expression.");
        return;
    }
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
        if (base.spelt && !compared)
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
    if (isTooLong(type.expression)) type.expression.clear();
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
