/* Prints the paths of a document's top-level elements, adds one, and writes the document. */
#include <netxml/netxml.h>
#include <stdio.h>
#include <stdlib.h>

int main(int argc, char** argv)
{
    char error[256] = "";
    XML_DOM_Node* root = argc > 1 ? XML_DOM_BuildTreeByFile(argv[1], sizeof error, error) : NULL;
    if (!root) return fprintf(stderr, "%s\n", *error ? error : "cannot open the file"), 1;
    for (XML_DOM_Node* child = XML_DOM_GetFirstChild(root); child;
         child = XML_DOM_GetNextSibling(child)) {
        char path[256];
        XML_DOM_GetXPath(child, sizeof path, path);
        puts(path);
    }
    XML_DOM_AddChildNode(root, XML_DOM_CreateElementWithText("hostname", "edge-1"));
    char* text = NULL;
    if (XML_DOM_TranslateStr(root, 0, &text, NULL) == XML_RET_OK) puts(text);
    free(text);
    XML_DOM_DelNode(root);
    return 0;
}
