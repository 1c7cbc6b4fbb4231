// The built-in simple types: what messages call them, and how their values are checked.
#pragma once

#include "netxml/schema.h"

#include <cstddef>

namespace netxml {

// Tells whether a value that is not empty is valid for a kind.
using LexicalRule = bool (*)(Schema_BuiltinKind kind, const char* value);

struct BuiltinType {
    Schema_BuiltinKind kind;
    const char* printed;  // what messages call the type
    LexicalRule rule;     // nullptr: every value is refused
};

inline constexpr std::size_t kBuiltinTypeCount = 48;

// The row of a kind, or nullptr beyond the table.
const BuiltinType* builtinType(Schema_BuiltinKind kind) noexcept;

}  // namespace netxml
