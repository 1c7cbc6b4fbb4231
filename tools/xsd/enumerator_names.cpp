#include "xsd/enumerator_names.hpp"

#include <span>

namespace netxml::xsd {
namespace {

struct Row {
    std::uint32_t number;
    const char* name;
};

#define NAME(enumerator)                                                                           \
    {                                                                                              \
        enumerator, #enumerator                                                                    \
    }
constexpr Row kUses[] = {
    NAME(SCHEMA_USE_OPTIONAL),
    NAME(SCHEMA_USE_PROHIBITED),
    NAME(SCHEMA_USE_REQUIRED),
};
constexpr Row kForms[] = {
    NAME(SCHEMA_FORM_DEFAULT),
    NAME(SCHEMA_FORM_QUALIFIED),
    NAME(SCHEMA_FORM_UNQUALIFIED),
};
constexpr Row kProcesses[] = {
    NAME(SCHEMA_PROCESS_STRICT),
    NAME(SCHEMA_PROCESS_LAX),
    NAME(SCHEMA_PROCESS_SKIP),
};
constexpr Row kCompositors[] = {
    NAME(SCHEMA_COMPOSITOR_ALL),
    NAME(SCHEMA_COMPOSITOR_CHOICE),
    NAME(SCHEMA_COMPOSITOR_SEQUENCE),
};
constexpr Row kFacets[] = {
    NAME(SCHEMA_FACET_ENUMERATION),   NAME(SCHEMA_FACET_FRACTION_DIGITS),
    NAME(SCHEMA_FACET_LENGTH),        NAME(SCHEMA_FACET_MAX_EXCLUSIVE),
    NAME(SCHEMA_FACET_MAX_INCLUSIVE), NAME(SCHEMA_FACET_MAX_LENGTH),
    NAME(SCHEMA_FACET_MIN_EXCLUSIVE), NAME(SCHEMA_FACET_MIN_INCLUSIVE),
    NAME(SCHEMA_FACET_MIN_LENGTH),    NAME(SCHEMA_FACET_PATTERN),
    NAME(SCHEMA_FACET_TOTAL_DIGITS),
};
// Those by whose rules facets compare.
constexpr Row kKinds[] = {
    NAME(SCHEMA_BUILTIN_BYTE),          NAME(SCHEMA_BUILTIN_SHORT),
    NAME(SCHEMA_BUILTIN_UNSIGNED_BYTE), NAME(SCHEMA_BUILTIN_UNSIGNED_SHORT),
    NAME(SCHEMA_BUILTIN_INT),           NAME(SCHEMA_BUILTIN_LONG),
    NAME(SCHEMA_BUILTIN_UNSIGNED_INT),  NAME(SCHEMA_BUILTIN_UNSIGNED_LONG),
    NAME(SCHEMA_BUILTIN_INTEGER),       NAME(SCHEMA_BUILTIN_DURATION),
    NAME(SCHEMA_BUILTIN_DATE_TIME),     NAME(SCHEMA_BUILTIN_DATE),
    NAME(SCHEMA_BUILTIN_TIME),          NAME(SCHEMA_BUILTIN_G_YEAR),
    NAME(SCHEMA_BUILTIN_G_MONTH),       NAME(SCHEMA_BUILTIN_G_DAY),
    NAME(SCHEMA_BUILTIN_G_YEAR_MONTH),  NAME(SCHEMA_BUILTIN_G_MONTH_DAY),
    NAME(SCHEMA_BUILTIN_STRING),
};
#undef NAME

// A number without a name stands for itself.
std::string nameIn(std::span<const Row> rows, std::uint32_t number)
{
    for (const Row& row : rows) {
        if (row.number == number) return row.name;
    }
    return std::to_string(number) + "u";
}

}  // namespace

std::string useName(Schema_AttributeUse use)
{
    return nameIn(kUses, use);
}

std::string formName(Schema_Form form)
{
    return nameIn(kForms, form);
}

std::string processName(Schema_ProcessContents process)
{
    return nameIn(kProcesses, process);
}

std::string compositorName(Schema_Compositor compositor)
{
    return nameIn(kCompositors, compositor);
}

std::string facetName(Schema_FacetKind kind)
{
    return nameIn(kFacets, kind);
}

std::string kindName(Schema_BuiltinKind kind)
{
    return nameIn(kKinds, kind);
}

}  // namespace netxml::xsd
