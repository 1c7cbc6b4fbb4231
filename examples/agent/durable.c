#include "durable.h"

#include "write_all.h"

#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

/* Closes a file after what was done with it; the first failure's errno stays. */
static bool closeAfter(int file, bool done)
{
    const int reason = errno;
    const bool closed = close(file) == 0;
    if (!done) errno = reason;
    return done && closed;
}

static bool writeTemporary(const char* temporary, const char* bytes, size_t length)
{
    const int file = open(temporary, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0) return false;
    return closeAfter(file, writeAll(file, bytes, length) && fsync(file) == 0);
}

/* Who may give files away is root, mostly: others at least try to keep the group. */
static bool giveAccess(int file, const struct stat* like)
{
    if (fchown(file, like->st_uid, like->st_gid) != 0) (void)!fchown(file, (uid_t)-1, like->st_gid);
    return fchmod(file, like->st_mode & 0777) == 0 && fsync(file) == 0;
}

/* Whoever could read the old file can read the new one. */
static bool keepAccess(const char* from, const char* to)
{
    struct stat old;
    struct stat own;
    if (stat(to, &old) != 0) return errno == ENOENT;
    const int file = open(from, O_RDONLY | O_CLOEXEC);
    if (file < 0) return false;
    const bool known = fstat(file, &own) == 0;
    const bool same = known && own.st_uid == old.st_uid && own.st_gid == old.st_gid &&
                      (own.st_mode & 0777) == (old.st_mode & 0777);
    return closeAfter(file, known && (same || giveAccess(file, &old)));
}

/* A new name, or one that is gone, is on disk only when its directory is. That is opened before the
 * change, so that what can fail behind it is the disk alone. */
static int openDirectory(const char* directory)
{
    return open(directory, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

static DurableResult syncAfter(int directory, bool changed)
{
    if (!changed) return closeAfter(directory, false), DURABLE_UNCHANGED;
    return closeAfter(directory, fsync(directory) == 0) ? DURABLE_DONE : DURABLE_UNSYNCED;
}

DurableResult durableRename(const char* from, const char* to, const char* directory)
{
    const int file = openDirectory(directory);
    if (file < 0) return DURABLE_UNCHANGED;
    return syncAfter(file, keepAccess(from, to) && rename(from, to) == 0);
}

DurableResult durableReplace(const char* path, const char* temporary, const char* directory,
                             const char* bytes, size_t length)
{
    DurableResult result = DURABLE_UNCHANGED;
    if (writeTemporary(temporary, bytes, length))
        result = durableRename(temporary, path, directory);
    if (result != DURABLE_UNCHANGED) return result;
    const int reason = errno;
    unlink(temporary);
    errno = reason;
    return result;
}

DurableResult durableRemove(const char* path, const char* directory)
{
    if (access(path, F_OK) != 0 && errno == ENOENT) return DURABLE_DONE;
    const int file = openDirectory(directory);
    if (file < 0) return DURABLE_UNCHANGED;
    return syncAfter(file, unlink(path) == 0);
}
