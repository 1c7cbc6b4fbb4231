// The thirteen encodings by number and name, and what the converters need to know of each.
#pragma once

#include "netxml/base.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace netxml {

inline constexpr std::size_t kEncodingCount = 13;

// What every string of a tree is held in.
inline constexpr XML_Encoding kTreeEncoding = XML_ENCODING_GB18030;

// The name that iconv, the XML declaration and the encoding declaration use; nullptr from 13 on.
const char* encodingName(XML_Encoding encoding) noexcept;

// The encoding of exactly that name, ignoring ASCII case; XML_ENCODING_NONE if there is none.
XML_Encoding findEncoding(std::string_view name) noexcept;

// True where every byte below 0x80 that starts a character is that ASCII character, so that runs of
// ASCII need no conversion between two such encodings.
constexpr bool sharesAscii(XML_Encoding encoding) noexcept
{
    return encoding == XML_ENCODING_UTF_8 || encoding == XML_ENCODING_GB2312 ||
           encoding == XML_ENCODING_GBK || encoding == XML_ENCODING_GB18030;
}

// The bytes of the smallest character, and so of NUL: 1, 2 or 4.
constexpr std::size_t unitSize(XML_Encoding encoding) noexcept
{
    if (sharesAscii(encoding)) return 1;
    return encoding == XML_ENCODING_UTF_16 || encoding == XML_ENCODING_UTF_16LE ||
                   encoding == XML_ENCODING_UTF_16BE
               ? 2
               : 4;
}

// The bytes of the character at `p`, as its lead says; at least 1 and never beyond `end`. For text
// that is known to be well-formed, or to find a border that a converter then judges.
std::size_t characterLength(XML_Encoding encoding, const std::uint8_t* p,
                            const std::uint8_t* end) noexcept;

}  // namespace netxml
