/* A whole configuration: is it valid?
 */
#ifndef AGENT_CONFIGURATION_H
#define AGENT_CONFIGURATION_H

#include <netxml/dom.h>
#include <netxml/schema.h>
#include <stdbool.h>

/* Makes a configuration that holds nothing, as the root of a document; NULL without memory. */
XML_DOM_Node* configurationMake(void);

/* Checks a configuration against the schema, and that no two entries of a list have one key.
 * Returns false with the refusal in `*error`, see rpc_error.h. */
bool configurationCheck(const XML_DOM_Node* configuration, const Schema_Root* schemas,
                        XML_DOM_Node** error);

#endif
