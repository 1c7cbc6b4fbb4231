// The order of a document, and the items that may stand anywhere in it.
#pragma once

#include "parser/scan_name.hpp"
#include "parser/scan_prolog.hpp"
#include "parser/scanner.hpp"
#include "support/block.hpp"

namespace netxml {

template <class Sink>
ParseError Scanner<Sink>::document() noexcept
{
    ParseError error = prolog();
    if (error != ParseError::None) return error;
    cursor_.skipBlanks();
    if (cursor_.atEnd()) return ParseError::DocumentEmpty;
    if (!cursor_.at('<')) return ParseError::StartTagExpected;
    error = element();
    if (error == ParseError::None) error = miscellaneous();
    if (error != ParseError::None) return error;
    if (!cursor_.atEnd()) return ParseError::ExtraContent;
    observe();
    return sink_.endDocument();
}

template <class Sink>
ParseError Scanner<Sink>::prolog() noexcept
{
    ParseError error = ParseError::None;
    if (cursor_.at("<?xml")) error = scanXmlDeclaration(cursor_, parser_.encoding);
    if (error != ParseError::None) return error;
    inPlace_ = Sink::kTakesInputInPlace && cursor_.inputStays();
    observe();
    error = sink_.startDocument();
    if (error == ParseError::None) error = miscellaneous();
    if (error != ParseError::None || !cursor_.at("<!DOCTYPE")) return error;
    error = scanDoctype(cursor_);
    return error == ParseError::None ? miscellaneous() : error;
}

// Blanks, comments and processing instructions in any number and order.
template <class Sink>
ParseError Scanner<Sink>::miscellaneous() noexcept
{
    for (;;) {
        ParseError error = ParseError::None;
        cursor_.skipBlanks();
        if (cursor_.at("<!--")) error = comment();
        else if (cursor_.at("<?")) error = processingInstruction();
        else return ParseError::None;
        if (error != ParseError::None) return error;
    }
}

// A comment. Entered at "<!--", left after "-->"; the event comes after that, too.
//
//     comment := "<!--" (valid-char without "--")* "-->"
template <class Sink>
ParseError Scanner<Sink>::comment() noexcept
{
    cursor_.advance(4);
    cursor_.setMark();
    bool ascii = true;
    for (;;) {
        cursor_.cross(findStop<NativeBlock, '-'>);
        if (cursor_.at("-->")) break;
        if (cursor_.atEnd()) return ParseError::CommentNotFinished;
        if (cursor_.at("--")) return ParseError::HyphenInComment;
        if (!cursor_.atValid()) return ParseError::InvalidCharacter;
        cursor_.advanceValid(ascii);
    }
    const std::size_t size = cursor_.fromMark();
    cursor_.advance(3);
    if constexpr (!Sink::kKeepsComments) return ParseError::None;
    observe();
    return sink_.comment({cursor_.marked(0), size, ascii});
}

// A processing instruction. Entered at "<?", left after "?>"; the event comes before that.
//
//     instruction := "<?" name (blank+ valid-char*)? "?>"
template <class Sink>
ParseError Scanner<Sink>::processingInstruction() noexcept
{
    const ChunkStack::Mark memory = tagMemory_.mark();
    cursor_.advance(2);
    if (cursor_.atEnd()) return ParseError::NoTargetName;
    Span target;
    ParseError error = name(tagMemory_, target);
    if (error != ParseError::None) return error;
    if (target.view() == "xml") return ParseError::NoTargetName;
    error = instructionData(target);
    tagMemory_.release(memory);
    if (error != ParseError::None) return error;
    cursor_.advance(2);
    return ParseError::None;
}

template <class Sink>
ParseError Scanner<Sink>::instructionData(Span target) noexcept
{
    const bool hasData = !cursor_.at("?>");
    bool ascii = true;
    if (hasData) {
        if (!cursor_.atBlank()) return ParseError::SpaceRequired;
        cursor_.skipBlanks();
        for (;;) {
            cursor_.cross(findStop<NativeBlock, '?'>);
            if (cursor_.at("?>")) break;
            if (cursor_.atEnd()) return ParseError::InstructionNotFinished;
            if (!cursor_.atValid()) return ParseError::InvalidCharacter;
            cursor_.advanceValid(ascii);
        }
    }
    if constexpr (!Sink::kKeepsComments) return ParseError::None;
    observe();
    const Span data{cursor_.marked(0), cursor_.fromMark(), ascii};
    return sink_.processingInstruction(target, hasData ? &data : nullptr);
}

}  // namespace netxml
