/* Replacing a file so that a crash cannot tear it.
 */
#ifndef AGENT_DURABLE_H
#define AGENT_DURABLE_H

#include <stdbool.h>
#include <stddef.h>

/* What has come of a change. Behind the last two errno says why. */
typedef enum DurableResult {
    DURABLE_DONE,     /* done, and on disk */
    DURABLE_UNSYNCED, /* done, but the directory may not be on disk: a loss of power may undo it */
    DURABLE_UNCHANGED /* nothing has been done */
} DurableResult;

/* Puts a file with this content in the place of `path`. `temporary` is a name in the same
 * directory; what a crash left there is overwritten, and it is gone afterwards. */
DurableResult durableReplace(const char* path, const char* temporary, const char* directory,
                             const char* bytes, size_t length);

/* Renames or removes a file, and has the directory know it for good. The renamed file gets the mode
 * of the one that it replaces, and its owner if the system lets us. Removing a file that is not
 * there succeeds. */
DurableResult durableRename(const char* from, const char* to, const char* directory);
DurableResult durableRemove(const char* path, const char* directory);

#endif
