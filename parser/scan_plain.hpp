// Plain content: the elements, attributes and texts that most documents consist of, crossed in
// blocks.
//
// Plain is what stays within ASCII, has no reference and no declaration of a namespace, and ends
// before the next refill of the buffer is due. Whatever is not plain, or wrong, is left where it
// begins to the rules that go character by character (scan_element.hpp, scan_text.hpp): cursor and
// mark stand there as these would have put them.
//
// A sink offers a `Plain` that takes what was found. What it has laid of a start tag is given up
// again (forget) when the tag turns out not to be plain. All of this is inlined into one loop, so
// that places and records lie in registers.
#pragma once

#include "parser/plain_text.hpp"
#include "parser/scanner.hpp"
#include "parser/seen_names.hpp"

namespace netxml {

template <class Sink>
[[gnu::always_inline]] inline bool Scanner<Sink>::resolvePlain(const QName& name,
                                                               Resolution& nameSpace) noexcept
{
    if (name.prefix.empty()) return true;
    nameSpace = bindings_.resolve(name.prefix.view());
    return nameSpace.bound();
}

// A copy with a NUL behind it, where the text does not stay or the sink needs that.
template <class Sink>
[[gnu::always_inline]] inline bool Scanner<Sink>::keepPlain(ChunkStack& memory,
                                                            QName& name) noexcept
{
    return memory.keep(name.local) && (name.prefix.empty() || memory.keep(name.prefix));
}

template <class Sink>
[[gnu::always_inline]] inline bool
Scanner<Sink>::plainAttribute(PlainText& text, Plain& out, SeenNames& seen) noexcept
{
    constexpr std::uint64_t kXmlns = UINT64_C(0x736E6C6D78);
    QName name;
    Span value;
    Resolution nameSpace;
    if (!text.qualifiedName(name) || !text.value(value)) return false;
    const std::uint64_t key = SeenNames::keyOf(name.local);
    if ((name.prefix.empty() ? key : SeenNames::keyOf(name.prefix)) == kXmlns) return false;
    if (!seen.add(name.local, key) || !resolvePlain(name, nameSpace)) return false;
    if (!Sink::kTakesInputInPlace && !(keepPlain(tagMemory_, name) && tagMemory_.keep(value)))
        return false;
    return out.lay(name, value, nameSpace);
}

// A start tag. Entered at "<", left at its ">" or "/>".
template <class Sink>
template <bool kCopies>
[[gnu::always_inline]] inline bool Scanner<Sink>::plainStartTag(PlainText& text, Plain& out,
                                                                OpenElement& element,
                                                                SeenNames& seen) noexcept
{
    QName& name = element.name;
    Resolution nameSpace;
    ++text.p;
    if (!text.qualifiedName(name) || !resolvePlain(name, nameSpace)) return false;
    if (kCopies && !keepPlain(openMemory_, name)) return false;
    if (!out.lay(name, nameSpace)) return false;
    if (*text.p == '>') return true;
    seen.clear();
    for (;;) {
        const bool apart = isBlank(*text.p);
        text.skipBlanks();
        if (text.p >= text.end) return false;
        if (*text.p == '>' || (*text.p == '/' && text.p[1] == '>')) return true;
        if (!apart || !plainAttribute(text, out, seen)) return false;
    }
}

// Puts an element onto the stack, where room was made for it. What is not copied has taken no
// memory since the element began.
template <class Sink>
template <bool kCopies>
[[gnu::always_inline]] inline void Scanner<Sink>::keepOpen(OpenElement& element) noexcept
{
    if constexpr (!kCopies) element.memory = openMemory_.mark();
    *open_.next() = element;
    open_.commit();
}

// Brings cursor and position to the place reached, for a sink that shows them.
template <class Sink>
[[gnu::always_inline]] inline void Scanner<Sink>::reach(const PlainText& text) noexcept
{
    if constexpr (Sink::kReadsPosition) {
        cursor_.moveTo(text.p, text.mark);
        cursor_.settle();
    }
}

// A start tag with its event. Entered at "<", left behind it. None of it has happened unless
// `entered`; an error leaves it in front of the ">".
template <class Sink>
template <bool kCopies>
[[gnu::always_inline]] inline ParseError
Scanner<Sink>::enterPlain(PlainText& text, Plain& out, OpenElement& element, SeenNames& seen,
                          bool& entered, bool& empty) noexcept
{
    ChunkStack::Mark values;
    if constexpr (kCopies) element.memory = openMemory_.mark();
    if constexpr (!Sink::kTakesInputInPlace) values = tagMemory_.mark();
    entered = plainStartTag<kCopies>(text, out, element, seen);
    ParseError error = ParseError::None;
    if (entered) {
        reach(text);
        error = out.enter(bindings_);
    } else {
        out.forget();
        if constexpr (kCopies) openMemory_.release(element.memory);
    }
    if constexpr (!Sink::kTakesInputInPlace) tagMemory_.release(values);
    if (!entered || error != ParseError::None) return error;
    empty = *text.p == '/';
    text.p += empty ? 2 : 1;
    return ParseError::None;
}

// The innermost open element stays in registers until another one is opened in it: most are closed
// before that, and never come onto the stack.
template <class Sink>
template <bool kCopies>
ParseError Scanner<Sink>::plainRun() noexcept
{
    PlainText text{cursor_.place(), cursor_.markPlace(), cursor_.plainEnd(), cursor_.bufferEnd()};
    Plain out = sink_.plain();
    SeenNames seen;
    OpenElement top{};
    bool hasTop = false;  // else the innermost one is that of the stack
    const std::uint8_t* start = text.p;
    const std::uint8_t* mark = text.mark;
    ParseError error = ParseError::None;
    while (error == ParseError::None && (hasTop || !open_.empty())) {
        bool closes = false;
        text.skipBlanks();
        if (text.tagEnd - text.p < 2) break;
        if (*text.p != '<') {
            Span characters;
            if (!text.characters(characters)) break;
            reach(text);
            if (!out.addText(characters, error)) break;
        } else if (text.p[1] != '/') {
            if (!open_.reserve(2)) break;  // for this one and the one around it: neither fails later
            if (hasTop) keepOpen<kCopies>(top);
            error = enterPlain<kCopies>(text, out, top, seen, hasTop, closes);
            if (!hasTop) break;
        } else {
            if (!text.endTag(hasTop ? top.name : open_.back().name)) break;
            closes = true;
        }
        if (closes && error == ParseError::None) {
            reach(text);
            error = out.leave(hasTop ? top.name : open_.back().name, bindings_);
            if (!hasTop) dropElement();
            else if constexpr (kCopies) openMemory_.release(top.memory);
            hasTop = false;
        }
        start = text.p;
        mark = text.mark;
    }
    if (hasTop) keepOpen<kCopies>(top);
    out.store();
    cursor_.moveTo(start, mark);
    return error;
}

// Crosses plain content as far as it goes.
template <class Sink>
ParseError Scanner<Sink>::plainContent() noexcept
{
    if constexpr (Sink::kTakesInputInPlace) {
        if (inPlace_) return plainRun<false>();
    }
    return plainRun<true>();
}

}  // namespace netxml
