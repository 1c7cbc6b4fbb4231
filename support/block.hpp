// The block of bytes that this processor crosses text with, and searches made of it.
#pragma once

#include "support/block_word.hpp"

#if defined(__SSE2__)
#include "support/block_sse2.hpp"
#elif defined(__aarch64__) && defined(__ARM_NEON)
#include "support/block_neon.hpp"
#endif

namespace netxml {

#if defined(__SSE2__)
using NativeBlock = Sse2Block;
#elif defined(__aarch64__) && defined(__ARM_NEON)
using NativeBlock = NeonBlock;
#else
using NativeBlock = WordBlock;
#endif

// The first byte from `p` on that is a control character, is beyond ASCII, or is one of `kStops`;
// `end` if there is none.
template <class Block, std::uint8_t... kStops>
const std::uint8_t* findStop(const std::uint8_t* p, const std::uint8_t* end) noexcept
{
    while (static_cast<std::size_t>(end - p) >= Block::kWidth) {
        const Block block = Block::load(p);
        const typename Block::Mask stops = block.template controlHighOr<kStops...>();
        if (stops) return p + Block::first(stops);
        p += Block::kWidth;
    }
    while (p != end && *p >= 0x20 && *p < 0x80 && ((*p != kStops) && ...)) ++p;
    return p;
}

// The first byte beyond ASCII from `p` on, or `end`.
template <class Block = NativeBlock>
const std::uint8_t* findHigh(const std::uint8_t* p, const std::uint8_t* end) noexcept
{
    while (static_cast<std::size_t>(end - p) >= Block::kWidth) {
        const typename Block::Mask high = Block::load(p).high();
        if (high) return p + Block::first(high);
        p += Block::kWidth;
    }
    while (p != end && *p < 0x80) ++p;
    return p;
}

// The first of `kStops` from `p` on, or `end`.
template <class Block, std::uint8_t... kStops>
const std::uint8_t* findAny(const std::uint8_t* p, const std::uint8_t* end) noexcept
{
    while (static_cast<std::size_t>(end - p) >= Block::kWidth) {
        const Block block = Block::load(p);
        const typename Block::Mask stops = (block.equal(kStops) | ...);
        if (stops) return p + Block::first(stops);
        p += Block::kWidth;
    }
    while (p != end && ((*p != kStops) && ...)) ++p;
    return p;
}

}  // namespace netxml
