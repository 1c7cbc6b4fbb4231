#include "reply.h"

#include "tree.h"

#include <netxml/parser.h>
#include <stdlib.h>
#include <string.h>

/* What is sent when not even an error can be made. */
static const char kNoMemory[] =
    "<rpc-error xmlns=\"" BASE_NAMESPACE "\"><error-type>application</error-type>"
    "<error-tag>resource-denied</error-tag><error-severity>error</error-severity></rpc-error>";

/* A reply in the making. */
typedef struct Reply {
    XML_IO_OutStream* text; /* UTF-8, as the parser's events are: so nothing is converted */
    char* prefix;           /* of the request, or NULL */
    bool begun;
    bool complete; /* false once memory has run out */
} Reply;

static void append(Reply* reply, const char* bytes, size_t length)
{
    if (XML_IO_OutStreamAppend(reply->text, bytes, length) != XML_RET_OK) reply->complete = false;
}

static void appendText(Reply* reply, const char* text)
{
    append(reply, text, strlen(text));
}

/* ------------------------------------------------------------------------------------------------
 * The start tag. A tree does not tell which namespaces an element declares, and would be of no use
 * for a request that is not well-formed: so the request is parsed for the event of its first tag.
 */

/* A value between double quotes, so that it comes out as it went in. */
static void appendValue(Reply* reply, const char* from, const char* to)
{
    for (; from != to; ++from) {
        switch (*from) {
        case '&': appendText(reply, "&amp;"); break;
        case '<': appendText(reply, "&lt;"); break;
        case '>': appendText(reply, "&gt;"); break;
        case '"': appendText(reply, "&quot;"); break;
        case '\t': appendText(reply, "&#9;"); break;
        case '\n': appendText(reply, "&#10;"); break;
        case '\r': appendText(reply, "&#13;"); break;
        default: append(reply, from, 1);
        }
    }
}

static void appendName(Reply* reply, const char* prefix, const char* name)
{
    if (prefix) {
        appendText(reply, prefix);
        appendText(reply, ":");
    }
    appendText(reply, name);
}

static void appendDeclaration(Reply* reply, const char* prefix, const char* name)
{
    appendText(reply, " ");
    if (prefix) appendName(reply, "xmlns", prefix);
    else appendText(reply, "xmlns");
    appendText(reply, "=\"");
    if (name) appendValue(reply, name, name + strlen(name));
    appendText(reply, "\"");
}

static void onStart(XML_Parser* parser, const char* localName, const char* prefix,
                    const char* namespaceName, uint32_t declarationCount, const char** declarations,
                    uint32_t attributeCount, uint32_t defaultedCount, const char** attributes)
{
    Reply* reply = parser->handler->userData;
    (void)defaultedCount;
    parser->error = XML_ERROR_INTERNAL; /* one tag is enough: stop */
    if (strcmp(localName, "rpc") != 0 || XML_Strcmp(namespaceName, BASE_NAMESPACE) != 0) return;
    reply->begun = true;
    if (prefix) {
        const size_t size = strlen(prefix) + 1;
        reply->prefix = malloc(size);
        if (reply->prefix) memcpy(reply->prefix, prefix, size);
        else reply->complete = false;
    }
    appendText(reply, "<");
    appendName(reply, prefix, "rpc-reply");
    for (uint32_t i = 0; i < declarationCount; ++i)
        appendDeclaration(reply, declarations[2 * i], declarations[2 * i + 1]);
    for (uint32_t i = 0; i < attributeCount; ++i) {
        const char** attribute = attributes + 5 * i;
        appendText(reply, " ");
        appendName(reply, attribute[1], attribute[0]);
        appendText(reply, "=\"");
        appendValue(reply, attribute[3], attribute[4]);
        appendText(reply, "\"");
    }
    appendText(reply, ">");
}

static void appendStart(Reply* reply, const XML_IO_MemList* request)
{
    XML_SAX_Handler handler;
    memset(&handler, 0, sizeof handler);
    handler.startElementNs = onStart;
    handler.userData = reply;
    appendText(reply, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
    /* It always fails: the first tag stops it, or an error before that. */
    (void)XML_Parser_ByMemList(request, &handler);
    if (!reply->begun) appendText(reply, "<rpc-reply xmlns=\"" BASE_NAMESPACE "\">");
}

static void appendEnd(Reply* reply)
{
    appendText(reply, "</");
    appendName(reply, reply->prefix, "rpc-reply");
    appendText(reply, ">");
}

/* ------------------------------------------------------------------------------------------------
 * The content
 */

/* Below a start tag with a prefix the default namespace is another one: so it is declared anew. */
static char* bodyText(const Reply* reply, XML_DOM_Node* body, size_t* length)
{
    char* text = NULL;
    if (!body) return NULL;
    if (reply->prefix && XML_DOM_AddNodeNameSpace(body, NULL, BASE_NAMESPACE) != XML_RET_OK)
        return NULL;
    return XML_DOM_TranslateStr(body, XML_DOM_WRITE_NO_DECLARATION, &text, length) == XML_RET_OK
               ? text
               : NULL;
}

static void appendBody(Reply* reply, XML_DOM_Node* body)
{
    size_t length = 0;
    char* text = bodyText(reply, body, &length);
    if (text) append(reply, text, length);
    else appendText(reply, kNoMemory);
    free(text);
}

char* replyText(const XML_IO_MemList* request, XML_DOM_Node* body, size_t* length)
{
    Reply reply = {XML_IO_MemOutStreamCreate(XML_ENCODING_UTF_8, XML_ENCODING_UTF_8), NULL, false,
                   true};
    if (!reply.text) return NULL;
    appendStart(&reply, request);
    appendBody(&reply, body);
    appendEnd(&reply);
    char* text = reply.complete ? XML_IO_MemOutStreamDetachBuf(reply.text, length) : NULL;
    XML_IO_OutStreamDestroy(reply.text);
    free(reply.prefix);
    return text;
}
