#include "schema/types/pattern.hpp"

#include "netxml/schema.h"
#include "support/text_hash.hpp"

#include <cstdint>
#include <cstring>
#include <functional>

namespace netxml {
namespace {

constexpr int kFlags = REG_EXTENDED | REG_NOSUB;

bool run(const regex_t& compiled, const char* text) noexcept
{
    return regexec(&compiled, text, 0, nullptr, 0) == 0;
}

}  // namespace

PatternCache::~PatternCache() noexcept
{
    for (Entry* entry : buckets_) {
        while (entry) {
            Entry* next = entry->next;
            if (entry->usable) regfree(&entry->compiled);
            if (!isInline(entry)) heap::release(entry);
            entry = next;
        }
    }
}

bool PatternCache::matches(const char* pattern, const char* text) noexcept
{
    Entry*& recent = recent_[reinterpret_cast<std::uintptr_t>(pattern) / 8 % kRecent];
    Entry* entry = recent;
    if (!entry || entry->pattern != pattern) {
        const std::size_t bucket = textHash(pattern) % kBuckets;
        entry = find(pattern, bucket);
        if (!entry) entry = add(pattern, bucket);
        recent = entry;
    }
    if (!entry) return XML_IsMatchRegex(pattern, text) == 1;
    return entry->usable && run(entry->compiled, text);
}

PatternCache::Entry* PatternCache::find(const char* pattern, std::size_t bucket) const noexcept
{
    Entry* entry = buckets_[bucket];
    while (entry && std::strcmp(entry->pattern, pattern) != 0) entry = entry->next;
    return entry;
}

PatternCache::Entry* PatternCache::add(const char* pattern, std::size_t bucket) noexcept
{
    Entry* entry = inlineUsed_ < kInline ? &inline_[inlineUsed_++] : heap::make<Entry>().release();
    if (!entry) return nullptr;
    entry->pattern = pattern;
    entry->usable = regcomp(&entry->compiled, pattern, kFlags) == 0;
    entry->next = buckets_[bucket];
    buckets_[bucket] = entry;
    return entry;
}

// std::less orders pointers into different blocks, too.
bool PatternCache::isInline(const Entry* entry) const noexcept
{
    const std::less<const Entry*> before;
    return !before(entry, inline_) && before(entry, inline_ + kInline);
}

}  // namespace netxml

uint32_t XML_IsMatchRegex(const char* pattern, const char* text)
{
    regex_t compiled;
    if (!pattern || !text || regcomp(&compiled, pattern, netxml::kFlags) != 0) return 0;
    const bool matched = netxml::run(compiled, text);
    regfree(&compiled);
    return matched ? 1 : 0;
}
