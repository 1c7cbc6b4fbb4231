#include "tests/support/plain_rules.hpp"

#include <algorithm>
#include <cstring>

namespace plain {
namespace {

// What any element of a simple type may carry; only one of them has a rule for its value.
struct CommonAttribute {
    bool language;
    const char* nameSpace;
    const char* name;
};

// clang-format off
constexpr CommonAttribute kCommonAttributes[] = {
    {true,  XML_NAMESPACE_XML,             "lang"},
    {false, XML_NAMESPACE_XML,             "space"},
    {false, XML_NAMESPACE_XML,             "base"},
    {false, XML_NAMESPACE_SCHEMA_INSTANCE, "nil"},
};
// clang-format on

}  // namespace

Run::Attributes Run::attributesOf(const XML_DOM_Node* element)
{
    Attributes all;
    const XML_DOM_Attr* attr = XML_DOM_GetFirstAttr(element);
    for (; attr; attr = XML_DOM_GetNextAttr(attr)) {
        Attribute attribute{attr, nullptr, nullptr, true};
        XML_DOM_GetAttrNameSpace(attr, &attribute.name, &attribute.nameSpace);
        all.push_back(attribute);
    }
    return all;
}

void Run::failAttribute(Schema_ErrorCode code, const XML_DOM_Node* element,
                        const Attribute& attribute)
{
    result_.attrName = attribute.name;
    result_.attrNamespace = attribute.nameSpace;
    if (code == SCHEMA_ERROR_ATTRIBUTE_UNEXPECTED)
        result_.elementName = XML_DOM_GetNodeName(element);
    else std::strcpy(result_.detail, values_.detail());
    fail(code, element);
}

void Run::checkSimpleAttributes(const XML_DOM_Node* element)
{
    for (const Attribute& attribute : attributesOf(element)) {
        const auto* common = std::find_if(
            std::begin(kCommonAttributes), std::end(kCommonAttributes), [&](const auto& row) {
                return equal(row.nameSpace, attribute.nameSpace) && equal(row.name, attribute.name);
            });
        if (common == std::end(kCommonAttributes))
            failAttribute(SCHEMA_ERROR_ATTRIBUTE_UNEXPECTED, element, attribute);
        if (common->language &&
            !values_.checkLanguage(XML_DOM_GetAttrValByHandle(attribute.handle)))
            failAttribute(SCHEMA_ERROR_ATTRIBUTE_VALUE, element, attribute);
    }
}

void Run::checkComplexAttributes(const XML_DOM_Node* element, const Schema_ComplexType& type)
{
    Attributes all = attributesOf(element);
    useType(element, all, type);
    for (const Attribute& attribute : all)
        if (attribute.pending) failAttribute(SCHEMA_ERROR_ATTRIBUTE_UNEXPECTED, element, attribute);
}

void Run::useType(const XML_DOM_Node* element, Attributes& all, const Schema_ComplexType& type)
{
    useScope(element, all, type.attributes, type.attributeCount, type.anyAttribute);
    if (type.derivation) useDerivation(element, all, *type.derivation);
    useGroups(element, all, type.attributeGroups, type.attributeGroupCount);
}

void Run::useDerivation(const XML_DOM_Node* element, Attributes& all, const Schema_Derivation& from)
{
    useScope(element, all, from.attributes, from.attributeCount, from.anyAttribute);
    useGroups(element, all, from.attributeGroups, from.attributeGroupCount);
    if (from.baseKind == SCHEMA_KIND_COMPLEX_TYPE)
        useType(element, all, *static_cast<const Schema_ComplexType*>(from.base));
}

void Run::useGroups(const XML_DOM_Node* element, Attributes& all,
                    const Schema_AttributeGroup* const* groups, uint32_t count)
{
    for (uint32_t i = 0; i < count; ++i) {
        const Schema_AttributeGroup* group = follow(groups[i]).decl;
        if (std::find(openGroups_.begin(), openGroups_.end(), group) != openGroups_.end())
            throw BrokenSchema{};
        openGroups_.push_back(group);
        useGroups(element, all, group->attributeGroups, group->attributeGroupCount);
        useScope(element, all, group->attributes, group->attributeCount, group->anyAttribute);
        openGroups_.pop_back();
    }
}

void Run::useScope(const XML_DOM_Node* element, Attributes& all,
                   const Schema_AttributeDecl* const* uses, uint32_t count,
                   const Schema_AttributeWildcard* wildcard)
{
    for (uint32_t i = 0; i < count; ++i) useAttribute(element, all, uses[i]);
    if (wildcard) useWildcard(element, all, *wildcard);
}

void Run::useAttribute(const XML_DOM_Node* element, Attributes& all,
                       const Schema_AttributeDecl* record)
{
    const Followed<Schema_AttributeDecl> use = follow(record);
    const char* expected = names_.expectedNamespace(use);
    for (Attribute& attribute : all) {
        if (!equal(attribute.name, use.decl->name) || !equal(attribute.nameSpace, expected))
            continue;
        applyAttribute(element, attribute, *use.decl);
        return;
    }
    if (use.decl->use != SCHEMA_USE_REQUIRED) return;
    result_.attrName = use.decl->name;
    result_.attrNamespace = use.decl->namespaceName;
    fail(SCHEMA_ERROR_ATTRIBUTE_MISSING, element);
}

void Run::applyAttribute(const XML_DOM_Node* element, Attribute& attribute,
                         const Schema_AttributeDecl& decl)
{
    if (decl.use == SCHEMA_USE_PROHIBITED)
        failAttribute(SCHEMA_ERROR_ATTRIBUTE_UNEXPECTED, element, attribute);
    const char* value = XML_DOM_GetAttrValByHandle(attribute.handle);
    const bool valid =
        decl.fixed == 1 ? values_.checkFixed(decl.value, value) : values_.check(decl.type, value);
    if (!valid) failAttribute(SCHEMA_ERROR_ATTRIBUTE_VALUE, element, attribute);
    attribute.pending = false;
}

void Run::useWildcard(const XML_DOM_Node* element, Attributes& all,
                      const Schema_AttributeWildcard& wildcard)
{
    for (Attribute& attribute : all) {
        if (!attribute.pending || !namespaceMatches(attribute.nameSpace, wildcard.namespaceName,
                                                    wildcard.targetNamespace))
            continue;
        if (wildcard.processContents == SCHEMA_PROCESS_SKIP) attribute.pending = false;
        else if (const auto* top = names_.findAttribute(attribute.name, attribute.nameSpace))
            applyAttribute(element, attribute, *follow(top).decl);
        else if (wildcard.processContents == SCHEMA_PROCESS_LAX) attribute.pending = false;
    }
}

}  // namespace plain
