/* The schema of the configurations as records. config.xsd says the same to the other libraries. */
#ifndef NETXML_BENCH_CONFIG_SCHEMA_H
#define NETXML_BENCH_CONFIG_SCHEMA_H

#include "netxml/schema.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Completes the records and registers the document element in an initialised root. Returns what
 * Schema_RegTopObject() returned. */
uint32_t config_schema_register(Schema_Root* root);

/* Takes it out again. */
void config_schema_deregister(Schema_Root* root);

#ifdef __cplusplus
}
#endif

#endif
