// Regular expressions of the pattern facet, made ready once for as long as a cache of them lives.
#pragma once

#include "schema/types/pattern_table.hpp"
#include "support/heap.hpp"

#include <cstddef>
#include <cstdint>
#include <regex.h>

namespace netxml {

// An expression that is ready to be asked. Simple ones are a table; the C library's form is made
// when the table cannot tell.
class Pattern {
public:
    enum class [[nodiscard]] Answer : std::uint8_t{No, Yes, NoMemory};

    // XML_IsMatchRegex() with this pattern, where it may be told apart that memory has run out.
    Answer matches(const char* text) noexcept;

private:
    friend class PatternCache;
    enum class Form : std::uint8_t { None, Usable, Broken };

    void start(const char* pattern, bool mayBeTable) noexcept;
    void finish() noexcept;
    Answer ask(const char* text) noexcept;

    Pattern* next_;
    const char* text_;
    PatternTable* table_;  // owned; nullptr: not made
    bool mayBeTable_;      // one is to be made when the pattern is first asked
    Form form_;            // Broken: it does not compile, so nothing matches
    regex_t compiled_;
};

class PatternCache {
public:
    PatternCache() noexcept = default;
    PatternCache(const PatternCache&) = delete;
    PatternCache& operator=(const PatternCache&) = delete;
    ~PatternCache() noexcept;

    // The pattern of that text, which must live as long as the cache; nullptr when memory runs out.
    Pattern* find(const char* pattern) noexcept;

    // XML_IsMatchRegex() for such a pattern. Where memory for keeping it runs out, it is compiled
    // for this once.
    bool matches(const char* pattern, const char* text) noexcept;

    // Whether memory has run out in matches(): then what it said may be wrong.
    bool ranOut() const noexcept { return ranOut_; }

private:
    static constexpr std::size_t kBuckets = 32;
    static constexpr std::size_t kInline = 16;
    static constexpr std::size_t kRecent = 8;

    Pattern* search(const char* pattern, std::size_t bucket) const noexcept;
    Pattern* add(const char* pattern, std::size_t bucket) noexcept;
    bool isInline(const Pattern* pattern) const noexcept;

    Pattern* buckets_[kBuckets] = {};
    Pattern* recent_[kRecent] = {};  // by the address of the text
    std::size_t inlineUsed_ = 0;
    bool ranOut_ = false;
    bool tables_ = false;  // tables say what the C library would; known with the first pattern
    Pattern inline_[kInline];
};

}  // namespace netxml
