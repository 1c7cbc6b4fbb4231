/* Prints the line of each element: a tree keeps no positions, but a program may note them. */
#include <netxml/netxml.h>
#include <stdio.h>

// begin: note
/* Stands in front of the library's own callback, which appends the element to the tree. */
static void startElement(XML_Parser* parser, const char* localName, const char* prefix,
                         const char* namespaceName, uint32_t declarationCount,
                         const char** declarations, uint32_t attributeCount,
                         uint32_t defaultedCount, const char** attributes)
{
    XML_SAX_StartElementNs(parser, localName, prefix, namespaceName, declarationCount, declarations,
                           attributeCount, defaultedCount, attributes);
    const XML_SAX_Builder* builder = parser->handler->userData;
    char path[256];
    XML_DOM_GetXPath(builder->current, sizeof path, path);
    printf("%u: %s\n", (unsigned)parser->line, path);
}
// end: note

int main(int argc, char** argv)
{
    if (argc != 2) return fprintf(stderr, "usage: lines FILE\n"), 2;
    // begin: build
    char error[256] = "";
    XML_SAX_Builder builder = {0};
    builder.nameConverter = XML_IO_MemOutStreamCreate(XML_ENCODING_UTF_8, XML_ENCODING_GB18030);
    builder.valueConverter = XML_IO_MemOutStreamCreate(XML_ENCODING_UTF_8, XML_ENCODING_GB18030);
    builder.errorText = error;
    builder.errorTextSize = sizeof error;
    XML_SAX_Handler handler = {0};
    handler.userData = &builder;
    handler.startElementNs = startElement;
    handler.endElementNs = XML_SAX_EndElementNs;
    handler.characters = XML_SAX_Characters;
    handler.cdata = XML_SAX_CData;
    handler.endDocument = XML_SAX_EndDocument;
    handler.error = XML_SAX_Error;

    const int done = builder.nameConverter && builder.valueConverter &&
                     XML_Parser_ByFile(argv[1], &handler) == XML_RET_OK;
    XML_IO_OutStreamDestroy(builder.nameConverter);
    XML_IO_OutStreamDestroy(builder.valueConverter);
    if (!done) fprintf(stderr, "%s\n", error);
    XML_DOM_DelNode(builder.root);
    // end: build
    return done ? 0 : 1;
}
