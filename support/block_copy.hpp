// Short texts copied and compared in whole blocks: one step for what fits into one, whatever its
// length. Both sides need kSpanSlack bytes of room behind the text.
#pragma once

#include "support/block.hpp"
#include "support/span.hpp"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace netxml {

[[gnu::always_inline]] inline void copyBlocks(char* to, const std::uint8_t* from,
                                              std::size_t size) noexcept
{
    std::memcpy(to, from, kSpanSlack);
    for (std::size_t done = kSpanSlack; done < size; done += kSpanSlack)
        std::memcpy(to + done, from + done, kSpanSlack);
}

// Zeroes a record with one store a block: as one big memset, some compilers make it a string
// instruction that takes longer to start than all the stores.
template <std::size_t kSize>
[[gnu::always_inline]] inline void zeroBlocks(void* record) noexcept
{
    constexpr std::size_t kPiece = kSize < kSpanSlack ? kSize : kSpanSlack;
    std::memset(record, 0, kPiece);
    if constexpr (kSize > kPiece) zeroBlocks<kSize - kPiece>(static_cast<char*>(record) + kPiece);
}

template <class Block = NativeBlock>
[[gnu::always_inline]] inline bool sameBlocks(const std::uint8_t* a, const std::uint8_t* b,
                                              std::size_t size) noexcept
{
    static_assert(Block::kWidth <= kSpanSlack);
    std::size_t done = 0;
    do {
        const typename Block::Mask differing =
            Block::load(a + done).differing(Block::load(b + done));
        if (differing) return done + Block::first(differing) >= size;
        done += Block::kWidth;
    } while (done < size);
    return true;
}

// The length of a string that may be read in whole blocks.
template <class Block = NativeBlock>
[[gnu::always_inline]] inline std::size_t lengthInBlocks(const char* text) noexcept
{
    for (std::size_t size = 0;; size += Block::kWidth) {
        const auto* p = reinterpret_cast<const std::uint8_t*>(text) + size;
        const typename Block::Mask ends = Block::load(p).equal(0);
        if (ends) return size + Block::first(ends);
    }
}

// Longer texts are the C library's business.
inline constexpr std::size_t kFewBlocks = 64;

// Copies a text to where there is room for kSpanSlack bytes behind it, and puts a NUL behind it.
[[gnu::always_inline]] inline void copyTerminated(char* to, const Span& text) noexcept
{
    if (text.wide && text.size <= kFewBlocks) copyBlocks(to, text.data, text.size);
    else if (text.size != 0) std::memcpy(to, text.data, text.size);
    to[text.size] = '\0';
}

}  // namespace netxml
