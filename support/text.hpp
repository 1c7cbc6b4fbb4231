// Comparing NUL-terminated texts where a missing one counts as empty.
#pragma once

#include <cstring>

namespace netxml {

inline bool isEmpty(const char* text) noexcept
{
    return !text || *text == '\0';
}

inline const char* orEmpty(const char* text) noexcept
{
    return text ? text : "";
}

inline bool sameText(const char* a, const char* b) noexcept
{
    return a == b || std::strcmp(orEmpty(a), orEmpty(b)) == 0;
}

}  // namespace netxml
