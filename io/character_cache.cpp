#include "io/character_cache.hpp"

#include "support/heap.hpp"

#include <cstring>

namespace netxml {

char* CharacterCache::convert(iconv_t converter, const std::uint8_t*& p, const std::uint8_t* end,
                              char* to) noexcept
{
    if (!table_) table_ = static_cast<Table*>(heap::allocateZeroed(sizeof(Table)));
    if (!table_) return to;
    const std::uint8_t* from = p;
    for (bool goesOn = true; goesOn;) {
        const std::uint8_t* start = from;
        for (; end - from >= 3 && (from[0] & 0xF0) == 0xE0; from += 3) {
            if (!put(converter, (from[0] & 0x0Fu) << 6 | (from[1] & 0x3Fu), from[2], to)) break;
        }
        for (; end - from >= 2 && from[0] >= 0xC0 && from[0] < 0xE0; from += 2) {
            if (!put(converter, kThree + (from[0] & 0x1Fu), from[1], to)) break;
        }
        goesOn = from != start;
    }
    p = from;
    return to;
}

bool CharacterCache::putFour(const Block& block, std::size_t at, char*& to) noexcept
{
    if (block.fours[at][0] == 0) return false;
    std::memcpy(to, block.fours[at], 4);
    to += 4;
    return true;
}

// Sixty-four characters by themselves: where one has no form, the others still may.
const CharacterCache::Block* CharacterCache::fill(iconv_t converter, std::size_t index) noexcept
{
    auto* block = static_cast<Block*>(memory_.allocate(sizeof(Block)));
    if (!block) return nullptr;
    for (std::size_t i = 0; i < kSize; ++i) {
        const bool three = index < kThree;
        const auto last = static_cast<std::uint8_t>(0x80 | i);
        const std::uint8_t character[3] = {
            static_cast<std::uint8_t>(three ? 0xE0 | index >> 6 : 0xC0 | (index - kThree)),
            three ? static_cast<std::uint8_t>(0x80 | (index & 0x3F)) : last, last};
        std::uint8_t converted[8] = {};
        ConvertInput in{character, character + (three ? 3 : 2)};
        ConvertOutput out{converted, converted + sizeof converted};
        const bool done = convertThrough(converter, in, out) == ConvertEnd::Done;
        const auto size = out.cursor - converted;
        std::memset(block->pairs[i], 0, 2);
        std::memset(block->fours[i], 0, 4);
        if (done && size == 2) std::memcpy(block->pairs[i], converted, 2);
        if (done && size == 4) std::memcpy(block->fours[i], converted, 4);
    }
    table_->blocks[index] = block;
    return block;
}

}  // namespace netxml
