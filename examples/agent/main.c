/* A small NETCONF agent: one session on standard input and output, as sshd starts a subsystem.
 *
 *     agent --config FILE
 *
 * The exit status is 0 when the session ended as sessions should, 1 when it did not, 2 for a wrong
 * command line. What went wrong is said on standard error.
 */
#include "netconf_schema.h"
#include "session.h"
#include "system_schema.h"
#include "tree.h"

#include <fcntl.h>
#include <netxml/netxml.h>
#include <signal.h>
#include <stdio.h>
#include <string.h>
#include <unistd.h>

enum { ENDED = 0, TROUBLE = 1, USAGE = 2 };

static int say(int status, const char* what)
{
    fprintf(stderr, "agent: %s.\n", what);
    return status;
}

/* A client must not be greeted when its configuration cannot be kept. */
static int checkStore(Store* store)
{
    XML_DOM_Node* error = NULL;
    if (!storeEnter(store)) return say(TROUBLE, "the configuration cannot be locked");
    XML_DOM_Node* configuration = storeLoad(store, STORE_RUNNING, &error);
    storeLeave(store);
    XML_DOM_DelNode(configuration);
    if (configuration) return ENDED;
    const XML_DOM_Node* message = error ? childNamed(error, "error-message") : NULL;
    fprintf(stderr, "agent: %s: %s\n", store->files[STORE_RUNNING],
            message ? textOf(message) : "no memory");
    XML_DOM_DelNode(error);
    return TROUBLE;
}

static int runWithSchemas(const char* path, const Schema_Root* schemas)
{
    Store store;
    int status = TROUBLE;
    const char* unusable = storeOpen(&store, path, schemas);
    if (unusable) {
        fprintf(stderr, "agent: %s: %s\n", path, unusable);
    } else {
        status = checkStore(&store);
        const Session session = {STDIN_FILENO, STDOUT_FILENO, (unsigned long)getpid(), schemas,
                                 &store};
        const char* problem = status == ENDED ? sessionRun(&session) : NULL;
        if (problem) status = say(TROUBLE, problem);
    }
    storeClose(&store);
    return status;
}

static int run(const char* path)
{
    Schema_Root schemas;
    int status = TROUBLE;
    const uint64_t initialised = Schema_InitRoot(&schemas);
    const uint32_t netconf = netconf_schema_register(&schemas);
    const uint32_t system = system_schema_register(&schemas);
    if (initialised == XML_RET_OK && netconf == XML_RET_OK && system == XML_RET_OK)
        status = runWithSchemas(path, &schemas);
    else say(TROUBLE, "no memory for the schemas");
    if (system == XML_RET_OK) system_schema_deregister(&schemas);
    if (netconf == XML_RET_OK) netconf_schema_deregister(&schemas);
    Schema_ExitRoot(&schemas);
    return status;
}

/* What is opened must not become one of the standard streams: where one is missing, the null device
 * stands in. Nobody would hear a session without output. */
static bool checkStreams(void)
{
    bool heard = true;
    for (int file = STDIN_FILENO; file <= STDERR_FILENO; ++file) {
        if (fcntl(file, F_GETFD) >= 0) continue;
        if (file == STDOUT_FILENO) heard = false;
        if (open("/dev/null", O_RDWR) != file) return false;
    }
    return heard;
}

int main(int argc, char** argv)
{
    if (!checkStreams()) return say(TROUBLE, "standard output is closed");
    if (argc != 3 || strcmp(argv[1], "--config") != 0 || argv[2][0] == '\0')
        return fprintf(stderr, "usage: %s --config FILE\n", argv[0]), USAGE;
    signal(SIGPIPE, SIG_IGN); /* a client that has gone is a write that fails */
    return run(argv[2]);
}
