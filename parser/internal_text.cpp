#include "parser/internal_text.hpp"

#include "output/out_stream.hpp"

namespace netxml {

std::string_view convertText(XML_IO_OutStream* stream, const char* bytes, std::size_t size) noexcept
{
    XML_IO_MemOutStreamCleanBuf(stream);
    if (!stream || !bytes || XML_IO_OutStreamAppend(stream, bytes, size) != XML_RET_OK) return {};
    if (stream->pendingCount != 0) {  // no text ends inside a character: the rest must not get lost
        stream->pendingCount = 0;
        return {};
    }
    std::size_t converted = 0;
    const char* text = XML_IO_MemOutStreamGetBuf(stream, &converted);
    return text ? std::string_view{text, converted} : std::string_view{};
}

ParseError InternalText::convertBeyondAscii(Span span, std::string_view& text) noexcept
{
    if (!stream_) stream_ = XML_IO_MemOutStreamCreate(kParserEncoding, kTreeEncoding);
    if (!stream_) {
        unavailable_ = true;
        return ParseError::Internal;
    }
    text = convertText(stream_, reinterpret_cast<const char*>(span.data), span.size);
    return text.data() ? ParseError::None : ParseError::Internal;
}

}  // namespace netxml
