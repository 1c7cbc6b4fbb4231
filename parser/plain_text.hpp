// A place in plain text: whoever crosses it keeps it in registers.
//
// Everything here is inlined into one loop on purpose; as calls, it would cost more than it does.
#pragma once

#include "parser/beyond_ascii.hpp"
#include "parser/open_name.hpp"
#include "support/block_copy.hpp"

#include <cstring>

namespace netxml {

struct PlainText {
    const std::uint8_t* p;
    const std::uint8_t* mark;
    bool needsCount = false;           // what was crossed may be more than columns of one byte
    const std::uint8_t* const end;     // beyond it nothing is plain but end tags; up to it, whole
                                       // blocks may be read
    const std::uint8_t* const tagEnd;  // end tags neither
    const std::uint8_t* const bufferEnd;  // nothing may be read beyond

    // `limit` is the place that must not be reached without a refill.
    PlainText(const std::uint8_t* start, const std::uint8_t* startMark, const std::uint8_t* limit,
              const std::uint8_t* lastByte) noexcept
        : p{start}, mark{startMark}, end{wideEnd(start, limit, lastByte)}, tagEnd{limit},
          bufferEnd{lastByte}
    {
    }

    [[gnu::always_inline]] bool at(char c) const noexcept
    {
        return p < end && *p == static_cast<std::uint8_t>(c);
    }
    [[gnu::always_inline]] Span from(const std::uint8_t* start) const noexcept
    {
        return {start, static_cast<std::size_t>(p - start), true, true};
    }

    // Crosses valid characters up to one of `kStops`, or to what is not plain. `ascii` becomes
    // false where any is beyond that.
    template <std::uint8_t... kStops>
    [[gnu::always_inline]] void cross(bool& ascii) noexcept
    {
        while (p < end) {
            const auto stops = NativeBlock::load(p).controlHighOr<kStops...>();
            p += stops ? NativeBlock::first(stops) : NativeBlock::kWidth;
            if (!stops) continue;
            if (*p >= 0x80) {
                const std::uint8_t* high = p;
                p = crossBeyondAscii(p, end);
                if (p == high) return;
                ascii = false;
            } else {
                if (!isBlank(*p)) return;
                ++p;
            }
            needsCount = true;
        }
    }
    // Crosses blanks, and sets the mark behind them if there are any.
    [[gnu::always_inline]] void skipBlanks() noexcept
    {
        if (p >= end || *p > ' ' || !isBlank(*p)) return;
        toStop<&NativeBlock::notBlank>();
        mark = p;
        needsCount = true;
    }
    // The same where mostly one stands. False when there is none.
    [[gnu::always_inline]] bool skipSeparator() noexcept
    {
        if (p >= end || !isBlank(*p)) return false;
        needsCount = needsCount || *p != ' ' || p[1] <= ' ';
        ++p;
        if (*p <= ' ') toStop<&NativeBlock::notBlank>();
        mark = p;
        return true;
    }
    // Crosses a name and sets the mark to its start. False unless it is one of ASCII alone, and
    // more follows.
    [[gnu::always_inline]] bool name(Span& found) noexcept
    {
        if (p >= end || (kAsciiClasses[*p] & kClassNameStart) == 0) return false;
        mark = p;
        toStop<&NativeBlock::notName>();
        found = from(mark);
        return p < end && *p < 0x80;
    }
    // A qualified name, left behind it.
    [[gnu::always_inline]] bool qualifiedName(QName& found) noexcept
    {
        found.prefix = {};
        if (!name(found.local)) return false;
        if (*p != ':') return true;
        ++p;
        found.prefix = found.local;
        return name(found.local);
    }
    // Character data behind its leading blanks, left at "<", without the blanks at its end.
    [[gnu::always_inline]] bool characters(Span& found) noexcept
    {
        const std::uint8_t* start = p;
        bool ascii = true;
        for (;; ++p) {
            cross<'<', '&', ']'>(ascii);
            if (!at(']')) break;
            if (p[1] == ']' && p[2] == '>') return false;
        }
        if (!at('<')) return false;
        found = from(start);
        found.ascii = ascii;
        while (start[found.size - 1] <= ' ' && isBlank(start[found.size - 1])) --found.size;
        return true;
    }
    // The value of an attribute with its equals sign and quotes, left behind the closing one.
    [[gnu::always_inline]] bool value(Span& found) noexcept
    {
        if (!at('=')) return false;
        ++p;
        const bool doubled = at('"');
        if (!doubled && !at('\'')) return false;
        const std::uint8_t* start = ++p;
        bool ascii = true;
        if (doubled) cross<'"', '<', '&'>(ascii);
        else cross<'\'', '<', '&'>(ascii);
        if (!at(doubled ? '"' : '\'')) return false;
        found = from(start);
        found.ascii = ascii;
        ++p;
        return true;
    }
    // The end tag of an element, entered at "</", left behind ">".
    [[gnu::always_inline]] bool endTag(const OpenName& open) noexcept
    {
        p += 2;
        needsCount = needsCount || !open.ascii;
        if (open.prefixSize != 0) {
            if (!follows(open.text, open.prefixSize) || *p != ':') return false;
            ++p;
        }
        return follows(open.localText(), open.localSize) && *p++ == '>';
    }

private:
    static const std::uint8_t* wideEnd(const std::uint8_t* start, const std::uint8_t* limit,
                                       const std::uint8_t* lastByte) noexcept
    {
        if (static_cast<std::size_t>(lastByte - start) < kSpanSlack) return start;
        const std::uint8_t* wide = lastByte - kSpanSlack;
        return limit < wide ? limit : wide;
    }
    // Goes to the first stop of a block's mask, or to `end`.
    template <auto kMask>
    [[gnu::always_inline]] void toStop() noexcept
    {
        while (p < end) {
            const NativeBlock::Mask stops = (NativeBlock::load(p).*kMask)();
            p += stops ? NativeBlock::first(stops) : NativeBlock::kWidth;
            if (stops) return;
        }
    }
    // Crosses a name that must follow, with one byte behind it.
    [[gnu::always_inline]] bool follows(const std::uint8_t* name, std::size_t size) noexcept
    {
        const std::uint8_t* start = p;
        // Behind a text, "</" may reach beyond the end.
        if (p >= tagEnd || static_cast<std::size_t>(tagEnd - p) <= size) return false;
        p += size;
        if (static_cast<std::size_t>(bufferEnd - p) >= kSpanSlack)
            return sameBlocks(start, name, size);
        return std::memcmp(start, name, size) == 0;
    }
};

}  // namespace netxml
