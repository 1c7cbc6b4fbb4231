// Every facet by every class of comparison.
#include "tests/schema/guarded_space.hpp"
#include "tests/support/plain_values.hpp"
#include "tests/support/sources.hpp"

#include "netxml/schema.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

constexpr uint32_t kEnumeration = SCHEMA_FACET_ENUMERATION;
constexpr uint32_t kFractionDigits = SCHEMA_FACET_FRACTION_DIGITS;
constexpr uint32_t kLength = SCHEMA_FACET_LENGTH;
constexpr uint32_t kMaxExclusive = SCHEMA_FACET_MAX_EXCLUSIVE;
constexpr uint32_t kMaxInclusive = SCHEMA_FACET_MAX_INCLUSIVE;
constexpr uint32_t kMaxLength = SCHEMA_FACET_MAX_LENGTH;
constexpr uint32_t kMinExclusive = SCHEMA_FACET_MIN_EXCLUSIVE;
constexpr uint32_t kMinInclusive = SCHEMA_FACET_MIN_INCLUSIVE;
constexpr uint32_t kMinLength = SCHEMA_FACET_MIN_LENGTH;
constexpr uint32_t kPattern = SCHEMA_FACET_PATTERN;
constexpr uint32_t kTotalDigits = SCHEMA_FACET_TOTAL_DIGITS;

constexpr uint32_t kInt = SCHEMA_BUILTIN_INT;
constexpr uint32_t kUnsignedLong = SCHEMA_BUILTIN_UNSIGNED_LONG;
constexpr uint32_t kDuration = SCHEMA_BUILTIN_DURATION;
constexpr uint32_t kDateTime = SCHEMA_BUILTIN_DATE_TIME;
constexpr uint32_t kString = SCHEMA_BUILTIN_STRING;

// The sentence; "(holds)" if the facet is satisfied and the buffer was left alone.
std::string checked(const Schema_Facet& facet, const char* value, uint32_t size = 512)
{
    const Sentence sentence{size};
    const uint32_t status = Schema_CheckFacet(&facet, value, size, sentence.buffer());
    const std::string text = sentence.text();
    if (status == XML_RET_OK) return text == "(untouched)" ? "(holds)" : "holds, but wrote " + text;
    return status == XML_RET_FAIL ? text : "neither status";
}

struct FacetCase {
    const char* why;
    uint32_t kind;
    uint32_t baseKind;
    const char* text;
    const char* value;
    bool holds;
};

// Each in a space of its own, and once more in GuardedBytes; and the plain rules agree.
template <std::size_t N>
void checkAll(const FacetCase (&cases)[N])
{
    GuardedSpace texts;
    GuardedSpace values;
    for (const FacetCase& c : cases) {
        SCOPED_TRACE(std::string{c.why} + ": " + c.value + " against " + c.text);
        const Schema_Facet facet{texts.text(c.text), c.kind, c.baseKind};
        std::string message = "(holds)";
        const uint32_t status = plainFacet(facet, c.value, message);
        EXPECT_EQ(status == XML_RET_OK, c.holds) << "the plain rules are wrong";
        const std::string got = checked(facet, values.text(c.value));
        EXPECT_EQ(got == "(holds)", c.holds);
        EXPECT_EQ(got, message);

        const GuardedBytes text{std::string_view{c.text, std::strlen(c.text) + 1}};
        const GuardedBytes value{std::string_view{c.value, std::strlen(c.value) + 1}};
        const Schema_Facet again{reinterpret_cast<const char*>(text.data()), c.kind, c.baseKind};
        EXPECT_EQ(checked(again, reinterpret_cast<const char*>(value.data())), message);
    }
}

// clang-format off
constexpr FacetCase kEnumerations[] = {
    // why                                     facet         base           facet text    value     holds
    {"numbers compare by value",               kEnumeration, kInt,          "5",          "+5",     true},
    {"with zeros that lead",                   kEnumeration, kInt,          "5",          "005",    true},
    {"another number",                         kEnumeration, kInt,          "5",          "6",      false},
    {"zero is zero",                           kEnumeration, kInt,          "0",          "-0",     true},
    {"unsigned ones compare by value",         kEnumeration, kUnsignedLong, "18446744073709551615", "018446744073709551615", true},
    {"unsigned beyond the signed range",       kEnumeration, kUnsignedLong, "18446744073709551615", "18446744073709551614", false},
    {"a facet beyond 64 bits is the largest",  kEnumeration, kUnsignedLong, "99999999999999999999", "18446744073709551615", true},
    {"and signed the largest of its own",      kEnumeration, kInt,          "99999999999999999999", "9223372036854775807", true},
    {"and the smallest",                       kEnumeration, kInt,          "-99999999999999999999", "-9223372036854775808", true},
    {"a facet that does not read is 0",        kEnumeration, kInt,          "five",       "0",      true},
    {"and nothing else",                       kEnumeration, kInt,          "five",       "5",      false},
    {"an empty facet is 0",                    kEnumeration, kInt,          "",           "0",      true},
    {"\"|\" does not read as a sign",          kEnumeration, kInt,          "|5",         "0",      true},
    {"what follows a number is left out",      kEnumeration, kInt,          "5 apples",   "5",      true},
    {"white space before a number is skipped", kEnumeration, kInt,          " \t\n5",     "5",      true},
    {"durations compare by value",             kEnumeration, kDuration,     "P0Y0M0DT0H1M0S", "P0Y0M0DT0H0M60S", true},
    {"other durations differ",                 kEnumeration, kDuration,     "P0Y0M0DT0H1M0S", "P0Y0M0DT0H0M61S", false},
    {"a facet's duration may lack parts",      kEnumeration, kDuration,     "P1Y",        "P1Y0M0DT0H0M0S", true},
    {"and means what it says",                 kEnumeration, kDuration,     "P1Y",        "P0Y0M0DT0H0M0S", false},
    {"a bad duration is zero",                 kEnumeration, kDuration,     "1Y",         "P0Y0M0DT0H0M0S", true},
    {"dates compare as text (Kept)",           kEnumeration, kDateTime,     "2001-01-01T00:00:00Z", "2001-01-01T00:00:00+00:00", false},
    {"the same text",                          kEnumeration, kDateTime,     "2001-01-01T00:00:00Z", "2001-01-01T00:00:00Z", true},
    {"strings compare as text",                kEnumeration, kString,       "a",          "a",      true},
    {"in their case",                          kEnumeration, kString,       "a",          "A",      false},
    {"whole",                                  kEnumeration, kString,       "a",          "ab",     false},
    {"empty",                                  kEnumeration, kString,       "",           "",       true},
    {"no number, no duration: as text",        kEnumeration, 0,             "5",          "05",     false},
    {"kind 1 as text",                         kEnumeration, 1,             "5",          "+5",     false},
    {"decimal as text",                        kEnumeration, 16,            "1.0",        "1.00",   false},
    {"decimal, the same text",                 kEnumeration, 16,            "1.0",        "1.0",    true},
    {"boolean as text",                        kEnumeration, 29,            "1",          "true",   false},
    {"a kind beyond the table as text",        kEnumeration, 1000,          "5",          "05",     false},
    {"and one that ends in a number's kind",   kEnumeration, 32 + 7,        "5",          "05",     false},
    {"and in its low bits",                    kEnumeration, 0x10007,       "5",          "05",     false},
};

constexpr FacetCase kLengths[] = {
    {"length: equal",                          kLength,      kString, "3",   "abc",      true},
    {"length: shorter",                        kLength,      kString, "3",   "ab",       false},
    {"length: longer",                         kLength,      kString, "3",   "abcd",     false},
    {"length: of nothing",                     kLength,      kString, "0",   "",         true},
    {"length counts bytes (Kept)",             kLength,      kString, "2",   "\xC3\xA9", true},
    {"and not characters (Kept)",              kLength,      kString, "1",   "\xC3\xA9", false},
    {"length: of any type",                    kLength,      kInt,    "2",   "05",       true},
    {"length: below zero fails",               kLength,      kString, "-1",  "",         false},
    {"length: below zero, whatever stands",    kLength,      kString, "-3",  "abc",      false},
    {"length: no number is 0",                 kLength,      kString, "x",   "",         true},
    {"length: no number is nothing else",      kLength,      kString, "x",   "a",        false},
    {"length: beyond 64 bits",                 kLength,      kString, "99999999999999999999", "abc", false},
    {"length: a plus",                         kLength,      kString, "+3",  "abc",      true},
    {"maxLength: equal",                       kMaxLength,   kString, "3",   "abc",      true},
    {"maxLength: shorter",                     kMaxLength,   kString, "3",   "",         true},
    {"maxLength: longer",                      kMaxLength,   kString, "3",   "abcd",     false},
    {"maxLength counts bytes (Kept)",          kMaxLength,   kString, "3",   "\xC3\xA9\xC3\xA9", false},
    {"maxLength: below zero is no limit (Kept)", kMaxLength, kString, "-1",  "abcd",     true},
    {"maxLength: far below zero (Kept)",       kMaxLength,   kString, "-99999999999999999999", "abcd", true},
    {"maxLength: beyond 64 bits",              kMaxLength,   kString, "99999999999999999999", "abcd", true},
    {"maxLength: no number is 0",              kMaxLength,   kString, "x",   "a",        false},
    {"maxLength: no number, nothing",          kMaxLength,   kString, "x",   "",         true},
    {"minLength: equal",                       kMinLength,   kString, "3",   "abc",      true},
    {"minLength: longer",                      kMinLength,   kString, "3",   "abcd",     true},
    {"minLength: shorter",                     kMinLength,   kString, "3",   "ab",       false},
    {"minLength counts bytes (Kept)",          kMinLength,   kString, "3",   "\xC3\xA9\xC3\xA9", true},
    {"minLength: below zero",                  kMinLength,   kString, "-1",  "",         true},
    {"minLength: beyond 64 bits",              kMinLength,   kString, "99999999999999999999", "abcd", false},
    {"minLength: no number is 0",              kMinLength,   kString, "x",   "",         true},
    {"totalDigits: equal",                     kTotalDigits, kInt,    "3",   "123",      true},
    {"totalDigits: fewer (Kept)",              kTotalDigits, kInt,    "3",   "12",       false},
    {"totalDigits: more",                      kTotalDigits, kInt,    "3",   "1234",     false},
    {"totalDigits: without sign and zeros",    kTotalDigits, kInt,    "3",   "-0123",    true},
    {"totalDigits: a plus",                    kTotalDigits, kInt,    "1",   "+007",     true},
    {"totalDigits: a minus",                   kTotalDigits, kInt,    "1",   "-007",     true},
    {"totalDigits: \"|\" is no sign here",     kTotalDigits, kInt,    "1",   "|7",       false},
    {"totalDigits: it counts itself",          kTotalDigits, kInt,    "2",   "|7",       true},
    {"totalDigits: zero has none (Kept)",      kTotalDigits, kInt,    "0",   "0",        true},
    {"totalDigits: zero has not one (Kept)",   kTotalDigits, kInt,    "1",   "0",        false},
    {"totalDigits: only the zeros that lead",  kTotalDigits, kInt,    "3",   "0100",     true},
    {"totalDigits: one sign only",             kTotalDigits, kInt,    "2",   "--1",      true},
    {"totalDigits: a sign behind zeros",       kTotalDigits, kInt,    "2",   "0-1",      true},
    {"totalDigits: a point counts (Kept)",     kTotalDigits, kInt,    "3",   "12.3",     false},
    {"totalDigits: four with it (Kept)",       kTotalDigits, kInt,    "4",   "12.3",     true},
    {"totalDigits: a text without digits",     kTotalDigits, kString, "3",   "abc",      true},
    {"totalDigits: below zero",                kTotalDigits, kInt,    "-1",  "0",        false},
    {"totalDigits: no number is 0",            kTotalDigits, kInt,    "x",   "000",      true},
};

constexpr FacetCase kBounds[] = {
    {"signed: below",                          kMaxExclusive, kInt, "10",  "9",   true},
    {"signed: equal",                          kMaxExclusive, kInt, "10",  "10",  false},
    {"signed: above",                          kMaxExclusive, kInt, "10",  "11",  false},
    {"signed: below",                          kMaxInclusive, kInt, "10",  "9",   true},
    {"signed: equal",                          kMaxInclusive, kInt, "10",  "10",  true},
    {"signed: above",                          kMaxInclusive, kInt, "10",  "11",  false},
    {"signed: below",                          kMinExclusive, kInt, "10",  "9",   false},
    {"signed: equal",                          kMinExclusive, kInt, "10",  "10",  false},
    {"signed: above",                          kMinExclusive, kInt, "10",  "11",  true},
    {"signed: below",                          kMinInclusive, kInt, "10",  "9",   false},
    {"signed: equal",                          kMinInclusive, kInt, "10",  "10",  true},
    {"signed: above",                          kMinInclusive, kInt, "10",  "11",  true},
    {"signed: by value and not as text",       kMaxExclusive, kInt, "10",  "-9",  true},
    {"signed: below zero",                     kMinInclusive, kInt, "-5",  "-6",  false},
    {"signed: zero below zero",                kMinInclusive, kInt, "0",   "-0",  true},
    {"signed: a bound that does not read",     kMaxInclusive, kInt, "ten", "1",   false},
    {"signed: it is 0",                        kMaxInclusive, kInt, "ten", "0",   true},
    {"signed: a bound beyond 64 bits",         kMaxExclusive, kInt, "99999999999999999999", "9223372036854775806", true},
    {"signed: it is the largest number",       kMaxExclusive, kInt, "99999999999999999999", "9223372036854775807", false},
    {"signed: below 64 bits",                  kMinExclusive, kInt, "-99999999999999999999", "-9223372036854775808", false},
    {"signed: \"|\" in a value reads as 0",    kMinInclusive, kInt, "1",   "|5",  false},
    {"unsigned: the largest",                  kMaxExclusive, kUnsignedLong, "18446744073709551615", "18446744073709551614", true},
    {"unsigned: itself",                       kMaxExclusive, kUnsignedLong, "18446744073709551615", "18446744073709551615", false},
    {"unsigned: beyond the signed range",      kMinExclusive, kUnsignedLong, "9223372036854775807", "9223372036854775808", true},
    {"unsigned: a bound beyond 64 bits",       kMaxInclusive, kUnsignedLong, "99999999999999999999", "18446744073709551615", true},
    {"unsigned: a bound that does not read",   kMinExclusive, kUnsignedLong, "",    "1",  true},
    {"duration: longer",                       kMaxInclusive, kDuration, "P1Y0M0DT0H0M0S",  "P1Y0M0DT0H0M1S",  false},
    {"duration: equal",                        kMaxInclusive, kDuration, "P1Y0M0DT0H0M0S",  "P1Y0M0DT0H0M0S",  true},
    {"duration: equal is not below",           kMaxExclusive, kDuration, "P1Y0M0DT0H0M0S",  "P1Y0M0DT0H0M0S",  false},
    {"duration: 12 months are a year",         kMinInclusive, kDuration, "P1Y0M0DT0H0M0S",  "P0Y12M0DT0H0M0S", true},
    {"duration: 30 days are a month",          kMinInclusive, kDuration, "P0Y1M0DT0H0M0S",  "P0Y0M30DT0H0M0S", true},
    {"duration: 29 are none",                  kMinInclusive, kDuration, "P0Y1M0DT0H0M0S",  "P0Y0M29DT23H59M59S", false},
    {"duration: 24 hours are a day",           kMinInclusive, kDuration, "P0Y0M1DT0H0M0S",  "P0Y0M0DT24H0M0S", true},
    {"duration: 60 minutes are an hour",       kMinInclusive, kDuration, "P0Y0M0DT1H0M0S",  "P0Y0M0DT0H60M0S", true},
    {"duration: carries go all the way",       kMinInclusive, kDuration, "P1Y0M0DT0H0M0S",  "P0Y11M29DT23H59M60S", true},
    {"duration: 360 days are a year",          kMinInclusive, kDuration, "P1Y0M0DT0H0M0S",  "P0Y0M360DT0H0M0S", true},
    {"duration: a carry wraps at 16 bits (Kept)", kMaxInclusive, kDuration, "P0Y0M1DT0H0M0S", "P0Y0M0DT0H65535M65535S", true},
    {"duration: a bound may lack parts",       kMinExclusive, kDuration, "P1D",             "P0Y0M0DT0H0M1S",  false},
    {"duration: minutes stand behind the T",   kMinInclusive, kDuration, "PT5M",            "P0Y0M0DT0H4M59S", false},
    {"duration: months stand before it",       kMaxInclusive, kDuration, "P5M",             "P0Y4M0DT0H0M0S",  true},
    {"duration: a bad bound is zero",          kMinExclusive, kDuration, "D1D",             "P0Y0M0DT0H0M1S",  true},
    {"duration: a bad value is zero",          kMinInclusive, kDuration, "P0Y0M0DT0H0M1S",  "P65536Y",         false},
    {"dateTime: later",                        kMaxInclusive, kDateTime, "2001-01-01T00:00:00Z", "2001-01-01T00:00:01Z", false},
    {"dateTime: earlier by its zone",          kMaxInclusive, kDateTime, "2001-01-01T00:00:00Z", "2001-01-01T00:30:00+01:00", true},
    {"dateTime: equal by its zone",            kMaxInclusive, kDateTime, "2001-01-01T00:00:00Z", "2001-01-01T01:00:00+01:00", true},
    {"dateTime: equal is not below",           kMaxExclusive, kDateTime, "2001-01-01T00:00:00Z", "2001-01-01T01:00:00+01:00", false},
    {"dateTime: a fraction is later",          kMaxInclusive, kDateTime, "2001-01-01T00:00:00Z", "2001-01-01T00:00:00.0Z", false},
    {"dateTime: fractions as text (Kept)",     kMinExclusive, kDateTime, "2001-01-01T00:00:00.5", "2001-01-01T00:00:00.50", true},
    {"dateTime: \"|\" reads as a point (Kept)", kMinExclusive, kDateTime, "2001-01-01T00:00:00", "2001-01-01T00:00:00|00:00", true},
    {"dateTime: behind a fraction it is no zone (Kept)", kMinExclusive, kDateTime, "2001-01-01T00:00:00.5", "2001-01-01T00:00:00.5|09:00", false},
    {"dateTime: a bad bound is the first day", kMinInclusive, kDateTime, "soon",            "0001-01-01T00:00:00", true},
    {"dateTime: and not a second more",        kMinExclusive, kDateTime, "soon",            "0001-01-01T00:00:00", false},
    {"dateTime: a day that does not exist",    kMinExclusive, kDateTime, "2001-02-29T00:00:00", "0001-01-01T00:00:01", true},
    {"dateTime: a bad value is it, too",       kMinInclusive, kDateTime, "2001-01-01T00:00:00", "soon",           false},
    {"date: by day",                           kMinInclusive, 21, "2001-02-28",   "2001-03-01",    true},
    {"date: not as text",                      kMaxExclusive, 21, "2001-01-01Z",  "2001-01-01",    false},
    {"date: a zone ahead is earlier",          kMaxExclusive, 21, "2001-01-01Z",  "2001-01-01+00:01", true},
    {"time: later",                            kMinExclusive, 22, "12:00:00",     "12:00:01",      true},
    {"time: equal",                            kMinExclusive, 22, "12:00:00",     "12:00:00",      false},
    {"time: a zone ahead wraps below the first day (Kept)", kMinExclusive, 22, "12:00:00", "00:00:00+01:00", true},
    {"gYear: later",                           kMaxInclusive, 23, "2000",         "2001",          false},
    {"gYear: a zone",                          kMaxExclusive, 23, "2000",         "2000+01:00",    true},
    {"gMonth: later",                          kMaxInclusive, 24, "--06--",       "--07--",        false},
    {"gMonth: equal",                          kMaxInclusive, 24, "--06--",       "--06--",        true},
    {"gDay: later",                            kMinExclusive, 25, "---14",        "---15",         true},
    {"gDay: earlier",                          kMinExclusive, 25, "---14",        "---13",         false},
    {"gYearMonth: later",                      kMinExclusive, 26, "2001-12",      "2002-01",       true},
    {"gYearMonth: earlier",                    kMinExclusive, 26, "2001-12",      "2001-11",       false},
    {"gMonthDay: later",                       kMinExclusive, 27, "--02-28",      "--03-01",       true},
    {"gMonthDay: equal",                       kMaxExclusive, 27, "--02-28",      "--02-28",       false},
    {"string: the inclusive bounds pass (Kept)", kMaxInclusive, kString, "a",     "b",             true},
    {"string: both (Kept)",                    kMinInclusive, kString, "b",       "a",             true},
    {"string: the exclusive bounds fail (Kept)", kMaxExclusive, kString, "b",     "a",             false},
    {"string: both (Kept)",                    kMinExclusive, kString, "a",       "b",             false},
};

constexpr FacetCase kOthers[] = {
    {"pattern: anywhere in the value (Kept)",  kPattern,        kString, "[0-9]",   "a1b", true},
    {"pattern: unless anchored",               kPattern,        kString, "^[0-9]$", "a1b", false},
    {"pattern: anchored and whole",            kPattern,        kString, "^[0-9]$", "1",   true},
    {"pattern: the base does not matter",      kPattern,        kInt,    "^[0-9]$", "1",   true},
    {"pattern: one that does not compile",     kPattern,        kString, "(",       "(",   false},
    {"pattern: the empty one",                 kPattern,        kString, "",        "a",   true},
    {"pattern: of an empty value",             kPattern,        kString, "^$",      "",    true},
    {"fractionDigits: always (Kept)",          kFractionDigits, 16,      "1",       "1.234", true},
    {"fractionDigits: whatever stands",        kFractionDigits, kInt,    "x",       "",    true},
    {"below all facets",                       14,              kInt,    "1",       "2",   true},
    {"above all facets",                       26,              kInt,    "1",       "2",   true},
    {"no facet",                               0,               kInt,    "1",       "2",   true},
    {"far above",                              0xFFFFFFFF,      kInt,    "1",       "2",   true},
    {"beyond 16 bits",                         0x1000F,         kInt,    "1",       "2",   true},
};

constexpr struct {
    uint32_t kind;
    uint32_t baseKind;
    const char* text;
    const char* value;
    const char* message;
} kFacetMessages[] = {
    {kEnumeration,  kString, "a",  "c",    "The value does not match the enumeration."},
    {kLength,       kString, "3",  "abcd", "The length must be equal to 3."},
    {kMaxExclusive, kInt,    "10", "10",   "The value must be less than 10."},
    {kMaxInclusive, kInt,    "10", "11",   "The value must be less than or equal to 10."},
    {kMaxLength,    kString, "3",  "abcd", "The length must be less than or equal to 3."},
    {kMinExclusive, kInt,    "10", "10",   "The value must be greater than 10."},
    {kMinInclusive, kInt,    "10", "9",    "The value must be greater than or equal to 10."},
    {kMinLength,    kString, "3",  "ab",   "The length must be greater than or equal to 3."},
    {kPattern,      kString, "^a", "b",    "The value does not match the regular expression."},
    {kTotalDigits,  kInt,    "3",  "12.3", "The total digit length must be equal to 3."},
    {kMaxInclusive, kInt,    " 1x%s%n", "2", "The value must be less than or equal to  1x%s%n."},
};
// clang-format on

TEST(CheckFacet, Enumerations)
{
    checkAll(kEnumerations);
}

TEST(CheckFacet, LengthsAndDigits)
{
    checkAll(kLengths);
}

TEST(CheckFacet, Bounds)
{
    checkAll(kBounds);
}

TEST(CheckFacet, PatternsAndOthers)
{
    checkAll(kOthers);
}

TEST(CheckFacet, SentencesAreCutAtEverySize)
{
    for (const auto& c : kFacetMessages) {
        const Schema_Facet facet{c.text, c.kind, c.baseKind};
        EXPECT_EQ(checked(facet, c.value), c.message);
        for (uint32_t size = 1; size <= 80; ++size)
            EXPECT_EQ(checked(facet, c.value, size), plainCut(c.message, size)) << size;
        EXPECT_EQ(checked(facet, c.value, 0), "(untouched)");
        EXPECT_EQ(Schema_CheckFacet(&facet, c.value, 0, nullptr), XML_RET_FAIL);
    }
}

TEST(CheckFacet, ALongFacetIsCutToo)
{
    const std::string bound = std::string(1000, '0') + "1";
    const Schema_Facet facet{bound.c_str(), kMaxInclusive, kInt};
    EXPECT_EQ(checked(facet, "1"), "(holds)");
    for (uint32_t size = 500; size <= 600; ++size)
        EXPECT_EQ(checked(facet, "2", size),
                  plainCut("The value must be less than or equal to " + bound + ".", size));
}

// Every kind falls into exactly one class: seen by what its exclusive bounds make of equal and
// different texts.
TEST(CheckFacet, ClassesOfAllKinds)
{
    const std::string kUnsigned = "5 6 9 10 12 15 ";
    const std::string kSigned = "3 4 7 8 11 13 14 ";
    std::string unsignedOnes;
    std::string signedOnes;
    for (uint32_t kind = 0; kind <= 50; ++kind) {
        const Schema_Facet below{"-1", kMaxExclusive, kind};
        const Schema_Facet above{"-1", kMinExclusive, kind};
        if (checked(below, "1") == "(holds)") unsignedOnes += std::to_string(kind) + " ";
        if (checked(above, "1") == "(holds)") signedOnes += std::to_string(kind) + " ";
    }
    EXPECT_EQ(unsignedOnes, kUnsigned) << "-1 reads as the largest number";
    EXPECT_EQ(signedOnes, kSigned);
}

TEST(CheckFacet, BoundsOfTypesWithoutAnOrder)
{
    for (const uint32_t kind :
         {0u, 1u, 2u, 16u, 17u, 18u, 28u, 29u, 30u, 33u, 34u, 47u, 48u, 99u}) {
        for (const char* value : {"1", "2", "3", ""}) {
            EXPECT_EQ(checked({"2", kMaxInclusive, kind}, value), "(holds)") << kind;
            EXPECT_EQ(checked({"2", kMinInclusive, kind}, value), "(holds)") << kind;
            EXPECT_EQ(checked({"2", kMaxExclusive, kind}, value), "The value must be less than 2.");
            EXPECT_EQ(checked({"2", kMinExclusive, kind}, value),
                      "The value must be greater than 2.");
        }
    }
}

TEST(CheckFacet, NullIsTheEmptyValue)
{
    EXPECT_EQ(checked({"0", kLength, kString}, nullptr), "(holds)");
    EXPECT_EQ(checked({"1", kMinLength, kString}, nullptr),
              "The length must be greater than or equal to 1.");
    EXPECT_EQ(checked({"", kEnumeration, kString}, nullptr), "(holds)");
    EXPECT_EQ(checked({"0", kMinInclusive, kInt}, nullptr), "(holds)");
    EXPECT_EQ(checked({"^$", kPattern, kString}, nullptr), "(holds)");
    EXPECT_EQ(checked({"1", kMinInclusive, kDuration}, nullptr), "(holds)");
    EXPECT_EQ(checked({"2001-01-01T00:00:00", kMaxInclusive, kDateTime}, nullptr), "(holds)");
    EXPECT_EQ(checked({"0", kTotalDigits, kInt}, nullptr), "(holds)");
}

TEST(CheckFacet, ANullFacetTextIsEmptyToo)
{
    for (uint32_t kind = 14; kind <= 26; ++kind) {
        for (const uint32_t base : {kInt, kUnsignedLong, kDuration, kDateTime, kString}) {
            for (const char* value : {"", "0", "1"})
                EXPECT_EQ(checked({nullptr, kind, base}, value), checked({"", kind, base}, value));
        }
    }
}

TEST(CheckFacet, NoFacetGivesNoSentence)
{
    char buffer[8] = "as is";
    EXPECT_EQ(Schema_CheckFacet(nullptr, "1", sizeof buffer, buffer), XML_RET_FAIL);
    EXPECT_STREQ(buffer, "as is");
}

}  // namespace
