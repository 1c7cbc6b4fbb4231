/* Locks that sessions share: one file, one byte of it for each lock.
 *
 * They are record locks (fcntl(2)), for two properties of them: the system takes them back when a
 * process ends, however it ends, as RFC 6241 asks for the locks of a session; and it tells who
 * holds one, as lock-denied has to. A process must not open the file twice: closing either would
 * release its locks.
 */
#ifndef AGENT_LOCKS_H
#define AGENT_LOCKS_H

#include <stdbool.h>
#include <sys/types.h>

/* The bytes. A datastore's lock is the session's; the last one is held during one operation. */
typedef enum LockByte { LOCK_RUNNING, LOCK_CANDIDATE, LOCK_OPERATION } LockByte;

/* Opens or creates the file; -1 with errno on failure. */
int locksOpen(const char* path);

/* What is known of a lock. */
typedef enum LockState {
    LOCK_FREE,
    LOCK_HELD,  /* by another process */
    LOCK_FAILED /* the system does not say; errno says why */
} LockState;

/* Takes a lock, at once or not at all: LOCK_FREE means that it was, and is ours. */
LockState lockTry(int file, LockByte byte);
/* Waits for a lock. */
bool lockWait(int file, LockByte byte);
void lockRelease(int file, LockByte byte);

/* Whether another process holds the lock, and which; 0 for one that we cannot name, as in another
 * PID namespace, or on another machine. */
LockState lockLook(int file, LockByte byte, pid_t* holder);

/* A mark in the file itself, which a process that is killed leaves behind. */
bool lockMark(int file, LockByte byte, bool marked);
bool lockIsMarked(int file, LockByte byte);

#endif
