// The sink that calls a handler's slots.
#pragma once

#include "parser/open_name.hpp"
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
    ParseError endElement(const OpenName& name, const Bindings& bindings) noexcept;
    ParseError characters(const Span& text) noexcept;
    ParseError cdata(Span text) noexcept;
    ParseError comment(Span text) noexcept;
    ParseError processingInstruction(Span target, const Span* data) noexcept;

    // Plain content: the texts have a NUL behind them already, except for characters.
    class Plain {
    public:
        explicit Plain(HandlerSink& sink) noexcept : sink_{sink} {}
        bool lay(const QName&) noexcept
        {
            sink_.attributes_.clear();
            sink_.declarations_.clear();
            return true;
        }
        bool lay(const Binding& binding) noexcept;
        bool lay(const QName& name, const Span& value, const Resolution& nameSpace) noexcept;
        void forget() noexcept {}
        ParseError enter(const QName& name, const Resolution& nameSpace,
                         const Bindings& bindings) noexcept;
        ParseError addText(const Span& text) noexcept { return sink_.characters(text); }
        ParseError leave(const OpenName& name, const Bindings& bindings) noexcept
        {
            return sink_.endElement(name, bindings);
        }
        void store() noexcept {}

    private:
        HandlerSink& sink_;
    };
    Plain plain() noexcept { return Plain{*this}; }

private:
    // What the callback that just returned has stored.
    ParseError raised() const noexcept { return static_cast<ParseError>(parser_->error); }
    const char* terminated(const Span& text) noexcept;
    ParseError reportStart(const QName& name, const Resolution& nameSpace) noexcept;
    bool list(const TagAttribute& attribute) noexcept;
    bool listDeclarations(const StartTag& tag) noexcept;
    bool listAttributes(const StartTag& tag) noexcept;

    const XML_SAX_Handler& handler_;
    XML_Parser* parser_ = nullptr;
    GrowBuffer<char> text_;
    GrowBuffer<const char*> declarations_;
    GrowBuffer<const char*> attributes_;
};

}  // namespace netxml
