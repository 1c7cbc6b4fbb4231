/* Location paths for <error-path>: with prefixes, and with keys instead of positions.
 */
#ifndef AGENT_PATH_H
#define AGENT_PATH_H

#include <netxml/dom.h>

/* The prefixes that paths use; the element that holds a path declares them. */
#define PATH_BASE_PREFIX "nc"
#define PATH_SYSTEM_PREFIX "sys"

/* Makes the path of a node. Of a node in a message that is its place in the message; of one in the
 * configuration, or in an edit of it, its place in the configuration:
 *
 *     /nc:rpc/nc:edit-config/nc:target
 *     /sys:system/sys:interfaces/sys:interface[sys:name='eth0']/sys:mtu
 *
 * Returns a string that the caller frees, or NULL without memory. */
char* pathOf(const XML_DOM_Node* node);

#endif
