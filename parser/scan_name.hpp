// Names: what every other rule reads first.
#pragma once

#include "parser/cursor.hpp"
#include "parser/parse_error.hpp"

namespace netxml {

// Reads a name. The mark is set to its start; the name is what lies between mark and cursor, and
// `ascii` says whether it stays within ASCII.
inline ParseError scanName(Cursor& cursor, bool& ascii) noexcept
{
    if (cursor.atEnd() || !cursor.atNameStart()) return ParseError::InvalidCharacter;
    cursor.setMark();
    ascii = true;
    for (;;) {
        cursor.cross([](const std::uint8_t* p, const std::uint8_t* end) {
            while (p != end && (kAsciiClasses[*p] & kClassName)) ++p;
            return p;
        });
        if (cursor.atEnd() || !cursor.atName()) return ParseError::None;
        if (cursor.peek() >= 0x80) ascii = false;
        cursor.advance();
    }
}

}  // namespace netxml
