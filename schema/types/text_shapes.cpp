#include "schema/types/text_shapes.hpp"

#include "support/ascii.hpp"

#include <cstring>

namespace netxml {
namespace {

bool isBase64Character(char c) noexcept
{
    return isAlphanumeric(c) || c == '/' || c == '+';
}

}  // namespace

bool isBoolean(const char* value) noexcept
{
    constexpr const char* kWords[] = {"1", "true", "0", "false"};
    for (const char* word : kWords) {
        if (std::strcmp(value, word) == 0) return true;
    }
    return false;
}

// Kept: an odd number of digits is accepted.
bool isHexBinary(const char* value) noexcept
{
    const char* c = value;
    while (isDigit(*c) || (*c >= 'a' && *c <= 'f') || (*c >= 'A' && *c <= 'F')) ++c;
    return *c == '\0' && c != value;
}

// Quads of characters; the last one may end in one or two fillers. No white space.
bool isBase64Binary(const char* value) noexcept
{
    std::size_t size = 0;
    while (isBase64Character(value[size])) ++size;
    const char* rest = value + size;
    switch (size % 4) {
    case 0: return *rest == '\0';
    case 2: return std::strcmp(rest, "==") == 0;
    case 3: return std::strcmp(rest, "=") == 0;
    default: return false;
    }
}

// One colon or slash with something on each side; what stands there holds no colon.
// Kept: `urn:a:b` is refused, it has two colons.
bool isAnyUri(const char* value) noexcept
{
    if (*value == '\0') return false;
    if (const char* colon = std::strchr(value, ':'))
        return colon != value && colon[1] != '\0' && !std::strchr(colon + 1, ':');
    const char* slash = std::strchr(value + 1, '/');
    return slash && slash[1] != '\0';
}

}  // namespace netxml
