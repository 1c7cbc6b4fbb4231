// The sink that builds a tree directly, in slabs and in document order.
#pragma once

#include "dom/slab.hpp"
#include "parser/internal_text.hpp"
#include "parser/plain_tree.hpp"
#include "parser/start_tag.hpp"
#include "parser/tree_builder.hpp"

namespace netxml {

class TreeSink {
public:
    static constexpr bool kReadsPosition = false;
    static constexpr bool kKeepsComments = false;
    static constexpr bool kTakesInputInPlace = true;

    // `inputSize` is the size of the input in bytes, or 0 if that is not known.
    TreeSink(std::size_t inputSize, std::uint32_t errorTextSize, char* errorText) noexcept
        : arena_{inputSize * kTreePerInput}, builder_{root_, current_, &arena_},
          errorText_{errorText}, errorTextSize_{errorTextSize}
    {
    }

    void begin(XML_Parser& parser) noexcept { parser_ = &parser; }
    void report(XML_Parser& parser, const XML_IO_InStream& stream) noexcept;

    ParseError startDocument() noexcept { return ParseError::None; }
    ParseError endDocument() noexcept;
    ParseError startElement(const StartTag& tag) noexcept;
    ParseError endElement(const OpenName&, const Bindings&) noexcept
    {
        builder_.leaveElement();
        return ParseError::None;
    }
    ParseError characters(const Span& text) noexcept
    {
        return textual(values_, builder_, XML_DOM_NODE_TEXT, text);
    }
    ParseError cdata(const Span& text) noexcept
    {
        return textual(values_, builder_, XML_DOM_NODE_CDATA, text);
    }
    ParseError comment(Span) noexcept { return ParseError::None; }
    ParseError processingInstruction(Span, const Span*) noexcept { return ParseError::None; }

    using Plain = PlainTree;
    Plain plain() noexcept { return {values_, builder_, arena_.room(), current_}; }

    // True once an error has been written into the caller's buffer.
    bool hasReported() const noexcept { return reported_; }
    // Hands the finished tree to the caller.
    XML_DOM_Node* release() noexcept;
    // Deletes what was built; true if that was because no converter could be had.
    bool discard() noexcept;

private:
    // A tree of records takes up to about this many times its text; too small a guess costs another
    // slab, too large a one memory that nobody touches.
    static constexpr std::size_t kTreePerInput = 8;

    ParseError addElement(const Span& name) noexcept;
    ParseError addDeclarations(const StartTag& tag) noexcept;
    ParseError addDeclaration(Binding& binding) noexcept;
    ParseError addAttribute(const TagAttribute& attribute) noexcept;

    Arena arena_;
    XML_DOM_Node* root_ = nullptr;
    XML_DOM_Node* current_ = nullptr;  // the element that gets the next child
    TreeBuilder builder_;
    GrowBuffer<Binding*> declared_;  // on the tag at hand, newest first
    XML_Parser* parser_ = nullptr;
    InternalText names_;
    InternalText values_;
    char* errorText_;
    std::uint32_t errorTextSize_;
    bool reported_ = false;
};

}  // namespace netxml
