// Checking a value by a built-in type.
#include "schema/types/builtin_table.hpp"
#include "support/format.hpp"

#include <cstdint>

namespace netxml {
namespace {

// What a sentence needs beside the value, so that the value is quoted as far as there is room.
constexpr std::uint32_t kSentenceRoom = 111;

// base64Binary and string have an empty value; every other type must have one.
bool mayBeEmpty(Schema_BuiltinKind kind) noexcept
{
    return kind == SCHEMA_BUILTIN_BASE64_BINARY || kind == SCHEMA_BUILTIN_STRING;
}

void explainInvalid(const char* value, const char* typeName, std::uint32_t size, char* to) noexcept
{
    const std::size_t quoted = size >= kSentenceRoom ? size - kSentenceRoom : size;
    formatTexts(to, size, "%s is an invalid value of %s type value.", {{value, quoted}, typeName});
}

}  // namespace
}  // namespace netxml

using namespace netxml;

uint32_t SCHEMA_CheckBaseTypeNonNull(Schema_BuiltinKind kind, const char* value)
{
    const BuiltinType* row = builtinType(kind);
    return row && row->rule && value && row->rule(kind, value) ? 1 : 0;
}

uint32_t Schema_CheckBaseType(const Schema_SimpleType* type, const char* value, uint32_t bufSize,
                              char* errBuf)
{
    if (!type) return 0;
    if (type->kind == SCHEMA_BUILTIN_ANY_SIMPLE_TYPE) return 1;
    const BuiltinType* row = builtinType(type->kind);
    const char* name = row ? row->printed : "";
    if (!value || *value == '\0') {
        if (mayBeEmpty(type->kind)) return 1;
        formatTexts(errBuf, bufSize, "%s cannot be empty.", {name});
        return 0;
    }
    if (SCHEMA_CheckBaseTypeNonNull(type->kind, value) == 1) return 1;
    explainInvalid(value, name, bufSize, errBuf);
    return 0;
}
