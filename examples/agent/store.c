#include "store.h"

#include "configuration.h"
#include "durable.h"
#include "locks.h"
#include "prolog.h"
#include "rpc_error.h"
#include "tree.h"

#include <errno.h>
#include <netxml/parser.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

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

/* The file itself, behind symbolic links: it is what is replaced. NULL with a sentence. */
static char* resolve(const char* path, const char** problem)
{
    struct stat link;
    char* resolved = realpath(path, NULL);
    *problem = NULL;
    if (resolved) return resolved;
    if (errno != ENOENT) *problem = strerror(errno);
    else if (lstat(path, &link) == 0) *problem = "this is a symbolic link to nothing";
    if (*problem) return NULL;
    resolved = withSuffix(path, ""); /* it will be made */
    if (!resolved) *problem = strerror(ENOMEM);
    return resolved;
}

const char* storeOpen(Store* store, const char* path, const Schema_Root* schemas)
{
    const char* problem = NULL;
    memset(store, 0, sizeof *store);
    store->schemas = schemas;
    store->lockFile = -1;
    char* file = resolve(path, &problem);
    if (!file) return problem;
    store->files[STORE_RUNNING] = file;
    store->files[STORE_CANDIDATE] = withSuffix(file, ".candidate");
    store->temporary = withSuffix(file, ".new");
    store->directory = directoryOf(file);
    char* lockPath = withSuffix(file, ".lock");
    if (lockPath) store->lockFile = locksOpen(lockPath);
    const int reason = lockPath ? errno : ENOMEM;
    free(lockPath);
    if (store->lockFile < 0) return strerror(reason);
    return store->files[STORE_CANDIDATE] && store->temporary && store->directory ? NULL
                                                                                 : strerror(ENOMEM);
}

void storeClose(Store* store)
{
    const bool holds = store->holds[STORE_RUNNING] || store->holds[STORE_CANDIDATE];
    if (holds && storeEnter(store)) {
        storeUnlockAll(store);
        storeLeave(store);
    }
    if (store->lockFile >= 0) close(store->lockFile); /* and with it the locks */
    free(store->files[STORE_RUNNING]);
    free(store->files[STORE_CANDIDATE]);
    free(store->temporary);
    free(store->directory);
}

/* A session that was killed while it held the candidate's lock cannot take its changes back:
 * whoever comes next does. */
static bool cleanUpAfterKilled(Store* store)
{
    pid_t holder = 0;
    if (store->holds[STORE_CANDIDATE] || !lockIsMarked(store->lockFile, LOCK_CANDIDATE))
        return true;
    const LockState state = lockLook(store->lockFile, LOCK_CANDIDATE, &holder);
    if (state != LOCK_FREE) return state == LOCK_HELD;
    return durableRemove(store->files[STORE_CANDIDATE], store->directory) != DURABLE_UNCHANGED &&
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

static bool refuseStore(XML_DOM_Node** error, const char* message)
{
    return refuse(
        error, &(RpcError){.type = "application", .tag = "operation-failed", .message = message});
}

/* What cannot be looked at exists: reading it will say why not. */
static bool exists(const char* path)
{
    return access(path, F_OK) == 0 || errno != ENOENT;
}

/* What has been done is said, although the client must not rely on it. */
static bool refuseDurable(XML_DOM_Node** error, DurableResult result)
{
    char message[256];
    if (result == DURABLE_DONE) return true;
    const char* reason = strerror(errno);
    if (result == DURABLE_UNCHANGED) return refuseStore(error, reason);
    snprintf(message, sizeof message,
             "The change is done, but may not survive a loss of power: %s.", reason);
    return refuseStore(error, message);
}

/* A candidate without a file is the running configuration, and that is empty without one. */
static XML_DOM_Node* readFile(const Store* store, Datastore datastore, XML_DOM_Node** error)
{
    const char* path = store->files[datastore];
    if (!exists(path)) path = store->files[STORE_RUNNING];
    if (!exists(path)) return configurationMake();

    if (prologOfFileHasDoctype(path))
        return refuseStore(error, "The kept configuration has a document type declaration."), NULL;
    XML_DOM_Node* configuration = XML_DOM_BuildTreeByFile(path, 0, NULL);
    if (configuration && joinTexts(configuration)) return configuration;
    /* The parser's sentence would quote the file: nothing for a client. */
    if (!configuration) refuseStore(error, "The kept configuration cannot be read.");
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
    const DurableResult result =
        durableReplace(store->files[datastore], store->temporary, store->directory, text, length);
    const bool saved = refuseDurable(error, result);
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
    return refuseDurable(error,
                         durableRename(candidate, store->files[STORE_RUNNING], store->directory));
}

bool storeDiscard(const Store* store, XML_DOM_Node** error)
{
    return refuseDurable(error, durableRemove(store->files[STORE_CANDIDATE], store->directory));
}
