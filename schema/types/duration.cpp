#include "schema/types/duration.hpp"

#include "support/ascii.hpp"

#include <cstdint>

namespace netxml {
namespace {

// One part: the letters before its digits, and how many digits it may have.
struct Part {
    const char* before;
    unsigned maxDigits;
};

constexpr Part kParts[] = {{"P", 4}, {"Y", 5}, {"M", 5}, {"DT", 5}, {"H", 5}, {"M", 5}};
constexpr char kEnd[] = "S";

constexpr std::uint16_t Duration::*kFields[] = {&Duration::years,   &Duration::months,
                                                &Duration::days,    &Duration::hours,
                                                &Duration::minutes, &Duration::seconds};

// Steps over a word; false when the text does not go on with it.
bool skipWord(const char*& text, const char* word) noexcept
{
    for (; *word != '\0'; ++word, ++text) {
        if (*text != *word) return false;
    }
    return true;
}

// Keeps a number that is too large from wrapping around.
std::uint32_t appendDigit(std::uint32_t number, char digit) noexcept
{
    return number > UINT16_MAX ? number : number * 10 + static_cast<std::uint32_t>(digit - '0');
}

// The field that a letter ends. Behind the "T", "M" stands for minutes.
std::uint16_t Duration::*fieldOf(char letter, bool inTime) noexcept
{
    switch (letter) {
    case 'Y': return &Duration::years;
    case 'M': return inTime ? &Duration::minutes : &Duration::months;
    case 'D': return &Duration::days;
    case 'H': return &Duration::hours;
    case 'S': return &Duration::seconds;
    default: return nullptr;
    }
}

// Hands full units of one field on to the next one. Fields stay 16 bits wide and wrap.
void carry(std::uint16_t& from, std::uint16_t& to, std::uint16_t unit) noexcept
{
    to = static_cast<std::uint16_t>(to + from / unit);
    from = static_cast<std::uint16_t>(from % unit);
}

Duration normalized(Duration d) noexcept
{
    carry(d.seconds, d.minutes, 60);
    carry(d.minutes, d.hours, 60);
    carry(d.hours, d.days, 24);
    carry(d.days, d.months, 30);
    carry(d.months, d.years, 12);
    return d;
}

}  // namespace

// ^P[0-9]{1,4}Y[0-9]{1,5}M[0-9]{1,5}DT[0-9]{1,5}H[0-9]{1,5}M[0-9]{1,5}S$, each number at most
// 65535.
bool isDuration(const char* text) noexcept
{
    for (const Part& part : kParts) {
        if (!skipWord(text, part.before)) return false;
        std::uint32_t number = 0;
        unsigned digits = 0;
        for (; isDigit(*text) && digits < part.maxDigits; ++text, ++digits)
            number = appendDigit(number, *text);
        if (digits == 0 || number > UINT16_MAX) return false;
    }
    return skipWord(text, kEnd) && *text == '\0';
}

// Each number counts for the letter that follows it, whatever lies between.
Duration readDuration(const char* text) noexcept
{
    Duration duration{};
    std::uint32_t number = 0;
    bool inTime = false;
    bool inNumber = true;
    if (*text != 'P') return duration;
    while (*++text != '\0') {
        if (const auto field = fieldOf(*text, inTime)) {
            if (number > UINT16_MAX) return Duration{};
            duration.*field = static_cast<std::uint16_t>(number);
            number = 0;
            inNumber = true;
        } else if (*text == 'T') {
            inTime = true;
        } else if (inNumber && isDigit(*text)) {
            number = appendDigit(number, *text);
        } else {
            inNumber = false;
        }
    }
    return duration;
}

int compareDurations(const Duration& a, const Duration& b) noexcept
{
    const Duration left = normalized(a);
    const Duration right = normalized(b);
    for (const auto field : kFields) {
        const int difference = left.*field - right.*field;
        if (difference != 0) return difference;
    }
    return 0;
}

}  // namespace netxml
