// The record of an output stream: text goes in, its converted form goes through the sink.
#pragma once

#include "netxml/io.h"
#include "output/memory_buffer.hpp"
#include "support/block.hpp"

#include <iconv.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace netxml {

union SinkTarget {
    MemoryBuffer* memory;
    std::intptr_t descriptor;  // -1 until the file is open
};

using SinkFunction = std::uint32_t (*)(SinkTarget target, const void* bytes, std::size_t length);

enum class StreamKind : std::uint32_t { Memory = 0, File = 1 };

// When the converter of a stream is opened.
enum class ConverterOpening {
    AtOnce,     // so that a missing one is found when the stream is made
    AtFirstUse  // opening one costs more than a small message; ASCII may never need it
};

// As XML_IO_MemOutStreamCreate().
XML_IO_OutStream* makeMemoryStream(XML_Encoding source, XML_Encoding target,
                                   ConverterOpening opening) noexcept;

}  // namespace netxml

struct XML_IO_OutStream {
    netxml::SinkTarget target;
    netxml::SinkFunction sink;
    iconv_t converter;  // not open: no conversion, or not needed yet
    std::size_t pendingCount;
    std::uint8_t pendingBytes[8];  // the begin of a character from the last append
    netxml::StreamKind kind;

    XML_Encoding sourceEncoding;
    XML_Encoding targetEncoding;
    bool passesAscii;  // ASCII is the same on both sides
};

static_assert(std::is_standard_layout_v<XML_IO_OutStream>);
static_assert(offsetof(XML_IO_OutStream, kind) == 4 * sizeof(void*) + 8);

namespace netxml {

std::uint32_t appendConverted(XML_IO_OutStream& stream, const std::uint8_t* bytes,
                              std::size_t length) noexcept;

// Appends to a stream that exists; what needs no conversion takes the short way.
inline std::uint32_t appendTo(XML_IO_OutStream& stream, const char* bytes,
                              std::size_t length) noexcept
{
    const auto* begin = reinterpret_cast<const std::uint8_t*>(bytes);
    const auto* end = begin + length;
    const bool plain =
        stream.pendingCount == 0 && stream.passesAscii && findHigh(begin, end) == end;
    if (plain && stream.kind == StreamKind::Memory)
        return stream.target.memory->add(bytes, length) ? XML_RET_OK : XML_RET_FAIL;
    return appendConverted(stream, begin, length);
}

}  // namespace netxml
