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

/* Takes a lock, at once or not at all; or waits for it. */
bool lockTry(int file, LockByte byte);
bool lockWait(int file, LockByte byte);
void lockRelease(int file, LockByte byte);

/* The process that holds the lock, other than this one; 0 if none does. */
pid_t lockHolder(int file, LockByte byte);

/* A mark in the file itself, which a process that is killed leaves behind. */
bool lockMark(int file, LockByte byte, bool marked);
bool lockIsMarked(int file, LockByte byte);

#endif
