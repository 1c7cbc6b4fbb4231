#include "schema/validate/content_matcher.hpp"

#include "schema/validate/declaration.hpp"

#include <cstdint>

namespace netxml {

bool ContentMatcher::begin(OpenElement& element, const Schema_ModelGroup& model) noexcept
{
    const GroupFacts facts = facts_.of(model);
    if (facts.height == 0) return verdict_.fail();
    return beginGroup(element, model, facts);
}

MatchStep ContentMatcher::advance(OpenElement& element) noexcept
{
    while (element.frame) {
        GroupFrame& frame = *element.frame;
        MatchStep step = MatchStep::Ended;
        switch (frame.group->compositor) {
        case SCHEMA_COMPOSITOR_CHOICE: step = stepChoice(element, frame); break;
        case SCHEMA_COMPOSITOR_SEQUENCE: step = stepSequence(element, frame); break;
        default: step = stepAll(element, frame); break;
        }
        if (step != MatchStep::Ended) return step;
    }
    return MatchStep::Ended;
}

void ContentMatcher::accepted(OpenElement& element) noexcept
{
    if (element.run.active) {
        ++element.run.count;
    } else {
        std::uint8_t& seen = element.frame->seen[element.frame->particle];
        if (seen < 2) ++seen;
    }
}

// Groups: begun, ended, and counted.

// A choice or all group that may be missing is done where no child is left.
bool ContentMatcher::beginGroup(OpenElement& element, const Schema_ModelGroup& group,
                                GroupFacts facts) noexcept
{
    if (group.maxOccurs == 0) return neverGroup(element, group, facts);
    const bool optional = group.minOccurs == 0 && group.compositor != SCHEMA_COMPOSITOR_SEQUENCE;
    return (optional && !element.child) || push(element, group, facts);
}

// A group that must not occur: a child that could begin it is one too many.
bool ContentMatcher::neverGroup(OpenElement& element, const Schema_ModelGroup& group,
                                GroupFacts facts) noexcept
{
    if (firstSets_.pick(group, element.child) != FirstSets::kNone)
        return wrongCount(element, element.node->name);
    if (group.minOccurs == 0 || facts.emptiable) return true;
    if (group.compositor == SCHEMA_COMPOSITOR_ALL)
        return push(element, group, facts);  // ends at once: nothing matches
    return missing(element, group);
}

bool ContentMatcher::push(OpenElement& element, const Schema_ModelGroup& group,
                          GroupFacts facts) noexcept
{
    const ChunkStack::Mark mark = memory_.mark();
    auto* frame = static_cast<GroupFrame*>(memory_.allocate(sizeof(GroupFrame)));
    if (!frame) return verdict_.fail();
    *frame = GroupFrame{};
    frame->outer = element.frame;
    frame->memory = mark;
    frame->group = &group;
    frame->facts = facts;
    if (group.compositor == SCHEMA_COMPOSITOR_ALL) {
        frame->seen = static_cast<std::uint8_t*>(memory_.allocate(group.particleCount));
        if (!frame->seen) return verdict_.fail();
        std::memset(frame->seen, 0, group.particleCount);
    }
    element.frame = frame;
    return true;
}

void ContentMatcher::pop(OpenElement& element) noexcept
{
    const ChunkStack::Mark mark = element.frame->memory;
    element.frame = element.frame->outer;
    memory_.release(mark);
}

// The end of a choice or sequence.
MatchStep ContentMatcher::endGroup(OpenElement& element, GroupFrame& frame) noexcept
{
    handOn(frame);
    if (frame.count.high < frame.group->minOccurs && !frame.facts.emptiable) {
        missing(element, *frame.group);
        return MatchStep::Stop;
    }
    pop(element);
    return MatchStep::Ended;
}

bool ContentMatcher::missing(const OpenElement& element, const Schema_ModelGroup& group) noexcept
{
    if (group.compositor == SCHEMA_COMPOSITOR_SEQUENCE)
        return wrongCount(element, element.node->name);
    return verdict_.violate(SCHEMA_ERROR_CHILDREN_MISSING, element.node);
}

bool ContentMatcher::wrongCount(const OpenElement& element, const char* name) noexcept
{
    Schema_ValidateResult violation{};
    violation.code = SCHEMA_ERROR_OCCURRENCES;
    violation.node = element.node;
    violation.elementName = name;
    return verdict_.violate(violation);
}

// The three compositors. Each step goes on until a child is to be checked, an inner group has been
// begun, or the group has ended.

MatchStep ContentMatcher::stepChoice(OpenElement& element, GroupFrame& frame) noexcept
{
    for (;;) {
        if (frame.phase == GroupPhase::Ran) {
            const MatchStep step = endRun(element);
            if (step != MatchStep::Ended) return step;
            if (element.child.node == frame.started || isComplete(frame)) break;
        }
        const std::uint32_t picked = firstSets_.pick(*frame.group, element.child);
        if (picked == FirstSets::kNone) break;
        frame.started = element.child.node;
        frame.phase = GroupPhase::Ran;
        const MatchStep step = beginParticle(element, frame.group->particles[picked], true);
        if (step != MatchStep::Ended || element.frame != &frame) return step;
    }
    return endGroup(element, frame);
}

MatchStep ContentMatcher::stepSequence(OpenElement& element, GroupFrame& frame) noexcept
{
    const Schema_ModelGroup& group = *frame.group;
    for (;;) {
        if (frame.phase == GroupPhase::Pass) {
            if (frame.count.high >= group.minOccurs && !firstSets_.canStart(group, element.child))
                break;
            frame.started = element.child.node;
            frame.passStart = frame.count;
            frame.particle = 0;
            frame.passCounted = false;
            frame.phase = GroupPhase::Particle;
        }
        if (frame.phase == GroupPhase::Ran) {
            const MatchStep step = endRun(element);
            if (step != MatchStep::Ended) return step;
            ++frame.particle;
            frame.phase = GroupPhase::Particle;
        }
        if (frame.particle == group.particleCount) {
            if (passEnds(element, frame)) break;
            frame.phase = GroupPhase::Pass;
            continue;
        }
        const Schema_Object& particle = group.particles[frame.particle];
        frame.othersEmptiable = frame.facts.required == 0 ||
                                (frame.facts.required == 1 && !facts_.isEmptiable(particle));
        frame.phase = GroupPhase::Ran;
        const MatchStep step = beginParticle(element, particle, frame.othersEmptiable);
        if (step != MatchStep::Ended || element.frame != &frame) return step;
    }
    return endGroup(element, frame);
}

// Judges a pass of a sequence: true when there is no other one.
bool ContentMatcher::passEnds(const OpenElement& element, GroupFrame& frame) const noexcept
{
    const bool tookNone = element.child.node == frame.started;
    if (!tookNone || frame.facts.required >= 2) endPass(frame);
    return tookNone || !element.child || isComplete(frame);
}

// Children in any order; the first that no particle matches is left to the enclosing model.
MatchStep ContentMatcher::stepAll(OpenElement& element, GroupFrame& frame) noexcept
{
    const std::uint32_t picked = firstSets_.pick(*frame.group, element.child);
    if (picked == FirstSets::kNone) return endAll(element, frame);
    frame.particle = picked;
    const auto* particle =
        static_cast<const Schema_ElementDecl*>(frame.group->particles[picked].def);
    element.wanted = resolve(particle);
    return MatchStep::Check;
}

// The first particle that was seen too often or too rarely decides.
MatchStep ContentMatcher::endAll(OpenElement& element, const GroupFrame& frame) noexcept
{
    for (std::uint32_t i = 0; i < frame.group->particleCount; ++i) {
        const auto& particle =
            *static_cast<const Schema_ElementDecl*>(frame.group->particles[i].def);
        const Schema_ElementDecl& final = *resolve(&particle);
        const unsigned seen = frame.seen[i];
        if (seen > 1 || (seen == 1 && particle.maxOccurs == 0)) {
            wrongCount(element, final.name);
            return MatchStep::Stop;
        }
        if (seen == 0 && particle.minOccurs == 1) {
            expected(element, final);
            return MatchStep::Stop;
        }
    }
    pop(element);
    return MatchStep::Ended;
}

// Particles that are no groups.

MatchStep ContentMatcher::beginParticle(OpenElement& element, const Schema_Object& particle,
                                        bool repeatable) noexcept
{
    if (particle.kind == SCHEMA_KIND_MODEL_GROUP) {
        const auto& group = *static_cast<const Schema_ModelGroup*>(particle.def);
        return beginGroup(element, group, facts_.of(group)) ? MatchStep::Ended : MatchStep::Stop;
    }
    LeafRun& run = element.run;
    run = LeafRun{};
    if (particle.kind == SCHEMA_KIND_WILDCARD) {
        run.wildcard = static_cast<const Schema_Wildcard*>(particle.def);
        run.min = run.wildcard->minOccurs;
        run.max = run.wildcard->maxOccurs;
    } else {
        run.element = static_cast<const Schema_ElementDecl*>(particle.def);
        run.final = resolve(run.element);
        run.min = run.element->minOccurs;
        run.max = run.element->maxOccurs;
    }
    run.active = true;
    run.repeatable = repeatable;
    return MatchStep::Ended;
}

// Lets the run go on if there is one; when it has ended, its group is told how often it may have
// repeated.
MatchStep ContentMatcher::endRun(OpenElement& element) noexcept
{
    if (!element.run.active) return MatchStep::Ended;
    const MatchStep step = run(element);
    if (step != MatchStep::Ended) return step;
    const LeafRun& run = element.run;
    addRepetitions(*element.frame, repetitions(run.count, run.min, run.max));
    element.run.active = false;
    return MatchStep::Ended;
}

// Takes children as long as they match. Beyond the bound only where the group may repeat, and only
// until that is complete.
MatchStep ContentMatcher::run(OpenElement& element) noexcept
{
    const LeafRun& run = element.run;
    if (element.child) {
        const bool matches = runMatches(element);
        const bool isFull = run.count >= run.max && run.count != 0;
        if (matches && (!isFull || mayGoOn(element))) return MatchStep::Check;
        if (!matches && !isFull && run.element && run.count < run.min) {
            runTooShort(element);
            return MatchStep::Stop;
        }
    }
    if (occurs(run.count, run.min, run.max)) return MatchStep::Ended;
    if (run.element) wrongCount(element, run.final->name);
    else verdict_.violate(SCHEMA_ERROR_CHILDREN, element.node);
    return MatchStep::Stop;
}

// Whether the run matches the child; `wanted` becomes what the child is to be checked by, nullptr
// when it needs no check.
bool ContentMatcher::runMatches(OpenElement& element) noexcept
{
    const LeafRun& run = element.run;
    if (run.wildcard) return elements_.matches(*run.wildcard, element.child, element.wanted);
    element.wanted = run.final;
    return elements_.matches(*run.element, *run.final, element.child);
}

// Tries what the count so far would mean for the group.
bool ContentMatcher::mayGoOn(const OpenElement& element) const noexcept
{
    const LeafRun& run = element.run;
    if (!run.repeatable || run.max == 0) return false;
    GroupFrame trial = *element.frame;
    addRepetitions(trial, repetitions(run.count, run.min, run.max));
    return !isComplete(trial);
}

// A child stands where more of the run's element must. An abstract one has no name to expect.
bool ContentMatcher::runTooShort(const OpenElement& element) noexcept
{
    const Schema_ElementDecl& final = *element.run.final;
    if (final.abstract == 1)
        return verdict_.violate(SCHEMA_ERROR_ELEMENT_UNEXPECTED, element.child.node);
    return expected(element, final);
}

bool ContentMatcher::expected(const OpenElement& element, const Schema_ElementDecl& decl) noexcept
{
    Schema_ValidateResult violation{};
    violation.code = SCHEMA_ERROR_ELEMENT_EXPECTED;
    violation.node = element.node;
    violation.elementName = decl.name;
    violation.elementNamespace = decl.namespaceName;
    return verdict_.violate(violation);
}

}  // namespace netxml
