// Making, filling and destroying output streams.
#include "output/out_stream.hpp"

#include "io/converter.hpp"
#include "io/encoding.hpp"
#include "support/heap.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cstring>

namespace netxml {
namespace {

// What is converted passes through areas of this size; a failing conversion keeps the full ones.
constexpr std::size_t kArea = 256;

std::uint32_t writeMemory(SinkTarget target, const void* bytes, std::size_t length)
{
    return target.memory->add(bytes, length) ? XML_RET_OK : XML_RET_FAIL;
}

std::uint32_t writeFile(SinkTarget target, const void* bytes, std::size_t length)
{
    const char* rest = static_cast<const char*>(bytes);
    while (length != 0) {
        const ssize_t count = write(static_cast<int>(target.descriptor), rest, length);
        if (count <= 0) return XML_RET_FAIL;
        rest += count;
        length -= static_cast<std::size_t>(count);
    }
    return XML_RET_OK;
}

// All of GB2312 is GBK with the same bytes. It is only checked and copied, because the direct
// converter of glibc 2.36 loses a character where a piece ends in one.
bool copiesUnchanged(const XML_IO_OutStream& s) noexcept
{
    return s.sourceEncoding == XML_ENCODING_GB2312 && s.targetEncoding == XML_ENCODING_GBK;
}

bool openStreamConverter(XML_IO_OutStream& s) noexcept
{
    if (isOpen(s.converter) || s.sourceEncoding == s.targetEncoding) return true;
    const XML_Encoding target =
        copiesUnchanged(s) ? XML_Encoding{XML_ENCODING_UTF_8} : s.targetEncoding;
    s.converter = openConverter(encodingName(target), encodingName(s.sourceEncoding));
    return isOpen(s.converter);
}

XML_IO_OutStream* makeStream(StreamKind kind, XML_Encoding source, XML_Encoding target) noexcept
{
    auto stream = heap::make<XML_IO_OutStream>();
    if (!stream) return nullptr;
    stream->converter = noConverter();
    stream->kind = kind;
    stream->sourceEncoding = source;
    stream->targetEncoding = target;
    stream->passesAscii = sharesAscii(source) && sharesAscii(target);
    return stream.release();  // the caller completes or destroys it
}

ConvertEnd convertText(const XML_IO_OutStream& s, ConvertInput& in, ConvertOutput& out) noexcept
{
    if (copiesUnchanged(s)) return copyChecked(s.converter, in, out);
    return s.passesAscii ? convertAroundAscii(s.converter, s.sourceEncoding, in, out)
                         : convertThrough(s.converter, in, out);
}

// Of text converted in one go, the part that whole areas would have held before the end came.
std::size_t fullAreas(XML_Encoding encoding, const std::uint8_t* begin,
                      const std::uint8_t* end) noexcept
{
    const std::uint8_t* full = begin;
    for (const std::uint8_t* p = begin; p != end;) {
        const std::uint8_t* next = p + characterLength(encoding, p, end);
        if (static_cast<std::size_t>(next - full) > kArea) full = p;
        p = next;
    }
    return static_cast<std::size_t>(full - begin);
}

void holdBack(XML_IO_OutStream& s, const ConvertInput& rest) noexcept
{
    s.pendingCount = rest.left() < sizeof s.pendingBytes ? rest.left() : sizeof s.pendingBytes;
    std::memcpy(s.pendingBytes, rest.cursor, s.pendingCount);
}

// Converts into the memory block itself. When a character turns out invalid, only what the areas
// would have passed on stays.
std::uint32_t convertToMemory(XML_IO_OutStream& s, ConvertInput in) noexcept
{
    MemoryBuffer& memory = *s.target.memory;
    const std::size_t before = memory.used;
    for (std::size_t wanted = in.left();; wanted = in.left() + memory.used / 2) {
        if (!memory.reserve(wanted < kArea ? kArea : wanted)) return XML_RET_FAIL;
        auto* data = reinterpret_cast<std::uint8_t*>(memory.data);
        ConvertOutput out{data + memory.used, data + memory.allocated};
        const ConvertEnd end = convertText(s, in, out);
        memory.commit(static_cast<std::size_t>(out.cursor - (data + memory.used)));
        if (end == ConvertEnd::Full) continue;
        if (end == ConvertEnd::Invalid) {
            memory.used = before + fullAreas(s.targetEncoding, data + before, out.cursor);
            return XML_RET_FAIL;
        }
        if (end == ConvertEnd::Incomplete) holdBack(s, in);
        return XML_RET_OK;
    }
}

std::uint32_t convertToSink(XML_IO_OutStream& s, ConvertInput in) noexcept
{
    for (;;) {
        std::uint8_t area[kArea];
        ConvertOutput out{area, area + sizeof area};
        const ConvertEnd end = convertText(s, in, out);
        if (end == ConvertEnd::Invalid) return XML_RET_FAIL;
        const std::size_t size = static_cast<std::size_t>(out.cursor - area);
        if (end == ConvertEnd::Incomplete) holdBack(s, in);
        const std::uint32_t status = s.sink(s.target, area, size);
        if (end != ConvertEnd::Full || status != XML_RET_OK) return status;
    }
}

// Completes the character that the last append ended in. Moves `bytes` and `length` past what was
// used for it.
std::uint32_t completePending(XML_IO_OutStream& s, const std::uint8_t*& bytes,
                              std::size_t& length) noexcept
{
    constexpr std::size_t kLongest = 4;  // bytes of a character in any of the encodings
    // glibc may hold more: it waits for the six bytes that UTF-8 once had. Those never complete.
    const std::size_t held = s.pendingCount;
    const std::size_t room = held < kLongest ? kLongest - held : 0;
    const std::size_t taken = length < room ? length : room;
    std::memcpy(s.pendingBytes + held, bytes, taken);

    std::uint8_t area[kArea];
    ConvertInput in{s.pendingBytes, s.pendingBytes + held + taken};
    ConvertOutput out{area, area + sizeof area};
    const ConvertEnd end = convertText(s, in, out);
    std::size_t used = taken;
    if (end == ConvertEnd::Done) {
        s.pendingCount = 0;
    } else if (end == ConvertEnd::Incomplete && taken == length) {
        s.pendingCount = in.left();
        std::memmove(s.pendingBytes, in.cursor, in.left());
    } else if (end == ConvertEnd::Incomplete && in.left() <= taken) {
        used = taken - in.left();  // what begins the next character is read again from the caller's
        s.pendingCount = 0;
    } else {
        return XML_RET_FAIL;
    }
    bytes += used;
    length -= used;
    return s.sink(s.target, area, static_cast<std::size_t>(out.cursor - area));
}

}  // namespace

std::uint32_t appendConverted(XML_IO_OutStream& s, const std::uint8_t* bytes,
                              std::size_t length) noexcept
{
    if (s.sourceEncoding == s.targetEncoding) return s.sink(s.target, bytes, length);
    if (!openStreamConverter(s)) return XML_RET_FAIL;
    if (s.pendingCount != 0) {
        const std::uint32_t status = completePending(s, bytes, length);
        if (status != XML_RET_OK || length == 0) return status;
    }
    const ConvertInput in{bytes, bytes + length};
    return s.kind == StreamKind::Memory ? convertToMemory(s, in) : convertToSink(s, in);
}

XML_IO_OutStream* makeMemoryStream(XML_Encoding source, XML_Encoding target,
                                   ConverterOpening opening) noexcept
{
    XML_IO_OutStream* stream = makeStream(StreamKind::Memory, source, target);
    if (!stream) return nullptr;
    stream->sink = writeMemory;
    stream->target.memory = heap::make<MemoryBuffer>().release();  // the stream's
    const bool known = source == target || (encodingName(source) && encodingName(target));
    const bool ready =
        known && (opening == ConverterOpening::AtFirstUse || openStreamConverter(*stream));
    if (stream->target.memory && ready) return stream;
    XML_IO_OutStreamDestroy(stream);
    return nullptr;
}

}  // namespace netxml

using namespace netxml;

XML_IO_OutStream* XML_IO_MemOutStreamCreate(XML_Encoding source, XML_Encoding target)
{
    return makeMemoryStream(source, target, ConverterOpening::AtOnce);
}

XML_IO_OutStream* XML_IO_FileOutStreamCreate(const char* path, XML_Encoding source,
                                             XML_Encoding target)
{
    if (!path) return nullptr;
    XML_IO_OutStream* stream = makeStream(StreamKind::File, source, target);
    if (!stream) return nullptr;
    stream->sink = writeFile;
    stream->target.descriptor = open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0640);
    if (stream->target.descriptor >= 0 && openStreamConverter(*stream)) return stream;
    XML_IO_OutStreamDestroy(stream);
    return nullptr;
}

uint32_t XML_IO_OutStreamAppend(XML_IO_OutStream* stream, const void* bytes, size_t length)
{
    if (!bytes || length == 0) return XML_RET_OK;
    if (!stream) return XML_RET_FAIL;
    return appendTo(*stream, static_cast<const char*>(bytes), length);
}

char* XML_IO_MemOutStreamGetBuf(XML_IO_OutStream* stream, size_t* length)
{
    if (!stream || stream->kind != StreamKind::Memory) return nullptr;
    const MemoryBuffer& memory = *stream->target.memory;
    if (length) *length = memory.used;
    return memory.used == 0 ? nullptr : memory.data;
}

char* XML_IO_MemOutStreamDetachBuf(XML_IO_OutStream* stream, size_t* length)
{
    if (!stream || stream->kind != StreamKind::Memory) return nullptr;
    if (length) *length = stream->target.memory->used;
    return stream->target.memory->detach();
}

void XML_IO_MemOutStreamCleanBuf(XML_IO_OutStream* stream)
{
    if (stream && stream->kind == StreamKind::Memory) stream->target.memory->used = 0;
}

void XML_IO_FileOutStreamFlush(XML_IO_OutStream* stream)
{
    if (!stream || stream->kind != StreamKind::File) return;
    fsync(static_cast<int>(stream->target.descriptor));
}

void XML_IO_OutStreamDestroy(XML_IO_OutStream* stream)
{
    if (!stream) return;
    if (stream->kind == StreamKind::File) {
        if (stream->target.descriptor >= 0) close(static_cast<int>(stream->target.descriptor));
    } else if (stream->target.memory) {
        heap::release(stream->target.memory->data);
        heap::release(stream->target.memory);
    }
    closeConverter(stream->converter);
    heap::release(stream);
}
