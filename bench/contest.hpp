// What a contestant offers, and the program around it: one process measures one library, so that no
// library runs in memory that another one has shaped.
#pragma once

#include "documents.hpp"

#include <memory>

namespace netxml::bench {

// One operation on one document. Several runs may follow each other before they are checked and
// tidied up.
class Work {
public:
    virtual ~Work() = default;
    virtual void run() = 0;  // what is measured
    virtual void check() {}  // after some runs: throws when an outcome is wrong
    virtual void tidy() {}   // releases what the runs have left
};

struct Operation {
    const char* name;  // "tree", "events", "free", "write", "copy", ...
    std::unique_ptr<Work> (*make)(const Document& document);
};

// Throws std::runtime_error unless both counts are the same.
void requireSame(std::size_t counted, std::size_t expected, const char* what);

// Registers the operations for every document as "OPERATION/DOCUMENT" and runs what the command
// line selects. With NETXML_BENCH_KEEP=1 in the environment the allocator keeps its memory.
int runContest(int argc, char** argv, const Operation* operations, std::size_t count);

template <std::size_t N>
int runContest(int argc, char** argv, const Operation (&operations)[N])
{
    return runContest(argc, argv, operations, N);
}

}  // namespace netxml::bench
