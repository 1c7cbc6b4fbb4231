#include "support/prefix_scope.hpp"

#include <cstring>

namespace netxml {

bool PrefixScope::push(PrefixEntry* entry) noexcept
{
    if (count_ >= kFewEntries && count_ >= bucketCount_ && !resize(count_ * 2)) return false;
    entry->older = newest_;
    newest_ = entry;
    ++count_;
    if (buckets_) {
        PrefixEntry*& head = buckets_[bucketOf(entry->prefix)];
        entry->sameBucket = head;
        head = entry;
    }
    return true;
}

// The newest entry is also the first of its bucket.
void PrefixScope::pop() noexcept
{
    if (buckets_) buckets_[bucketOf(newest_->prefix)] = newest_->sameBucket;
    newest_ = newest_->older;
    --count_;
}

PrefixEntry* PrefixScope::findInBucket(std::string_view prefix) const noexcept
{
    PrefixEntry* entry = buckets_[bucketOf(prefix)];
    while (entry && entry->prefix != prefix) entry = entry->sameBucket;
    return entry;
}

// Puts all entries into `count` buckets (a power of two times the few), oldest at the end of each.
bool PrefixScope::resize(std::size_t count) noexcept
{
    if (count > SIZE_MAX / sizeof(PrefixEntry*)) return false;
    auto** buckets = static_cast<PrefixEntry**>(heap::allocateZeroed(count * sizeof(PrefixEntry*)));
    if (!buckets) return false;
    if (!buckets_) key_ = randomHashKey();
    heap::release(buckets_);
    buckets_ = buckets;
    bucketCount_ = count;

    // Newest to oldest puts the oldest in front; turning each bucket round puts it right.
    for (PrefixEntry* entry = newest_; entry; entry = entry->older) {
        PrefixEntry*& head = buckets_[bucketOf(entry->prefix)];
        entry->sameBucket = head;
        head = entry;
    }
    for (std::size_t i = 0; i < count; ++i) {
        PrefixEntry* turned = nullptr;
        while (PrefixEntry* entry = buckets_[i]) {
            buckets_[i] = entry->sameBucket;
            entry->sameBucket = turned;
            turned = entry;
        }
        buckets_[i] = turned;
    }
    return true;
}

}  // namespace netxml
