// XML_CheckQName: names in the tree's encoding.
#include "io/encoding.hpp"
#include "netxml/parser.h"
#include "output/out_stream.hpp"
#include "parser/char_classes.hpp"

#include <cstring>

namespace netxml {
namespace {

// Names within ASCII need no conversion: `size` bytes, none beyond ASCII.
bool isAsciiName(const std::uint8_t* text, std::size_t size) noexcept
{
    if (size == 0 || !(kAsciiClasses[*text] & kClassNameStart)) return false;
    for (std::size_t i = 1; i < size; ++i) {
        if (!(kAsciiClasses[text[i]] & kClassName)) return false;
    }
    return true;
}

std::uint32_t readBigEndian(const char* bytes) noexcept
{
    std::uint32_t code = 0;
    for (int i = 0; i < 4; ++i) code = code << 8 | static_cast<std::uint8_t>(bytes[i]);
    return code;
}

// Code points in UTF-32BE, which must hold a whole name and the zero behind it.
bool isName32(const char* bytes, std::size_t size) noexcept
{
    for (std::size_t at = 0; at + 4 <= size; at += 4) {
        const std::uint32_t code = readBigEndian(bytes + at);
        if (code == 0) return at != 0;
        if (at == 0 ? !isNameStart(code) : !isName(code)) return false;
    }
    return false;
}

bool isConvertedName(const char* text, std::size_t size) noexcept
{
    XML_IO_OutStream* stream = XML_IO_MemOutStreamCreate(kTreeEncoding, XML_ENCODING_UTF_32BE);
    std::size_t converted = 0;
    const bool done = stream && XML_IO_OutStreamAppend(stream, text, size + 1) == XML_RET_OK;
    const char* codes = XML_IO_MemOutStreamGetBuf(stream, &converted);
    const bool valid = done && codes && isName32(codes, converted);
    XML_IO_OutStreamDestroy(stream);
    return valid;
}

}  // namespace
}  // namespace netxml

// Kept: a colon is no part of a name.
uint32_t XML_CheckQName(const char* text)
{
    using namespace netxml;
    if (!text) return XML_RET_FAIL;
    const std::size_t size = std::strlen(text);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text);
    const bool ascii = findHigh(bytes, bytes + size) == bytes + size;
    const bool valid = ascii ? isAsciiName(bytes, size) : isConvertedName(text, size);
    return valid ? XML_RET_OK : XML_RET_FAIL;
}
