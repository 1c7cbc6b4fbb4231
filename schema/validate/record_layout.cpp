// The layout of every record that callers and generated code fill: fields in their order, naturally
// aligned, for pointers of 64 and of 32 bits. Changing one breaks every program that was linked.
#include "netxml/schema.h"

#include <type_traits>

namespace {

// The offset behind a number of pointers and then of 32-bit numbers.
constexpr std::size_t at(std::size_t pointers, std::size_t numbers = 0)
{
    return pointers * sizeof(void*) + numbers * sizeof(uint32_t);
}

// A size, rounded up to the alignment of a pointer.
constexpr std::size_t padded(std::size_t size)
{
    return (size + sizeof(void*) - 1) / sizeof(void*) * sizeof(void*);
}

}  // namespace

static_assert(sizeof(void*) == 8 || sizeof(void*) == 4);

#define NETXML_FIELD(record, field, offset) static_assert(offsetof(record, field) == (offset))
#define NETXML_RECORD(record, size)                                                                \
    static_assert(sizeof(record) == padded(size) && std::is_standard_layout_v<record>)

NETXML_FIELD(Schema_Facet, value, 0);
NETXML_FIELD(Schema_Facet, kind, at(1));
NETXML_FIELD(Schema_Facet, baseKind, at(1, 1));
NETXML_RECORD(Schema_Facet, at(1, 2));

NETXML_FIELD(Schema_SimpleType, members, 0);
NETXML_FIELD(Schema_SimpleType, facets, at(1));
NETXML_FIELD(Schema_SimpleType, name, at(2));
NETXML_FIELD(Schema_SimpleType, namespaceName, at(3));
NETXML_FIELD(Schema_SimpleType, kind, at(4));
NETXML_FIELD(Schema_SimpleType, facetCount, at(4, 1));
NETXML_FIELD(Schema_SimpleType, memberCount, at(4, 2));
NETXML_FIELD(Schema_SimpleType, flags, at(4, 3));
NETXML_RECORD(Schema_SimpleType, at(4, 3) + sizeof(uint16_t));

NETXML_FIELD(Schema_Object, def, 0);
NETXML_FIELD(Schema_Object, kind, at(1));
NETXML_RECORD(Schema_Object, at(1, 1));

NETXML_FIELD(Schema_ElementDecl, ref, 0);
NETXML_FIELD(Schema_ElementDecl, name, at(1));
NETXML_FIELD(Schema_ElementDecl, namespaceName, at(2));
NETXML_FIELD(Schema_ElementDecl, substitutionGroupName, at(3));
NETXML_FIELD(Schema_ElementDecl, substitutionGroupNamespace, at(4));
NETXML_FIELD(Schema_ElementDecl, type, at(5));
NETXML_FIELD(Schema_ElementDecl, value, at(6));
NETXML_FIELD(Schema_ElementDecl, minOccurs, at(7));
NETXML_FIELD(Schema_ElementDecl, maxOccurs, at(7, 1));
NETXML_FIELD(Schema_ElementDecl, typeKind, at(7, 2));
NETXML_FIELD(Schema_ElementDecl, form, at(7, 3));
NETXML_FIELD(Schema_ElementDecl, fixed, at(7, 4));
NETXML_FIELD(Schema_ElementDecl, abstract, at(7, 5));
NETXML_FIELD(Schema_ElementDecl, nillable, at(7, 5) + sizeof(uint16_t));
NETXML_RECORD(Schema_ElementDecl, at(7, 6));

NETXML_FIELD(Schema_AttributeDecl, ref, 0);
NETXML_FIELD(Schema_AttributeDecl, type, at(1));
NETXML_FIELD(Schema_AttributeDecl, name, at(2));
NETXML_FIELD(Schema_AttributeDecl, namespaceName, at(3));
NETXML_FIELD(Schema_AttributeDecl, value, at(4));
NETXML_FIELD(Schema_AttributeDecl, use, at(5));
NETXML_FIELD(Schema_AttributeDecl, form, at(5, 1));
NETXML_FIELD(Schema_AttributeDecl, fixed, at(5, 2));
NETXML_RECORD(Schema_AttributeDecl, at(5, 3));

NETXML_FIELD(Schema_AttributeWildcard, targetNamespace, 0);
NETXML_FIELD(Schema_AttributeWildcard, namespaceName, at(1));
NETXML_FIELD(Schema_AttributeWildcard, processContents, at(2));
NETXML_RECORD(Schema_AttributeWildcard, at(2, 1));

NETXML_FIELD(Schema_AttributeGroup, attributes, 0);
NETXML_FIELD(Schema_AttributeGroup, attributeGroups, at(1));
NETXML_FIELD(Schema_AttributeGroup, anyAttribute, at(2));
NETXML_FIELD(Schema_AttributeGroup, ref, at(3));
NETXML_FIELD(Schema_AttributeGroup, name, at(4));
NETXML_FIELD(Schema_AttributeGroup, namespaceName, at(5));
NETXML_FIELD(Schema_AttributeGroup, attributeCount, at(6));
NETXML_FIELD(Schema_AttributeGroup, attributeGroupCount, at(6, 1));
NETXML_RECORD(Schema_AttributeGroup, at(6, 2));

NETXML_FIELD(Schema_Wildcard, targetNamespace, 0);
NETXML_FIELD(Schema_Wildcard, namespaceName, at(1));
NETXML_FIELD(Schema_Wildcard, minOccurs, at(2));
NETXML_FIELD(Schema_Wildcard, maxOccurs, at(2, 1));
NETXML_FIELD(Schema_Wildcard, processContents, at(2, 2));
NETXML_RECORD(Schema_Wildcard, at(2, 3));

NETXML_FIELD(Schema_ModelGroup, particles, 0);
NETXML_FIELD(Schema_ModelGroup, minOccurs, at(1));
NETXML_FIELD(Schema_ModelGroup, maxOccurs, at(1, 1));
NETXML_FIELD(Schema_ModelGroup, particleCount, at(1, 2));
NETXML_FIELD(Schema_ModelGroup, compositor, at(1, 3));
NETXML_RECORD(Schema_ModelGroup, at(1, 4));

NETXML_FIELD(Schema_Derivation, anyAttribute, 0);
NETXML_FIELD(Schema_Derivation, attributes, at(1));
NETXML_FIELD(Schema_Derivation, attributeGroups, at(2));
NETXML_FIELD(Schema_Derivation, content, at(3));
NETXML_FIELD(Schema_Derivation, reserved, at(4));
NETXML_FIELD(Schema_Derivation, facets, at(5));
NETXML_FIELD(Schema_Derivation, base, at(6));
NETXML_FIELD(Schema_Derivation, kind, at(7));
NETXML_FIELD(Schema_Derivation, baseKind, at(7, 1));
NETXML_FIELD(Schema_Derivation, attributeCount, at(7, 2));
NETXML_FIELD(Schema_Derivation, facetCount, at(7, 3));
NETXML_FIELD(Schema_Derivation, attributeGroupCount, at(7, 4));
NETXML_RECORD(Schema_Derivation, at(7, 5));

NETXML_FIELD(Schema_ComplexType, attributes, 0);
NETXML_FIELD(Schema_ComplexType, attributeGroups, at(1));
NETXML_FIELD(Schema_ComplexType, derivation, at(2));
NETXML_FIELD(Schema_ComplexType, content, at(3));
NETXML_FIELD(Schema_ComplexType, reserved, at(4));
NETXML_FIELD(Schema_ComplexType, anyAttribute, at(5));
NETXML_FIELD(Schema_ComplexType, name, at(6));
NETXML_FIELD(Schema_ComplexType, namespaceName, at(7));
NETXML_FIELD(Schema_ComplexType, attributeCount, at(8));
NETXML_FIELD(Schema_ComplexType, attributeGroupCount, at(8, 1));
NETXML_FIELD(Schema_ComplexType, mixed, at(8, 2));
NETXML_FIELD(Schema_ComplexType, reservedFlag, at(8, 2) + sizeof(uint16_t));
NETXML_RECORD(Schema_ComplexType, at(8, 3));

NETXML_FIELD(Schema_ObjectList, items, 0);
NETXML_FIELD(Schema_ObjectList, capacity, at(1));
NETXML_FIELD(Schema_ObjectList, count, at(1, 1));
NETXML_RECORD(Schema_ObjectList, at(1, 2));

NETXML_FIELD(Schema_Root, simpleTypes, 0);
NETXML_FIELD(Schema_Root, attributes, at(1, 2));
NETXML_FIELD(Schema_Root, elements, at(2, 4));
NETXML_FIELD(Schema_Root, complexTypes, at(3, 6));
NETXML_FIELD(Schema_Root, reserved, at(4, 8));
NETXML_FIELD(Schema_Root, attributeGroups, at(5, 10));
NETXML_FIELD(Schema_Root, attributeFormDefault, at(6, 12));
NETXML_FIELD(Schema_Root, elementFormDefault, at(6, 13));
NETXML_RECORD(Schema_Root, at(6, 14));

NETXML_FIELD(Schema_DateTimeValue, zoneMinutes, 7 * sizeof(uint16_t));
NETXML_FIELD(Schema_DateTimeValue, fraction, 8 * sizeof(uint16_t));
NETXML_FIELD(Schema_DateTimeValue, zoneSign, 8 * sizeof(uint16_t) + 21);

NETXML_FIELD(Schema_ExtType, handler, 0);
NETXML_FIELD(Schema_ExtType, namespaceName, at(1));
NETXML_FIELD(Schema_ExtType, name, at(2));

NETXML_FIELD(Schema_SplitCtx, item, 0);
NETXML_FIELD(Schema_SplitCtx, cursor, at(1));
NETXML_FIELD(Schema_SplitCtx, separator, at(2));
NETXML_FIELD(Schema_SplitCtx, itemSize, at(3));

NETXML_FIELD(Schema_ValidateResult, code, 0);
NETXML_FIELD(Schema_ValidateResult, node, at(1));
NETXML_FIELD(Schema_ValidateResult, elementName, at(2));
NETXML_FIELD(Schema_ValidateResult, elementNamespace, at(3));
NETXML_FIELD(Schema_ValidateResult, attrName, at(4));
NETXML_FIELD(Schema_ValidateResult, attrNamespace, at(5));
NETXML_FIELD(Schema_ValidateResult, detail, at(6));
NETXML_RECORD(Schema_ValidateResult, at(6) + 1024);
