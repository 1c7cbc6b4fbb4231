/* Prints every node of a document with its path. */
#include "utf8.h"

#include <netxml/netxml.h>
#include <stdio.h>
#include <stdlib.h>

// begin: show
static uint32_t show(XML_DOM_Node* node, void* context)
{
    unsigned* count = context;
    ++*count;
    if (XML_DOM_GetNodeType(node) != XML_DOM_NODE_ELEMENT) {
        char* text = utf8OfTree(XML_DOM_GetNodeValue(node));
        printf("  text \"%s\"\n", text ? text : "?");
        free(text);
        return 0;
    }
    char path[256];
    XML_DOM_GetXPath(node, sizeof path, path);
    const char* space = NULL;
    XML_DOM_GetNodeNameSpace(node, NULL, &space);
    printf("%s {%s}\n", path, space ? space : "");
    for (XML_DOM_Attr* attr = XML_DOM_GetFirstAttr(node); attr; attr = XML_DOM_GetNextAttr(attr)) {
        const char* name = NULL;
        XML_DOM_GetAttrNameSpace(attr, &name, &space);
        printf("  %s {%s} = \"%s\"\n", name, space ? space : "", XML_DOM_GetAttrValByHandle(attr));
    }
    return 0;  // anything else would stop the visit
}
// end: show

int main(int argc, char** argv)
{
    char error[256] = "";
    XML_DOM_Node* root = argc == 2 ? XML_DOM_BuildTreeByFile(argv[1], sizeof error, error) : NULL;
    if (!root) return fprintf(stderr, "%s\n", *error ? error : "cannot open the file"), 1;
    // begin: visit
    unsigned count = 0;
    XML_DOM_ScanTree(root, show, &count);
    printf("%u nodes\n", count);
    // end: visit
    XML_DOM_DelNode(root);
    return 0;
}
