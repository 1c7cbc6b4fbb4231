// From the parser's UTF-8 into the tree's encoding.
#pragma once

#include "io/character_cache.hpp"
#include "io/encoding.hpp"
#include "netxml/io.h"
#include "parser/parse_error.hpp"
#include "support/grow_buffer.hpp"
#include "support/span.hpp"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace netxml {

inline constexpr XML_Encoding kParserEncoding = XML_ENCODING_UTF_8;

// Converts bytes through a memory stream; the result is the stream's and valid until its next use.
// A view without data on failure.
std::string_view convertText(XML_IO_OutStream* stream, const char* bytes,
                             std::size_t size) noexcept;

// Converts spans for a tree. ASCII is passed through; a converter is opened when it is first
// needed.
class InternalText {
public:
    InternalText() = default;
    InternalText(const InternalText&) = delete;
    InternalText& operator=(const InternalText&) = delete;
    ~InternalText() { XML_IO_OutStreamDestroy(stream_); }

    // The result is valid until the next call, or as long as the span itself.
    ParseError convert(Span span, std::string_view& text) noexcept
    {
        text = span.view();
        return span.ascii ? ParseError::None : convertBeyondAscii(span, text);
    }
    // True once no converter could be had.
    bool unavailable() const noexcept { return unavailable_; }

private:
    // So much text goes through the stream before the cache is worth filling.
    static constexpr std::size_t kWarmUp = std::size_t{16} * 1024;

    ParseError convertBeyondAscii(Span span, std::string_view& text) noexcept;
    ParseError convertByCache(Span span, std::string_view& text) noexcept;
    bool appendByStream(const std::uint8_t* p, std::size_t size) noexcept;

    XML_IO_OutStream* stream_ = nullptr;
    std::size_t converted_ = 0;  // bytes, while there was no cache
    CharacterCache cache_;
    GrowBuffer<char> text_;  // what was converted by the cache
    bool unavailable_ = false;
};

}  // namespace netxml
