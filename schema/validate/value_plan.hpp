// What a simple type asks of a value, made ready for many values.
//
// A plan only ever says that a value is surely valid. Of any other one the plain rules say what it
// is, and why; so a plan may leave out what is rare.
#pragma once

#include "netxml/schema.h"
#include "schema/types/builtin_table.hpp"
#include "schema/types/integer_value.hpp"
#include "schema/types/pattern.hpp"
#include "support/chunk_stack.hpp"
#include "support/pointer_map.hpp"

#include <cstddef>
#include <cstdint>

namespace netxml {

// A pattern, or the enumeration of one list of facets.
struct ValueTest {
    struct Text {
        const char* data;
        std::size_t size;
    };

    bool holds(const char* value, std::size_t size) const noexcept;

    const ValueTest* next;
    Pattern* pattern;   // nullptr: an enumeration
    const Text* texts;  // of the enumeration
    std::size_t count;
};

// What a value must have all of; what is nullptr asks nothing.
struct ValuePlan {
    bool holds(const char* value) const noexcept;

    bool sized;            // the length matters
    std::size_t shortest;  // in bytes
    std::size_t longest;
    DigitRange digits;
    bool numeric;  // digits and nothing else, in that range
    Schema_BuiltinKind kind;
    LexicalRule rule;  // of the kind
    const Schema_ExtType* network;
    const ValueTest* tests;
    const ValuePlan* members;  // one of them must hold
    const ValuePlan* next;     // the member behind this one
};

// The plans of the types that a run has met.
class ValuePlans {
public:
    // What plans consist of lies in `kept`, which must not be released while they are used.
    ValuePlans(ChunkStack& kept, PatternCache& patterns) noexcept : kept_{kept}, patterns_{patterns}
    {
    }

    // nullptr when there is none for the type.
    const ValuePlan* of(const Schema_SimpleType& type) noexcept
    {
        const ValuePlan* const* known = plans_.find(&type);
        return known ? *known : add(type);
    }

private:
    static constexpr std::size_t kInline = 32;

    const ValuePlan* add(const Schema_SimpleType& type) noexcept;

    ChunkStack& kept_;
    PatternCache& patterns_;
    PointerMap<const ValuePlan*, kInline> plans_;
};

}  // namespace netxml
