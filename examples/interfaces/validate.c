/* Validates the files named against the schema of this directory, and prints a sentence for each.
 */
#include "interfaces_schema.h"

#include <netxml/netxml.h>
#include <stdio.h>
#include <string.h>

/* The exit statuses; of several files the largest counts. */
enum { VALID = 0, TROUBLE = 1, INVALID = 3 };

/* Sentences are in the encoding of the tree, terminals want UTF-8. */
static void say(const char* file, const char* text)
{
    XML_IO_OutStream* stream = XML_IO_MemOutStreamCreate(XML_ENCODING_GB18030, XML_ENCODING_UTF_8);
    size_t length = 0;
    XML_IO_OutStreamAppend(stream, text, strlen(text));
    const char* converted = XML_IO_MemOutStreamGetBuf(stream, &length);
    printf("%s: %.*s\n", file, (int)length, converted ? converted : "");
    XML_IO_OutStreamDestroy(stream);
}

static int validateTree(const char* file, const XML_DOM_Node* tree, const Schema_Root* root)
{
    Schema_ValidateResult result;
    char sentence[4096];
    if (Schema_ValidateXml(tree, root, &result) != XML_RET_OK)
        return say(file, "cannot be validated: no memory."), TROUBLE;
    if (result.code == SCHEMA_VALID) return say(file, "valid"), VALID;
    Schema_GetErrorDesc(&result, sizeof sentence, sentence);
    return say(file, sentence), INVALID;
}

static int validateFile(const char* file, const Schema_Root* root)
{
    char error[512] = "";
    XML_DOM_Node* tree = XML_DOM_BuildTreeByFile(file, sizeof error, error);
    if (!tree) return say(file, *error ? error : "cannot be opened."), TROUBLE;
    const int status = validateTree(file, tree, root);
    XML_DOM_DelNode(tree);
    return status;
}

static int validateFiles(char** files, int count)
{
    Schema_Root root;
    int worst = TROUBLE;
    if (Schema_InitRoot(&root) == XML_RET_OK && interfaces_schema_register(&root) == XML_RET_OK) {
        worst = VALID;
        for (int i = 0; i < count; ++i) {
            const int status = validateFile(files[i], &root);
            if (status > worst) worst = status;
        }
        interfaces_schema_deregister(&root);
    } else {
        fputs("the schema cannot be registered: no memory.\n", stderr);
    }
    Schema_ExitRoot(&root);
    return worst;
}

int main(int argc, char** argv)
{
    if (argc > 1) return validateFiles(argv + 1, argc - 1);
    return fprintf(stderr, "usage: %s FILE...\n", argv[0]), TROUBLE;
}
