// The character classes of XML 1.0, and the decoding of one UTF-8 character.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace netxml {

struct CodeRange {
    std::uint32_t first;
    std::uint32_t last;
};

// clang-format off
inline constexpr CodeRange kValid[] = {  // XML 1.0, Char
    {0x9, 0xA},  {0xD, 0xD},  {0x20, 0xD7FF},  {0xE000, 0xFFFD},  {0x10000, 0x10FFFF},
};
inline constexpr CodeRange kNameStart[] = {  // XML 1.0, NameStartChar without the colon
    {0x41, 0x5A},      {0x5F, 0x5F},      {0x61, 0x7A},      {0xC0, 0xD6},
    {0xD8, 0xF6},      {0xF8, 0x2FF},     {0x370, 0x37D},    {0x37F, 0x1FFF},
    {0x200C, 0x200D},  {0x2070, 0x218F},  {0x2C00, 0x2FEF},  {0x3001, 0xD7FF},
    {0xF900, 0xFDCF},  {0xFDF0, 0xFFFD},  {0x10000, 0xEFFFF},
};
inline constexpr CodeRange kNameMore[] = {  // what NameChar adds
    {0x2D, 0x2E},  {0x30, 0x39},  {0xB7, 0xB7},  {0x300, 0x36F},  {0x203F, 0x2040},
};
// clang-format on

template <std::size_t N>
constexpr bool ascending(const CodeRange (&ranges)[N]) noexcept
{
    for (std::size_t i = 0; i < N; ++i) {
        if (ranges[i].first > ranges[i].last) return false;
        if (i != 0 && ranges[i - 1].last >= ranges[i].first) return false;
    }
    return true;
}
static_assert(ascending(kValid) && ascending(kNameStart) && ascending(kNameMore));

template <std::size_t N>
constexpr bool inRanges(const CodeRange (&ranges)[N], std::uint32_t code) noexcept
{
    for (const CodeRange& range : ranges) {
        if (code <= range.last) return code >= range.first;
    }
    return false;
}

constexpr bool isValid(std::uint32_t code) noexcept
{
    return inRanges(kValid, code);
}
constexpr bool isNameStart(std::uint32_t code) noexcept
{
    return inRanges(kNameStart, code);
}
constexpr bool isName(std::uint32_t code) noexcept
{
    return isNameStart(code) || inRanges(kNameMore, code);
}
constexpr bool isBlank(std::uint8_t byte) noexcept
{
    return byte == 0x20 || byte == 0x09 || byte == 0x0D || byte == 0x0A;
}

// The classes of the ASCII characters by byte, made from the ranges; bytes beyond ASCII have none.
enum : std::uint8_t { kClassValid = 1, kClassNameStart = 2, kClassName = 4, kClassBlank = 8 };

inline constexpr std::array<std::uint8_t, 256> kAsciiClasses = [] {
    std::array<std::uint8_t, 256> classes{};
    for (std::uint8_t byte = 0; byte < 0x80; ++byte) {
        classes[byte] = static_cast<std::uint8_t>(
            (isValid(byte) ? kClassValid : 0) | (isNameStart(byte) ? kClassNameStart : 0) |
            (isName(byte) ? kClassName : 0) | (isBlank(byte) ? kClassBlank : 0));
    }
    return classes;
}();

inline constexpr std::uint32_t kUndecodable = 0xFFFFFFFF;  // in no class

// The character at `p` (p < end), or kUndecodable. Continuation bytes alone and sequences cut short
// are not decodable. Kept: the leads C0, C1 and F5 to FF decode by their low bits; the class tests
// judge the result.
constexpr std::uint32_t decodeCharacter(const std::uint8_t* p, const std::uint8_t* end) noexcept
{
    const std::uint8_t lead = *p;
    if (lead < 0x80) return lead;
    if (lead < 0xC0 || end - p < 2) return kUndecodable;
    const std::uint8_t second = p[1];
    const std::uint8_t least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const std::uint8_t most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (second < least || second > most) return kUndecodable;
    const std::ptrdiff_t size = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (end - p < size) return kUndecodable;
    std::uint32_t code = lead & (size == 2 ? 0x1Fu : size == 3 ? 0x0Fu : 0x07u);
    code = code * 64 + (second & 0x3Fu);
    for (std::ptrdiff_t i = 2; i < size; ++i) {
        if ((p[i] & 0xC0) != 0x80) return kUndecodable;
        code = code * 64 + (p[i] & 0x3Fu);
    }
    return code;
}

// The bytes that an advance over the character with this lead moves; a continuation byte moves like
// the lead that its bits 5 and 4 would make.
constexpr std::size_t stepOf(std::uint8_t lead) noexcept
{
    constexpr std::size_t kSteps[] = {2, 2, 3, 4};
    return lead < 0x80 ? 1 : kSteps[(lead >> 4) & 3];
}

// The value of a digit, decimal or hexadecimal of either case; 16 for any other byte.
constexpr std::uint32_t digitOf(std::uint8_t byte) noexcept
{
    if (byte >= '0' && byte <= '9') return byte - std::uint32_t{'0'};
    const std::uint32_t letter = byte | 0x20u;
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : 16;
}

// Writes a valid character in UTF-8 (1 to 4 bytes) and returns the number of bytes.
constexpr std::size_t encodeCharacter(std::uint32_t code, std::uint8_t* to) noexcept
{
    if (code < 0x80) {
        to[0] = static_cast<std::uint8_t>(code);
        return 1;
    }
    const std::size_t size = code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
    constexpr std::uint8_t kLeads[] = {0, 0, 0xC0, 0xE0, 0xF0};
    for (std::size_t i = size - 1; i != 0; --i, code >>= 6)
        to[i] = static_cast<std::uint8_t>(0x80 | (code & 0x3F));
    to[0] = static_cast<std::uint8_t>(kLeads[size] | code);
    return size;
}

}  // namespace netxml
