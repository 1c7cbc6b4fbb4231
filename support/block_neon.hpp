// Sixteen bytes at a time on AArch64.
#pragma once

#include <arm_neon.h>

#include <bit>
#include <cstddef>
#include <cstdint>

namespace netxml {

struct NeonBlock {
    static constexpr std::size_t kWidth = 16;
    using Mask = std::uint64_t;  // four bits stand for each byte; the lowest of the four is set

    uint8x16_t bytes;

    static NeonBlock load(const std::uint8_t* p) noexcept { return {vld1q_u8(p)}; }
    Mask equal(std::uint8_t byte) const noexcept { return mask(vceqq_u8(bytes, vdupq_n_u8(byte))); }
    // Bytes that controlOrHigh() or one of `kBytes` finds, with one mask for all of them.
    template <std::uint8_t... kBytes>
    Mask controlHighOr() const noexcept
    {
        const uint8x16_t control = vcltq_s8(vreinterpretq_s8_u8(bytes), vdupq_n_s8(0x20));
        return mask((control | ... | is(kBytes)));
    }
    // Bytes below 0x20 or above 0x7F: as signed numbers all of them are below 0x20.
    Mask controlOrHigh() const noexcept
    {
        return mask(vcltq_s8(vreinterpretq_s8_u8(bytes), vdupq_n_s8(0x20)));
    }
    Mask high() const noexcept { return mask(vcgeq_u8(bytes, vdupq_n_u8(0x80))); }
    // Bytes that do not continue a UTF-8 sequence: all but 0x80 to 0xBF.
    Mask leading() const noexcept
    {
        return mask(
            vcgtq_s8(vreinterpretq_s8_u8(bytes), vdupq_n_s8(static_cast<std::int8_t>(0xBF))));
    }
    // Bytes that lead three of which any continuation is a character: E1 to EC.
    Mask wholeLeads() const noexcept { return mask(inRange(bytes, 0xE1, 0xEC)); }
    // The mask of these bytes: bit i stands for byte i.
    static constexpr Mask maskOf(std::uint32_t bits) noexcept
    {
        Mask mask = 0;
        for (std::size_t i = 0; i < kWidth; ++i) mask |= Mask{bits >> i & 1} << (4 * i);
        return mask;
    }
    Mask differing(const NeonBlock& other) const noexcept
    {
        return mask(vmvnq_u8(vceqq_u8(bytes, other.bytes)));
    }
    Mask notBlank() const noexcept
    {
        return mask(vmvnq_u8(vorrq_u8(vorrq_u8(is(' '), is('\n')), vorrq_u8(is('\t'), is('\r')))));
    }
    // Bytes that are no ASCII name character: neither letter nor digit nor one of "-._".
    Mask notName() const noexcept
    {
        const uint8x16_t lower = vorrq_u8(bytes, vdupq_n_u8(0x20));
        const uint8x16_t digits = vbicq_u8(inRange(bytes, '-', '9'), is('/'));
        return mask(vmvnq_u8(vorrq_u8(vorrq_u8(inRange(lower, 'a', 'z'), digits), is('_'))));
    }

    // What `m` can tell of the first `size` bytes, of at least one.
    static Mask firstBytes(std::size_t size) noexcept { return ~Mask{0} >> (64 - 4 * size); }
    static std::size_t first(Mask m) noexcept
    {
        return static_cast<std::size_t>(std::countr_zero(m)) / 4;
    }

private:
    uint8x16_t is(std::uint8_t byte) const noexcept { return vceqq_u8(bytes, vdupq_n_u8(byte)); }
    static uint8x16_t inRange(uint8x16_t v, std::uint8_t first, std::uint8_t last) noexcept
    {
        return vcltq_u8(vsubq_u8(v, vdupq_n_u8(first)),
                        vdupq_n_u8(static_cast<std::uint8_t>(last - first + 1)));
    }
    static Mask mask(uint8x16_t v) noexcept
    {
        const uint8x8_t narrowed = vshrn_n_u16(vreinterpretq_u16_u8(v), 4);
        return vget_lane_u64(vreinterpret_u64_u8(narrowed), 0) & UINT64_C(0x1111111111111111);
    }
};

}  // namespace netxml
