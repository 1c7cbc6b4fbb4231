/* <rpc-reply>: the start tag with what the request's had, and one element as its content.
 */
#ifndef AGENT_REPLY_H
#define AGENT_REPLY_H

#include <netxml/io.h>
#include <stdbool.h>

/* Makes the text of a reply, in UTF-8.
 *
 * `request` is the message that is answered, perhaps not well-formed: as far as its first tag is an
 * <rpc>, its attributes and namespace declarations are repeated and its prefix is used, as RFC
 * 6241, section 4.2 asks for. `body` is <ok>, <data> or <rpc-error>, without a namespace of its
 * own; NULL stands for an <rpc-error> that says that memory has run out.
 *
 * Returns the text, which the caller frees, and its length; NULL without memory. */
char* replyText(const XML_IO_MemList* request, XML_DOM_Node* body, size_t* length);

#endif
