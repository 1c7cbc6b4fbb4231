/* Writing to a file, a pipe or a socket until everything is out. */
#ifndef AGENT_WRITE_ALL_H
#define AGENT_WRITE_ALL_H

#include <stdbool.h>
#include <stddef.h>

/* Goes on where a signal interrupts or less was taken, and waits where the file does not. Returns
 * false with errno. */
bool writeAll(int file, const char* bytes, size_t length);

/* Waits until a file that does not wait by itself can be read (POLLIN) or written (POLLOUT). */
bool waitUntilReady(int file, short events);

#endif
