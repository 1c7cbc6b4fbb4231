// Regular expressions of the pattern facet, compiled once for as long as a cache of them lives.
#pragma once

#include "support/heap.hpp"

#include <cstddef>
#include <cstdint>
#include <regex.h>

namespace netxml {

class PatternCache {
public:
    PatternCache() noexcept = default;
    PatternCache(const PatternCache&) = delete;
    PatternCache& operator=(const PatternCache&) = delete;
    ~PatternCache() noexcept;

    // XML_IsMatchRegex() for a pattern that lives as long as the cache. Where memory for keeping
    // it runs out, the pattern is compiled for this once.
    bool matches(const char* pattern, const char* text) noexcept;

private:
    struct Entry {
        Entry* next;
        const char* pattern;
        regex_t compiled;
        bool usable;  // false: it does not compile, so nothing matches
    };
    static constexpr std::size_t kBuckets = 32;
    static constexpr std::size_t kInline = 16;

    Entry* find(const char* pattern, std::size_t bucket) const noexcept;
    Entry* add(const char* pattern, std::size_t bucket) noexcept;
    bool isInline(const Entry* entry) const noexcept;

    static constexpr std::size_t kRecent = 8;

    Entry* buckets_[kBuckets] = {};
    Entry* recent_[kRecent] = {};  // by the pattern's address
    std::size_t inlineUsed_ = 0;
    Entry inline_[kInline];
};

}  // namespace netxml
