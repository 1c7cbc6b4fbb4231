// The scanner: markup to events, over a sink that is known when it is compiled.
//
// A sink has
//
//     static constexpr bool kReadsPosition;      // its events show line and column
//     static constexpr bool kKeepsComments;      // wants comments and processing instructions
//     static constexpr bool kTakesInputInPlace;  // copies at once what it keeps, and needs no NUL
//     ParseError startDocument();
//     ParseError endDocument();
//     ParseError startElement(const StartTag& tag);
//     ParseError endElement(const OpenName& name, const Bindings& bindings);
//     ParseError characters(Span text);
//     ParseError cdata(Span text);
//     ParseError comment(Span text);
//     ParseError processingInstruction(Span target, const Span* data);
//
// and for plain content (scan_plain.hpp) a `Plain` made by plain(), with
//
//     bool lay(const QName& name);  // a start tag, not yet an event
//     bool lay(Binding& binding);   // a declaration on it
//     bool lay(const QName& name, const Span& value, const Resolution& nameSpace);  // an attribute
//     void forget();                // the start tag was none
//     ParseError enter(const QName& name, const Resolution& nameSpace,
//                      const Bindings& bindings);                // it was: the start event
//     ParseError addText(const Span& text);
//     const std::uint8_t* nameLaid();  // the local name; of a sink that takes input in place
//     ParseError leave(const OpenName& name, const Bindings& bindings);
//     void store();                                              // at the end
//
// Spans are valid during the call. One that is not taken in place has a NUL behind it if it is a
// name or an attribute's value.
#pragma once

#include "parser/bindings.hpp"
#include "parser/cursor.hpp"
#include "parser/open_name.hpp"
#include "parser/parse_error.hpp"
#include "parser/plain_text.hpp"
#include "parser/seen_names.hpp"
#include "parser/start_tag.hpp"
#include "support/chunk_stack.hpp"
#include "support/grow_buffer.hpp"

namespace netxml {

template <class Sink>
class Scanner {
public:
    Scanner(XML_IO_InStream& stream, XML_Parser& parser, Sink& sink) noexcept
        : cursor_{stream, parser}, parser_{parser}, sink_{sink}
    {
    }

    // A whole document: declaration, prolog, root element, epilogue.
    ParseError document() noexcept;
    // Brings the parser's line and column up to the place reached.
    void settle() noexcept { cursor_.settle(); }

private:
    // An element whose end tag has not come, with what its memory was before it.
    struct OpenElement {
        OpenName name;
        ChunkStack::Mark memory;
    };

    // scan_misc.hpp
    ParseError prolog() noexcept;
    ParseError miscellaneous() noexcept;
    ParseError comment() noexcept;
    ParseError processingInstruction() noexcept;
    ParseError instructionData(Span target) noexcept;

    // scan_element.hpp
    ParseError element() noexcept;
    ParseError content() noexcept;
    ParseError startTag() noexcept;
    ParseError tagAttributes() noexcept;
    ParseError tagAttribute() noexcept;
    ParseError declaration(const QName& name, Span value) noexcept;
    ParseError reportStart(const QName& name) noexcept;
    ParseError endTag() noexcept;
    ParseError closeElement() noexcept;
    ParseError name(ChunkStack& memory, Span& name) noexcept;
    ParseError qualifiedName(ChunkStack& memory, QName& name) noexcept;
    static bool keepName(ChunkStack& memory, QName& name) noexcept;

    // scan_plain.hpp
    using Plain = typename Sink::Plain;
    // Sinks that do not copy what they keep get copies with a NUL behind them.
    static constexpr bool kCopiesNames = !Sink::kTakesInputInPlace;
    enum class PlainTag { None, Open, Empty };
    ParseError plainContent(bool atRoot) noexcept;
    ParseError enterPlain(PlainText& text, Plain& out, OpenElement& element, SeenNames& seen,
                          PlainTag& found) noexcept;
    bool plainStartTag(PlainText& text, Plain& out, QName& name, Resolution& nameSpace,
                       SeenNames& seen) noexcept;
    bool plainAttributes(PlainText& text, Plain& out, SeenNames& seen) noexcept;
    bool plainAttribute(PlainText& text, Plain& out, SeenNames& seen) noexcept;
    bool plainDeclaration(Plain& out, const QName& name, const Span& value) noexcept;
    bool resolvePlain(const QName& name, Resolution& nameSpace) noexcept;
    bool staysKnown(const Plain& out, QName& name) noexcept;
    void keepOpen(OpenElement& element) noexcept;
    void reach(PlainText& text) noexcept;

    // scan_text.hpp
    ParseError characterData() noexcept;
    ParseError cdataSection() noexcept;
    ParseError attributeValue(Span& value) noexcept;
    ParseError quotedValue(char quote, Span& value) noexcept;
    ParseError reference() noexcept;
    ParseError characterReference() noexcept;

    // Takes the innermost element off the stack, with what it declared.
    void dropElement() noexcept
    {
        bindings_.drop(depth());
        parser_.bindings = bindings_.newest();
        openMemory_.release(open_.back().memory);
        open_.pop();
    }
    // To be called before each event.
    void observe() noexcept
    {
        if constexpr (Sink::kReadsPosition) cursor_.settle();
    }
    std::size_t depth() const noexcept { return open_.size(); }

    Cursor cursor_;
    XML_Parser& parser_;
    Sink& sink_;
    bool inPlace_ = false;  // names and values are passed on where they lie in the input

    InlineGrowBuffer<OpenElement, 32> open_;
    InlineChunkStack<1024> openMemory_;  // names and bindings of open elements
    Bindings bindings_;

    InlineGrowBuffer<TagAttribute, 8> attributes_;  // of the start tag being read
    std::size_t declarations_ = 0;                  // on the start tag being read
    ChunkStack::Mark declaredMark_{};   // of openMemory_ in front of them, in plain content
    InlineChunkStack<1024> tagMemory_;  // names and values of the start tag being read
    AttributeCheck attributeCheck_;

    GrowBuffer<std::uint8_t> text_;  // text with references, put together
    bool textAscii_ = true;
};

}  // namespace netxml

#include "parser/scan_element.hpp"
#include "parser/scan_misc.hpp"
#include "parser/scan_text.hpp"
