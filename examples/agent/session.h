/* One session: the exchange of hellos, then requests and replies until one side ends it.
 */
#ifndef AGENT_SESSION_H
#define AGENT_SESSION_H

#include "store.h"

#include <netxml/schema.h>

typedef struct Session {
    int input;
    int output;
    unsigned long id; /* the process: so the holder of a lock is known by it */
    const Schema_Root* schemas;
    Store* store;
} Session;

/* Runs a session to its end. Returns NULL when it ended as sessions should: by close-session, or by
 * the end of the input between two messages. Otherwise a sentence that says why. */
const char* sessionRun(const Session* session);

#endif
