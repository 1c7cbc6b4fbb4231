#include "xsd/builtin_types.hpp"

#include "xsd/number_range.hpp"

// A character beyond ASCII, as in posix_class.hpp.
#define BEYOND "([^\001-\177][0-9][^\001-\177][0-9]|[^\001-\177][^0-9])"
#define NAME_START "([A-Za-z_:]|" BEYOND ")"
#define NAME_CHARACTER "([-A-Za-z0-9._:]|" BEYOND ")"
#define NCNAME_START "([A-Za-z_]|" BEYOND ")"
#define NCNAME_CHARACTER "([-A-Za-z0-9._]|" BEYOND ")"
#define NCNAME NCNAME_START NCNAME_CHARACTER "*"

#define WHITE "[ \t\n\r]*"
#define BASE64 "[A-Za-z0-9+/]" WHITE
// Groups of four; the last one may lack a character or two.
#define BASE64_TEXT                                                                                \
    WHITE "(" BASE64 BASE64 BASE64 BASE64 ")*(" BASE64 BASE64 "[AEIMQUYcgkosw048]" WHITE "=" WHITE \
          "|" BASE64 "[AQgw]" WHITE "=" WHITE "=" WHITE ")?"

#define ZONE "(Z|[-+](0[0-9]|1[0-3]):[0-5][0-9]|[-+]14:00)?"
#define YEAR "-?([1-9][0-9]{3,}|0[1-9][0-9]{2}|00[1-9][0-9]|000[1-9])"
#define MONTH "(0[1-9]|1[0-2])"
// A day of each year, or the 29th of February of a leap year by the Gregorian calendar.
#define MONTH_DAY                                                                                  \
    "((0[13578]|1[02])-(0[1-9]|[12][0-9]|3[01])|(0[469]|11)-(0[1-9]|[12][0-9]|30)"                 \
    "|02-(0[1-9]|1[0-9]|2[0-8]))"
#define LEAP_YEAR                                                                                  \
    "-?(([1-9][0-9]*)?[0-9][0-9](0[48]|[2468][048]|[13579][26])"                                   \
    "|([1-9][0-9]*)?(0[48]|[2468][048]|[13579][26])00|[1-9][0-9]*0000)"
#define DATE "(" YEAR "-" MONTH_DAY "|" LEAP_YEAR "-02-29)"
#define TIME_OF_DAY "(([01][0-9]|2[0-3]):[0-5][0-9]:[0-5][0-9](\\.[0-9]+)?|24:00:00(\\.0+)?)"

#define SECONDS "[0-9]+(\\.[0-9]+)?S"
#define TIME_PART "T([0-9]+H([0-9]+M)?(" SECONDS ")?|[0-9]+M(" SECONDS ")?|" SECONDS ")"
#define DURATION                                                                                   \
    "-?P([0-9]+Y([0-9]+M)?([0-9]+D)?(" TIME_PART ")?|[0-9]+M([0-9]+D)?(" TIME_PART                 \
    ")?|[0-9]+D(" TIME_PART ")?|" TIME_PART ")"

namespace netxml::xsd {
namespace {

// Without this the library would take "|" for a sign.
constexpr const char* kSigned = "[-+]?[0-9]+";

// clang-format off
constexpr BuiltinRow kBuiltins[] = {
    // name                 family            native           expression  item  kind  difference  ascii
    {"string",             Family::Text,      "string",        nullptr, "", SCHEMA_BUILTIN_STRING, nullptr, false},
    {"normalizedString",   Family::Text,      "string",        nullptr, "", SCHEMA_BUILTIN_STRING, nullptr, false},
    {"token",              Family::Text,      "string",        nullptr, "", SCHEMA_BUILTIN_STRING, nullptr, false},
    {"language",           Family::Text,      "string",        "[A-Za-z]{1,8}(-[A-Za-z0-9]{1,8})*", "", SCHEMA_BUILTIN_STRING, nullptr, true},
    {"Name",               Family::Text,      "string",        NAME_START NAME_CHARACTER "*", "", SCHEMA_BUILTIN_STRING, nullptr, false},
    {"NCName",             Family::Text,      "string",        NCNAME, "", SCHEMA_BUILTIN_STRING, nullptr, false},
    {"NMTOKEN",            Family::Text,      "string",        NAME_CHARACTER "+", "", SCHEMA_BUILTIN_STRING, nullptr, false},
    {"ID",                 Family::Text,      "string",        NCNAME, "", SCHEMA_BUILTIN_STRING, "that values of \"ID\" are unique is not checked", false},
    {"IDREF",              Family::Text,      "string",        NCNAME, "", SCHEMA_BUILTIN_STRING, "that a value of \"IDREF\" stands for an \"ID\" is not checked", false},
    {"ENTITY",             Family::Text,      "string",        NCNAME, "", SCHEMA_BUILTIN_STRING, "that a value of \"ENTITY\" names an entity is not checked", false},
    {"NMTOKENS",           Family::Text,      "",              nullptr, "NMTOKEN", SCHEMA_BUILTIN_STRING, nullptr, false},
    {"IDREFS",             Family::Text,      "",              nullptr, "IDREF", SCHEMA_BUILTIN_STRING, nullptr, false},
    {"ENTITIES",           Family::Text,      "",              nullptr, "ENTITY", SCHEMA_BUILTIN_STRING, nullptr, false},
    {"anySimpleType",      Family::Text,      "anySimpleType", nullptr, "", SCHEMA_BUILTIN_STRING, nullptr, false},
    {"anyURI",             Family::Text,      "string",        nullptr, "", SCHEMA_BUILTIN_STRING, nullptr, false},
    {"QName",              Family::Text,      "string",        "(" NCNAME ":)?" NCNAME, "", SCHEMA_BUILTIN_STRING, "that the prefix of a \"QName\" is declared is not checked", false},
    {"NOTATION",           Family::Text,      "string",        "(" NCNAME ":)?" NCNAME, "", SCHEMA_BUILTIN_STRING, "that a \"NOTATION\" is declared is not checked", false},
    {"boolean",            Family::Text,      "boolean",       nullptr, "", SCHEMA_BUILTIN_STRING, nullptr, true},
    {"decimal",            Family::Decimal,   "string",        "[-+]?([0-9]+(\\.[0-9]*)?|\\.[0-9]+)", "", SCHEMA_BUILTIN_STRING, nullptr, true},
    {"float",              Family::Float,     "string",        "[-+]?([0-9]+(\\.[0-9]*)?|\\.[0-9]+)([Ee][-+]?[0-9]+)?|-?INF|NaN", "", SCHEMA_BUILTIN_STRING, nullptr, true},
    {"double",             Family::Float,     "string",        "[-+]?([0-9]+(\\.[0-9]*)?|\\.[0-9]+)([Ee][-+]?[0-9]+)?|-?INF|NaN", "", SCHEMA_BUILTIN_STRING, nullptr, true},
    {"integer",            Family::Integer,   "string",        kSigned, "", SCHEMA_BUILTIN_INTEGER, nullptr, true},
    {"nonNegativeInteger", Family::Integer,   "string",        "\\+?[0-9]+|-0+", "", SCHEMA_BUILTIN_INTEGER, nullptr, true},
    {"positiveInteger",    Family::Integer,   "string",        "\\+?0*[1-9][0-9]*", "", SCHEMA_BUILTIN_INTEGER, nullptr, true},
    {"nonPositiveInteger", Family::Integer,   "string",        "-[0-9]+|\\+?0+", "", SCHEMA_BUILTIN_INTEGER, nullptr, true},
    {"negativeInteger",    Family::Integer,   "string",        "-0*[1-9][0-9]*", "", SCHEMA_BUILTIN_INTEGER, nullptr, true},
    {"long",               Family::Integer,   "long",          kSigned, "", SCHEMA_BUILTIN_LONG, nullptr, true},
    {"int",                Family::Integer,   "int",           kSigned, "", SCHEMA_BUILTIN_INT, nullptr, true},
    {"short",              Family::Integer,   "short",         kSigned, "", SCHEMA_BUILTIN_SHORT, nullptr, true},
    {"byte",               Family::Integer,   "byte",          kSigned, "", SCHEMA_BUILTIN_BYTE, nullptr, true},
    {"unsignedLong",       Family::Integer,   "unsignedLong",  kSigned, "", SCHEMA_BUILTIN_UNSIGNED_LONG, nullptr, true},
    {"unsignedInt",        Family::Integer,   "unsignedInt",   kSigned, "", SCHEMA_BUILTIN_UNSIGNED_INT, nullptr, true},
    {"unsignedShort",      Family::Integer,   "unsignedShort", kSigned, "", SCHEMA_BUILTIN_UNSIGNED_SHORT, nullptr, true},
    {"unsignedByte",       Family::Integer,   "unsignedByte",  kSigned, "", SCHEMA_BUILTIN_UNSIGNED_BYTE, nullptr, true},
    {"dateTime",           Family::Date,      "string",        DATE "T" TIME_OF_DAY ZONE, "", SCHEMA_BUILTIN_DATE_TIME, nullptr, true},
    {"date",               Family::Date,      "string",        DATE ZONE, "", SCHEMA_BUILTIN_DATE, nullptr, true},
    {"time",               Family::Date,      "string",        TIME_OF_DAY ZONE, "", SCHEMA_BUILTIN_TIME, nullptr, true},
    {"gYear",              Family::Date,      "string",        YEAR ZONE, "", SCHEMA_BUILTIN_G_YEAR, nullptr, true},
    {"gYearMonth",         Family::Date,      "string",        YEAR "-" MONTH ZONE, "", SCHEMA_BUILTIN_G_YEAR_MONTH, nullptr, true},
    {"gMonth",             Family::Date,      "string",        "--" MONTH ZONE, "", SCHEMA_BUILTIN_G_MONTH, nullptr, true},
    {"gMonthDay",          Family::Date,      "string",        "--(" MONTH "-(0[1-9]|[12][0-9])|(0[13-9]|1[0-2])-30|(0[13578]|1[02])-31)" ZONE, "", SCHEMA_BUILTIN_G_MONTH_DAY, nullptr, true},
    {"gDay",               Family::Date,      "string",        "---(0[1-9]|[12][0-9]|3[01])" ZONE, "", SCHEMA_BUILTIN_G_DAY, nullptr, true},
    {"duration",           Family::Duration,  "string",        DURATION, "", SCHEMA_BUILTIN_DURATION, nullptr, true},
    {"hexBinary",          Family::HexBinary, "string",        "([0-9A-Fa-f][0-9A-Fa-f])*", "", SCHEMA_BUILTIN_STRING, nullptr, true},
    {"base64Binary",       Family::Base64,    "string",        BASE64_TEXT, "", SCHEMA_BUILTIN_STRING, nullptr, true},
};
// clang-format on

}  // namespace

std::string itemExpression(const BuiltinRow& row)
{
    struct Range {
        std::string_view name;
        const char* lowest;  // without its minus
        const char* highest;
    };
    constexpr Range kRanges[] = {
        {"byte", "128", "127"},
        {"short", "32768", "32767"},
        {"int", "2147483648", "2147483647"},
        {"long", "9223372036854775808", "9223372036854775807"},
        {"unsignedByte", "0", "255"},
        {"unsignedShort", "0", "65535"},
        {"unsignedInt", "0", "4294967295"},
        {"unsignedLong", "0", "18446744073709551615"},
    };
    for (const Range& range : kRanges) {
        if (range.name == row.name) return integersBetween(range.lowest, range.highest);
    }
    if (row.name == "boolean") return "true|false|1|0";
    if (row.family == Family::Base64)
        return "([A-Za-z0-9+/]{4})*([A-Za-z0-9+/]{2}[AEIMQUYcgkosw048]=|[A-Za-z0-9+/][AQgw]==)?";
    if (row.expression) return row.expression;
    return row.family == Family::Text ? "[^ \t\n\r]+" : "";
}

const BuiltinRow* findBuiltin(std::string_view name)
{
    for (const BuiltinRow& row : kBuiltins) {
        if (row.name == name) return &row;
    }
    return nullptr;
}

}  // namespace netxml::xsd
