// Calls of the C library and of the heap that fail on demand, and what the library holds of them.
//
// The linker leads every call from the library and the tests through here (--wrap); what the C
// library calls by itself is not touched.
#pragma once

#include <cstddef>
#include <string>

// What may fail. An allocation is any way to memory: fresh, zeroed or moved.
enum class Call {
    Allocation,
    ConverterOpen,
    Convert,
    Compile,
    Match,
    Open,
    Status,
    Read,
    Write,
    Sync
};
inline constexpr std::size_t kCalls = 10;

// How: with an error; with one byte where more were asked for; interrupted by a signal; with
// nothing done at all.
enum class Fault { Error, Short, Interrupted, Nothing };

struct FaultPlan {
    const char* name;
    Call call;
    Fault fault;
    std::size_t times;  // in a row, from the n-th call on
};

inline constexpr std::size_t kFromThereOn = static_cast<std::size_t>(-1);

// While one lives, the calls of its kind succeed `allowed` times and then fail as planned.
class FaultInjection {
public:
    FaultInjection(const FaultPlan& plan, std::size_t allowed);
    FaultInjection(const FaultInjection&) = delete;
    FaultInjection& operator=(const FaultInjection&) = delete;
    ~FaultInjection();

    // Calls that were made to fail since this one came to be.
    static std::size_t injected();
};

// What the library has open: heap blocks, converters, compiled patterns, files.
struct Holdings {
    long blocks;
    long converters;
    long patterns;
    long files;

    static Holdings now();
    bool operator==(const Holdings&) const = default;
    std::string text() const;
};

// How often each kind of call was made since the program began.
std::size_t callsMade(Call call);
