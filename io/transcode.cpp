// Starting, running and stopping the conversion of a source to UTF-8.
#include "io/converter.hpp"
#include "io/encoding.hpp"
#include "io/in_stream.hpp"
#include "io/stream_buffer.hpp"
#include "support/checked.hpp"
#include "support/heap.hpp"

#include <bit>
#include <cstring>
#include <utility>

namespace netxml {
namespace {

constexpr const char* kTextEncoding = "UTF-8";

bool leavesOrderOpen(XML_Encoding e) noexcept
{
    return e == XML_ENCODING_UTF_16 || e == XML_ENCODING_UTF_32 || e == XML_ENCODING_UCS_4;
}

ByteOrder orderOf(XML_Encoding e) noexcept
{
    switch (e) {
    case XML_ENCODING_UTF_16LE:
    case XML_ENCODING_UTF_32LE:
    case XML_ENCODING_UCS_4LE: return ByteOrder::Little;
    case XML_ENCODING_UTF_16BE:
    case XML_ENCODING_UTF_32BE:
    case XML_ENCODING_UCS_4BE: return ByteOrder::Big;
    default: return ByteOrder::Unknown;
    }
}

// The name to open a converter with: one that says the byte order where that is known.
const char* converterName(XML_Encoding e, ByteOrder order) noexcept
{
    if (!leavesOrderOpen(e) || order == ByteOrder::Unknown) return encodingName(e);
    if (e == XML_ENCODING_UTF_16)
        return encodingName(order == ByteOrder::Little ? XML_ENCODING_UTF_16LE
                                                       : XML_ENCODING_UTF_16BE);
    return encodingName(order == ByteOrder::Little ? XML_ENCODING_UTF_32LE : XML_ENCODING_UTF_32BE);
}

// The order that converting back must produce: where nothing told it, iconv reads UTF-16 and UTF-32
// in the machine's order, and must not put a mark in front.
ByteOrder orderToWrite(XML_Encoding e, ByteOrder order) noexcept
{
    if (order != ByteOrder::Unknown || e == XML_ENCODING_UCS_4) return order;
    return std::endian::native == std::endian::little ? ByteOrder::Little : ByteOrder::Big;
}

ConvertEnd convertSource(iconv_t converter, XML_Encoding source, ConvertInput& in,
                         ConvertOutput& out) noexcept
{
    return sharesAscii(source) ? convertAroundAscii(converter, source, in, out)
                               : convertThrough(converter, in, out);
}

// A text buffer in the making: converts a piece of the source and grows as needed.
class TextBlock {
public:
    TextBlock() = default;
    TextBlock(const TextBlock&) = delete;
    TextBlock& operator=(const TextBlock&) = delete;
    ~TextBlock() { heap::release(data_); }

    std::size_t size() const noexcept { return size_; }
    std::size_t allocated() const noexcept { return allocated_; }
    [[nodiscard]] bool reserve(std::size_t size) noexcept
    {
        if (size <= allocated_) return true;
        std::uint8_t* data = static_cast<std::uint8_t*>(heap::resize(data_, size));
        if (!data) return false;
        data_ = data;
        allocated_ = size;
        return true;
    }
    // False when memory runs out; otherwise `end` says how the conversion went.
    [[nodiscard]] bool convert(iconv_t converter, XML_Encoding source, ConvertInput& in,
                               ConvertEnd& end) noexcept
    {
        for (;;) {
            ConvertOutput out{data_ + size_, data_ + allocated_};
            end = convertSource(converter, source, in, out);
            size_ = static_cast<std::size_t>(out.cursor - data_);
            if (end != ConvertEnd::Full) return true;
            std::size_t grown = 0;
            if (!addSizes(allocated_, allocated_ / 2 + in.left() / 2 + kGrowthStep, grown))
                return false;
            if (!reserve(grown)) return false;
        }
    }
    std::uint8_t* release() noexcept { return std::exchange(data_, nullptr); }

private:
    std::uint8_t* data_ = nullptr;
    std::size_t size_ = 0;
    std::size_t allocated_ = 0;
};

// Makes the text window the raw one, and the block, whose first `pending` bytes were read before,
// the text.
void exchangeForBlock(XML_IO_InStream& s, TextBlock& text, std::size_t pending,
                      std::size_t capacity, const std::uint8_t* converted) noexcept
{
    s.rawBase = s.base;
    s.rawMark = s.rawCursor = s.rawBase + (converted - s.rawBase);
    s.rawEnd = s.end;
    s.rawCapacity = s.capacity;
    s.rawAllocated = s.allocated;
    const std::size_t size = text.size();
    s.allocated = text.allocated();
    s.base = s.mark = text.release();  // the stream's from here on
    s.cursor = s.base + pending;
    s.end = s.base + size;
    s.capacity = capacity;
}

// Starts transcoding from `encoding`; on failure the stream is as it was.
StreamStatus start(XML_IO_InStream& s, XML_Encoding encoding) noexcept
{
    if (orderOf(encoding) != ByteOrder::Unknown) s.byteOrder = orderOf(encoding);
    ScopedConverter converter{kTextEncoding, converterName(encoding, s.byteOrder)};
    if (!converter) return StreamStatus::NoConverter;

    TextBlock text;
    ConvertEnd end = ConvertEnd::Done;
    if (!text.reserve(kGrowthStep)) return StreamStatus::NoMemory;
    ConvertInput pending{s.mark, s.cursor};
    if (!text.convert(converter.get(), encoding, pending, end)) return StreamStatus::NoMemory;
    if (end != ConvertEnd::Done) return StreamStatus::ConversionFailed;
    const std::size_t pendingSize = text.size();

    // The last character may be cut short, as long as the source can bring the rest of it.
    ConvertInput unread{s.cursor, s.end};
    if (!text.convert(converter.get(), encoding, unread, end)) return StreamStatus::NoMemory;
    const bool cutShort = end == ConvertEnd::Incomplete && s.status == StreamStatus::More;
    if (end != ConvertEnd::Done && !cutShort) return StreamStatus::ConversionFailed;

    std::size_t capacity = kGrowthStep;
    if (text.size() != 0 && !roundUp(text.size(), kGrowthStep, capacity))
        return StreamStatus::NoMemory;
    if (!text.reserve(capacity)) return StreamStatus::NoMemory;
    const bool produced = text.size() != 0;
    exchangeForBlock(s, text, pendingSize, capacity, unread.cursor);
    s.converter = converter.release();  // closed when transcoding stops
    s.encoding = encoding;
    const StreamStatus refilled = refillFromRaw(s);
    if (refilled == StreamStatus::NoMemory) return refilled;
    return produced ? StreamStatus::More : refilled;
}

// The bytes that a piece of text becomes; false when it has no form in the target.
bool measure(iconv_t converter, const std::uint8_t* begin, const std::uint8_t* end,
             std::size_t& size) noexcept
{
    std::uint8_t scratch[4096];
    ConvertInput in{begin, end};
    size = 0;
    for (;;) {
        ConvertOutput out{scratch, scratch + sizeof scratch};
        const ConvertEnd stop = convertThrough(converter, in, out);
        size += static_cast<std::size_t>(out.cursor - scratch);
        if (stop == ConvertEnd::Done) return true;
        if (stop != ConvertEnd::Full || out.cursor == scratch) return false;
    }
}

// Puts the buffered text, converted back, in front of the raw bytes that were not transcoded yet.
StreamStatus restoreRaw(XML_IO_InStream& s, iconv_t back, std::size_t size) noexcept
{
    const heap::Owned<std::uint8_t> block{static_cast<std::uint8_t*>(heap::allocate(size))};
    if (!block) return StreamStatus::NoMemory;
    ConvertInput in{s.mark, s.end};
    ConvertOutput out{block.get(), block.get() + size};
    if (convertThrough(back, in, out) != ConvertEnd::Done) return StreamStatus::ConversionFailed;

    StreamBuffer raw = StreamBuffer::raw(s);
    const std::size_t contents = static_cast<std::size_t>(s.rawEnd - s.rawMark);
    std::size_t needed = 0;
    if (!addSizes(contents, size, needed)) return StreamStatus::NoMemory;
    const bool borrowed = s.rawAllocated == 0;  // a caller's block is copied, not written
    const std::size_t room = static_cast<std::size_t>(s.rawCapacity);
    const std::size_t shortfall = needed > room ? needed - room : 0;
    if ((borrowed || shortfall != 0) && !raw.enlarge(shortfall)) return StreamStatus::NoMemory;
    raw.compact();
    std::memmove(s.rawBase + size, s.rawBase, contents);
    std::memcpy(s.rawBase, block.get(), size);
    s.rawMark = s.rawCursor = s.rawBase + size;
    s.rawEnd = s.rawBase + needed;
    return StreamStatus::More;
}

// Stops transcoding: the text that is buffered will be read again as raw bytes.
StreamStatus stop(XML_IO_InStream& s) noexcept
{
    const ByteOrder order = orderToWrite(s.encoding, s.byteOrder);
    const ScopedConverter back{converterName(s.encoding, order), kTextEncoding};
    if (!back) return StreamStatus::NoConverter;
    std::size_t pending = 0;
    std::size_t unread = 0;
    if (!measure(back.get(), s.mark, s.cursor, pending) ||
        !measure(back.get(), s.cursor, s.end, unread))
        return StreamStatus::ConversionFailed;
    if (pending + unread > static_cast<std::size_t>(s.rawMark - s.rawBase)) {
        const StreamStatus restored = restoreRaw(s, back.get(), pending + unread);
        if (restored != StreamStatus::More) return restored;
    }
    StreamBuffer::text(s).release();
    s.base = s.rawBase;
    s.end = s.rawEnd;
    s.cursor = s.rawCursor - unread;
    s.mark = s.cursor - pending;
    s.capacity = s.rawCapacity;
    s.allocated = s.rawAllocated;
    s.encoding = XML_ENCODING_UTF_8;
    closeConverter(s.converter);
    s.rawBase = s.rawMark = s.rawCursor = s.rawEnd = nullptr;
    s.rawCapacity = 0;
    s.rawAllocated = 0;
    return StreamStatus::More;
}

// True when a declaration only confirms what is being read: the same units, in the order known.
bool confirms(const XML_IO_InStream& s, XML_Encoding declared) noexcept
{
    if (!leavesOrderOpen(declared) || s.byteOrder == ByteOrder::Unknown) return false;
    return unitSize(declared) == unitSize(s.encoding);
}

StreamStatus change(XML_IO_InStream& s, XML_Encoding encoding) noexcept
{
    if (!s.transcoding()) return start(s, encoding);
    if (confirms(s, encoding)) {
        s.encoding = encoding;
        return s.status;
    }
    const StreamStatus stopped = stop(s);
    return stopped == StreamStatus::More && encoding != XML_ENCODING_UTF_8 ? start(s, encoding)
                                                                           : stopped;
}

}  // namespace

// Kept: an invalid sequence just ends the text; the parser sees a document that stops early.
StreamStatus refillFromRaw(XML_IO_InStream& s) noexcept
{
    StreamBuffer raw = StreamBuffer::raw(s);
    bool produced = false;
    for (;;) {
        std::size_t count = 0;
        if (s.readFn) {
            raw.compact();
            count = s.readFn(s.readContext, raw.freeSpace(), s.rawEnd);
            s.rawEnd += count;
        }
        ConvertInput in{s.rawMark, s.rawEnd};
        ConvertOutput out{s.end, s.base + s.capacity};
        const ConvertEnd end = convertSource(s.converter, s.encoding, in, out);
        s.rawMark = s.rawCursor = s.rawBase + (in.cursor - s.rawBase);
        if (out.cursor != s.end) {
            s.end = out.cursor;
            produced = true;
        } else if (end == ConvertEnd::Full && !produced) {
            // The next character did not fit, which must not look like the end of the source.
            if (!StreamBuffer::text(s).enlarge(0)) return StreamStatus::NoMemory;
        } else if (end != ConvertEnd::Incomplete || count == 0) {
            return produced ? StreamStatus::More : StreamStatus::End;
        }
    }
}

}  // namespace netxml

uint32_t XML_IO_SwitchEncoding(XML_IO_InStream* stream, XML_Encoding encoding)
{
    using netxml::StreamStatus;
    if (!stream) return static_cast<uint32_t>(StreamStatus::NoMemory);
    if (stream->status <= StreamStatus::End && stream->encoding != encoding)
        stream->status = netxml::change(*stream, encoding);
    return static_cast<uint32_t>(stream->status);
}
