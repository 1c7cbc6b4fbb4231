// Eight bytes at a time in an ordinary integer: for every processor without a block of its own, and
// the twin that tests hold against the others.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace netxml {

struct WordBlock {
    static constexpr std::size_t kWidth = 8;
    using Mask = std::uint64_t;  // the highest bit of each byte; byte 0 is always the lowest

    std::uint64_t bytes;

    static WordBlock load(const std::uint8_t* p) noexcept
    {
        std::uint64_t word;
        std::memcpy(&word, p, sizeof word);
        return {std::endian::native == std::endian::little ? word : __builtin_bswap64(word)};
    }
    // Exact for every byte: the sum of seven bits cannot carry into the next byte.
    Mask equal(std::uint8_t byte) const noexcept
    {
        const std::uint64_t difference = bytes ^ (kOnes * byte);
        return ~(((difference & kLow) + kLow) | difference) & kHigh;
    }
    Mask controlOrHigh() const noexcept
    {
        const std::uint64_t atLeastBlank = (bytes & kLow) + kOnes * (0x80 - 0x20);
        return (~atLeastBlank | bytes) & kHigh;
    }
    Mask high() const noexcept { return bytes & kHigh; }
    // All but 0x80 to 0xBF: the top bit is clear, or the one below it is set.
    Mask leading() const noexcept { return (~bytes | (bytes << 1)) & kHigh; }

    static std::size_t first(Mask m) noexcept
    {
        return static_cast<std::size_t>(std::countr_zero(m)) / 8;
    }
    static std::size_t count(Mask m) noexcept { return static_cast<std::size_t>(std::popcount(m)); }

private:
    static constexpr std::uint64_t kOnes = UINT64_C(0x0101010101010101);
    static constexpr std::uint64_t kLow = UINT64_C(0x7F7F7F7F7F7F7F7F);
    static constexpr std::uint64_t kHigh = UINT64_C(0x8080808080808080);
};

}  // namespace netxml
