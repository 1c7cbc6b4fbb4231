#include "display_width.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace netxml::tool {
namespace {

struct CellRange {
    std::uint32_t first;
    std::uint32_t last;
};

// clang-format off
// Unicode, East_Asian_Width W and F, rounded to blocks.
constexpr CellRange kWide[] = {
    {0x1100, 0x115F},   {0x231A, 0x231B},   {0x2329, 0x232A},   {0x23E9, 0x23EC},
    {0x25FD, 0x25FE},   {0x2614, 0x2615},   {0x2648, 0x2653},   {0x26AA, 0x26AB},
    {0x26BD, 0x26BE},   {0x26C4, 0x26C5},   {0x26F2, 0x26F3},   {0x270A, 0x270B},
    {0x2753, 0x2755},   {0x2795, 0x2797},   {0x2E80, 0x303E},   {0x3041, 0x33FF},
    {0x3400, 0x4DBF},   {0x4E00, 0xA4CF},   {0xA960, 0xA97F},   {0xAC00, 0xD7A3},
    {0xF900, 0xFAFF},   {0xFE10, 0xFE19},   {0xFE30, 0xFE6F},   {0xFF01, 0xFF60},
    {0xFFE0, 0xFFE6},   {0x16FE0, 0x18DFF}, {0x1AFF0, 0x1B2FF}, {0x1F300, 0x1F64F},
    {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF}, {0x1FA70, 0x1FAFF}, {0x20000, 0x3FFFD},
};
// Combining marks and format characters, without those of scripts that need shaping.
constexpr CellRange kNarrowest[] = {
    {0x300, 0x36F},     {0x483, 0x489},     {0x591, 0x5BD},     {0x610, 0x61A},
    {0x64B, 0x65F},     {0x1AB0, 0x1AFF},   {0x1DC0, 0x1DFF},   {0x200B, 0x200F},
    {0x202A, 0x202E},   {0x2060, 0x2064},   {0x20D0, 0x20FF},   {0x302A, 0x302D},
    {0x3099, 0x309A},   {0xFE00, 0xFE0F},   {0xFE20, 0xFE2F},   {0xFEFF, 0xFEFF},
    {0xE0100, 0xE01EF},
};
// clang-format on

template <std::size_t N>
constexpr bool sorted(const CellRange (&ranges)[N])
{
    for (std::size_t i = 0; i < N; ++i) {
        if (ranges[i].first > ranges[i].last) return false;
        if (i != 0 && ranges[i - 1].last >= ranges[i].first) return false;
    }
    return true;
}
static_assert(sorted(kWide) && sorted(kNarrowest));

template <std::size_t N>
bool holds(const CellRange (&ranges)[N], std::uint32_t code)
{
    const auto* range =
        std::lower_bound(std::begin(ranges), std::end(ranges), code,
                         [](const CellRange& r, std::uint32_t c) { return r.last < c; });
    return range != std::end(ranges) && code >= range->first;
}

}  // namespace

int cellsOf(std::uint32_t code)
{
    if (code < 0x300) return 1;
    if (holds(kNarrowest, code)) return 0;
    return holds(kWide, code) ? 2 : 1;
}

}  // namespace netxml::tool
