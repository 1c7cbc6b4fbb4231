// What a contestant offers, and the program around it: one process measures one library, so that no
// library runs in memory that another one has shaped.
#pragma once

#include "documents.hpp"
#include "tally.hpp"

#include <memory>
#include <optional>
#include <vector>

namespace netxml::bench {

// One operation on one document. Several runs may follow each other before they are checked and
// tidied up.
class Work {
public:
    virtual ~Work() = default;
    virtual void prepare(std::size_t /*runs*/) {}  // before some runs
    virtual void run() = 0;                        // what is measured
    virtual void tidy() {}                         // releases what the runs have left

    // After some runs: what they led to, if it can be counted. Throws when one went wrong.
    virtual std::optional<Tally> check() = 0;
};

struct Operation {
    const char* name;
    std::unique_ptr<Work> (*make)(const Document& document);
    bool (*takes)(std::string_view document);  // by the document's name
};

// Lets the allocator keep what is freed, whatever its size, instead of giving it back to the
// system.
void keepMemory();

// Registers the operations for every document as "OPERATION/DOCUMENT" and runs what the command
// line selects. NETXML_BENCH_SECONDS in the environment says how long each is measured; with
// NETXML_BENCH_KEEP=1 the allocator keeps its memory.
int runContest(int argc, char** argv, const std::vector<Operation>& operations);

}  // namespace netxml::bench
