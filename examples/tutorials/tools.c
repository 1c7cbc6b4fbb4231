/* Adds up the timeouts of a profile's tools, and gives a timeout to those without. */
#include <netxml/netxml.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

// begin: visit
typedef struct Sum {
    unsigned long total;
    unsigned added;
} Sum;

static uint32_t addTimeout(XML_DOM_Node* node, void* context)
{
    Sum* sum = context;
    if (XML_Strcmp(XML_DOM_GetNodeName(node), "tool") != 0) return 0;
    const char* timeout = XML_DOM_GetNodeAttrValByName(node, "timeout");
    if (timeout) sum->total += strtoul(timeout, NULL, 10);
    else if (XML_DOM_AddAttr(node, NULL, "timeout", "60")) ++sum->added;
    return 0;
}
// end: visit

int main(int argc, char** argv)
{
    if (argc != 2) return fprintf(stderr, "usage: tools FILE\n"), 2;
    // begin: body
    char error[256] = "";
    XML_DOM_Node* profile = XML_DOM_BuildTreeByFile(argv[1], sizeof error, error);
    if (!profile) return fprintf(stderr, "%s: %s\n", argv[1], error), 1;

    Sum sum = {0, 0};
    XML_DOM_ScanTree(profile, addTimeout, &sum);
    printf("%lu s, and %u without\n", sum.total, sum.added);

    char* text = NULL;
    if (XML_DOM_TranslateStr(profile, XML_DOM_WRITE_NO_DECLARATION, &text, NULL) == XML_RET_OK)
        puts(text);
    free(text);
    XML_DOM_DelNode(profile);
    // end: body
    return 0;
}
