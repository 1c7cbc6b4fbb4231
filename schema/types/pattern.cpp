#include "schema/types/pattern.hpp"

#include "netxml/schema.h"
#include "support/text_hash.hpp"

#include <clocale>
#include <cstdint>
#include <cstring>
#include <functional>
#include <locale.h>

namespace netxml {
namespace {

constexpr int kFlags = REG_EXTENDED | REG_NOSUB;

bool run(const regex_t& compiled, const char* text) noexcept
{
    return regexec(&compiled, text, 0, nullptr, 0) == 0;
}

// Whether a category has the rules of C, in which ASCII characters are ordered by their codes.
bool isPlain(int category) noexcept
{
    const char* name = std::setlocale(category, nullptr);
    return name && (std::strcmp(name, "POSIX") == 0 ||
                    (name[0] == 'C' && (name[1] == '\0' || name[1] == '.')));
}

// What a range in a bracket holds depends on the locale. It does not change while a cache lives.
bool isPlainLocale() noexcept
{
    return uselocale(static_cast<locale_t>(nullptr)) == LC_GLOBAL_LOCALE && isPlain(LC_CTYPE) &&
           isPlain(LC_COLLATE);
}

}  // namespace

void Pattern::start(const char* pattern, bool tables) noexcept
{
    text_ = pattern;
    form_ = Form::None;
    table_ = tables ? PatternTable::make(pattern).release() : nullptr;
}

void Pattern::finish() noexcept
{
    if (form_ == Form::Usable) regfree(&compiled_);
    heap::release(table_);
}

bool Pattern::matches(const char* text) noexcept
{
    if (table_) {
        const PatternTable::Answer answer = table_->matches(text);
        if (answer != PatternTable::Answer::Unsure) return answer == PatternTable::Answer::Yes;
    }
    if (form_ == Form::None)
        form_ = regcomp(&compiled_, text_, kFlags) == 0 ? Form::Usable : Form::Broken;
    return form_ == Form::Usable && run(compiled_, text);
}

PatternCache::~PatternCache() noexcept
{
    for (Pattern* pattern : buckets_) {
        while (pattern) {
            Pattern* next = pattern->next_;
            pattern->finish();
            if (!isInline(pattern)) heap::release(pattern);
            pattern = next;
        }
    }
}

Pattern* PatternCache::find(const char* pattern) noexcept
{
    Pattern*& recent = recent_[reinterpret_cast<std::uintptr_t>(pattern) / 8 % kRecent];
    if (!recent || recent->text_ != pattern) {
        const std::size_t bucket = textHash(pattern) % kBuckets;
        recent = search(pattern, bucket);
        if (!recent) recent = add(pattern, bucket);
    }
    return recent;
}

bool PatternCache::matches(const char* pattern, const char* text) noexcept
{
    Pattern* known = find(pattern);
    return known ? known->matches(text) : XML_IsMatchRegex(pattern, text) == 1;
}

Pattern* PatternCache::search(const char* pattern, std::size_t bucket) const noexcept
{
    Pattern* known = buckets_[bucket];
    while (known && std::strcmp(known->text_, pattern) != 0) known = known->next_;
    return known;
}

Pattern* PatternCache::add(const char* pattern, std::size_t bucket) noexcept
{
    if (inlineUsed_ == 0) tables_ = isPlainLocale();
    Pattern* place =
        inlineUsed_ < kInline ? &inline_[inlineUsed_++] : heap::make<Pattern>().release();
    if (!place) return nullptr;
    place->start(pattern, tables_);
    place->next_ = buckets_[bucket];
    buckets_[bucket] = place;
    return place;
}

// std::less orders pointers into different blocks, too.
bool PatternCache::isInline(const Pattern* pattern) const noexcept
{
    const std::less<const Pattern*> before;
    return !before(pattern, inline_) && before(pattern, inline_ + kInline);
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
