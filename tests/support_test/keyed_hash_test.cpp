// The keyed hash against SipHash with one and three rounds as its authors describe it.
#include "support/keyed_hash.hpp"
#include "tests/support/random.hpp"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <vector>

namespace {

bool hasEntropy = true;

}  // namespace

extern "C" {

int __real_getentropy(void* into, std::size_t size);

int __wrap_getentropy(void* into, std::size_t size)
{
    if (hasEntropy) return __real_getentropy(into, size);
    errno = ENOSYS;
    return -1;
}

}  // extern "C"

namespace {

using namespace netxml;

std::uint64_t rotated(std::uint64_t x, unsigned by)
{
    return x << by | x >> (64 - by);
}

struct PlainSip {
    std::uint64_t v[4];

    explicit PlainSip(HashKey key)
        : v{key.k0 ^ 0x736f6d6570736575u, key.k1 ^ 0x646f72616e646f6du,
            key.k0 ^ 0x6c7967656e657261u, key.k1 ^ 0x7465646279746573u}
    {
    }
    void round()
    {
        v[0] += v[1], v[2] += v[3];
        v[1] = rotated(v[1], 13) ^ v[0], v[3] = rotated(v[3], 16) ^ v[2];
        v[0] = rotated(v[0], 32);
        v[2] += v[1], v[0] += v[3];
        v[1] = rotated(v[1], 17) ^ v[2], v[3] = rotated(v[3], 21) ^ v[0];
        v[2] = rotated(v[2], 32);
    }
    void take(std::uint64_t word)
    {
        v[3] ^= word;
        round();
        v[0] ^= word;
    }
    // Words as they lie in memory, the last one filled with zeros; then the length.
    void take(const std::string& text)
    {
        for (std::size_t at = 0; at < text.size(); at += 8) {
            std::string piece = text.substr(at, 8);
            piece.resize(8);
            std::uint64_t word = 0;
            std::memcpy(&word, piece.data(), sizeof word);
            take(word);
        }
        take(text.size());
    }
    std::uint64_t end()
    {
        v[2] ^= 0xFF;
        for (int i = 0; i < 3; ++i) round();
        return v[0] ^ v[1] ^ v[2] ^ v[3];
    }
};

TEST(KeyedHash, IsSipHashOfBothTextsAndTheirLengths)
{
    Random random{42};
    for (int i = 0; i < 500; ++i) {
        const HashKey key{random.below(SIZE_MAX), random.below(SIZE_MAX)};
        std::string texts[2];
        for (std::string& text : texts) {
            for (std::size_t size = random.below(30); size > 0; --size)
                text += static_cast<char>(random.below(256));
        }
        PlainSip plain{key};
        plain.take(texts[0]);
        plain.take(texts[1]);
        ASSERT_EQ(hashPair(key, texts[0].data(), texts[0].size(), texts[1].data(), texts[1].size()),
                  plain.end());
    }
}

// As under a filter of system calls: the clock and where things lie must do.
TEST(KeyedHash, WithoutEntropyKeysStillDiffer)
{
    hasEntropy = false;
    const HashKey one = randomHashKey();
    HashKey two = one;
    for (int i = 0; i < 1000000 && two.k0 == one.k0; ++i) two = randomHashKey();
    hasEntropy = true;
    EXPECT_NE(one.k0, 0u);
    EXPECT_NE(one.k1, 0u);
    EXPECT_NE(one.k0, two.k0) << "the clock has gone on";
}

}  // namespace
