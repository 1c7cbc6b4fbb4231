#include "schema/types/builtin_table.hpp"

#include "netxml/parser.h"
#include "schema/types/date_time.hpp"
#include "schema/types/duration.hpp"
#include "schema/types/integer_value.hpp"
#include "schema/types/text_shapes.hpp"

namespace netxml {
namespace {

bool anyValue(Schema_BuiltinKind, const char* value)
{
    return *value != '\0';
}

bool booleanValue(Schema_BuiltinKind, const char* value)
{
    return isBoolean(value);
}

bool hexValue(Schema_BuiltinKind, const char* value)
{
    return isHexBinary(value);
}

bool base64Value(Schema_BuiltinKind, const char* value)
{
    return isBase64Binary(value);
}

bool uriValue(Schema_BuiltinKind, const char* value)
{
    return isAnyUri(value);
}

bool nameValue(Schema_BuiltinKind, const char* value)
{
    return XML_CheckQName(value) == XML_RET_OK;
}

bool languageValue(Schema_BuiltinKind, const char* value)
{
    return Schema_LanguageHandler(value) != 0;
}

bool durationValue(Schema_BuiltinKind, const char* value)
{
    return isDuration(value);
}

bool dateTimeValue(Schema_BuiltinKind kind, const char* value)
{
    Schema_DateTimeValue parsed;
    return parseDateTime(kind, value, parsed);
}

// Row i describes kind i.
// Kept: kind 20 prints "datetime", kind 46 "ENTITYS"; the record `language` has kind 34, so it
// prints "NOTATION", and kind 37 has no rule.
// clang-format off
constexpr BuiltinType kBuiltinTypes[] = {
    {0,  "",                   nullptr},
    {1,  "anySimpleType",      nullptr},
    {2,  "anyType",            nullptr},
    {3,  "byte",               smallInteger},
    {4,  "short",              smallInteger},
    {5,  "unsignedByte",       smallInteger},
    {6,  "unsignedShort",      smallInteger},
    {7,  "int",                largeInteger},
    {8,  "long",               largeInteger},
    {9,  "unsignedInt",        largeInteger},
    {10, "unsignedLong",       largeInteger},
    {11, "integer",            largeInteger},
    {12, "positiveInteger",    largeInteger},
    {13, "nonPositiveInteger", largeInteger},
    {14, "negativeInteger",    largeInteger},
    {15, "nonNegativeInteger", largeInteger},
    {16, "decimal",            nullptr},
    {17, "double",             nullptr},
    {18, "float",              nullptr},
    {19, "duration",           durationValue},
    {20, "datetime",           dateTimeValue},
    {21, "date",               dateTimeValue},
    {22, "time",               dateTimeValue},
    {23, "gYear",              dateTimeValue},
    {24, "gMonth",             dateTimeValue},
    {25, "gDay",               dateTimeValue},
    {26, "gYearMonth",         dateTimeValue},
    {27, "gMonthDay",          dateTimeValue},
    {28, "string",             anyValue},
    {29, "boolean",            booleanValue},
    {30, "hexBinary",          hexValue},
    {31, "base64Binary",       base64Value},
    {32, "anyURI",             uriValue},
    {33, "QName",              nameValue},
    {34, "NOTATION",           languageValue},
    {35, "normalizedString",   nullptr},
    {36, "token",              nullptr},
    {37, "language",           nullptr},
    {38, "NMTOKEN",            nullptr},
    {39, "NMTOKENS",           nullptr},
    {40, "Name",               nullptr},
    {41, "NCName",             nullptr},
    {42, "ID",                 nullptr},
    {43, "IDREF",              nullptr},
    {44, "ENTITY",             nullptr},
    {45, "IDREFS",             nullptr},
    {46, "ENTITYS",            nullptr},
    {47, "",                   nullptr},
};
// clang-format on

constexpr bool kindsAreIndexes() noexcept
{
    for (std::size_t i = 0; i < kBuiltinTypeCount; ++i) {
        if (kBuiltinTypes[i].kind != i) return false;
    }
    return true;
}
static_assert(sizeof kBuiltinTypes / sizeof kBuiltinTypes[0] == kBuiltinTypeCount);
static_assert(kindsAreIndexes());

}  // namespace

const BuiltinType* builtinType(Schema_BuiltinKind kind) noexcept
{
    return kind < kBuiltinTypeCount ? &kBuiltinTypes[kind] : nullptr;
}

}  // namespace netxml
