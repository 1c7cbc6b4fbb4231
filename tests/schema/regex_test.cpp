// Regular expressions as callers and the pattern facet have them.
#include "tests/schema/guarded_space.hpp"
#include "tests/support/failing_heap.hpp"

#include "netxml/schema.h"

#include <gtest/gtest.h>

namespace {

struct RegexCase {
    const char* why;
    const char* pattern;
    const char* text;
    uint32_t matches;
};

// clang-format off
constexpr RegexCase kRegexes[] = {
    // why                                   pattern          text       matches
    {"a literal",                            "abc",           "abc",     1},
    {"anywhere in the text (Kept)",          "b",             "abc",     1},
    {"a class anywhere",                     "[0-9]",         "a1b",     1},
    {"unless it is anchored",                "^[0-9]$",       "a1b",     0},
    {"anchored and whole",                   "^[0-9]$",       "1",       1},
    {"cases differ",                         "abc",           "ABC",     0},
    {"extended: alternatives",               "^(a|b)$",       "b",       1},
    {"extended: counts",                     "^a{2,3}$",      "aaa",     1},
    {"extended: too many",                   "^a{2,3}$",      "aaaa",    0},
    {"extended: optional",                   "^ab?c$",        "ac",      1},
    {"an escaped point",                     "^1\\.5$",       "1x5",     0},
    {"a class by name",                      "^[[:digit:]]+$", "123",    1},
    {"a line feed is like any other",        "^a.b$",         "a\nb",    1},
    {"and no end of a line",                 "^b$",           "a\nb",    0},
    {"the empty pattern matches",            "",              "abc",     1},
    {"even nothing",                         "",              "",        1},
    {"nothing against something",            "a",             "",        0},
    {"a bracket that is not closed",         "[",             "[",       0},
    {"a group that is not closed",           "(",             "(",       0},
    {"a count the wrong way round",          "a{3,2}",        "aaa",     0},
    {"a class that does not exist",          "[[:nix:]]",     "n",       0},
    {"a backslash at the end",               "a\\",           "a\\",     0},
    {"no pattern",                           nullptr,         "a",       0},
    {"no text",                              "a",             nullptr,   0},
    {"neither",                              nullptr,         nullptr,   0},
};
// clang-format on

TEST(IsMatchRegex, Matches)
{
    GuardedSpace patterns;
    GuardedSpace texts;
    for (const RegexCase& c : kRegexes) {
        const char* pattern = c.pattern ? patterns.text(c.pattern) : nullptr;
        const char* text = c.text ? texts.text(c.text) : nullptr;
        EXPECT_EQ(XML_IsMatchRegex(pattern, text), c.matches) << c.why;
    }
}

TEST(IsMatchRegex, KeepsNothingOfTheLibrarysHeap)
{
    const long before = heapLiveBlocks();
    EXPECT_EQ(XML_IsMatchRegex("^a+$", "aaa"), 1u);
    EXPECT_EQ(XML_IsMatchRegex("^a+$", "b"), 0u);
    EXPECT_EQ(XML_IsMatchRegex("(", "b"), 0u);
    EXPECT_EQ(heapLiveBlocks(), before);
}

}  // namespace
