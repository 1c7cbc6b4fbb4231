#include "parser/error_text.hpp"

#include "io/in_stream.hpp"
#include "parser/char_classes.hpp"
#include "parser/internal_text.hpp"
#include "support/bounded.hpp"

#include <cstdio>
#include <cstring>

namespace netxml {
namespace {

bool continues(std::uint8_t byte) noexcept
{
    return (byte & 0xC0) == 0x80;
}

// The size of a piece without the bytes of a last character that is cut short.
std::size_t wholeCharacters(const std::uint8_t* piece, std::size_t size) noexcept
{
    std::size_t last = size;
    while (last != 0 && continues(piece[last - 1])) --last;
    if (last == 0 || piece[last - 1] < 0x80) return size;
    --last;
    return last + stepOf(piece[last]) > size ? last : size;
}

}  // namespace

Excerpt::Excerpt(const XML_IO_InStream& s) noexcept
{
    const std::uint8_t* start = s.cursor;
    if (static_cast<std::size_t>(start - s.base) > kBefore) start -= kBefore;
    else start = s.base;
    while (start != s.end && continues(*start)) ++start;
    const std::size_t left = static_cast<std::size_t>(s.end - start);
    const std::size_t size = wholeCharacters(start, left < kMost ? left : kMost);
    if (size != 0) std::memcpy(text_, start, size);
    text_[size] = '\0';
}

void writeErrorText(char* buffer, std::uint32_t size, const char* format,
                    std::va_list arguments) noexcept
{
    if (!buffer || size == 0) return;
    std::vsnprintf(buffer, size, format, arguments);
    XML_IO_OutStream* stream = XML_IO_MemOutStreamCreate(kParserEncoding, kTreeEncoding);
    if (!stream) return;  // better the report in UTF-8 than none
    const std::string_view text = convertText(stream, buffer, std::strlen(buffer) + 1);
    copyBounded(buffer, size, text.data() ? text.data() : "failed to convert encoding.");
    XML_IO_OutStreamDestroy(stream);
}

void copyErrorText(char* buffer, std::uint32_t size, const char* text) noexcept
{
    if (buffer) copyBounded(buffer, size, text);
}

}  // namespace netxml
