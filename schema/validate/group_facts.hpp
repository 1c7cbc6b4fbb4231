// What can be said of a model group without a document, found out once and kept.
#pragma once

#include "netxml/schema.h"

#include <cstddef>
#include <cstdint>

namespace netxml {

// How many model groups may lie one in another.
inline constexpr unsigned kMostGroups = 6;

struct GroupFacts {
    std::uint8_t height;    // groups that lie one in another, this one included; 0: it is broken
    std::uint8_t required;  // particles that are not emptiable: 0, 1, or 2 for more
    bool emptiable;         // it can match nothing
};

// Keeps the latest facts of a few dozen groups; those of others are found out again.
class GroupFactsTable {
public:
    // A group is broken when it, or one in it, has an unknown compositor, a particle that is none,
    // or references in a circle, or when more than kMostGroups lie one in another.
    GroupFacts of(const Schema_ModelGroup& group) noexcept { return find(group, kMostGroups); }

    // Of a particle of a group that is not broken.
    bool isEmptiable(const Schema_Object& particle) noexcept;

private:
    struct Entry {
        const Schema_ModelGroup* group;
        GroupFacts facts;
    };
    static constexpr std::size_t kEntries = 64;

    GroupFacts find(const Schema_ModelGroup& group, unsigned levels) noexcept;
    GroupFacts examine(const Schema_ModelGroup& group, unsigned levels) noexcept;

    Entry entries_[kEntries] = {};
};

}  // namespace netxml
