// Patterns that one run keeps compiled. The C library's compiler is stepped in front of, to count.
#include "schema/types/pattern.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/plain_values.hpp"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <locale.h>

#include <clocale>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace {

int compiled = 0;
const char* localeName = nullptr;  // what is said instead of the locale's own name
const char* unnamed = "";          // says so where that is NULL
int plainCategory = -1;            // of which "C" is said all the same

}  // namespace

extern "C" char* __real_setlocale(int category, const char* name);

extern "C" char* __wrap_setlocale(int category, const char* name)
{
    if (name || !localeName) return __real_setlocale(category, name);
    if (category == plainCategory) return const_cast<char*>("C");
    return localeName == unnamed ? nullptr : const_cast<char*>(localeName);
}

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

// What a range holds depends on the locale: only where it has the rules of C there are tables.
TEST(PatternCache, TablesAreForThePlainLocale)
{
    struct Case {
        const char* name;
        int compilations;
    };
    constexpr const char* kElsewhere = "C.UTF-8";
    for (const Case& row :
         {Case{"C", 0}, Case{"POSIX", 0}, Case{"en_US.UTF-8", 1}, Case{"", 1}, Case{unnamed, 1}}) {
        PatternCache cache;
        compiled = 0;
        localeName = row.name;
        EXPECT_TRUE(cache.matches("^[a-c]$", "b"));
        localeName = nullptr;
        EXPECT_EQ(compiled, row.compilations) << row.name;
    }
    for (const int category : {LC_CTYPE, LC_COLLATE}) {
        PatternCache cache;
        compiled = 0;
        plainCategory = category;
        localeName = "en_US.UTF-8";
        EXPECT_TRUE(cache.matches("^[a-c]$", "b"));
        localeName = nullptr;
        plainCategory = -1;
        EXPECT_EQ(compiled, 1) << "one of the two is not enough";
    }
#if defined(__GLIBC__)
    PatternCache cache;
    compiled = 0;
    localeName = kElsewhere;
    EXPECT_TRUE(cache.matches("^[a-c]$", "b"));
    localeName = nullptr;
    EXPECT_EQ(compiled, 0);
#else
    static_cast<void>(kElsewhere);
#endif
}

TEST(PatternCache, NoTablesWhereTheThreadHasALocaleOfItsOwn)
{
    const locale_t own = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    ASSERT_NE(own, static_cast<locale_t>(nullptr));
    const locale_t before = uselocale(own);
    {
        PatternCache cache;
        compiled = 0;
        EXPECT_TRUE(cache.matches("^[a-c]$", "b"));
        EXPECT_EQ(compiled, 1);
    }
    uselocale(before);
    freelocale(own);
}

// A cache on the heap has patterns on both sides of it.
TEST(PatternCache, GivesItsMemoryBackWhereverItLies)
{
    const std::vector<std::string> patterns = manyPatterns();
    const long before = heapLiveBlocks();
    for (int round = 0; round < 2; ++round) {
        const auto cache = std::make_unique<PatternCache>();
        for (const std::string& pattern : patterns)
            EXPECT_FALSE(cache->matches(pattern.c_str(), ""));
    }
    EXPECT_EQ(heapLiveBlocks(), before);
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
