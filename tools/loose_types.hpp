// Variants of a complex type that ask for less: by them the parts of an element are validated that
// lie behind a violation.
#pragma once

#include "netxml/schema.h"

#include <cstdint>
#include <vector>

namespace netxml::tool {

// What each function returns holds until the next one is called.
class LooseTypes {
public:
    // `particles` are those of the type, each to occur once. They and the type must live as long.
    LooseTypes(const Schema_ComplexType& type, const std::vector<Schema_Object>& particles);
    LooseTypes(const LooseTypes&) = delete;
    LooseTypes& operator=(const LooseTypes&) = delete;

    // The attributes of the type; of the children the first `count` are passed over, and those
    // behind them may stand in any order and number.
    const Schema_ComplexType& behind(std::uint32_t count);
    // The attributes of the type and nothing else.
    const Schema_ComplexType& attributesOnly();
    // The type, with text allowed beside its elements.
    const Schema_ComplexType& withText();

private:
    const Schema_ComplexType& holding(const Schema_ModelGroup& content);

    const Schema_ComplexType& type_;
    Schema_Wildcard passedOver_{};
    Schema_ModelGroup anyOrder_{};
    Schema_Object parts_[2];
    Schema_ModelGroup content_{};
    Schema_Derivation derivation_{};
    Schema_ComplexType loose_{};
};

// A complex type with the values of a simple one that admits every attribute.
class AnyAttributes {
public:
    explicit AnyAttributes(const Schema_SimpleType& values);
    AnyAttributes(const AnyAttributes&) = delete;
    AnyAttributes& operator=(const AnyAttributes&) = delete;

    const Schema_ComplexType& type() const { return type_; }

private:
    Schema_AttributeWildcard any_{};
    Schema_Derivation derivation_{};
    Schema_ComplexType type_{};
};

}  // namespace netxml::tool
