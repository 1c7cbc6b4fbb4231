// Text: character data, CDATA sections, attribute values and the references in them.
#pragma once

#include "parser/scanner.hpp"
#include "support/block.hpp"

namespace netxml {

// Character data. Entered at any character but "<", left at "<" or the end of the input.
//
// Blanks at both ends are dropped, unless a reference made them; what is empty then is no event.
template <class Sink>
ParseError Scanner<Sink>::characterData() noexcept
{
    cursor_.skipBlanks();
    std::size_t start = cursor_.fromMark();
    std::size_t kept = 0;  // bytes of text_ that a reference ends in: they are not trimmed
    text_.clear();
    textAscii_ = true;
    for (;;) {
        cursor_.cross(findStop<NativeBlock, '<', '&', ']'>);
        if (cursor_.atEnd() || cursor_.at('<')) break;
        if (cursor_.at("]]>")) return ParseError::CDataEndInContent;
        if (cursor_.at('&')) {
            if (!text_.append(cursor_.marked(start), cursor_.fromMark() - start))
                return ParseError::Internal;
            const ParseError error = reference();
            if (error != ParseError::None) return error;
            kept = text_.size();
            start = cursor_.fromMark();
            continue;
        }
        if (!cursor_.atValid()) return ParseError::InvalidCharacter;
        cursor_.advanceValid(textAscii_);
    }
    Span text{cursor_.marked(start), cursor_.fromMark() - start, textAscii_};
    if (kept != 0) {
        if (!text_.append(text.data, text.size)) return ParseError::Internal;
        text = {text_.data(), text_.size(), textAscii_};
    }
    while (text.size > kept && isBlank(text.data[text.size - 1])) --text.size;
    if (text.empty()) return ParseError::None;
    observe();
    return sink_.characters(text);
}

// A CDATA section. Entered at "<![CDATA[", left after "]]>"; the event comes before that.
//
//     cdata := "<![CDATA[" valid-char* "]]>"
//
// The mark keeps the content in the text buffer, so the event gets it without a copy.
template <class Sink>
ParseError Scanner<Sink>::cdataSection() noexcept
{
    cursor_.advance(9);
    cursor_.setMark();
    bool ascii = true;
    for (;;) {
        cursor_.cross(findStop<NativeBlock, ']'>);
        if (cursor_.at("]]>")) break;
        if (cursor_.atEnd()) return ParseError::CDataNotFinished;
        if (!cursor_.atValid()) return ParseError::InvalidCharacter;
        cursor_.advanceValid(ascii);
    }
    observe();
    const ParseError error = sink_.cdata({cursor_.marked(0), cursor_.fromMark(), ascii});
    if (error != ParseError::None) return error;
    cursor_.advance(3);
    return ParseError::None;
}

// An attribute's value with its quotes.
template <class Sink>
ParseError Scanner<Sink>::attributeValue(Span& value) noexcept
{
    const char quote = cursor_.at('"') ? '"' : '\'';
    if (!cursor_.at(quote)) return ParseError::StringNotStarted;
    cursor_.advance();
    return quotedValue(quote, value);
}

// Entered behind the opening quote, left behind the closing one. Blanks and line ends stay as
// written.
template <class Sink>
ParseError Scanner<Sink>::quotedValue(char quote, Span& value) noexcept
{
    std::size_t start = cursor_.fromMark();
    bool assembled = false;
    text_.clear();
    textAscii_ = true;
    for (;;) {
        cursor_.cross(findStop<NativeBlock, '"', '\'', '<', '&'>);
        if (cursor_.at(quote)) break;
        if (cursor_.atEnd()) return ParseError::StringNotClosed;
        if (cursor_.at('<')) return ParseError::LessThanInAttribute;
        if (cursor_.at('&')) {
            if (!text_.append(cursor_.marked(start), cursor_.fromMark() - start))
                return ParseError::Internal;
            const ParseError error = reference();
            if (error != ParseError::None) return error;
            assembled = true;
            start = cursor_.fromMark();
            continue;
        }
        if (!cursor_.atValid()) return ParseError::InvalidCharacter;
        cursor_.advanceValid(textAscii_);
    }
    Span raw{cursor_.marked(start), cursor_.fromMark() - start, textAscii_};
    if (assembled) {
        if (!text_.append(raw.data, raw.size)) return ParseError::Internal;
        raw = {text_.data(), text_.size(), textAscii_};
    }
    if ((!inPlace_ || assembled) && !tagMemory_.keep(raw)) return ParseError::Internal;
    value = raw;
    cursor_.advance();
    return ParseError::None;
}

// A reference. Entered at "&", left behind its ";"; what it stands for is appended to text_.
template <class Sink>
ParseError Scanner<Sink>::reference() noexcept
{
    cursor_.advance();
    if (cursor_.at('#')) return characterReference();
    struct Entity {
        char name[6];
        std::uint8_t size;
        std::uint8_t character;
    };
    static constexpr Entity kEntities[] = {
        {"lt;", 3, '<'}, {"gt;", 3, '>'}, {"amp;", 4, '&'}, {"apos;", 5, '\''}, {"quot;", 5, '"'},
    };
    for (const Entity& entity : kEntities) {
        if (!cursor_.atText(reinterpret_cast<const std::uint8_t*>(entity.name), entity.size))
            continue;
        cursor_.advance(entity.size);
        return text_.push(entity.character) ? ParseError::None : ParseError::Internal;
    }
    return ParseError::UndeclaredEntity;
}

// Entered at "#". The number wraps at 32 bits and may have any number of digits.
template <class Sink>
ParseError Scanner<Sink>::characterReference() noexcept
{
    const bool hexadecimal = cursor_.at("#x");
    cursor_.advance(hexadecimal ? 2 : 1);
    const std::uint32_t base = hexadecimal ? 16 : 10;
    std::uint32_t code = 0;
    for (; !cursor_.atEnd(); cursor_.advance()) {
        const std::uint32_t digit = digitOf(cursor_.peek());
        if (digit >= base) break;
        code = code * base + digit;
    }
    if (!cursor_.at(';')) return ParseError::SemicolonRequired;
    cursor_.advance();
    if (!isValid(code)) return ParseError::InvalidCharacter;
    std::uint8_t bytes[4];
    if (code >= 0x80) textAscii_ = false;
    return text_.append(bytes, encodeCharacter(code, bytes)) ? ParseError::None
                                                             : ParseError::Internal;
}

}  // namespace netxml
