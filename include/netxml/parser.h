/**
 * @file
 * The parser: XML text to events, and XML text to a tree.
 *
 * It reads namespace-aware XML 1.0, does not validate, and stops at the first error, which it
 * reports once with line, column, an excerpt and a message. A document type declaration is skipped;
 * entities other than the five predefined ones and character references are errors. Text is trimmed
 * of blanks at both ends, and text of blanks only is not reported.
 *
 * Threads: a parse runs on the caller's thread; parses share nothing and may run in parallel.
 */
#ifndef NETXML_PARSER_H
#define NETXML_PARSER_H

#include "netxml/base.h"
#include "netxml/io.h"

#ifdef __cplusplus
extern "C" {
#endif

/** What went wrong, as XML_Parser::error holds it. Values without a name are not used. */
typedef uint32_t XML_ErrorCode;
/** The values of ::XML_ErrorCode. */
enum {
    XML_ERROR_NONE = 0,                      /**< no error */
    XML_ERROR_INTERNAL = 1,                  /**< internal error. */
    XML_ERROR_MEMORY = 2,                    /**< memory allocation failed. */
    XML_ERROR_DOCUMENT_EMPTY = 4,            /**< document is empty. */
    XML_ERROR_DOCUMENT_END = 5,              /**< extra content at the end of the document. */
    XML_ERROR_INVALID_CHARACTER = 9,         /**< invalid character. */
    XML_ERROR_REFERENCE_SEMICOLON = 25,      /**< expecting a ';'. */
    XML_ERROR_UNDECLARED_ENTITY = 26,        /**< undeclared entity. */
    XML_ERROR_UNSUPPORTED_ENCODING = 32,     /**< unsupported encoding. */
    XML_ERROR_STRING_NOT_STARTED = 33,       /**< string not started expecting " or '. */
    XML_ERROR_STRING_NOT_CLOSED = 34,        /**< string not closed expecting " or '. */
    XML_ERROR_NAMESPACE_DECLARATION = 35,    /**< namespace declare error. */
    XML_ERROR_LESS_THAN_IN_ATTRIBUTE = 38,   /**< unescaped '<' not allowed in attributes values */
    XML_ERROR_ATTRIBUTE_WITHOUT_VALUE = 41,  /**< attribute without value. No rule gives it. */
    XML_ERROR_ATTRIBUTE_REDEFINED = 42,      /**< attribute redefined. */
    XML_ERROR_COMMENT_NOT_FINISHED = 45,     /**< comment not terminated. */
    XML_ERROR_NO_TARGET_NAME = 46,           /**< no target name. */
    XML_ERROR_INSTRUCTION_NOT_FINISHED = 47, /**< expecting an end tag for style-sheet. */
    XML_ERROR_DECLARATION_NOT_FINISHED = 57, /**< parsing XML declaration: '?>' expected. */
    XML_ERROR_DOCTYPE_NOT_FINISHED = 61,     /**< DOCTYPE improperly terminated. */
    XML_ERROR_CDATA_END_IN_CONTENT = 62,     /**< sequence ']]>' not allowed in content. */
    XML_ERROR_CDATA_NOT_FINISHED = 63,       /**< CData not finished. */
    XML_ERROR_SPACE_REQUIRED = 65,           /**< expecting a space. */
    XML_ERROR_NAME_REQUIRED = 68,            /**< name required. */
    XML_ERROR_START_TAG_EXPECTED = 72,       /**< start tag expected, '<' not found. */
    XML_ERROR_EQUAL_REQUIRED = 75,           /**< expecting a '='. */
    XML_ERROR_TAG_NAME_MISMATCH = 76,        /**< tag name mismatch. */
    XML_ERROR_TAG_NOT_FINISHED = 77,         /**< tag not finished. */
    XML_ERROR_STANDALONE_VALUE = 78,         /**< standalone accepts only yes or no. */
    XML_ERROR_HYPHEN_IN_COMMENT = 80,        /**< comment must not contain '--' (double-hyphen). */
    XML_ERROR_VERSION_MISSING = 96,          /**< missing version in text declaration. */
    XML_ERROR_VERSION_UNSUPPORTED = 97,      /**< unsupported version. */
    XML_ERROR_PREFIX_NOT_DEFINED = 201,      /**< namespace prefix is not defined. */
    XML_ERROR_ENCODING_SWITCH = 1500         /**< transition IO stream enCoding error. */
};

/** The callbacks of a parse; see below. */
typedef struct XML_SAX_Handler XML_SAX_Handler;

/**
 * The context of one parse, which every callback gets. It lives as long as the parse.
 *
 * A callback must come back by itself: neither an exception nor longjmp() may pass the parser. It
 * reaches its own data through `handler->userData`, and stops the parse by storing a
 * non-zero code in `error`. All other fields are only read.
 */
typedef struct XML_Parser {
    const XML_SAX_Handler* handler; /**< the caller's callbacks; may be NULL */
    XML_IO_InStream* stream;        /**< the input */
    void* pendingAttributes;        /**< the parser's own records; opaque */
    void* freeAttributes;           /**< the parser's own records; opaque */
    void* bindings;                 /**< the parser's own records; opaque */
    XML_Encoding encoding;          /**< of the source at its start; then the declared one */
    XML_ErrorCode error;            /**< a callback stores a non-zero code here to stop */
    uint32_t line;                  /**< of the place reached, from 1 */
    uint32_t column;                /**< of the place reached, in characters, from 1 */
    const char* version;            /**< "1.0" */
} XML_Parser;

/**
 * The callbacks of a parse: 32 slots of a pointer's size. A NULL slot is not called, and the
 * reserved ones never are. What callbacks return is not looked at.
 *
 * Every text and array given to a callback is the parser's own and valid during the call only.
 * Texts are UTF-8 and NUL-terminated, except for CDATA.
 */
struct XML_SAX_Handler {
    void* reserved0[12]; /**< slots 0 to 11 */
    /** Slot 12: once, after the XML declaration. */
    void (*startDocument)(XML_Parser* parser);
    /** Slot 13: once, after a complete document without error. */
    void (*endDocument)(XML_Parser* parser);
    void* reserved14[2]; /**< slots 14 and 15 */
    /** Slot 16: text between tags, trimmed; never empty. */
    void (*characters)(XML_Parser* parser, const char* text, uint32_t length);
    /** Slot 17: the text of a comment. */
    void (*comment)(XML_Parser* parser, const char* text);
    /** Slot 18: the content of a CDATA section, not terminated. */
    void (*cdata)(XML_Parser* parser, const char* text, uint32_t length);
    /** Slot 19: a processing instruction; `data` is NULL when nothing follows the target. */
    void (*processingInstruction)(XML_Parser* parser, const char* target, const char* data);
    /** Slot 20: the one error; a printf format and its arguments. */
    void (*error)(XML_Parser* parser, const char* format, ...);
    void* reserved21[7]; /**< slots 21 to 27 */
    /** Slot 28: no function but the caller's own pointer. */
    void* userData;
    /**
     * Slot 29: a start tag. `declarations` holds two texts for each namespace declaration of this
     * tag: prefix (NULL for the default namespace) and namespace name. `attributes` holds five for
     * each attribute: local name, prefix, namespace name, start and end of the value; NULL prefix
     * and namespace name where there is none. `defaultedCount` is always 0.
     */
    void (*startElementNs)(XML_Parser* parser, const char* localName, const char* prefix,
                           const char* namespaceName, uint32_t declarationCount,
                           const char** declarations, uint32_t attributeCount,
                           uint32_t defaultedCount, const char** attributes);
    /** Slot 30: the end of an element; also called for an empty one. */
    void (*endElementNs)(XML_Parser* parser, const char* localName, const char* prefix,
                         const char* namespaceName);
    void* reserved31; /**< slot 31 */
};

/* ------------------------------------------------------------------------------------------------
 * XML text to events
 */

/**
 * Parses a block of memory.
 *
 * `data` (`length` bytes) holds the whole document in any of the thirteen encodings; it is read in
 * place and never written. `handler` is only read; NULL just checks the document.
 *
 * Returns ::XML_RET_OK when the whole document was read and no callback stopped it. ::XML_RET_FAIL
 * for NULL data, a length of 0, or without memory (then nothing is reported), and after an error,
 * which slot 20 has been told.
 */
XML_API uint32_t XML_Parser_ByMem(const uint8_t* data, uint32_t length,
                                  const XML_SAX_Handler* handler);

/** As XML_Parser_ByMem(), for a list of chunks. */
XML_API uint32_t XML_Parser_ByMemList(const XML_IO_MemList* list, const XML_SAX_Handler* handler);

/** As XML_Parser_ByMem(), for a file; ::XML_RET_FAIL also when it cannot be opened. */
XML_API uint32_t XML_Parser_ByFile(const char* path, const XML_SAX_Handler* handler);

/* ------------------------------------------------------------------------------------------------
 * XML text to a tree
 */

/**
 * Parses a block of memory into a tree.
 *
 * `errorText` (`errorTextSize` bytes, may be NULL) receives what went wrong, terminated and cut to
 * the size, in GB18030: "Invalid parameter.", "Failed to initialize DOM SAX." (no memory, or iconv
 * cannot convert to GB18030), the empty text when the source cannot be opened, or `The Line %d
 * Column %d :"%s", %s` with an excerpt of the input and the message.
 *
 * Returns the root of the new tree, which the caller deletes with XML_DOM_DelNode(), or NULL.
 */
XML_API XML_DOM_Node* XML_DOM_BuildTreeByMem(const uint8_t* data, uint32_t length,
                                             uint32_t errorTextSize, char* errorText);

/** As XML_DOM_BuildTreeByMem(), for a list of chunks. */
XML_API XML_DOM_Node* XML_DOM_BuildTreeByMemList(const XML_IO_MemList* list, uint32_t errorTextSize,
                                                 char* errorText);

/** As XML_DOM_BuildTreeByMem(), for a file. */
XML_API XML_DOM_Node* XML_DOM_BuildTreeByFile(const char* path, uint32_t errorTextSize,
                                              char* errorText);

/**
 * What the XML_SAX_ callbacks work on: set up one, put it into XML_SAX_Handler::userData next to
 * the callbacks below, and a parse with that handler builds a tree. So a caller can watch or filter
 * the events on their way into the tree, and change the tree between them. A prefix is therefore
 * looked up in the tree as it stands, from the element up to its declaration: deep trees cost more
 * so than with XML_DOM_BuildTreeByMem(), which keeps an index.
 */
typedef struct XML_SAX_Builder {
    XML_DOM_Node* root;               /**< NULL at first; then the root, the caller's */
    XML_DOM_Node* current;            /**< NULL at first; the element that gets the next child */
    XML_IO_OutStream* nameConverter;  /**< memory stream from UTF-8 to GB18030, the caller's */
    XML_IO_OutStream* valueConverter; /**< another one */
    char* errorText;                  /**< receives the report; may be NULL */
    uint32_t errorTextSize;           /**< its size in bytes */
} XML_SAX_Builder;

/** Slot 29: appends an element with its declarations and attributes, and steps into it. */
XML_API void XML_SAX_StartElementNs(XML_Parser* parser, const char* localName, const char* prefix,
                                    const char* namespaceName, uint32_t declarationCount,
                                    const char** declarations, uint32_t attributeCount,
                                    uint32_t defaultedCount, const char** attributes);

/** Slot 30: steps back to the parent. */
XML_API void XML_SAX_EndElementNs(XML_Parser* parser, const char* localName, const char* prefix,
                                  const char* namespaceName);

/** Slot 16: appends a text node. */
XML_API void XML_SAX_Characters(XML_Parser* parser, const char* text, uint32_t length);

/** Slot 18: appends a CDATA node; an empty section gives an empty node. */
XML_API void XML_SAX_CData(XML_Parser* parser, const char* text, uint32_t length);

/** Slot 13: stores the encoding and the version in the document. */
XML_API void XML_SAX_EndDocument(XML_Parser* parser);

/** Slot 20: writes the report into the builder's buffer, and deletes the tree built so far. */
XML_API void XML_SAX_Error(XML_Parser* parser, const char* format, ...);

/* ------------------------------------------------------------------------------------------------
 * Checks of names
 */

/**
 * Checks a name (XML 1.0, production Name, without the colon).
 *
 * `text` is NUL-terminated GB18030. Despite the function's name a colon is refused, deliberately:
 * tree and parser keep prefixes apart from names.
 *
 * Returns ::XML_RET_OK, or ::XML_RET_FAIL for NULL, the empty text, bytes that are no GB18030, any
 * other text, or without memory. Thread-safe.
 */
XML_API uint32_t XML_CheckQName(const char* text);

/**
 * Checks whether a prefix may be declared for a namespace name (Namespaces in XML 1.0, section 3).
 *
 * `prefix` NULL is the default namespace. Refused are an empty name for a prefix, the prefix
 * `xmlns`, the xmlns namespace name, and every pairing of `xml` or its namespace name with anything
 * else.
 *
 * Returns ::XML_RET_OK or ::XML_RET_FAIL, the latter also for a NULL name. Thread-safe.
 */
XML_API uint32_t XML_CheckNamespace(const char* prefix, const char* namespaceName);

#ifdef __cplusplus
}
#endif

#endif
