// Prefixes in scope: a stack of entries, newest first, that finds the newest of a prefix fast.
//
// A few entries are compared one by one. Past that an index is kept, with a key of its own, so that
// neither many prefixes nor one prefix declared at every level costs more than time in proportion.
#pragma once

#include "support/heap.hpp"
#include "support/keyed_hash.hpp"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace netxml {

// What is pushed; its owner keeps it alive until it is popped. The prefix is empty for the default.
struct PrefixEntry {
    PrefixEntry* older;
    PrefixEntry* sameBucket;
    std::string_view prefix;
    std::size_t depth;  // of the element that declares it
};

class PrefixScope {
public:
    PrefixScope() = default;
    PrefixScope(const PrefixScope&) = delete;
    PrefixScope& operator=(const PrefixScope&) = delete;
    ~PrefixScope() { heap::release(buckets_); }

    PrefixEntry* newest() const noexcept { return newest_; }

    // False, and nothing has changed, when memory runs out.
    [[nodiscard]] bool push(PrefixEntry* entry) noexcept;
    void pop() noexcept;  // the newest

    PrefixEntry* find(std::string_view prefix) const noexcept
    {
        PrefixEntry* entry = newest_;
        if (buckets_) return findInBucket(prefix);
        while (entry && entry->prefix != prefix) entry = entry->older;
        return entry;
    }

private:
    static constexpr std::size_t kFewEntries = 8;

    std::size_t bucketOf(std::string_view prefix) const noexcept
    {
        return static_cast<std::size_t>(hashBytes(key_, prefix.data(), prefix.size())) &
               (bucketCount_ - 1);
    }
    PrefixEntry* findInBucket(std::string_view prefix) const noexcept;
    bool resize(std::size_t count) noexcept;

    PrefixEntry* newest_ = nullptr;
    std::size_t count_ = 0;
    PrefixEntry** buckets_ = nullptr;  // nullptr until there are many
    std::size_t bucketCount_ = 0;
    HashKey key_{};
};

}  // namespace netxml
