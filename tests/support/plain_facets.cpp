// What a facet asks of a value, written down plainly.
#include "tests/support/plain_values.hpp"

#include <regex.h>

#include <cstdlib>
#include <cstring>

namespace {

// A pattern that does not compile matches nothing.
bool matches(const char* pattern, const std::string& text)
{
    regex_t compiled;
    if (regcomp(&compiled, pattern, REG_EXTENDED | REG_NOSUB) != 0) return false;
    const bool matched = regexec(&compiled, text.c_str(), 0, nullptr, 0) == 0;
    regfree(&compiled);
    return matched;
}

bool isUnsigned(uint32_t kind)
{
    return kind == 5 || kind == 6 || kind == 9 || kind == 10 || kind == 12 || kind == 15;
}

bool isSigned(uint32_t kind)
{
    return kind == 3 || kind == 4 || kind == 7 || kind == 8 || kind == 11 || kind == 13 ||
           kind == 14;
}

template <typename Number>
int order(Number a, Number b)
{
    return a < b ? -1 : a > b ? 1 : 0;
}

int compareByValue(uint32_t kind, const char* a, const char* b)
{
    if (isUnsigned(kind))
        return order(std::strtoull(a, nullptr, 10), std::strtoull(b, nullptr, 10));
    if (isSigned(kind)) return order(std::strtoll(a, nullptr, 10), std::strtoll(b, nullptr, 10));
    if (kind == 19) return plainCompareDurations(a, b);
    if (kind >= 20 && kind <= 27) return plainCompareDateTimes(kind, a, b);
    return 0;
}

bool enumerated(uint32_t kind, const char* value, const char* literal)
{
    if (kind < 20 && (isUnsigned(kind) || isSigned(kind) || kind == 19))
        return compareByValue(kind, value, literal) == 0;
    return std::strcmp(value, literal) == 0;
}

long long digitCount(const char* value)
{
    if (*value == '-' || *value == '+') ++value;
    while (*value == '0') ++value;
    return static_cast<long long>(std::strlen(value));
}

bool satisfied(const Schema_Facet& facet, const char* value, const char* text)
{
    const auto length = static_cast<long long>(std::strlen(value));
    const long long number = std::strtoll(text, nullptr, 10);
    const int c = compareByValue(facet.baseKind, value, text);
    switch (facet.kind) {
    case 15: return enumerated(facet.baseKind, value, text);
    case 17: return length == number;
    case 18: return c < 0;
    case 19: return c <= 0;
    case 20: return number < 0 || length <= number;
    case 21: return c > 0;
    case 22: return c >= 0;
    case 23: return length >= number;
    case 24: return matches(text, value);
    case 25: return digitCount(value) == number;
    default: return true;
    }
}

std::string sentence(uint32_t kind, const std::string& text)
{
    switch (kind) {
    case 15: return "The value does not match the enumeration.";
    case 17: return "The length must be equal to " + text + ".";
    case 18: return "The value must be less than " + text + ".";
    case 19: return "The value must be less than or equal to " + text + ".";
    case 20: return "The length must be less than or equal to " + text + ".";
    case 21: return "The value must be greater than " + text + ".";
    case 22: return "The value must be greater than or equal to " + text + ".";
    case 23: return "The length must be greater than or equal to " + text + ".";
    case 24: return "The value does not match the regular expression.";
    default: return "The total digit length must be equal to " + text + ".";
    }
}

}  // namespace

uint32_t plainFacet(const Schema_Facet& facet, const std::string& value, std::string& message)
{
    const char* text = facet.value ? facet.value : "";
    if (satisfied(facet, value.c_str(), text)) return XML_RET_OK;
    message = sentence(facet.kind, text);
    return XML_RET_FAIL;
}
