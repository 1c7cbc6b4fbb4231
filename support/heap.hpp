// The only way to memory: plain malloc behind named functions, and owners that give it back.
//
// Blocks that are handed to a caller are released with free(), so there is nothing in front of
// them. Tests link another heap.cpp, which fails on demand and counts.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>

namespace netxml::heap {

// Each returns nullptr when memory runs out.
void* allocate(std::size_t size) noexcept;
void* allocateZeroed(std::size_t size) noexcept;
void* resize(void* block, std::size_t size) noexcept;  // on failure the old block stays
void release(void* block) noexcept;                    // nullptr is allowed

struct Release {
    void operator()(void* block) const noexcept { release(block); }
};

template <class T>
using Owned = std::unique_ptr<T, Release>;

// A zero-filled record, or an empty owner.
template <class T>
Owned<T> make() noexcept
{
    static_assert(std::is_trivially_destructible_v<T>);
    return Owned<T>{static_cast<T*>(allocateZeroed(sizeof(T)))};
}

// A NUL-terminated copy of `size` bytes, or nullptr.
char* copyText(const char* text, std::size_t size) noexcept;

}  // namespace netxml::heap
