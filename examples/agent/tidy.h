/* Cleaning up behind an edit: what it removed is taken out at its end, all at once, since taking
 * one child out of many costs a walk over those in front of it.
 */
#ifndef AGENT_TIDY_H
#define AGENT_TIDY_H

#include <netxml/dom.h>
#include <stdbool.h>

/* Marks an element as removed: it stays in its place until tidy(). False without memory. */
bool tidyMark(XML_DOM_Node* element);
bool tidyIsMarked(const XML_DOM_Node* element);

/* Takes all marked elements out of a configuration, and puts those that stand behind their place
 * into the model's order. Where more than a few are concerned their parent is built anew: that
 * costs what it holds, once. False without memory. */
bool tidy(XML_DOM_Node* configuration);

#endif
