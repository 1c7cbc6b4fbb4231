/* Validates each file on a thread of its own, against one schema. */
#include "device_schema.h"

#include <netxml/netxml.h>
#include <pthread.h>
#include <stdio.h>

enum { kMostFiles = 16 };

// begin: job
typedef struct Job {
    const char* file;
    const Schema_Root* schema;  // of all threads; nobody changes it
    Schema_ErrorCode code;
    int read;
} Job;

static void* run(void* argument)
{
    Job* job = argument;
    XML_DOM_Node* root = XML_DOM_BuildTreeByFile(job->file, 0, NULL);  // this thread's own
    Schema_ValidateResult result;
    job->read = root && Schema_ValidateXml(root, job->schema, &result) == XML_RET_OK;
    if (job->read) job->code = result.code;
    XML_DOM_DelNode(root);
    return NULL;
}
// end: job

int main(int argc, char** argv)
{
    if (argc > kMostFiles) return fprintf(stderr, "threads: too many files\n"), 2;
    // begin: start
    Schema_Root schema;  // filled before the first thread begins
    if (Schema_InitRoot(&schema) != XML_RET_OK || device_schema_register(&schema) != XML_RET_OK)
        return Schema_ExitRoot(&schema), 1;
    Job jobs[kMostFiles];
    pthread_t threads[kMostFiles];
    int started = 0;
    for (int i = 1; i < argc; ++i) {
        jobs[started] = (Job){argv[i], &schema, SCHEMA_VALID, 0};
        if (pthread_create(&threads[started], NULL, run, &jobs[started]) == 0) ++started;
    }
    for (int i = 0; i < started; ++i) pthread_join(threads[i], NULL);
    device_schema_deregister(&schema);  // and emptied after the last one
    Schema_ExitRoot(&schema);
    // end: start
    for (int i = 0; i < started; ++i) {
        if (!jobs[i].read) printf("%s: cannot be read\n", jobs[i].file);
        else if (jobs[i].code == SCHEMA_VALID) printf("%s: valid\n", jobs[i].file);
        else printf("%s: violation %u\n", jobs[i].file, (unsigned)jobs[i].code);
    }
    return started == argc - 1 ? 0 : 1;
}
