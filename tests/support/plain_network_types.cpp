// The network types and the language codes, written down plainly.
#include "tests/support/plain_values.hpp"

#include <arpa/inet.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

// clang-format off
constexpr const char* kLanguageCodes[] = {
    "af", "sq", "ar", "ar-sa", "ar-iq", "ar-eg", "ar-ly", "ar-dz", "ar-ma", "ar-tn", "ar-om",
    "ar-ye", "ar-sy", "ar-jo", "ar-lb", "ar-kw", "ar-ae", "ar-bh", "ar-qa", "eu", "bg", "be", "ca",
    "zh", "zh-tw", "zh-cn", "zh-hk", "zh-sg", "hr", "cs", "da", "nl", "nl-be", "en", "en-us",
    "en-gb", "en-au", "en-ca", "en-nz", "en-ie", "en-za", "en-jm", "en-bz", "en-tt", "et", "fo",
    "fa", "fi", "fr", "fr-be", "fr-ca", "fr-ch", "fr-lu", "gd", "de", "de-ch", "de-at", "de-lu",
    "de-li", "el", "he", "hi", "hu", "is", "in", "it", "it-ch", "ja", "ko", "lv", "lt", "mk", "ms",
    "mt", "no", "no", "pl", "pt-br", "pt", "rm", "ro", "ro-mo", "ru", "ru-mo", "sr", "sr", "sk",
    "sl", "sb", "es", "es-mx", "es", "es-gt", "es-cr", "es-pa", "es-do", "es-ve", "es-co", "es-pe",
    "es-ar", "es-ec", "es-cl", "es-uy", "es-py", "es-bo", "es-sv", "es-hn", "es-ni", "es-pr", "sx",
    "sv", "sv-fi", "th", "ts", "tn", "tr", "uk", "ur", "vi", "xh", "ji", "zu",
};
// clang-format on
static_assert(std::size(kLanguageCodes) == 122);

bool ipv4Mask(const std::string& value)
{
    in_addr address;
    if (inet_pton(AF_INET, value.c_str(), &address) != 1) return false;
    const uint32_t mask = ntohl(address.s_addr);
    for (int shift = 0; shift < 32; ++shift) {
        if (mask == static_cast<uint32_t>(0xFFFFFFFFu << shift)) return true;
    }
    return mask == 0;
}

bool ipv6Address(const std::string& value)
{
    in6_addr address;
    return value.find('/') == std::string::npos && value.size() <= 45 &&
           inet_pton(AF_INET6, value.c_str(), &address) == 1;
}

bool ipv6Prefix(const std::string& value)
{
    const std::size_t slash = value.find('/');
    if (value.size() > 63 || slash == std::string::npos) return false;
    if (!ipv6Address(value.substr(0, slash))) return false;
    const std::string rest = value.substr(slash + 1);
    if (rest.empty() || rest[0] < '0' || rest[0] > '9') return false;
    char* end = nullptr;
    errno = 0;
    const unsigned long length = std::strtoul(rest.c_str(), &end, 10);
    return errno == 0 && *end == '\0' && length >= 1 && length <= 128;
}

// The items of a list, in a buffer of 32 bytes each: a longer one is cut and loses a byte.
std::vector<std::string> splitItems(const std::string& text)
{
    std::vector<std::string> items;
    std::size_t cursor = 0;
    while (cursor < text.size()) {
        const std::size_t separator = text.find(',', cursor);
        const bool found = separator != std::string::npos;
        const std::size_t whole = (found ? separator : text.size()) - cursor;
        const std::size_t copied = std::min<std::size_t>(whole, 31);
        items.push_back(text.substr(cursor, copied));
        cursor += copied + (found ? 1 : 0);
    }
    return items;
}

bool rangeItem(const std::string& item, unsigned long long maximum)
{
    if (!plainMatches("^[0-9]{1,10}(-[0-9]{1,10})?$", item)) return false;
    unsigned long long low = 0;
    unsigned long long high = 0;
    if (item.find('-') == std::string::npos) {
        std::sscanf(item.c_str(), "%llu", &low);
        return low != 0 && low <= maximum;
    }
    std::sscanf(item.c_str(), "%llu-%llu", &low, &high);
    return low <= high && high <= maximum && low != 0;
}

bool rangeList(const std::string& value, unsigned long long maximum, std::size_t maxLength)
{
    if (value.empty() || value.size() > maxLength || value.back() == ',') return false;
    if (value.find_first_not_of("1234567890,-") != std::string::npos) return false;
    const std::vector<std::string> items = splitItems(value);
    return std::all_of(items.begin(), items.end(),
                       [=](const std::string& item) { return rangeItem(item, maximum); });
}

bool objectIdentifier(const std::string& value)
{
    if (value.empty() || value.find_first_not_of(".0123456789") != std::string::npos) return false;
    if (value.front() == '.' || value.back() == '.') return false;
    if (value.find("..") != std::string::npos) return false;
    int count = 0;
    for (std::size_t from = 0; from < value.size();) {
        const std::size_t dot = std::min(value.find('.', from), value.size());
        const std::string component = value.substr(from, dot - from);
        if (component.size() > 10) return false;
        if (std::strtoull(component.substr(0, 15).c_str(), nullptr, 10) > 4294967295ull)
            return false;
        ++count;
        from = dot + 1;
    }
    return count <= 128;
}

}  // namespace

bool plainNetworkType(const std::string& name, const std::string& value)
{
    if (name == "_Ipv4Mask") return ipv4Mask(value);
    if (name == "_Ipv6Address") return ipv6Address(value);
    if (name == "IPV6_ADDR_PREFIX") return ipv6Prefix(value);
    if (name == "_PortRange") return rangeList(value, 65535, 393210);
    if (name == "_VlanRange") return rangeList(value, 4094, 20470);
    if (name == "OID") return objectIdentifier(value);
    std::abort();
}

std::span<const char* const> plainLanguageCodes()
{
    return kLanguageCodes;
}
