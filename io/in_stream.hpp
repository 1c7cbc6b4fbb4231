// The record of an input stream: a window of UTF-8 text over a source, with look-ahead.
//
// Between `mark` and `end` lies what must be kept: the token being read, and what is buffered ahead
// of the cursor. While the source is not UTF-8, a second window holds the raw bytes that are
// transcoded into the first.
#pragma once

#include "netxml/io.h"

#include <iconv.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace netxml {

// How a stream stands; from More it only moves to another one.
enum class [[nodiscard]] StreamStatus : std::uint32_t{
    More = 0,  // the source may deliver more
    End = 1,   // all there is lies in the text buffer
    NoMemory = 2,
    NoConverter = 3,  // iconv does not know the encoding
    ConversionFailed = 4,
};

enum class ByteOrder : std::uint32_t { Unknown, Little, Big };

// Where a list of chunks is being read.
struct ChunkCursor {
    const XML_IO_MemChunk* chunk;
    std::uint64_t offset;
};

// Where a file is being read, and what was read of it ahead.
struct FileReader {
    int descriptor;
    bool isRegular;
    std::size_t begin;  // of what is not handed out yet
    std::size_t end;
    std::uint8_t bytes[std::size_t{16} * 1024];
};

union StreamSource {
    ChunkCursor* chunks;
    FileReader* file;
};

// Reads up to `wanted` bytes; 0 is the end of the source.
using ReadFunction = std::size_t (*)(StreamSource source, std::size_t wanted, std::uint8_t* to);

inline constexpr std::size_t kLookAhead = 64;
inline constexpr std::size_t kGrowthStep = 1024;

}  // namespace netxml

struct XML_IO_InStream {
    std::uint8_t* base;
    std::uint8_t* mark;
    std::uint8_t* cursor;
    std::uint8_t* end;
    std::uint64_t capacity;  // the rule's size: it decides when and how much is read
    std::uint8_t* rawBase;
    std::uint8_t* rawMark;
    std::uint8_t* rawCursor;
    std::uint8_t* rawEnd;
    std::uint64_t rawCapacity;
    netxml::StreamSource readContext;
    netxml::ReadFunction readFn;
    XML_Encoding encoding;
    iconv_t converter;
    netxml::StreamStatus status;

    // Beyond the rule: the true size of each block, which grows by doubling, so that a token of any
    // length costs time in proportion; 0 where the block is the caller's, which is never written.
    std::size_t allocated;
    std::size_t rawAllocated;
    netxml::ByteOrder byteOrder;

    std::size_t available() const noexcept { return static_cast<std::size_t>(end - cursor); }
    bool transcoding() const noexcept { return encoding != XML_ENCODING_UTF_8; }
};

static_assert(std::is_standard_layout_v<XML_IO_InStream>);
static_assert(offsetof(XML_IO_InStream, capacity) == 4 * sizeof(void*));
static_assert(offsetof(XML_IO_InStream, rawBase) == 4 * sizeof(void*) + 8);
static_assert(offsetof(XML_IO_InStream, readContext) == 8 * sizeof(void*) + 16);

namespace netxml {

// Makes a stream over a block, as XML_IO_ByMem() does, in a record of the caller's; and gives back
// what a stream holds besides its record and its source.
void openMemory(XML_IO_InStream& stream, const std::uint8_t* data, std::size_t length) noexcept;
void releaseBuffers(XML_IO_InStream& stream) noexcept;

// As XML_IO_Grow(), for a look-ahead of `wanted` bytes and until they are there or the source ends.
void fillAhead(XML_IO_InStream& stream, std::size_t wanted) noexcept;

// Skips a byte-order mark and switches to its encoding.
void detectMark(XML_IO_InStream& stream) noexcept;

// The encoding of a source without a mark, by its first four bytes.
XML_Encoding detectEncoding(const XML_IO_InStream& stream) noexcept;

// Converts raw bytes into the text buffer until it is full or nothing comes.
StreamStatus refillFromRaw(XML_IO_InStream& stream) noexcept;

}  // namespace netxml
