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
    // Bytes that controlOrHigh() or one of `kBytes` finds, with one mask for all of them.
    template <std::uint8_t... kBytes>
    Mask controlHighOr() const noexcept
    {
        const __m128i control = _mm_cmplt_epi8(bytes, _mm_set1_epi8(0x20));
        return mask((control | ... | is(static_cast<char>(kBytes))));
    }
    // Bytes below 0x20 or above 0x7F: as signed numbers all of them are below 0x20.
    Mask controlOrHigh() const noexcept { return mask(_mm_cmplt_epi8(bytes, _mm_set1_epi8(0x20))); }
    Mask high() const noexcept { return mask(bytes); }
    // Bytes that do not continue a UTF-8 sequence: all but 0x80 to 0xBF.
    Mask leading() const noexcept
    {
        return mask(_mm_cmpgt_epi8(bytes, _mm_set1_epi8(static_cast<char>(0xBF))));
    }
    // Bytes that lead three of which any continuation is a character: E1 to EC.
    Mask wholeLeads() const noexcept
    {
        return mask(inRange(bytes, static_cast<char>(0xE1), static_cast<char>(0xEC)));
    }
    // The mask of these bytes: bit i stands for byte i.
    static constexpr Mask maskOf(std::uint32_t bits) noexcept { return bits; }
    Mask differing(const Sse2Block& other) const noexcept
    {
        return mask(_mm_cmpeq_epi8(bytes, other.bytes)) ^ 0xFFFF;
    }
    Mask notBlank() const noexcept
    {
        const __m128i blank =
            _mm_or_si128(_mm_or_si128(is(' '), is('\n')), _mm_or_si128(is('\t'), is('\r')));
        return mask(blank) ^ 0xFFFF;
    }
    // Bytes that are no ASCII name character: neither letter nor digit nor one of "-._".
    Mask notName() const noexcept
    {
        const __m128i lower = _mm_or_si128(bytes, _mm_set1_epi8(0x20));
        const __m128i digits = _mm_andnot_si128(is('/'), inRange(bytes, '-', '9'));
        const __m128i name = _mm_or_si128(_mm_or_si128(inRange(lower, 'a', 'z'), digits), is('_'));
        return mask(name) ^ 0xFFFF;
    }

    // What `m` can tell of the first `size` bytes, of at least one.
    static Mask firstBytes(std::size_t size) noexcept { return 0xFFFFu >> (kWidth - size); }
    static std::size_t first(Mask m) noexcept
    {
        return static_cast<std::size_t>(std::countr_zero(m));
    }

private:
    __m128i is(char c) const noexcept { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); }
    // Moves the range down to the smallest signed numbers, so that one comparison is enough.
    static __m128i inRange(__m128i v, char first, char last) noexcept
    {
        const __m128i moved = _mm_add_epi8(v, _mm_set1_epi8(static_cast<char>(-128 - first)));
        return _mm_cmplt_epi8(moved, _mm_set1_epi8(static_cast<char>(-128 + last - first + 1)));
    }
    static Mask mask(__m128i v) noexcept { return static_cast<Mask>(_mm_movemask_epi8(v)); }
};

}  // namespace netxml
