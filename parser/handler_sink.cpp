#include "parser/handler_sink.hpp"

#include "parser/error_text.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>

// The slots have numbers: other languages fill the table by them.
static_assert(sizeof(XML_SAX_Handler) == 32 * sizeof(void*));
static_assert(offsetof(XML_SAX_Handler, startDocument) == 12 * sizeof(void*));
static_assert(offsetof(XML_SAX_Handler, endDocument) == 13 * sizeof(void*));
static_assert(offsetof(XML_SAX_Handler, characters) == 16 * sizeof(void*));
static_assert(offsetof(XML_SAX_Handler, comment) == 17 * sizeof(void*));
static_assert(offsetof(XML_SAX_Handler, cdata) == 18 * sizeof(void*));
static_assert(offsetof(XML_SAX_Handler, processingInstruction) == 19 * sizeof(void*));
static_assert(offsetof(XML_SAX_Handler, error) == 20 * sizeof(void*));
static_assert(offsetof(XML_SAX_Handler, userData) == 28 * sizeof(void*));
static_assert(offsetof(XML_SAX_Handler, startElementNs) == 29 * sizeof(void*));
static_assert(offsetof(XML_SAX_Handler, endElementNs) == 30 * sizeof(void*));

static_assert(offsetof(XML_Parser, stream) == sizeof(void*));
static_assert(offsetof(XML_Parser, pendingAttributes) == 2 * sizeof(void*));
static_assert(offsetof(XML_Parser, freeAttributes) == 3 * sizeof(void*));
static_assert(offsetof(XML_Parser, bindings) == 4 * sizeof(void*));
static_assert(offsetof(XML_Parser, encoding) == 5 * sizeof(void*));
static_assert(offsetof(XML_Parser, error) == 5 * sizeof(void*) + 4);
static_assert(offsetof(XML_Parser, line) == 5 * sizeof(void*) + 8);
static_assert(offsetof(XML_Parser, column) == 5 * sizeof(void*) + 12);
static_assert(offsetof(XML_Parser, version) == 5 * sizeof(void*) + 16);

namespace netxml {
namespace {

const char* textOf(const Span& terminated) noexcept
{
    return terminated.empty() ? nullptr : terminated.view().data();
}

// Stands in for a handler that is not there.
constexpr XML_SAX_Handler kNothing{};

}  // namespace

HandlerSink::HandlerSink(const XML_SAX_Handler* handler) noexcept
    : handler_{handler ? *handler : kNothing}
{
}

void HandlerSink::report(XML_Parser& parser, const XML_IO_InStream& stream) noexcept
{
    if (!handler_.error) return;
    const Excerpt excerpt{stream};
    handler_.error(&parser, kReportFormat, static_cast<int>(parser.line),
                   static_cast<int>(parser.column), excerpt.text(),
                   messageOf(static_cast<ParseError>(parser.error)));
}

ParseError HandlerSink::startDocument() noexcept
{
    if (!handler_.startDocument) return ParseError::None;
    handler_.startDocument(parser_);
    return raised();
}

ParseError HandlerSink::endDocument() noexcept
{
    if (!handler_.endDocument) return ParseError::None;
    handler_.endDocument(parser_);
    return raised();
}

// Two texts for each declaration, in document order; the bindings come newest first.
bool HandlerSink::listDeclarations(const StartTag& tag) noexcept
{
    declarations_.clear();
    if (tag.declarationCount > UINT32_MAX || !declarations_.reserve(tag.declarationCount * 2))
        return false;
    const Binding* binding = tag.newestBinding;
    for (std::size_t i = 0; i < tag.declarationCount; ++i, binding = binding->olderBinding()) {
        declarations_.add(binding->name.view().data());
        declarations_.add(binding->prefixText());
    }
    std::reverse(declarations_.data(), declarations_.data() + declarations_.size());
    return true;
}

// Five texts for each attribute.
bool HandlerSink::listAttributes(const StartTag& tag) noexcept
{
    attributes_.clear();
    if (tag.attributeCount > UINT32_MAX || !attributes_.reserve(tag.attributeCount * 5))
        return false;
    for (std::size_t i = 0; i < tag.attributeCount; ++i) {
        if (!list(tag.attributes[i])) return false;
    }
    return true;
}

bool HandlerSink::list(const TagAttribute& attribute) noexcept
{
    const char* value = attribute.value.view().data();
    const char* row[5] = {attribute.name.local.view().data(), textOf(attribute.name.prefix),
                          attribute.nameSpace.text(), value, value + attribute.value.size};
    return attributes_.append(row, 5);
}

ParseError HandlerSink::startElement(const StartTag& tag) noexcept
{
    if (!listDeclarations(tag) || !listAttributes(tag)) return ParseError::NoMemory;
    return reportStart(tag.name, tag.nameSpace);
}

// With the declarations and attributes that are listed.
ParseError HandlerSink::reportStart(const QName& name, const Resolution& nameSpace) noexcept
{
    if (!handler_.startElementNs) return ParseError::None;
    handler_.startElementNs(
        parser_, name.local.view().data(), textOf(name.prefix), nameSpace.text(),
        static_cast<std::uint32_t>(declarations_.size() / 2), declarations_.data(),
        static_cast<std::uint32_t>(attributes_.size() / 5), 0, attributes_.data());
    return raised();
}

bool HandlerSink::Plain::lay(const Binding& binding) noexcept
{
    const char* row[2] = {binding.prefixText(), binding.name.view().data()};
    return sink_.declarations_.append(row, 2);
}

bool HandlerSink::Plain::lay(const QName& name, const Span& value,
                             const Resolution& nameSpace) noexcept
{
    return sink_.list({name, value, nameSpace});
}

ParseError HandlerSink::Plain::enter(const QName& name, const Resolution& nameSpace,
                                     const Bindings& bindings) noexcept
{
    XML_Parser& parser = *sink_.parser_;
    parser.bindings = bindings.newest();
    parser.pendingAttributes = sink_.attributes_.empty() ? nullptr : sink_.attributes_.data();
    const ParseError error =
        sink_.reportStart(name, name.prefix.empty() ? bindings.resolve({}) : nameSpace);
    parser.pendingAttributes = nullptr;
    return error;
}

ParseError HandlerSink::endElement(const OpenName& name, const Bindings& bindings) noexcept
{
    if (!handler_.endElementNs) return ParseError::None;
    handler_.endElementNs(parser_, name.local().view().data(), textOf(name.prefix()),
                          bindings.resolve(name.prefix().view()).text());
    return raised();
}

// A copy with a NUL behind it, valid until the next call; nullptr when memory runs out.
const char* HandlerSink::terminated(const Span& text) noexcept
{
    text_.clear();
    if (text.size > SIZE_MAX / 2 || !text_.reserve(text.size + 1 + kSpanSlack)) return nullptr;
    copyTerminated(text_.data(), text);
    return text_.data();
}

ParseError HandlerSink::characters(const Span& text) noexcept
{
    if (!handler_.characters) return ParseError::None;
    const char* copy = text.size <= UINT32_MAX ? terminated(text) : nullptr;
    if (!copy) return ParseError::NoMemory;
    handler_.characters(parser_, copy, static_cast<std::uint32_t>(text.size));
    return raised();
}

ParseError HandlerSink::cdata(Span text) noexcept
{
    if (!handler_.cdata) return ParseError::None;
    if (text.size > UINT32_MAX) return ParseError::NoMemory;
    handler_.cdata(parser_, text.view().data(), static_cast<std::uint32_t>(text.size));
    return raised();
}

ParseError HandlerSink::comment(Span text) noexcept
{
    if (!handler_.comment) return ParseError::None;
    const char* copy = terminated(text);
    if (!copy) return ParseError::NoMemory;
    handler_.comment(parser_, copy);
    return raised();
}

ParseError HandlerSink::processingInstruction(Span target, const Span* data) noexcept
{
    if (!handler_.processingInstruction) return ParseError::None;
    const char* copy = data ? terminated(*data) : nullptr;
    if (data && !copy) return ParseError::NoMemory;
    handler_.processingInstruction(parser_, target.view().data(), copy);
    return raised();
}

}  // namespace netxml
