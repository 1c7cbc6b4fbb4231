// The attribute names of one tag, as far as is needed to see that no two are the same.
#pragma once

#include "parser/qname.hpp"
#include "support/block_word.hpp"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace netxml {

class SeenNames {
public:
    // Its first and its last eight bytes, folded; of a shorter one, the name itself: names
    // of less than eight bytes never share a key.
    [[gnu::always_inline]] static std::uint64_t keyOf(const Span& wide) noexcept
    {
        const std::uint64_t first = WordBlock::load(wide.data).bytes;
        if (wide.size < 8) return first & ((std::uint64_t{1} << (wide.size * 8)) - 1);
        return first ^ std::rotl(WordBlock::load(wide.data + wide.size - 8).bytes, 29);
    }

    [[gnu::always_inline]] void clear() noexcept
    {
        count_ = 0;
        marks_ = 0;
        anyPrefix_ = false;
    }
    bool anyPrefix() const noexcept { return anyPrefix_; }
    // Adds a name. False when there are too many, or when another one may be the same.
    [[gnu::always_inline]] bool add(const QName& name, std::uint64_t key) noexcept
    {
        const std::uint64_t mark = std::uint64_t{1} << (key * UINT64_C(0x9E3779B97F4A7C15) >> 58);
        if ((marks_ & mark) != 0 && holds(name.local.data, name.local.size, key)) return false;
        if (count_ == kMost) return false;
        marks_ |= mark;
        names_[count_++] = {key, name.local.data, name.local.size};
        anyPrefix_ |= !name.prefix.empty();
        return true;
    }

private:
    static constexpr std::size_t kMost = 16;

    struct Name {
        std::uint64_t key;
        const std::uint8_t* text;
        std::size_t size;
    };

    [[gnu::noinline]] bool holds(const std::uint8_t* text, std::size_t size,
                                 std::uint64_t key) const noexcept
    {
        for (std::size_t i = 0; i < count_; ++i) {
            const Name& name = names_[i];
            if (name.key == key && name.size == size && std::memcmp(name.text, text, size) == 0)
                return true;
        }
        return false;
    }

    std::size_t count_ = 0;
    std::uint64_t marks_ = 0;  // one bit for each name, by its key
    bool anyPrefix_ = false;
    Name names_[kMost];
};

}  // namespace netxml
