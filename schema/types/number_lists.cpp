// Lists of numbers: ports, VLANs, object identifiers. One pass, nothing converted beyond 64 bits.
#include "schema/types/network_values.hpp"

#include "support/ascii.hpp"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace netxml {
namespace {

constexpr unsigned kMostDigits = 10;

// 1 to 10 digits; false when there are none or more.
bool readNumber(const char*& text, std::uint64_t& number) noexcept
{
    number = 0;
    unsigned digits = 0;
    for (; isDigit(*text); ++text) {
        if (++digits > kMostDigits) return false;
        number = number * 10 + static_cast<std::uint64_t>(*text - '0');
    }
    return digits != 0;
}

// NUMBER or LOW-HIGH.
bool readRange(const char*& text, std::uint64_t largest) noexcept
{
    std::uint64_t low = 0;
    if (!readNumber(text, low)) return false;
    std::uint64_t high = low;
    if (*text == '-' && !readNumber(++text, high)) return false;
    return low != 0 && low <= high && high <= largest;
}

// Ranges may overlap, repeat and come in any order.
bool isRangeList(const char* value, std::uint64_t largest, std::size_t longest) noexcept
{
    if (strnlen(value, longest + 1) > longest) return false;
    for (;;) {
        if (!readRange(value, largest)) return false;
        if (*value == '\0') return true;
        if (*value++ != ',') return false;
    }
}

}  // namespace

// The longest text has room for every value with a comma.
bool isPortRange(const char* value) noexcept
{
    return isRangeList(value, 65535, std::size_t{65535} * 6);
}

bool isVlanRange(const char* value) noexcept
{
    return isRangeList(value, 4094, std::size_t{4094} * 5);
}

bool isObjectIdentifier(const char* value) noexcept
{
    constexpr unsigned kMostComponents = 128;
    for (unsigned count = 1; count <= kMostComponents; ++count) {
        std::uint64_t component = 0;
        if (!readNumber(value, component) || component > UINT32_MAX) return false;
        if (*value == '\0') return true;
        if (*value++ != '.') return false;
    }
    return false;
}

}  // namespace netxml
