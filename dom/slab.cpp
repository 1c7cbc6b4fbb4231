#include "dom/slab.hpp"

namespace netxml {

void releaseArena(Slab* first) noexcept
{
    while (first) {
        Slab* next = first->next;
        heap::release(first);
        first = next;
    }
}

void dropRecords(Slab* slab, std::uint32_t count) noexcept
{
    // Release what this thread did to the records; acquire what other threads did, before freeing.
    if (slab->living.fetch_sub(count, std::memory_order_acq_rel) != count) return;
    Slab* first = slab->first;
    const bool isFirst = slab == first;
    heap::release(slab);
    if (!isFirst && first->living.fetch_sub(1, std::memory_order_acq_rel) == 1)
        heap::release(first);
}

bool Arena::nextSlab(std::size_t needed) noexcept
{
    const std::size_t wanted = needed + kSlabHeader + kSpanSlack;
    // As much as is expected still; past that, in proportion to what was laid out already.
    std::size_t size = expected_ != 0 ? expected_ : total_ * 2;
    size = size < kSmallestSlab ? kSmallestSlab : size > kSlabSize ? kSlabSize : size;
    if (size < wanted) size = wanted;
    void* block = heap::allocate(size);
    if (!block) return false;
    Slab* current = reinterpret_cast<Slab*>(room_.begin);
    Slab* slab = new (block) Slab{0, false, first_, nullptr};
    if (first_) {
        current->living.store(room_.records, std::memory_order_relaxed);
        current->next = slab;
    } else {
        first_ = slab->first = slab;
    }
    char* begin = static_cast<char*>(block);
    room_ = {begin + kSlabHeader, begin + size - kSpanSlack, begin, 0};
    total_ += size;
    expected_ -= size < expected_ ? size : expected_;
    return true;
}

void Arena::seal(bool wholeTree) noexcept
{
    if (!first_) return;
    reinterpret_cast<Slab*>(room_.begin)->living.store(room_.records, std::memory_order_relaxed);
    std::uint32_t others = 0;
    for (const Slab* slab = first_->next; slab; slab = slab->next) ++others;
    first_->living.fetch_add(others, std::memory_order_relaxed);
    first_->edited = edited_ || !wholeTree;
    first_ = nullptr;
    room_ = {};
}

void Arena::abandon() noexcept
{
    releaseArena(first_);
    first_ = nullptr;
    room_ = {};
}

}  // namespace netxml
