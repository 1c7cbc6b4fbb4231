// What plain content is crossed with, against the same rules for single characters.
#include "parser/beyond_ascii.hpp"
#include "parser/position.hpp"
#include "parser/seen_names.hpp"
#include "tests/support/random.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <set>

namespace {

using namespace netxml;

// Characters of all sizes, some of them damaged, with a little ASCII between them.
std::string textBeyondAscii(Random& random)
{
    std::string text;
    for (std::size_t i = random.below(40); i != 0; --i) {
        text += random.one<const char*>({"\xC3\xA9", "\xE4\xB8\xAD", "\xE6\x96\x87", "\xE1\x80\x80",
                                         "\xEC\xBF\xBF", "\xE0\xA4\x95", "\xED\x9F\xBF",
                                         "\xEE\x80\x80", "\xEF\xBF\xBD", "\xF0\x9F\x98\x80"});
        if (random.percent(5)) text += static_cast<char>(random.below(256));
        if (random.percent(3)) text += "a";
    }
    return text;
}

const std::uint8_t* crossSingly(const std::uint8_t* p, const std::uint8_t* end)
{
    while (p < end && *p >= 0x80) {
        const std::size_t size = stepOf(*p);
        if (static_cast<std::size_t>(end - p) <= size || !isValid(decodeCharacter(p, end))) break;
        p += size;
    }
    return p;
}

TEST(PlainRules, CharactersBeyondAsciiAreCrossedAsOneByOne)
{
    Random random{1};
    for (std::size_t i = randomRounds(200000); i != 0; --i) {
        const GuardedBytes text{textBeyondAscii(random)};
        const std::uint8_t* end = text.data() + text.size();
        ASSERT_EQ(crossBeyondAscii(text.data(), end), crossSingly(text.data(), end)) << i;
    }
}

// A run of three bytes each is left where the next one may need a closer look, not before.
template <class Block>
void crossRuns(std::uint64_t seed)
{
    Random random{seed};
    for (std::size_t i = randomRounds(100000); i != 0; --i) {
        const GuardedBytes text{textBeyondAscii(random)};
        const std::uint8_t* p = text.data();
        const std::uint8_t* end = p + text.size();
        const std::uint8_t* to = crossThreeBytes<Block>(p, end);
        for (; p != to; p += 3) {
            ASSERT_TRUE(*p >= 0xE1 && *p <= 0xEC);
            ASSERT_TRUE(isValid(decodeCharacter(p, end)));
        }
        if (static_cast<std::size_t>(end - to) < Block::kWidth) continue;
        bool whole = true;
        for (std::size_t at = 0; at + 3 <= Block::kWidth; at += 3)
            whole = whole && to[at] >= 0xE1 && to[at] <= 0xEC && (to[at + 1] & 0xC0) == 0x80 &&
                    (to[at + 2] & 0xC0) == 0x80;
        ASSERT_FALSE(whole);
    }
}

TEST(PlainRules, RunsOfThreeBytes)
{
    crossRuns<NativeBlock>(2);
    crossRuns<WordBlock>(3);
}

TEST(PlainRules, PositionsAreCountedAsOneByOne)
{
    Random random{4};
    for (std::size_t i = randomRounds(100000); i != 0; --i) {
        std::string text;
        for (std::size_t left = random.below(60); left != 0; --left)
            text += random.percent(85) ? "x"
                                       : random.one<const char*>({"\n", "\r", "\r\n", "\t",
                                                                  "\xC3\xA9", "\xE4\xB8\xAD"});
        const auto* p = bytesOf(text);
        const std::uint8_t* end = p + random.between(0, text.size());
        const std::uint8_t* bufferEnd = p + text.size();
        Position position{3, 4, bufferEnd};
        position.pass(p, end);
        std::uint32_t line = 3;
        std::uint32_t column = 4;
        for (const std::uint8_t* c = p; c != end; ++c) {
            const bool pair = *c == '\r' && c + 1 != bufferEnd && c[1] == '\n';
            const bool breaks = *c == '\n' || (*c == '\r' && !pair);
            line += breaks;
            if (breaks) column = 1;
            else if ((*c & 0xC0) != 0x80) ++column;
        }
        ASSERT_EQ(position.line(), line);
        ASSERT_EQ(position.column(), column);
    }
}

// Names whose first and last bytes are the same, so that they share a key.
std::string similarName(Random& random)
{
    std::string name = random.percent(50) ? "a" : "interfac";
    for (std::size_t i = random.below(3); i != 0; --i) name += random.one({'1', '2'});
    if (name.size() > 8) name += "interfac";
    return name;
}

TEST(PlainRules, RepeatedNamesAreSeenAndOthersAreNot)
{
    Random random{5};
    for (std::size_t i = randomRounds(50000); i != 0; --i) {
        SeenNames seen;
        seen.clear();
        std::set<std::string> names;
        std::vector<std::string> kept;
        kept.reserve(20);
        for (std::size_t left = random.between(1, 18); left != 0; --left) {
            kept.push_back(similarName(random) + std::string(kSpanSlack, '='));
            const std::string name = kept.back().substr(0, kept.back().size() - kSpanSlack);
            const Span span{bytesOf(kept.back()), name.size(), true, true};
            const bool expected = names.size() < 16 && !names.contains(name);
            ASSERT_EQ(seen.add({{}, span}, SeenNames::keyOf(span)), expected) << name;
            if (expected) names.insert(name);
        }
    }
}

}  // namespace
