// A place in plain text: what crosses it keeps it in registers.
//
// Everything here is inlined into one loop on purpose; as calls, it would cost more than it does.
#pragma once

#include "parser/char_classes.hpp"
#include "support/block.hpp"
#include "support/block_copy.hpp"
#include "support/span.hpp"

#include <cstring>

namespace netxml {

struct PlainText {
    const std::uint8_t* p;
    const std::uint8_t* mark;
    const std::uint8_t* const end;        // nothing plain reaches beyond, though `p` may
    const std::uint8_t* const bufferEnd;  // nothing may be read beyond

    [[gnu::always_inline]] bool at(char c) const noexcept
    {
        return p < end && *p == static_cast<std::uint8_t>(c);
    }
    [[gnu::always_inline]] bool has(std::size_t bytes) const noexcept
    {
        return end - p >= static_cast<std::ptrdiff_t>(bytes);
    }
    // What was crossed since `start`; all of it was seen to be ASCII.
    [[gnu::always_inline]] Span from(const std::uint8_t* start) const noexcept
    {
        const bool wide = static_cast<std::size_t>(bufferEnd - p) >= kSpanSlack;
        return {start, static_cast<std::size_t>(p - start), true, wide};
    }

    // Crosses valid characters up to one of `kStops`, or to what is not plain.
    template <std::uint8_t... kStops>
    [[gnu::always_inline]] void cross() noexcept
    {
        for (;; ++p) {
            p = findStop<NativeBlock, kStops...>(p, bufferEnd);
            if (p == bufferEnd || !isBlank(*p)) return;
        }
    }
    // Crosses blanks, and sets the mark behind them if there are any.
    [[gnu::always_inline]] void skipBlanks() noexcept
    {
        if (p >= end || !isBlank(*p)) return;
        ++p;
        toStop<&NativeBlock::notBlank, findNotBlank<NativeBlock>>();
        mark = p;
    }
    // Crosses a name and sets the mark to its start. False unless it is one of ASCII alone, and
    // more follows.
    [[gnu::always_inline]] bool name(Span& found) noexcept
    {
        if (p >= end || (kAsciiClasses[*p] & kClassNameStart) == 0) return false;
        mark = p;
        ++p;
        toStop<&NativeBlock::notName, findNotName<NativeBlock>>();
        found = from(mark);
        return p < end && *p < 0x80;
    }
    // Goes to the first stop of a block's mask: mostly it is in the first block.
    template <auto kMask, auto kFind>
    [[gnu::always_inline]] void toStop() noexcept
    {
        if (static_cast<std::size_t>(bufferEnd - p) >= NativeBlock::kWidth) {
            const NativeBlock::Mask stops = (NativeBlock::load(p).*kMask)();
            p += stops ? NativeBlock::first(stops) : NativeBlock::kWidth;
            if (stops) return;
        }
        p = kFind(p, bufferEnd);
    }
    // Crosses what must follow.
    [[gnu::always_inline]] bool follows(const Span& expected) noexcept
    {
        if (!has(expected.size)) return false;
        const bool wide =
            expected.wide && static_cast<std::size_t>(bufferEnd - p) >= expected.size + kSpanSlack;
        const bool same = wide ? sameBlocks(p, expected.data, expected.size)
                               : std::memcmp(p, expected.data, expected.size) == 0;
        p += expected.size;
        return same;
    }
};

}  // namespace netxml
