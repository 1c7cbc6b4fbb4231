// Copying, comparing and measuring in blocks against the C library.
#include "support/block_copy.hpp"
#include "tests/support/random.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace netxml;

const std::uint8_t* bytesAt(const std::string& text)
{
    return reinterpret_cast<const std::uint8_t*>(text.data());
}

// A text with room behind it, whose bytes repeat often.
std::string roomy(Random& random, std::size_t size)
{
    std::string text(size + kSpanSlack, '#');
    for (std::size_t i = 0; i < size; ++i) text[i] = "ab"[random.below(2)];
    return text;
}

TEST(BlockCopy, EveryLengthIsCopiedWithItsNulAndNothingElseIsLost)
{
    Random random{1};
    for (std::size_t size = 0; size < 150; ++size) {
        for (const bool wide : {false, true}) {
            const std::string text = roomy(random, size);
            std::string to(size + 1 + 2 * kSpanSlack, '.');
            copyTerminated(to.data() + 1, {bytesAt(text), size, true, wide});
            EXPECT_EQ(to[0], '.') << size;
            EXPECT_EQ(to.substr(1, size), text.substr(0, size)) << size;
            EXPECT_EQ(to[size + 1], '\0') << size;
            EXPECT_EQ(to.back(), '.') << size;
        }
    }
}

template <class Block>
void compareAll(std::uint64_t seed)
{
    Random random{seed};
    for (std::size_t i = randomRounds(200000); i != 0; --i) {
        const std::size_t size = random.below(40);
        const std::string a = roomy(random, size);
        std::string b = random.percent(50) ? a : roomy(random, size);
        if (size != 0 && random.percent(30)) b[random.below(size)] ^= 1;
        if (random.percent(50)) b[size] = '!';  // behind the text, which does not matter
        ASSERT_EQ(sameBlocks<Block>(bytesAt(a), bytesAt(b), size),
                  a.compare(0, size, b, 0, size) == 0)
            << a << " " << b;
    }
}

TEST(BlockCopy, ComparesAsTheBytesDo)
{
    compareAll<NativeBlock>(2);
    compareAll<WordBlock>(3);
}

TEST(BlockCopy, FindsTheEndOfAString)
{
    for (std::size_t size = 0; size < 100; ++size) {
        std::string text(size + 1 + kSpanSlack, 'x');
        text[size] = '\0';
        EXPECT_EQ(lengthInBlocks<NativeBlock>(text.c_str()), size);
        EXPECT_EQ(lengthInBlocks<WordBlock>(text.c_str()), size);
    }
}

TEST(BlockCopy, ZeroesRecordsAndNoMore)
{
    struct Bytes {
        char of[200];
    } bytes;
    std::memset(&bytes, '.', sizeof bytes);
    zeroBlocks<104>(bytes.of + 8);
    for (std::size_t i = 0; i < sizeof bytes; ++i)
        EXPECT_EQ(bytes.of[i], i >= 8 && i < 112 ? '\0' : '.') << i;
}

}  // namespace
