// The numbers of schema records by their names in netxml/schema.h, as generated code writes them.
#pragma once

#include "netxml/schema.h"

#include <string>

namespace netxml::xsd {

std::string useName(Schema_AttributeUse use);
std::string formName(Schema_Form form);
std::string processName(Schema_ProcessContents process);
std::string compositorName(Schema_Compositor compositor);
std::string facetName(Schema_FacetKind kind);
std::string kindName(Schema_BuiltinKind kind);

}  // namespace netxml::xsd
