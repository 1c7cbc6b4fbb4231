/**
 * @file
 * Encodings by name, output streams that convert, and the input streams under the parser.
 *
 * Threads: a stream belongs to one thread at a time; distinct streams share nothing.
 */
#ifndef NETXML_IO_H
#define NETXML_IO_H

#include "netxml/base.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------------------------------------
 * Encoding names
 */

/**
 * Finds an encoding by its name.
 *
 * `name` is compared without regard to ASCII case with the thirteen names, in the order of their
 * values: "UTF-8", "UTF-16LE", "UTF-16BE", "GB2312", "UTF-32LE", "UTF-32BE", "UTF-16", "UTF-32",
 * "GBK", "GB18030", "UCS-4", "UCS-4BE", "UCS-4LE". Aliases such as "UTF8" are not known.
 *
 * Returns the encoding, or ::XML_ENCODING_NONE for NULL or any other name. Thread-safe.
 */
XML_API XML_Encoding XML_DOM_EncodingStrToEnum(const char* name);

/**
 * Names an encoding.
 *
 * Returns the name, in upper case, as iconv knows it and as it is written into an XML declaration;
 * NULL for ::XML_ENCODING_NONE and for every value above it. The text is the library's own and
 * constant. Thread-safe.
 */
XML_API const char* XML_DOM_EncodingEnumToStr(XML_Encoding value);

/* ------------------------------------------------------------------------------------------------
 * Output streams
 *
 * A stream takes text in its source encoding and delivers it in its target encoding, either into
 * memory that grows or at the end of a file. Equal encodings are passed through unchanged. The
 * target encodings UTF-16 and UTF-32 begin with the byte-order mark that iconv writes, once for
 * each stream.
 *
 * A character that ends in the next piece of text is held back until its other bytes come; what is
 * still held back when a stream is destroyed is dropped.
 */

/**
 * Makes an empty stream that collects its output in memory.
 *
 * `source` is the encoding of the text that will be appended, `target` the encoding to store.
 *
 * Returns the stream, or NULL when the encodings differ and one is unknown or not supported by
 * iconv, or when memory runs out. The caller destroys it with XML_IO_OutStreamDestroy().
 */
XML_API XML_IO_OutStream* XML_IO_MemOutStreamCreate(XML_Encoding source, XML_Encoding target);

/**
 * Makes a stream that writes at the end of a file.
 *
 * `path` is opened for appending and, if it does not exist, created with the permission bits 0640.
 * What an existing file holds is never truncated. Encodings as in XML_IO_MemOutStreamCreate().
 *
 * Returns the stream, or NULL for a NULL path, a file that cannot be opened, encodings that cannot
 * be converted, or when memory runs out. The caller destroys it with XML_IO_OutStreamDestroy(),
 * which closes the file.
 */
XML_API XML_IO_OutStream* XML_IO_FileOutStreamCreate(const char* path, XML_Encoding source,
                                                     XML_Encoding target);

/**
 * Appends `length` bytes of text in the stream's source encoding.
 *
 * Returns ::XML_RET_OK when the text was taken. NULL bytes or a length of 0 do nothing and succeed,
 * even on a NULL stream. Returns ::XML_RET_FAIL for a NULL stream, for bytes that are no text in
 * the source encoding or have no form in the target encoding, when memory runs out, or when the
 * file cannot be written. After a failure part of the output may have been stored: of text that
 * cannot be converted, the whole areas of at most 256 bytes that were complete before the failing
 * character.
 */
XML_API uint32_t XML_IO_OutStreamAppend(XML_IO_OutStream* stream, const void* bytes, size_t length);

/**
 * Looks at what a memory stream has collected.
 *
 * `length` (may be NULL) receives the number of bytes stored.
 *
 * Returns the bytes, not NUL-terminated, or NULL when there are none. They stay the stream's and
 * are valid until its next append, clean, detach or destroy. For NULL or a file stream the result
 * is NULL and `length` is left as it was.
 */
XML_API char* XML_IO_MemOutStreamGetBuf(XML_IO_OutStream* stream, size_t* length);

/**
 * Takes what a memory stream has collected away from it.
 *
 * As XML_IO_MemOutStreamGetBuf(), but the block becomes the caller's, who releases it with free(),
 * and the stream starts afresh. NULL when nothing was stored.
 */
XML_API char* XML_IO_MemOutStreamDetachBuf(XML_IO_OutStream* stream, size_t* length);

/** Empties a memory stream but keeps its block for reuse; does nothing for NULL or a file stream.
 */
XML_API void XML_IO_MemOutStreamCleanBuf(XML_IO_OutStream* stream);

/**
 * Commits a file stream's data to storage (fsync).
 *
 * The stream keeps no buffer of its own: every append has already been written. Does nothing for
 * NULL or a memory stream.
 */
XML_API void XML_IO_FileOutStreamFlush(XML_IO_OutStream* stream);

/** Releases a stream of either kind, its memory or its file; does nothing for NULL. */
XML_API void XML_IO_OutStreamDestroy(XML_IO_OutStream* stream);

/* ------------------------------------------------------------------------------------------------
 * Input streams
 *
 * The parser makes, reads and destroys these itself (XML_Parser_ByMem() and its siblings). They are
 * exported for callers who drive a stream on their own. A stream detects a byte-order mark when it
 * is made, skips it, and from then on delivers UTF-8.
 */

/** One chunk of a memory list. The list only reads it. */
typedef struct XML_IO_MemChunk {
    struct XML_IO_MemChunk* next; /**< the next chunk, or NULL at the end */
    uint64_t length;              /**< bytes in `data`; 0 is allowed */
    const uint8_t* data;          /**< the bytes; not owned */
} XML_IO_MemChunk;

/**
 * The head of a memory list: chunks that are read in order as one sequence of bytes. A boundary may
 * fall anywhere, also inside a character or a tag. A caller's own head record may be larger: only
 * its first field is read.
 */
typedef struct XML_IO_MemList {
    XML_IO_MemChunk* first; /**< the first chunk, or NULL for an empty list */
} XML_IO_MemList;

/**
 * Makes a stream over one block of memory.
 *
 * `data` (`length` bytes) is read in place and never written; it must stay valid and unchanged
 * until the stream is destroyed with XML_IO_DestroyByMem().
 *
 * Returns the stream, or NULL for NULL data, a length of 0, or when memory runs out.
 */
XML_API XML_IO_InStream* XML_IO_ByMem(const uint8_t* data, size_t length);

/**
 * Makes a stream over a list of chunks.
 *
 * The chunks must stay valid and unchanged until the stream is destroyed with
 * XML_IO_DestroyByMemList(). An empty list gives an empty stream.
 *
 * Returns the stream, or NULL for a NULL list or when memory runs out.
 */
XML_API XML_IO_InStream* XML_IO_ByMemList(const XML_IO_MemList* list);

/**
 * Makes a stream over a file, opened for reading.
 *
 * A read error is taken as the end of the file. Destroy it with XML_IO_DestroyByFile(), which
 * closes the file.
 *
 * Returns the stream, or NULL for a NULL path, a file that cannot be opened, or when memory runs
 * out.
 */
XML_API XML_IO_InStream* XML_IO_ByFile(const char* path);

/**
 * Refills a stream's look-ahead: if less than 64 bytes are left to read, reads more from the
 * source. Does nothing for NULL or when the source is used up or has failed.
 */
XML_API void XML_IO_Grow(XML_IO_InStream* stream);

/**
 * Compares the next `n` bytes of a stream with `text`, which holds at least `n` bytes.
 *
 * Returns 1 when that many bytes are buffered and all are equal, else 0. Neither reads nor
 * advances: only the 64 bytes that XML_IO_Grow() provides can be relied on. 0 for a NULL argument.
 */
XML_API uint32_t XML_IO_Strncmp(const XML_IO_InStream* stream, const char* text, size_t n);

/** As XML_IO_Strncmp(), but A to Z and a to z count as equal, whatever the locale. */
XML_API uint32_t XML_IO_Strncasecmp(const XML_IO_InStream* stream, const char* text, size_t n);

/**
 * Switches a stream to another source encoding, from the first unread character on.
 *
 * UTF-16, UTF-32 and UCS-4 leave the byte order open; where it is known already, from a mark or
 * from the encoding before, it stays.
 *
 * Returns the stream's status: 0 more may follow, 1 the source is used up, 2 no memory (or a NULL
 * stream), 3 iconv does not support the encoding, 4 the buffered text cannot be converted. A stream
 * with a status of 2 or more, or in that encoding already, is left as it is.
 */
XML_API uint32_t XML_IO_SwitchEncoding(XML_IO_InStream* stream, XML_Encoding encoding);

/** Destroys a stream made by XML_IO_ByMem(); the caller's block stays the caller's. NULL is
 * allowed. */
XML_API void XML_IO_DestroyByMem(XML_IO_InStream* stream);

/** Destroys a stream made by XML_IO_ByMemList(); the chunks stay the caller's. NULL is allowed. */
XML_API void XML_IO_DestroyByMemList(XML_IO_InStream* stream);

/** Destroys a stream made by XML_IO_ByFile() and closes its file. NULL is allowed. */
XML_API void XML_IO_DestroyByFile(XML_IO_InStream* stream);

#ifdef __cplusplus
}
#endif

#endif
