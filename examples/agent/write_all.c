#include "write_all.h"

#include <errno.h>
#include <poll.h>
#include <unistd.h>

bool waitUntilReady(int file, short events)
{
    struct pollfd ready = {file, events, 0};
    return poll(&ready, 1, -1) >= 0 || errno == EINTR;
}

bool writeAll(int file, const char* bytes, size_t length)
{
    while (length != 0) {
        const ssize_t count = write(file, bytes, length);
        if (count >= 0) {
            bytes += count;
            length -= (size_t)count;
        } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
            if (!waitUntilReady(file, POLLOUT)) return false;
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}
