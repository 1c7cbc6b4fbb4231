// The cache of double bytes against the converter that it asks.
#include "io/double_byte_cache.hpp"
#include "tests/support/failing_heap.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace netxml;

TEST(DoubleByteCache, SaysWhatTheConverterSaysOfEveryPair)
{
    const ScopedConverter converter{"UTF-8", "GB18030"};
    ASSERT_TRUE(converter);
    DoubleByteCache cache;
    for (int round = 0; round < 2; ++round) {  // asked, and remembered
        for (unsigned pair = 0x8000; pair < 0x10000; ++pair) {
            const std::uint8_t bytes[] = {static_cast<std::uint8_t>(pair >> 8),
                                          static_cast<std::uint8_t>(pair)};
            std::uint8_t expected[8];
            ConvertInput in{bytes, bytes + 2};
            ConvertOutput out{expected, expected + sizeof expected};
            const bool valid = convertThrough(converter.get(), in, out) == ConvertEnd::Done;
            const std::string text{reinterpret_cast<char*>(expected),
                                   valid ? static_cast<std::size_t>(out.cursor - expected) : 0};
            char found[8];
            const std::uint8_t* p = bytes;
            const char* end = cache.convert(converter.get(), p, bytes + 2, found);
            const bool known = p != bytes;
            // A digit makes a character of four bytes; what is below 0x40 ends a pair as ASCII.
            if (known) {
                ASSERT_EQ(std::string(found, static_cast<std::size_t>(end - found)), text) << pair;
            }
            // A few pairs are characters of four bytes in UTF-8: those it leaves.
            const bool isPair = bytes[0] > 0x80 && bytes[0] < 0xFF && bytes[1] >= 0x40;
            ASSERT_EQ(known, valid && isPair && text.size() < 4) << pair;
        }
    }
}

TEST(DoubleByteCache, WithoutMemoryItConvertsNothing)
{
    const FailingHeap heap{0};
    const ScopedConverter converter{"UTF-8", "GB18030"};
    DoubleByteCache cache;
    const std::uint8_t bytes[] = {0xD6, 0xD0};
    const std::uint8_t* p = bytes;
    char found[8];
    EXPECT_EQ(cache.convert(converter.get(), p, bytes + 2, found), found);
    EXPECT_EQ(p, bytes);
}

}  // namespace
