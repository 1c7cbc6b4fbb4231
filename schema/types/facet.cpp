#include "schema/types/facet.hpp"

#include "netxml/dom.h"
#include "schema/types/date_time.hpp"
#include "schema/types/duration.hpp"
#include "schema/types/integer_value.hpp"
#include "schema/types/kinds_follow.hpp"
#include "schema/types/pattern.hpp"
#include "support/format.hpp"

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace netxml {
namespace {

constexpr std::uint32_t bit(Schema_BuiltinKind kind) noexcept
{
    return std::uint32_t{1} << kind;
}

constexpr std::uint32_t kUnsignedKinds =
    bit(SCHEMA_BUILTIN_UNSIGNED_BYTE) | bit(SCHEMA_BUILTIN_UNSIGNED_SHORT) |
    bit(SCHEMA_BUILTIN_UNSIGNED_INT) | bit(SCHEMA_BUILTIN_UNSIGNED_LONG) |
    bit(SCHEMA_BUILTIN_POSITIVE_INTEGER) | bit(SCHEMA_BUILTIN_NON_NEGATIVE_INTEGER);
constexpr std::uint32_t kSignedKinds =
    bit(SCHEMA_BUILTIN_BYTE) | bit(SCHEMA_BUILTIN_SHORT) | bit(SCHEMA_BUILTIN_INT) |
    bit(SCHEMA_BUILTIN_LONG) | bit(SCHEMA_BUILTIN_INTEGER) |
    bit(SCHEMA_BUILTIN_NON_POSITIVE_INTEGER) | bit(SCHEMA_BUILTIN_NEGATIVE_INTEGER);

bool isOneOf(Schema_BuiltinKind kind, std::uint32_t kinds) noexcept
{
    return kind < 32 && (kinds & bit(kind)) != 0;
}

template <class Number>
int order(Number a, Number b) noexcept
{
    return (a > b) - (a < b);
}

// What does not read counts as 0, what does not fit as the nearest number.
int compareUnsigned(const char* a, const char* b) noexcept
{
    std::int64_t left;
    std::int64_t right;
    if (readDigits(a, left) && readDigits(b, right)) return order(left, right);
    return order(std::strtoull(a, nullptr, 10), std::strtoull(b, nullptr, 10));
}

int compareSigned(const char* a, const char* b) noexcept
{
    std::int64_t left;
    std::int64_t right;
    if (readDigits(a, left) && readDigits(b, right)) return order(left, right);
    return order(std::strtoll(a, nullptr, 10), std::strtoll(b, nullptr, 10));
}

int compareAsDurations(const char* a, const char* b) noexcept
{
    return compareDurations(readDuration(a), readDuration(b));
}

int compareAsDates(Schema_BuiltinKind kind, const char* a, const char* b) noexcept
{
    Schema_DateTimeValue left;
    Schema_DateTimeValue right;
    parseDateTime(kind, a, left);
    parseDateTime(kind, b, right);
    return compareDateTimes(left, right);
}

// How a value stands to a bound. Kept: types without an order are equal to every bound.
int compareToBound(Schema_BuiltinKind kind, const char* value, const char* bound) noexcept
{
    if (isOneOf(kind, kUnsignedKinds)) return compareUnsigned(value, bound);
    if (isOneOf(kind, kSignedKinds)) return compareSigned(value, bound);
    if (kind == SCHEMA_BUILTIN_DURATION) return compareAsDurations(value, bound);
    if (kind >= SCHEMA_BUILTIN_DATE_TIME && kind <= SCHEMA_BUILTIN_G_MONTH_DAY)
        return compareAsDates(kind, value, bound);
    return 0;
}

// Kept: dates and times compare as text, numbers and durations by value.
bool equalsLiteral(Schema_BuiltinKind kind, const char* value, const char* literal) noexcept
{
    if (isOneOf(kind, kUnsignedKinds | kSignedKinds) || kind == SCHEMA_BUILTIN_DURATION)
        return compareToBound(kind, value, literal) == 0;
    return std::strcmp(value, literal) == 0;
}

// A length or a count of digits as a facet gives it.
long long numberOf(const char* text) noexcept
{
    return std::strtoll(text, nullptr, 10);
}

// Kept: in bytes, not characters.
long long lengthOf(const char* value) noexcept
{
    return static_cast<long long>(std::strlen(value));
}

// Kept: a negative number is no limit.
bool isAtMost(long long length, long long limit) noexcept
{
    return limit < 0 || length <= limit;
}

// What is left after one sign and the zeros that lead. Kept: a decimal point counts, too.
long long digitCount(const char* value) noexcept
{
    if (*value == '-' || *value == '+') ++value;
    while (*value == '0') ++value;
    return lengthOf(value);
}

using FacetTest = bool (*)(const Schema_Facet& facet, const char* value, PatternCache* patterns);

bool enumerationTest(const Schema_Facet& f, const char* value, PatternCache*)
{
    return equalsLiteral(f.baseKind, value, f.value);
}
bool lengthTest(const Schema_Facet& f, const char* value, PatternCache*)
{
    return lengthOf(value) == numberOf(f.value);
}
bool maxLengthTest(const Schema_Facet& f, const char* value, PatternCache*)
{
    return isAtMost(lengthOf(value), numberOf(f.value));
}
bool minLengthTest(const Schema_Facet& f, const char* value, PatternCache*)
{
    return lengthOf(value) >= numberOf(f.value);
}
bool maxExclusiveTest(const Schema_Facet& f, const char* value, PatternCache*)
{
    return compareToBound(f.baseKind, value, f.value) < 0;
}
bool maxInclusiveTest(const Schema_Facet& f, const char* value, PatternCache*)
{
    return compareToBound(f.baseKind, value, f.value) <= 0;
}
bool minExclusiveTest(const Schema_Facet& f, const char* value, PatternCache*)
{
    return compareToBound(f.baseKind, value, f.value) > 0;
}
bool minInclusiveTest(const Schema_Facet& f, const char* value, PatternCache*)
{
    return compareToBound(f.baseKind, value, f.value) >= 0;
}
bool patternTest(const Schema_Facet& f, const char* value, PatternCache* patterns)
{
    return patterns ? patterns->matches(f.value, value) : XML_IsMatchRegex(f.value, value) == 1;
}
// Kept: exactly that many, not at most.
bool totalDigitsTest(const Schema_Facet& f, const char* value, PatternCache*)
{
    return digitCount(value) == numberOf(f.value);
}

struct FacetRule {
    Schema_FacetKind kind;
    FacetTest test;  // nullptr: always passes
    const char* message;
};

// clang-format off
constexpr FacetRule kFacetRules[] = {
    {15, enumerationTest,  "The value does not match the enumeration."},
    {16, nullptr,          ""},
    {17, lengthTest,       "The length must be equal to %s."},
    {18, maxExclusiveTest, "The value must be less than %s."},
    {19, maxInclusiveTest, "The value must be less than or equal to %s."},
    {20, maxLengthTest,    "The length must be less than or equal to %s."},
    {21, minExclusiveTest, "The value must be greater than %s."},
    {22, minInclusiveTest, "The value must be greater than or equal to %s."},
    {23, minLengthTest,    "The length must be greater than or equal to %s."},
    {24, patternTest,      "The value does not match the regular expression."},
    {25, totalDigitsTest,  "The total digit length must be equal to %s."},
};
// clang-format on
static_assert(kindsFollow(kFacetRules, Schema_FacetKind{SCHEMA_FACET_ENUMERATION}));
static_assert(sizeof kFacetRules / sizeof kFacetRules[0] ==
              SCHEMA_FACET_TOTAL_DIGITS - SCHEMA_FACET_ENUMERATION + 1);

const FacetRule* ruleOf(Schema_FacetKind kind) noexcept
{
    if (kind < SCHEMA_FACET_ENUMERATION || kind > SCHEMA_FACET_TOTAL_DIGITS) return nullptr;
    return &kFacetRules[kind - SCHEMA_FACET_ENUMERATION];
}

}  // namespace

bool facetHolds(const Schema_Facet& facet, const char* value, std::uint32_t size, char* message,
                PatternCache* patterns) noexcept
{
    const FacetRule* rule = ruleOf(facet.kind);
    if (!rule || !rule->test) return true;
    const Schema_Facet whole{facet.value ? facet.value : "", facet.kind, facet.baseKind};
    if (rule->test(whole, value ? value : "", patterns)) return true;
    formatTexts(message, size, rule->message, {whole.value});
    return false;
}

}  // namespace netxml

uint32_t Schema_CheckFacet(const Schema_Facet* facet, const char* value, uint32_t bufSize,
                           char* errBuf)
{
    if (!facet) return XML_RET_FAIL;
    return netxml::facetHolds(*facet, value, bufSize, errBuf, nullptr) ? XML_RET_OK : XML_RET_FAIL;
}
