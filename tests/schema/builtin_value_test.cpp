// Values of every built-in type, by their lexical rules.
#include "tests/schema/guarded_space.hpp"
#include "tests/support/plain_values.hpp"
#include "tests/support/sources.hpp"

#include "netxml/schema.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstring>
#include <string>

namespace {

struct ValueCase {
    const char* why;
    uint32_t kind;
    const char* value;
    bool valid;
};

// clang-format off
constexpr ValueCase kSmallIntegers[] = {
    // why                                          kind value       valid
    {"byte: the maximum",                           3,  "127",       true},
    {"byte: above the maximum",                     3,  "128",       false},
    {"byte: the minimum",                           3,  "-128",      true},
    {"byte: below the minimum",                     3,  "-129",      false},
    {"byte: zero",                                  3,  "0",         true},
    {"byte: zero below zero",                       3,  "-0",        true},
    {"byte: zeros alone",                           3,  "0000000000", true},
    {"byte: zeros that lead do not count",          3,  "00000000127", true},
    {"byte: nor behind a sign",                     3,  "+0127",     true},
    {"byte: a plus",                                3,  "+127",      true},
    {"byte: a plus above the maximum",              3,  "+128",      false},
    {"byte: \"|\" is a sign (Kept)",                3,  "|5",        true},
    {"byte: \"|\" reads as 0, so all fits (Kept)",  3,  "|999",      true},
    {"byte: but for the length",                    3,  "|1000",     false},
    {"byte: too many digits",                       3,  "1000",      false},
    {"byte: far too many digits",                   3,  "99999999999999999999999", false},
    {"byte: a sign alone",                          3,  "-",         false},
    {"byte: \"|\" alone",                           3,  "|",         false},
    {"byte: two signs",                             3,  "--1",       false},
    {"byte: a sign behind",                         3,  "1-",        false},
    {"byte: white space before",                    3,  " 1",        false},
    {"byte: white space behind",                    3,  "1 ",        false},
    {"byte: a line feed behind",                    3,  "1\n",       false},
    {"byte: a decimal point",                       3,  "1.0",       false},
    {"byte: a letter",                              3,  "1a",        false},
    {"byte: hexadecimal",                           3,  "0x1",       false},
    {"byte: digits of another script",              3,  "\xD9\xA1",  false},
    {"byte: empty",                                 3,  "",          false},
    {"short: the maximum",                          4,  "32767",     true},
    {"short: above the maximum",                    4,  "32768",     false},
    {"short: the minimum",                          4,  "-32768",    true},
    {"short: below the minimum",                    4,  "-32769",    false},
    {"short: all that fits behind \"|\" (Kept)",    4,  "|99999",    true},
    {"short: six digits",                           4,  "100000",    false},
    {"unsignedByte: the maximum",                   5,  "255",       true},
    {"unsignedByte: above the maximum",             5,  "256",       false},
    {"unsignedByte: zero",                          5,  "0",         true},
    {"unsignedByte: zeros that lead",               5,  "000255",    true},
    {"unsignedByte: no plus",                       5,  "+1",        false},
    {"unsignedByte: no \"|\" either",               5,  "|1",        false},
    {"unsignedByte: nor a minus",                   5,  "-0",        false},
    {"unsignedByte: four digits",                   5,  "1000",      false},
    {"unsignedShort: the maximum",                  6,  "65535",     true},
    {"unsignedShort: above the maximum",            6,  "65536",     false},
    {"unsignedShort: six digits",                   6,  "100000",    false},
    {"unsignedShort: no sign",                      6,  "+1",        false},
};

constexpr ValueCase kLargeIntegers[] = {
    {"int: the maximum",                            7,  "2147483647",            true},
    {"int: above the maximum",                      7,  "2147483648",            false},
    {"int: the minimum",                            7,  "-2147483648",           true},
    {"int: below the minimum",                      7,  "-2147483649",           false},
    {"int: zeros that lead",                        7,  "-0002147483648",        true},
    {"int: a plus",                                 7,  "+2147483647",           true},
    {"int: \"|\" is a plus (Kept)",                 7,  "|2147483647",           true},
    {"int: and its digits count here",              7,  "|2147483648",           false},
    {"int: 11 digits",                              7,  "10000000000",           false},
    {"int: zero below zero",                        7,  "-0",                    true},
    {"int: empty",                                  7,  "",                      false},
    {"long: the maximum",                           8,  "9223372036854775807",   true},
    {"long: above the maximum",                     8,  "9223372036854775808",   false},
    {"long: the minimum",                           8,  "-9223372036854775808",  true},
    {"long: below the minimum",                     8,  "-9223372036854775809",  false},
    {"long: 20 digits",                             8,  "10000000000000000000",  false},
    {"long: 20 digits and a sign",                  8,  "-10000000000000000000", false},
    {"long: \"|\" and the maximum (Kept)",          8,  "|9223372036854775807",  true},
    {"unsignedInt: the maximum",                    9,  "4294967295",            true},
    {"unsignedInt: above the maximum",              9,  "4294967296",            false},
    {"unsignedInt: zero",                           9,  "0",                     true},
    {"unsignedInt: no sign",                        9,  "-0",                    false},
    {"unsignedInt: 11 digits",                      9,  "10000000000",           false},
    {"unsignedLong: the maximum",                   10, "18446744073709551615",  true},
    {"unsignedLong: above the maximum",             10, "18446744073709551616",  false},
    {"unsignedLong: all nines",                     10, "99999999999999999999",  false},
    {"unsignedLong: zeros that lead",               10, "00018446744073709551615", true},
    {"unsignedLong: 21 digits",                     10, "100000000000000000000", false},
    {"unsignedLong: no sign",                       10, "+1",                    false},
    {"integer ends at 64 bits (Kept)",              11, "9223372036854775807",   true},
    {"integer above 64 bits",                       11, "9223372036854775808",   false},
    {"integer: the minimum",                        11, "-9223372036854775808",  true},
    {"integer below the minimum",                   11, "-9223372036854775809",  false},
    {"positiveInteger: one",                        12, "1",                     true},
    {"positiveInteger: zero",                       12, "0",                     false},
    {"positiveInteger: a plus",                     12, "+0001",                 true},
    {"positiveInteger: \"|\" (Kept)",               12, "|1",                    true},
    {"positiveInteger: below zero",                 12, "-1",                    false},
    {"positiveInteger: the maximum (Kept)",         12, "9223372036854775807",   true},
    {"positiveInteger above the maximum",           12, "9223372036854775808",   false},
    {"nonPositiveInteger: zero",                    13, "0",                     true},
    {"nonPositiveInteger: zero with a plus",        13, "+0",                    true},
    {"nonPositiveInteger: zero below zero",         13, "-0",                    true},
    {"nonPositiveInteger: one",                     13, "1",                     false},
    {"nonPositiveInteger: minus one",               13, "-1",                    true},
    {"nonPositiveInteger: the minimum (Kept)",      13, "-9223372036854775808",  true},
    {"nonPositiveInteger below the minimum",        13, "-9223372036854775809",  false},
    {"negativeInteger: minus one",                  14, "-1",                    true},
    {"negativeInteger: zero",                       14, "0",                     false},
    {"negativeInteger: zero below zero",            14, "-0",                    false},
    {"negativeInteger: the minimum (Kept)",         14, "-9223372036854775808",  true},
    {"negativeInteger below the minimum",           14, "-9223372036854775809",  false},
    {"nonNegativeInteger: zero",                    15, "0",                     true},
    {"nonNegativeInteger: zero below zero (Kept)",  15, "-0",                    false},
    {"nonNegativeInteger: zeros below zero (Kept)", 15, "-000",                  false},
    {"nonNegativeInteger: the maximum (Kept)",      15, "9223372036854775807",   true},
    {"nonNegativeInteger above the maximum",        15, "9223372036854775808",   false},
};

constexpr ValueCase kDatesAndTimes[] = {
    {"duration: all six parts",                 19, "P1Y0M0DT0H0M0S",                 true},
    {"duration: a part alone (Kept)",           19, "P1Y",                            false},
    {"duration: without seconds",               19, "P1Y0M0DT0H0M",                   false},
    {"duration: the most of each",              19, "P9999Y65535M65535DT65535H65535M65535S", true},
    {"duration: one month too many",            19, "P0Y65536M0DT0H0M0S",             false},
    {"duration: one day too many",              19, "P0Y0M65536DT0H0M0S",             false},
    {"duration: one hour too many",             19, "P0Y0M0DT65536H0M0S",             false},
    {"duration: one minute too many",           19, "P0Y0M0DT0H65536M0S",             false},
    {"duration: one second too many",           19, "P0Y0M0DT0H0M65536S",             false},
    {"duration: years of five digits",          19, "P00001Y0M0DT0H0M0S",             false},
    {"duration: months of six digits",          19, "P0Y000001M0DT0H0M0S",            false},
    {"duration: months of five digits",         19, "P0Y00001M0DT0H0M0S",             true},
    {"duration: a sign",                        19, "-P1Y0M0DT0H0M0S",                false},
    {"duration: a fraction",                    19, "P1Y0M0DT0H0M0.5S",               false},
    {"duration: without the T",                 19, "P1Y0M0D0H0M0S",                  false},
    {"duration: more behind",                   19, "P1Y0M0DT0H0M0S ",                false},
    {"duration: a missing number",              19, "PY0M0DT0H0M0S",                  false},
    {"duration: lower case",                    19, "p1y0m0dt0h0m0s",                 false},
    {"duration: empty",                         19, "",                               false},
    {"dateTime: plain",                         20, "2001-01-01T00:00:00",            true},
    {"dateTime: the last second of a day",      20, "2001-12-31T23:59:59Z",           true},
    {"dateTime: a fraction and a zone",         20, "2001-01-01T00:00:00.5+14:00",    true},
    {"dateTime: a fraction of 20 digits",       20, "2001-01-01T00:00:00.12345678901234567890Z", true},
    {"dateTime: a fraction of 21 digits",       20, "2001-01-01T00:00:00.123456789012345678901Z", false},
    {"dateTime: a point without digits",        20, "2001-01-01T00:00:00.Z",          false},
    {"dateTime: the longest value",             20, "2001-01-01T00:00:00.12345678901234567890-99:99", true},
    {"dateTime: a zone has no bounds (Kept)",   20, "2001-01-01T00:00:00+99:99",      true},
    {"dateTime: \"|\" as the sign (Kept)",      20, "2001-01-01T00:00:00|01:00",      true},
    {"dateTime: a zone of hours only",          20, "2001-01-01T00:00:00+01",         false},
    {"dateTime: a lower case z",                20, "2001-01-01T00:00:00z",           false},
    {"dateTime: Z and a zone",                  20, "2001-01-01T00:00:00Z+01:00",     false},
    {"dateTime: hour 24",                       20, "2001-01-01T24:00:00",            false},
    {"dateTime: minute 60",                     20, "2001-01-01T00:60:00",            false},
    {"dateTime: second 60",                     20, "2001-01-01T00:00:60",            false},
    {"dateTime: year 0",                        20, "0000-01-01T00:00:00",            false},
    {"dateTime: month 0",                       20, "2001-00-01T00:00:00",            false},
    {"dateTime: day 0",                         20, "2001-01-00T00:00:00",            false},
    {"dateTime: month 13",                      20, "2001-13-01T00:00:00",            false},
    {"dateTime: 29 February of a leap year",    20, "2004-02-29T00:00:00",            true},
    {"dateTime: 29 February of another",        20, "2003-02-29T00:00:00",            false},
    {"dateTime: a space for the T",             20, "2001-01-01 00:00:00",            false},
    {"dateTime: a year below zero",             20, "-2001-01-01T00:00:00",           false},
    {"dateTime: a year of five digits",         20, "12001-01-01T00:00:00",           false},
    {"date: divisible by 400",                  21, "2000-02-29",                     true},
    {"date: divisible by 100",                  21, "1900-02-29",                     false},
    {"date: the last day",                      21, "9999-12-31",                     true},
    {"date: the first day",                     21, "0001-01-01",                     true},
    {"date: year 0",                            21, "0000-01-01",                     false},
    {"date: month 0",                           21, "2001-00-01",                     false},
    {"date: day 0",                             21, "2001-01-00",                     false},
    {"date: month 13",                          21, "2001-13-01",                     false},
    {"date: month 20",                          21, "2001-20-01",                     false},
    {"date: 31 April",                          21, "2001-04-31",                     false},
    {"date: 30 April",                          21, "2001-04-30",                     true},
    {"date: day 32",                            21, "2001-01-32",                     false},
    {"date: day 40",                            21, "2001-01-40",                     false},
    {"date: Z",                                 21, "2001-01-01Z",                    true},
    {"date: the largest zone",                  21, "2001-01-01+29:59",               true},
    {"date: its zone has a shape of its own",   21, "2001-01-01+30:00",               false},
    {"date: and of minutes",                    21, "2001-01-01+00:60",               false},
    {"date: \"|\" as the sign (Kept)",          21, "2001-01-01|29:59",               true},
    {"date: no fraction",                       21, "2001-01-01.5",                   false},
    {"date: a digit too few",                   21, "2001-1-01",                      false},
    {"date: a line feed behind",                21, "2001-01-01\n",                   false},
    {"date: a byte beyond ASCII behind",        21, "2001-01-01\xFF",                 false},
    {"time: midnight",                          22, "00:00:00",                       true},
    {"time: the last second",                   22, "23:59:59",                       true},
    {"time: hour 24",                           22, "24:00:00",                       false},
    {"time: hour 29",                           22, "29:00:00",                       false},
    {"time: hour 30",                           22, "30:00:00",                       false},
    {"time: minute 60",                         22, "00:60:00",                       false},
    {"time: second 60",                         22, "00:00:60",                       false},
    {"time: a fraction",                        22, "12:00:00.123",                   true},
    {"time: a fraction and a zone",             22, "12:00:00.123|99:99",             true},
    {"time: two points",                        22, "12:00:00.1.2",                   false},
    {"time: without seconds",                   22, "12:00",                          false},
    {"gYear: a year",                           23, "2001",                           true},
    {"gYear: the first",                        23, "0001",                           true},
    {"gYear: year 0",                           23, "0000",                           false},
    {"gYear: year 0 in a zone",                 23, "0000Z",                          false},
    {"gYear: three digits",                     23, "999",                            false},
    {"gYear: five digits",                      23, "10000",                          false},
    {"gYear: a zone",                           23, "2001-05:00",                     true},
    {"gYear: Z",                                23, "2001Z",                          true},
    {"gMonth: dashes on both sides",            24, "--12--",                         true},
    {"gMonth: none behind",                     24, "--12",                           false},
    {"gMonth: month 0",                         24, "--00--",                         false},
    {"gMonth: month 13",                        24, "--13--",                         false},
    {"gMonth: month 20",                        24, "--20--",                         false},
    {"gMonth: a zone",                          24, "--01--+01:00",                   true},
    {"gMonth: a zone below zero",               24, "--01---01:00",                   true},
    {"gDay: the first",                         25, "---01",                          true},
    {"gDay: the 30th",                          25, "---30",                          true},
    {"gDay: there is no 31st (Kept)",           25, "---31",                          false},
    {"gDay: day 0",                             25, "---00",                          false},
    {"gDay: day 40",                            25, "---40",                          false},
    {"gDay: a zone",                            25, "---01Z",                         true},
    {"gDay: two dashes",                        25, "--01",                           false},
    {"gYearMonth: plain",                       26, "2001-12",                        true},
    {"gYearMonth: year 0",                      26, "0000-12",                        false},
    {"gYearMonth: month 13",                    26, "2001-13",                        false},
    {"gYearMonth: month 0",                     26, "2001-00",                        false},
    {"gYearMonth: a zone",                      26, "2001-12-12:00",                  true},
    {"gYearMonth: a day is no zone",            26, "2001-12-12",                     false},
    {"gMonthDay: the last of the year",         27, "--12-31",                        true},
    {"gMonthDay: 28 February",                  27, "--02-28",                        true},
    {"gMonthDay: no 29 February (Kept)",        27, "--02-29",                        false},
    {"gMonthDay: 31 April",                     27, "--04-31",                        false},
    {"gMonthDay: month 0",                      27, "--00-01",                        false},
    {"gMonthDay: day 0",                        27, "--01-00",                        false},
    {"gMonthDay: month 13",                     27, "--13-01",                        false},
    {"gMonthDay: a zone",                       27, "--12-31|23:00",                  true},
};

constexpr ValueCase kTexts[] = {
    {"string: anything",                        28, "a",              true},
    {"string: a line feed",                     28, "\n",             true},
    {"string: bytes that are no text",          28, "\xFF\x80",       true},
    {"string: nothing does not match, though Schema_CheckBaseType() takes it", 28, "", false},
    {"string: white space",                     28, " ",              true},
    {"boolean: true",                           29, "true",           true},
    {"boolean: false",                          29, "false",          true},
    {"boolean: 1",                              29, "1",              true},
    {"boolean: 0",                              29, "0",              true},
    {"boolean: capitals",                       29, "True",           false},
    {"boolean: two digits",                     29, "10",             false},
    {"boolean: more behind",                    29, "true ",          false},
    {"boolean: less",                           29, "tru",            false},
    {"boolean: a line feed behind",             29, "true\n",         false},
    {"boolean: empty",                          29, "",               false},
    {"hexBinary: all digits",                   30, "0123456789ABCDEFabcdef", true},
    {"hexBinary: an odd number (Kept)",         30, "F",              true},
    {"hexBinary: the letter behind",            30, "G",              false},
    {"hexBinary: the small letter behind",      30, "g",              false},
    {"hexBinary: white space",                  30, "FF FF",          false},
    {"hexBinary: empty",                        30, "",               false},
    {"base64Binary: a quad",                    31, "AZaz",           true},
    {"base64Binary: two quads",                 31, "AZaz09+/",       true},
    {"base64Binary: one filler",                31, "AAA=",           true},
    {"base64Binary: two fillers",               31, "AAAAAA==",       true},
    {"base64Binary: three fillers",             31, "A===",           false},
    {"base64Binary: fillers alone",             31, "==",             false},
    {"base64Binary: a filler too many",         31, "AAAA=",          false},
    {"base64Binary: a filler inside",           31, "AA==AAAA",       false},
    {"base64Binary: no full quad",              31, "AAAAA",          false},
    {"base64Binary: two without fillers",       31, "AA",             false},
    {"base64Binary: three without a filler",    31, "AAA",            false},
    {"base64Binary: white space (Kept)",        31, "AAAA AAAA",      false},
    {"base64Binary: a foreign sign",            31, "AAA-",           false},
    {"base64Binary: empty",                     31, "",               true},
    {"anyURI: a colon between",                 32, "urn:a",          true},
    {"anyURI: a slash between",                 32, "a/b",            true},
    {"anyURI: two colons (Kept)",               32, "urn:a:b",        false},
    {"anyURI: a host",                          32, "http://host",    true},
    {"anyURI: a host and a port (Kept)",        32, "http://host:80", false},
    {"anyURI: neither colon nor slash (Kept)",  32, "a",              false},
    {"anyURI: nothing before the colon",        32, ":a",             false},
    {"anyURI: nothing behind it",               32, "a:",             false},
    {"anyURI: nothing before the slash",        32, "/a",             false},
    {"anyURI: a slash before the slash",        32, "//a",            true},
    {"anyURI: slashes alone",                   32, "///",            true},
    {"anyURI: two slashes",                     32, "//",             false},
    {"anyURI: white space and line feeds",      32, " \n/\n ",        true},
    {"anyURI: bytes that are no text",          32, "\xFF:\x80",      true},
    {"QName: a name",                           33, "name",           true},
    {"QName: a name beyond ASCII",              33, "\xC3\xA9t\xC3\xA9", true},
    {"QName: a colon (Kept)",                   33, "p:name",         false},
    {"QName: a digit first",                    33, "1a",             false},
    {"QName: a space",                          33, "a b",            false},
    {"language: a code",                        34, "en",             true},
    {"language: a region",                      34, "en-us",          true},
    {"language: a region in capitals",          34, "en-US",          false},
    {"language: capitals",                      34, "EN",             false},
    {"language: a code that is not listed",     34, "en-in",          false},
};
// clang-format on

// Each value ends at a page that must not be touched, and once more in GuardedBytes.
template <std::size_t N>
void checkAll(const ValueCase (&cases)[N])
{
    GuardedSpace space;
    for (const ValueCase& c : cases) {
        SCOPED_TRACE(std::string{c.why} + ": " + c.value);
        EXPECT_EQ(SCHEMA_CheckBaseTypeNonNull(c.kind, space.text(c.value)), c.valid ? 1u : 0u);
        const GuardedBytes bytes{std::string_view{c.value, std::strlen(c.value) + 1}};
        const auto* text = reinterpret_cast<const char*>(bytes.data());
        EXPECT_EQ(SCHEMA_CheckBaseTypeNonNull(c.kind, text), c.valid ? 1u : 0u);
    }
}

// The rules that the matchers are compared with elsewhere must say the same.
template <std::size_t N>
void checkPlainRules(const ValueCase (&cases)[N])
{
    for (const ValueCase& c : cases)
        EXPECT_EQ(plainBuiltin(c.kind, c.value), c.valid) << c.why << ": " << c.value;
}

TEST(BuiltinValue, SmallIntegers)
{
    checkAll(kSmallIntegers);
}

TEST(BuiltinValue, LargeIntegers)
{
    checkAll(kLargeIntegers);
}

TEST(BuiltinValue, DatesAndTimes)
{
    checkAll(kDatesAndTimes);
}

TEST(BuiltinValue, Texts)
{
    checkAll(kTexts);
}

TEST(BuiltinValue, ThePlainRulesAgree)
{
    checkPlainRules(kSmallIntegers);
    checkPlainRules(kLargeIntegers);
    checkPlainRules(kDatesAndTimes);
    checkPlainRules(kTexts);
}

TEST(BuiltinValue, KindsWithoutARuleRefuseEverything)
{
    constexpr uint32_t kWithout[] = {0,  1,  2,  16, 17, 18, 35, 36, 37, 38,     39,        40,
                                     41, 42, 43, 44, 45, 46, 47, 48, 99, 0x8001, 0xFFFFFFFF};
    for (const uint32_t kind : kWithout) {
        for (const char* value : {"1", "1.5", "true", "a", "en", "2001-01-01", " "})
            EXPECT_EQ(SCHEMA_CheckBaseTypeNonNull(kind, value), 0u) << kind << " " << value;
    }
}

TEST(BuiltinValue, NullIsNoValue)
{
    for (uint32_t kind = 0; kind < 50; ++kind)
        EXPECT_EQ(SCHEMA_CheckBaseTypeNonNull(kind, nullptr), 0u) << kind;
}

TEST(BuiltinValue, LongOnes)
{
    constexpr std::size_t kMany = 1000000;
    GuardedSpace space{kMany + 2};
    const std::string zeros(kMany, '0');
    EXPECT_EQ(SCHEMA_CheckBaseTypeNonNull(3, space.text(zeros)), 1u);
    EXPECT_EQ(SCHEMA_CheckBaseTypeNonNull(3, space.text('-' + zeros + '1')), 1u);
    EXPECT_EQ(SCHEMA_CheckBaseTypeNonNull(15, space.text('-' + zeros)), 0u);
    EXPECT_EQ(SCHEMA_CheckBaseTypeNonNull(10, space.text('1' + zeros)), 0u);
    EXPECT_EQ(SCHEMA_CheckBaseTypeNonNull(30, space.text(zeros)), 1u);
    EXPECT_EQ(SCHEMA_CheckBaseTypeNonNull(30, space.text(zeros + 'x')), 0u);
    EXPECT_EQ(SCHEMA_CheckBaseTypeNonNull(31, space.text(zeros)), 1u);
    EXPECT_EQ(SCHEMA_CheckBaseTypeNonNull(31, space.text(zeros + '0')), 0u);
    EXPECT_EQ(SCHEMA_CheckBaseTypeNonNull(32, space.text(zeros + "/0")), 1u);
    EXPECT_EQ(SCHEMA_CheckBaseTypeNonNull(19, space.text('P' + zeros)), 0u);
    EXPECT_EQ(SCHEMA_CheckBaseTypeNonNull(20, space.text(zeros)), 0u);
    EXPECT_EQ(SCHEMA_CheckBaseTypeNonNull(34, space.text(zeros)), 0u);
}

// Bytes that are no UTF-8 would stop a regular expression in such a locale.
TEST(BuiltinValue, TheLocaleDoesNotMatter)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    ASSERT_TRUE(std::setlocale(LC_ALL, "C.UTF-8")) << "part of every C library since 2022";
    checkAll(kSmallIntegers);
    checkAll(kLargeIntegers);
    checkAll(kDatesAndTimes);
    checkAll(kTexts);
    EXPECT_EQ(SCHEMA_CheckBaseTypeNonNull(28, "\xFF"), 1u);
    EXPECT_EQ(SCHEMA_CheckBaseTypeNonNull(32, "\xFF/\x80"), 1u);
    std::setlocale(LC_ALL, before.c_str());
}

}  // namespace
