#include "support/heap.hpp"

#include <cstdlib>

namespace netxml::heap {

void* allocate(std::size_t size) noexcept
{
    return std::malloc(size);
}

void* allocateZeroed(std::size_t size) noexcept
{
    return std::calloc(1, size);
}

void* resize(void* block, std::size_t size) noexcept
{
    return std::realloc(block, size);
}

void release(void* block) noexcept
{
    std::free(block);
}

}  // namespace netxml::heap
