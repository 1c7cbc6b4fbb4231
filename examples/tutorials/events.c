/* Finds the interfaces of a document, and its comments, without building a tree. */
#include <netxml/netxml.h>
#include <stdarg.h>
#include <stdio.h>
#include <string.h>

// begin: callbacks
static void comment(XML_Parser* parser, const char* text)
{
    printf("line %u: comment \"%s\"\n", (unsigned)parser->line, text);
}

static void startElement(XML_Parser* parser, const char* localName, const char* prefix,
                         const char* namespaceName, uint32_t declarationCount,
                         const char** declarations, uint32_t attributeCount,
                         uint32_t defaultedCount, const char** attributes)
{
    (void)prefix, (void)namespaceName, (void)declarationCount, (void)declarations;
    (void)defaultedCount;
    if (strcmp(localName, "interface") != 0) return;
    unsigned* found = parser->handler->userData;
    ++*found;
    for (uint32_t i = 0; i < attributeCount; ++i, attributes += 5) {
        const char *start = attributes[3], *end = attributes[4];
        printf("line %u: %s \"%.*s\"\n", (unsigned)parser->line, attributes[0], (int)(end - start),
               start);
    }
}

static void error(XML_Parser* parser, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    printf("code %u: ", (unsigned)parser->error);
    vprintf(format, arguments);
    puts("");
    va_end(arguments);
}
// end: callbacks

int main(int argc, char** argv)
{
    // begin: parse
    unsigned found = 0;
    XML_SAX_Handler handler = {0};
    handler.comment = comment;
    handler.startElementNs = startElement;
    handler.error = error;
    handler.userData = &found;
    if (argc != 2 || XML_Parser_ByFile(argv[1], &handler) != XML_RET_OK) return 1;
    printf("%u interfaces\n", found);
    // end: parse
    return 0;
}
