// The sink that calls a handler's slots.
#pragma once

#include "parser/start_tag.hpp"
#include "support/grow_buffer.hpp"

namespace netxml {

class HandlerSink {
public:
    static constexpr bool kReadsPosition = true;
    static constexpr bool kKeepsComments = true;
    static constexpr bool kTakesInputInPlace = false;

    explicit HandlerSink(const XML_SAX_Handler* handler) noexcept;

    void begin(XML_Parser& parser) noexcept { parser_ = &parser; }
    void report(XML_Parser& parser, const XML_IO_InStream& stream) noexcept;

    ParseError startDocument() noexcept;
    ParseError endDocument() noexcept;
    ParseError startElement(const StartTag& tag) noexcept;
    ParseError startBare(Span name, const Bindings& bindings) noexcept;
    ParseError endElement(const QName& name, const Bindings& bindings) noexcept;
    ParseError characters(Span text) noexcept;
    ParseError cdata(Span text) noexcept;
    ParseError comment(Span text) noexcept;
    ParseError processingInstruction(Span target, const Span* data) noexcept;

private:
    // What the callback that just returned has stored.
    ParseError raised() const noexcept { return static_cast<ParseError>(parser_->error); }
    const char* terminated(Span text) noexcept;
    bool listDeclarations(const StartTag& tag) noexcept;
    bool listAttributes(const StartTag& tag) noexcept;

    const XML_SAX_Handler& handler_;
    XML_Parser* parser_ = nullptr;
    GrowBuffer<char> text_;
    GrowBuffer<const char*> declarations_;
    GrowBuffer<const char*> attributes_;
};

}  // namespace netxml
