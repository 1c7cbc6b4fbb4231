/* The first pass over the content of a <config>: whether the model knows all that stands in it.
 */
#ifndef AGENT_EDIT_CHECK_H
#define AGENT_EDIT_CHECK_H

#include "operation.h"

#include <stdbool.h>

/* Checks names, places, keys and attributes below the element `config`; values are checked by the
 * schema once they are in their place. `operations` tells whether elements may say what is to
 * happen to them. Returns false with the refusal in `*error`, see rpc_error.h. */
bool editCheck(const XML_DOM_Node* config, bool operations, XML_DOM_Node** error);

#endif
