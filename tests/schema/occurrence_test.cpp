// The closed forms of the occurrence rule against the searches that they stand for.
#include "schema/validate/occurrence.hpp"

#include <gtest/gtest.h>

#include <random>

namespace {

using netxml::Shares;

// The search upward, step by step.
Shares searchMost(uint64_t n, uint64_t min, uint64_t max)
{
    for (uint64_t d = min;; ++d) {
        const uint64_t q = n / d;
        const uint64_t r = n % d;
        if (r == 0) return {true, q};
        if (d == max) return {false, q};
        if (r < q) return {true, q};
        if (d + 1 > n) return {false, q};
    }
}

// The search downward, step by step.
Shares searchFewest(uint64_t n, uint64_t min, uint64_t max)
{
    for (uint64_t d = max;; --d) {
        const uint64_t q = n / d;
        const uint64_t r = n % d;
        if (q == 0 || r == 0) return {true, q};
        if (d == min) return {false, q};
        if (d - r <= q) return {true, q};
    }
}

bool searchOccurs(uint64_t n, uint64_t min, uint64_t max)
{
    if (n < min) return false;
    if (min == 0 && n == 0) return true;
    if (min == 0) min = 1;
    return searchMost(n, min, max).found && searchFewest(n, min, max).found;
}

void expectSame(uint64_t n, uint32_t min, uint32_t max)
{
    SCOPED_TRACE(testing::Message() << "n=" << n << " min=" << min << " max=" << max);
    EXPECT_EQ(netxml::occurs(n, min, max), searchOccurs(n, min, max));
    const uint32_t least = min == 0 ? 1 : min;
    const Shares most = searchMost(n, least, max);
    const Shares fewest = searchFewest(n, least, max);
    EXPECT_EQ(netxml::mostShares(n, least, max).found, most.found);
    if (most.found) {
        EXPECT_EQ(netxml::mostShares(n, least, max).count, most.count);
    }
    EXPECT_EQ(netxml::fewestShares(n, least, max).found, fewest.found);
    EXPECT_EQ(netxml::fewestShares(n, least, max).count, fewest.count);
    const netxml::Repetitions both = netxml::repetitions(n, min, max);
    EXPECT_EQ(both.low, most.found ? fewest.count : 0);
    EXPECT_EQ(both.high, most.found ? most.count : 0);
}

TEST(Occurrence, EqualsTheSearchesForAllSmallNumbers)
{
    for (uint32_t max = 1; max <= 24; ++max) {
        for (uint32_t min = 0; min <= 26; ++min) {
            for (uint64_t n = 0; n <= 160; ++n) expectSame(n, min, max);
        }
    }
}

TEST(Occurrence, EqualsTheSearchesForLargeNumbers)
{
    std::mt19937_64 random{20260611};
    const auto upTo = [&](uint64_t limit) { return random() % (limit + 1); };
    for (int i = 0; i < 30000; ++i) {
        const uint64_t n = upTo(i % 2 == 0 ? 3000 : 200000);
        const uint32_t min = static_cast<uint32_t>(upTo(i % 3 == 0 ? 40 : 2000));
        const uint32_t max = static_cast<uint32_t>(i % 5 == 0 ? UINT32_MAX : 1 + upTo(3000));
        if (n > max && max == UINT32_MAX) continue;
        expectSame(n, min, max);
    }
}

TEST(Occurrence, ABoundOfNothingNeverDivides)
{
    EXPECT_TRUE(netxml::occurs(0, 0, 0));
    EXPECT_FALSE(netxml::occurs(1, 0, 0));
    EXPECT_FALSE(netxml::occurs(0, 1, 0));
    EXPECT_FALSE(netxml::occurs(7, 3, 0));
    EXPECT_EQ(netxml::repetitions(5, 1, 0).low, 0u);
    EXPECT_EQ(netxml::repetitions(5, 1, 0).high, 0u);
}

TEST(Occurrence, TakesCountsBeyond32Bits)
{
    const uint64_t n = uint64_t{1} << 40;
    EXPECT_TRUE(netxml::occurs(n, 0, 1));
    EXPECT_TRUE(netxml::occurs(n, 1, UINT32_MAX));
    EXPECT_EQ(netxml::mostShares(n, 2, 4).count, n / 2);
    EXPECT_EQ(netxml::fewestShares(n, 2, 4).count, n / 4);
}

}  // namespace
