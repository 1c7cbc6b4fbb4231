/* Where configurations are kept: the running one in a file, and the candidate in another one beside
 * it while it differs. Nothing is kept in memory between two messages, so sessions, each of which
 * is a process, share both.
 *
 * A file is never written in place: a temporary one is written, synchronised and renamed over it,
 * and then the directory is synchronised. Whatever happens, the file holds the old configuration or
 * the new one. A commit renames the candidate.
 */
#ifndef AGENT_STORE_H
#define AGENT_STORE_H

#include <netxml/dom.h>
#include <netxml/schema.h>
#include <stdbool.h>

typedef enum Datastore { STORE_RUNNING, STORE_CANDIDATE } Datastore;

typedef struct Store {
    const Schema_Root* schemas; /* the caller's */
    char* files[2];             /* of the datastores */
    char* temporary;
    char* directory;
    int lockFile;
    bool holds[2]; /* which datastores this session has locked */
} Store;

/* Opens the store whose running configuration is in `path`, which need not exist yet; what a
 * symbolic link leads to is the file, and must exist. Returns NULL, or the reason when the store
 * cannot be used; storeClose() is allowed all the same. */
const char* storeOpen(Store* store, const char* path, const Schema_Root* schemas);
/* Gives back the session's locks, and with the candidate's what it changed there. */
void storeClose(Store* store);

/* All that follows is called between these two: they keep other sessions out for the time of an
 * operation. Leaving twice does no harm: what only reads leaves once it has loaded. What refuses
 * says so in `*error`, see rpc_error.h. */
bool storeEnter(Store* store);
void storeLeave(Store* store);

/* Reads a datastore and checks it. The caller owns the tree; NULL with a refusal on failure. */
XML_DOM_Node* storeLoad(const Store* store, Datastore datastore, XML_DOM_Node** error);
/* Keeps a configuration that has been checked. */
bool storeSave(const Store* store, Datastore datastore, XML_DOM_Node* configuration,
               XML_DOM_Node** error);
/* Makes the candidate the running configuration. */
bool storeCommit(const Store* store, XML_DOM_Node** error);
/* Makes the candidate what the running configuration is. */
bool storeDiscard(const Store* store, XML_DOM_Node** error);

bool storeLock(Store* store, Datastore datastore, XML_DOM_Node** error);
bool storeUnlock(Store* store, Datastore datastore, XML_DOM_Node** error);
/* Gives back whatever the session has locked. Changes that cannot be discarded now are discarded by
 * the next operation of any session. */
void storeUnlockAll(Store* store);
/* Refuses when another session has locked the datastore. */
bool storeMayWrite(const Store* store, Datastore datastore, XML_DOM_Node** error);

#endif
