/**
 * @file
 * What every header of netxml shares: statuses, encodings, and how functions are exported.
 *
 * Conventions of the whole library:
 *
 * - Internal text encoding. Every name, value, prefix and namespace name that is held in a tree, or
 *   passed to or returned by a function of dom.h, is a NUL-terminated byte string in GB18030
 *   (::XML_ENCODING_GB18030). ASCII is the same in GB18030 and in UTF-8; text beyond ASCII is
 *   converted with the streams of io.h. The parser's events (parser.h) carry UTF-8.
 * - Statuses are 32-bit: ::XML_RET_OK, or ::XML_RET_FAIL for every failure of a function, or
 *   ::XML_RET_EMPTY where a required argument is missing from the two functions that say so.
 *   Functions that create return the new object, or NULL.
 * - Accessors accept NULL and return their empty result.
 * - A call that fails releases what it allocated and leaves existing structures unchanged.
 * - Threads: the library has no locks and no global state that changes. One tree, stream or parse
 *   belongs to one thread at a time; distinct ones may be used in parallel.
 */
#ifndef NETXML_BASE_H
#define NETXML_BASE_H

#include <stddef.h>
#include <stdint.h>

/** Marks what the shared library exports. */
#if defined(__GNUC__)
#define XML_API __attribute__((visibility("default")))
#else
#define XML_API
#endif

/** Success. */
#define XML_RET_OK UINT32_C(0)
/** Any failure: bad argument, wrong kind of node, missing document, not found, no memory, parse
 * error. */
#define XML_RET_FAIL UINT32_C(0x40010001)
/** A required start, name or callback is empty or missing. */
#define XML_RET_EMPTY UINT32_C(0x20010002)

/** The namespace name that the prefix `xml` is always bound to (Namespaces in XML 1.0, section 3).
 */
#define XML_NAMESPACE_XML "http://www.w3.org/XML/1998/namespace"
/** The namespace name of declarations themselves (Namespaces in XML 1.0, section 3). */
#define XML_NAMESPACE_XMLNS "http://www.w3.org/2000/xmlns/"

#ifdef __cplusplus
extern "C" {
#endif

/** A character encoding: an index into the table of encoding names. */
typedef uint32_t XML_Encoding;
/** The values of ::XML_Encoding. */
enum {
    XML_ENCODING_UTF_8 = 0,    /**< "UTF-8" */
    XML_ENCODING_UTF_16LE = 1, /**< "UTF-16LE" */
    XML_ENCODING_UTF_16BE = 2, /**< "UTF-16BE" */
    XML_ENCODING_GB2312 = 3,   /**< "GB2312" */
    XML_ENCODING_UTF_32LE = 4, /**< "UTF-32LE" */
    XML_ENCODING_UTF_32BE = 5, /**< "UTF-32BE" */
    XML_ENCODING_UTF_16 = 6,   /**< "UTF-16" */
    XML_ENCODING_UTF_32 = 7,   /**< "UTF-32" */
    XML_ENCODING_GBK = 8,      /**< "GBK" */
    XML_ENCODING_GB18030 = 9,  /**< "GB18030" */
    XML_ENCODING_UCS_4 = 10,   /**< "UCS-4" */
    XML_ENCODING_UCS_4BE = 11, /**< "UCS-4BE" */
    XML_ENCODING_UCS_4LE = 12, /**< "UCS-4LE" */
    XML_ENCODING_NONE = 13     /**< no encoding, or an unknown one */
};

/** A node of a tree; opaque. */
typedef struct XML_DOM_Node XML_DOM_Node;
/** An attribute of an element; opaque. */
typedef struct XML_DOM_Attr XML_DOM_Attr;
/** A source of text for the parser; opaque. */
typedef struct XML_IO_InStream XML_IO_InStream;
/** A sink that converts text on its way; opaque. */
typedef struct XML_IO_OutStream XML_IO_OutStream;

#ifdef __cplusplus
}
#endif

#endif
