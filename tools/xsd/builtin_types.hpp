// The built-in types of XML Schema, and what stands for each one in records.
#pragma once

#include "netxml/schema.h"

#include <string>
#include <string_view>

namespace netxml::xsd {

// How a type's values compare in facets.
enum class Family {
    Text,
    Integer,
    Decimal,
    Float,  // compares as text
    Date,   // and times
    Duration,
    HexBinary,
    Base64,
};

struct BuiltinRow {
    std::string_view name;
    Family family;
    // The library's own type that values must be of, for Schema_BLDIN_...().
    std::string_view native;
    // What values must match besides, or null: where the library has no rule, or another one. Not
    // anchored.
    const char* expression;
    // The type of a list's items; empty when this is none.
    std::string_view item;
    // Whose rules compare values in facets.
    Schema_BuiltinKind kind;
    // Where the records differ from the type, for the diagnostics; or null.
    const char* difference;
    // Values are in ASCII.
    bool ascii;
};

// Nothing for a name that XML Schema does not have.
const BuiltinRow* findBuiltin(std::string_view name);

// What an item of a list of this type matches: no white space is in it.
std::string itemExpression(const BuiltinRow& row);

}  // namespace netxml::xsd
