/**
 * @file
 * Where documents are read from, and what the library reports of one that is not well-formed.
 */
#ifndef NETXML_CPP_SOURCE_HPP
#define NETXML_CPP_SOURCE_HPP

#include "netxml/cpp/convert.hpp"
#include "netxml/parser.h"

#include <cstdarg>
#include <initializer_list>
#include <memory>
#include <vector>

namespace netxml {
inline namespace face {
namespace detail {

inline const uint8_t* bytesOf(std::string_view text) noexcept
{
    return reinterpret_cast<const uint8_t*>(text.data());
}

// Pieces of these types in braces are pieces: they are no bounds of one text, as C++20 would have
// it.
template <class Piece>
using IfLiterals = std::enable_if_t<std::is_convertible_v<Piece, const char*>>;

// Whether what an iterator gives can be viewed later: what it makes anew may own its text.
template <class Piece>
inline constexpr bool kStays = std::is_reference_v<Piece> || std::is_pointer_v<Piece> ||
                               std::is_same_v<std::remove_cv_t<Piece>, std::string_view>;

}  // namespace detail

/**
 * A text in pieces, made of any container of what becomes a std::string_view. The pieces stay where
 * they are, and must live as long as it is used.
 */
class Chunks {
public:
    /** Of a list: `{"<a>", "</a>"}`. */
    Chunks(std::initializer_list<std::string_view> pieces) { take(pieces); }
    /** Of a container whose elements stay: a vector of strings, of views, ... */
    template <class Container,
              class = decltype(detail::viewOf(*std::declval<const Container&>().begin())),
              class = std::enable_if_t<
                  detail::kStays<decltype(*std::declval<const Container&>().begin())>>>
    explicit Chunks(const Container& pieces)
    {
        take(pieces);
    }
    Chunks(const Chunks&) = delete;
    Chunks& operator=(const Chunks&) = delete;

    /** XML_DOM_BuildTreeByMemList() of the pieces. Document::parse() calls it. */
    XML_DOM_Node* build(uint32_t size, char* report) const noexcept
    {
        return XML_DOM_BuildTreeByMemList(&list_, size, report);
    }
    /** XML_Parser_ByMemList() of the pieces. netxml::read() calls it. */
    uint32_t read(const XML_SAX_Handler& handler) const noexcept
    {
        return XML_Parser_ByMemList(&list_, &handler);
    }
    /** Whether no piece holds a byte. */
    bool empty() const noexcept
    {
        for (const XML_IO_MemChunk& chunk : chunks_) {
            if (chunk.length != 0) return false;
        }
        return true;
    }
    /** NULL: pieces are no file. */
    static constexpr const char* path() noexcept { return nullptr; }

private:
    template <class Container>
    void take(const Container& pieces)
    {
        for (auto&& given : pieces) {
            const std::string_view piece = detail::viewOf(given);
            chunks_.push_back({nullptr, piece.size(), detail::bytesOf(piece)});
        }
        for (std::size_t at = 1; at < chunks_.size(); ++at) chunks_[at - 1].next = &chunks_[at];
        list_.first = chunks_.empty() ? nullptr : chunks_.data();
    }

    std::vector<XML_IO_MemChunk> chunks_;
    XML_IO_MemList list_{};
};

namespace detail {

// A block. One that is too large for the functions of blocks is a list of one piece.
class MemorySource {
public:
    explicit MemorySource(std::string_view text) noexcept : text_{text} {}

    XML_DOM_Node* build(uint32_t size, char* report) const noexcept
    {
        if (isBlock())
            return XML_DOM_BuildTreeByMem(bytesOf(text_), static_cast<uint32_t>(text_.size()), size,
                                          report);
        XML_IO_MemChunk chunk{nullptr, text_.size(), bytesOf(text_)};
        const XML_IO_MemList list{&chunk};
        return XML_DOM_BuildTreeByMemList(&list, size, report);
    }
    uint32_t read(const XML_SAX_Handler& handler) const noexcept
    {
        if (isBlock())
            return XML_Parser_ByMem(bytesOf(text_), static_cast<uint32_t>(text_.size()), &handler);
        XML_IO_MemChunk chunk{nullptr, text_.size(), bytesOf(text_)};
        const XML_IO_MemList list{&chunk};
        return XML_Parser_ByMemList(&list, &handler);
    }
    bool empty() const noexcept { return text_.empty(); }
    static constexpr const char* path() noexcept { return nullptr; }

private:
    bool isBlock() const noexcept
    {
        const uint64_t size = text_.size();  // which always is, where pointers have 32 bits
        return size <= UINT32_MAX;
    }

    std::string_view text_;
};

class FileSource {
public:
    explicit FileSource(const std::string& path) noexcept : path_{path.c_str()} {}

    XML_DOM_Node* build(uint32_t size, char* report) const noexcept
    {
        return XML_DOM_BuildTreeByFile(path_, size, report);
    }
    uint32_t read(const XML_SAX_Handler& handler) const noexcept
    {
        return XML_Parser_ByFile(path_, &handler);
    }
    static constexpr bool empty() noexcept { return false; }
    const char* path() const noexcept { return path_; }

private:
    const char* path_;
};

// Takes `The Line %d Column %d :"%s", %s` apart, in UTF-8. An excerpt may hold anything, a message
// no quote and comma: the last ones divide the two. Leaves the error alone if it is another text.
inline void takeReport(std::string_view report, Error& error)
{
    constexpr std::string_view kLine = "The Line ";
    constexpr std::string_view kColumn = " Column ";
    constexpr std::string_view kExcerpt = " :\"";
    constexpr std::string_view kMessage = "\", ";
    const std::size_t column = report.find(kColumn);
    const std::size_t excerpt = report.find(kExcerpt);
    const std::size_t message = report.rfind(kMessage);
    if (report.substr(0, kLine.size()) != kLine || message == std::string_view::npos ||
        column > excerpt || excerpt + kExcerpt.size() > message)
        return;
    const auto number = [&](std::size_t at) {
        return static_cast<uint32_t>(std::strtoul(report.data() + at, nullptr, 10));
    };
    error.line = number(kLine.size());
    error.column = number(column + kColumn.size());
    const std::size_t start = excerpt + kExcerpt.size();
    error.excerpt = report.substr(start, message - start);
    error.message = report.substr(message + kMessage.size());
}

// Slot 20: takes over what the parser reports. `userData` is the error.
inline void takeError(XML_Parser* parser, const char* format, ...)
{
    Error& error = *static_cast<Error*>(parser->handler->userData);
    char report[1024] = "";
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(report, sizeof report, format, arguments);
    va_end(arguments);
    // What the parser calls an internal error is memory that it lacks inside a text.
    const bool memory = parser->error == XML_ERROR_MEMORY || parser->error == XML_ERROR_INTERNAL;
    error.kind = memory ? ErrorKind::Memory : ErrorKind::Syntax;
    error.code = parser->error;
    error.line = parser->line;
    error.column = parser->column;
    error.message = report;
    takeReport(report, error);
}

inline Error cannotOpen(const char* path)
{
    return failure(ErrorKind::File, std::string{"cannot open "} + path);
}

// What is wrong with a source that gives no events, no error, and no tree.
template <class Source>
Error sourceFailure(const Source& source)
{
    if (source.path()) return cannotOpen(source.path());
    if (!source.empty()) return noMemory();
    Error error = failure(ErrorKind::Syntax, "document is empty.");
    error.code = XML_ERROR_DOCUMENT_EMPTY;
    error.line = error.column = 1;
    return error;
}

// Slots that stop where a text has no form in a tree.
inline XML_SAX_Handler unfitSlots() noexcept
{
    XML_SAX_Handler slots{};
    slots.characters = [](XML_Parser* parser, const char* text, uint32_t size) noexcept {
        if (!TreeText{{text, size}}) parser->error = XML_ERROR_INTERNAL;
    };
    slots.cdata = slots.characters;
    slots.startElementNs = [](XML_Parser* parser, const char* name, const char*, const char*,
                              uint32_t declarationCount, const char** declarations,
                              uint32_t attributeCount, uint32_t, const char** attributes) noexcept {
        bool fits = static_cast<bool>(TreeText{name});
        for (uint32_t at = 0; fits && at != 2 * declarationCount; ++at)
            fits = static_cast<bool>(TreeText{viewOf(declarations[at])});
        for (uint32_t at = 0; fits && at != attributeCount; ++at, attributes += 5) {
            const std::size_t size = static_cast<std::size_t>(attributes[4] - attributes[3]);
            fits = TreeText{attributes[0]} && TreeText{{attributes[3], size}};
        }
        if (!fits) parser->error = XML_ERROR_INTERNAL;
    };
    return slots;
}

// The error of a source that gave no tree. The report about it lacks the number, and is lost where
// its excerpt has no form in a tree; the parser's events tell both. Where they find nothing, the
// document is well-formed, and what its tree could not hold is looked for.
template <class Source>
Error failureOf(const Source& source, const char* report)
{
    Error error;
    XML_SAX_Handler handler{};
    handler.userData = &error;
    handler.error = takeError;
    const uint32_t status = source.read(handler);
    if (error.code != XML_ERROR_NONE) return error;
    if (status != XML_RET_OK) return sourceFailure(source);
    takeReport(fromCutText(report), error);
    // The initialization, and a code of its own, tell that it was memory; other causes do not.
    if (std::strstr(report, "initialize") || error.message.find("memory") != std::string::npos)
        return noMemory();
    handler = unfitSlots();
    handler.userData = &error;
    handler.error = takeError;
    static_cast<void>(source.read(handler));
    error.kind = ErrorKind::Encoding;
    error.code = XML_ERROR_NONE;
    error.message = "a tree cannot hold a character here, or memory ran out.";
    return error;
}

}  // namespace detail
}  // namespace face
}  // namespace netxml

#endif
