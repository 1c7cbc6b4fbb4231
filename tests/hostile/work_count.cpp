#include "tests/hostile/work_count.hpp"

#include <iconv.h>
#include <malloc.h>
#include <regex.h>

#include <cstddef>

namespace {

bool counting = false;
std::uint64_t passed = 0;

void countBytes(std::size_t size)
{
    if (counting) passed += 1 + size / 16;
}

// How far two texts are equal.
std::size_t commonLength(const char* a, const char* b, std::size_t most)
{
    std::size_t size = 0;
    while (size != most && a[size] == b[size] && a[size] != '\0') ++size;
    return size;
}

}  // namespace

std::uint64_t workOf(const std::function<void()>& work)
{
    passed = 0;
    counting = true;
    work();
    counting = false;
    return passed;
}

#define JOINED(a, b) a##b
#define IN_PLACE_OF(function) JOINED(__wrap_, function)
#define THE_REAL(function) JOINED(__real_, function)

extern "C" {

// The library's second compilation calls this in each basic block.
void __sanitizer_cov_trace_pc()
{
    passed += counting;
}

// The key of a hash is the same each time, so that the work is.
int __wrap_getentropy(void* into, std::size_t size)
{
    for (std::size_t i = 0; i != size; ++i)
        static_cast<unsigned char*>(into)[i] = static_cast<unsigned char>(37 * i + 11);
    return 0;
}

void* __real_memcpy(void* to, const void* from, std::size_t size);
void* __real_memmove(void* to, const void* from, std::size_t size);
void* __real_memset(void* to, int byte, std::size_t size);
int __real_memcmp(const void* a, const void* b, std::size_t size);
void* __real_memchr(const void* in, int byte, std::size_t size);
std::size_t __real_strlen(const char* text);
int __real_strcmp(const char* a, const char* b);
int __real_strncmp(const char* a, const char* b, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
std::size_t THE_REAL(iconv)(iconv_t converter, char** in, std::size_t* inLeft, char** out,
                            std::size_t* outLeft);
int __real_regexec(const regex_t* compiled, const char* text, std::size_t count,
                   regmatch_t* matches, int flags);

void* __wrap_memcpy(void* to, const void* from, std::size_t size)
{
    countBytes(size);
    return __real_memcpy(to, from, size);
}

void* __wrap_memmove(void* to, const void* from, std::size_t size)
{
    countBytes(size);
    return __real_memmove(to, from, size);
}

void* __wrap_memset(void* to, int byte, std::size_t size)
{
    countBytes(size);
    return __real_memset(to, byte, size);
}

int __wrap_memcmp(const void* a, const void* b, std::size_t size)
{
    countBytes(size);
    return __real_memcmp(a, b, size);
}

void* __wrap_memchr(const void* in, int byte, std::size_t size)
{
    const void* found = __real_memchr(in, byte, size);
    countBytes(found ? static_cast<std::size_t>(static_cast<const char*>(found) -
                                                static_cast<const char*>(in))
                     : size);
    return const_cast<void*>(found);
}

std::size_t __wrap_strlen(const char* text)
{
    const std::size_t size = __real_strlen(text);
    countBytes(size);
    return size;
}

int __wrap_strcmp(const char* a, const char* b)
{
    if (counting) countBytes(commonLength(a, b, static_cast<std::size_t>(-1)));
    return __real_strcmp(a, b);
}

int __wrap_strncmp(const char* a, const char* b, std::size_t size)
{
    if (counting) countBytes(commonLength(a, b, size));
    return __real_strncmp(a, b, size);
}

// A block that grows is taken as one that is copied.
void* __wrap_realloc(void* block, std::size_t size)
{
    if (block) countBytes(malloc_usable_size(block));
    return __real_realloc(block, size);
}

void* __wrap_calloc(std::size_t count, std::size_t size)
{
    countBytes(count * size);
    return __real_calloc(count, size);
}

std::size_t IN_PLACE_OF(iconv)(iconv_t converter, char** in, std::size_t* inLeft, char** out,
                               std::size_t* outLeft)
{
    const std::size_t before = inLeft ? *inLeft : 0;
    const std::size_t result = THE_REAL(iconv)(converter, in, inLeft, out, outLeft);
    countBytes(16 * (before - (inLeft ? *inLeft : 0)));  // a character at a time
    return result;
}

int __wrap_regexec(const regex_t* compiled, const char* text, std::size_t count,
                   regmatch_t* matches, int flags)
{
    countBytes(16 * __real_strlen(text));
    return __real_regexec(compiled, text, count, matches, flags);
}

}  // extern "C"
