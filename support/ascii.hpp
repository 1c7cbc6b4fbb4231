// ASCII letters and digits, whatever the locale.
#pragma once

#include <cstddef>
#include <cstdint>

namespace netxml {

constexpr std::uint8_t asciiLower(std::uint8_t byte) noexcept
{
    return byte >= 'A' && byte <= 'Z' ? static_cast<std::uint8_t>(byte + ('a' - 'A')) : byte;
}

constexpr bool equalIgnoringCase(const char* a, const char* b, std::size_t size) noexcept
{
    for (std::size_t i = 0; i < size; ++i) {
        if (asciiLower(static_cast<std::uint8_t>(a[i])) !=
            asciiLower(static_cast<std::uint8_t>(b[i])))
            return false;
    }
    return true;
}

constexpr bool isDigit(char c) noexcept
{
    return c >= '0' && c <= '9';
}

constexpr bool isAlphanumeric(char c) noexcept
{
    return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

}  // namespace netxml
