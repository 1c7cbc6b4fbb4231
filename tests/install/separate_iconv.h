/* As GNU libiconv's header: the functions have names of their own. */
#ifndef SEPARATE_ICONV_H
#define SEPARATE_ICONV_H
#include <stddef.h>

#define iconv_t libiconv_t
#define iconv_open libiconv_open
#define iconv libiconv
#define iconv_close libiconv_close

#ifdef __cplusplus
extern "C" {
#endif
typedef void* libiconv_t;
libiconv_t libiconv_open(const char* target, const char* source);
size_t libiconv(libiconv_t converter, char** in, size_t* inLeft, char** out, size_t* outLeft);
int libiconv_close(libiconv_t converter);
#ifdef __cplusplus
}
#endif
#endif
