// Work of the library, counted: the basic blocks it passes through, and the bytes it has the C
// library copy, compare, search and convert. The same input always costs the same.
#pragma once

#include <cstdint>
#include <functional>

// Counts while `work` runs. A block of sixteen bytes in a call of the C library counts as one.
std::uint64_t workOf(const std::function<void()>& work);
