/* Replacing a file so that a crash cannot tear it.
 */
#ifndef AGENT_DURABLE_H
#define AGENT_DURABLE_H

#include <stdbool.h>
#include <stddef.h>

/* Puts a file with this content in the place of `path`. `temporary` is a name in the same
 * directory; what a crash left there is overwritten. Returns false with errno; `path` is as it was
 * then. */
bool durableReplace(const char* path, const char* temporary, const char* directory,
                    const char* bytes, size_t length);

/* Renames or removes a file, and has the directory know it for good. Removing a file that is not
 * there succeeds. */
bool durableRename(const char* from, const char* to, const char* directory);
bool durableRemove(const char* path, const char* directory);

#endif
