// A model group that is being matched, and the arithmetic of its repetitions.
#pragma once

#include "schema/validate/group_facts.hpp"
#include "schema/validate/occurrence.hpp"
#include "support/chunk_stack.hpp"

#include "netxml/dom.h"

#include <cstdint>

namespace netxml {

// Where the matching of a group stands.
enum class GroupPhase : std::uint8_t {
    Pass,      // before a pass of a sequence
    Particle,  // the next particle is to be run
    Ran        // the particle has been begun; when it has ended, its outcome is to be judged
};

struct GroupFrame {
    GroupFrame* outer;  // the enclosing group; nullptr for the outermost
    ChunkStack::Mark memory;
    const Schema_ModelGroup* group;
    Repetitions count;            // how many repetitions there were, at least and at most
    Repetitions passStart;        // of a sequence: the same when the pass began
    const XML_DOM_Node* started;  // the current child when the pass or particle began
    std::uint8_t* seen;           // of an all group: 0, 1, or 2 for more, of each particle
    std::uint32_t particle;       // the index of the one that runs
    GroupFacts facts;
    GroupPhase phase;
    bool othersEmptiable;  // of a sequence: every particle but the one that runs
    bool passCounted;      // of a sequence: a particle of this pass has added repetitions
};

// Adds what the running particle means in repetitions of its group:
// - in a choice as it is;
// - in a sequence where everything is emptiable likewise, but only the first particle of a pass
//   that counts begins a repetition of its own: the others may lie in the same one;
// - in a sequence with one particle that must come, for that one only;
// - with more, nothing: each full pass is one repetition.
void addRepetitions(GroupFrame& frame, Repetitions repetitions) noexcept;

// Ends a pass of a sequence that has taken a child, or that was full: it is one repetition at
// least.
void endPass(GroupFrame& frame) noexcept;

// Hands the repetitions of a group that has ended on to the enclosing group, if that can repeat by
// this group alone.
void handOn(const GroupFrame& frame) noexcept;

// Whether the group, with all groups around it, has been repeated as often as it may be.
bool isComplete(const GroupFrame& innermost) noexcept;

}  // namespace netxml
