// One parse: the context, the scan with a sink, and the report of what went wrong.
#pragma once

#include "parser/error_text.hpp"
#include "parser/scanner.hpp"

namespace netxml {

// The context at line 1, column 1. It lies with whoever parses: that call outlives every event.
XML_Parser makeContext(XML_IO_InStream& stream, const XML_SAX_Handler* handler) noexcept;

// Switches a source without a mark to the encoding that its first four bytes show.
ParseError applyDetectedEncoding(XML_IO_InStream& stream) noexcept;

// A stream's failure speaks before the scanner's: that one mostly sees it as an early end.
ParseError overruledBy(const XML_IO_InStream& stream, ParseError error) noexcept;

// Besides what the scanner asks of it, a sink has
//
//     void begin(XML_Parser& parser);                                // before anything is read
//     void report(XML_Parser& parser, const XML_IO_InStream& stream);  // parser.error holds the
//     code
template <class Sink>
std::uint32_t runParse(XML_IO_InStream& stream, const XML_SAX_Handler* handler, Sink& sink) noexcept
{
    XML_Parser context = makeContext(stream, handler);
    sink.begin(context);
    ParseError error = applyDetectedEncoding(stream);
    Scanner<Sink> scanner{stream, context, sink};
    if (error == ParseError::None) error = scanner.document();
    error = overruledBy(stream, error);
    if (error == ParseError::None) return XML_RET_OK;
    scanner.settle();
    context.error = static_cast<XML_ErrorCode>(error);
    sink.report(context, stream);
    return XML_RET_FAIL;
}

// Runs `parse` (stream -> status) over a stream that was just made, or fails if it could not be,
// and destroys it.
template <class Parse>
std::uint32_t parseAndDestroy(XML_IO_InStream* stream, void (*destroy)(XML_IO_InStream*),
                              Parse parse) noexcept
{
    if (!stream) return XML_RET_FAIL;
    const std::uint32_t status = parse(*stream);
    destroy(stream);
    return status;
}

template <class Parse>
std::uint32_t parseMemory(const std::uint8_t* data, std::uint32_t length, Parse parse) noexcept
{
    if (!data || length == 0) return XML_RET_FAIL;
    XML_IO_InStream stream;
    openMemory(stream, data, length);
    const std::uint32_t status = parse(stream);
    releaseBuffers(stream);
    return status;
}

template <class Parse>
std::uint32_t parseMemoryList(const XML_IO_MemList* list, Parse parse) noexcept
{
    return parseAndDestroy(XML_IO_ByMemList(list), XML_IO_DestroyByMemList, parse);
}

template <class Parse>
std::uint32_t parseFile(const char* path, Parse parse) noexcept
{
    return parseAndDestroy(XML_IO_ByFile(path), XML_IO_DestroyByFile, parse);
}

}  // namespace netxml
