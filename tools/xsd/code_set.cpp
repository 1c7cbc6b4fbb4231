#include "xsd/code_set.hpp"

#include <algorithm>

namespace netxml::xsd {

CodeSet CodeSet::of(std::string_view asciiCharacters)
{
    CodeSet set;
    for (const char c : asciiCharacters) {
        const auto code = static_cast<std::uint32_t>(static_cast<unsigned char>(c));
        set.add({code, code});
    }
    return set;
}

CodeSet CodeSet::between(std::uint32_t first, std::uint32_t last)
{
    CodeSet set;
    set.add({first, last});
    return set;
}

void CodeSet::add(CodeInterval interval)
{
    std::vector<CodeInterval> result;
    for (const CodeInterval& known : intervals_) {
        const bool apart = known.last + 1 < interval.first || interval.last + 1 < known.first;
        if (apart) {
            result.push_back(known);
        } else {
            interval.first = std::min(interval.first, known.first);
            interval.last = std::max(interval.last, known.last);
        }
    }
    const auto place = std::find_if(result.begin(), result.end(), [&](const CodeInterval& known) {
        return known.first > interval.last;
    });
    result.insert(place, interval);
    intervals_ = std::move(result);
}

void CodeSet::add(const CodeSet& other)
{
    for (const CodeInterval& interval : other.intervals_) add(interval);
}

CodeSet CodeSet::complement() const
{
    CodeSet set;
    std::uint32_t next = 0;
    for (const CodeInterval& interval : intervals_) {
        if (interval.first > next) set.intervals_.push_back({next, interval.first - 1});
        next = interval.last + 1;
    }
    if (next <= kLast) set.intervals_.push_back({next, kLast});
    return set;
}

CodeSet CodeSet::without(const CodeSet& other) const
{
    CodeSet rest = complement();
    rest.add(other);
    return rest.complement();
}

bool CodeSet::has(std::uint32_t code) const
{
    for (const CodeInterval& interval : intervals_) {
        if (interval.first <= code && code <= interval.last) return true;
    }
    return false;
}

std::uint32_t CodeSet::countBeyondAscii() const
{
    std::uint32_t count = 0;
    for (const CodeInterval& interval : intervals_) {
        if (interval.last > kLastAscii)
            count += interval.last - std::max(interval.first, kLastAscii + 1) + 1;
    }
    return count;
}

}  // namespace netxml::xsd
