/* Hands on to the C library's iconv. */
#include <iconv.h>

iconv_t libiconv_open(const char* target, const char* source)
{
    return iconv_open(target, source);
}

size_t libiconv(iconv_t converter, char** in, size_t* inLeft, char** out, size_t* outLeft)
{
    return iconv(converter, in, inLeft, out, outLeft);
}

int libiconv_close(iconv_t converter)
{
    return iconv_close(converter);
}
