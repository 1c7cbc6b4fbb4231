#include "framing.h"

#include "write_all.h"

#include <errno.h>
#include <poll.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

/* The largest chunk that RFC 6242 allows. */
#define LARGEST_CHUNK UINT64_C(4294967295)

static const char kEndOfMessage[] = "]]>]]>";
enum { END_OF_MESSAGE_LENGTH = sizeof kEndOfMessage - 1 };

/* What a scan of one block says besides the results of a read. */
typedef enum ScanResult { SCAN_MORE, SCAN_MESSAGE, SCAN_MALFORMED, SCAN_TOO_LONG } ScanResult;

/* What may come next in chunked framing:
 *
 *     message := chunk+ end    chunk := LF "#" size LF bytes    end := LF "#" "#" LF
 */
enum Expecting {
    FIRST_LINE_FEED,
    FIRST_HASH,
    FIRST_SIZE,
    MORE_SIZE,
    BYTES,
    LINE_FEED,
    HASH,
    SIZE_OR_HASH,
    LAST_LINE_FEED
};

/* ------------------------------------------------------------------------------------------------
 * Blocks
 */

static FrameBlock* appendBlock(FrameMessage* message, FrameBlock* block)
{
    if (!block) return NULL;
    if (message->last) message->last->chunk.next = &block->chunk;
    else message->list.first = &block->chunk;
    message->last = block;
    return block;
}

static FrameBlock* newBlock(void)
{
    FrameBlock* block = malloc(sizeof *block);
    if (!block) return NULL;
    block->chunk.next = NULL;
    block->chunk.length = 0;
    block->chunk.data = block->bytes;
    block->filled = block->scanned = 0;
    return block;
}

/* The next `count` scanned bytes from `from` on belong to the message. */
static void keep(FrameMessage* message, size_t from, size_t count)
{
    FrameBlock* block = message->last;
    memmove(block->bytes + block->chunk.length, block->bytes + from, count);
    block->chunk.length += count;
    message->length += count;
}

/* Takes the last `count` bytes off again; they may lie in several blocks. */
static void dropTail(FrameMessage* message, uint64_t count)
{
    message->length -= count;
    uint64_t left = message->length;
    for (XML_IO_MemChunk* chunk = message->list.first; chunk; chunk = chunk->next) {
        if (chunk->length > left) chunk->length = left;
        left -= chunk->length;
    }
}

/* What was read beyond the message begins the next one. */
static bool splitAhead(FrameReader* reader, const FrameMessage* message)
{
    const FrameBlock* block = message->last;
    const size_t rest = block->filled - block->scanned;
    if (rest == 0) return true;
    reader->ahead = newBlock();
    if (!reader->ahead) return false;
    memcpy(reader->ahead->bytes, block->bytes + block->scanned, rest);
    reader->ahead->filled = rest;
    return true;
}

/* ------------------------------------------------------------------------------------------------
 * Scanning
 */

/* How much of the mark has been seen after one more byte. The mark can begin anew inside itself. */
static unsigned matchedAfter(unsigned matched, uint8_t byte)
{
    static const unsigned afterBracket[END_OF_MESSAGE_LENGTH] = {1, 2, 2, 4, 5, 2};
    if (byte == ']') return afterBracket[matched];
    return byte == '>' && (matched == 2 || matched == 5) ? matched + 1 : 0;
}

static bool isBlank(uint8_t byte)
{
    return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r';
}

/* Clients put a line feed behind the mark, which is no part of the next message: so blanks before a
 * message are skipped. */
static void skipBlanks(FrameBlock* block)
{
    while (block->scanned < block->filled && isBlank(block->bytes[block->scanned]))
        ++block->scanned;
}

static ScanResult scanMarked(FrameState* state, FrameMessage* message)
{
    FrameBlock* block = message->last;
    if (message->length == 0) skipBlanks(block);
    const size_t begin = block->scanned;
    while (block->scanned < block->filled && state->matched < END_OF_MESSAGE_LENGTH)
        state->matched = matchedAfter(state->matched, block->bytes[block->scanned++]);
    keep(message, begin, block->scanned - begin);
    if (state->matched < END_OF_MESSAGE_LENGTH) return SCAN_MORE;
    dropTail(message, END_OF_MESSAGE_LENGTH);
    return SCAN_MESSAGE;
}

static ScanResult scanDigit(FrameState* state, uint8_t byte)
{
    if (byte < '0' || byte > '9') return SCAN_MALFORMED;
    state->chunkLeft = state->chunkLeft * 10 + (uint64_t)(byte - '0');
    state->expecting = MORE_SIZE;
    if (state->chunkLeft == 0 || state->chunkLeft > LARGEST_CHUNK) return SCAN_MALFORMED;
    return SCAN_MORE;
}

static ScanResult expect(FrameState* state, uint8_t byte, char wanted, unsigned next)
{
    state->expecting = next;
    return byte == (uint8_t)wanted ? SCAN_MORE : SCAN_MALFORMED;
}

/* One byte of the framing itself. */
static ScanResult scanHeader(FrameState* state, uint8_t byte)
{
    switch (state->expecting) {
    case FIRST_LINE_FEED: return expect(state, byte, '\n', FIRST_HASH);
    case FIRST_HASH: return expect(state, byte, '#', FIRST_SIZE);
    case LINE_FEED: return expect(state, byte, '\n', HASH);
    case HASH: return expect(state, byte, '#', SIZE_OR_HASH);
    case SIZE_OR_HASH:
        if (byte == '#') return expect(state, byte, '#', LAST_LINE_FEED);
        return scanDigit(state, byte);
    case FIRST_SIZE: return scanDigit(state, byte);
    case MORE_SIZE:
        if (byte != '\n') return scanDigit(state, byte);
        state->expecting = BYTES;
        return state->chunkLeft > FRAME_LARGEST_MESSAGE ? SCAN_TOO_LONG : SCAN_MORE;
    default: return byte == '\n' ? SCAN_MESSAGE : SCAN_MALFORMED;
    }
}

static ScanResult scanChunked(FrameState* state, FrameMessage* message)
{
    FrameBlock* block = message->last;
    ScanResult result = SCAN_MORE;
    while (result == SCAN_MORE && block->scanned < block->filled) {
        if (state->expecting != BYTES) {
            result = scanHeader(state, block->bytes[block->scanned++]);
            continue;
        }
        size_t count = block->filled - block->scanned;
        if (count > state->chunkLeft) count = (size_t)state->chunkLeft;
        keep(message, block->scanned, count);
        block->scanned += count;
        state->chunkLeft -= count;
        if (state->chunkLeft == 0) state->expecting = LINE_FEED;
    }
    return result;
}

/* ------------------------------------------------------------------------------------------------
 * Reading
 */

/* Whether a read that has failed for this reason is to be tried again, having waited. */
static bool waitsAfter(int file, int reason)
{
    if (reason == EAGAIN || reason == EWOULDBLOCK) return waitUntilReady(file, POLLIN);
    return reason == EINTR;
}

/* Reads once more, behind what is there. The end of the stream counts as no bytes. */
static bool readMore(FrameReader* reader, FrameMessage* message, size_t* count)
{
    FrameBlock* block = message->last;
    if (!block || block->filled == FRAME_BLOCK_SIZE) block = appendBlock(message, newBlock());
    if (!block) return false;
    ssize_t got = -1;
    do got = read(reader->file, block->bytes + block->filled, FRAME_BLOCK_SIZE - block->filled);
    while (got < 0 && waitsAfter(reader->file, errno));
    if (got < 0) return false;
    *count = (size_t)got;
    block->filled += *count;
    return true;
}

static bool betweenMessages(const FrameReader* reader, const FrameMessage* message)
{
    return message->length == 0 && reader->state.expecting == FIRST_LINE_FEED;
}

static FrameResult readMessage(FrameReader* reader, FrameMessage* message)
{
    FrameState* state = &reader->state;
    for (;;) {
        if (message->last) {
            const size_t before = message->last->scanned;
            const ScanResult result =
                reader->chunked ? scanChunked(state, message) : scanMarked(state, message);
            if (result == SCAN_MALFORMED) return FRAME_MALFORMED;
            state->received += message->last->scanned - before;
            if (result == SCAN_TOO_LONG || state->received > FRAME_LARGEST_MESSAGE)
                return FRAME_TOO_LONG;
            if (result == SCAN_MESSAGE)
                return splitAhead(reader, message) ? FRAME_MESSAGE : FRAME_FAILED;
        }
        size_t count = 0;
        if (!readMore(reader, message, &count)) return FRAME_FAILED;
        if (count == 0) return betweenMessages(reader, message) ? FRAME_END : FRAME_MALFORMED;
    }
}

FrameResult frameRead(FrameReader* reader, FrameMessage* message)
{
    memset(message, 0, sizeof *message);
    memset(&reader->state, 0, sizeof reader->state);
    appendBlock(message, reader->ahead);
    reader->ahead = NULL;
    const FrameResult result = readMessage(reader, message);
    if (result != FRAME_MESSAGE) frameFree(message);
    return result;
}

void frameFree(FrameMessage* message)
{
    while (message->list.first) {
        XML_IO_MemChunk* chunk = message->list.first;
        message->list.first = chunk->next;
        free(chunk); /* the chunk is the first field of its block */
    }
    message->last = NULL;
    message->length = 0;
}

void frameEnd(FrameReader* reader)
{
    free(reader->ahead);
    reader->ahead = NULL;
}

/* ------------------------------------------------------------------------------------------------
 * Writing
 */

bool frameWrite(int file, bool chunked, const char* text, size_t length)
{
    if (!chunked)
        return writeAll(file, text, length) && writeAll(file, kEndOfMessage, END_OF_MESSAGE_LENGTH);
    while (length != 0) {
        const size_t count = length > LARGEST_CHUNK ? (size_t)LARGEST_CHUNK : length;
        char header[32];
        const int size = snprintf(header, sizeof header, "\n#%zu\n", count);
        if (!writeAll(file, header, (size_t)size) || !writeAll(file, text, count)) return false;
        text += count;
        length -= count;
    }
    return writeAll(file, "\n##\n", 4);
}
