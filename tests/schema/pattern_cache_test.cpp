// Patterns that one run keeps compiled. The C library's compiler is stepped in front of, to count.
#include "schema/types/pattern.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/plain_values.hpp"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace {

int compiled = 0;

}  // namespace

extern "C" int regcomp(regex_t* into, const char* pattern, int flags)
{
    using Compiler = int (*)(regex_t*, const char*, int);
    static const auto next = reinterpret_cast<Compiler>(dlsym(RTLD_NEXT, "regcomp"));
    if (!next) std::abort();
    ++compiled;
    return next(into, pattern, flags);
}

namespace {

using netxml::PatternCache;

// As many patterns as fill the room that needs no heap several times over. A class by name is not
// for a table.
std::vector<std::string> manyPatterns()
{
    std::vector<std::string> patterns;
    for (int i = 0; i < 100; ++i) patterns.push_back("^[[:alpha:]]" + std::to_string(i) + "$");
    return patterns;
}

TEST(PatternCache, CompilesEachPatternOnce)
{
    const std::vector<std::string> patterns = manyPatterns();
    const long before = heapLiveBlocks();
    {
        PatternCache cache;
        compiled = 0;
        for (int round = 0; round < 3; ++round) {
            for (std::size_t i = 0; i < patterns.size(); ++i) {
                const std::string text = "a" + std::to_string(i);
                EXPECT_TRUE(cache.matches(patterns[i].c_str(), text.c_str())) << i;
                EXPECT_FALSE(cache.matches(patterns[i].c_str(), (text + "0").c_str())) << i;
            }
        }
        EXPECT_EQ(compiled, 100);
    }
    EXPECT_EQ(heapLiveBlocks(), before);
}

// The text of a pattern counts, not where it stands.
TEST(PatternCache, KnowsACopyOfAPattern)
{
    const std::string first = "^[[:alpha:]]+$";
    const std::string copy = first;
    PatternCache cache;
    compiled = 0;
    EXPECT_TRUE(cache.matches(first.c_str(), "aa"));
    EXPECT_TRUE(cache.matches(copy.c_str(), "aaa"));
    EXPECT_FALSE(cache.matches(copy.c_str(), "1"));
    EXPECT_EQ(compiled, 1);
}

TEST(PatternCache, RemembersWhatDoesNotCompile)
{
    PatternCache cache;
    compiled = 0;
    for (int round = 0; round < 3; ++round) {
        EXPECT_FALSE(cache.matches("(", "("));
        EXPECT_FALSE(cache.matches("[", "["));
        EXPECT_TRUE(cache.matches("", "("));
        EXPECT_TRUE(cache.matches("[[:alpha:]]", "abc"));
    }
    EXPECT_EQ(compiled, 4);
}

TEST(PatternCache, SimpleOnesAreNotCompiledUnlessATextIsBeyondAscii)
{
    PatternCache cache;
    compiled = 0;
    EXPECT_TRUE(cache.matches("^ge-[0-9]+/0/[0-9]{1,2}$", "ge-12/0/47"));
    EXPECT_FALSE(cache.matches("^ge-[0-9]+/0/[0-9]{1,2}$", "ge-12/0/470"));
    EXPECT_EQ(compiled, 0);
    EXPECT_FALSE(cache.matches("^ge-[0-9]+/0/[0-9]{1,2}$", "ge-1\xd6\xd0"));
    EXPECT_TRUE(cache.matches("ge.", "-ge\xd6"));
    EXPECT_EQ(compiled, 2);
}

TEST(PatternCache, TheFirstOnesNeedNoHeap)
{
    const std::vector<std::string> patterns = manyPatterns();
    PatternCache cache;
    const FailingHeap heap{0};
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_TRUE(cache.matches(patterns[i].c_str(), ("a" + std::to_string(i)).c_str()));
    EXPECT_EQ(FailingHeap::allocations(), 0u);
}

// Without memory for keeping it, a pattern is compiled again each time: the same verdicts.
TEST(PatternCache, WorksWithoutMemory)
{
    const std::vector<std::string> patterns = manyPatterns();
    for (std::size_t allowed = 0; allowed < 90; allowed += 7) {
        PatternCache cache;
        const FailingHeap heap{allowed};
        for (int round = 0; round < 2; ++round) {
            for (std::size_t i = 0; i < patterns.size(); ++i) {
                const std::string text = "a" + std::to_string(i);
                EXPECT_TRUE(cache.matches(patterns[i].c_str(), text.c_str())) << i;
                EXPECT_FALSE(cache.matches(patterns[i].c_str(), "b")) << i;
            }
        }
        EXPECT_FALSE(cache.matches("(", "("));
        EXPECT_TRUE(FailingHeap::refused() || allowed >= 84);
    }
}

}  // namespace
