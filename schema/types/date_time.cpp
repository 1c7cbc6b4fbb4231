#include "schema/types/date_time.hpp"

#include "schema/types/calendar.hpp"
#include "support/ascii.hpp"

#include <cstddef>
#include <cstdint>
#include <initializer_list>

namespace netxml {
namespace {

using Value = Schema_DateTimeValue;
using Field = std::uint16_t Value::*;

// What must hold of the fields once they are read.
constexpr unsigned kTime = 1;
constexpr unsigned kYear = 2;
constexpr unsigned kMonth = 4;
constexpr unsigned kDay = 8;

// The shape of a type. In it '9' stands for any digit, a lower digit for one up to that, 's' for
// the sign of a zone, and everything else for itself. Each run of digits is one field.
struct DateTimeFormat {
    Schema_BuiltinKind kind;
    const char* shape;
    bool hasFraction;       // "." and 1 to 20 digits may follow
    const char* zoneShape;  // this or "Z" may follow
    Field fields[6];
    unsigned checks;
};

constexpr char kZone[] = "s99:99";
constexpr char kDateZone[] = "s29:59";
constexpr Field kNoField = nullptr;

// clang-format off
constexpr DateTimeFormat kFormats[] = {
    {SCHEMA_BUILTIN_DATE_TIME,    "9999-19-39T29:59:59", true,  kZone,
     {&Value::year, &Value::month, &Value::day, &Value::hour, &Value::minute, &Value::second},
     kTime | kYear | kMonth | kDay},
    {SCHEMA_BUILTIN_DATE,         "9999-19-39", false, kDateZone,
     {&Value::year, &Value::month, &Value::day, kNoField}, kYear | kMonth | kDay},
    {SCHEMA_BUILTIN_TIME,         "29:59:59",   true,  kZone,
     {&Value::hour, &Value::minute, &Value::second, kNoField}, kTime},
    {SCHEMA_BUILTIN_G_YEAR,       "9999",       false, kZone, {&Value::year, kNoField}, kYear},
    {SCHEMA_BUILTIN_G_MONTH,      "--19--",     false, kZone, {&Value::month, kNoField}, kMonth},
    {SCHEMA_BUILTIN_G_DAY,        "---39",      false, kZone, {&Value::day, kNoField}, kDay},
    {SCHEMA_BUILTIN_G_YEAR_MONTH, "9999-19",    false, kZone,
     {&Value::year, &Value::month, kNoField}, kYear | kMonth},
    {SCHEMA_BUILTIN_G_MONTH_DAY,  "--19-39",    false, kZone,
     {&Value::month, &Value::day, kNoField}, kMonth | kDay},
};
// clang-format on
static_assert(sizeof kFormats / sizeof kFormats[0] ==
              SCHEMA_BUILTIN_G_MONTH_DAY - SCHEMA_BUILTIN_DATE_TIME + 1);

// Kept: "|" may stand where the sign of a zone does.
bool matchesOne(char shape, char c) noexcept
{
    if (shape == 's') return c == '+' || c == '|' || c == '-';
    return isDigit(shape) ? isDigit(c) && c <= shape : c == shape;
}

// Behind the shape, or nullptr when the text does not follow it.
const char* skipShape(const char* text, const char* shape) noexcept
{
    for (; *shape != '\0'; ++shape, ++text) {
        if (!matchesOne(*shape, *text)) return nullptr;
    }
    return text;
}

const char* skipDigits(const char* text) noexcept
{
    while (isDigit(*text)) ++text;
    return text;
}

// The plain part, the fraction and the zone, and nothing else.
bool matchesFormat(const DateTimeFormat& format, const char* text) noexcept
{
    constexpr std::ptrdiff_t kMaxFraction = 20;
    text = skipShape(text, format.shape);
    if (!text) return false;
    if (format.hasFraction && *text == '.') {
        const char* end = skipDigits(text + 1);
        if (end == text + 1 || end - (text + 1) > kMaxFraction) return false;
        text = end;
    }
    if (*text == '\0') return true;
    text = *text == 'Z' ? text + 1 : skipShape(text, format.zoneShape);
    return text && *text == '\0';
}

std::uint16_t readNumber(const char*& text) noexcept
{
    unsigned number = 0;
    for (; isDigit(*text); ++text) number = number * 10 + static_cast<unsigned>(*text - '0');
    return static_cast<std::uint16_t>(number);
}

// Reads the runs of digits into the fields in their order. Returns where the plain part ends.
const char* readFields(const DateTimeFormat& format, const char* text, Value& value) noexcept
{
    const Field* field = format.fields;
    const char* shape = format.shape;
    while (*shape != '\0') {
        if (!isDigit(*shape)) {
            ++shape;
            ++text;
            continue;
        }
        shape = skipDigits(shape);
        value.*(*field++) = readNumber(text);
    }
    return text;
}

// Reads the fraction and the zone of a value that matches its format.
// Kept: a zone that "|" begins, with no fraction before it, is read as a fraction.
void readTail(const char* text, Value& value) noexcept
{
    if (*text != '-' && *text != '+' && *text != 'Z' && *text != '\0') {
        ++text;
        char* digit = value.fraction;
        while (isDigit(*text)) *digit++ = *text++;
    }
    if (*text == 'Z' || *text == '\0') return;
    value.zoneSign = *text++;
    value.zoneHours = readNumber(text);
    if (*text != ':') return;
    ++text;
    value.zoneMinutes = readNumber(text);
}

// The last day that a value may name.
// Kept: without a month it is the 30th, and without a year February has 28 days.
unsigned lastDay(unsigned checks, const Value& value) noexcept
{
    constexpr unsigned kLastPlainDay = 30;
    if (!(checks & kMonth)) return kLastPlainDay;
    return checks & kYear ? daysInMonth(value.year, value.month) : daysInCommonMonth(value.month);
}

bool fieldsHold(unsigned checks, const Value& value) noexcept
{
    if (checks & kTime && (value.hour > 23 || value.minute > 59 || value.second > 59)) return false;
    if (checks & kYear && value.year == 0) return false;
    if (checks & kMonth && (value.month == 0 || value.month > kMonths)) return false;
    return !(checks & kDay) || (value.day != 0 && value.day <= lastDay(checks, value));
}

// Gives a value that lacks a year, month or day the first one.
void startAtFirst(Value& value) noexcept
{
    for (const Field field : {&Value::year, &Value::month, &Value::day}) {
        if (value.*field == 0) value.*field = 1;
    }
}

}  // namespace

bool parseDateTime(Schema_BuiltinKind kind, const char* text, Value& value) noexcept
{
    value = Value{};
    const DateTimeFormat& format = kFormats[kind - SCHEMA_BUILTIN_DATE_TIME];
    if (!matchesFormat(format, text)) return false;
    readTail(readFields(format, text, value), value);
    if (fieldsHold(format.checks, value)) return true;
    value = Value{};
    return false;
}

int compareDateTimes(Value a, Value b) noexcept
{
    startAtFirst(a);
    startAtFirst(b);
    return Schema_CmpDateTime(&a, &b);
}

}  // namespace netxml
