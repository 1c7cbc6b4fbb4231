#include "path.h"

#include "model.h"
#include "tree.h"

#include <netxml/io.h>
#include <stdarg.h>
#include <stdlib.h>
#include <string.h>

/* A path in the making. The stream collects it; equal encodings pass through unchanged. */
typedef struct Path {
    XML_IO_OutStream* text;
    bool complete; /* false once memory has run out */
} Path;

/* Appends strings up to a NULL. */
static void append(Path* path, ...)
{
    va_list texts;
    va_start(texts, path);
    for (const char* text = va_arg(texts, const char*); text; text = va_arg(texts, const char*))
        if (XML_IO_OutStreamAppend(path->text, text, strlen(text)) != XML_RET_OK)
            path->complete = false;
    va_end(texts);
}

static const char* prefixOf(const XML_DOM_Node* element)
{
    const char* name = namespaceOf(element);
    if (strcmp(name, BASE_NAMESPACE) == 0) return PATH_BASE_PREFIX;
    return strcmp(name, SYSTEM_NAMESPACE) == 0 ? PATH_SYSTEM_PREFIX : NULL;
}

/* An element of another namespace has no prefix to be called by. */
static void appendName(Path* path, const XML_DOM_Node* element)
{
    const char* prefix = prefixOf(element);
    const char* name = XML_DOM_GetNodeName(element);
    if (prefix) append(path, "/", prefix, ":", name, (char*)NULL);
    else append(path, "/*[local-name()='", name, "']", (char*)NULL);
}

/* A literal has no escapes: it stands in the quotes that it does not hold itself. */
static void appendLiteral(Path* path, const char* name, const char* value)
{
    const char* quote = strchr(value, '\'') ? "\"" : "'";
    if (strchr(value, *quote)) return;
    append(path, "[", name, "=", quote, value, quote, "]", (char*)NULL);
}

static void appendKey(Path* path, const ModelRow* row, const XML_DOM_Node* element)
{
    if (row->kind == MODEL_LEAF_LIST) appendLiteral(path, ".", textOf(element));
    if (row->kind != MODEL_LIST) return;
    const XML_DOM_Node* key = childNamed(element, row->key);
    char name[64] = PATH_SYSTEM_PREFIX ":";
    strncat(name, row->key, sizeof name - strlen(name) - 1);
    if (key) appendLiteral(path, name, textOf(key));
}

/* Whether the path begins with `element`: nothing above it is to be named. */
static bool beginsWith(const XML_DOM_Node* element)
{
    const XML_DOM_Node* parent = XML_DOM_GetNodeParent(element);
    if (!parent || strcmp(namespaceOf(element), SYSTEM_NAMESPACE) != 0) return !parent;
    return hasName(parent, BASE_NAMESPACE, "config") || !XML_DOM_GetNodeParent(parent);
}

/* The elements from `node` up to where its path begins: their number, and that many of them from
 * the top into `steps` unless that is NULL. */
static size_t collectSteps(const XML_DOM_Node* node, const XML_DOM_Node** steps, size_t count)
{
    size_t depth = 0;
    for (; node; node = XML_DOM_GetNodeParent(node)) {
        ++depth;
        if (steps) steps[count - depth] = node;
        if (beginsWith(node)) break;
    }
    return depth;
}

static void appendSteps(Path* path, const XML_DOM_Node** steps, size_t count)
{
    const ModelRow* row = modelTop();
    for (size_t i = 0; i < count; ++i) {
        appendName(path, steps[i]);
        if (row) row = modelChild(row, steps[i]);
        if (row) appendKey(path, row, steps[i]);
    }
}

char* pathOf(const XML_DOM_Node* node)
{
    Path path = {XML_IO_MemOutStreamCreate(XML_ENCODING_GB18030, XML_ENCODING_GB18030), true};
    const size_t count = collectSteps(node, NULL, 0);
    const XML_DOM_Node** steps = malloc((count + 1) * sizeof *steps);
    char* text = NULL;
    if (path.text && steps) {
        collectSteps(node, steps, count);
        appendSteps(&path, steps, count);
        /* The terminator, too. */
        if (XML_IO_OutStreamAppend(path.text, "", 1) == XML_RET_OK && path.complete)
            text = XML_IO_MemOutStreamDetachBuf(path.text, NULL);
    }
    free(steps);
    XML_IO_OutStreamDestroy(path.text);
    return text;
}
