/* The operations of the protocol: from the element below <rpc> to the content of <rpc-reply>.
 */
#ifndef AGENT_OPERATIONS_H
#define AGENT_OPERATIONS_H

#include "store.h"

#include <netxml/dom.h>
#include <netxml/schema.h>
#include <stdbool.h>

/* Whether a message is an <rpc>; false for NULL. */
bool operationIsRpc(const XML_DOM_Node* message);

/* Carries out the operation that a message asks for. `rpc` is the document element of the message
 * or NULL if that is malformed. `*closing` is set when the session is to end after the reply.
 *
 * Returns <ok>, <data> or <rpc-error>, which the caller deletes; NULL when memory has run out. */
XML_DOM_Node* operationRun(const XML_DOM_Node* rpc, const Schema_Root* schemas, Store* store,
                           bool* closing);

#endif
