// What may stand where in a schema document, so that nothing misspelt is passed over.
#pragma once

#include "xsd/diagnostics.hpp"
#include "xsd/schema_tree.hpp"

namespace netxml::xsd {

// Reports every element and attribute that XML Schema 1.0 has not where it stands, and every value
// that is none of a fixed set. Attributes of other namespaces may stand anywhere, and anything
// inside of appinfo and documentation.
void checkGrammar(const SchemaFile& file, Diagnostics& diagnostics);

}  // namespace netxml::xsd
