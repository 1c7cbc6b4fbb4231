#include "write_all.h"

#include <errno.h>
#include <unistd.h>

bool writeAll(int file, const char* bytes, size_t length)
{
    while (length != 0) {
        const ssize_t count = write(file, bytes, length);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return false;
        bytes += count;
        length -= (size_t)count;
    }
    return true;
}
