// What iconv makes of the characters that most texts beyond ASCII consist of, asked once for each:
// from UTF-8 of two or three bytes to an encoding that has two or four for them.
#pragma once

#include "io/converter.hpp"
#include "support/chunk_stack.hpp"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace netxml {

class CharacterCache {
public:
    CharacterCache() = default;
    CharacterCache(const CharacterCache&) = delete;
    CharacterCache& operator=(const CharacterCache&) = delete;
    ~CharacterCache() { heap::release(table_); }

    // Converts a run of such characters as far as it goes: up to the first that is none, or that
    // has no form of two or four bytes. There must be room for twice the input in `to`, whose end
    // is returned. `converter` goes from UTF-8 to the other encoding, and converts each character
    // without regard to its neighbours; all of `p` is valid UTF-8.
    char* convert(iconv_t converter, const std::uint8_t*& p, const std::uint8_t* end,
                  char* to) noexcept;

private:
    static constexpr std::size_t kSize = 64;  // last bytes, 80 to BF
    static constexpr std::size_t kThree =
        std::size_t{16} * 64;                            // blocks: leads E0 to EF, second bytes
    static constexpr std::size_t kBlocks = kThree + 32;  // and leads C0 to DF

    struct Block {
        char pairs[kSize][2];  // zeros where the form is not of two bytes
        char fours[kSize][4];  // zeros where it is not of four
    };
    struct Table {
        const Block* blocks[kBlocks];
    };

    // Writes the form of the character with this last byte; false when there is none. Two bytes are
    // most: nothing else is looked at for them.
    [[gnu::always_inline]] bool put(iconv_t converter, std::size_t index, std::uint8_t last,
                                    char*& to) noexcept
    {
        const Block* block = table_->blocks[index];
        if (!block) block = fill(converter, index);
        if (!block) return false;
        const std::size_t at = last & 0x3Fu;
        std::uint16_t pair;
        std::memcpy(&pair, block->pairs[at], sizeof pair);
        if (pair == 0) [[unlikely]]
            return putFour(*block, at, to);
        std::memcpy(to, &pair, sizeof pair);
        to += sizeof pair;
        return true;
    }
    static bool putFour(const Block& block, std::size_t at, char*& to) noexcept;
    const Block* fill(iconv_t converter, std::size_t index) noexcept;

    Table* table_ = nullptr;
    InlineChunkStack<16> memory_;
};

}  // namespace netxml
