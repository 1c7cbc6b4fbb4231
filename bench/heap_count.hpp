// What heap_count.cpp counts when it is preloaded; a program that runs without it finds no counter.
#pragma once

#include <cstddef>
#include <cstdint>
#include <dlfcn.h>

namespace netxml::bench {

struct HeapCount {
    std::size_t live;  // bytes in use
    std::size_t peak;  // the most since the counter was last asked to forget
};

// The counter: gives both figures, and then forgets the peak.
using ReadHeapCount = HeapCount (*)();

inline ReadHeapCount heapCounter()
{
    return reinterpret_cast<ReadHeapCount>(dlsym(RTLD_DEFAULT, "netxml_bench_heap_count"));
}

}  // namespace netxml::bench
