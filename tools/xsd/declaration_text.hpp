// A declaration as a comment in generated code shows it.
#pragma once

#include "xsd/schema_tree.hpp"

#include <string>

namespace netxml::xsd {

// The start tag with its attributes, in one line of ASCII that ends no comment.
std::string declarationText(const SchemaNode& node);

}  // namespace netxml::xsd
