// The blocks of bytes against one byte at a time, and against each other.
#include "support/block.hpp"

#include "parser/char_classes.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <random>
#include <vector>

namespace {

using namespace netxml;

template <class Block>
void compareMasks(const std::uint8_t* p)
{
    const Block block = Block::load(p);
    typename Block::Mask all[] = {block.equal('<'),      block.equal(0),  block.equal(0xFF),
                                  block.controlOrHigh(), block.high(),    block.leading(),
                                  block.notBlank(),      block.notName(), block.wholeLeads()};
    const auto holds = [](int test, std::uint8_t b) {
        switch (test) {
        case 0: return b == '<';
        case 1: return b == 0;
        case 2: return b == 0xFF;
        case 3: return b < 0x20 || b > 0x7F;
        case 4: return b > 0x7F;
        case 5: return (b & 0xC0) != 0x80;
        case 6: return !isBlank(b);
        case 8: return b >= 0xE1 && b <= 0xEC;
        default: return (kAsciiClasses[b] & kClassName) == 0;
        }
    };
    for (int test = 0; test < 9; ++test) {
        std::size_t count = 0;
        std::size_t first = Block::kWidth;
        for (std::size_t i = 0; i < Block::kWidth; ++i) {
            if (!holds(test, p[i])) continue;
            if (count++ == 0) first = i;
        }
        ASSERT_EQ(static_cast<std::size_t>(std::popcount(all[test])), count) << test;
        if (count == 0) continue;
        ASSERT_EQ(Block::first(all[test]), first) << test;
    }
}

const std::uint8_t* plainStop(const std::uint8_t* p, const std::uint8_t* end)
{
    while (p != end && *p >= 0x20 && *p < 0x80 && *p != '<' && *p != '&' && *p != ']') ++p;
    return p;
}

TEST(Block, EveryByteInEveryPlace)
{
    for (int byte = 0; byte < 256; ++byte) {
        for (std::size_t at = 0; at < 16; ++at) {
            std::uint8_t bytes[16];
            for (const int filler : {0x78, 0, 0x80, 0xBF, 0xC0, 0xFF}) {
                std::memset(bytes, filler, sizeof bytes);
                bytes[at] = static_cast<std::uint8_t>(byte);
                compareMasks<NativeBlock>(bytes);
                compareMasks<WordBlock>(bytes);
            }
        }
    }
}

TEST(Block, RandomBytes)
{
    std::mt19937 random{3};
    std::uint8_t bytes[16];
    for (int i = 0; i < 100000; ++i) {
        for (std::uint8_t& b : bytes) b = static_cast<std::uint8_t>(random());
        ASSERT_NO_FATAL_FAILURE(compareMasks<NativeBlock>(bytes));
        ASSERT_NO_FATAL_FAILURE(compareMasks<WordBlock>(bytes));
    }
}

TEST(Block, SearchesAgreeWithTheByteLoop)
{
    std::mt19937 random{4};
    for (int i = 0; i < 50000; ++i) {
        std::vector<std::uint8_t> text(random() % 70);
        for (std::uint8_t& b : text)
            b = static_cast<std::uint8_t>(random() % 40 != 0 ? 'a' + random() % 26 : random());
        const std::uint8_t* p = text.data();
        const std::uint8_t* end = p + text.size();
        const std::uint8_t* stop = plainStop(p, end);
        ASSERT_EQ((findStop<NativeBlock, '<', '&', ']'>(p, end)), stop);
        ASSERT_EQ((findStop<WordBlock, '<', '&', ']'>(p, end)), stop);
        const std::uint8_t* high = p;
        while (high != end && *high < 0x80) ++high;
        ASSERT_EQ(findHigh<NativeBlock>(p, end), high);
        ASSERT_EQ(findHigh<WordBlock>(p, end), high);
        const std::uint8_t* any = p;
        while (any != end && *any != 'q' && *any != 'z') ++any;
        ASSERT_EQ((findAny<NativeBlock, 'q', 'z'>(p, end)), any);
        ASSERT_EQ((findAny<WordBlock, 'q', 'z'>(p, end)), any);
    }
}

}  // namespace
