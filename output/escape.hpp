// Escaping of text, attribute values and namespace names.
//
// "<", ">" and "&" become entities wherever they stand; a blank becomes a character reference at
// either end of the string, so that a reader which trims values keeps it. Kept: quotes are never
// escaped, although values are written between double quotes.
#pragma once

#include "netxml/base.h"
#include "support/block.hpp"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace netxml {

inline std::string_view entityOf(std::uint8_t byte) noexcept
{
    switch (byte) {
    case '<': return "&lt;";
    case '>': return "&gt;";
    case '&': return "&amp;";
    case '\r': return "&#x0d;";
    case '\n': return "&#x0a;";
    case '\t': return "&#x09;";
    case ' ': return "&#x20;";
    default: return {};
    }
}

inline bool isBorderBlank(char c) noexcept
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// Writes a string escaped, in pieces none of which is empty. Stops at a piece that cannot be
// written.
template <class Out>
std::uint32_t putEscaped(Out& out, std::string_view text) noexcept
{
    const auto* p = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto* end = p + text.size();
    const auto put = [&out](const std::uint8_t* from, const std::uint8_t* to) {
        return from == to ? XML_RET_OK
                          : out.put({reinterpret_cast<const char*>(from),
                                     static_cast<std::size_t>(to - from)});
    };
    std::uint32_t sum = XML_RET_OK;
    if (p != end && isBorderBlank(text.front())) sum = out.put(entityOf(*p++));
    while (sum == XML_RET_OK) {
        const std::uint8_t* stop = findAny<NativeBlock, '<', '>', '&'>(p, end);
        if (stop == end) break;
        sum = put(p, stop);
        if (sum == XML_RET_OK) sum = out.put(entityOf(*stop));
        p = stop + 1;
    }
    if (sum != XML_RET_OK || p == end) return sum;
    if (!isBorderBlank(text.back())) return put(p, end);
    sum = put(p, end - 1);
    return sum == XML_RET_OK ? out.put(entityOf(end[-1])) : sum;
}

}  // namespace netxml
