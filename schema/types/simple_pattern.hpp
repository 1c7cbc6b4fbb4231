// Simple regular expressions as sets of positions.
//
// Simple is an extended expression of ASCII characters, '.', brackets of characters and ranges,
// groups, alternatives and the quantifiers, with ^ before and $ behind it or without, that comes to
// 63 characters at most when its counted parts are written out. What is not simple is for
// regexec().
//
// Each of those characters is a position. A state is the set of positions that may match the next
// byte.
#pragma once

#include <cstddef>
#include <cstdint>

namespace netxml {

// A set of positions, one a bit.
using Positions = std::uint64_t;

struct SimplePattern {
    static constexpr unsigned kMostPositions = 63;
    static constexpr Positions kEnd = Positions{1} << 63;  // nothing more needs to come
    static constexpr std::size_t kBytes = 128;

    // False when the pattern is not simple.
    [[nodiscard]] bool read(const char* pattern) noexcept;

    Positions step(Positions state, unsigned byte) const noexcept;
    // Whether no byte can change the answer any more.
    bool isDecided(Positions state) const noexcept
    {
        return state == 0 || (openEnd && (state & kEnd) != 0);
    }

    Positions matching[kBytes];           // the positions that a byte matches
    Positions following[kMostPositions];  // what comes behind a position, with kEnd
    Positions first;
    bool openStart;  // no ^: a match may begin anywhere
    bool openEnd;    // no $: what is behind a match does not count
};

}  // namespace netxml
