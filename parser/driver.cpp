#include "parser/driver.hpp"

#include "dom/node.hpp"

namespace netxml {

XML_Parser makeContext(XML_IO_InStream& stream, const XML_SAX_Handler* handler) noexcept
{
    XML_Parser context{};
    context.handler = handler;
    context.stream = &stream;
    context.encoding = stream.encoding;
    context.line = 1;
    context.column = 1;
    context.version = kVersion;
    return context;
}

ParseError applyDetectedEncoding(XML_IO_InStream& stream) noexcept
{
    if (stream.transcoding()) return ParseError::None;
    const XML_Encoding detected = detectEncoding(stream);
    if (detected == stream.encoding) return ParseError::None;
    return XML_IO_SwitchEncoding(&stream, detected) == 0 ? ParseError::None
                                                         : ParseError::EncodingSwitch;
}

ParseError overruledBy(const XML_IO_InStream& stream, ParseError error) noexcept
{
    switch (stream.status) {
    case StreamStatus::NoMemory: return ParseError::NoMemory;
    case StreamStatus::NoConverter: return ParseError::UnsupportedEncoding;
    case StreamStatus::ConversionFailed: return ParseError::EncodingSwitch;
    default: return error;
    }
}

}  // namespace netxml
