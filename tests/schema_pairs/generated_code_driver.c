/* Validates documents by generated records. Prints a verdict for each: "valid", or the number of
 * the violation and its sentence in UTF-8, and a zero byte. */
#include "records.h"

#include <netxml/netxml.h>
#include <stdio.h>
#include <string.h>

enum { SENTENCE_SIZE = 65536 };

static char sentence[SENTENCE_SIZE];

static void print(const char* text)
{
    /* The tree is in the library's encoding, the tool's messages are in UTF-8. */
    XML_IO_OutStream* stream = XML_IO_MemOutStreamCreate(XML_ENCODING_GB18030, XML_ENCODING_UTF_8);
    size_t length = 0;
    const char* converted;
    XML_IO_OutStreamAppend(stream, text, strlen(text));
    converted = XML_IO_MemOutStreamGetBuf(stream, &length);
    if (converted) fwrite(converted, 1, length, stdout);
    XML_IO_OutStreamDestroy(stream);
}

static int validate(const char* file, const Schema_Root* root)
{
    Schema_ValidateResult result;
    int judged;
    XML_DOM_Node* tree = XML_DOM_BuildTreeByFile(file, SENTENCE_SIZE, sentence);
    if (!tree) {
        fputs("not well-formed", stdout);
        return 1;
    }
    judged = Schema_ValidateXml(tree, root, &result) == XML_RET_OK;
    if (judged && result.code == SCHEMA_VALID) {
        fputs("valid", stdout);
    } else if (judged) {
        Schema_GetErrorDesc(&result, SENTENCE_SIZE, sentence);
        printf("%u ", (unsigned)result.code);
        print(sentence);
    }
    XML_DOM_DelNode(tree);
    return judged;
}

int main(int argc, char** argv)
{
    Schema_Root root;
    int i;
    int done = 1;
    if (Schema_InitRoot(&root) != XML_RET_OK || pair_schema_register(&root) != XML_RET_OK) {
        fputs("the schema cannot be registered\n", stderr);
        return 1;
    }
    for (i = 1; i < argc; ++i) {
        done = validate(argv[i], &root) && done;
        putchar('\0');
    }
    pair_schema_deregister(&root);
    Schema_ExitRoot(&root);
    return done ? 0 : 1;
}
