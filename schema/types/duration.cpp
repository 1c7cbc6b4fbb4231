#include "schema/types/duration.hpp"

#include "support/ascii.hpp"

#include <cstdint>

namespace netxml {
namespace {

// One part: the letters before its digits, how many digits it may have, and where it goes.
struct Part {
    const char* before;
    unsigned maxDigits;
    std::uint16_t Duration::*field;
};

constexpr Part kParts[] = {
    {"P", 4, &Duration::years},  {"Y", 5, &Duration::months},  {"M", 5, &Duration::days},
    {"DT", 5, &Duration::hours}, {"H", 5, &Duration::minutes}, {"M", 5, &Duration::seconds},
};
constexpr char kEnd[] = "S";

// Steps over a word; false when the text does not go on with it.
bool skipWord(const char*& text, const char* word) noexcept
{
    for (; *word != '\0'; ++word, ++text) {
        if (*text != *word) return false;
    }
    return true;
}

// ^P[0-9]{1,4}Y[0-9]{1,5}M[0-9]{1,5}DT[0-9]{1,5}H[0-9]{1,5}M[0-9]{1,5}S$, each number at most
// 65535.
bool readParts(const char* text, Duration& duration) noexcept
{
    for (const Part& part : kParts) {
        if (!skipWord(text, part.before)) return false;
        std::uint32_t number = 0;
        unsigned digits = 0;
        for (; isDigit(*text) && digits < part.maxDigits; ++text, ++digits)
            number = number * 10 + static_cast<std::uint32_t>(*text - '0');
        if (digits == 0 || number > UINT16_MAX) return false;
        duration.*part.field = static_cast<std::uint16_t>(number);
    }
    return skipWord(text, kEnd) && *text == '\0';
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

bool parseDuration(const char* text, Duration& duration) noexcept
{
    duration = Duration{};
    if (readParts(text, duration)) return true;
    duration = Duration{};
    return false;
}

int compareDurations(const Duration& a, const Duration& b) noexcept
{
    const Duration left = normalized(a);
    const Duration right = normalized(b);
    for (const Part& part : kParts) {
        const int difference = left.*part.field - right.*part.field;
        if (difference != 0) return difference;
    }
    return 0;
}

}  // namespace netxml
