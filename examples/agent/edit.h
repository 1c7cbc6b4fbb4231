/* Editing a configuration: the second pass over the content of a <config>, which applies it.
 */
#ifndef AGENT_EDIT_H
#define AGENT_EDIT_H

#include "operation.h"

#include <stdbool.h>

/* Applies what lies below the element `config`, which has passed editCheck(), to the tree of a
 * configuration. `inherited` is the default operation; with OPERATION_REPLACE, `config` is the
 * whole configuration to be. `*changed` tells whether the edit made a difference. Time and memory
 * are those of the configuration and of the edit, each counted once.
 *
 * Returns false with the refusal in `*error`, see rpc_error.h. The tree may have been edited in
 * part then: the caller drops it. */
bool editApply(XML_DOM_Node* configuration, const XML_DOM_Node* config, Operation inherited,
               bool* changed, XML_DOM_Node** error);

#endif
