// SipHash-1-3: a hash whose collisions nobody can prepare without knowing the key. Each parse draws
// a key of its own, and only when a tag has enough attributes or prefixes to need a table.
#pragma once

#include <cstddef>
#include <cstdint>

namespace netxml {

struct HashKey {
    std::uint64_t k0;
    std::uint64_t k1;
};

// A key that cannot be guessed: the kernel's random bytes, or addresses and the clock without them.
HashKey randomHashKey() noexcept;

// Hashes two texts as a pair: ("ab", "c") and ("a", "bc") differ.
std::uint64_t hashPair(HashKey key, const void* a, std::size_t aSize, const void* b,
                       std::size_t bSize) noexcept;

inline std::uint64_t hashBytes(HashKey key, const void* bytes, std::size_t size) noexcept
{
    return hashPair(key, bytes, size, nullptr, 0);
}

}  // namespace netxml
