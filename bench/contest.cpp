#include "contest.hpp"

#include "heap_count.hpp"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <malloc.h>

namespace netxml::bench {

// The threshold from which blocks are mapped has an upper limit; that nothing is mapped has none.
void keepMemory()
{
    const bool kept = mallopt(M_MMAP_MAX, 0) && mallopt(M_TRIM_THRESHOLD, INT_MAX) &&
                      mallopt(M_TOP_PAD, 64 << 20);
    require(kept, "the allocator takes no advice");
}

// The name is known to bench/profile, which counts within this function only.
[[gnu::noinline]] void runTimes(Work& work, std::size_t runs)
{
    for (std::size_t i = 0; i < runs; ++i) work.run();
}

namespace {

void report(benchmark::State& state, const Document& document, const std::optional<Tally>& counted)
{
    if (!counted) return;
    const Tally& tally = *counted;
    if (document.elements != 0) requireSame(tally.elements, document.elements, "elements");
    const std::pair<const char*, std::uint64_t> counters[] = {{"elements", tally.elements},
                                                              {"attributes", tally.attributes},
                                                              {"characters", tally.characters}};
    for (const auto& [name, value] : counters)
        if (value != 0) state.counters[name] = static_cast<double>(value);
}

// One run alone, with the allocator watched.
void countHeap(benchmark::State& state, ReadHeapCount read, Work& work)
{
    work.prepare(1);
    const std::size_t before = read().live;
    work.run();
    const HeapCount after = read();
    state.counters["heap_kept"] = static_cast<double>(after.live - before);
    state.counters["heap_peak"] = static_cast<double>(after.peak - before);
    work.tidy();
}

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

// The clock's readings are taken until enough time has been measured, or much more has passed: what
// is prepared and tidied up takes time, too. The first reading does not count: it meets memory that
// nobody has touched yet.
class Readings {
public:
    Readings()
    {
        if (const char* wish = std::getenv("NETXML_BENCH_SECONDS"))
            wanted_ = Seconds{std::strtod(wish, nullptr)};
    }
    void add(Seconds measured, std::size_t runs)
    {
        if (warm_) seconds_.push_back(measured.count() / static_cast<double>(runs));
        if (warm_) spent_ += measured;
        warm_ = true;
    }
    bool wanted() const
    {
        const Seconds passed = Clock::now() - start_;
        if (seconds_.size() < kFewest) return seconds_.empty() || passed < kLongest;
        return spent_ < wanted_ && passed < 4 * wanted_;
    }
    std::size_t count() const { return seconds_.size(); }
    double median()
    {
        const auto middle = seconds_.begin() + static_cast<std::ptrdiff_t>(count() / 2);
        std::nth_element(seconds_.begin(), middle, seconds_.end());
        return *middle;
    }

private:
    static constexpr std::size_t kFewest = 3;
    static constexpr Seconds kLongest{20};

    Seconds wanted_{0.05};
    Seconds spent_{0};
    Clock::time_point start_ = Clock::now();
    std::vector<double> seconds_;
    bool warm_ = false;
};

// A small document is measured several times under one reading of the clock, whose own cost would
// show otherwise. What the runs leave is tidied up behind it. The result is the median of the
// readings: a disturbance in a few of them does not move it.
void measure(benchmark::State& state, const Operation& operation, const std::string& name)
{
    constexpr std::size_t kBatchBytes = 65536;
    constexpr std::size_t kCheckEvery = 64;
    const Document document = makeDocument(name);
    const std::size_t batch = std::max<std::size_t>(1, kBatchBytes / document.text.size());
    const std::unique_ptr<Work> work = operation.make(document);
    if (const ReadHeapCount read = heapCounter()) countHeap(state, read, *work);
    Readings readings;
    std::size_t runs = 0;
    do {
        work->prepare(batch);
        const auto start = Clock::now();
        runTimes(*work, batch);
        readings.add(Clock::now() - start, batch);
        runs += batch;
        if (readings.count() % kCheckEvery == 0) report(state, document, work->check());
        work->tidy();
    } while (readings.wanted());
    for (auto _ : state) state.SetIterationTime(readings.median());
    state.counters["runs"] = static_cast<double>(runs);
    state.counters["size"] = static_cast<double>(document.text.size());
    state.SetBytesProcessed(static_cast<int64_t>(document.text.size()));
}

// A peer may refuse a file that is not ours, and is left out then; anything else ends the program.
void measureOrSkip(benchmark::State& state, const Operation& operation, const std::string& name)
try {
    measure(state, operation, name);
} catch (const Refused& refusal) {
    if (!makeDocument(name).real) throw;
    state.SkipWithError(refusal.what());
}

}  // namespace

int runContest(int argc, char** argv, const std::vector<Operation>& operations)
{
    const char* keep = std::getenv("NETXML_BENCH_KEEP");
    if (keep && std::strcmp(keep, "1") == 0) keepMemory();
    const std::vector<std::string> documents = documentNames();
    for (const Operation& operation : operations) {
        for (const std::string& name : documents) {
            if (!operation.takes(name)) continue;
            benchmark::RegisterBenchmark((std::string{operation.name} + "/" + name).c_str(),
                                         [operation, name](benchmark::State& state) {
                                             measureOrSkip(state, operation, name);
                                         })
                ->Iterations(1)
                ->UseManualTime();
        }
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

}  // namespace netxml::bench
