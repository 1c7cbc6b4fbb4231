// Walking over UTF-8 text that is mostly, but not surely, well-formed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace netxml::tool {

inline constexpr std::uint32_t kNoCharacter = 0xFFFFFFFF;

constexpr bool continuesCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

struct Character {
    std::uint32_t code;  // kNoCharacter for bytes that are no character
    std::size_t size;    // at least 1
};

// The character at the front of `text`, which is not empty. Bytes that are none are taken together
// with the continuation bytes behind them, as the parser counts its columns.
Character firstCharacter(std::string_view text);

// The offset of the first byte that does not belong to a character, or npos.
std::size_t findBrokenCharacter(std::string_view text);

// Appends a character in UTF-8.
void appendCharacter(std::string& to, std::uint32_t code);

// `text` with a replacement character for whatever a terminal or a JSON reader must not get: broken
// bytes, and control characters other than the tab.
std::string printable(std::string_view text);

}  // namespace netxml::tool
