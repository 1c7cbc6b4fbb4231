// Validation against the plain rules: the same status and the same result, for random schemas and
// documents. What differs is made as small as possible and shown.
//
// NETXML_TEST_SCHEMAS sets the number of pairs, NETXML_TEST_SEED the seed, NETXML_TEST_FIRST the
// number of the first pair, NETXML_TEST_DIFFERENCES after how many differences to end;
// NETXML_TEST_VERBOSE prints how often each code occurs.
#include "tests/support/validation_pair.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <random>

namespace {

struct Histogram {
    std::uint64_t codes[13] = {};
    std::uint64_t failed = 0;
    std::uint64_t broken = 0;
    std::uint64_t tolerated = 0;

    void count(const ValidationPair& pair)
    {
        broken += pair.broken();
        tolerated += pair.tolerated();
        if (pair.plain().status == XML_RET_OK) ++codes[pair.plain().result.code];
        else ++failed;
    }
    void print() const
    {
        for (unsigned code = 0; code < 13; ++code)
            std::printf("code %2u: %llu\n", code, static_cast<unsigned long long>(codes[code]));
        std::printf("failed: %llu; broken schemas: %llu, of them one-sided: %llu\n",
                    static_cast<unsigned long long>(failed),
                    static_cast<unsigned long long>(broken),
                    static_cast<unsigned long long>(tolerated));
    }
};

std::uint64_t setting(const char* name, std::uint64_t otherwise)
{
    const char* value = std::getenv(name);
    return value ? std::strtoull(value, nullptr, 10) : otherwise;
}

// Each pair has a seed of its own, so that one alone can be run again.
std::uint64_t seedOf(std::uint64_t seed, std::uint64_t number)
{
    std::uint64_t mixed = seed * 0x9E3779B97F4A7C15u + number;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
    return mixed ^ (mixed >> 31);
}

TEST(ValidationDifferential, EngineAgreesWithThePlainRules)
{
    const std::uint64_t seed = setting("NETXML_TEST_SEED", std::random_device{}());
    const std::uint64_t count = setting("NETXML_TEST_SCHEMAS", 20000);
    const std::uint64_t first = setting("NETXML_TEST_FIRST", 0);
    const std::uint64_t most = setting("NETXML_TEST_DIFFERENCES", 1);
    std::printf("seed %llu, %llu pairs\n", static_cast<unsigned long long>(seed),
                static_cast<unsigned long long>(count));
    Histogram histogram;
    std::uint64_t differences = 0;
    for (std::uint64_t i = first; i < first + count && differences < most; ++i) {
        Random random{seedOf(seed, i)};
        ValidationPair pair{random};
        const bool agreed = pair.agree();
        histogram.count(pair);
        if (agreed) continue;
        ++differences;
        ADD_FAILURE() << "seed " << seed << " pair " << i << (pair.broken() ? " (broken)" : "")
                      << "\n"
                      << pair.explain();
    }
    if (std::getenv("NETXML_TEST_VERBOSE")) histogram.print();
    if (differences != 0 || count < 20000) return;
    // Every outcome must be met, valid documents often.
    EXPECT_GT(histogram.codes[0], count / 5);
    EXPECT_LT(histogram.codes[0], count * 3 / 5);
    for (unsigned code = 1; code < 13; ++code) EXPECT_GT(histogram.codes[code], 0u) << code;
    EXPECT_GT(histogram.failed, 0u);
}

}  // namespace
