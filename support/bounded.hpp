// Copying text into a buffer of limited size.
#pragma once

#include <cstddef>
#include <cstring>

namespace netxml {

// Copies as much of a text as fits and terminates it; does nothing for a size of 0.
inline void copyBounded(char* to, std::size_t size, const char* text) noexcept
{
    if (size == 0) return;
    const std::size_t length = strnlen(text, size - 1);
    std::memmove(to, text, length);
    to[length] = '\0';
}

}  // namespace netxml
