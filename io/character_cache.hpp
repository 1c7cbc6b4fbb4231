// What iconv makes of the characters that most texts beyond ASCII consist of, asked once for
// sixty-four of them at a time: from UTF-8 of three bytes to encodings that have two for them.
#pragma once

#include "io/converter.hpp"
#include "support/chunk_stack.hpp"

#include <cstddef>
#include <cstdint>

namespace netxml {

class CharacterCache {
public:
    CharacterCache() = default;
    CharacterCache(const CharacterCache&) = delete;
    CharacterCache& operator=(const CharacterCache&) = delete;
    ~CharacterCache() { heap::release(table_); }

    // Converts a run of characters of three bytes as far as it goes: up to the first that is none,
    // or that has no form of two bytes. There must be room for two bytes each in `to`, whose end is
    // returned. `converter` goes from UTF-8 to the other encoding, and converts each character
    // without regard to its neighbours; all of `p` is valid UTF-8.
    char* convert(iconv_t converter, const std::uint8_t*& p, const std::uint8_t* end,
                  char* to) noexcept;

private:
    static constexpr std::size_t kBlocks = 1024;  // of the leads E0 to EF with their second bytes
    static constexpr std::size_t kSize = 64;      // third bytes

    struct Block {
        char pairs[kSize][2];  // a pair of zeros where it is not two bytes
    };
    struct Table {
        const Block* blocks[kBlocks];
    };

    const Block* fill(iconv_t converter, std::size_t index) noexcept;

    Table* table_ = nullptr;
    InlineChunkStack<16> memory_;
};

}  // namespace netxml
