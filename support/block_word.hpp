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
    // Bytes that controlOrHigh() or one of `kBytes` finds.
    template <std::uint8_t... kBytes>
    Mask controlHighOr() const noexcept
    {
        return (controlOrHigh() | ... | equal(kBytes));
    }
    Mask controlOrHigh() const noexcept { return (~atLeast(0x20) | bytes) & kHigh; }
    Mask high() const noexcept { return bytes & kHigh; }
    // All but 0x80 to 0xBF: the top bit is clear, or the one below it is set.
    Mask leading() const noexcept { return (~bytes | (bytes << 1)) & kHigh; }
    // Bytes that lead three of which any continuation is a character: E1 to EC.
    Mask wholeLeads() const noexcept
    {
        const WordBlock low{bytes & kLow};
        return low.inRange(0x61, 0x6C) & bytes;
    }
    // The mask of these bytes: bit i stands for byte i.
    static constexpr Mask maskOf(std::uint32_t bits) noexcept
    {
        Mask mask = 0;
        for (std::size_t i = 0; i < kWidth; ++i) mask |= Mask{bits >> i & 1} << (8 * i + 7);
        return mask;
    }
    Mask differing(const WordBlock& other) const noexcept
    {
        return ~WordBlock{bytes ^ other.bytes}.equal(0) & kHigh;
    }
    Mask notBlank() const noexcept
    {
        return ~(equal(' ') | equal('\n') | equal('\t') | equal('\r')) & kHigh;
    }
    // Bytes that are no ASCII name character: neither letter nor digit nor one of "-._".
    Mask notName() const noexcept
    {
        const WordBlock lower{bytes | kOnes * 0x20};
        const Mask digits = inRange('-', '9') & ~equal('/');
        return ~(lower.inRange('a', 'z') | digits | equal('_')) & kHigh;
    }

    // What `m` can tell of the first `size` bytes, of at least one.
    static Mask firstBytes(std::size_t size) noexcept { return ~Mask{0} >> (64 - 8 * size); }
    static std::size_t first(Mask m) noexcept
    {
        return static_cast<std::size_t>(std::countr_zero(m)) / 8;
    }

private:
    // The bytes of 7 bits from `first` to `last`.
    Mask inRange(std::uint8_t first, std::uint8_t last) const noexcept
    {
        return atLeast(first) & ~atLeast(static_cast<std::uint8_t>(last + 1)) & ~bytes & kHigh;
    }
    Mask atLeast(std::uint8_t byte) const noexcept
    {
        return (bytes & kLow) + kOnes * static_cast<std::uint8_t>(0x80 - byte);
    }
    static constexpr std::uint64_t kOnes = UINT64_C(0x0101010101010101);
    static constexpr std::uint64_t kLow = UINT64_C(0x7F7F7F7F7F7F7F7F);
    static constexpr std::uint64_t kHigh = UINT64_C(0x8080808080808080);
};

}  // namespace netxml
