#include "schema/types/integer_value.hpp"

#include "schema/types/kinds_follow.hpp"
#include "support/ascii.hpp"

#include <cstdlib>
#include <cstring>

namespace netxml {
namespace {

struct IntegerRange {
    Schema_BuiltinKind kind;
    bool hasSign;           // the pattern admits a sign
    std::size_t maxLength;  // of the significant digits and the sign
    const char* minimum;
    const char* maximum;
};

// Kept: the types without bounds end at 64 bits, signed.
// clang-format off
constexpr IntegerRange kIntegerRanges[] = {
    {3,  true,  4,  "-128",                 "127"},
    {4,  true,  6,  "-32768",               "32767"},
    {5,  false, 3,  "0",                    "255"},
    {6,  false, 5,  "0",                    "65535"},
    {7,  true,  11, "-2147483648",          "2147483647"},
    {8,  true,  20, "-9223372036854775808", "9223372036854775807"},
    {9,  false, 10, "0",                    "4294967295"},
    {10, false, 20, "0",                    "18446744073709551615"},
    {11, true,  20, "-9223372036854775808", "9223372036854775807"},
    {12, true,  20, "1",                    "9223372036854775807"},
    {13, true,  20, "-9223372036854775808", "0"},
    {14, true,  20, "-9223372036854775808", "-1"},
    {15, true,  20, "0",                    "9223372036854775807"},
};
// clang-format on
static_assert(kindsFollow(kIntegerRanges, Schema_BuiltinKind{SCHEMA_BUILTIN_BYTE}));
static_assert(sizeof kIntegerRanges / sizeof kIntegerRanges[0] ==
              SCHEMA_BUILTIN_NON_NEGATIVE_INTEGER - SCHEMA_BUILTIN_BYTE + 1);

const IntegerRange& rangeOf(Schema_BuiltinKind kind) noexcept
{
    return kIntegerRanges[kind - SCHEMA_BUILTIN_BYTE];
}

// Kept: "|" counts as a sign, and stands for a plus.
bool isSign(char c) noexcept
{
    return c == '+' || c == '|' || c == '-';
}

// A number as it is compared: the sign, and the digits from the first that is not 0 on. Where all
// are 0 the last one stays.
struct Digits {
    bool negative;
    const char* first;
    std::size_t count;
};

Digits digitsOf(const char* text) noexcept
{
    const char* first = isDigit(*text) ? text : text + 1;
    while (first[0] == '0' && first[1] != '\0') ++first;
    return {*text == '-', first, std::strlen(first)};
}

// ^[+|-]?[0-9]+$ or, without a sign, ^[0-9]+$; not longer than the range allows.
bool hasShape(const IntegerRange& range, const char* value) noexcept
{
    const char* c = value;
    if (range.hasSign && isSign(*c)) ++c;
    if (!isDigit(*c)) return false;
    while (isDigit(*c)) ++c;
    if (*c != '\0') return false;
    return digitsOf(value).count + (isDigit(*value) ? 0 : 1) <= range.maxLength;
}

// Negative, 0 or positive as a is below, equal to or above b. A negative zero is below zero.
int compare(const Digits& a, const Digits& b) noexcept
{
    if (a.negative != b.negative) return a.negative ? -1 : 1;
    int order = 0;
    if (a.count != b.count) order = a.count < b.count ? -1 : 1;
    else order = std::memcmp(a.first, b.first, a.count);
    return a.negative ? -order : order;
}

// As strtol() reads it; what is only digits is read here.
std::int64_t readLong(const char* text) noexcept
{
    std::int64_t number = 0;
    return readDigits(text, number) ? number : std::strtol(text, nullptr, 10);
}

}  // namespace

// Kept: "|200" is a byte, because a conversion reads 0 from it.
bool smallInteger(Schema_BuiltinKind kind, const char* value) noexcept
{
    const IntegerRange& range = rangeOf(kind);
    if (!hasShape(range, value)) return false;
    const std::int64_t number = readLong(value);
    return number >= readLong(range.minimum) && number <= readLong(range.maximum);
}

bool largeInteger(Schema_BuiltinKind kind, const char* value) noexcept
{
    const IntegerRange& range = rangeOf(kind);
    if (!hasShape(range, value)) return false;
    const Digits digits = digitsOf(value);
    return compare(digitsOf(range.minimum), digits) <= 0 &&
           compare(digitsOf(range.maximum), digits) >= 0;
}

bool readDigits(const char* text, std::int64_t& number) noexcept
{
    std::size_t count = 0;
    for (number = 0; count < kMostDigits && isDigit(text[count]); ++count)
        number = number * 10 + (text[count] - '0');
    return count != 0 && text[count] == '\0';
}

// A bound of more digits than that is beyond what they can say.
DigitRange digitRange(Schema_BuiltinKind kind) noexcept
{
    const IntegerRange& range = rangeOf(kind);
    DigitRange digits{0, INT64_MAX};
    if (*range.minimum != '-') readDigits(range.minimum, digits.minimum);
    if (*range.maximum == '-') digits.maximum = -1;
    else if (!readDigits(range.maximum, digits.maximum)) digits.maximum = INT64_MAX;
    return digits;
}

}  // namespace netxml
