// The parser's rules written down plainly: one character at a time, one list for everything, no
// fast path. The library's scanner is compared with it.
#pragma once

#include "netxml/netxml.h"

// Parses a stream and calls the handler's slots as XML_Parser_ByMem() and its siblings do.
uint32_t plainParse(XML_IO_InStream* stream, const XML_SAX_Handler* handler);
