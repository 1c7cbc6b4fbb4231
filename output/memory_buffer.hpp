// The growing block of a memory stream.
#pragma once

#include "support/heap.hpp"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace netxml {

struct MemoryBuffer {
    static constexpr std::size_t kStep = 1024;

    char* data;  // nullptr until the first write
    std::size_t used;
    std::size_t capacity;   // the next multiple of kStep strictly above what was needed
    std::size_t allocated;  // the block's true size: it grows by doubling, so that long texts made
                            // of many small writes cost time in proportion

    // Makes room for `size` more bytes; false, and nothing has changed, when memory runs out.
    [[nodiscard]] bool reserve(std::size_t size) noexcept
    {
        return size <= allocated - used || grow(size);
    }
    // Counts `size` bytes that were written into the room behind the used ones.
    void commit(std::size_t size) noexcept
    {
        used += size;
        if (capacity < used) capacity = used / kStep * kStep + kStep;
    }
    [[nodiscard]] bool add(const void* bytes, std::size_t size) noexcept
    {
        if (!reserve(size)) return false;
        if (size != 0) std::memcpy(data + used, bytes, size);
        commit(size);
        return true;
    }
    // Hands the block out, cut to its capacity, and starts afresh.
    char* detach() noexcept;

private:
    bool grow(std::size_t size) noexcept;
    bool reallocate(std::size_t size) noexcept;
};

}  // namespace netxml
