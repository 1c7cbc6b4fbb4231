#include "durable.h"

#include "write_all.h"

#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <unistd.h>

/* Closes a file after what was done with it; the first failure's errno stays. */
static bool closeAfter(int file, bool done)
{
    const int reason = errno;
    const bool closed = close(file) == 0;
    if (!done) errno = reason;
    return done && closed;
}

/* A new name, or one that is gone, is on disk only when its directory is. */
static bool syncDirectory(const char* directory)
{
    const int file = open(directory, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file < 0) return false;
    return closeAfter(file, fsync(file) == 0);
}

static bool writeTemporary(const char* temporary, const char* bytes, size_t length)
{
    const int file = open(temporary, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0) return false;
    return closeAfter(file, writeAll(file, bytes, length) && fsync(file) == 0);
}

bool durableRename(const char* from, const char* to, const char* directory)
{
    return rename(from, to) == 0 && syncDirectory(directory);
}

bool durableReplace(const char* path, const char* temporary, const char* directory,
                    const char* bytes, size_t length)
{
    if (writeTemporary(temporary, bytes, length)) return durableRename(temporary, path, directory);
    const int reason = errno;
    unlink(temporary);
    errno = reason;
    return false;
}

bool durableRemove(const char* path, const char* directory)
{
    if (unlink(path) != 0) return errno == ENOENT;
    return syncDirectory(directory);
}
