// What can be said of a model group without a document, found out once and kept.
#pragma once

#include "netxml/schema.h"
#include "support/pointer_map.hpp"

namespace netxml {

// How many model groups may lie one in another.
inline constexpr unsigned kMostGroups = 6;

struct GroupFacts {
    std::uint8_t height;    // groups that lie one in another, this one included; 0: it is broken
    std::uint8_t required;  // particles that are not emptiable: 0, 1, or 2 for more
    bool emptiable;         // it can match nothing
};

// What is known of the groups that a run has met.
class GroupFactsTable {
public:
    // A group is broken when it, or one in it, has an unknown compositor, a particle that is none,
    // or references in a circle, when more than kMostGroups lie one in another, or when memory runs
    // out.
    GroupFacts of(const Schema_ModelGroup& group) noexcept { return find(group, kMostGroups); }

    // Of a particle of a group that is not broken.
    bool isEmptiable(const Schema_Object& particle) noexcept;

    // Of a group that was asked for and is not broken: the latest search in which an element turned
    // out not to begin it, to be kept by whoever searches.
    std::uint64_t& refusedIn(const Schema_ModelGroup& group) noexcept
    {
        return entries_.find(&group)->refusedIn;
    }

private:
    struct Entry {
        std::uint64_t refusedIn;
        GroupFacts facts;
    };
    static constexpr std::size_t kInline = 128;

    GroupFacts find(const Schema_ModelGroup& group, unsigned levels) noexcept;
    GroupFacts examine(const Schema_ModelGroup& group, unsigned levels) noexcept;

    PointerMap<Entry, kInline> entries_;
};

}  // namespace netxml
