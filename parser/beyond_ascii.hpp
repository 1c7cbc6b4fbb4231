// Crossing text beyond ASCII.
#pragma once

#include "parser/char_classes.hpp"
#include "support/block.hpp"

namespace netxml {

// Crosses characters of three bytes with the leads E1 to EC, all of which are valid, as many as fit
// into a block at a time. Whole blocks may be read up to `end`.
template <class Block = NativeBlock>
const std::uint8_t* crossThreeBytes(const std::uint8_t* p, const std::uint8_t* end) noexcept
{
    constexpr std::size_t kCount = Block::kWidth / 3;
    constexpr std::uint32_t kBytes = (1u << 3 * kCount) - 1;
    constexpr typename Block::Mask kAll = Block::maskOf(kBytes);
    constexpr typename Block::Mask kLeads = Block::maskOf(kBytes & 0x9249);
    while (static_cast<std::size_t>(end - p) >= Block::kWidth) {
        const Block block = Block::load(p);
        const bool leads = (block.wholeLeads() & kAll) == kLeads;
        const bool others = (block.high() & ~block.leading() & kAll) == (kAll & ~kLeads);
        if (!leads || !others) break;
        p += 3 * kCount;
    }
    return p;
}

// Crosses valid characters beyond ASCII, up to one that is not, or that reaches `end`.
[[gnu::noinline]] inline const std::uint8_t* crossBeyondAscii(const std::uint8_t* p,
                                                              const std::uint8_t* end) noexcept
{
    while (p < end && *p >= 0x80) {
        p = crossThreeBytes(p, end);
        if (p >= end || *p < 0x80) return p;
        const std::size_t size = stepOf(*p);
        if (static_cast<std::size_t>(end - p) <= size || !isValid(decodeCharacter(p, end)))
            return p;
        p += size;
    }
    return p;
}

}  // namespace netxml
