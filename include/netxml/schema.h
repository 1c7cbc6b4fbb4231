/**
 * @file
 * The names that the schema family rests on.
 *
 * This release exports no schema function: validation is not part of it, and this header holds the
 * namespace names only, so that a caller's sources include the same five headers from now on.
 */
#ifndef NETXML_SCHEMA_H
#define NETXML_SCHEMA_H

#include "netxml/base.h"

/** The namespace name of XML Schema. */
#define XML_NAMESPACE_SCHEMA "http://www.w3.org/2001/XMLSchema"
/** The namespace name of the attributes that a document uses to speak about its schema. */
#define XML_NAMESPACE_SCHEMA_INSTANCE "http://www.w3.org/2001/XMLSchema-instance"

#endif
