/* A NETCONF agent (RFC 6241): hello, get-config and close-session, each message ended by a mark. */
#include <netxml/netxml.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static const char kBase[] = "urn:ietf:params:xml:ns:netconf:base:1.0";
static const char kMark[] = "]]>]]>";
enum { kMarkSize = sizeof kMark - 1, kLargestMessage = 1 << 20 };

/* Reads the next message as a tree; NULL at the end, and for what is too long or no XML. */
static XML_DOM_Node* receive(char* text)
{
    uint32_t length = 0;
    for (int c; length < kLargestMessage && (c = getchar()) != EOF;) {
        text[length++] = (char)c;
        if (length < kMarkSize || memcmp(text + length - kMarkSize, kMark, kMarkSize) != 0)
            continue;
        char error[256] = "";
        const uint8_t* bytes = (const uint8_t*)text;
        XML_DOM_Node* root = XML_DOM_BuildTreeByMem(bytes, length - kMarkSize, sizeof error, error);
        if (!root) fprintf(stderr, "agent: %s\n", error);
        return root;
    }
    return NULL;
}

static uint32_t toOutput(void* context, const char* bytes, size_t length)
{
    (void)context;
    return fwrite(bytes, 1, length, stdout) == length ? 0 : 1;
}

static int is(const XML_DOM_Node* node, const char* name)
{
    const char* space = NULL;
    XML_DOM_GetNodeNameSpace(node, NULL, &space);
    return XML_Strcmp(XML_DOM_GetNodeName(node), name) == 0 && XML_Strcmp(space, kBase) == 0;
}

static XML_DOM_Node* child(const XML_DOM_Node* parent, const char* name)
{
    XML_DOM_Node* node = XML_DOM_GetFirstChild(parent);
    while (node && !is(node, name)) node = XML_DOM_GetNextSibling(node);
    return node;
}

/* Appends an element in its parent's namespace; NULL when that fails, also for a NULL parent. */
static XML_DOM_Node* append(XML_DOM_Node* parent, const char* name, const char* text)
{
    const char* prefix = NULL;
    XML_DOM_GetNodeNameSpace(parent, &prefix, NULL);
    XML_DOM_Node* node = XML_DOM_CreateElementWithText(name, text);
    if (XML_DOM_AddChildNode(parent, node) != XML_RET_OK) return XML_DOM_DelNode(node), NULL;
    return XML_DOM_SetNodeNameSpace(node, prefix) == XML_RET_OK ? node : NULL;
}

static int appendError(XML_DOM_Node* reply, const char* tag)
{
    XML_DOM_Node* error = append(reply, "rpc-error", NULL);
    return append(error, "error-type", "protocol") && append(error, "error-tag", tag) &&
           append(error, "error-severity", "error");
}

/* Answers a request: the reply has its prefixes and attributes. Returns 0 when that fails. */
static int answer(const XML_DOM_Node* rpc, const XML_DOM_Node* config)
{
    XML_DOM_Node* reply = XML_DOM_CopyRoot(rpc);
    const XML_DOM_Node* get = child(rpc, "get-config");
    int done = reply && XML_DOM_SetNodeName(reply, "rpc-reply") == XML_RET_OK;
    if (!done) fprintf(stderr, "agent: no memory\n");
    else if (child(rpc, "close-session")) done = append(reply, "ok", NULL) != NULL;
    else if (!get || child(get, "filter")) done = appendError(reply, "operation-not-supported");
    else if (!child(child(get, "source"), "running")) done = appendError(reply, "invalid-value");
    else done = XML_DOM_CopySubTree(append(reply, "data", NULL), config) == XML_RET_OK;
    done = done && XML_DOM_OutPutTranslateStr(reply, 0, toOutput, NULL) == XML_RET_OK;
    printf("\n%s\n", kMark);
    XML_DOM_DelNode(reply);
    return fflush(stdout) == 0 && done;
}

int main(int argc, char** argv)
{
    char* text = malloc(kLargestMessage);
    XML_DOM_Node* config = argc == 2 && text ? XML_DOM_BuildTreeByFile(argv[1], 0, NULL) : NULL;
    if (!config) return free(text), fprintf(stderr, "usage: agent CONFIGURATION\n"), 2;
    printf("<hello xmlns=\"%s\"><capabilities><capability>urn:ietf:params:netconf:base:1.0"
           "</capability></capabilities><session-id>1</session-id></hello>\n%s\n",
           kBase, kMark);
    fflush(stdout);
    XML_DOM_Node* message = receive(text);
    int going = is(message, "hello"), closed = 0;
    while (going && !closed) {
        XML_DOM_DelNode(message);
        message = receive(text);
        going = is(message, "rpc") && answer(message, config);
        closed = going && child(message, "close-session");
    }
    return XML_DOM_DelNode(message), XML_DOM_DelNode(config), free(text), closed ? 0 : 1;
}
