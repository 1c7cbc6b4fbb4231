#include "utf8.h"

#include <netxml/io.h>
#include <string.h>

// begin: convert
static char* convert(const char* text, XML_Encoding from, XML_Encoding to)
{
    XML_IO_OutStream* stream = text ? XML_IO_MemOutStreamCreate(from, to) : NULL;
    char* result = NULL;
    // The terminator goes along, so that the result has one.
    if (stream && XML_IO_OutStreamAppend(stream, text, strlen(text) + 1) == XML_RET_OK)
        result = XML_IO_MemOutStreamDetachBuf(stream, NULL);
    XML_IO_OutStreamDestroy(stream);
    return result;
}

char* utf8OfTree(const char* text)
{
    return convert(text, XML_ENCODING_GB18030, XML_ENCODING_UTF_8);
}

char* treeOfUtf8(const char* text)
{
    return convert(text, XML_ENCODING_UTF_8, XML_ENCODING_GB18030);
}
// end: convert
