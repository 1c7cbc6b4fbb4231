/* Comes before the C library in a process: lets so many allocations pass and fails the next one, or
 * all that follow. At the end it says how many blocks are still held. */
#include <errno.h>
#include <stddef.h>
#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);
void __libc_free(void* block);

static long left = -2; /* -2: not looked up yet; -1: nothing fails any more */
static long held;

static int fails(void)
{
    if (left == -2) {
        const char* text = getenv("ALLOCATIONS_ALLOWED");
        left = text ? atol(text) : -1;
    }
    if (left < 0) return 0;
    if (left-- > 0) return 0;
    left = getenv("ALLOCATIONS_FAIL_ONCE") ? -1 : 0;
    errno = ENOMEM;
    return 1;
}

static void* counted(void* block)
{
    held += block ? 1 : 0;
    return block;
}

void* malloc(size_t size)
{
    return fails() ? NULL : counted(__libc_malloc(size));
}

void* calloc(size_t count, size_t size)
{
    return fails() ? NULL : counted(__libc_calloc(count, size));
}

void* realloc(void* block, size_t size)
{
    void* moved = fails() ? NULL : __libc_realloc(block, size);
    held += moved && !block ? 1 : 0;
    return moved;
}

void free(void* block)
{
    held -= block ? 1 : 0;
    __libc_free(block);
}

__attribute__((destructor)) static void sayHeld(void)
{
    char text[64];
    const int length = snprintf(text, sizeof text, "held: %ld\n", held);
    if (length > 0 && write(STDERR_FILENO, text, (size_t)length) != length) _exit(99);
}
