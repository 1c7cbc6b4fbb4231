// One window of an input stream, text or raw, seen as a buffer: growing and compacting are the same
// for both.
#pragma once

#include "io/in_stream.hpp"

namespace netxml {

class StreamBuffer {
public:
    static StreamBuffer text(XML_IO_InStream& s) noexcept
    {
        return {s.base, s.mark, s.cursor, s.end, s.capacity, s.allocated};
    }
    static StreamBuffer raw(XML_IO_InStream& s) noexcept
    {
        return {s.rawBase, s.rawMark, s.rawCursor, s.rawEnd, s.rawCapacity, s.rawAllocated};
    }

    std::size_t freeSpace() const noexcept
    {
        return static_cast<std::size_t>(capacity_ - static_cast<std::uint64_t>(end_ - base_));
    }
    // Drops what lies before the mark. A caller's block is not written: its window begins later.
    void compact() noexcept;

    // Adds `request` rounded up to the growth step, or one step for 0, to the capacity. On failure
    // the buffer is as it was.
    [[nodiscard]] bool enlarge(std::size_t request) noexcept;

    // Releases the block, unless it is the caller's.
    void release() noexcept;

private:
    StreamBuffer(std::uint8_t*& base, std::uint8_t*& mark, std::uint8_t*& cursor,
                 std::uint8_t*& end, std::uint64_t& capacity, std::size_t& allocated) noexcept
        : base_{base}, mark_{mark}, cursor_{cursor}, end_{end}, capacity_{capacity}, allocated_{
                                                                                         allocated}
    {
    }

    bool reallocate(std::size_t size) noexcept;

    std::uint8_t*& base_;
    std::uint8_t*& mark_;
    std::uint8_t*& cursor_;
    std::uint8_t*& end_;
    std::uint64_t& capacity_;
    std::size_t& allocated_;
};

}  // namespace netxml
