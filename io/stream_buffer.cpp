#include "io/stream_buffer.hpp"

#include "support/checked.hpp"
#include "support/heap.hpp"

#include <cstring>

namespace netxml {

void StreamBuffer::compact() noexcept
{
    if (mark_ == base_) return;
    if (allocated_ == 0) {
        capacity_ -= static_cast<std::uint64_t>(mark_ - base_);
        base_ = mark_;
        return;
    }
    const std::ptrdiff_t distance = mark_ - base_;
    std::memmove(base_, mark_, static_cast<std::size_t>(end_ - mark_));
    mark_ -= distance;
    cursor_ -= distance;
    end_ -= distance;
}

bool StreamBuffer::enlarge(std::size_t request) noexcept
{
    std::size_t step = kGrowthStep;
    std::size_t capacity = 0;
    if (request != 0 && !roundUp(request, kGrowthStep, step)) return false;
    if (!addSizes(static_cast<std::size_t>(capacity_), step, capacity)) return false;
    if (capacity > allocated_) {
        const bool canDouble = capacity < SIZE_MAX / 2 && allocated_ != 0;
        if (!(canDouble && reallocate(capacity * 2)) && !reallocate(capacity)) return false;
    }
    capacity_ = capacity;
    return true;
}

bool StreamBuffer::reallocate(std::size_t size) noexcept
{
    std::uint8_t* block = static_cast<std::uint8_t*>(allocated_ != 0 ? heap::resize(base_, size)
                                                                     : heap::allocate(size));
    if (!block) return false;
    const std::size_t used = static_cast<std::size_t>(end_ - base_);
    if (allocated_ == 0 && used != 0) std::memcpy(block, base_, used);
    mark_ = block + (mark_ - base_);
    cursor_ = block + (cursor_ - base_);
    base_ = block;
    end_ = block + used;
    allocated_ = size;
    return true;
}

void StreamBuffer::release() noexcept
{
    if (allocated_ != 0) heap::release(base_);
    base_ = mark_ = cursor_ = end_ = nullptr;
    capacity_ = 0;
    allocated_ = 0;
}

}  // namespace netxml
