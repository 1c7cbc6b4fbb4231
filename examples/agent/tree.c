#include "tree.h"

#include <stdlib.h>
#include <string.h>

bool isElement(const XML_DOM_Node* node)
{
    return XML_DOM_GetNodeType(node) == XML_DOM_NODE_ELEMENT;
}

XML_DOM_Node* firstElement(const XML_DOM_Node* parent)
{
    XML_DOM_Node* node = XML_DOM_GetFirstChild(parent);
    return !node || isElement(node) ? node : nextElement(node);
}

XML_DOM_Node* nextElement(const XML_DOM_Node* node)
{
    XML_DOM_Node* next = XML_DOM_GetNextSibling(node);
    while (next && !isElement(next)) next = XML_DOM_GetNextSibling(next);
    return next;
}

XML_DOM_Node* nextInTree(const XML_DOM_Node* top, const XML_DOM_Node* node)
{
    XML_DOM_Node* next = XML_DOM_GetFirstChild(node);
    while (!next && node != top) {
        next = XML_DOM_GetNextSibling(node);
        node = XML_DOM_GetNodeParent(node);
    }
    return next;
}

const char* namespaceOf(const XML_DOM_Node* element)
{
    const char* name = NULL;
    XML_DOM_GetNodeNameSpace(element, NULL, &name);
    return name ? name : "";
}

bool hasName(const XML_DOM_Node* element, const char* namespaceName, const char* name)
{
    return XML_Strcmp(XML_DOM_GetNodeName(element), name) == 0 &&
           strcmp(namespaceOf(element), namespaceName) == 0;
}

XML_DOM_Node* childNamed(const XML_DOM_Node* parent, const char* name)
{
    const char* namespaceName = namespaceOf(parent);
    XML_DOM_Node* child = firstElement(parent);
    while (child && !hasName(child, namespaceName, name)) child = nextElement(child);
    return child;
}

const char* textOf(const XML_DOM_Node* leaf)
{
    const char* text = XML_DOM_GetFirstTextChildValue(leaf);
    return text ? text : "";
}

/* ------------------------------------------------------------------------------------------------
 * Joining texts
 */

/* The children of `element` up to its first child element, as one string; the caller frees it. */
static char* joinedText(const XML_DOM_Node* element)
{
    size_t length = 0;
    const XML_DOM_Node* piece = XML_DOM_GetFirstChild(element);
    for (; piece && !isElement(piece); piece = XML_DOM_GetNextSibling(piece))
        length += strlen(XML_DOM_GetNodeValue(piece));

    char* text = malloc(length + 1);
    if (!text) return NULL;
    char* end = text;
    piece = XML_DOM_GetFirstChild(element);
    for (; piece && !isElement(piece); piece = XML_DOM_GetNextSibling(piece)) {
        const char* value = XML_DOM_GetNodeValue(piece);
        const size_t size = strlen(value);
        memcpy(end, value, size);
        end += size;
    }
    *end = '\0';
    return text;
}

static bool isJoined(const XML_DOM_Node* element)
{
    const XML_DOM_Node* first = XML_DOM_GetFirstChild(element);
    if (!first || isElement(first)) return true;
    const XML_DOM_Node* second = XML_DOM_GetNextSibling(first);
    return XML_DOM_GetNodeType(first) == XML_DOM_NODE_TEXT && (!second || isElement(second));
}

static bool joinTextsOf(XML_DOM_Node* element)
{
    if (isJoined(element)) return true;
    char* text = joinedText(element);
    XML_DOM_Node* joined = text && *text ? XML_DOM_CreateTextNode(text) : NULL;
    const bool made = text && (joined || !*text);
    free(text);
    if (!made) return false;

    XML_DOM_Node* first = XML_DOM_GetFirstChild(element);
    while (first && !isElement(first)) {
        XML_DOM_Node* next = XML_DOM_GetNextSibling(first);
        XML_DOM_DelNode(first);
        first = next;
    }
    if (!joined) return true;
    /* Both have a new node without a parent, which is all that could fail. */
    return (first ? XML_DOM_InsertBeforeNode(first, joined)
                  : XML_DOM_AddChildNode(element, joined)) == XML_RET_OK;
}

bool joinTexts(XML_DOM_Node* top)
{
    for (XML_DOM_Node* node = top; node; node = nextInTree(top, node))
        if (isElement(node) && !joinTextsOf(node)) return false;
    return true;
}

/* ------------------------------------------------------------------------------------------------
 * Building
 */

XML_DOM_Node* makeElement(const char* name, const char* namespaceName)
{
    XML_DOM_Node* element = XML_DOM_CreateElementNode(name);
    if (!element || !namespaceName) return element;
    if (XML_DOM_AddNodeNameSpace(element, NULL, namespaceName) == XML_RET_OK) return element;
    XML_DOM_DelNode(element);
    return NULL;
}

static bool addNode(XML_DOM_Node* parent, XML_DOM_Node* node)
{
    if (node && XML_DOM_AddChildNode(parent, node) == XML_RET_OK) return true;
    XML_DOM_DelNode(node);
    return false;
}

/* A new element is in the default namespace of its place. Where its parent has a prefix, as in a
 * file that was written by hand, it takes the same. */
static XML_DOM_Node* withNamespaceOf(const XML_DOM_Node* parent, XML_DOM_Node* element)
{
    const char* prefix = NULL;
    const char* name = NULL;
    XML_DOM_GetNodeNameSpace(parent, &prefix, &name);
    if (prefix && *prefix) (void)XML_DOM_SetNodeNameSpace(element, prefix);
    return element;
}

XML_DOM_Node* addElement(XML_DOM_Node* parent, const char* name)
{
    XML_DOM_Node* element = XML_DOM_CreateElementNode(name);
    return addNode(parent, element) ? withNamespaceOf(parent, element) : NULL;
}

XML_DOM_Node* addElementBefore(XML_DOM_Node* reference, const char* name)
{
    XML_DOM_Node* element = XML_DOM_CreateElementNode(name);
    if (element && XML_DOM_InsertBeforeNode(reference, element) == XML_RET_OK)
        return withNamespaceOf(XML_DOM_GetNodeParent(reference), element);
    XML_DOM_DelNode(element);
    return NULL;
}

bool addLeaf(XML_DOM_Node* parent, const char* name, const char* text)
{
    return addNode(parent, XML_DOM_CreateElementWithText(name, *text ? text : NULL));
}

void removeChildren(XML_DOM_Node* element)
{
    for (XML_DOM_Node* child = XML_DOM_GetFirstChild(element); child;
         child = XML_DOM_GetFirstChild(element))
        XML_DOM_DelNode(child);
}

bool setText(XML_DOM_Node* element, const char* text)
{
    removeChildren(element);
    return *text == '\0' || addNode(element, XML_DOM_CreateTextNode(text));
}
