#include "prolog.h"

#include <errno.h>
#include <fcntl.h>
#include <unistd.h>

/* Where the scan stands, and what it has found in the end. */
typedef enum Place {
    OUTSIDE,
    OPENED,      /* behind "<" */
    DECLARATION, /* behind "<!" */
    COMMENT_BEGIN,
    COMMENT,
    HYPHEN,  /* in a comment, behind "-" */
    HYPHENS, /* behind "--", which must be its end */
    INSTRUCTION,
    QUESTION_MARK, /* in an instruction, behind "?" */
    IS_DOCTYPE,
    IS_ELEMENT
} Place;

static Place openedBy(uint8_t byte)
{
    if (byte == '!') return DECLARATION;
    return byte == '?' ? INSTRUCTION : IS_ELEMENT;
}

static Place after(Place place, uint8_t byte)
{
    switch (place) {
    case OUTSIDE: return byte == '<' ? OPENED : OUTSIDE;
    case OPENED: return openedBy(byte);
    case DECLARATION: return byte == '-' ? COMMENT_BEGIN : IS_DOCTYPE;
    case COMMENT_BEGIN: return COMMENT;
    case COMMENT: return byte == '-' ? HYPHEN : COMMENT;
    case HYPHEN: return byte == '-' ? HYPHENS : COMMENT;
    case HYPHENS: return OUTSIDE;
    case INSTRUCTION: return byte == '?' ? QUESTION_MARK : INSTRUCTION;
    case QUESTION_MARK:
        if (byte == '>') return OUTSIDE;
        return byte == '?' ? QUESTION_MARK : INSTRUCTION;
    default: return place;
    }
}

/* Goes over so many bytes more. A zero byte is half of a character of UTF-16: the other half tells.
 */
static Place scan(Place place, const uint8_t* bytes, size_t length)
{
    for (; length != 0 && place < IS_DOCTYPE; ++bytes, --length)
        if (*bytes != 0) place = after(place, *bytes);
    return place;
}

bool prologHasDoctype(const XML_IO_MemList* document)
{
    Place place = OUTSIDE;
    const XML_IO_MemChunk* chunk = document->first;
    for (; chunk && place < IS_DOCTYPE; chunk = chunk->next)
        place = scan(place, chunk->data, (size_t)chunk->length);
    return place == IS_DOCTYPE;
}

bool prologOfFileHasDoctype(const char* path)
{
    Place place = OUTSIDE;
    uint8_t bytes[1024];
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    if (file < 0) return false;
    while (place < IS_DOCTYPE) {
        const ssize_t count = read(file, bytes, sizeof bytes);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        place = scan(place, bytes, (size_t)count);
    }
    close(file);
    return place == IS_DOCTYPE;
}
