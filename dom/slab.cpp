#include "dom/slab.hpp"

namespace netxml {
namespace {

// Releases what the strings are written down in, and the strings if they still are what it says.
void releaseLists(LongStrings* list, bool withStrings) noexcept
{
    while (list) {
        LongStrings* older = list->older;
        for (std::size_t i = 0; withStrings && i < list->count; ++i)
            heap::release(list->strings[i]);
        heap::release(list);
        list = older;
    }
}

void releaseFirst(Slab* first) noexcept
{
    releaseLists(first->longStrings, false);
    heap::release(first);
}

}  // namespace

void releaseArena(Slab* first) noexcept
{
    if (first) releaseLists(first->longStrings, true);
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
    if (isFirst) releaseFirst(slab);
    else heap::release(slab);
    if (!isFirst && first->living.fetch_sub(1, std::memory_order_acq_rel) == 1) releaseFirst(first);
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
    Slab* slab = new (block) Slab{0, false, first_, nullptr, nullptr};
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
    if (first_->living.load(std::memory_order_relaxed) == 0) {
        abandon();  // a slab that nothing was laid into
        return;
    }
    first_->edited = edited_ || !wholeTree;
    if (first_->edited) releaseLists(longStrings_, false);  // nobody will ask
    else first_->longStrings = longStrings_;
    longStrings_ = nullptr;
    first_ = nullptr;
    room_ = {};
}

void Arena::noteHeapString(char* string) noexcept
{
    if (!longStrings_ || longStrings_->count == LongStrings::kMost) {
        auto* list = static_cast<LongStrings*>(heap::allocate(sizeof(LongStrings)));
        if (!list) {
            edited_ = true;
            return;
        }
        list->older = longStrings_;
        list->count = 0;
        longStrings_ = list;
    }
    longStrings_->strings[longStrings_->count++] = string;
}

void Arena::abandon() noexcept
{
    if (first_) first_->longStrings = longStrings_;
    longStrings_ = nullptr;
    releaseArena(first_);
    first_ = nullptr;
    room_ = {};
}

}  // namespace netxml
