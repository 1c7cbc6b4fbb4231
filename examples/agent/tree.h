/* Small steps on trees that the library leaves to its callers: elements by name, texts, building.
 */
#ifndef AGENT_TREE_H
#define AGENT_TREE_H

#include <netxml/dom.h>
#include <stdbool.h>

/* The namespace of NETCONF's messages (RFC 6241), and the one of the configuration (system.xsd). */
#define BASE_NAMESPACE "urn:ietf:params:xml:ns:netconf:base:1.0"
#define SYSTEM_NAMESPACE "urn:example:agent:system"

bool isElement(const XML_DOM_Node* node);
/* The first child that is an element, and the next sibling that is one; NULL where there is none.
 */
XML_DOM_Node* firstElement(const XML_DOM_Node* parent);
XML_DOM_Node* nextElement(const XML_DOM_Node* node);

/* The node after `node` in document order, in the tree below `top`; NULL at its end. */
XML_DOM_Node* nextInTree(const XML_DOM_Node* top, const XML_DOM_Node* node);

/* The namespace name of an element; empty if it has none. */
const char* namespaceOf(const XML_DOM_Node* element);
bool hasName(const XML_DOM_Node* element, const char* namespaceName, const char* name);
/* The first child element of that name and of the parent's own namespace, or NULL. */
XML_DOM_Node* childNamed(const XML_DOM_Node* parent, const char* name);

/* The text of an element without child elements; empty if it has none. See joinTexts(). */
const char* textOf(const XML_DOM_Node* leaf);

/* Makes one text of the texts and CDATA sections with which an element begins, in the whole tree:
 * a comment or a CDATA section splits a text in two, and a schema looks at the last one only.
 * Texts behind a child element stay: no schema of ours admits them. False without memory. */
bool joinTexts(XML_DOM_Node* top);

/* An element that declares its namespace as the default one, or without one for NULL. */
XML_DOM_Node* makeElement(const char* name, const char* namespaceName);
/* Appends a new element, or puts it in front of another one, in the namespace of its parent; NULL
 * without memory. The second one costs a walk over the siblings in front. */
XML_DOM_Node* addElement(XML_DOM_Node* parent, const char* name);
XML_DOM_Node* addElementBefore(XML_DOM_Node* reference, const char* name);
/* Appends a new element with a text; an empty text adds none. */
bool addLeaf(XML_DOM_Node* parent, const char* name, const char* text);
/* Gives an element a text in the place of all its children. */
bool setText(XML_DOM_Node* element, const char* text);
void removeChildren(XML_DOM_Node* element);

#endif
