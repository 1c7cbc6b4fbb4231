#include "support/keyed_hash.hpp"

#include <bit>
#include <cstring>
#include <ctime>

#if defined(__linux__) || defined(__FreeBSD__) || defined(__OpenBSD__) || defined(__APPLE__)
#include <sys/random.h>
#include <unistd.h>
#endif

namespace netxml {
namespace {

class SipState {
public:
    explicit SipState(HashKey key) noexcept
        : v0_{key.k0 ^ UINT64_C(0x736f6d6570736575)}, v1_{key.k1 ^ UINT64_C(0x646f72616e646f6d)},
          v2_{key.k0 ^ UINT64_C(0x6c7967656e657261)}, v3_{key.k1 ^ UINT64_C(0x7465646279746573)}
    {
    }

    // Takes a text and its length, so that neighbouring texts cannot be split another way.
    void text(const void* bytes, std::size_t size) noexcept
    {
        const auto* p = static_cast<const unsigned char*>(bytes);
        for (std::size_t left = size; left != 0;) {
            const std::size_t n = left < 8 ? left : 8;
            std::uint64_t word = 0;
            std::memcpy(&word, p, n);
            block(word);
            p += n;
            left -= n;
        }
        block(size);
    }

    std::uint64_t finish() noexcept
    {
        v2_ ^= 0xFF;
        round();
        round();
        round();
        return v0_ ^ v1_ ^ v2_ ^ v3_;
    }

private:
    void block(std::uint64_t word) noexcept
    {
        v3_ ^= word;
        round();
        v0_ ^= word;
    }
    void round() noexcept
    {
        v0_ += v1_;
        v1_ = std::rotl(v1_, 13) ^ v0_;
        v0_ = std::rotl(v0_, 32);
        v2_ += v3_;
        v3_ = std::rotl(v3_, 16) ^ v2_;
        v0_ += v3_;
        v3_ = std::rotl(v3_, 21) ^ v0_;
        v2_ += v1_;
        v1_ = std::rotl(v1_, 17) ^ v2_;
        v2_ = std::rotl(v2_, 32);
    }

    std::uint64_t v0_, v1_, v2_, v3_;
};

}  // namespace

HashKey randomHashKey() noexcept
{
    HashKey key{};
#if defined(__linux__) || defined(__FreeBSD__) || defined(__OpenBSD__) || defined(__APPLE__)
    if (getentropy(&key, sizeof key) == 0) return key;
#endif
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    key.k0 =
        reinterpret_cast<std::uintptr_t>(&key) ^ (static_cast<std::uint64_t>(now.tv_nsec) << 32);
    key.k1 =
        reinterpret_cast<std::uintptr_t>(&randomHashKey) ^ static_cast<std::uint64_t>(now.tv_sec);
    return key;
}

std::uint64_t hashPair(HashKey key, const void* a, std::size_t aSize, const void* b,
                       std::size_t bSize) noexcept
{
    SipState state{key};
    state.text(a, aSize);
    state.text(b, bSize);
    return state.finish();
}

}  // namespace netxml
