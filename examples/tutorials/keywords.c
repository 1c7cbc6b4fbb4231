/* Prints the keywords of a report, and adds one. */
#include <netxml/netxml.h>
#include <stdio.h>
#include <stdlib.h>

// begin: elements
static XML_DOM_Node* firstElement(XML_DOM_Node* node, const char* name)
{
    while (node && XML_Strcmp(XML_DOM_GetNodeName(node), name) != 0)
        node = XML_DOM_GetNextSibling(node);
    return node;
}
// end: elements

int main(int argc, char** argv)
{
    if (argc != 3) return fprintf(stderr, "usage: keywords FILE WORD\n"), 2;
    // begin: body
    char error[256] = "";
    XML_DOM_Node* report = XML_DOM_BuildTreeByFile(argv[1], sizeof error, error);
    if (!report) return fprintf(stderr, "%s: %s\n", argv[1], error), 1;
    XML_DOM_Node* about = firstElement(XML_DOM_GetFirstChild(report), "about");
    XML_DOM_Node* keyword = firstElement(XML_DOM_GetFirstChild(about), "keyword");
    while (keyword) {
        const char* text = XML_DOM_GetFirstTextChildValue(keyword);
        printf("keyword: %s\n", text ? text : "");
        keyword = firstElement(XML_DOM_GetNextSibling(keyword), "keyword");
    }

    XML_DOM_Node* added = XML_DOM_CreateElementWithText("keyword", argv[2]);
    if (XML_DOM_AddChildNode(about, added) != XML_RET_OK) XML_DOM_DelNode(added);
    char* text = NULL;
    if (XML_DOM_TranslateStr(report, 0, &text, NULL) == XML_RET_OK) puts(text);
    free(text);
    XML_DOM_DelNode(report);
    // end: body
    return 0;
}
