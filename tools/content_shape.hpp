// A complex type reduced to its content model: which elements stand in which order and number, and
// nothing about what they hold.
#pragma once

#include "netxml/schema.h"

#include <deque>
#include <unordered_map>
#include <vector>

namespace netxml::tool {

class ContentShape {
public:
    // The type must live as long as this.
    explicit ContentShape(const Schema_ComplexType& type);
    ContentShape(const ContentShape&) = delete;
    ContentShape& operator=(const ContentShape&) = delete;

    // Admits all attributes and texts. Top-level elements must be without types, too, where it is
    // used. Nothing for a type without a content model, or with simple content.
    const Schema_ComplexType* type() const { return exists_ ? &types_.front() : nullptr; }

private:
    const Schema_Derivation* shapeOf(const Schema_Derivation& derivation);
    const Schema_ModelGroup* shapeOf(const Schema_ModelGroup* model);
    Schema_Object shapeOf(const Schema_Object& particle);

    bool exists_ = false;
    Schema_AttributeWildcard anyAttribute_{};
    Schema_ComplexType nothing_{};
    std::deque<Schema_ComplexType> types_;  // the type, and then each one's base
    std::deque<Schema_Derivation> derivations_;
    std::deque<Schema_ModelGroup> groups_;
    std::deque<std::vector<Schema_Object>> particles_;
    std::deque<Schema_ElementDecl> elements_;
    std::unordered_map<const Schema_ModelGroup*, Schema_ModelGroup*> known_;
    std::vector<const Schema_ModelGroup*> waiting_;
};

}  // namespace netxml::tool
