// The one rule by which namespaces of the document meet namespaces of the schema.
#pragma once

namespace netxml {

// Tells whether the namespace of an element or attribute satisfies a constraint: "##any",
// "##other", one name, or several between single spaces. `target` is what "##other" excludes.
bool namespaceMatches(const char* name, const char* constraint, const char* target) noexcept;

}  // namespace netxml
