// The arithmetic of repetitions, and what a group can begin with.
#include "tests/support/plain_rules.hpp"

#include <algorithm>
#include <optional>

namespace plain {
namespace {

// Splits `count` into the most parts, each of at least `least`; nothing when that cannot be.
std::optional<uint32_t> lowTest(uint64_t count, uint64_t least, uint64_t most)
{
    for (uint64_t d = least;; ++d) {
        const uint64_t quotient = count / d;
        const uint64_t rest = count % d;
        if (rest == 0) return static_cast<uint32_t>(quotient);
        if (d == most) return std::nullopt;
        if (rest < quotient) return static_cast<uint32_t>(quotient);
        if (d + 1 > count) return std::nullopt;
    }
}

struct HighTest {
    bool passed;
    uint32_t quotient;
};

// Splits `count` into the fewest parts, each of at most `most`.
HighTest highTest(uint64_t count, uint64_t least, uint64_t most)
{
    for (uint64_t d = most;; --d) {
        const uint64_t quotient = count / d;
        const uint64_t rest = count % d;
        if (quotient == 0 || rest == 0) return {true, static_cast<uint32_t>(quotient)};
        if (d == least) return {false, static_cast<uint32_t>(quotient)};
        if (d - rest <= quotient) return {true, static_cast<uint32_t>(quotient)};
    }
}

bool multiple(uint32_t count, uint32_t of)
{
    return count % of == 0;
}

}  // namespace

bool Content::occurs(uint32_t count, uint32_t least, uint32_t most)
{
    if (count < least) return false;
    if (count == 0) return true;
    if (most == 0) return false;
    if (least == 0) least = 1;
    return lowTest(count, least, most) && highTest(count, least, most).passed;
}

Content::Estimates Content::estimate(uint32_t count, uint32_t least, uint32_t most)
{
    if (most == 0) return {0, 0};
    if (least == 0) least = 1;
    const std::optional<uint32_t> low = lowTest(count, least, most);
    return low ? Estimates{highTest(count, least, most).quotient, *low} : Estimates{0, 0};
}

// Of a whole frame against the bounds of its group.
Content::Estimates Content::estimate(const Frame& frame)
{
    const Estimates low = estimate(frame.low, frame.group->minOccurs, frame.group->maxOccurs);
    const Estimates high = estimate(frame.high, frame.group->minOccurs, frame.group->maxOccurs);
    return {std::min(low.fewest, high.fewest), std::max(low.most, high.most)};
}

// Adds the repetitions of the particle that a frame runs to its counters. In a sequence only a
// particle counts beside which nothing is required; and of several that are all optional, those
// behind the first that has matched may belong to the same repetition.
void Content::add(Frame& frame, Estimates estimates)
{
    if (frame.group->compositor == SCHEMA_COMPOSITOR_SEQUENCE && !frame.othersOptional) return;
    frame = grown(frame, estimates);
    if (estimates.most != 0) frame.added = true;
}

// The frame with the counters that it would have. What a pass of a sequence has taken is at least
// one repetition.
Content::Frame Content::grown(Frame frame, Estimates estimates)
{
    const bool sequence = frame.group->compositor == SCHEMA_COMPOSITOR_SEQUENCE;
    if (sequence && frame.required == 0 && frame.added && estimates.fewest > 0) --estimates.fewest;
    frame.low += estimates.fewest;
    frame.high += estimates.most;
    if (sequence && estimates.most != 0 && frame.low == frame.passLow) ++frame.low;
    return frame;
}

// Hands the innermost frame's repetitions on to the frame around it.
void Content::handOn()
{
    if (stack_.size() < 2) return;
    add(stack_[stack_.size() - 2], estimate(stack_.back()));
}

bool Content::othersEmptiable(const Stack& stack, std::size_t at) const
{
    const Frame& frame = stack[at];
    for (uint32_t i = 0; i < frame.group->particleCount; ++i)
        if (i != frame.current && !emptiable(frame.group->particles[i], at + 2)) return false;
    return true;
}

// Whether the innermost group of a stack takes no further repetition. The repetitions so far are
// handed outward, level by level, until a level decides.
bool Content::complete(const Stack& stack) const
{
    const auto blocks = [&](std::size_t at) {
        return stack[at].group->compositor == SCHEMA_COMPOSITOR_SEQUENCE &&
               !othersEmptiable(stack, at);
    };
    std::size_t at = stack.size() - 1;
    Frame inner = stack[at];
    bool exact = true;
    if (at == 0) return inner.low == inner.group->maxOccurs;
    while (at-- != 0) {
        const uint32_t least = inner.group->minOccurs;
        const uint32_t most = inner.group->maxOccurs;
        if (blocks(at)) return inner.low == most;
        exact = (least == 0 || (multiple(inner.low, least) && multiple(inner.high, least))) &&
                (most == 0 ? inner.low == 0 && inner.high == 0
                           : multiple(inner.low, most) && multiple(inner.high, most));

        const Frame outer = grown(stack[at], estimate(inner));
        if (outer.group->minOccurs > outer.low) return false;

        const bool outermost = at == 0;
        const bool stopped = outermost || blocks(at - 1);
        uint32_t bound = outer.group->maxOccurs;
        bool mayGoOn = true;
        if (outer.low > bound) {
            if (outermost) return false;
            mayGoOn = !stopped;
            bound = stack[at - 1].group->maxOccurs;
        }
        if (outer.low == bound && stopped) return exact;
        if (!mayGoOn) return false;
        inner = outer;
    }
    return inner.low == stack[0].group->maxOccurs && exact;
}

bool Content::emptiable(const Schema_Object& particle, std::size_t level) const
{
    if (!particle.def) throw BrokenSchema{};
    switch (particle.kind) {
    case SCHEMA_KIND_ELEMENT:
        return static_cast<const Schema_ElementDecl*>(particle.def)->minOccurs == 0;
    case SCHEMA_KIND_WILDCARD:
        return static_cast<const Schema_Wildcard*>(particle.def)->minOccurs == 0;
    case SCHEMA_KIND_MODEL_GROUP:
        return emptiable(*static_cast<const Schema_ModelGroup*>(particle.def), level);
    default: throw BrokenSchema{};
    }
}

bool Content::emptiable(const Schema_ModelGroup& group, std::size_t level) const
{
    if (level > kDeepest) throw BrokenSchema{};
    if (group.minOccurs == 0) return true;
    const auto isEmptiable = [&](const Schema_Object& particle) {
        return emptiable(particle, level + 1);
    };
    const Schema_Object* end = group.particles + group.particleCount;
    switch (group.compositor) {
    case SCHEMA_COMPOSITOR_CHOICE: return std::any_of(group.particles, end, isEmptiable);
    case SCHEMA_COMPOSITOR_SEQUENCE:
    case SCHEMA_COMPOSITOR_ALL: return std::all_of(group.particles, end, isEmptiable);
    default: throw BrokenSchema{};
    }
}

bool Content::canStart(const Schema_Object& particle, const XML_DOM_Node* child,
                       std::size_t level) const
{
    if (!particle.def) throw BrokenSchema{};
    switch (particle.kind) {
    case SCHEMA_KIND_ELEMENT:
        return child &&
               run_.names().matches(child, *static_cast<const Schema_ElementDecl*>(particle.def));
    case SCHEMA_KIND_WILDCARD:
        return child &&
               run_.names().accepts(*static_cast<const Schema_Wildcard*>(particle.def), child);
    case SCHEMA_KIND_MODEL_GROUP:
        return canStart(*static_cast<const Schema_ModelGroup*>(particle.def), child, level);
    default: throw BrokenSchema{};
    }
}

// An all group is never found by its first child: it is met in its place or not at all.
bool Content::canStart(const Schema_ModelGroup& group, const XML_DOM_Node* child,
                       std::size_t level) const
{
    if (level > kDeepest) throw BrokenSchema{};
    switch (group.compositor) {
    case SCHEMA_COMPOSITOR_ALL: return false;
    case SCHEMA_COMPOSITOR_CHOICE:
        for (uint32_t i = 0; i < group.particleCount; ++i)
            if (canStart(group.particles[i], child, level + 1)) return true;
        return false;
    case SCHEMA_COMPOSITOR_SEQUENCE:
        for (uint32_t i = 0; i < group.particleCount; ++i) {
            if (canStart(group.particles[i], child, level + 1)) return true;
            if (!emptiable(group.particles[i], level + 1)) return false;
        }
        return false;
    default: throw BrokenSchema{};
    }
}

}  // namespace plain
