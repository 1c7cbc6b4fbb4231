// Attributes of an element, by the uses and wildcards of its type.
#pragma once

#include "schema/validate/attribute_scopes.hpp"
#include "schema/validate/attribute_set.hpp"
#include "schema/validate/simple_value.hpp"
#include "schema/validate/verdict.hpp"

namespace netxml {

class AttributeRules {
public:
    AttributeRules(const Schema_Root& root, SimpleValue& values, ChunkStack& memory,
                   Verdict& verdict) noexcept
        : root_{root}, values_{values}, memory_{memory}, verdict_{verdict}
    {
    }

    // An element of a simple type has no attributes of its own: only xml:lang, xml:space, xml:base
    // and xsi:nil may stand. False when a violation is recorded.
    bool checkSimple(const XML_DOM_Node* element) noexcept;

    // False when a violation or failure is recorded. The type's bases must be sound.
    bool checkComplex(const XML_DOM_Node* element, const Schema_ComplexType& type) noexcept;

private:
    bool applyScope(const XML_DOM_Node* element, AttributeSet& set,
                    const AttributeScope& scope) noexcept;
    bool applyUse(const XML_DOM_Node* element, AttributeSet& set,
                  const Schema_AttributeDecl* use) noexcept;
    bool applyWildcard(AttributeSet& set, const Schema_AttributeWildcard& wildcard) noexcept;
    bool apply(const XML_DOM_Attr& attr, const Schema_AttributeDecl& decl) noexcept;
    bool missing(const XML_DOM_Node* element, const Schema_AttributeDecl& decl) noexcept;
    bool unexpected(const XML_DOM_Attr& attr) noexcept;
    bool invalid(const XML_DOM_Attr& attr) noexcept;
    const Schema_AttributeDecl* topLevel(const AttributeSet::Item& item) const noexcept;

    const Schema_Root& root_;
    SimpleValue& values_;
    ChunkStack& memory_;
    Verdict& verdict_;
    LazyHashKey key_;
    AttributeGroupMarks groups_;
};

}  // namespace netxml
