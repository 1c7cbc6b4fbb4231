/* Reads a document and prints what its top-level elements say. */
#include <netxml/netxml.h>
#include <stdio.h>

int main(int argc, char** argv)
{
    if (argc != 2) return fprintf(stderr, "usage: first FILE\n"), 2;
    // begin: parse
    char error[256] = "";
    XML_DOM_Node* root = XML_DOM_BuildTreeByFile(argv[1], sizeof error, error);
    if (!root) return fprintf(stderr, "%s\n", *error ? error : "cannot open the file"), 1;
    // end: parse

    // begin: children
    for (XML_DOM_Node* child = XML_DOM_GetFirstChild(root); child;
         child = XML_DOM_GetNextSibling(child)) {
        if (XML_DOM_GetNodeType(child) != XML_DOM_NODE_ELEMENT) continue;
        const char* name = XML_DOM_GetNodeAttrValByName(child, "name");
        const char* mtu = XML_DOM_GetFirstTextChildValue(XML_DOM_GetFirstChild(child));
        printf("%s %s: mtu %s\n", XML_DOM_GetNodeName(child), name ? name : "?", mtu ? mtu : "?");
    }
    // end: children

    XML_DOM_DelNode(root);
    return 0;
}
