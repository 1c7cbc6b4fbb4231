// Sixteen bytes at a time on x86-64 (SSE2 is part of its baseline).
#pragma once

#include <emmintrin.h>

#include <bit>
#include <cstddef>
#include <cstdint>

namespace netxml {

struct Sse2Block {
    static constexpr std::size_t kWidth = 16;
    using Mask = std::uint32_t;  // bit i stands for byte i

    __m128i bytes;

    static Sse2Block load(const std::uint8_t* p) noexcept
    {
        return {_mm_loadu_si128(reinterpret_cast<const __m128i*>(p))};
    }
    Mask equal(std::uint8_t byte) const noexcept
    {
        return mask(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(static_cast<char>(byte))));
    }
    // Bytes below 0x20 or above 0x7F: as signed numbers all of them are below 0x20.
    Mask controlOrHigh() const noexcept { return mask(_mm_cmplt_epi8(bytes, _mm_set1_epi8(0x20))); }
    Mask high() const noexcept { return mask(bytes); }
    // Bytes that do not continue a UTF-8 sequence: all but 0x80 to 0xBF.
    Mask leading() const noexcept
    {
        return mask(_mm_cmpgt_epi8(bytes, _mm_set1_epi8(static_cast<char>(0xBF))));
    }

    static std::size_t first(Mask m) noexcept
    {
        return static_cast<std::size_t>(std::countr_zero(m));
    }
    static std::size_t count(Mask m) noexcept { return static_cast<std::size_t>(std::popcount(m)); }

private:
    static Mask mask(__m128i v) noexcept { return static_cast<Mask>(_mm_movemask_epi8(v)); }
};

}  // namespace netxml
