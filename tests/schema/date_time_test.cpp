// Days of the calendar, and the order of points in time.
#include "schema/types/date_time.hpp"
#include "tests/support/plain_values.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <random>
#include <string>

namespace {

TEST(IsValidDay, EveryDayOfTheCalendar)
{
    constexpr unsigned kLengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (unsigned year = 0; year <= 10001; ++year) {
        const bool leap = year % 400 == 0 || (year % 4 == 0 && year % 100 != 0);
        for (unsigned month = 0; month <= 13; ++month) {
            unsigned last = 0;
            if (year >= 1 && year <= 9999 && month >= 1 && month <= 12)
                last = kLengths[month - 1] + (leap && month == 2 ? 1 : 0);
            for (unsigned day : {0u, 1u, 27u, 28u, 29u, 30u, 31u, 32u, 65535u}) {
                ASSERT_EQ(Schema_IsValidDay(static_cast<uint16_t>(year),
                                            static_cast<uint16_t>(month),
                                            static_cast<uint16_t>(day)),
                          day >= 1 && day <= last ? 1u : 0u)
                    << year << "-" << month << "-" << day;
            }
        }
    }
}

TEST(IsValidDay, FarOutside)
{
    EXPECT_EQ(Schema_IsValidDay(65535, 1, 1), 0u);
    EXPECT_EQ(Schema_IsValidDay(2000, 65535, 1), 0u);
    EXPECT_EQ(Schema_IsValidDay(2000, 256, 1), 0u);
    EXPECT_EQ(Schema_IsValidDay(2000, 1, 257), 0u);
    EXPECT_EQ(Schema_IsValidDay(2000, 2, 29), 1u);
    EXPECT_EQ(Schema_IsValidDay(1900, 2, 29), 0u);
}

using Value = Schema_DateTimeValue;

Value at(uint16_t year, uint16_t month, uint16_t day, uint16_t hour = 0, uint16_t minute = 0,
         uint16_t second = 0)
{
    Value value{};
    value.year = year;
    value.month = month;
    value.day = day;
    value.hour = hour;
    value.minute = minute;
    value.second = second;
    return value;
}

Value inZone(Value value, char sign, uint16_t hours, uint16_t minutes)
{
    value.zoneSign = sign;
    value.zoneHours = hours;
    value.zoneMinutes = minutes;
    return value;
}

Value withFraction(Value value, const char* digits)
{
    std::strcpy(value.fraction, digits);
    return value;
}

struct OrderCase {
    const char* why;
    Value a;
    Value b;
    int order;
};

// clang-format off
const OrderCase kOrders[] = {
    {"equal",                            at(2001, 1, 1),                 at(2001, 1, 1),                0},
    {"by year",                          at(2000, 12, 31, 23, 59, 59),   at(2001, 1, 1),               -1},
    {"by month",                         at(2001, 2, 1),                 at(2001, 1, 31, 23, 59, 59),   1},
    {"by day",                           at(2001, 1, 1, 23, 59, 59),     at(2001, 1, 2),               -1},
    {"by hour",                          at(2001, 1, 1, 1),              at(2001, 1, 1, 0, 59, 59),     1},
    {"by minute",                        at(2001, 1, 1, 0, 1),           at(2001, 1, 1, 0, 0, 59),      1},
    {"by second",                        at(2001, 1, 1, 0, 0, 1),        at(2001, 1, 1),                1},
    {"a day is 24 hours",                at(2001, 1, 1, 24),             at(2001, 1, 2),                0},
    {"the day behind 28 February",       at(2001, 2, 29),                at(2001, 3, 1),                0},
    {"but not in a leap year",           at(2004, 2, 29),                at(2004, 3, 1),               -1},
    {"1900 is none",                     at(1900, 2, 29),                at(1900, 3, 1),                0},
    {"2000 is one",                      at(2000, 2, 29),                at(2000, 3, 1),               -1},
    {"a leap year has 366 days",         at(2004, 1, 367),               at(2005, 1, 1),                0},
    {"and the next has 365",             at(2005, 1, 366),               at(2006, 1, 1),                0},
    {"1900 has 365",                     at(1900, 1, 366),               at(1901, 1, 1),                0},
    {"2000 has 366",                     at(2000, 1, 367),               at(2001, 1, 1),                0},
    {"a zone ahead is earlier",          inZone(at(2001, 1, 1), '+', 1, 0),     at(2001, 1, 1),        -1},
    {"a zone behind is later",           inZone(at(2001, 1, 1), '-', 1, 0),     at(2001, 1, 1),         1},
    {"the same time in two zones",       inZone(at(2001, 1, 1, 1), '+', 1, 0),  at(2001, 1, 1),         0},
    {"with minutes",                     inZone(at(2001, 1, 1, 1), '+', 1, 30), at(2000, 12, 31, 23, 30), 0},
    {"in both",                          inZone(at(2001, 1, 1, 1), '+', 1, 30),
                                         inZone(at(2000, 12, 31, 20, 30), '-', 3, 0),                   0},
    {"another sign is no zone (Kept)",   inZone(at(2001, 1, 1), '|', 9, 0),     at(2001, 1, 1),         0},
    {"no sign is no zone",               inZone(at(2001, 1, 1), 0, 9, 0),       at(2001, 1, 1),         0},
    {"before the first second: it wraps (Kept)", inZone(at(1, 1, 1), '+', 0, 1), at(9999, 12, 31),      1},
    {"fractions",                        withFraction(at(2001, 1, 1), "5"), withFraction(at(2001, 1, 1), "4"), 1},
    {"the same fraction",                withFraction(at(2001, 1, 1), "5"), withFraction(at(2001, 1, 1), "5"), 0},
    {"fractions compare as text (Kept)", withFraction(at(2001, 1, 1), "5"), withFraction(at(2001, 1, 1), "50"), -1},
    {"a zero is more than nothing (Kept)", withFraction(at(2001, 1, 1), "0"), at(2001, 1, 1),           1},
    {"by text, not by length",           withFraction(at(2001, 1, 1), "2"), withFraction(at(2001, 1, 1), "12345"), 1},
    {"a second is more than a fraction", withFraction(at(2001, 1, 1), "9"), at(2001, 1, 1, 0, 0, 1),   -1},
    {"the longest fraction",             withFraction(at(2001, 1, 1), "12345678901234567890"),
                                         withFraction(at(2001, 1, 1), "12345678901234567891"),         -1},
    {"a month above 12 counts as 12",    at(2001, 13, 1),                at(2001, 12, 1),               0},
    {"however far",                      at(2001, 65535, 1),             at(2001, 12, 1),               0},
    {"the largest of all fields",        at(65535, 12, 65535, 65535, 65535, 65535), at(65535, 12, 1),   1},
};
// clang-format on

int sign(int32_t order)
{
    return (order > 0) - (order < 0);
}

TEST(CmpDateTime, Orders)
{
    for (const OrderCase& c : kOrders) {
        EXPECT_EQ(sign(Schema_CmpDateTime(&c.a, &c.b)), c.order) << c.why;
        EXPECT_EQ(sign(Schema_CmpDateTime(&c.b, &c.a)), -c.order) << c.why;
        EXPECT_EQ(plainCompareDateTime(c.a, c.b), c.order) << "the plain rules: " << c.why;
    }
}

TEST(CmpDateTime, NullIsLower)
{
    const Value value = at(2001, 1, 1);
    EXPECT_EQ(Schema_CmpDateTime(nullptr, &value), -1);
    EXPECT_EQ(Schema_CmpDateTime(&value, nullptr), -1);
    EXPECT_EQ(Schema_CmpDateTime(nullptr, nullptr), -1);
}

// Each day is the one after the day before.
TEST(CmpDateTime, CountsEveryDay)
{
    Value before = at(1, 1, 1, 23, 59, 59);
    for (uint16_t year = 1; year <= 9999; year = static_cast<uint16_t>(year + 1)) {
        for (uint16_t month = 1; month <= 12; month = static_cast<uint16_t>(month + 1)) {
            for (uint16_t day = 1; Schema_IsValidDay(year, month, day); ++day) {
                if (year == 1 && month == 1 && day == 1) continue;
                const Value next = at(year, month, day);
                ASSERT_EQ(Schema_CmpDateTime(&before, &next), -1) << year << month << day;
                ++before.second;
                ASSERT_EQ(Schema_CmpDateTime(&before, &next), 0) << year << month << day;
                before = at(year, month, day, 23, 59, 59);
            }
        }
    }
}

TEST(CmpDateTime, AgreesWithThePlainRules)
{
    const char* setting = std::getenv("NETXML_TEST_SEED");
    std::mt19937_64 random{setting ? std::strtoull(setting, nullptr, 10) : 1};
    const auto below = [&](unsigned count) { return static_cast<uint16_t>(random() % count); };
    const auto any = [&] {
        Value value =
            at(static_cast<uint16_t>(1999 + below(3)), static_cast<uint16_t>(1 + below(13)),
               static_cast<uint16_t>(1 + below(31)), below(24), below(2), below(2));
        value = inZone(value, "+-|\0"[below(4)], below(26), below(2));
        for (unsigned i = 0, count = below(3); i < count; ++i)
            value.fraction[i] = static_cast<char>('0' + below(2));
        return value;
    };
    int equal = 0;
    for (int i = 0; i < 100000; ++i) {
        const Value a = any();
        const Value b = below(2) == 0 ? any() : a;
        const int order = plainCompareDateTime(a, b);
        equal += order == 0 ? 1 : 0;
        ASSERT_EQ(sign(Schema_CmpDateTime(&a, &b)), sign(order)) << i;
    }
    EXPECT_GT(equal, 1000);
}

struct ParseCase {
    const char* why;
    uint32_t kind;
    const char* text;
    uint16_t fields[8];  // year, month, day, hour, minute, second, zone hours, zone minutes
    const char* fraction;
    char zoneSign;
};

// clang-format off
constexpr ParseCase kParsed[] = {
    // why                       kind text                             fields                             fraction zone
    {"all there is",             20, "2001-02-03T04:05:06.789+10:11",  {2001, 2, 3, 4, 5, 6, 10, 11},     "789",   '+'},
    {"the longest fraction",     20, "2001-02-03T04:05:06.00000000000000000009", {2001, 2, 3, 4, 5, 6, 0, 0}, "00000000000000000009", 0},
    {"Z is no offset",           20, "2001-02-03T04:05:06Z",           {2001, 2, 3, 4, 5, 6, 0, 0},       "",      0},
    {"nor behind a fraction",    20, "2001-02-03T04:05:06.7Z",         {2001, 2, 3, 4, 5, 6, 0, 0},       "7",     0},
    {"\"|\" as a point (Kept)",  20, "2001-02-03T04:05:06|10:11",      {2001, 2, 3, 4, 5, 6, 11, 0},      "10",    ':'},
    {"\"|\" as a sign (Kept)",   20, "2001-02-03T04:05:06.7|10:11",    {2001, 2, 3, 4, 5, 6, 10, 11},     "7",     '|'},
    {"a day",                    21, "2001-02-03-04:05",               {2001, 2, 3, 0, 0, 0, 4, 5},       "",      '-'},
    {"a time",                   22, "04:05:06.7-08:09",               {0, 0, 0, 4, 5, 6, 8, 9},          "7",     '-'},
    {"a year",                   23, "2001+01:02",                     {2001, 0, 0, 0, 0, 0, 1, 2},       "",      '+'},
    {"a month",                  24, "--02--",                         {0, 2, 0, 0, 0, 0, 0, 0},          "",      0},
    {"a month in a zone",        24, "--02---01:02",                   {0, 2, 0, 0, 0, 0, 1, 2},          "",      '-'},
    {"a day of any month",       25, "---03Z",                         {0, 0, 3, 0, 0, 0, 0, 0},          "",      0},
    {"a month of a year",        26, "2001-02+99:99",                  {2001, 2, 0, 0, 0, 0, 99, 99},     "",      '+'},
    {"a day of a year",          27, "--02-03+01:00",                  {0, 2, 3, 0, 0, 0, 1, 0},          "",      '+'},
    {"nothing of what is wrong", 21, "2001-02-29+01:00",               {0, 0, 0, 0, 0, 0, 0, 0},          "",      0},
    {"nor of another shape",     21, "2001-02-03T",                    {0, 0, 0, 0, 0, 0, 0, 0},          "",      0},
    {"nor of a bad hour",        22, "24:00:00.5+01:00",               {0, 0, 0, 0, 0, 0, 0, 0},          "",      0},
};
// clang-format on

TEST(ParseDateTime, Fields)
{
    for (const ParseCase& c : kParsed) {
        SCOPED_TRACE(c.why);
        Value value = at(9, 9, 9, 9, 9, 9);
        std::memset(value.fraction, '9', sizeof value.fraction);
        const bool valid = netxml::parseDateTime(c.kind, c.text, value);
        EXPECT_EQ(valid, plainBuiltin(c.kind, c.text));
        const uint16_t fields[] = {value.year,   value.month,  value.day,       value.hour,
                                   value.minute, value.second, value.zoneHours, value.zoneMinutes};
        EXPECT_TRUE(std::equal(std::begin(fields), std::end(fields), c.fields));
        EXPECT_STREQ(value.fraction, c.fraction);
        EXPECT_EQ(value.zoneSign, c.zoneSign);
    }
}

}  // namespace
