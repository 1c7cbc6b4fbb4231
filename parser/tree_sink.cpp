#include "parser/tree_sink.hpp"

#include "dom/namespace.hpp"
#include "parser/error_text.hpp"

namespace netxml {
namespace {

void formatReport(char* buffer, std::uint32_t size, const char* format, ...) noexcept
{
    std::va_list arguments;
    va_start(arguments, format);
    writeErrorText(buffer, size, format, arguments);
    va_end(arguments);
}

}  // namespace

void TreeSink::report(XML_Parser& parser, const XML_IO_InStream& stream) noexcept
{
    const Excerpt excerpt{stream};
    reported_ = true;
    formatReport(errorText_, errorTextSize_, kReportFormat, static_cast<int>(parser.line),
                 static_cast<int>(parser.column), excerpt.text(),
                 messageOf(static_cast<ParseError>(parser.error)));
}

ParseError TreeSink::endDocument() noexcept
{
    root_->document->encoding = parser_->encoding;
    return ParseError::None;
}

ParseError TreeSink::addElement(const Span& name) noexcept
{
    std::string_view text;
    const ParseError error = names_.convert(name, text);
    if (error != ParseError::None) return error;
    return builder_.enterElement(text) ? ParseError::None : ParseError::Internal;
}

ParseError TreeSink::addDeclaration(Binding& binding) noexcept
{
    std::string_view prefix;
    std::string_view name;
    ParseError error = names_.convert(binding.prefixSpan, prefix);
    if (error == ParseError::None) error = values_.convert(binding.name, name);
    if (error != ParseError::None) return error;
    binding.declaration = builder_.declare(binding.isDefault() ? std::string_view{} : prefix, name);
    return binding.declaration ? ParseError::None : ParseError::Internal;
}

// The bindings come newest first, the declarations stand in document order.
ParseError TreeSink::addDeclarations(const StartTag& tag) noexcept
{
    declared_.clear();
    Binding* binding = tag.newestBinding;
    for (std::size_t i = 0; i < tag.declarationCount; ++i) {
        if (!declared_.push(binding)) return ParseError::Internal;
        binding = static_cast<Binding*>(binding->older);
    }
    ParseError error = ParseError::None;
    for (; !declared_.empty() && error == ParseError::None; declared_.pop())
        error = addDeclaration(*declared_.back());
    return error;
}

ParseError TreeSink::addAttribute(const TagAttribute& attribute) noexcept
{
    std::string_view name;
    std::string_view value;
    ParseError error = names_.convert(attribute.name.local, name);
    if (error == ParseError::None) error = values_.convert(attribute.value, value);
    if (error != ParseError::None) return error;
    XML_DOM_Attr* attr = builder_.addAttribute(name, value);
    if (!attr) return ParseError::Internal;
    attr->nameSpace = declarationOf(attribute.name, attribute.nameSpace);
    return ParseError::None;
}

ParseError TreeSink::startElement(const StartTag& tag) noexcept
{
    ParseError error = addElement(tag.name.local);
    if (error == ParseError::None && tag.declarationCount != 0) error = addDeclarations(tag);
    if (error != ParseError::None) return error;
    current_->nameSpace = declarationOf(tag.name, tag.nameSpace);
    for (std::size_t i = 0; i < tag.attributeCount && error == ParseError::None; ++i)
        error = addAttribute(tag.attributes[i]);
    return error;
}

XML_DOM_Node* TreeSink::release() noexcept
{
    arena_.seal(true);
    return root_;
}

bool TreeSink::discard() noexcept
{
    if (root_) {
        arena_.seal(true);
        XML_DOM_DelNode(root_);
    } else {
        arena_.abandon();
    }
    return names_.unavailable() || values_.unavailable();
}

}  // namespace netxml
