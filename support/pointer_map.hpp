// What is known of records, found by their address: the first ones here, many on the heap. Open
// addressing, at most three quarters full.
#pragma once

#include "support/heap.hpp"

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace netxml {

// `Inline` is how many slots lie in the map itself, a power of two.
template <class Value, std::size_t Inline>
class PointerMap {
    static_assert(std::is_trivially_copyable_v<Value> && (Inline & (Inline - 1)) == 0);

public:
    PointerMap() noexcept = default;
    PointerMap(const PointerMap&) = delete;
    PointerMap& operator=(const PointerMap&) = delete;

    // What is known of a record, or nullptr. The pointer ends with the next add().
    Value* find(const void* record) noexcept
    {
        Slot& slot = place(slots_, size_, record);
        return slot.record ? &slot.value : nullptr;
    }

    // The same for a record that becomes known with a zero value; nullptr when memory runs out.
    Value* add(const void* record) noexcept
    {
        if (Value* known = find(record)) return known;
        if (count_ >= size_ / 4 * 3 && !grow()) return nullptr;
        ++count_;
        Slot& slot = place(slots_, size_, record);
        slot.record = record;
        return &slot.value;
    }

private:
    struct Slot {
        const void* record;  // nullptr: free
        Value value;
    };

    // The slot that holds a record, or the free one where it goes.
    static Slot& place(Slot* slots, std::size_t size, const void* record) noexcept
    {
        const std::uint64_t bits = reinterpret_cast<std::uintptr_t>(record) * kMixer;
        std::size_t index = static_cast<std::size_t>(bits >> 32) & (size - 1);
        while (slots[index].record && slots[index].record != record)
            index = (index + 1) & (size - 1);
        return slots[index];
    }

    bool grow() noexcept
    {
        if (size_ > SIZE_MAX / sizeof(Slot) / 2) return false;
        const std::size_t size = size_ * 2;
        heap::Owned<Slot> larger{static_cast<Slot*>(heap::allocateZeroed(size * sizeof(Slot)))};
        if (!larger) return false;
        for (std::size_t i = 0; i < size_; ++i) {
            const Slot& slot = slots_[i];
            if (slot.record) place(larger.get(), size, slot.record) = slot;
        }
        heap_ = std::move(larger);
        slots_ = heap_.get();
        size_ = size;
        return true;
    }

    static constexpr std::uint64_t kMixer = 0x9E3779B97F4A7C15u;

    Slot inline_[Inline] = {};
    heap::Owned<Slot> heap_;
    Slot* slots_ = inline_;
    std::size_t size_ = Inline;
    std::size_t count_ = 0;
};

}  // namespace netxml
