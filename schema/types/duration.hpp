// Values of the type duration: PnYnMnDTnHnMnS with all six parts, without sign and fraction.
#pragma once

#include <cstdint>

namespace netxml {

struct Duration {
    std::uint16_t years;
    std::uint16_t months;
    std::uint16_t days;
    std::uint16_t hours;
    std::uint16_t minutes;
    std::uint16_t seconds;
};

// Whether the text is a value of the type.
bool isDuration(const char* text) noexcept;

// What a text means where values compare. Parts may be missing there; what does not read counts as
// 0, and a text with a number above 65535 as nothing at all.
Duration readDuration(const char* text) noexcept;

// Negative, 0 or positive as a is shorter than, equal to or longer than b. Each counts 60 seconds a
// minute, 60 minutes an hour, 24 hours a day, 30 days a month and 12 months a year.
int compareDurations(const Duration& a, const Duration& b) noexcept;

}  // namespace netxml
