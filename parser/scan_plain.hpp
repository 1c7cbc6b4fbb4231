// Plain content: the elements, attributes and texts that most documents consist of, crossed in
// blocks.
//
// Plain is what stays within ASCII, has no reference and no declaration of a namespace, and ends
// before the next refill of the buffer is due. Whatever is not plain, or wrong, is left where it
// begins to the rules that go character by character (scan_element.hpp, scan_text.hpp): cursor and
// mark stand there as these would have put them.
#pragma once

#include "parser/plain_text.hpp"
#include "parser/scanner.hpp"

namespace netxml {

template <class Sink>
[[gnu::always_inline]] inline bool Scanner<Sink>::plainQName(PlainText& text, QName& name) noexcept
{
    name.prefix = {};
    if (!text.name(name.local)) return false;
    if (*text.p != ':') return true;
    ++text.p;
    name.prefix = name.local;
    return text.name(name.local);
}

// Sinks that do not copy what they keep get copies with a NUL behind them.
template <class Sink>
[[gnu::always_inline]] inline bool Scanner<Sink>::keepPlain(TagAttribute& attribute) noexcept
{
    if constexpr (Sink::kTakesInputInPlace) return true;
    QName& name = attribute.name;
    return tagMemory_.keep(name.local) && tagMemory_.keep(attribute.value) &&
           (name.prefix.empty() || tagMemory_.keep(name.prefix));
}

template <class Sink>
[[gnu::always_inline]] inline bool Scanner<Sink>::plainAttribute(PlainText& text) noexcept
{
    TagAttribute* attribute = attributes_.next();
    if (!attribute || !plainQName(text, attribute->name) || *text.p != '=') return false;
    ++text.p;
    const bool doubled = text.at('"');
    if (!doubled && !text.at('\'')) return false;
    const std::uint8_t* start = ++text.p;
    if (doubled) text.cross<'"', '<', '&'>();
    else text.cross<'\'', '<', '&'>();
    if (!text.at(doubled ? '"' : '\'')) return false;
    attribute->value = text.from(start);
    ++text.p;
    const QName& name = attribute->name;
    if ((name.prefix.empty() ? name.local : name.prefix).view() == "xmlns") return false;
    if (!keepPlain(*attribute)) return false;
    attributes_.commit();
    return true;
}

// The attributes up to the end of the tag, which is not passed.
template <class Sink>
[[gnu::always_inline]] inline bool Scanner<Sink>::plainAttributes(PlainText& text) noexcept
{
    for (;;) {
        if (!text.has(2)) return false;
        if (*text.p == '>' || (*text.p == '/' && text.p[1] == '>')) return true;
        if (!isBlank(*text.p)) return false;
        text.skipBlanks();
        if (!text.has(2)) return false;
        if (*text.p == '>' || (*text.p == '/' && text.p[1] == '>')) return true;
        if (!plainAttribute(text)) return false;
    }
}

// A start tag. Entered at "<", left at its ">" or "/>"; the element is then open, but not reported.
template <class Sink>
[[gnu::always_inline]] inline bool Scanner<Sink>::plainStartTag(PlainText& text) noexcept
{
    OpenElement* element = open_.next();
    ++text.p;
    if (!element || !plainQName(text, element->name)) return false;
    attributes_.clear();
    declarations_ = 0;
    if (!plainAttributes(text)) return false;
    QName& name = element->name;
    element->memory = openMemory_.mark();
    if (!inPlace_ &&
        !(openMemory_.keep(name.local) && (name.prefix.empty() || openMemory_.keep(name.prefix))))
        return false;
    open_.commit();
    return true;
}

// An end tag that is exactly that of the open element. Entered at "</", left behind ">".
template <class Sink>
[[gnu::always_inline]] inline bool Scanner<Sink>::plainEndTag(PlainText& text) noexcept
{
    const QName& name = open_.back().name;
    text.p += 2;
    if (!name.prefix.empty()) {
        if (!text.follows(name.prefix) || !text.at(':')) return false;
        ++text.p;
    }
    if (!text.follows(name.local)) return false;
    text.skipBlanks();
    if (!text.at('>')) return false;
    ++text.p;
    return true;
}

// Character data. Entered behind its leading blanks, left at "<"; `characters` is without the
// blanks at its end.
template <class Sink>
[[gnu::always_inline]] inline bool Scanner<Sink>::plainCharacters(PlainText& text,
                                                                  Span& characters) const noexcept
{
    const std::uint8_t* start = text.p;
    for (;; ++text.p) {
        text.cross<'<', '&', ']'>();
        if (!text.at(']')) break;
        if (!text.has(3) || (text.p[1] == ']' && text.p[2] == '>')) return false;
    }
    if (!text.at('<')) return false;
    characters = text.from(start);
    while (isBlank(characters.data[characters.size - 1])) --characters.size;
    return true;
}

// The start event, and the end event of an empty element. Entered at ">" or "/>", left behind it.
template <class Sink>
[[gnu::always_inline]] inline ParseError Scanner<Sink>::reportPlainStart(PlainText& text) noexcept
{
    cursor_.moveTo(text.p, text.mark);
    const QName& name = open_.back().name;
    ParseError error = ParseError::None;
    if (attributes_.empty() && name.prefix.empty()) {
        observe();
        error = sink_.startBare(name.local, bindings_);
    } else {
        error = reportStart();
    }
    if (error != ParseError::None) return error;
    const bool empty = *text.p == '/';
    text.p += empty ? 2 : 1;
    if (!empty) return ParseError::None;
    cursor_.moveTo(text.p, text.mark);
    return closeElement();
}

// Crosses plain content as far as it goes.
template <class Sink>
ParseError Scanner<Sink>::plainContent() noexcept
{
    PlainText text{cursor_.place(), cursor_.markPlace(), cursor_.plainEnd(), cursor_.bufferEnd()};
    const ChunkStack::Mark tagMemory = tagMemory_.mark();
    ParseError error = ParseError::None;
    const std::uint8_t* start = text.p;
    const std::uint8_t* mark = text.mark;
    while (!open_.empty()) {
        text.skipBlanks();
        if (!text.has(2)) break;
        if (*text.p != '<') {
            Span characters;
            if (!plainCharacters(text, characters)) break;
            cursor_.moveTo(text.p, text.mark);
            observe();
            error = sink_.characters(characters);
        } else if (text.p[1] == '/') {
            if (!plainEndTag(text)) break;
            cursor_.moveTo(text.p, text.mark);
            error = closeElement();
        } else {
            const ChunkStack::Mark memory = openMemory_.mark();
            if (!plainStartTag(text)) {
                openMemory_.release(memory);
                tagMemory_.release(tagMemory);
                break;
            }
            error = reportPlainStart(text);
            tagMemory_.release(tagMemory);
        }
        if (error != ParseError::None) return error;
        start = text.p;
        mark = text.mark;
    }
    cursor_.moveTo(start, mark);
    return ParseError::None;
}

}  // namespace netxml
