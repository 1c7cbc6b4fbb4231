// An allocator that counts, to be preloaded. It counts what the blocks really take, the header of
// each included, as the C library hands them out. For programs of one thread.
#include "heap_count.hpp"

#include <algorithm>
#include <cerrno>
#include <malloc.h>

extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);
void __libc_free(void*);
}

namespace {

constexpr std::size_t kHeader = sizeof(std::size_t);
netxml::bench::HeapCount count{};

void* taken(void* block)
{
    if (block) count.live += malloc_usable_size(block) + kHeader;
    count.peak = std::max(count.peak, count.live);
    return block;
}

void given(std::size_t size)
{
    if (size != 0) count.live -= size + kHeader;
}

}  // namespace

#define EXPORT extern "C" __attribute__((visibility("default")))

EXPORT netxml::bench::HeapCount netxml_bench_heap_count()
{
    const netxml::bench::HeapCount read = count;
    count.peak = count.live;
    return read;
}

EXPORT void* malloc(std::size_t size)
{
    return taken(__libc_malloc(size));
}
EXPORT void* calloc(std::size_t items, std::size_t size)
{
    return taken(__libc_calloc(items, size));
}
EXPORT void* memalign(std::size_t alignment, std::size_t size)
{
    return taken(__libc_memalign(alignment, size));
}
EXPORT void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    return memalign(alignment, size);
}
EXPORT int posix_memalign(void** block, std::size_t alignment, std::size_t size)
{
    *block = memalign(alignment, size);
    return *block ? 0 : ENOMEM;
}
EXPORT void free(void* block)
{
    given(block ? malloc_usable_size(block) : 0);
    __libc_free(block);
}
EXPORT void* realloc(void* block, std::size_t size)
{
    const std::size_t before = block ? malloc_usable_size(block) : 0;
    void* const moved = __libc_realloc(block, size);
    if (moved || size == 0) given(before);
    return taken(moved);
}
