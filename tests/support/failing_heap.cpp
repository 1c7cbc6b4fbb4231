#include "tests/support/failing_heap.hpp"

#include "support/heap.hpp"

#include <malloc.h>

#include <atomic>
#include <cstdlib>

namespace {

std::atomic<long> live{0};
std::atomic<std::size_t> liveBytes{0};
std::atomic<std::size_t> peakBytes{0};

// The harness of one test; only the thread that made it is affected.
thread_local bool active = false;
thread_local std::size_t allowed = 0;
thread_local std::size_t failures = 0;
thread_local std::size_t made = 0;
thread_local std::size_t refusedCount = 0;
thread_local long liveBefore = 0;

bool refuses()
{
    if (!active) return false;
    ++made;
    if (made <= allowed) return false;
    if (failures != FailingHeap::kForever && made > allowed + failures) return false;
    ++refusedCount;
    return true;
}

void* counted(void* block)
{
    if (!block) return nullptr;
    ++live;
    const std::size_t now = liveBytes += malloc_usable_size(block);
    for (std::size_t peak = peakBytes; now > peak && !peakBytes.compare_exchange_weak(peak, now);) {
    }
    return block;
}

void uncount(void* block)
{
    if (!block) return;
    --live;
    liveBytes -= malloc_usable_size(block);
}

}  // namespace

FailingHeap::FailingHeap(std::size_t allowedCount, std::size_t failureCount)
{
    active = true;
    allowed = allowedCount;
    failures = failureCount;
    made = 0;
    refusedCount = 0;
    liveBefore = live;
}

FailingHeap::~FailingHeap()
{
    active = false;
}

long FailingHeap::liveBlocks()
{
    return live - liveBefore;
}

std::size_t FailingHeap::allocations()
{
    return made;
}

bool FailingHeap::refused()
{
    return refusedCount != 0;
}

std::size_t FailingHeap::refusals()
{
    return refusedCount;
}

long heapLiveBlocks()
{
    return live;
}

std::size_t heapLiveBytes()
{
    return liveBytes;
}

std::size_t heapPeakBytes()
{
    return peakBytes;
}

void heapResetPeak()
{
    peakBytes = liveBytes.load();
}

void heapReleaseHandedOut(void* block)
{
    netxml::heap::release(block);
}

namespace netxml::heap {

void* allocate(std::size_t size) noexcept
{
    return refuses() ? nullptr : counted(std::malloc(size));
}

void* allocateZeroed(std::size_t size) noexcept
{
    return refuses() ? nullptr : counted(std::calloc(1, size));
}

void* resize(void* block, std::size_t size) noexcept
{
    if (refuses()) return nullptr;
    uncount(block);
    void* moved = std::realloc(block, size);
    if (!moved) {
        counted(block);
        return nullptr;
    }
    return counted(moved);
}

void release(void* block) noexcept
{
    uncount(block);
    std::free(block);
}

}  // namespace netxml::heap
