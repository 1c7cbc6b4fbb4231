// Tables of simple patterns, compared with the C library's regular expressions.
#include "schema/types/pattern_table.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/random.hpp"

#include "netxml/schema.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using netxml::PatternTable;
using Answer = PatternTable::Answer;

constexpr const char* kSimple[] = {
    "a",
    "^a",
    "a$",
    "^a$",
    "a|b",
    "^(a|b)$",
    "^a*$",
    "^a+b?$",
    "^a{3}$",
    "^a{2,}$",
    "^a{1,3}$",
    "^a{0,2}b$",
    "^[0-9]$",
    "^[^0-9]$",
    "^[]a]$",
    "^[^]a]$",
    "^[a-]$",
    "^[-a]$",
    "^a.b$",
    "^\\.\\[\\]\\(\\)\\{\\}\\*\\+\\?\\|\\^\\$\\\\\\-\\/$",
    "^[\\]$",
    "^(a(b(c)?)?)+$",
    "(ab)*c",
    "^((a|b){2}){2}$",
    "^(a?){3}$",
    "^(a*)*$",
    "^[0-9]{1,3}(\\.[0-9]{1,3}){3}$",
    "^((25[0-5]|2[0-4][0-9]|1[0-9]{2}|[1-9]?[0-9])\\.){2}x$",
};

constexpr const char* kNotSimple[] = {
    "",
    "^$",
    "()",
    "(|a)",
    "a||b",
    "a|",
    "^a|b$",
    "^a|b",
    "a|b$",
    "[[:digit:]]",
    "[[.a.]]",
    "[[=a=]]",
    "\\1",
    "(a)\\1",
    "\\w",
    "\\d",
    "a**",
    "a+?",
    "*a",
    "(*a)",
    "(",
    ")",
    "a)",
    "[",
    "[a",
    "[z-a]",
    "[a--]",
    "[a-c-e]",
    "[0-9-_]",
    "[^a-b-c]",
    "[a-c--/]",
    "[+--]",
    "a{0}",
    "a{0,0}",
    "a{,3}",
    "a{2,1}",
    "a{100}",
    "a{64}",
    "a{x}",
    "a{1",
    "a{1,x}",
    "a{2}*",
    "a{1,2}{3}",
    "a]",
    "a}",
    "a^b",
    "a$b",
    "(^a)",
    "(a$)",
    "\\",
    "a\\",
    "\xd6\xd0",
    "[\xd6]",
    "[a-\xd6]",
    "[a-[]",
    "[a-",
    "(((((((((a)))))))))",
};

// Every text up to a length over an alphabet that holds what the patterns name.
template <class Each>
void forTexts(const std::string& alphabet, std::size_t longest, Each each)
{
    std::string text;
    each(text);
    for (std::size_t size = 1; size <= longest; ++size) {
        std::size_t count = 1;
        for (std::size_t i = 0; i < size; ++i) count *= alphabet.size();
        for (std::size_t n = 0; n < count; ++n) {
            text.clear();
            for (std::size_t rest = n, i = 0; i < size; ++i, rest /= alphabet.size())
                text += alphabet[rest % alphabet.size()];
            each(text);
        }
    }
}

void expectSame(PatternTable& table, const char* pattern, const std::string& text)
{
    const Answer expected = XML_IsMatchRegex(pattern, text.c_str()) == 1 ? Answer::Yes : Answer::No;
    ASSERT_EQ(table.matches(text.c_str()), expected) << pattern << " on \"" << text << '"';
}

TEST(PatternTableTwin, SaysWhatTheRegularExpressionSays)
{
    for (const char* pattern : kSimple) {
        const auto table = PatternTable::make(pattern);
        ASSERT_TRUE(table) << pattern;
        forTexts("abc0.-]x", 4,
                 [&](const std::string& text) { expectSame(*table, pattern, text); });
    }
}

TEST(PatternTable, LeavesWhatIsNotSimple)
{
    for (const char* pattern : kNotSimple) EXPECT_FALSE(PatternTable::make(pattern)) << pattern;
}

TEST(PatternTable, HoldsSixtyThreePositions)
{
    const std::string most(63, 'a');
    const auto table = PatternTable::make(("^" + most + "$").c_str());
    ASSERT_TRUE(table);
    EXPECT_EQ(table->matches(most.c_str()), Answer::Yes);
    EXPECT_EQ(table->matches((most + "a").c_str()), Answer::No);
    EXPECT_FALSE(PatternTable::make((most + "a").c_str()));
    EXPECT_TRUE(PatternTable::make("a{63}"));
}

// More states than the table has room for: what is found out is not kept.
TEST(PatternTableTwin, GoesOnWhereThereIsNoRoomForAState)
{
    const char* pattern = "^(a|b)*a(a|b){8}$";
    const auto table = PatternTable::make(pattern);
    ASSERT_TRUE(table);
    forTexts("ab", 13, [&](const std::string& text) { expectSame(*table, pattern, text); });
}

TEST(PatternTable, IsUnsureOfWhatIsBeyondAscii)
{
    const auto table = PatternTable::make("^a.$");
    ASSERT_TRUE(table);
    EXPECT_EQ(table->matches("a\xd6\xd0"), Answer::Unsure);
    EXPECT_EQ(table->matches("ab\xd6"), Answer::Unsure);
    EXPECT_EQ(table->matches("b\xd6"), Answer::No);
    const auto open = PatternTable::make("a");
    ASSERT_TRUE(open);
    EXPECT_EQ(open->matches("a\xd6"), Answer::Yes);
    EXPECT_EQ(open->matches("\xd6 a"), Answer::Unsure);
}

TEST(PatternTable, GivesItsMemoryBack)
{
    const long before = heapLiveBlocks();
    EXPECT_TRUE(PatternTable::make("^a$"));
    EXPECT_FALSE(PatternTable::make("("));
    EXPECT_EQ(heapLiveBlocks(), before);
    const FailingHeap heap{0};
    EXPECT_FALSE(PatternTable::make("^a$"));
}

// Patterns made of everything that is simple, and of what is almost.
class RandomPattern {
public:
    explicit RandomPattern(std::uint64_t seed) : random_{seed} {}

    std::string make()
    {
        std::string pattern = alternatives(0);
        if (roll(3) != 0) pattern = "^" + pattern;
        if (roll(3) != 0) pattern += "$";
        return pattern;
    }

    std::string text()
    {
        std::string text;
        for (std::size_t size = roll(9); size > 0; --size) text += "ab01.-"[roll(6)];
        return text;
    }

private:
    std::size_t roll(std::size_t sides) { return random_.below(sides); }

    std::string alternatives(unsigned depth)
    {
        std::string all = sequence(depth);
        while (roll(5) == 0) all += "|" + sequence(depth);
        return all;
    }

    std::string sequence(unsigned depth)
    {
        std::string all;
        for (std::size_t count = 1 + roll(3); count > 0; --count) all += atom(depth) + quantifier();
        return all;
    }

    std::string atom(unsigned depth)
    {
        static const char* const brackets[] = {"[0-9]",   "[a-b]", "[^a]",
                                               "[^0-9.]", "[a.-]", "[]a]"};
        switch (roll(depth < 3 ? 8 : 6)) {
        case 0: return ".";
        case 1: return "\\.";
        case 2: return roll(2) == 0 ? brackets[roll(6)] : bracket();
        case 6:
        case 7: return "(" + alternatives(depth + 1) + ")";
        default: return std::string(1, "ab01-"[roll(5)]);
        }
    }

    std::string bracket()
    {
        static const char* const parts[] = {"a", "-", "]", "^", "0-9", "a-c", "."};
        std::string all = "[";
        for (std::size_t count = 1 + roll(4); count > 0; --count) all += parts[roll(7)];
        return all + "]";
    }

    std::string quantifier()
    {
        static const char* const quantifiers[] = {"*",     "+",     "?",    "{2}",
                                                  "{0,2}", "{1,3}", "{2,}", "{0,}"};
        return roll(2) == 0 ? "" : quantifiers[roll(8)];
    }

    Random random_;
};

TEST(PatternTableTwin, SaysWhatTheRegularExpressionSaysOfRandomPatterns)
{
    RandomPattern random{4711};
    std::size_t simple = 0;
    const std::size_t rounds = randomRounds(2000);
    for (std::size_t i = 0; i < rounds; ++i) {
        const std::string pattern = random.make();
        const auto table = PatternTable::make(pattern.c_str());
        if (!table) continue;
        ++simple;
        for (int n = 0; n < 40; ++n) expectSame(*table, pattern.c_str(), random.text());
    }
    EXPECT_GT(simple, rounds / 2);
}

}  // namespace
