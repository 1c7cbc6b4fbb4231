#include "contest.hpp"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <malloc.h>
#include <stdexcept>

namespace netxml::bench {
namespace {

void keepMemory()
{
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
    mallopt(M_TOP_PAD, 64 << 20);
}

// A small document is measured several times under one reading of the clock, whose own cost would
// show otherwise. What the runs leave is tidied up behind it.
void measure(benchmark::State& state, const Operation& operation, const std::string& name)
{
    using Clock = std::chrono::steady_clock;
    constexpr std::size_t kBatchBytes = 65536;
    const Document document = makeDocument(name);
    const std::size_t batch = std::max<std::size_t>(1, kBatchBytes / document.text.size());
    const std::unique_ptr<Work> work = operation.make(document);
    for (auto _ : state) {
        const auto start = Clock::now();
        for (std::size_t i = 0; i < batch; ++i) work->run();
        const std::chrono::duration<double> taken = Clock::now() - start;
        state.SetIterationTime(taken.count() / static_cast<double>(batch));
        work->check();
        work->tidy();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                            static_cast<int64_t>(document.text.size()));
}

}  // namespace

void requireSame(std::size_t counted, std::size_t expected, const char* what)
{
    if (counted == expected) return;
    throw std::runtime_error{std::string{what} + ": " + std::to_string(counted) + " instead of " +
                             std::to_string(expected)};
}

int runContest(int argc, char** argv, const Operation* operations, std::size_t count)
{
    const char* keep = std::getenv("NETXML_BENCH_KEEP");
    if (keep && std::strcmp(keep, "1") == 0) keepMemory();
    for (std::size_t i = 0; i < count; ++i) {
        for (const std::string& name : documentNames()) {
            const Operation& operation = operations[i];
            benchmark::RegisterBenchmark(
                (std::string{operation.name} + "/" + name).c_str(),
                [&operation, name](benchmark::State& state) { measure(state, operation, name); })
                ->UseManualTime();
        }
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

}  // namespace netxml::bench
