// A mark for each record that a walk over a graph has met: the first ones here, many on the heap.
#pragma once

#include "support/heap.hpp"

#include <cstddef>
#include <cstdint>

namespace netxml {

class PointerMarks {
public:
    PointerMarks() noexcept = default;
    PointerMarks(const PointerMarks&) = delete;
    PointerMarks& operator=(const PointerMarks&) = delete;
    ~PointerMarks() noexcept { heap::release(table_); }

    // The mark of a record, 0 when it has none.
    std::uint8_t get(const void* record) const noexcept
    {
        const Slot* slot = find(record);
        return slot ? slot->mark : 0;
    }

    // False, and nothing has changed, when memory runs out. Marking anew never fails.
    [[nodiscard]] bool set(const void* record, std::uint8_t mark) noexcept;

    void clear() noexcept;

private:
    struct Slot {
        const void* record;
        std::uint8_t mark;
    };
    static constexpr std::size_t kInline = 16;

    Slot* find(const void* record) const noexcept;
    Slot& place(Slot* table, std::size_t size, const void* record) const noexcept;
    bool grow() noexcept;

    std::size_t count_ = 0;
    Slot inline_[kInline];
    Slot* table_ = nullptr;  // open addressing, at most half full; nullptr while inline_ suffices
    std::size_t size_ = 0;   // of the table, a power of two
};

}  // namespace netxml
