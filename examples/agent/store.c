#include "store.h"

#include "configuration.h"
#include "durable.h"
#include "locks.h"
#include "rpc_error.h"
#include "tree.h"

#include <errno.h>
#include <netxml/parser.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static bool refuseStore(XML_DOM_Node** error, const char* tag, const char* message)
{
    return refuse(error, &(RpcError){.type = "application", .tag = tag, .message = message});
}

/* The system refuses: for its reason. */
static bool refuseSystem(XML_DOM_Node** error)
{
    return refuseStore(error, "operation-failed", strerror(errno));
}

/* ------------------------------------------------------------------------------------------------
 * Opening and closing
 */

/* `path` with something behind it; NULL without memory. */
static char* withSuffix(const char* path, const char* suffix)
{
    const size_t size = strlen(path) + strlen(suffix) + 1;
    char* text = malloc(size);
    if (text) snprintf(text, size, "%s%s", path, suffix);
    return text;
}

static char* directoryOf(const char* path)
{
    char* directory = withSuffix(path, "");
    char* slash = directory ? strrchr(directory, '/') : NULL;
    if (slash) slash[slash == directory] = '\0'; /* the root keeps its slash */
    if (slash || !directory) return directory;
    free(directory);
    return withSuffix(".", "");
}

bool storeOpen(Store* store, const char* path, const Schema_Root* schemas)
{
    memset(store, 0, sizeof *store);
    store->schemas = schemas;
    store->files[STORE_RUNNING] = withSuffix(path, "");
    store->files[STORE_CANDIDATE] = withSuffix(path, ".candidate");
    store->temporary = withSuffix(path, ".new");
    store->directory = directoryOf(path);
    store->lockFile = -1;
    char* lockPath = withSuffix(path, ".lock");
    if (lockPath) store->lockFile = locksOpen(lockPath);
    free(lockPath);
    return store->files[STORE_RUNNING] && store->files[STORE_CANDIDATE] && store->temporary &&
           store->directory && store->lockFile >= 0;
}

void storeClose(Store* store)
{
    XML_DOM_Node* error = NULL;
    const bool holds = store->holds[STORE_RUNNING] || store->holds[STORE_CANDIDATE];
    if (holds && storeEnter(store)) {
        storeUnlockAll(store, &error);
        storeLeave(store);
    }
    XML_DOM_DelNode(error);
    if (store->lockFile >= 0) close(store->lockFile); /* and with it the locks */
    free(store->files[STORE_RUNNING]);
    free(store->files[STORE_CANDIDATE]);
    free(store->temporary);
    free(store->directory);
}

static LockByte byteOf(Datastore datastore)
{
    return datastore == STORE_RUNNING ? LOCK_RUNNING : LOCK_CANDIDATE;
}

/* A session that was killed while it held the candidate's lock cannot take its changes back:
 * whoever comes next does. */
static bool cleanUpAfterKilled(Store* store)
{
    if (store->holds[STORE_CANDIDATE] || !lockIsMarked(store->lockFile, LOCK_CANDIDATE) ||
        lockHolder(store->lockFile, LOCK_CANDIDATE) != 0)
        return true;
    return durableRemove(store->files[STORE_CANDIDATE], store->directory) &&
           lockMark(store->lockFile, LOCK_CANDIDATE, false);
}

bool storeEnter(Store* store)
{
    if (!lockWait(store->lockFile, LOCK_OPERATION)) return false;
    if (cleanUpAfterKilled(store)) return true;
    storeLeave(store);
    return false;
}

void storeLeave(Store* store)
{
    lockRelease(store->lockFile, LOCK_OPERATION);
}

/* ------------------------------------------------------------------------------------------------
 * Reading and writing
 */

static bool exists(const char* path)
{
    return access(path, F_OK) == 0 || errno != ENOENT;
}

/* A candidate without a file is the running configuration, and that is empty without one. */
static XML_DOM_Node* readFile(const Store* store, Datastore datastore, XML_DOM_Node** error)
{
    const char* path = store->files[datastore];
    if (!exists(path)) path = store->files[STORE_RUNNING];
    if (!exists(path)) return configurationMake();

    char problem[512] = "";
    XML_DOM_Node* configuration = XML_DOM_BuildTreeByFile(path, sizeof problem, problem);
    if (configuration && joinTexts(configuration)) return configuration;
    /* The sentence may quote the file, as far as it goes: nothing for a client. */
    if (!configuration)
        refuseStore(error, "operation-failed", "The kept configuration cannot be read.");
    XML_DOM_DelNode(configuration);
    return NULL;
}

XML_DOM_Node* storeLoad(const Store* store, Datastore datastore, XML_DOM_Node** error)
{
    *error = NULL;
    XML_DOM_Node* configuration = readFile(store, datastore, error);
    if (configuration && configurationCheck(configuration, store->schemas, error))
        return configuration;
    XML_DOM_DelNode(configuration);
    return NULL;
}

bool storeSave(const Store* store, Datastore datastore, XML_DOM_Node* configuration,
               XML_DOM_Node** error)
{
    char* text = NULL;
    size_t length = 0;
    *error = NULL;
    if (XML_DOM_SetEncoding(configuration, XML_ENCODING_UTF_8) != XML_RET_OK ||
        XML_DOM_TranslateStr(configuration, 0, &text, &length) != XML_RET_OK)
        return false;
    const bool saved =
        durableReplace(store->files[datastore], store->temporary, store->directory, text, length);
    if (!saved) refuseSystem(error);
    free(text);
    return saved;
}

bool storeCommit(const Store* store, XML_DOM_Node** error)
{
    const char* candidate = store->files[STORE_CANDIDATE];
    if (!exists(candidate)) return true;
    XML_DOM_Node* configuration = storeLoad(store, STORE_CANDIDATE, error);
    if (!configuration) return false;
    XML_DOM_DelNode(configuration);
    return durableRename(candidate, store->files[STORE_RUNNING], store->directory) ||
           refuseSystem(error);
}

bool storeDiscard(const Store* store, XML_DOM_Node** error)
{
    return durableRemove(store->files[STORE_CANDIDATE], store->directory) || refuseSystem(error);
}

/* ------------------------------------------------------------------------------------------------
 * Locks
 */

static bool refuseLock(XML_DOM_Node** error, pid_t holder, const char* message)
{
    char sessionId[32];
    snprintf(sessionId, sizeof sessionId, "%ld", (long)holder);
    return refuse(error, &(RpcError){.type = "protocol",
                                     .tag = "lock-denied",
                                     .message = message,
                                     .sessionId = sessionId});
}

bool storeLock(Store* store, Datastore datastore, XML_DOM_Node** error)
{
    const LockByte byte = byteOf(datastore);
    if (store->holds[datastore]) return refuseLock(error, getpid(), "You hold the lock already.");
    /* Session 0 is no session: the changes may be of one that has ended. */
    if (datastore == STORE_CANDIDATE && exists(store->files[STORE_CANDIDATE]))
        return refuseLock(error, 0, "The candidate holds changes: commit or discard them first.");
    if (!lockTry(store->lockFile, byte))
        return refuseLock(error, lockHolder(store->lockFile, byte),
                          "Another session holds the lock.");
    if (!lockMark(store->lockFile, byte, true)) {
        lockRelease(store->lockFile, byte);
        return refuseSystem(error);
    }
    store->holds[datastore] = true;
    return true;
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

bool storeUnlockAll(Store* store, XML_DOM_Node** error)
{
    for (Datastore datastore = STORE_RUNNING; datastore <= STORE_CANDIDATE; ++datastore)
        if (store->holds[datastore] && !storeUnlock(store, datastore, error)) return false;
    return true;
}

bool storeMayWrite(const Store* store, Datastore datastore, XML_DOM_Node** error)
{
    if (lockHolder(store->lockFile, byteOf(datastore)) == 0) return true;
    return refuseStore(error, "in-use", "Another session has locked the configuration.");
}
