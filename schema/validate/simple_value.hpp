// Checking a text by a simple type of any shape: built in, network, restriction or union.
#pragma once

#include "netxml/schema.h"
#include "schema/types/pattern.hpp"
#include "schema/validate/value_plan.hpp"
#include "schema/validate/verdict.hpp"
#include "support/chunk_stack.hpp"
#include "support/walk_marks.hpp"

#include <cstdint>

namespace netxml {

class SimpleValue {
public:
    enum class [[nodiscard]] Outcome : std::uint8_t{Broken, Valid, Invalid};

    // `memory` is released to where it was after each check; `kept` keeps what is known of types.
    SimpleValue(ChunkStack& memory, ChunkStack& kept) noexcept
        : memory_{memory}, plans_{kept, patterns_}
    {
    }

    // Broken when memory runs out, or when the type leads in a circle, lacks a base or member, or
    // has a kind that does not exist. A NULL value is the empty text. When the value is invalid,
    // detail() says why.
    Outcome check(const Schema_SimpleType& type, const char* value) noexcept;

    // What makes a value of the type surely valid; nullptr when there is no such plan.
    const ValuePlan* plan(const Schema_SimpleType& type) noexcept { return plans_.of(type); }

    // Whether the value satisfies a list of facets: each of them, and one of the enumerations if
    // there are any. Broken when there are none where some should be.
    Outcome checkFacets(const Schema_Facet* facets, std::uint32_t count,
                        const char* value) noexcept;

    // Whether the value is the one that is asked for.
    bool equals(const char* value, const char* fixed) noexcept;

    // The buffer of kDetailSize bytes for the sentence of a check that fails.
    char* detail() noexcept { return detail_; }

private:
    // A type that has others under it, while those are asked.
    struct Level {
        Level* outer;
        const Schema_SimpleType* type;
        std::uint32_t next;  // of a union: the member to be tried next
    };

    Outcome descend(const Schema_SimpleType* type, const char* value, Level*& level) noexcept;
    Outcome walk(const Schema_SimpleType& type, const char* value) noexcept;
    Outcome checkBuiltin(const Schema_SimpleType& type, const char* value) noexcept;
    bool isUnfinished(const Level& level, Outcome outcome) const noexcept;
    Outcome finish(const Level& level, Outcome outcome, const char* value) noexcept;

    ChunkStack& memory_;
    PatternCache patterns_;
    ValuePlans plans_;
    WalkMarks<64> marks_;
    char detail_[kDetailSize] = {};
};

}  // namespace netxml
