// IPv4 masks, IPv6 addresses and IPv6 prefixes (RFC 4291, section 2.2 and 2.3).
#include "schema/types/network_values.hpp"

#include "support/ascii.hpp"

#include <arpa/inet.h>
#include <cstdint>
#include <cstring>

namespace netxml {
namespace {

constexpr std::size_t kLongestAddress = 45;
constexpr std::size_t kLongestPrefix = 63;
constexpr unsigned kAddressBits = 128;

bool readsAsIpv6(const char* text) noexcept
{
    in6_addr address;
    return inet_pton(AF_INET6, text, &address) == 1;
}

// Only digits, and a number from 1 to 128. Zeros may lead.
bool isPrefixLength(const char* text) noexcept
{
    if (!isDigit(*text)) return false;
    unsigned length = 0;
    for (; isDigit(*text); ++text) {
        length = length * 10 + static_cast<unsigned>(*text - '0');
        if (length > kAddressBits) return false;
    }
    return *text == '\0' && length >= 1;
}

}  // namespace

// All ones, or all ones shifted left: no 1 stands behind a 0.
bool isIpv4Mask(const char* value) noexcept
{
    in_addr address;
    if (inet_pton(AF_INET, value, &address) != 1) return false;
    const std::uint32_t zeros = ~ntohl(address.s_addr);
    return (zeros & (zeros + 1)) == 0;
}

bool isIpv6Address(const char* value) noexcept
{
    return strnlen(value, kLongestAddress + 1) <= kLongestAddress && !std::strchr(value, '/') &&
           readsAsIpv6(value);
}

bool isIpv6Prefix(const char* value) noexcept
{
    if (strnlen(value, kLongestPrefix + 1) > kLongestPrefix) return false;
    const char* slash = std::strchr(value, '/');
    if (!slash) return false;
    char address[kLongestAddress + 1];
    const std::size_t size = static_cast<std::size_t>(slash - value);
    if (size > kLongestAddress) return false;
    std::memcpy(address, value, size);
    address[size] = '\0';
    return readsAsIpv6(address) && isPrefixLength(slash + 1);
}

}  // namespace netxml
