#include "rpc_error.h"

#include "path.h"
#include "tree.h"

#include <netxml/io.h>
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

static bool addInfo(XML_DOM_Node* error, const RpcError* what)
{
    if (!what->badAttribute && !what->badElement && !what->badNamespace && !what->sessionId)
        return true;
    XML_DOM_Node* info = addElement(error, "error-info");
    return info && addInfoLeaf(info, "bad-attribute", what->badAttribute) &&
           addInfoLeaf(info, "bad-element", what->badElement) &&
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
    /* CHILD                */ {"bad-element",       true,  false},
    /* CHILDREN_MISSING     */ {"missing-element",   true,  false},
    /* DOCUMENT_ELEMENT     */ {"unknown-element",   true,  false},
};
/* clang-format on */

/* The element that a verdict is about: named by it, or its node. */
static const char* elementOf(const Schema_ValidateResult* result)
{
    const bool named =
        result->code == SCHEMA_ERROR_ELEMENT_EXPECTED || result->code == SCHEMA_ERROR_OCCURRENCES;
    return named ? result->elementName : XML_DOM_GetNodeName(result->node);
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

/* A choice of which nothing stands, although something does: that is what is wrong. */
static const XML_DOM_Node* otherThanChosen(const Schema_ValidateResult* result)
{
    return result->code == SCHEMA_ERROR_CHILDREN_MISSING ? firstElement(result->node) : NULL;
}

bool refuseVerdict(XML_DOM_Node** error, const char* type, const Schema_ValidateResult* result)
{
    const XML_DOM_Node* other = otherThanChosen(result);
    char sentence[4096] = "";
    Schema_GetErrorDesc(result, sizeof sentence, sentence);
    makeReadable(sentence);
    if (other)
        return refuse(error, &(RpcError){.type = type,
                                         .tag = "unknown-element",
                                         .node = other,
                                         .message = sentence,
                                         .badElement = XML_DOM_GetNodeName(other)});
    const RpcError what = {
        .type = type,
        .tag = tagOf(result),
        .node = result->node,
        .message = sentence,
        .badElement = kTags[result->code].element ? elementOf(result) : NULL,
        .badAttribute = kTags[result->code].attribute ? result->attrName : NULL,
    };
    return refuse(error, &what);
}
