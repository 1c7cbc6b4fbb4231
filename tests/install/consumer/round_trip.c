/* Reads a document from memory, adds an element, and writes it: what a small device needs. */
#include <netxml/netxml.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

int main(void)
{
    const char* document = "<device name=\"edge\"><mtu>1500</mtu></device>";
    char error[256] = "";
    XML_DOM_Node* root = XML_DOM_BuildTreeByMem((const uint8_t*)document,
                                                (uint32_t)strlen(document), sizeof error, error);
    if (!root) return fprintf(stderr, "%s\n", error), 1;
    if (XML_DOM_AddChildNode(root, XML_DOM_CreateElementWithText("site", "lab")) != XML_RET_OK)
        return 2;
    char* text = NULL;
    if (XML_DOM_TranslateStr(root, 0, &text, NULL) != XML_RET_OK) return 3;
    puts(text);
    free(text);
    XML_DOM_DelNode(root);
    return 0;
}
