/* Subtree filtering (RFC 6241, section 6).
 */
#ifndef AGENT_FILTER_H
#define AGENT_FILTER_H

#include <netxml/dom.h>
#include <stdbool.h>

/* Adds to `data` what the filter selects of a configuration; all of it without a filter (NULL).
 * An entry of a list always comes with its key. False without memory.
 *
 * A condition that names the key of an entry costs what it says; others on a list look at each
 * entry, and none is copied twice. */
bool filterInto(XML_DOM_Node* data, const XML_DOM_Node* configuration, const XML_DOM_Node* filter);

#endif
