/* Who may change which datastore. */
#include "durable.h"
#include "locks.h"
#include "rpc_error.h"
#include "store.h"

#include <errno.h>
#include <stdio.h>
#include <string.h>
#include <unistd.h>

static LockByte byteOf(Datastore datastore)
{
    return datastore == STORE_RUNNING ? LOCK_RUNNING : LOCK_CANDIDATE;
}

static bool refuseStore(XML_DOM_Node** error, const char* tag, const char* message)
{
    return refuse(error, &(RpcError){.type = "application", .tag = tag, .message = message});
}

/* The system refuses: for its reason. */
static bool refuseSystem(XML_DOM_Node** error)
{
    return refuseStore(error, "operation-failed", strerror(errno));
}

/* Session 0 is no session, or one whose number is not known here. */
static bool refuseLock(XML_DOM_Node** error, pid_t holder, const char* message)
{
    char sessionId[32];
    snprintf(sessionId, sizeof sessionId, "%ld", (long)holder);
    return refuse(error, &(RpcError){.type = "protocol",
                                     .tag = "lock-denied",
                                     .message = message,
                                     .sessionId = sessionId});
}

/* Takes the lock itself; a holder that ends in between leaves it to us. */
static bool takeLock(const Store* store, LockByte byte, XML_DOM_Node** error)
{
    for (;;) {
        pid_t holder = 0;
        LockState state = lockTry(store->lockFile, byte);
        if (state == LOCK_FREE) return true;
        if (state == LOCK_HELD) state = lockLook(store->lockFile, byte, &holder);
        if (state == LOCK_FAILED) return refuseSystem(error);
        if (state == LOCK_HELD) return refuseLock(error, holder, "Another session holds the lock.");
    }
}

/* A candidate with changes is not locked: they may be those of a session that has ended. */
static bool checkUnchanged(const Store* store, XML_DOM_Node** error)
{
    if (access(store->files[STORE_CANDIDATE], F_OK) == 0)
        return refuseLock(error, 0, "The candidate holds changes: commit or discard them first.");
    return errno == ENOENT || refuseSystem(error);
}

bool storeLock(Store* store, Datastore datastore, XML_DOM_Node** error)
{
    const LockByte byte = byteOf(datastore);
    if (store->holds[datastore]) return refuseLock(error, getpid(), "You hold the lock already.");
    if (!takeLock(store, byte, error)) return false;
    bool kept = datastore != STORE_CANDIDATE || checkUnchanged(store, error);
    if (kept && !lockMark(store->lockFile, byte, true)) kept = refuseSystem(error);
    if (!kept) lockRelease(store->lockFile, byte);
    store->holds[datastore] = kept;
    return kept;
}

bool storeUnlock(Store* store, Datastore datastore, XML_DOM_Node** error)
{
    if (!store->holds[datastore])
        return refuseStore(error, "operation-failed", "You do not hold the lock.");
    if (datastore == STORE_CANDIDATE && !storeDiscard(store, error)) return false;
    if (!lockMark(store->lockFile, byteOf(datastore), false)) return refuseSystem(error);
    lockRelease(store->lockFile, byteOf(datastore));
    store->holds[datastore] = false;
    return true;
}

void storeUnlockAll(Store* store)
{
    for (Datastore datastore = STORE_RUNNING; datastore <= STORE_CANDIDATE; ++datastore) {
        XML_DOM_Node* error = NULL;
        if (!store->holds[datastore] || storeUnlock(store, datastore, &error)) continue;
        XML_DOM_DelNode(error);
        /* The mark stays, so that whoever comes next discards the changes. */
        lockRelease(store->lockFile, byteOf(datastore));
        store->holds[datastore] = false;
    }
}

bool storeMayWrite(const Store* store, Datastore datastore, XML_DOM_Node** error)
{
    pid_t holder = 0;
    switch (lockLook(store->lockFile, byteOf(datastore), &holder)) {
    case LOCK_FREE: return true;
    case LOCK_FAILED: return refuseSystem(error);
    default: return refuseStore(error, "in-use", "Another session has locked the configuration.");
    }
}
