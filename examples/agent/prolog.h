/* What stands before the document element: the parser skips a document type declaration without a
 * word, and RFC 6241, section 3.2, has none in messages.
 */
#ifndef AGENT_PROLOG_H
#define AGENT_PROLOG_H

#include <netxml/io.h>
#include <stdbool.h>

/* Whether a well-formed document has a document type declaration. */
bool prologHasDoctype(const XML_IO_MemList* document);

/* The same for a file; false for one that cannot be read. */
bool prologOfFileHasDoctype(const char* path);

#endif
