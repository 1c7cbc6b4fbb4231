// What can be said of an element's declaration without a document, found out once and kept.
#pragma once

#include "netxml/schema.h"
#include "schema/validate/simple_value.hpp"
#include "schema/validate/type_facts.hpp"

namespace netxml {

struct ElementFacts {
    const Schema_ElementDecl* decl;
    const Schema_ElementDecl* used;  // what its references lead to; nullptr: broken, or abstract
    const ValuePlan* plan;           // by which a text alone makes the element valid; or nullptr
    TypeFacts* type;                 // when it is complex
};

class ElementFactsTable {
public:
    // Facts lie in `kept`, which must not be released while they are used.
    ElementFactsTable(SimpleValue& values, ChunkStack& kept) noexcept
        : values_{values}, types_{kept}, kept_{kept}
    {
    }

    // nullptr when memory runs out.
    const ElementFacts* of(const Schema_ElementDecl& decl) noexcept
    {
        const ElementFacts* const* known = facts_.find(&decl);
        return known ? *known : add(decl);
    }

private:
    static constexpr std::size_t kInline = 64;

    const ElementFacts* add(const Schema_ElementDecl& decl) noexcept;

    SimpleValue& values_;
    TypeFactsTable types_;
    ChunkStack& kept_;
    PointerMap<const ElementFacts*, kInline> facts_;
};

}  // namespace netxml
