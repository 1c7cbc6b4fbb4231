/* Changes a configuration and writes it. */
#include "utf8.h"

#include <netxml/netxml.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

// begin: find
/* The first child element of that name, or NULL. */
static XML_DOM_Node* child(const XML_DOM_Node* parent, const char* name)
{
    XML_DOM_Node* node = XML_DOM_GetFirstChild(parent);
    while (node && XML_Strcmp(XML_DOM_GetNodeName(node), name) != 0)
        node = XML_DOM_GetNextSibling(node);
    return node;
}
// end: find

// begin: add
/* Appends an element with a text; returns it, or NULL with nothing changed. */
static XML_DOM_Node* append(XML_DOM_Node* parent, const char* name, const char* text)
{
    XML_DOM_Node* node = XML_DOM_CreateElementWithText(name, text);
    if (XML_DOM_AddChildNode(parent, node) == XML_RET_OK) return node;
    XML_DOM_DelNode(node);  // still ours; NULL does nothing
    return NULL;
}
// end: add

static int edit(XML_DOM_Node* root)
{
    // begin: change
    XML_DOM_Node* uplink = child(root, "interface");
    XML_DOM_Node* mtu = child(uplink, "mtu");
    if (XML_DOM_SetNodeValue(XML_DOM_GetFirstChild(mtu), "9216") != XML_RET_OK) return 0;

    // There is no call that changes an attribute: take it out, and put it in again.
    XML_DOM_DelAttr(uplink, NULL, "name");
    if (!XML_DOM_AddAttr(uplink, NULL, "name", "xe0")) return 0;
    if (!XML_DOM_AddAttr(uplink, "ops", "state", "up")) return 0;  // "ops" is declared above
    // end: change

    // begin: new
    XML_DOM_Node* added = append(root, "interface", NULL);
    if (!added || !XML_DOM_AddAttr(added, NULL, "name", "ge2")) return 0;
    char* text = treeOfUtf8("备用 <spare>");
    const int described = text && append(added, "description", text);
    free(text);
    if (!described) return 0;
    // end: new

    // begin: delete
    XML_DOM_Node* second = XML_DOM_GetNextSibling(uplink);
    XML_DOM_DelNode(second);
    // end: delete
    return 1;
}

// begin: sink
static uint32_t toFile(void* context, const char* bytes, size_t length)
{
    return fwrite(bytes, 1, length, context) == length ? 0 : 1;
}
// end: sink

int main(int argc, char** argv)
{
    char error[256] = "";
    XML_DOM_Node* root = argc == 2 ? XML_DOM_BuildTreeByFile(argv[1], sizeof error, error) : NULL;
    if (!root) return fprintf(stderr, "%s\n", *error ? error : "cannot open the file"), 1;
    int done = edit(root);
    // begin: string
    char* text = NULL;
    size_t length = 0;
    if (done && XML_DOM_TranslateStr(root, 0, &text, &length) == XML_RET_OK)
        printf("%s\n%zu bytes\n", text, length);
    free(text);
    // end: string
    // begin: stream
    done =
        done && XML_DOM_OutPutTranslateStr(root, XML_DOM_WRITE_NO_DECLARATION, toFile, stdout) == 0;
    // end: stream
    puts("");
    XML_DOM_DelNode(root);
    return done ? 0 : 1;
}
