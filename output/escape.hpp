// Escaping of text, attribute values and namespace names.
//
// "<", ">" and "&" become entities wherever they stand; a blank becomes a character reference at
// either end of the string, so that a reader which trims values keeps it. Kept: quotes are never
// escaped, although values are written between double quotes.
#pragma once

#include "netxml/base.h"

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

// What takes the pieces of a rendering, and returns a status for each.
struct PieceOut {
    std::uint32_t (*write)(void* context, std::string_view piece);
    void* context;

    std::uint32_t put(std::string_view piece) const noexcept { return write(context, piece); }
};

// Writes a string escaped, in pieces none of which is empty. Stops at a piece that cannot be
// written.
std::uint32_t putEscaped(const PieceOut& out, std::string_view text) noexcept;

}  // namespace netxml
