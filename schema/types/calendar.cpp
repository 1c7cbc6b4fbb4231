#include "schema/types/calendar.hpp"

#include "netxml/dom.h"
#include "netxml/schema.h"

#include <cstdint>

namespace netxml {
namespace {

constexpr unsigned kFebruary = 2;
constexpr std::uint8_t kMonthLengths[kMonths] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

bool isLeapYear(std::uint16_t year) noexcept
{
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

// Seconds since the first of January of the year 1. They wrap below that, as 64 bits do.
std::uint64_t secondsOf(const Schema_DateTimeValue& value) noexcept
{
    const std::uint64_t yearsBefore = std::uint64_t{value.year} - 1;
    std::uint64_t days =
        yearsBefore * 365 + yearsBefore / 4 - yearsBefore / 100 + yearsBefore / 400;
    for (unsigned month = 1; month < value.month && month < kMonths; ++month)
        days += daysInMonth(value.year, month);
    days += std::uint64_t{value.day} - 1;
    std::uint64_t seconds = ((days * 24 + value.hour) * 60 + value.minute) * 60 + value.second;
    const std::uint64_t offset = (std::uint64_t{value.zoneHours} * 60 + value.zoneMinutes) * 60;
    if (value.zoneSign == '+') seconds -= offset;
    if (value.zoneSign == '-') seconds += offset;
    return seconds;
}

}  // namespace

unsigned daysInCommonMonth(unsigned month) noexcept
{
    return kMonthLengths[month - 1];
}

unsigned daysInMonth(std::uint16_t year, unsigned month) noexcept
{
    return daysInCommonMonth(month) + (month == kFebruary && isLeapYear(year) ? 1 : 0);
}

}  // namespace netxml

uint32_t Schema_IsValidDay(uint16_t year, uint16_t month, uint16_t day)
{
    constexpr std::uint16_t kLastYear = 9999;
    if (year < 1 || year > kLastYear || month < 1 || month > netxml::kMonths) return 0;
    return day >= 1 && day <= netxml::daysInMonth(year, month) ? 1 : 0;
}

// Kept: fractions compare as text, so "5" and "50" differ.
int32_t Schema_CmpDateTime(const Schema_DateTimeValue* a, const Schema_DateTimeValue* b)
{
    if (!a || !b) return -1;
    const std::uint64_t left = netxml::secondsOf(*a);
    const std::uint64_t right = netxml::secondsOf(*b);
    if (left != right) return left > right ? 1 : -1;
    return XML_Strcmp(a->fraction, b->fraction);
}
