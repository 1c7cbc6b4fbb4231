// Work on many files by several threads, with the results in the order of the files.
#pragma once

#include "outcome.hpp"

#include <cstddef>
#include <functional>

namespace netxml::tool {

// Runs work(0) to work(count - 1) on `threads` threads and hands each outcome to `deliver`, on the
// caller's thread and in order. When that returns false, no further work is begun.
void runInOrder(std::size_t count, unsigned threads,
                const std::function<Outcome(std::size_t)>& work,
                const std::function<bool(Outcome)>& deliver);

}  // namespace netxml::tool
