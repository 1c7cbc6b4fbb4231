// Values of the thirteen integer types.
#pragma once

#include "netxml/schema.h"

namespace netxml {

// byte, short and their unsigned kin: converted and compared as numbers.
bool smallInteger(Schema_BuiltinKind kind, const char* value) noexcept;

// int and all larger ones: compared as text, without conversion.
bool largeInteger(Schema_BuiltinKind kind, const char* value) noexcept;

}  // namespace netxml
