#include "tests/support/plain_rules.hpp"

#include <cstdio>

namespace plain {

// A union by its members, a built-in type by its lexical rule, a network type by its handler, and a
// restriction by its base and then its facets.
bool Values::check(const Schema_SimpleType* type, const char* value)
{
    if (!type) throw BrokenSchema{};
    if (!value) value = "";
    if (!open_.insert(type).second) throw BrokenSchema{};
    struct Close {
        std::set<const Schema_SimpleType*>& open;
        const Schema_SimpleType* type;
        ~Close() { open.erase(type); }
    };
    const Close close{open_, type};

    if (type->memberCount > 1) {
        if (!type->members) throw BrokenSchema{};
        for (uint32_t i = 0; i < type->memberCount; ++i)
            if (check(type->members[i], value)) return true;
        std::snprintf(detail_, sizeof detail_, "%s does not match any member of union", value);
        return false;
    }
    if (type->kind > SCHEMA_BUILTIN_LAST) throw BrokenSchema{};
    if (type->kind != SCHEMA_BUILTIN_NONE)
        return Schema_CheckBaseType(type, value, sizeof detail_, detail_) == 1;
    if (const Schema_ExtType* entry = Schema_FoundZynBltInType(type->name, type->namespaceName))
        return Schema_checkZynBltInType(entry, value, sizeof detail_, detail_) == 1;
    if (!type->members) throw BrokenSchema{};
    return check(type->members[0], value) && checkFacets(type->facets, type->facetCount, value);
}

// Every facet must pass, but of several enumerations one is enough.
bool Values::checkFacets(const Schema_Facet* facets, uint32_t count, const char* value)
{
    bool listed = false;
    bool matched = false;
    for (uint32_t i = 0; i < count; ++i) listed |= facets[i].kind == SCHEMA_FACET_ENUMERATION;
    for (uint32_t i = 0; i < count; ++i) {
        const bool passed = Schema_CheckFacet(&facets[i], value ? value : "", sizeof detail_,
                                              detail_) == XML_RET_OK;
        if (facets[i].kind == SCHEMA_FACET_ENUMERATION) matched |= passed;
        else if (!passed) return false;
    }
    return !listed || matched;
}

bool Values::checkFixed(const char* fixed, const char* value)
{
    if (equal(fixed, value)) return true;
    if (equal(fixed, "")) std::snprintf(detail_, sizeof detail_, "must be empty");
    else std::snprintf(detail_, sizeof detail_, "must equal %s", fixed);
    return false;
}

bool Values::checkLanguage(const char* value)
{
    if (!value) value = "";
    if (Schema_LanguageHandler(value) == 1) return true;
    std::snprintf(detail_, sizeof detail_, "%.20s is not a valid value for %s:%s", value,
                  XML_NAMESPACE_XML, "lang");
    return false;
}

}  // namespace plain

bool plainAccepts(const Schema_SimpleType* type, const char* value)
{
    try {
        return plain::Values{}.check(type, value);
    } catch (const plain::BrokenSchema&) {
        return false;
    }
}
