#include "schema/validate/group_frame.hpp"

#include <cstdint>

namespace netxml {
namespace {

// A sequence in which something else must come, too: what runs in it cannot repeat it alone.
bool blocks(const GroupFrame& frame) noexcept
{
    return frame.group->compositor == SCHEMA_COMPOSITOR_SEQUENCE && !frame.othersEmptiable;
}

// The count of a frame with repetitions of its running particle added. In a pass of a sequence
// where nothing must come, one of them may be the repetition that an earlier particle of the pass
// has begun; and what a pass has taken is one repetition at least.
Repetitions counted(const GroupFrame& frame, Repetitions added) noexcept
{
    if (frame.group->compositor != SCHEMA_COMPOSITOR_SEQUENCE)
        return {frame.count.low + added.low, frame.count.high + added.high};
    if (frame.facts.required == 0 && frame.passCounted && added.low > 0) --added.low;
    const std::uint64_t least = added.high > 0 ? frame.passStart.low + 1 : 0;
    return {std::max(frame.count.low + added.low, least), frame.count.high + added.high};
}

// What a range of repetitions of a group means in repetitions of the enclosing one.
Repetitions outward(Repetitions count, const Schema_ModelGroup& group) noexcept
{
    const Repetitions low = repetitions(count.low, group.minOccurs, group.maxOccurs);
    const Repetitions high = repetitions(count.high, group.minOccurs, group.maxOccurs);
    return {std::min(low.low, high.low), std::max(low.high, high.high)};
}

// A bound of 0 divides nothing: as the lower one it always fits, as the upper one only none does.
bool isMultiple(std::uint64_t n, std::uint32_t min, std::uint32_t max) noexcept
{
    return (min == 0 || n % min == 0) && (max == 0 ? n == 0 : n % max == 0);
}

// The bound that decides at the last level of the walk outward. Kept: beyond the bound of a group
// that a sequence blocks, it is that sequence's own.
std::uint32_t lastBound(const GroupFrame& frame, std::uint64_t low) noexcept
{
    const bool beyond = low > frame.group->maxOccurs;
    return beyond && frame.outer ? frame.outer->group->maxOccurs : frame.group->maxOccurs;
}

}  // namespace

void addRepetitions(GroupFrame& frame, Repetitions repetitions) noexcept
{
    if (blocks(frame)) return;
    frame.count = counted(frame, repetitions);
    if (repetitions.high > 0) frame.passCounted = true;
}

void endPass(GroupFrame& frame) noexcept
{
    frame.count.low = std::max(frame.count.low, frame.passStart.low + 1);
    frame.count.high = std::max(frame.count.high, frame.passStart.high + 1);
}

void handOn(const GroupFrame& frame) noexcept
{
    if (frame.outer) addRepetitions(*frame.outer, outward(frame.count, *frame.group));
}

// Goes outward level by level with the range of repetitions that the groups so far mean in the next
// one. Where a sequence blocks, its inner group stands for itself, as the outermost one does.
bool isComplete(const GroupFrame& innermost) noexcept
{
    const GroupFrame* frame = &innermost;
    Repetitions count = innermost.count;
    while (frame->outer) {
        const GroupFrame& outer = *frame->outer;
        const Schema_ModelGroup& group = *frame->group;
        if (blocks(outer)) break;
        const bool exact = isMultiple(count.low, group.minOccurs, group.maxOccurs) &&
                           isMultiple(count.high, group.minOccurs, group.maxOccurs);
        count = counted(outer, outward(count, group));
        if (count.low < outer.group->minOccurs) return false;
        if (!outer.outer || blocks(*outer.outer)) {
            if (count.low == lastBound(outer, count.low)) return exact;
            if (count.low > outer.group->maxOccurs) return false;
        }
        frame = &outer;
    }
    return count.low == frame->group->maxOccurs;
}

}  // namespace netxml
