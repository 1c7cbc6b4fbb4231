#include "output/memory_buffer.hpp"

#include "support/checked.hpp"

namespace netxml {

bool MemoryBuffer::grow(std::size_t size) noexcept
{
    std::size_t needed = 0;
    if (!addSizes(used, size, needed) || !addSizes(needed / kStep * kStep, kStep, needed))
        return false;
    if (allocated != 0 && needed < SIZE_MAX / 2 && needed < allocated * 2 &&
        reallocate(allocated * 2))
        return true;
    return reallocate(needed);
}

bool MemoryBuffer::reallocate(std::size_t size) noexcept
{
    char* block = static_cast<char*>(heap::resize(data, size));
    if (!block) return false;
    data = block;
    allocated = size;
    return true;
}

char* MemoryBuffer::detach() noexcept
{
    if (used == 0) {
        heap::release(data);
        data = nullptr;
    } else if (allocated > capacity) {
        static_cast<void>(reallocate(capacity));  // a block that stays too large is no failure
    }
    char* block = data;
    *this = {};
    return block;
}

}  // namespace netxml
