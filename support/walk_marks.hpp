// Marks on records that a walk over a graph has met. What one walk has marked is unmarked for the
// next one, without cost: a mark holds the number of its walk.
#pragma once

#include "support/pointer_map.hpp"

namespace netxml {

// A mark is 1 to 3; 0 is none. `Inline` is how many slots cost no heap, a power of two.
template <std::size_t Inline>
class WalkMarks {
public:
    void beginWalk() noexcept { ++walk_; }

    unsigned get(const void* record) noexcept
    {
        const std::uint64_t* mark = marks_.find(record);
        return mark && *mark >> kBits == walk_ ? static_cast<unsigned>(*mark & kMask) : 0;
    }

    // False when memory runs out. Marking anew never fails.
    [[nodiscard]] bool set(const void* record, unsigned mark) noexcept
    {
        std::uint64_t* place = marks_.add(record);
        if (place) *place = walk_ << kBits | mark;
        return place != nullptr;
    }

private:
    static constexpr unsigned kBits = 2;
    static constexpr std::uint64_t kMask = (1u << kBits) - 1;

    PointerMap<std::uint64_t, Inline> marks_;
    std::uint64_t walk_ = 0;
};

}  // namespace netxml
