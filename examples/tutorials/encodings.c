/* Says a document's encoding and writes it in another one. */
#include <netxml/netxml.h>
#include <stdio.h>
#include <stdlib.h>

int main(int argc, char** argv)
{
    char error[256] = "";
    XML_DOM_Node* root = argc == 3 ? XML_DOM_BuildTreeByFile(argv[1], sizeof error, error) : NULL;
    if (!root) return fprintf(stderr, "%s\n", *error ? error : "usage: encodings FILE NAME"), 1;
    // begin: recode
    fprintf(stderr, "read as %s\n", XML_DOM_EncodingEnumToStr(XML_DOM_GetEncoding(root)));
    char* text = NULL;
    size_t length = 0;
    if (XML_DOM_SetEncoding(root, XML_DOM_EncodingStrToEnum(argv[2])) != XML_RET_OK)
        fprintf(stderr, "there is no encoding %s\n", argv[2]);
    else if (XML_DOM_TranslateStr(root, 0, &text, &length) != XML_RET_OK)
        fprintf(stderr, "%s lacks a character\n", argv[2]);
    else fwrite(text, 1, length, stdout);  // not a string: UTF-16 has zero bytes
    // end: recode
    const int status = text ? 0 : 1;
    free(text);
    XML_DOM_DelNode(root);
    return status;
}
