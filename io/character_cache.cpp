#include "io/character_cache.hpp"

#include "support/heap.hpp"

#include <cstring>

namespace netxml {

char* CharacterCache::convert(iconv_t converter, const std::uint8_t*& p, const std::uint8_t* end,
                              char* to) noexcept
{
    if (!table_) table_ = static_cast<Table*>(heap::allocateZeroed(sizeof(Table)));
    if (!table_) return to;
    const Block* const* blocks = table_->blocks;
    const std::uint8_t* from = p;
    for (; end - from >= 3 && (from[0] & 0xF0) == 0xE0; from += 3, to += 2) {
        const std::size_t index = (from[0] & 0x0Fu) << 6 | (from[1] & 0x3Fu);
        const Block* block = blocks[index];
        if (!block) block = fill(converter, index);
        if (!block) break;
        std::uint16_t pair;
        std::memcpy(&pair, block->pairs[from[2] & 0x3F], sizeof pair);
        if (pair == 0) break;
        std::memcpy(to, &pair, sizeof pair);
    }
    p = from;
    return to;
}

// Sixty-four characters by themselves: where one has no form, the others still may.
const CharacterCache::Block* CharacterCache::fill(iconv_t converter, std::size_t index) noexcept
{
    auto* block = static_cast<Block*>(memory_.allocate(sizeof(Block)));
    if (!block) return nullptr;
    for (std::size_t i = 0; i < kSize; ++i) {
        const std::uint8_t character[3] = {static_cast<std::uint8_t>(0xE0 | index >> 6),
                                           static_cast<std::uint8_t>(0x80 | (index & 0x3F)),
                                           static_cast<std::uint8_t>(0x80 | i)};
        std::uint8_t converted[8];
        ConvertInput in{character, character + sizeof character};
        ConvertOutput out{converted, converted + sizeof converted};
        const bool isPair =
            convertThrough(converter, in, out) == ConvertEnd::Done && out.cursor == converted + 2;
        if (isPair) std::memcpy(block->pairs[i], converted, 2);
        else std::memset(block->pairs[i], 0, 2);
    }
    table_->blocks[index] = block;
    return block;
}

}  // namespace netxml
