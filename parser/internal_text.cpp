#include "parser/internal_text.hpp"

#include "output/out_stream.hpp"
#include "support/block.hpp"

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
    if (converted_ >= kWarmUp && isOpen(stream_->converter)) return convertByCache(span, text);
    converted_ += span.size;
    text = convertText(stream_, reinterpret_cast<const char*>(span.data), span.size);
    return text.data() ? ParseError::None : ParseError::Internal;
}

bool InternalText::appendByStream(const std::uint8_t* p, std::size_t size) noexcept
{
    const std::string_view text = convertText(stream_, reinterpret_cast<const char*>(p), size);
    return text.data() && text_.append(text.data(), text.size());
}

// A character takes at most four bytes in the tree's encoding: where the cache knows it, two.
ParseError InternalText::convertByCache(Span span, std::string_view& text) noexcept
{
    text_.clear();
    const std::uint8_t* p = span.data;
    const std::uint8_t* end = p + span.size;
    while (p != end) {
        const std::uint8_t* high = findHigh(p, end);
        if (!text_.append(reinterpret_cast<const char*>(p), static_cast<std::size_t>(high - p)) ||
            !text_.reserve(2 * static_cast<std::size_t>(end - high)))
            return ParseError::Internal;
        p = high;
        char* to = text_.data() + text_.size();
        text_.addCount(
            static_cast<std::size_t>(cache_.convert(stream_->converter, p, end, to) - to));
        if (p == end || *p < 0x80) continue;
        const std::uint8_t* other = p + characterLength(kParserEncoding, p, end);
        if (!appendByStream(p, static_cast<std::size_t>(other - p))) return ParseError::Internal;
        p = other;
    }
    text = {text_.data(), text_.size()};
    return ParseError::None;
}

}  // namespace netxml
