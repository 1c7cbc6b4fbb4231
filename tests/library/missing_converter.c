/* What happens where iconv lacks the Chinese encodings, as on small systems: this program's
   iconv_open comes before the C library's and does not know them. */
#define _GNU_SOURCE
#include <netxml/netxml.h>

#include <dlfcn.h>
#include <errno.h>
#include <iconv.h>
#include <stdio.h>
#include <string.h>

typedef iconv_t (*Open)(const char* target, const char* source);

__attribute__((visibility("default"))) iconv_t iconv_open(const char* target, const char* source)
{
    Open real;
    *(void**)&real = dlsym(RTLD_NEXT, "iconv_open");
    if (strncmp(target, "GB", 2) != 0 && strncmp(source, "GB", 2) != 0) return real(target, source);
    errno = EINVAL;
    return (iconv_t)-1;
}

static int failures;

static void expectText(const char* what, const char* got, const char* wanted)
{
    if (strcmp(got, wanted) == 0) return;
    fprintf(stderr, "%s: got \"%s\", not \"%s\"\n", what, got, wanted);
    ++failures;
}

static const char* build(const char* text)
{
    static char error[200];
    strcpy(error, "built");
    XML_DOM_DelNode(
        XML_DOM_BuildTreeByMem((const uint8_t*)text, (uint32_t)strlen(text), sizeof error, error));
    return error;
}

int main(void)
{
    if (XML_IO_MemOutStreamCreate(XML_ENCODING_UTF_8, XML_ENCODING_GBK)) ++failures;
    expectText("ASCII needs no converter", build("<a b='c'>text</a>"), "built");
    expectText("Chinese text", build("<a>\xE4\xB8\xAD</a>"), "Failed to initialize DOM SAX.");
    expectText("a Chinese name", build("<\xE4\xB8\xAD/>"), "Failed to initialize DOM SAX.");
    expectText("a declared encoding", build("<?xml version='1.0' encoding='GBK'?><a/>"),
               "The Line 1 Column 41 :\"rsion='1.0' encoding='GBK'?><a/>\", unsupported encoding.");
    if (XML_CheckQName("abc") != XML_RET_OK || XML_CheckQName("\xD6\xD0") != XML_RET_FAIL)
        ++failures;
    return failures == 0 ? 0 : 1;
}
