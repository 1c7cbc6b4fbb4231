// What ends a run when a property does not hold.
#pragma once

#include "fuzz/support/conversion.hpp"
#include "tests/support/failing_heap.hpp"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

// Bytes as a report shows them.
inline std::string visible(std::string_view text)
{
    std::string result;
    for (const char c : text.substr(0, 2000)) {
        char escaped[8];
        const bool plain = (c >= ' ' && c <= '~' && c != '\\') || c == '\n';
        std::snprintf(escaped, sizeof escaped, plain ? "%c" : "\\x%02X",
                      static_cast<unsigned>(static_cast<unsigned char>(c)));
        result += escaped;
    }
    return result;
}

inline void require(bool holds, const char* property)
{
    if (holds) return;
    std::fprintf(stderr, "property does not hold: %s\n", property);
    std::abort();
}

inline void requireSame(std::string_view a, std::string_view b, const char* property)
{
    if (a == b) return;
    std::fprintf(stderr, "property does not hold: %s\n--- one:\n%s\n--- other:\n%s\n", property,
                 visible(a).c_str(), visible(b).c_str());
    std::abort();
}

// Around one input: the library gives back every block that it takes, whatever the input.
class BalancedHeap {
public:
    BalancedHeap() { keepConvertersLoaded(); }
    BalancedHeap(const BalancedHeap&) = delete;
    BalancedHeap& operator=(const BalancedHeap&) = delete;
    ~BalancedHeap() { require(heapLiveBlocks() == before_, "all memory is given back"); }

private:
    long before_ = heapLiveBlocks();
};
