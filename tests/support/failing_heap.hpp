// The heap that the tests link in place of the library's own: it counts, and fails on demand.
#pragma once

#include <cstddef>

// While one lives, the given number of allocations succeed and then `failures` in a row fail (all
// of them by default). Counts the blocks that were made and not released since.
class FailingHeap {
public:
    static constexpr std::size_t kForever = static_cast<std::size_t>(-1);

    explicit FailingHeap(std::size_t allowed, std::size_t failures = kForever);
    FailingHeap(const FailingHeap&) = delete;
    FailingHeap& operator=(const FailingHeap&) = delete;
    ~FailingHeap();

    // Blocks that the code under test still holds.
    static long liveBlocks();
    // Allocations made since this one came to be, failed ones included.
    static std::size_t allocations();
    // True once an allocation was refused.
    static bool refused();
    // Allocations that were refused.
    static std::size_t refusals();
};

// Blocks held by the library in all, and the most bytes it held at a time since the last reset.
long heapLiveBlocks();
std::size_t heapLiveBytes();
std::size_t heapPeakBytes();
void heapResetPeak();

// Releases a block that the library handed out, and counts that.
void heapReleaseHandedOut(void* block);
