/* Comes before the C library in a process and lets one kind of system call fail, as long as the
 * file SYSTEM_FAILURE names one:
 *
 *     fsync-directory, open-directory, rename, unlink, access, lock
 *     holder: a lock is held, but nobody says by whom, as across PID namespaces */
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

static int is(const char* name)
{
    char text[64] = "";
    const int before = errno;
    const char* path = getenv("SYSTEM_FAILURE");
    const int file = path ? (int)syscall(SYS_openat, AT_FDCWD, path, O_RDONLY | O_CLOEXEC) : -1;
    if (file >= 0) {
        if (read(file, text, sizeof text - 1) < 0) text[0] = '\0';
        close(file);
    }
    errno = before;
    return strcmp(text, name) == 0;
}

static int fail(int reason)
{
    errno = reason;
    return -1;
}

int fsync(int file)
{
    struct stat status;
    if (fstat(file, &status) == 0 && S_ISDIR(status.st_mode) && is("fsync-directory"))
        return fail(EIO);
    return (int)syscall(SYS_fsync, file);
}

int open(const char* path, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    const unsigned mode = flags & O_CREAT ? va_arg(rest, unsigned) : 0;
    va_end(rest);
    if ((flags & O_DIRECTORY) && is("open-directory")) return fail(EMFILE);
    return (int)syscall(SYS_openat, AT_FDCWD, path, flags, mode);
}

int rename(const char* from, const char* to)
{
    if (is("rename")) return fail(EIO);
    return (int)syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0);
}

int unlink(const char* path)
{
    if (is("unlink")) return fail(EIO);
    return (int)syscall(SYS_unlinkat, AT_FDCWD, path, 0);
}

int access(const char* path, int mode)
{
    if (is("access")) return fail(EIO);
    return (int)syscall(SYS_faccessat, AT_FDCWD, path, mode);
}

/* The lock of one operation, byte 2, works: it is those of the datastores that fail. */
int fcntl(int file, int command, ...)
{
    va_list rest;
    va_start(rest, command);
    void* argument = va_arg(rest, void*);
    va_end(rest);
    struct flock* lock = argument;
    if ((command == F_SETLK || command == F_GETLK) && lock->l_start < 2 &&
        lock->l_type != F_UNLCK && is("lock"))
        return fail(ENOLCK);
    const int status = (int)syscall(SYS_fcntl, file, command, argument);
    if (command == F_GETLK && status == 0 && lock->l_type != F_UNLCK && is("holder"))
        lock->l_pid = 0;
    return status;
}
