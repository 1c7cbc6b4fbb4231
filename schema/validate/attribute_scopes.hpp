// The places where a complex type says which attributes may stand, in the order in which they are
// asked: the type's own uses, its derivation's, those of the base type, and the attribute groups
// last. The groups in a group come before its own uses.
#pragma once

#include "netxml/schema.h"
#include "support/chunk_stack.hpp"
#include "support/walk_marks.hpp"

#include <cstdint>

namespace netxml {

// Uses, and a wildcard over what they leave.
struct AttributeScope {
    const Schema_AttributeDecl* const* uses;
    std::uint32_t count;
    const Schema_AttributeWildcard* wildcard;  // or nullptr
};

using AttributeGroupMarks = WalkMarks<64>;

// A walk over the scopes of one type, with a stack of its own. The type's bases must be sound.
// A group that was met is not entered again: it would change nothing.
class AttributeScopes {
public:
    enum class [[nodiscard]] Next : std::uint8_t{Scope, End, Broken};

    // `met` is for one walk at a time.
    AttributeScopes(const Schema_ComplexType& type, ChunkStack& memory,
                    AttributeGroupMarks& met) noexcept;
    AttributeScopes(const AttributeScopes&) = delete;
    AttributeScopes& operator=(const AttributeScopes&) = delete;
    ~AttributeScopes() noexcept { memory_.release(mark_); }

    // Broken when memory runs out, or when groups lead in a circle or are missing.
    Next next(AttributeScope& scope) noexcept;

private:
    // Something that is still to be done; the top one comes first.
    struct Task {
        Task* below;
        enum : std::uint8_t { Type, Derivation, Groups, EndOfGroup } kind;
        const void* record;  // the type, derivation, array of groups, or group
        std::uint32_t next;  // of an array of groups
        std::uint32_t count;
    };

    void push(Task task) noexcept;
    void pushGroups(const Schema_AttributeGroup* const* groups, std::uint32_t count) noexcept;
    void openType(const Schema_ComplexType& type, AttributeScope& scope) noexcept;
    void openDerivation(const Schema_Derivation& derivation, AttributeScope& scope) noexcept;
    bool enterNextGroup(Task& groups) noexcept;

    ChunkStack& memory_;
    ChunkStack::Mark mark_;
    AttributeGroupMarks& met_;
    Task* top_ = nullptr;
    bool outOfMemory_ = false;
};

}  // namespace netxml
