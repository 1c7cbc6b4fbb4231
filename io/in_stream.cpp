// Making, refilling and destroying input streams over a block, a list of chunks or a file.
#include "io/in_stream.hpp"

#include "io/converter.hpp"
#include "io/stream_buffer.hpp"
#include "support/ascii.hpp"
#include "support/heap.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

static_assert(offsetof(XML_IO_MemList, first) == 0);
static_assert(offsetof(XML_IO_MemChunk, next) == 0);
// 64 bits are aligned to 4 or to 8 bytes where pointers have 32.
static_assert(offsetof(XML_IO_MemChunk, length) ==
              (sizeof(void*) == 8 ? 8 : alignof(XML_IO_MemChunk)));
static_assert(offsetof(XML_IO_MemChunk, data) == offsetof(XML_IO_MemChunk, length) + 8);

namespace netxml {
namespace {

std::size_t readChunks(StreamSource source, std::size_t wanted, std::uint8_t* to)
{
    ChunkCursor& at = *source.chunks;
    std::size_t copied = 0;
    while (copied < wanted && at.chunk) {
        const std::uint64_t left = at.chunk->length - at.offset;
        const std::size_t room = wanted - copied;
        const std::size_t size = left < room ? static_cast<std::size_t>(left) : room;
        if (size != 0) std::memcpy(to + copied, at.chunk->data + at.offset, size);
        copied += size;
        at.offset += size;
        if (at.offset == at.chunk->length) at = {at.chunk->next, 0};
    }
    return copied;
}

// An error counts as the end of the file; an interruption is no error.
std::size_t readDescriptor(int descriptor, std::size_t wanted, std::uint8_t* to) noexcept
{
    ssize_t count;
    do count = read(descriptor, to, wanted);
    while (count < 0 && errno == EINTR);
    return count < 0 ? 0 : static_cast<std::size_t>(count);
}

// The stream asks for little at a time; the system is asked for much. A regular file gives as much
// as is wanted, as if it were read for this alone; from others, what one reading has brought is
// handed out before the next one, which may have to wait.
std::size_t readFile(StreamSource source, std::size_t wanted, std::uint8_t* to)
{
    FileReader& file = *source.file;
    std::size_t copied = 0;
    while (copied != wanted) {
        if (file.begin == file.end) {
            if (copied != 0 && !file.isRegular) break;
            file.begin = 0;
            file.end = readDescriptor(file.descriptor, sizeof file.bytes, file.bytes);
            if (file.end == 0) break;
        }
        const std::size_t left = file.end - file.begin;
        const std::size_t size = left < wanted - copied ? left : wanted - copied;
        std::memcpy(to + copied, file.bytes + file.begin, size);
        file.begin += size;
        copied += size;
    }
    return copied;
}

// A stream with an own, empty text buffer that reads from a source; owned until it is ready.
heap::Owned<XML_IO_InStream> makeReading(StreamSource source, ReadFunction read) noexcept
{
    auto stream = heap::make<XML_IO_InStream>();
    if (!stream) return stream;
    stream->converter = noConverter();
    stream->readContext = source;
    stream->readFn = read;
    if (!StreamBuffer::text(*stream).enlarge(0)) return nullptr;
    return stream;
}

XML_IO_InStream* startReading(heap::Owned<XML_IO_InStream> stream) noexcept
{
    XML_IO_Grow(stream.get());
    detectMark(*stream);
    return stream.release();  // the caller destroys it
}

void releaseStream(XML_IO_InStream* stream) noexcept
{
    releaseBuffers(*stream);
    heap::release(stream);
}

// One step of refilling, for a look-ahead of `wanted` bytes.
void refill(XML_IO_InStream& s, std::size_t wanted) noexcept
{
    StreamBuffer text = StreamBuffer::text(s);
    text.compact();
    if (!s.readFn && !s.transcoding()) {
        s.status = StreamStatus::End;
        return;
    }
    const std::size_t room = s.available() + text.freeSpace();
    if (room < wanted && !text.enlarge(wanted - room)) {
        s.status = StreamStatus::NoMemory;
        return;
    }
    if (s.transcoding()) {
        s.status = refillFromRaw(s);
        return;
    }
    // A pipe may deliver little at a time: keyword tests rely on the look-ahead.
    const std::uint8_t* before = s.end;
    std::size_t count;
    do {
        count = s.readFn(s.readContext, text.freeSpace(), s.end);
        s.end += count;
    } while (count != 0 && s.available() < wanted);
    if (s.end == before) s.status = StreamStatus::End;
}

}  // namespace

void openMemory(XML_IO_InStream& s, const std::uint8_t* data, std::size_t length) noexcept
{
    s = {};
    s.base = const_cast<std::uint8_t*>(data);  // never written: allocated stays 0
    s.mark = s.cursor = s.base;
    s.end = s.base + length;
    s.capacity = length;
    s.status = StreamStatus::End;
    s.converter = noConverter();
    detectMark(s);
}

void releaseBuffers(XML_IO_InStream& s) noexcept
{
    StreamBuffer::text(s).release();
    StreamBuffer::raw(s).release();
    closeConverter(s.converter);
}

void fillAhead(XML_IO_InStream& s, std::size_t wanted) noexcept
{
    while (s.status == StreamStatus::More && s.available() < wanted) refill(s, wanted);
}

}  // namespace netxml

using namespace netxml;

XML_IO_InStream* XML_IO_ByMem(const uint8_t* data, size_t length)
{
    if (!data || length == 0) return nullptr;
    auto stream = heap::make<XML_IO_InStream>();
    if (!stream) return nullptr;
    openMemory(*stream, data, length);
    return stream.release();  // the caller destroys it
}

XML_IO_InStream* XML_IO_ByMemList(const XML_IO_MemList* list)
{
    if (!list) return nullptr;
    auto cursor = heap::make<ChunkCursor>();
    if (!cursor) return nullptr;
    cursor->chunk = list->first;
    StreamSource source{};
    source.chunks = cursor.get();
    auto stream = makeReading(source, readChunks);
    if (!stream) return nullptr;
    cursor.release();  // the stream's from here on
    return startReading(std::move(stream));
}

XML_IO_InStream* XML_IO_ByFile(const char* path)
{
    if (!path) return nullptr;
    auto file = heap::make<FileReader>();
    if (!file) return nullptr;
    file->descriptor = open(path, O_RDONLY | O_CLOEXEC);
    if (file->descriptor < 0) return nullptr;
    struct stat status;
    file->isRegular = fstat(file->descriptor, &status) == 0 && S_ISREG(status.st_mode);
    StreamSource source{};
    source.file = file.get();
    auto stream = makeReading(source, readFile);
    if (!stream) {
        close(file->descriptor);
        return nullptr;
    }
    file.release();  // the stream's from here on
    return startReading(std::move(stream));
}

void XML_IO_Grow(XML_IO_InStream* stream)
{
    if (!stream || stream->status != StreamStatus::More) return;
    if (stream->available() < kLookAhead) refill(*stream, kLookAhead);
}

uint32_t XML_IO_Strncmp(const XML_IO_InStream* stream, const char* text, size_t n)
{
    if (!stream || !text || stream->available() < n) return 0;
    return n == 0 || std::memcmp(stream->cursor, text, n) == 0;
}

uint32_t XML_IO_Strncasecmp(const XML_IO_InStream* stream, const char* text, size_t n)
{
    if (!stream || !text || stream->available() < n) return 0;
    return equalIgnoringCase(reinterpret_cast<const char*>(stream->cursor), text, n);
}

void XML_IO_DestroyByMem(XML_IO_InStream* stream)
{
    if (stream) releaseStream(stream);
}

void XML_IO_DestroyByMemList(XML_IO_InStream* stream)
{
    if (!stream) return;
    heap::release(stream->readContext.chunks);
    releaseStream(stream);
}

void XML_IO_DestroyByFile(XML_IO_InStream* stream)
{
    if (!stream) return;
    close(stream->readContext.file->descriptor);
    heap::release(stream->readContext.file);
    releaseStream(stream);
}
