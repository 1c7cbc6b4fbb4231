// The attribute names of one tag, as far as is needed to see that no two are the same.
#pragma once

#include "parser/qname.hpp"
#include "support/block_word.hpp"

#include <bit>
#include <cstddef>
#include <cstdint>

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

    void clear() noexcept
    {
        count_ = 0;
        anyPrefix_ = false;
    }
    bool anyPrefix() const noexcept { return anyPrefix_; }
    // Adds a name. False when there are too many, or when another one may be the same.
    [[gnu::always_inline]] bool add(const QName& name, std::uint64_t key) noexcept
    {
        for (std::size_t i = 0; i < count_; ++i) {
            if (keys_[i] == key && names_[i].view() == name.local.view()) return false;
        }
        if (count_ == kMost) return false;
        keys_[count_] = key;
        names_[count_] = name.local;
        anyPrefix_ |= !name.prefix.empty();
        ++count_;
        return true;
    }

private:
    static constexpr std::size_t kMost = 16;

    std::size_t count_ = 0;
    bool anyPrefix_ = false;
    std::uint64_t keys_[kMost];
    Span names_[kMost];
};

}  // namespace netxml
