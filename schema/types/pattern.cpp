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

Pattern::Answer run(const regex_t& compiled, const char* text) noexcept
{
    const int status = regexec(&compiled, text, 0, nullptr, 0);
    if (status == REG_ESPACE) return Pattern::Answer::NoMemory;
    return status == 0 ? Pattern::Answer::Yes : Pattern::Answer::No;
}

// Compiles a pattern for one text. A pattern that does not compile matches nothing.
Pattern::Answer runOnce(const char* pattern, const char* text) noexcept
{
    regex_t compiled;
    const int status = regcomp(&compiled, pattern, kFlags);
    if (status == REG_ESPACE) return Pattern::Answer::NoMemory;
    if (status != 0) return Pattern::Answer::No;
    const Pattern::Answer answer = run(compiled, text);
    regfree(&compiled);
    return answer;
}

// Whether a category has the rules of C, in which ASCII characters are ordered by their codes.
bool isPlain(int category) noexcept
{
    const char* name = std::setlocale(category, nullptr);
    if (!name) return false;
#if defined(__GLIBC__)
    // Elsewhere C.UTF-8 refuses texts that are not UTF-8.
    if (std::strncmp(name, "C.", 2) == 0) return true;
#endif
    return std::strcmp(name, "C") == 0 || std::strcmp(name, "POSIX") == 0;
}

// What a range in a bracket holds depends on the locale. It does not change while a cache lives.
bool isPlainLocale() noexcept
{
    return uselocale(static_cast<locale_t>(nullptr)) == LC_GLOBAL_LOCALE && isPlain(LC_CTYPE) &&
           isPlain(LC_COLLATE);
}

}  // namespace

void Pattern::start(const char* pattern, bool mayBeTable) noexcept
{
    text_ = pattern;
    table_ = nullptr;
    mayBeTable_ = mayBeTable;
    form_ = Form::None;
}

void Pattern::finish() noexcept
{
    if (form_ == Form::Usable) regfree(&compiled_);
    heap::release(table_);
}

Pattern::Answer Pattern::matches(const char* text) noexcept
{
    if (mayBeTable_) {
        mayBeTable_ = false;
        table_ = PatternTable::make(text_).release();
    }
    if (table_) {
        const PatternTable::Answer answer = table_->matches(text);
        if (answer != PatternTable::Answer::Unsure)
            return answer == PatternTable::Answer::Yes ? Answer::Yes : Answer::No;
    }
    return ask(text);
}

Pattern::Answer Pattern::ask(const char* text) noexcept
{
    if (form_ == Form::None) {
        const int status = regcomp(&compiled_, text_, kFlags);
        if (status == REG_ESPACE) return Answer::NoMemory;
        form_ = status == 0 ? Form::Usable : Form::Broken;
    }
    return form_ == Form::Usable ? run(compiled_, text) : Answer::No;
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
    const Pattern::Answer answer = known ? known->matches(text) : runOnce(pattern, text);
    if (answer == Pattern::Answer::NoMemory) ranOut_ = true;
    return answer == Pattern::Answer::Yes;
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
    if (!pattern || !text) return 0;
    return netxml::runOnce(pattern, text) == netxml::Pattern::Answer::Yes ? 1 : 0;
}
