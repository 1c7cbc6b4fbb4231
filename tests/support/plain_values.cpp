#include "tests/support/plain_values.hpp"

#include "netxml/parser.h"

#include <regex.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <vector>

namespace {

// clang-format off
constexpr const char* kTypeNames[48] = {
    "", "anySimpleType", "anyType", "byte", "short", "unsignedByte", "unsignedShort", "int", "long",
    "unsignedInt", "unsignedLong", "integer", "positiveInteger", "nonPositiveInteger",
    "negativeInteger", "nonNegativeInteger", "decimal", "double", "float", "duration", "datetime",
    "date", "time", "gYear", "gMonth", "gDay", "gYearMonth", "gMonthDay", "string", "boolean",
    "hexBinary", "base64Binary", "anyURI", "QName", "NOTATION", "normalizedString", "token",
    "language", "NMTOKEN", "NMTOKENS", "Name", "NCName", "ID", "IDREF", "ENTITY", "IDREFS",
    "ENTITYS", "",
};
// clang-format on

class CompiledPattern {
public:
    explicit CompiledPattern(const char* pattern)
    {
        if (regcomp(&compiled_, pattern, REG_EXTENDED | REG_NOSUB) != 0) std::abort();
    }
    CompiledPattern(const CompiledPattern&) = delete;
    CompiledPattern& operator=(const CompiledPattern&) = delete;
    ~CompiledPattern() { regfree(&compiled_); }

    bool matches(const std::string& text) const
    {
        return regexec(&compiled_, text.c_str(), 0, nullptr, 0) == 0;
    }

private:
    regex_t compiled_;
};

// Integers.

struct IntegerRow {
    uint32_t kind;
    bool hasSign;
    std::size_t maxLength;
    const char* minimum;
    const char* maximum;
};

// clang-format off
constexpr IntegerRow kIntegerRows[] = {
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

std::string keyOf(bool positive, const std::string& digits)
{
    char key[32];
    std::snprintf(key, sizeof key, "%1d%20s", positive ? 1 : 0, digits.c_str());
    return key;
}

std::string keyOfBound(const std::string& bound)
{
    const bool negative = bound[0] == '-';
    return keyOf(!negative, bound.substr(negative ? 1 : 0));
}

int compareKeys(const std::string& a, const std::string& b)
{
    const int order = a.compare(b);
    return a[0] == '0' && b[0] == '0' ? -order : order;
}

bool smallInteger(const IntegerRow& row, const std::string& value)
{
    const long long number = std::strtoll(value.c_str(), nullptr, 10);
    const long long maximum = std::strtoll(row.maximum, nullptr, 10);
    if (!row.hasSign) return number <= maximum;
    return number >= std::strtoll(row.minimum, nullptr, 10) && number <= maximum;
}

bool textualInteger(const IntegerRow& row, const std::string& value, const std::string& digits)
{
    const std::string key = keyOf(value[0] != '-', digits);
    if (row.kind == 9 || row.kind == 10) return compareKeys(keyOf(true, row.maximum), key) >= 0;
    if (compareKeys(keyOfBound(row.minimum), key) > 0) return false;
    return compareKeys(keyOfBound(row.maximum), key) >= 0;
}

bool integer(uint32_t kind, const std::string& value)
{
    const IntegerRow& row = kIntegerRows[kind - 3];
    if (!plainMatches(row.hasSign ? "^[+|-]?[0-9]+$" : "^[0-9]+$", value)) return false;
    const std::size_t first = value.find_first_of("123456789");
    const std::string digits = value.substr(first == std::string::npos ? value.size() - 1 : first);
    const bool sign = value[0] < '0' || value[0] > '9';
    if (digits.size() + (sign ? 1 : 0) > row.maxLength) return false;
    return kind <= 6 ? smallInteger(row, value) : textualInteger(row, value, digits);
}

// Durations.

struct PlainDuration {
    uint16_t parts[6];  // years, months, days, hours, minutes, seconds
};

constexpr const char* kDurationPattern =
    "^P[0-9]{1,4}Y[0-9]{1,5}M[0-9]{1,5}DT[0-9]{1,5}H[0-9]{1,5}M[0-9]{1,5}S$";

// "M" is the month before the "T" and the minute behind it.
int partOf(char letter, bool inTime)
{
    switch (letter) {
    case 'Y': return 0;
    case 'M': return inTime ? 4 : 1;
    case 'D': return 2;
    case 'H': return 3;
    default: return 5;
    }
}

// Reads the numbers of a text, each for the letter behind it. Nothing is asked of its shape.
bool readDuration(const std::string& value, PlainDuration& duration)
{
    duration = {};
    if (value.empty() || value[0] != 'P') return false;
    PlainDuration read{};
    bool inTime = false;
    std::string run;
    for (const char c : value.substr(1)) {
        if (c == 'T') {
            inTime = true;
            continue;
        }
        if (!std::strchr("YMDHS", c)) {
            run += c;
            continue;
        }
        const bool isNumber = !run.empty() && run[0] >= '0' && run[0] <= '9';
        const unsigned long number = isNumber ? std::strtoul(run.c_str(), nullptr, 10) : 0;
        if (number > 65535) return false;
        read.parts[partOf(c, inTime)] = static_cast<uint16_t>(number);
        run.clear();
    }
    duration = read;
    return true;
}

// The parts stay 16 bits wide: what a carry adds may wrap.
void normalise(PlainDuration& duration)
{
    constexpr int kPer[6] = {0, 12, 30, 24, 60, 60};
    for (int part = 5; part > 0; --part) {
        uint16_t& lower = duration.parts[part];
        uint16_t& higher = duration.parts[part - 1];
        higher = static_cast<uint16_t>(higher + lower / kPer[part]);
        lower = static_cast<uint16_t>(lower % kPer[part]);
    }
}

// Dates and times.

constexpr unsigned kTime = 1;
constexpr unsigned kYear = 2;
constexpr unsigned kMonth = 4;
constexpr unsigned kDay = 8;
constexpr unsigned kDate = kYear | kMonth | kDay;

struct DateTimeRow {
    const char* pattern;
    std::size_t tail;
    unsigned checks;
};

// clang-format off
constexpr DateTimeRow kDateTimeRows[] = {
    {"^[0-9]{4}-[0-1][0-9]-[0-3][0-9]T[0-2][0-9]:[0-5][0-9]:[0-5][0-9](\\.[0-9]{1,20})?"
     "(Z|[+|-][0-9]{2}:[0-9]{2})?$",                                   19, kTime | kDate},
    {"^[0-9][0-9][0-9][0-9]-[0-1][0-9]-[0-3][0-9](Z|[+|-][0-2][0-9]:[0-5][0-9])?$",
                                                                       10, kDate},
    {"^[0-2][0-9]:[0-5][0-9]:[0-5][0-9](\\.[0-9]{1,20})?(Z|[+|-][0-9]{2}:[0-9]{2})?$",
                                                                       8,  kTime},
    {"^[0-9]{4}(Z|[+|-][0-9]{2}:[0-9]{2})?$",                          4,  kYear},
    {"^--[0-1][0-9]--(Z|[+|-][0-9]{2}:[0-9]{2})?$",                    6,  kMonth},
    {"^---[0-3][0-9](Z|[+|-][0-9]{2}:[0-9]{2})?$",                     5,  kDay},
    {"^[0-9][0-9][0-9][0-9]-[0-1][0-9](Z|[+|-][0-9]{2}:[0-9]{2})?$",   7,  kYear | kMonth},
    {"^--[0-1][0-9]-[0-3][0-9](Z|[+|-][0-9]{2}:[0-9]{2})?$",           7,  kMonth | kDay},
};
// clang-format on

int monthLength(unsigned year, unsigned month)
{
    constexpr int kLengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : kLengths[month - 1];
}

void scanFields(uint32_t row, const char* text, Schema_DateTimeValue& v)
{
    switch (row) {
    case 0:
        std::sscanf(text, "%4hu-%2hu-%2huT%2hu:%2hu:%2hu", &v.year, &v.month, &v.day, &v.hour,
                    &v.minute, &v.second);
        break;
    case 1: std::sscanf(text, "%4hu-%2hu-%2hu", &v.year, &v.month, &v.day); break;
    case 2: std::sscanf(text, "%2hu:%2hu:%2hu", &v.hour, &v.minute, &v.second); break;
    case 3: std::sscanf(text, "%4hu", &v.year); break;
    case 4: std::sscanf(text, "--%2hu--", &v.month); break;
    case 5: std::sscanf(text, "---%2hu", &v.day); break;
    case 6: std::sscanf(text, "%4hu-%2hu", &v.year, &v.month); break;
    default: std::sscanf(text, "--%2hu-%2hu", &v.month, &v.day); break;
    }
}

bool dayFits(unsigned checks, const Schema_DateTimeValue& v)
{
    if (v.day == 0) return false;
    if ((checks & kYear) && (checks & kMonth)) return v.day <= monthLength(v.year, v.month);
    if (checks & kMonth) return v.day <= monthLength(1, v.month);
    return v.day <= 30;
}

bool fieldsFit(unsigned checks, const Schema_DateTimeValue& v)
{
    if ((checks & kTime) && (v.hour > 23 || v.minute > 59 || v.second > 59)) return false;
    if ((checks & kYear) && v.year == 0) return false;
    if ((checks & kMonth) && (v.month < 1 || v.month > 12)) return false;
    return !(checks & kDay) || dayFits(checks, v);
}

// A "|" in the place of the tail is taken for the decimal point.
void scanTail(const char* tail, Schema_DateTimeValue& v)
{
    if (*tail != '-' && *tail != '+' && *tail != 'Z' && *tail != '\0') {
        std::size_t count = 0;
        for (++tail; *tail >= '0' && *tail <= '9'; ++tail) v.fraction[count++] = *tail;
        v.fraction[count] = '\0';
    }
    if (*tail == 'Z' || *tail == '\0') return;
    v.zoneSign = *tail;
    std::sscanf(tail + 1, "%2hu:%2hu", &v.zoneHours, &v.zoneMinutes);
}

bool readDateTime(uint32_t kind, const std::string& value, Schema_DateTimeValue& result)
{
    result = {};
    const DateTimeRow& row = kDateTimeRows[kind - 20];
    if (!plainMatches(row.pattern, value)) return false;
    char work[81];
    std::snprintf(work, sizeof work, "%s", value.c_str());
    Schema_DateTimeValue v{};
    scanFields(kind - 20, work, v);
    if (kind <= 21 && (v.year == 0 || v.month == 0 || v.day == 0)) return false;
    if (!fieldsFit(row.checks, v)) return false;
    scanTail(value.c_str() + row.tail, v);
    result = v;
    return true;
}

uint64_t secondsOf(const Schema_DateTimeValue& v)
{
    const uint64_t before = uint64_t{v.year} - 1;
    uint64_t days = before * 365 + before / 4 - before / 100 + before / 400;
    const unsigned month = std::min<unsigned>(v.month, 12);
    for (unsigned m = 1; m < month; ++m) days += static_cast<uint64_t>(monthLength(v.year, m));
    days += uint64_t{v.day} - 1;
    uint64_t seconds = ((days * 24 + v.hour) * 60 + v.minute) * 60 + v.second;
    const uint64_t offset = (uint64_t{v.zoneHours} * 60 + v.zoneMinutes) * 60;
    if (v.zoneSign == '+') seconds -= offset;
    if (v.zoneSign == '-') seconds += offset;
    return seconds;
}

}  // namespace

bool plainMatches(const char* pattern, const std::string& text)
{
    static std::map<std::string, CompiledPattern> compiled;
    return compiled.try_emplace(pattern, pattern).first->second.matches(text);
}

const char* plainTypeName(uint32_t kind)
{
    return kind < 48 ? kTypeNames[kind] : "";
}

bool plainBuiltin(uint32_t kind, const std::string& value)
{
    if (kind >= 3 && kind <= 15) return integer(kind, value);
    PlainDuration duration;
    Schema_DateTimeValue dateTime;
    if (kind == 19) return plainMatches(kDurationPattern, value) && readDuration(value, duration);
    if (kind >= 20 && kind <= 27) return readDateTime(kind, value, dateTime);
    const auto codes = plainLanguageCodes();
    switch (kind) {
    case 28: return plainMatches(".", value);
    case 29: return plainMatches("^(1|true|0|false)$", value);
    case 30: return plainMatches("^[0-9A-Fa-f]+$", value);
    case 31:
        return plainMatches("^([a-zA-Z0-9/+]{4})*([a-zA-Z0-9/+]{2}==|[a-zA-Z0-9/+]{3}=)?$", value);
    case 32: return plainMatches("^[^:]+[://][^:]+$", value);
    case 33: return XML_CheckQName(value.c_str()) == XML_RET_OK;
    case 34: return std::find(codes.begin(), codes.end(), value) != codes.end();
    default: return false;
    }
}

bool plainBaseType(uint32_t kind, const std::string& value, uint32_t bufSize, std::string& message)
{
    if (kind == 1) return true;
    if (value.empty()) {
        if (kind == 28 || kind == 31) return true;
        message = plainCut(std::string{plainTypeName(kind)} + " cannot be empty.", bufSize);
        return false;
    }
    if (plainBuiltin(kind, value)) return true;
    char form[67];
    std::snprintf(form, sizeof form, "%%.%lus is an invalid value of %%s type value.",
                  static_cast<unsigned long>(bufSize) - 111);
    std::vector<char> buffer(bufSize);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    std::snprintf(buffer.data(), buffer.size(), form, value.c_str(), plainTypeName(kind));
#pragma GCC diagnostic pop
    message = buffer.data();
    return false;
}

int plainCompareDurations(const std::string& a, const std::string& b)
{
    PlainDuration first;
    PlainDuration second;
    readDuration(a, first);
    readDuration(b, second);
    normalise(first);
    normalise(second);
    for (int part = 0; part < 6; ++part) {
        if (first.parts[part] != second.parts[part])
            return first.parts[part] < second.parts[part] ? -1 : 1;
    }
    return 0;
}

int plainCompareDateTime(const Schema_DateTimeValue& a, const Schema_DateTimeValue& b)
{
    const uint64_t first = secondsOf(a);
    const uint64_t second = secondsOf(b);
    if (first != second) return first < second ? -1 : 1;
    const int byText = std::strcmp(a.fraction, b.fraction);
    return byText < 0 ? -1 : byText > 0 ? 1 : 0;
}

int plainCompareDateTimes(uint32_t kind, const std::string& a, const std::string& b)
{
    Schema_DateTimeValue values[2];
    readDateTime(kind, a, values[0]);
    readDateTime(kind, b, values[1]);
    for (Schema_DateTimeValue& v : values) {
        if (v.year == 0) v.year = 1;
        if (v.month == 0) v.month = 1;
        if (v.day == 0) v.day = 1;
    }
    return plainCompareDateTime(values[0], values[1]);
}

std::string plainCut(const std::string& message, std::size_t bufSize)
{
    return message.substr(0, bufSize == 0 ? 0 : bufSize - 1);
}
