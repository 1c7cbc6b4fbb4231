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
    while (end - from >= 2 && from[0] >= 0xC0 && from[0] < 0xF0) {
        const bool three = from[0] >= 0xE0;
        if (three && end - from < 3) break;
        const std::size_t index =
            three ? (from[0] & 0x0Fu) << 6 | (from[1] & 0x3Fu) : kThree + (from[0] & 0x1Fu);
        const Block* block = blocks[index];
        if (!block) block = fill(converter, index);
        if (!block) break;
        const char* form = block->forms[from[three ? 2 : 1] & 0x3F];
        if (form[0] == 0) break;
        std::memcpy(to, form, 4);
        to += form[2] == 0 ? 2 : 4;
        from += three ? 3 : 2;
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
        if (!done || (size != 2 && size != 4)) std::memset(converted, 0, 4);
        std::memcpy(block->forms[i], converted, 4);
    }
    table_->blocks[index] = block;
    return block;
}

}  // namespace netxml
