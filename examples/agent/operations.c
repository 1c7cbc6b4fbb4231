#include "operations.h"

#include "configuration.h"
#include "edit.h"
#include "edit_check.h"
#include "filter.h"
#include "rpc_error.h"
#include "tree.h"

#include <string.h>

/* What an operation works with. The schema has found the request valid. */
typedef struct Call {
    const XML_DOM_Node* request; /* the element below <rpc> */
    Store* store;
    bool* closing;
    XML_DOM_Node* error; /* why an operation refuses */
    XML_DOM_Node* data;  /* what an operation answers; NULL for <ok> */
} Call;

static bool refuseCall(Call* call, const char* tag, const XML_DOM_Node* node, const char* message)
{
    return refuse(&call->error,
                  &(RpcError){.type = "protocol", .tag = tag, .node = node, .message = message});
}

/* The datastore that <target> or <source> names. */
static Datastore datastoreIn(const XML_DOM_Node* element)
{
    return childNamed(element, "candidate") ? STORE_CANDIDATE : STORE_RUNNING;
}

static Datastore datastoreOf(const Call* call, const char* name)
{
    return datastoreIn(childNamed(call->request, name));
}

/* ------------------------------------------------------------------------------------------------
 * get, get-config
 */

static bool answerData(Call* call, Datastore datastore)
{
    const XML_DOM_Node* filter = childNamed(call->request, "filter");
    if (filter && XML_Strcmp(XML_DOM_GetNodeAttrValByName(filter, "type"), "xpath") == 0)
        return refuseCall(call, "operation-not-supported", filter, "Filters are subtrees here.");
    XML_DOM_Node* configuration = storeLoad(call->store, datastore, &call->error);
    storeLeave(call->store); /* others need not wait for what is a copy of our own now */
    if (!configuration) return false;
    call->data = makeElement("data", NULL);
    const bool filled = call->data && filterInto(call->data, configuration, filter);
    XML_DOM_DelNode(configuration);
    return filled;
}

/* There is no state besides the configuration. */
static bool doGet(Call* call)
{
    return answerData(call, STORE_RUNNING);
}

static bool doGetConfig(Call* call)
{
    return answerData(call, datastoreOf(call, "source"));
}

/* ------------------------------------------------------------------------------------------------
 * edit-config
 */

/* An option's value; empty where it is left out. */
static const char* option(const Call* call, const char* name)
{
    return textOf(childNamed(call->request, name));
}

static bool isOption(const Call* call, const char* name, const char* value)
{
    return strcmp(option(call, name), value) == 0;
}

/* Edits a copy: the file is not touched before all of it has succeeded and the result is valid, nor
 * by an edit that changes nothing. */
static bool editCopy(Call* call, XML_DOM_Node* configuration, Datastore datastore)
{
    const char* name = option(call, "default-operation");
    const Operation inherited = *name ? operationByName(name) : OPERATION_MERGE;
    const XML_DOM_Node* config = childNamed(call->request, "config");
    bool changed = false;
    if (!editApply(configuration, config, inherited, &changed, &call->error) ||
        !configurationCheck(configuration, call->store->schemas, &call->error))
        return false;
    if (!changed || isOption(call, "test-option", "test-only")) return true;
    return storeSave(call->store, datastore, configuration, &call->error);
}

static bool doEditConfig(Call* call)
{
    const Datastore datastore = datastoreOf(call, "target");
    if (isOption(call, "error-option", "continue-on-error"))
        return refuseCall(call, "operation-not-supported",
                          childNamed(call->request, "error-option"),
                          "An edit is done as a whole, or not at all.");
    if (!storeMayWrite(call->store, datastore, &call->error) ||
        !editCheck(childNamed(call->request, "config"), true, &call->error))
        return false;
    XML_DOM_Node* configuration = storeLoad(call->store, datastore, &call->error);
    const bool edited = configuration && editCopy(call, configuration, datastore);
    XML_DOM_DelNode(configuration);
    return edited;
}

/* ------------------------------------------------------------------------------------------------
 * lock, unlock, commit, discard-changes, validate, close-session
 */

static bool doLock(Call* call)
{
    return storeLock(call->store, datastoreOf(call, "target"), &call->error);
}

static bool doUnlock(Call* call)
{
    return storeUnlock(call->store, datastoreOf(call, "target"), &call->error);
}

static bool doCommit(Call* call)
{
    return storeMayWrite(call->store, STORE_RUNNING, &call->error) &&
           storeMayWrite(call->store, STORE_CANDIDATE, &call->error) &&
           storeCommit(call->store, &call->error);
}

static bool doDiscardChanges(Call* call)
{
    return storeMayWrite(call->store, STORE_CANDIDATE, &call->error) &&
           storeDiscard(call->store, &call->error);
}

/* A configuration in the request is one edit of an empty one, without operations of its own. */
static bool validateInline(Call* call, const XML_DOM_Node* config)
{
    bool changed = false;
    storeLeave(call->store);
    if (!editCheck(config, false, &call->error)) return false;
    XML_DOM_Node* configuration = configurationMake();
    const bool valid = configuration &&
                       editApply(configuration, config, OPERATION_CREATE, &changed, &call->error) &&
                       configurationCheck(configuration, call->store->schemas, &call->error);
    XML_DOM_DelNode(configuration);
    return valid;
}

static bool doValidate(Call* call)
{
    const XML_DOM_Node* source = childNamed(call->request, "source");
    const XML_DOM_Node* config = childNamed(source, "config");
    if (config) return validateInline(call, config);
    XML_DOM_Node* configuration = storeLoad(call->store, datastoreIn(source), &call->error);
    XML_DOM_DelNode(configuration);
    return configuration != NULL;
}

/* Before the reply, so that whoever waits for it finds the locks free. A session always ends. */
static bool doCloseSession(Call* call)
{
    storeUnlockAll(call->store);
    *call->closing = true;
    return true;
}

/* ------------------------------------------------------------------------------------------------
 * From a message to its operation
 */

/* Each does what it is named after; or returns false with the reason in `error`, which stays NULL
 * when memory has run out. */
/* clang-format off */
static const struct {
    const char* name;
    bool (*run)(Call* call);
} kOperations[] = {
    {"get",             doGet},
    {"get-config",      doGetConfig},
    {"edit-config",     doEditConfig},
    {"lock",            doLock},
    {"unlock",          doUnlock},
    {"commit",          doCommit},
    {"discard-changes", doDiscardChanges},
    {"validate",        doValidate},
    {"close-session",   doCloseSession},
};
/* clang-format on */
enum { OPERATION_COUNT = sizeof kOperations / sizeof kOperations[0] };

static unsigned operationIndex(const XML_DOM_Node* request)
{
    unsigned i = 0;
    while (i < OPERATION_COUNT && !hasName(request, BASE_NAMESPACE, kOperations[i].name)) ++i;
    return i;
}

bool operationIsRpc(const XML_DOM_Node* message)
{
    return message && hasName(message, BASE_NAMESPACE, "rpc");
}

/* Whether the message is an <rpc> that asks for something we know, as the schema has it. */
static bool checkMessage(const XML_DOM_Node* rpc, const Schema_Root* schemas, Call* call)
{
    if (!operationIsRpc(rpc))
        return refuse(&call->error,
                      &(RpcError){.type = "rpc",
                                  .tag = "malformed-message",
                                  .message = "The message is no rpc in UTF-8, or has a "
                                             "document type declaration."});
    Schema_ValidateResult result;
    const bool known = operationIndex(firstElement(rpc)) != OPERATION_COUNT;
    if (Schema_ValidateXml(rpc, schemas, &result) != XML_RET_OK) return false;
    if (result.code == SCHEMA_VALID) return true;
    if (result.node == rpc && result.attrName) return refuseVerdict(&call->error, "rpc", &result);
    if (firstElement(rpc) && !known)
        return refuseCall(call, "operation-not-supported", firstElement(rpc),
                          "There is no such operation here.");
    return refuseVerdict(&call->error, "protocol", &result);
}

static bool runOperation(const XML_DOM_Node* rpc, const Schema_Root* schemas, Call* call)
{
    if (!checkMessage(rpc, schemas, call)) return false;
    call->request = firstElement(rpc);
    if (!storeEnter(call->store))
        return refuseCall(call, "operation-failed", NULL, "The configuration cannot be reached.");
    const bool done = kOperations[operationIndex(call->request)].run(call);
    storeLeave(call->store);
    return done;
}

XML_DOM_Node* operationRun(const XML_DOM_Node* rpc, const Schema_Root* schemas, Store* store,
                           bool* closing)
{
    Call call = {NULL, store, closing, NULL, NULL};
    if (runOperation(rpc, schemas, &call)) return call.data ? call.data : makeElement("ok", NULL);
    XML_DOM_DelNode(call.data);
    return call.error;
}
