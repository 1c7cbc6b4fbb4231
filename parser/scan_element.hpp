// Elements with their tags. Open elements lie on a stack of the heap's, so nesting costs no call.
#pragma once

#include "parser/scan_name.hpp"
#include "parser/scanner.hpp"

namespace netxml {

template <class Sink>
ParseError Scanner<Sink>::element() noexcept
{
    const std::uint8_t* start = cursor_.place();
    ParseError error = plainContent(true);
    if (error == ParseError::None && cursor_.place() == start) error = startTag();
    while (error == ParseError::None && !open_.empty()) {
        error = plainContent(false);
        if (error == ParseError::None && !open_.empty()) error = content();
    }
    return error;
}

template <class Sink>
ParseError Scanner<Sink>::content() noexcept
{
    if (cursor_.atEnd()) return ParseError::TagNotFinished;
    if (!cursor_.at('<')) return characterData();
    if (cursor_.at("</")) return endTag();
    if (cursor_.at("<![CDATA[")) return cdataSection();
    if (cursor_.at("<!--")) return comment();
    if (cursor_.at("<?")) return processingInstruction();
    return startTag();
}

// Reads a name and keeps it: where it lies in the input, or in `memory`.
template <class Sink>
ParseError Scanner<Sink>::name(ChunkStack& memory, Span& name) noexcept
{
    bool ascii = true;
    const ParseError error = scanName(cursor_, ascii);
    if (error != ParseError::None) return error;
    name = {cursor_.marked(0), cursor_.fromMark(), ascii};
    return inPlace_ || memory.keep(name) ? ParseError::None : ParseError::NoMemory;
}

//     qualified-name := (name ":")? name
template <class Sink>
ParseError Scanner<Sink>::qualifiedName(ChunkStack& memory, QName& qname) noexcept
{
    qname.prefix = {};
    ParseError error = name(memory, qname.local);
    if (error != ParseError::None || !cursor_.at(':')) return error;
    cursor_.advance();
    if (cursor_.atEnd()) return ParseError::NameRequired;
    qname.prefix = qname.local;
    error = name(memory, qname.local);
    if (error != ParseError::None || inPlace_) return error;
    return keepName(memory, qname) ? ParseError::None : ParseError::NoMemory;
}

// Puts copies with a NUL behind them in place of a name's parts, one behind the other.
template <class Sink>
bool Scanner<Sink>::keepName(ChunkStack& memory, QName& name) noexcept
{
    if (name.prefix.empty()) [[likely]]
        return memory.keep(name.local);
    return memory.keepBoth(name.prefix, name.local);
}

// A start tag. Entered at "<", left after ">" or "/>".
//
//     start-tag := "<" qualified-name (blank+ attribute)* blank* ("/>" | ">")
template <class Sink>
ParseError Scanner<Sink>::startTag() noexcept
{
    if (!open_.push({{}, openMemory_.mark()})) return ParseError::NoMemory;
    cursor_.advance();
    if (cursor_.atEnd()) return ParseError::TagNotFinished;
    QName name;
    ParseError error = qualifiedName(openMemory_, name);
    if (error != ParseError::None) return error;
    open_.back().name = OpenName{name};

    const ChunkStack::Mark memory = tagMemory_.mark();
    attributes_.clear();
    declarations_ = 0;
    error = tagAttributes();
    if (error == ParseError::None) error = reportStart(name);
    if (error != ParseError::None) return error;
    tagMemory_.release(memory);

    const bool empty = cursor_.at('/');
    cursor_.advance(empty ? 2 : 1);
    return empty ? closeElement() : ParseError::None;
}

// The attributes up to the end of the tag, which is not passed.
template <class Sink>
ParseError Scanner<Sink>::tagAttributes() noexcept
{
    for (;;) {
        if (cursor_.at('>') || cursor_.at("/>")) return ParseError::None;
        if (!cursor_.atEnd() && !cursor_.atBlank()) return ParseError::SpaceRequired;
        cursor_.skipBlanks();
        if (cursor_.at('>') || cursor_.at("/>")) return ParseError::None;
        if (cursor_.atEnd()) return ParseError::TagNotFinished;
        const ParseError error = tagAttribute();
        if (error != ParseError::None) return error;
    }
}

//     attribute := qualified-name blank* "=" blank* quoted-value
template <class Sink>
ParseError Scanner<Sink>::tagAttribute() noexcept
{
    TagAttribute attribute;
    ParseError error = qualifiedName(tagMemory_, attribute.name);
    if (error != ParseError::None) return error;
    cursor_.passBlanks();
    if (!cursor_.at('=')) return ParseError::EqualRequired;
    cursor_.advance();
    cursor_.skipBlanks();
    error = attributeValue(attribute.value);
    if (error != ParseError::None) return error;

    const QName& name = attribute.name;
    if ((name.prefix.empty() ? name.local : name.prefix).view() == "xmlns")
        return declaration(name, attribute.value);
    return attributes_.push(attribute) ? ParseError::None : ParseError::NoMemory;
}

template <class Sink>
ParseError Scanner<Sink>::declaration(const QName& name, Span value) noexcept
{
    const Span prefix = name.prefix.empty() ? Span{} : name.local;
    ++declarations_;
    return bindings_.declare(openMemory_, prefix, value, depth());
}

// Resolves the prefixes of a start tag, attributes first, and hands the tag to the sink.
template <class Sink>
ParseError Scanner<Sink>::reportStart(const QName& name) noexcept
{
    TagAttribute* attributes = attributes_.data();
    const std::size_t count = attributes_.size();
    for (std::size_t i = 0; i < count; ++i) {
        const Span prefix = attributes[i].name.prefix;
        attributes[i].nameSpace = prefix.empty() ? Resolution{} : bindings_.resolve(prefix.view());
        if (!prefix.empty() && !attributes[i].nameSpace.bound())
            return ParseError::PrefixNotDefined;
    }
    ParseError error = attributeCheck_.distinct(attributes, count);
    if (error != ParseError::None) return error;

    const Resolution nameSpace = bindings_.resolve(name.prefix.view());
    if (!name.prefix.empty() && !nameSpace.bound()) return ParseError::PrefixNotDefined;
    parser_.pendingAttributes = count != 0 ? attributes : nullptr;
    parser_.bindings = bindings_.newest();
    observe();
    error = sink_.startElement(
        {name, nameSpace, bindings_.newest(), depth(), declarations_, attributes, count});
    parser_.pendingAttributes = nullptr;
    return error;
}

// An end tag. Entered at "</", left after ">".
//
//     end-tag := "</" qualified-name blank* ">"
//
// Kept: only as much as the open element's name is compared, so "</ab>" for "a" lacks its ">".
template <class Sink>
ParseError Scanner<Sink>::endTag() noexcept
{
    const OpenName name = open_.back().name;
    cursor_.advance(2);
    if (name.prefixSize != 0) {
        cursor_.require(name.prefixSize + 1);
        const bool same = cursor_.atText(name.text, name.prefixSize) &&
                          cursor_.left() > name.prefixSize &&
                          *cursor_.marked(cursor_.fromMark() + name.prefixSize) == ':';
        if (!same) return ParseError::TagMismatch;
        cursor_.advance(name.prefixSize);
        cursor_.advance();
    }
    cursor_.require(name.localSize);
    if (!cursor_.atText(name.localText(), name.localSize)) return ParseError::TagMismatch;
    cursor_.advance(name.localSize);
    cursor_.skipBlanks();
    if (!cursor_.at('>')) return ParseError::TagNotFinished;
    cursor_.advance();
    return closeElement();
}

// The end event, and the end of what the element declared.
template <class Sink>
ParseError Scanner<Sink>::closeElement() noexcept
{
    observe();
    const ParseError error = sink_.endElement(open_.back().name, bindings_);
    dropElement();
    return error;
}

}  // namespace netxml
