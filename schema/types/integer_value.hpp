// Values of the thirteen integer types.
#pragma once

#include "netxml/schema.h"

#include <cstddef>
#include <cstdint>

namespace netxml {

// byte, short and their unsigned kin: converted and compared as numbers.
bool smallInteger(Schema_BuiltinKind kind, const char* value) noexcept;

// int and all larger ones: compared as text, without conversion.
bool largeInteger(Schema_BuiltinKind kind, const char* value) noexcept;

// What a text of 1 to 18 digits, and nothing else, may be worth in one of these types: minimum
// above maximum where it is always refused.
struct DigitRange {
    std::int64_t minimum;
    std::int64_t maximum;
};
constexpr std::size_t kMostDigits = 18;
DigitRange digitRange(Schema_BuiltinKind kind) noexcept;

// Reads such a text; false for any other.
bool readDigits(const char* text, std::int64_t& number) noexcept;

constexpr bool isIntegerKind(Schema_BuiltinKind kind) noexcept
{
    return kind >= SCHEMA_BUILTIN_BYTE && kind <= SCHEMA_BUILTIN_NON_NEGATIVE_INTEGER;
}

}  // namespace netxml
