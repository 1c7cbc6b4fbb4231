// The encoding of a source by its first bytes: a byte-order mark, or how "<?" is written.
#include "io/in_stream.hpp"

#include <cstring>

namespace netxml {

void detectMark(XML_IO_InStream& s) noexcept
{
    if (s.status > StreamStatus::End) return;
    struct Mark {
        std::uint8_t size;
        std::uint8_t bytes[4];
        XML_Encoding encoding;
    };
    static constexpr Mark kMarks[] = {
        {4, {0xFF, 0xFE, 0x00, 0x00}, XML_ENCODING_UTF_32LE},
        {4, {0x00, 0x00, 0xFE, 0xFF}, XML_ENCODING_UTF_32BE},
        {2, {0xFF, 0xFE}, XML_ENCODING_UTF_16LE},
        {2, {0xFE, 0xFF}, XML_ENCODING_UTF_16BE},
        {3, {0xEF, 0xBB, 0xBF}, XML_ENCODING_UTF_8},
    };
    if (s.available() != 0 && *s.cursor == '<') return;  // as most do
    for (const Mark& mark : kMarks) {
        if (s.available() < mark.size || std::memcmp(s.cursor, mark.bytes, mark.size) != 0)
            continue;
        s.mark += mark.size;
        s.cursor += mark.size;
        static_cast<void>(XML_IO_SwitchEncoding(&s, mark.encoding));  // the status tells
        return;
    }
}

XML_Encoding detectEncoding(const XML_IO_InStream& s) noexcept
{
    struct Start {
        std::uint8_t bytes[4];
        XML_Encoding encoding;
    };
    static constexpr Start kStarts[] = {
        {{'<', '?', 'x', 'm'}, XML_ENCODING_UTF_8}, {{'<', 0, '?', 0}, XML_ENCODING_UTF_16LE},
        {{0, '<', 0, '?'}, XML_ENCODING_UTF_16BE},  {{'<', 0, 0, 0}, XML_ENCODING_UTF_32LE},
        {{0, 0, 0, '<'}, XML_ENCODING_UTF_32BE},
    };
    if (s.available() < 4 || (s.cursor[0] != 0 && s.cursor[1] != 0)) return XML_ENCODING_UTF_8;
    for (const Start& start : kStarts) {
        if (std::memcmp(s.cursor, start.bytes, 4) == 0) return start.encoding;
    }
    return XML_ENCODING_UTF_8;
}

}  // namespace netxml
