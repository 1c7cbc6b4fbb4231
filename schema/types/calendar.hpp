// Days of the Gregorian calendar.
#pragma once

#include <cstdint>

namespace netxml {

inline constexpr unsigned kMonths = 12;

// Days of a month, 1 to 12, in a year.
unsigned daysInMonth(std::uint16_t year, unsigned month) noexcept;

// Days of a month, 1 to 12, in a year that has no 29th of February.
unsigned daysInCommonMonth(unsigned month) noexcept;

}  // namespace netxml
