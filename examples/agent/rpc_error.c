#include "rpc_error.h"

#include "path.h"
#include "tree.h"

#include <netxml/io.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static bool addPath(XML_DOM_Node* error, const XML_DOM_Node* node)
{
    if (!node) return true;
    char* path = pathOf(node);
    XML_DOM_Node* element = path ? addElement(error, "error-path") : NULL;
    const bool added =
        element && setText(element, path) &&
        XML_DOM_AddNodeNameSpace(element, PATH_BASE_PREFIX, BASE_NAMESPACE) == XML_RET_OK &&
        XML_DOM_AddNodeNameSpace(element, PATH_SYSTEM_PREFIX, SYSTEM_NAMESPACE) == XML_RET_OK;
    free(path);
    return added;
}

static bool addMessage(XML_DOM_Node* error, const char* message)
{
    if (!message) return true;
    XML_DOM_Node* element = addElement(error, "error-message");
    return element && XML_DOM_AddAttr(element, "xml", "lang", "en") && setText(element, message);
}

static bool addInfoLeaf(XML_DOM_Node* info, const char* name, const char* text)
{
    return !text || addLeaf(info, name, text);
}

BadName badElementOf(const XML_DOM_Node* element)
{
    return (BadName){XML_DOM_GetNodeName(element), namespaceOf(element)};
}

/* The prefix of this one is known without a declaration, and no other is allowed. */
#define XML_NAMESPACE "http://www.w3.org/XML/1998/namespace"

/* The prefix that a name is written with, or NULL: NETCONF's own need none, and a namespace whose
 * name has a double quote cannot be declared (see netxml/dom.h). */
static const char* prefixFor(const char* namespaceName)
{
    if (!namespaceName || !*namespaceName || strchr(namespaceName, '"')) return NULL;
    if (strcmp(namespaceName, BASE_NAMESPACE) == 0) return NULL;
    if (strcmp(namespaceName, XML_NAMESPACE) == 0) return "xml";
    return strcmp(namespaceName, SYSTEM_NAMESPACE) == 0 ? PATH_SYSTEM_PREFIX : "other";
}

static bool declare(XML_DOM_Node* element, const char* prefix, const char* namespaceName)
{
    return strcmp(prefix, "xml") == 0 ||
           XML_DOM_AddNodeNameSpace(element, prefix, namespaceName) == XML_RET_OK;
}

/* A qualified name, whose prefix is declared where it stands. */
static bool addInfoName(XML_DOM_Node* info, const char* name, const BadName* bad)
{
    if (!bad->name) return true;
    const char* prefix = prefixFor(bad->namespaceName);
    if (!prefix) return addLeaf(info, name, bad->name);
    XML_DOM_Node* element = addElement(info, name);
    const size_t size = strlen(prefix) + strlen(bad->name) + 2;
    char* text = malloc(size);
    if (text) snprintf(text, size, "%s:%s", prefix, bad->name);
    const bool added =
        element && text && setText(element, text) && declare(element, prefix, bad->namespaceName);
    free(text);
    return added;
}

static bool addInfo(XML_DOM_Node* error, const RpcError* what)
{
    if (!what->badAttribute.name && !what->badElement.name && !what->badNamespace &&
        !what->sessionId)
        return true;
    XML_DOM_Node* info = addElement(error, "error-info");
    return info && addInfoName(info, "bad-attribute", &what->badAttribute) &&
           addInfoName(info, "bad-element", &what->badElement) &&
           addInfoLeaf(info, "bad-namespace", what->badNamespace) &&
           addInfoLeaf(info, "session-id", what->sessionId);
}

bool refuse(XML_DOM_Node** error, const RpcError* what)
{
    XML_DOM_Node* element = makeElement("rpc-error", NULL);
    if (element && addLeaf(element, "error-type", what->type) &&
        addLeaf(element, "error-tag", what->tag) && addLeaf(element, "error-severity", "error") &&
        addPath(element, what->node) && addMessage(element, what->message) &&
        addInfo(element, what)) {
        *error = element;
        return false;
    }
    XML_DOM_DelNode(element);
    *error = NULL;
    return false;
}

/* ------------------------------------------------------------------------------------------------
 * Verdicts
 */

/* A long sentence is cut, perhaps inside a character; what is no text any more is masked. */
static void makeReadable(char* sentence)
{
    XML_IO_OutStream* check = XML_IO_MemOutStreamCreate(XML_ENCODING_GB18030, XML_ENCODING_UTF_8);
    /* A character that lacks its end shows by what follows it. */
    const bool readable = check &&
                          XML_IO_OutStreamAppend(check, sentence, strlen(sentence)) == XML_RET_OK &&
                          XML_IO_OutStreamAppend(check, ".", 1) == XML_RET_OK;
    XML_IO_OutStreamDestroy(check);
    if (readable) return;
    for (; *sentence; ++sentence)
        if ((unsigned char)*sentence >= 0x80) *sentence = '?';
}

/* Row i is for code i. */
/* clang-format off */
static const struct {
    const char* tag;
    bool element;   /* whether <error-info> names the element */
    bool attribute; /* whether it names the attribute */
} kTags[] = {
    /* valid                */ {"operation-failed",  false, false},
    /* ELEMENT_EXPECTED     */ {"missing-element",   true,  false},
    /* ATTRIBUTE_MISSING    */ {"missing-attribute", true,  true},
    /* ELEMENT_VALUE        */ {"invalid-value",     false, false},
    /* ATTRIBUTE_VALUE      */ {"bad-attribute",     true,  true},
    /* OCCURRENCES          */ {"bad-element",       true,  false},
    /* ELEMENT_UNEXPECTED   */ {"unknown-element",   true,  false},
    /* ATTRIBUTE_UNEXPECTED */ {"unknown-attribute", true,  true},
    /* CHILDREN             */ {"missing-element",   true,  false},
    /* TEXT                 */ {"bad-element",       true,  false},
    /* CHILD                */ {"unknown-element",   true,  false},
    /* CHILDREN_MISSING     */ {"missing-element",   true,  false},
    /* DOCUMENT_ELEMENT     */ {"unknown-element",   true,  false},
};
/* clang-format on */

/* The element that a verdict is about: named by it, or its node. A child has the namespace of its
 * parent in schemas of ours. */
static BadName elementOf(const Schema_ValidateResult* result)
{
    const bool named =
        result->code == SCHEMA_ERROR_ELEMENT_EXPECTED || result->code == SCHEMA_ERROR_OCCURRENCES;
    return named ? (BadName){result->elementName, namespaceOf(result->node)}
                 : badElementOf(result->node);
}

static bool hasEarlierNamesake(const XML_DOM_Node* element)
{
    const XML_DOM_Node* parent = XML_DOM_GetNodeParent(element);
    const XML_DOM_Node* first = firstElement(parent);
    while (first && !hasName(first, namespaceOf(element), XML_DOM_GetNodeName(element)))
        first = nextElement(first);
    return first != element;
}

/* Too few of an element are none, unless there is one; an element that is not expected any more is
 * one too many. */
static const char* tagOf(const Schema_ValidateResult* result)
{
    if (result->code == SCHEMA_ERROR_OCCURRENCES && !childNamed(result->node, result->elementName))
        return "missing-element";
    if (result->code == SCHEMA_ERROR_ELEMENT_UNEXPECTED && hasEarlierNamesake(result->node))
        return "bad-element";
    return kTags[result->code].tag;
}

/* A choice of which nothing stands, although something does; or an element that holds others and
 * must not: these others are what is wrong. */
static const XML_DOM_Node* childAtFault(const Schema_ValidateResult* result)
{
    const bool below =
        result->code == SCHEMA_ERROR_CHILDREN_MISSING || result->code == SCHEMA_ERROR_CHILD;
    return below ? firstElement(result->node) : NULL;
}

/* Clients do not know of the element that holds their configuration: paths begin below it. */
static void hideTop(char* sentence)
{
    static const char kTop[] = "'/configuration";
    char* found = strstr(sentence, kTop);
    if (!found) return;
    const char* rest = found + sizeof kTop - 1;
    found[1] = '/';
    if (*rest == '/') memmove(found + 1, rest, strlen(rest) + 1);
    else memmove(found + 2, rest, strlen(rest) + 1);
}

/* The validator's sentence; except where it is cut before its end. */
static void sentenceOf(const Schema_ValidateResult* result, char* sentence, uint32_t size)
{
    const char* name = XML_DOM_GetNodeName(result->node);
    const char* parent = XML_DOM_GetNodeName(XML_DOM_GetNodeParent(result->node));
    if (result->code != SCHEMA_ERROR_ELEMENT_UNEXPECTED)
        Schema_GetErrorDesc(result, size, sentence);
    else if (parent)
        snprintf(sentence, size, "The element '%s' is not expected here, in '%s'.", name, parent);
    else snprintf(sentence, size, "The element '%s' is not expected here.", name);
    if (hasName(XML_DOM_GetRoot(result->node), SYSTEM_NAMESPACE, "configuration"))
        hideTop(sentence);
    makeReadable(sentence);
}

bool refuseVerdict(XML_DOM_Node** error, const char* type, const Schema_ValidateResult* result)
{
    const XML_DOM_Node* child = childAtFault(result);
    char sentence[4096] = "";
    sentenceOf(result, sentence, sizeof sentence);
    if (child)
        return refuse(error, &(RpcError){.type = type,
                                         .tag = "unknown-element",
                                         .node = child,
                                         .message = sentence,
                                         .badElement = badElementOf(child)});
    RpcError what = {.type = type, .tag = tagOf(result), .node = result->node, .message = sentence};
    if (kTags[result->code].element) what.badElement = elementOf(result);
    if (kTags[result->code].attribute)
        what.badAttribute = (BadName){result->attrName, result->attrNamespace};
    return refuse(error, &what);
}
