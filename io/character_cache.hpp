// What iconv makes of the characters that most texts beyond ASCII consist of, asked once for each:
// from UTF-8 of two or three bytes to an encoding that has two or four for them.
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
        char forms[kSize][4];  // two bytes end in zeros; four zeros where there is no such form
    };
    struct Table {
        const Block* blocks[kBlocks];
    };

    const Block* fill(iconv_t converter, std::size_t index) noexcept;

    Table* table_ = nullptr;
    InlineChunkStack<16> memory_;
};

}  // namespace netxml
