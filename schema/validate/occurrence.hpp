// How often something occurs, and how often that may repeat what holds it.
//
// A count n of an item with bounds (min, max) may come from several repetitions of the item's
// group, each with min to max of it. Two searches decide. One tries shares d from min up to max: n
// falls into q = n / d shares with r = n % d left over, and it ends well when nothing is left over
// or less than one a share, badly at max or beyond n. It ends with the most repetitions. The other
// tries shares from max down to min: it ends well when there is no full share, when nothing is left
// over, or when what lacks in the last share is at most one of each, badly at min. It ends with the
// fewest.
//
// Both are given here in closed form; the tests compare them with the searches.
#pragma once

#include <algorithm>
#include <cstdint>

namespace netxml {

// How a search ended, and with how many shares.
struct Shares {
    bool found;
    std::uint64_t count;
};

// The search upward. `min` is at least 1. With q = n / min, the share that fits q times is n / q.
constexpr Shares mostShares(std::uint64_t n, std::uint32_t min, std::uint32_t max) noexcept
{
    if (n == 0) return {true, 0};
    if (n < min || max == 0) return {false, 0};
    const std::uint64_t shares = n / min;
    const std::uint64_t share = n / shares;
    const bool found = min > max || share < max || (share == max && n % shares == 0);
    return {found, shares};
}

// The search downward. `min` is at least 1. Past n / max shares, one share more is n / (that + 1),
// rounded up.
constexpr Shares fewestShares(std::uint64_t n, std::uint32_t min, std::uint32_t max) noexcept
{
    if (max == 0) return {n == 0, 0};
    if (n < max) return {true, 0};
    if (n % max == 0) return {true, n / max};
    const std::uint64_t shares = n / max + 1;
    const bool even = n % shares == 0;
    const std::uint64_t share = n / shares + (even ? 0 : 1);
    if (min > max || share > min || (share == min && even))
        return {true, even ? shares : shares - 1};
    return {false, n / min};
}

// Whether a count can be right for bounds: once, or over several repetitions.
constexpr bool occurs(std::uint64_t n, std::uint32_t min, std::uint32_t max) noexcept
{
    if (n < min) return false;
    if (n == 0) return true;
    min = std::max(min, 1u);
    return mostShares(n, min, max).found && fewestShares(n, min, max).found;
}

// A range of repetitions, as counted so far or as a count may mean.
struct Repetitions {
    std::uint64_t low;
    std::uint64_t high;
};

// What a count of an item means in repetitions of its group: none where it cannot be shared.
constexpr Repetitions repetitions(std::uint64_t n, std::uint32_t min, std::uint32_t max) noexcept
{
    min = std::max(min, 1u);
    const Shares most = mostShares(n, min, max);
    if (!most.found) return {0, 0};
    return {fewestShares(n, min, max).count, most.count};
}

}  // namespace netxml
