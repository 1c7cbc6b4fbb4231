/**
 * @file
 * All of netxml. Each of the headers below may also be included alone.
 */
#ifndef NETXML_NETXML_H
#define NETXML_NETXML_H

#include "netxml/base.h"
#include "netxml/dom.h"
#include "netxml/io.h"
#include "netxml/parser.h"
#include "netxml/schema.h"

#endif
