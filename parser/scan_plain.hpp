// Plain content: the elements, attributes and texts that most documents consist of, crossed in
// blocks.
//
// Plain is what has names within ASCII and no references, resolves its prefixes from left to right,
// and ends before the next refill of the buffer is due. Whatever is not plain, or wrong, is left
// where it begins to the rules that go character by character (scan_element.hpp, scan_text.hpp):
// cursor and mark stand there as these would have put them.
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

template <class Sink>
[[gnu::always_inline]] inline bool Scanner<Sink>::plainDeclaration(Plain& out, const QName& name,
                                                                   const Span& value) noexcept
{
    const Span prefix = name.prefix.empty() ? Span{} : name.local;
    // The element is not open yet, but what it declares counts as declared in it.
    if (declarations_ == 0) declaredMark_ = openMemory_.mark();
    if (bindings_.declare(openMemory_, prefix, value, depth() + 1) != ParseError::None)
        return false;
    ++declarations_;
    return out.lay(*bindings_.newest());
}

// An attribute or a declaration. A prefix that was resolved could be declared later in the tag.
template <class Sink>
[[gnu::always_inline]] inline bool Scanner<Sink>::plainAttribute(PlainText& text, Plain& out,
                                                                 SeenNames& seen) noexcept
{
    QName name;
    Span value;
    Resolution nameSpace;
    if (!text.qualifiedName(name) || !text.value(value)) return false;
    const std::uint64_t key = SeenNames::keyOf(name.local);
    if ((name.prefix.empty() ? name.local : name.prefix).view() == "xmlns")
        return !seen.anyPrefix() && plainDeclaration(out, name, value);
    if (!seen.add(name, key) || !resolvePlain(name, nameSpace)) return false;
    if (kCopiesNames && !(keepName(tagMemory_, name) && tagMemory_.keep(value))) return false;
    return out.lay(name, value, nameSpace);
}

template <class Sink>
[[gnu::always_inline]] inline bool Scanner<Sink>::plainAttributes(PlainText& text, Plain& out,
                                                                  SeenNames& seen) noexcept
{
    seen.clear();
    for (;;) {
        const bool apart = text.skipSeparator();
        if (text.end - text.p < 2) return false;
        if (*text.p == '>' || (*text.p == '/' && text.p[1] == '>')) return true;
        if (!apart || !plainAttribute(text, out, seen)) return false;
    }
}

// A start tag. Entered at "<", left at its ">" or "/>".
template <class Sink>
[[gnu::always_inline]] inline bool Scanner<Sink>::plainStartTag(PlainText& text, Plain& out,
                                                                QName& name, Resolution& nameSpace,
                                                                SeenNames& seen) noexcept
{
    ++text.p;
    if (!text.qualifiedName(name)) return false;
    if constexpr (kCopiesNames) {
        if (!keepName(openMemory_, name)) return false;
    }
    if (!out.lay(name) || !staysKnown(out, name)) return false;
    if (*text.p != '>' && !plainAttributes(text, out, seen)) return false;
    return resolvePlain(name, nameSpace);
}

// Whether a name that was not copied will be there for the end tag: where the input moves on, it is
// taken from what the sink has made of it.
template <class Sink>
[[gnu::always_inline]] inline bool Scanner<Sink>::staysKnown(const Plain& out, QName& name) noexcept
{
    if constexpr (!kCopiesNames) {
        if (!inPlace_) [[unlikely]] {
            name.local.data = out.nameLaid();
            return name.prefix.empty();
        }
    }
    return true;
}

// Puts an element that declares nothing onto the stack, where there is room. What was not copied
// has taken no memory since it began.
template <class Sink>
[[gnu::always_inline]] inline void Scanner<Sink>::keepOpen(OpenElement& element) noexcept
{
    if constexpr (!kCopiesNames) element.memory = openMemory_.mark();
    open_.add(element);
}

// Brings cursor and position to the place reached, for a sink that shows them.
template <class Sink>
[[gnu::always_inline]] inline void Scanner<Sink>::reach(PlainText& text) noexcept
{
    if constexpr (Sink::kReadsPosition) {
        cursor_.moveTo(text.p, text.mark);
        if (text.needsCount) cursor_.settle();
        else cursor_.countColumns();
        text.needsCount = false;
    }
}

// A start tag with its event. Entered at "<", left behind it. None of it has happened if `found` is
// None; an error leaves it in front of the ">".
template <class Sink>
[[gnu::always_inline]] inline ParseError
Scanner<Sink>::enterPlain(PlainText& text, Plain& out, OpenElement& element, SeenNames& seen,
                          PlainTag& found) noexcept
{
    ChunkStack::Mark memory;
    ChunkStack::Mark values;
    QName name;
    Resolution nameSpace;
    declarations_ = 0;
    if constexpr (kCopiesNames) {
        memory = openMemory_.mark();
        values = tagMemory_.mark();
    }
    const bool plain = plainStartTag(text, out, name, nameSpace, seen);
    ParseError error = ParseError::None;
    element.name = OpenName{name};
    if constexpr (!kCopiesNames) memory = declaredMark_;
    if (kCopiesNames || declarations_ != 0) element.memory = memory;
    if (plain) {
        reach(text);
        error = out.enter(name, nameSpace, bindings_);
    } else {
        out.forget();
        if (declarations_ != 0) bindings_.drop(depth() + 1);
        if (kCopiesNames || declarations_ != 0) openMemory_.release(memory);
    }
    if constexpr (kCopiesNames) tagMemory_.release(values);
    found = PlainTag::None;
    if (!plain || error != ParseError::None) return error;
    const bool empty = *text.p == '/';
    text.p += empty ? 2 : 1;
    found = empty ? PlainTag::Empty : PlainTag::Open;
    return ParseError::None;
}

// Crosses plain content as far as it goes; also the root's start tag, which nothing is open for.
//
// The innermost open element stays in registers until another one is opened in it: most are closed
// before that, and never come onto the stack. One that declares something goes there at once.
template <class Sink>
ParseError Scanner<Sink>::plainContent(bool atRoot) noexcept
{
    PlainText text{cursor_.place(), cursor_.markPlace(), cursor_.plainEnd(), cursor_.bufferEnd()};
    if constexpr (Sink::kReadsPosition) cursor_.settle();
    Plain out = sink_.plain();
    SeenNames seen;
    OpenElement top{};
    bool hasTop = false;  // else the innermost one is that of the stack
    const std::uint8_t* start = text.p;
    const std::uint8_t* mark = text.mark;
    ParseError error = ParseError::None;
    for (; error == ParseError::None && (hasTop || atRoot || !open_.empty());
         start = text.p, mark = text.mark) {
        text.skipBlanks();
        if (text.tagEnd - text.p < 2) break;
        if (*text.p != '<') {
            Span characters;
            if (!text.characters(characters)) break;
            reach(text);
            error = out.addText(characters);
            start = text.p;
            mark = text.mark;
            if (error != ParseError::None) break;
        }
        bool closes = text.p[1] == '/';
        if (!closes) {
            if (hasTop) keepOpen(top);
            hasTop = false;
            if (!open_.reserve(1)) break;  // so that it does not fail when the element is open
            PlainTag found;
            error = enterPlain(text, out, top, seen, found);
            if (found == PlainTag::None) {
                if (error != ParseError::None) start = text.p, mark = text.mark;
                break;
            }
            atRoot = false;
            hasTop = declarations_ == 0;
            if (!hasTop) open_.add(top);
            closes = found == PlainTag::Empty;
        } else if (atRoot || !text.endTag(hasTop ? top.name : open_.back().name)) {
            break;
        }
        if (closes) {
            reach(text);
            error = out.leave(hasTop ? top.name : open_.back().name, bindings_);
            if (!hasTop) dropElement();
            else if constexpr (kCopiesNames) openMemory_.release(top.memory);
            hasTop = false;
        }
    }
    if (hasTop) keepOpen(top);
    out.store();
    cursor_.moveTo(start, mark);
    return error;
}

}  // namespace netxml
