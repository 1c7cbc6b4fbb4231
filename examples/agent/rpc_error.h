/* The error of an operation, as <rpc-error> says it (RFC 6241, section 4.3 and appendix A).
 *
 * A function that may refuse returns false and stores the element in `*error`, which stays NULL
 * when it was memory that ran out. The caller owns the element.
 */
#ifndef AGENT_RPC_ERROR_H
#define AGENT_RPC_ERROR_H

#include <netxml/dom.h>
#include <netxml/schema.h>
#include <stdbool.h>

/* The name of an element or attribute; all NULL for none. */
typedef struct BadName {
    const char* name;
    const char* namespaceName; /* NULL or empty for none */
} BadName;

BadName badElementOf(const XML_DOM_Node* element);

/* What is wrong. Only `type` and `tag` must be set. */
typedef struct RpcError {
    const char* type; /* transport, rpc, protocol or application */
    const char* tag;
    const XML_DOM_Node* node; /* where */
    const char* message;
    BadName badAttribute;
    BadName badElement;
    const char* badNamespace;
    const char* sessionId;
} RpcError;

/* Stores the element for `what` in `*error`; returns false, for the caller to return. */
bool refuse(XML_DOM_Node** error, const RpcError* what);

/* Refuses for what a validation has found, with the validator's sentence. `type` as above. */
bool refuseVerdict(XML_DOM_Node** error, const char* type, const Schema_ValidateResult* result);

#endif
