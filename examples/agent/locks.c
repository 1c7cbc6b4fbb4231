#include "locks.h"

#include <errno.h>
#include <fcntl.h>
#include <string.h>
#include <unistd.h>

static struct flock lockOf(LockByte byte, short type)
{
    struct flock lock;
    memset(&lock, 0, sizeof lock);
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = (off_t)byte;
    lock.l_len = 1;
    return lock;
}

int locksOpen(const char* path)
{
    return open(path, O_RDWR | O_CREAT | O_CLOEXEC, 0600);
}

LockState lockTry(int file, LockByte byte)
{
    struct flock lock = lockOf(byte, F_WRLCK);
    if (fcntl(file, F_SETLK, &lock) == 0) return LOCK_FREE;
    return errno == EACCES || errno == EAGAIN ? LOCK_HELD : LOCK_FAILED;
}

bool lockWait(int file, LockByte byte)
{
    struct flock lock = lockOf(byte, F_WRLCK);
    int status = -1;
    do status = fcntl(file, F_SETLKW, &lock);
    while (status != 0 && errno == EINTR);
    return status == 0;
}

void lockRelease(int file, LockByte byte)
{
    struct flock lock = lockOf(byte, F_UNLCK);
    fcntl(file, F_SETLK, &lock);
}

LockState lockLook(int file, LockByte byte, pid_t* holder)
{
    struct flock lock = lockOf(byte, F_WRLCK);
    *holder = 0;
    if (fcntl(file, F_GETLK, &lock) != 0) return LOCK_FAILED;
    if (lock.l_type == F_UNLCK) return LOCK_FREE;
    if (lock.l_pid > 0) *holder = lock.l_pid;
    return LOCK_HELD;
}

bool lockMark(int file, LockByte byte, bool marked)
{
    return pwrite(file, marked ? "1" : "0", 1, (off_t)byte) == 1;
}

bool lockIsMarked(int file, LockByte byte)
{
    char mark = '0';
    return pread(file, &mark, 1, (off_t)byte) == 1 && mark == '1';
}
