// Memory for texts and records that die in the reverse order of their making: what is open while a
// document is read. Addresses never move; releasing to a mark costs nothing per record.
#pragma once

#include "support/block_copy.hpp"
#include "support/heap.hpp"
#include "support/span.hpp"

#include <cstddef>
#include <cstdint>

namespace netxml {

class ChunkStack {
    struct Chunk {
        Chunk* below;
        std::size_t size;  // of the bytes behind this header
    };

public:
    static constexpr std::size_t kAlign = alignof(void*) > 8 ? alignof(void*) : 8;

    struct Mark {
        Chunk* chunk;
        char* cursor;
    };

    // Starts in the caller's bytes, which must be aligned for any record and outlive the stack.
    ChunkStack(char* first, std::size_t size) noexcept
        : cursor_{first}, end_{first + size}, firstEnd_{first + size}
    {
    }
    ChunkStack(const ChunkStack&) = delete;
    ChunkStack& operator=(const ChunkStack&) = delete;
    ~ChunkStack() noexcept;

    // `size` bytes aligned for any record here, or nullptr when memory runs out.
    void* allocate(std::size_t size) noexcept
    {
        if (size > kLargest) return nullptr;
        const std::size_t rounded = (size + kAlign - 1) & ~(kAlign - 1);
        if (static_cast<std::size_t>(end_ - cursor_) < rounded && !grow(rounded)) return nullptr;
        char* block = cursor_;
        cursor_ += rounded;
        return block;
    }
    // A NUL-terminated copy, or nullptr.
    char* copyText(const std::uint8_t* text, std::size_t size) noexcept;
    // Puts a copy with a NUL and room behind it in place of a text; false, and nothing has changed,
    // when memory runs out.
    [[nodiscard]] bool keep(Span& text) noexcept
    {
        if (text.size > kLargest - 1 - kSpanSlack) return false;
        char* copy = static_cast<char*>(allocate(text.size + 1 + kSpanSlack));
        if (!copy) return false;
        copyTerminated(copy, text);
        text.data = reinterpret_cast<const std::uint8_t*>(copy);
        text.wide = true;
        return true;
    }
    // The same for two texts that come to lie one behind the other.
    [[nodiscard]] bool keepBoth(Span& first, Span& second) noexcept
    {
        constexpr std::size_t kMost = kLargest / 2 - 2 - kSpanSlack;
        if (first.size > kMost || second.size > kMost) return false;
        char* copy = static_cast<char*>(allocate(first.size + second.size + 2 + kSpanSlack));
        if (!copy) return false;
        copyTerminated(copy, first);
        copyTerminated(copy + first.size + 1, second);
        first.data = reinterpret_cast<const std::uint8_t*>(copy);
        second.data = first.data + first.size + 1;
        first.wide = second.wide = true;
        return true;
    }

    Mark mark() const noexcept { return {chunk_, cursor_}; }
    void release(Mark mark) noexcept
    {
        if (mark.chunk != chunk_) dropTo(mark.chunk);
        cursor_ = mark.cursor;
    }

private:
    static constexpr std::size_t kChunkSize = std::size_t{16} * 1024;
    static constexpr std::size_t kLargest = SIZE_MAX / 4;

    bool grow(std::size_t size) noexcept;
    void dropTo(const Chunk* target) noexcept;
    void enter(Chunk* chunk) noexcept;

    char* cursor_;
    char* end_;
    char* firstEnd_;          // of the caller's bytes
    Chunk* chunk_ = nullptr;  // the top one; nullptr while first_ suffices
    Chunk* spare_ = nullptr;  // kept, so that a depth on a border does not allocate again and again
};

// A chunk stack that starts in itself: its first bytes cost no heap.
template <std::size_t Size>
class InlineChunkStack : public ChunkStack {
public:
    InlineChunkStack() noexcept : ChunkStack{first_, Size} {}

private:
    alignas(kAlign) char first_[Size];
};

}  // namespace netxml
