#include "schema/validate/attribute_rules.hpp"

#include "schema/validate/declaration.hpp"
#include "support/bounded.hpp"
#include "support/format.hpp"
#include "support/text.hpp"

#include <cstdint>

namespace netxml {
namespace {

// An attribute that any element of a simple type may have.
struct CommonAttribute {
    std::uint32_t (*isValid)(const char* value);  // nullptr: every value is
    const char* namespaceName;
    const char* name;
};

constexpr CommonAttribute kCommonAttributes[] = {
    {Schema_LanguageHandler, XML_NAMESPACE_XML, "lang"},
    {nullptr, XML_NAMESPACE_XML, "space"},
    {nullptr, XML_NAMESPACE_XML, "base"},
    {nullptr, XML_NAMESPACE_SCHEMA_INSTANCE, "nil"},
};

const CommonAttribute* findCommon(const XML_DOM_Attr& attr) noexcept
{
    for (const CommonAttribute& row : kCommonAttributes) {
        if (sameText(row.name, attr.name) && sameText(row.namespaceName, namespaceOf(attr)))
            return &row;
    }
    return nullptr;
}

}  // namespace

bool AttributeRules::checkSimple(const XML_DOM_Node* element) noexcept
{
    constexpr std::size_t kQuotedBytes = 20;
    for (const XML_DOM_Attr* attr = element->firstAttr; attr; attr = attr->next) {
        const CommonAttribute* row = findCommon(*attr);
        if (!row) return unexpected(*attr);
        if (!row->isValid || row->isValid(attr->value) != 0) continue;
        formatTexts(values_.detail(), kDetailSize, "%s is not a valid value for %s:%s",
                    {{attr->value, kQuotedBytes}, row->namespaceName, row->name});
        return invalid(*attr);
    }
    return true;
}

bool AttributeRules::checkComplex(const XML_DOM_Node* element,
                                  const Schema_ComplexType& type) noexcept
{
    AttributeSet set;
    if (!set.fill(element, key_)) return verdict_.fail();
    AttributeScopes scopes{type, memory_, groups_};
    AttributeScope scope{};
    AttributeScopes::Next next = scopes.next(scope);
    for (; next == AttributeScopes::Next::Scope; next = scopes.next(scope)) {
        if (!applyScope(element, set, scope)) return false;
    }
    if (next == AttributeScopes::Next::Broken) return verdict_.fail();
    for (const AttributeSet::Item& item : set) {
        if (item.pending) return unexpected(*item.attr);
    }
    return true;
}

bool AttributeRules::applyScope(const XML_DOM_Node* element, AttributeSet& set,
                                const AttributeScope& scope) noexcept
{
    if (scope.count != 0 && !scope.uses) return verdict_.fail();
    for (std::uint32_t i = 0; i < scope.count; ++i) {
        if (!applyUse(element, set, scope.uses[i])) return false;
    }
    return !scope.wildcard || applyWildcard(set, *scope.wildcard);
}

bool AttributeRules::applyUse(const XML_DOM_Node* element, AttributeSet& set,
                              const Schema_AttributeDecl* use) noexcept
{
    const Schema_AttributeDecl* final = use ? resolve(use) : nullptr;
    if (!final) return verdict_.fail();
    AttributeSet::Item* item =
        set.find(final->name, expectedNamespace(*use, *final, root_.attributeFormDefault));
    if (!item) return final->use != SCHEMA_USE_REQUIRED || missing(element, *final);
    item->pending = false;
    return apply(*item->attr, *final);
}

// Takes what is pending and fits. A strict wildcard leaves what no top-level declaration knows.
bool AttributeRules::applyWildcard(AttributeSet& set,
                                   const Schema_AttributeWildcard& wildcard) noexcept
{
    for (AttributeSet::Item& item : set) {
        if (!item.pending || !namespaceMatches(item.namespaceName(), wildcard.namespaceName,
                                               wildcard.targetNamespace))
            continue;
        const Schema_AttributeDecl* decl =
            wildcard.processContents == SCHEMA_PROCESS_SKIP ? nullptr : topLevel(item);
        if (decl) {
            const Schema_AttributeDecl* final = resolve(decl);
            if (!final) return verdict_.fail();
            if (!apply(*item.attr, *final)) return false;
        }
        item.pending = !decl && wildcard.processContents != SCHEMA_PROCESS_SKIP &&
                       wildcard.processContents != SCHEMA_PROCESS_LAX;
    }
    return true;
}

// The first top-level attribute of the item's name and namespace, or nullptr.
const Schema_AttributeDecl* AttributeRules::topLevel(const AttributeSet::Item& item) const noexcept
{
    return firstDeclaration<Schema_AttributeDecl>(root_.attributes, [&](const auto& decl) noexcept {
        return isCalled(decl, item.attr->name, item.namespaceName());
    });
}

// An attribute that stands, against its declaration. A fixed value is compared and not typed.
bool AttributeRules::apply(const XML_DOM_Attr& attr, const Schema_AttributeDecl& decl) noexcept
{
    if (decl.use == SCHEMA_USE_PROHIBITED) return unexpected(attr);
    if (decl.fixed == 1) return values_.equals(attr.value, decl.value) || invalid(attr);
    if (!decl.type) return verdict_.fail();
    switch (values_.check(*decl.type, attr.value)) {
    case SimpleValue::Outcome::Valid: return true;
    case SimpleValue::Outcome::Invalid: return invalid(attr);
    case SimpleValue::Outcome::Broken: break;
    }
    return verdict_.fail();
}

// Names the declared namespace, also where the attribute has to stand without one.
bool AttributeRules::missing(const XML_DOM_Node* element, const Schema_AttributeDecl& decl) noexcept
{
    Schema_ValidateResult violation{};
    violation.code = SCHEMA_ERROR_ATTRIBUTE_MISSING;
    violation.node = element;
    violation.attrName = decl.name;
    violation.attrNamespace = decl.namespaceName;
    return verdict_.violate(violation);
}

bool AttributeRules::unexpected(const XML_DOM_Attr& attr) noexcept
{
    Schema_ValidateResult violation{};
    violation.code = SCHEMA_ERROR_ATTRIBUTE_UNEXPECTED;
    violation.node = attr.owner;
    violation.elementName = attr.owner->name;
    violation.attrName = attr.name;
    violation.attrNamespace = namespaceOf(attr);
    return verdict_.violate(violation);
}

bool AttributeRules::invalid(const XML_DOM_Attr& attr) noexcept
{
    Schema_ValidateResult violation{};
    violation.code = SCHEMA_ERROR_ATTRIBUTE_VALUE;
    violation.node = attr.owner;
    violation.attrName = attr.name;
    violation.attrNamespace = namespaceOf(attr);
    copyBounded(violation.detail, sizeof violation.detail, values_.detail());
    return verdict_.violate(violation);
}

}  // namespace netxml
