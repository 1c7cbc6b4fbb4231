#include "support/pointer_marks.hpp"

#include <cstring>

namespace netxml {

// The slot that holds a record, or the free one where it goes.
PointerMarks::Slot& PointerMarks::place(Slot* table, std::size_t size,
                                        const void* record) const noexcept
{
    const std::uint64_t bits = reinterpret_cast<std::uintptr_t>(record) * 0x9E3779B97F4A7C15u;
    std::size_t index = static_cast<std::size_t>(bits >> 32) & (size - 1);
    while (table[index].record && table[index].record != record) index = (index + 1) & (size - 1);
    return table[index];
}

PointerMarks::Slot* PointerMarks::find(const void* record) const noexcept
{
    if (table_) {
        Slot& slot = place(table_, size_, record);
        return slot.record ? &slot : nullptr;
    }
    for (std::size_t i = 0; i < count_; ++i) {
        if (inline_[i].record == record) return const_cast<Slot*>(&inline_[i]);
    }
    return nullptr;
}

bool PointerMarks::grow() noexcept
{
    const std::size_t size = table_ ? size_ * 2 : kInline * 4;
    if (size > SIZE_MAX / sizeof(Slot)) return false;
    Slot* table = static_cast<Slot*>(heap::allocateZeroed(size * sizeof(Slot)));
    if (!table) return false;
    const Slot* old = table_ ? table_ : inline_;
    const std::size_t oldSize = table_ ? size_ : count_;
    for (std::size_t i = 0; i < oldSize; ++i) {
        if (old[i].record) place(table, size, old[i].record) = old[i];
    }
    heap::release(table_);
    table_ = table;
    size_ = size;
    return true;
}

bool PointerMarks::set(const void* record, std::uint8_t mark) noexcept
{
    if (Slot* slot = find(record)) {
        slot->mark = mark;
        return true;
    }
    if (!table_ && count_ < kInline) {
        inline_[count_++] = Slot{record, mark};
        return true;
    }
    if ((!table_ || count_ >= size_ / 2) && !grow()) return false;
    place(table_, size_, record) = Slot{record, mark};
    ++count_;
    return true;
}

// A grown table is given back, so that what many records cost is paid by the walk that met them.
void PointerMarks::clear() noexcept
{
    count_ = 0;
    heap::release(table_);
    table_ = nullptr;
    size_ = 0;
}

}  // namespace netxml
