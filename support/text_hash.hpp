// A quick hash of a text, for tables that only save time: whoever prepares collisions costs us the
// comparison that we would have made without the table. See keyed_hash.hpp for the others.
#pragma once

#include <cstdint>

namespace netxml {

// FNV-1a.
constexpr std::uint32_t textHash(const char* text) noexcept
{
    std::uint32_t hash = 2166136261u;
    for (; *text != '\0'; ++text) hash = (hash ^ static_cast<std::uint8_t>(*text)) * 16777619u;
    return hash;
}

}  // namespace netxml
