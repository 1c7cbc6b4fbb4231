/* NETCONF messages on a byte stream, as RFC 6242 frames them: with the mark "]]>]]>" behind each
 * message, or, once both sides have said :base:1.1, in chunks that tell their length.
 *
 * What is read becomes a chunk list for XML_DOM_BuildTreeByMemList() where it lies: nothing is
 * gathered in one block.
 */
#ifndef AGENT_FRAMING_H
#define AGENT_FRAMING_H

#include <netxml/io.h>
#include <stdbool.h>

/* The bytes of one message, framing included, that a peer may send. */
#define FRAME_LARGEST_MESSAGE (UINT64_C(4) << 20)

enum { FRAME_BLOCK_SIZE = 8192 };

/* One block of input. Reading fills it; scanning takes the framing out, by moving what belongs to
 * the message to the front, where `chunk` tells of it. */
typedef struct FrameBlock {
    XML_IO_MemChunk chunk; /* first, so that a chunk of the list is its block */
    size_t filled;
    size_t scanned;
    uint8_t bytes[FRAME_BLOCK_SIZE];
} FrameBlock;

/* One message without its framing; the caller's, who frees it with frameFree(). */
typedef struct FrameMessage {
    XML_IO_MemList list; /* first, so that a message is its list */
    FrameBlock* last;
    uint64_t length;
} FrameMessage;

typedef enum FrameResult {
    FRAME_MESSAGE,   /* a whole message */
    FRAME_END,       /* the stream ended between two messages */
    FRAME_MALFORMED, /* broken framing, or an end inside a message: nothing after it can be read */
    FRAME_TOO_LONG,  /* above FRAME_LARGEST_MESSAGE, read or announced */
    FRAME_FAILED     /* a read failed, or no memory */
} FrameResult;

/* Where a reader stands within a message. */
typedef struct FrameState {
    unsigned matched;   /* characters of "]]>]]>" seen last */
    unsigned expecting; /* which character of the chunked framing comes next */
    uint64_t chunkLeft; /* the size that is being read; then what is left of the chunk */
    uint64_t received;  /* bytes of this message, framing included */
} FrameState;

typedef struct FrameReader {
    int file;
    bool chunked;      /* set between two messages */
    FrameBlock* ahead; /* what was read beyond the last message, or NULL */
    FrameState state;
} FrameReader;

/* Reads one message; waits for it. `message` is empty, with nothing to free, unless the result is
 * FRAME_MESSAGE. */
FrameResult frameRead(FrameReader* reader, FrameMessage* message);

void frameFree(FrameMessage* message);

/* Releases what a reader holds. The file stays open: it is the caller's. */
void frameEnd(FrameReader* reader);

/* Writes one message with its framing; waits until all of it is written. */
bool frameWrite(int file, bool chunked, const char* text, size_t length);

#endif
