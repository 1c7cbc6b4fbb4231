/**
 * @file
 * A schema as a program carries it: the records of interfaces.xsd and interfaces-qos.xsd.
 *
 * The files interfaces_*.c hold a static record for each declaration, in the style of a generator.
 * The records are shared by all roots.
 */
#ifndef INTERFACES_SCHEMA_H
#define INTERFACES_SCHEMA_H

#include <netxml/schema.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The namespace of devices, interfaces, routes and access lists. */
#define INTERFACES_NAMESPACE "urn:example:network"
/** The namespace of what a vendor adds. */
#define INTERFACES_QOS_NAMESPACE "urn:example:network:qos"

/**
 * Registers all top-level declarations in a root that Schema_InitRoot() has prepared, and tells the
 * network types that they belong to ::INTERFACES_NAMESPACE.
 *
 * That and the first call change what all roots share: the first schema must be registered, and the
 * last one deregistered, while no other thread validates.
 *
 * Returns ::XML_RET_OK, or the first failure; everything is as it was then.
 */
uint32_t interfaces_schema_register(Schema_Root* root);

/** Takes out what interfaces_schema_register() has registered in this root. */
void interfaces_schema_deregister(Schema_Root* root);

#ifdef __cplusplus
}
#endif

#endif
