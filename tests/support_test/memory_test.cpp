// Stacks, buffers, hashes and scopes that the parser stands on.
#include "support/checked.hpp"
#include "support/chunk_stack.hpp"
#include "support/grow_buffer.hpp"
#include "support/keyed_hash.hpp"
#include "support/prefix_scope.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/random.hpp"

#include <gtest/gtest.h>

#include <deque>
#include <random>
#include <set>
#include <string>

namespace {

using namespace netxml;

TEST(Checked, SizesDoNotWrap)
{
    std::size_t out = 0;
    EXPECT_TRUE(addSizes(SIZE_MAX - 1, 1, out));
    EXPECT_FALSE(addSizes(SIZE_MAX, 1, out));
    EXPECT_TRUE(roundUp(1025, 1024, out));
    EXPECT_EQ(out, 2048u);
    EXPECT_TRUE(roundUp(1024, 1024, out));
    EXPECT_EQ(out, 1024u);
    EXPECT_FALSE(roundUp(SIZE_MAX - 5, 1024, out));
}

TEST(ChunkStack, KeepsAddressesAndContentUntilReleased)
{
    std::mt19937 random{5};
    const FailingHeap heap{100000};
    {
        InlineChunkStack<1024> stack;
        struct Kept {
            ChunkStack::Mark mark;
            char* text;
            std::string content;
        };
        std::deque<Kept> kept;
        for (int step = 0; step < 5000; ++step) {
            if (!kept.empty() && random() % 3 == 0) {
                for (std::size_t n = random() % 10; n != 0 && !kept.empty(); --n) {
                    ASSERT_EQ(kept.back().content, kept.back().text);
                    stack.release(kept.back().mark);
                    kept.pop_back();
                }
            }
            const ChunkStack::Mark mark = stack.mark();
            const std::string content(random() % 50 == 0 ? random() % 40000 : random() % 200,
                                      static_cast<char>('a' + step % 26));
            char* text = stack.copyText(reinterpret_cast<const std::uint8_t*>(content.data()),
                                        content.size());
            ASSERT_EQ(reinterpret_cast<std::uintptr_t>(text) % 8, 0u);
            kept.push_back({mark, text, content});
        }
        for (const Kept& k : kept) ASSERT_EQ(k.content, k.text);
    }
    EXPECT_EQ(FailingHeap::liveBlocks(), 0);
}

TEST(ChunkStack, RefusesWhatCannotBe)
{
    InlineChunkStack<1024> stack;
    EXPECT_EQ(stack.allocate(SIZE_MAX), nullptr);
    EXPECT_EQ(stack.allocate(SIZE_MAX / 2), nullptr);
    EXPECT_EQ(stack.copyText(nullptr, SIZE_MAX), nullptr);
    Span much{nullptr, SIZE_MAX / 2, true};
    Span nothing{};
    EXPECT_FALSE(stack.keep(much));
    EXPECT_FALSE(stack.keepBoth(much, nothing));
    EXPECT_FALSE(stack.keepBoth(nothing, much));
    EXPECT_EQ(netxml::heap::copyText("x", SIZE_MAX), nullptr);
    const FailingHeap none{0};
    EXPECT_NE(stack.allocate(100), nullptr) << "the first bytes need no heap";
    EXPECT_EQ(stack.allocate(100000), nullptr);
}

TEST(GrowBuffer, FailsWithoutChange)
{
    GrowBuffer<int> buffer;
    EXPECT_TRUE(buffer.push(1));
    EXPECT_FALSE(buffer.reserve(SIZE_MAX));
    EXPECT_FALSE(buffer.reserve(SIZE_MAX / sizeof(int)));
    const FailingHeap heap{0};
    EXPECT_FALSE(buffer.reserve(1000));
    EXPECT_EQ(buffer.size(), 1u);
    EXPECT_EQ(buffer[0], 1);
}

TEST(KeyedHash, TellsTextsAndKeysApart)
{
    const HashKey key{1, 2};
    std::set<std::uint64_t> seen;
    for (const char* text : {"", "a", "b", "ab", "ba", "aaaaaaaa", "aaaaaaaaa", "aaaaaaab"})
        EXPECT_TRUE(seen.insert(hashBytes(key, text, std::string{text}.size())).second) << text;
    EXPECT_NE(hashPair(key, "ab", 2, "c", 1), hashPair(key, "a", 1, "bc", 2));
    EXPECT_NE(hashBytes({1, 3}, "a", 1), hashBytes(key, "a", 1));
    EXPECT_EQ(hashBytes(key, "abc", 3), hashBytes(key, "abc", 3));
    const HashKey one = randomHashKey();
    const HashKey two = randomHashKey();
    EXPECT_TRUE(one.k0 != two.k0 || one.k1 != two.k1);
}

// Against a plain list, with few and with many prefixes, and one declared again and again.
TEST(PrefixScope, FindsTheNewest)
{
    std::mt19937 random{6};
    for (std::size_t round = 0; round < 50 / caseStep(8); ++round) {
        PrefixScope scope;
        std::deque<PrefixEntry> entries;
        std::deque<std::string> texts;
        const std::size_t variety = round % 5 == 0 ? 1 : 2 + random() % 300;
        for (int step = 0; step < 2000; ++step) {
            if (random() % 3 == 0 && !entries.empty()) {
                ASSERT_EQ(scope.newest(), &entries.back());
                scope.pop();
                entries.pop_back();
                texts.pop_back();
            } else {
                texts.push_back(std::to_string(random() % variety));
                if (random() % 10 == 0) texts.back().clear();
                entries.push_back({nullptr, nullptr, texts.back(), 0});
                ASSERT_TRUE(scope.push(&entries.back()));
            }
            const std::string wanted =
                random() % 10 == 0 ? "" : std::to_string(random() % (variety + 1));
            const PrefixEntry* found = nullptr;
            for (auto e = entries.rbegin(); e != entries.rend() && !found; ++e) {
                if (e->prefix == wanted) found = &*e;
            }
            ASSERT_EQ(scope.find(wanted), found);
        }
    }
}

TEST(PrefixScope, PushFailsWithoutChange)
{
    PrefixScope scope;
    std::deque<PrefixEntry> entries;
    const FailingHeap heap{0};
    for (;;) {
        entries.push_back({nullptr, nullptr, "p", 0});
        if (!scope.push(&entries.back())) break;
        ASSERT_LT(entries.size(), 100u);
    }
    entries.pop_back();
    EXPECT_EQ(scope.newest(), &entries.back());
    EXPECT_EQ(scope.find("p"), &entries.back());
}

}  // namespace
