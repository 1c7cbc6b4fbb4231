// What can be said of a complex type without a document, found out once and kept.
#pragma once

#include "netxml/schema.h"
#include "schema/validate/content_plan.hpp"
#include "support/pointer_map.hpp"

namespace netxml {

struct TypeFacts {
    const Schema_ComplexType* type;
    ContentPart* parts;  // nullptr: nothing is checked, or it is planned for each element
    bool isLong;         // the latter: many bases share their parts
    bool sound;          // its bases are; else nothing more is known
    bool hasModel;       // child elements may stand
    bool hasText;        // text may stand
    bool hasFixedText;   // text may stand where the declaration fixes it
    bool isValidBare;    // an element without attributes was found right in them
};

class TypeFactsTable {
public:
    // Facts lie in `kept`, which must not be released while they are used.
    explicit TypeFactsTable(ChunkStack& kept) noexcept : kept_{kept} {}

    // nullptr when memory runs out.
    TypeFacts* of(const Schema_ComplexType& type) noexcept
    {
        TypeFacts** known = facts_.find(&type);
        return known ? *known : add(type);
    }

private:
    static constexpr std::size_t kInline = 32;

    TypeFacts* add(const Schema_ComplexType& type) noexcept;

    ChunkStack& kept_;
    PointerMap<TypeFacts*, kInline> facts_;
};

}  // namespace netxml
