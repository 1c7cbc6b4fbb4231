// Running the particles of a content model over the children of an element.
#include "tests/support/plain_rules.hpp"

#include <algorithm>

namespace plain {
namespace {

const XML_DOM_Node* nextElement(const XML_DOM_Node* element)
{
    return elementFrom(XML_DOM_GetNextSibling(element));
}

const Schema_ElementDecl& elementOf(const Schema_Object& particle)
{
    if (particle.kind != SCHEMA_KIND_ELEMENT || !particle.def) throw BrokenSchema{};
    return *static_cast<const Schema_ElementDecl*>(particle.def);
}

}  // namespace

Content::Content(Run& run, const XML_DOM_Node* element)
    : run_{run}, element_{element}, child_{elementFrom(XML_DOM_GetFirstChild(element))}
{
}

// Runs one particle; the repetitions of a leaf are added to the frame here, those of a group where
// its frame ends.
void Content::runParticle(const Schema_Object& particle, bool repeatable)
{
    if (!particle.def) throw BrokenSchema{};
    switch (particle.kind) {
    case SCHEMA_KIND_ELEMENT: {
        const auto& element = *static_cast<const Schema_ElementDecl*>(particle.def);
        runElement(element, repeatable);
        add(stack_.back(), estimate(lastCount_, element.minOccurs, element.maxOccurs));
        break;
    }
    case SCHEMA_KIND_WILDCARD: {
        const auto& wildcard = *static_cast<const Schema_Wildcard*>(particle.def);
        runWildcard(wildcard, repeatable);
        add(stack_.back(), estimate(lastCount_, wildcard.minOccurs, wildcard.maxOccurs));
        break;
    }
    case SCHEMA_KIND_MODEL_GROUP:
        runGroup(*static_cast<const Schema_ModelGroup*>(particle.def));
        break;
    default: throw BrokenSchema{};
    }
    lastCount_ = 0;
}

void Content::runElement(const Schema_ElementDecl& particle, bool repeatable)
{
    const Schema_ElementDecl* decl = follow(&particle).decl;
    uint32_t count = 0;
    while (child_) {
        if (!run_.names().matches(child_, particle)) {
            if (count >= particle.minOccurs) break;
            if (decl->abstract == 1) run_.fail(SCHEMA_ERROR_ELEMENT_UNEXPECTED, child_);
            run_.failElement(SCHEMA_ERROR_ELEMENT_EXPECTED, element_, decl->name,
                             decl->namespaceName);
        }
        run_.checkElement(child_, decl);
        ++count;
        child_ = nextElement(child_);
        if (count >= particle.maxOccurs) {
            const bool again = child_ && run_.names().matches(child_, particle);
            if (!again || !goesOn(count, particle.minOccurs, particle.maxOccurs, repeatable)) break;
        }
    }
    if (!occurs(count, particle.minOccurs, particle.maxOccurs))
        run_.failElement(SCHEMA_ERROR_OCCURRENCES, element_, decl->name);
    lastCount_ = count;
}

void Content::runWildcard(const Schema_Wildcard& wildcard, bool repeatable)
{
    uint32_t count = 0;
    while (child_ && run_.names().accepts(wildcard, child_)) {
        const Schema_ElementDecl* found = run_.names().findElement(child_);
        if (found && wildcard.processContents != SCHEMA_PROCESS_SKIP)
            run_.checkElement(child_, follow(found).decl);
        ++count;
        child_ = nextElement(child_);
        if (count >= wildcard.maxOccurs &&
            !goesOn(count, wildcard.minOccurs, wildcard.maxOccurs, repeatable))
            break;
    }
    if (!occurs(count, wildcard.minOccurs, wildcard.maxOccurs))
        run_.fail(SCHEMA_ERROR_CHILDREN, element_);
    lastCount_ = count;
}

// Whether a run that has reached its most occurrences takes one more: when its count so far does
// not complete the group around it.
bool Content::goesOn(uint32_t count, uint32_t least, uint32_t most, bool repeatable) const
{
    if (most == 0 || !repeatable) return false;
    Stack trial = stack_;
    add(trial.back(), estimate(count, least, most));
    return !complete(trial);
}

void Content::push(const Schema_ModelGroup& group)
{
    if (stack_.size() == kDeepest) throw BrokenSchema{};
    Frame frame{};
    frame.group = &group;
    frame.emptiable = emptiable(group, stack_.size() + 1);
    stack_.push_back(frame);
}

void Content::runGroup(const Schema_ModelGroup& group)
{
    if (group.compositor != SCHEMA_COMPOSITOR_ALL && group.compositor != SCHEMA_COMPOSITOR_CHOICE &&
        group.compositor != SCHEMA_COMPOSITOR_SEQUENCE)
        throw BrokenSchema{};
    if (group.maxOccurs == 0) return runForbidden(group);
    switch (group.compositor) {
    case SCHEMA_COMPOSITOR_ALL: return runAll(group);
    case SCHEMA_COMPOSITOR_CHOICE: return runChoice(group);
    default: return runSequence(group);
    }
}

// A group that must not occur: nothing may begin it, and what it requires is missing.
void Content::runForbidden(const Schema_ModelGroup& group)
{
    const std::size_t level = stack_.size() + 1;
    bool begins = child_ && canStart(group, child_, level);
    if (group.compositor == SCHEMA_COMPOSITOR_ALL && child_)
        for (uint32_t i = 0; i < group.particleCount && !begins; ++i)
            begins = run_.names().matches(child_, elementOf(group.particles[i]));
    if (begins) run_.failElement(SCHEMA_ERROR_OCCURRENCES, element_, XML_DOM_GetNodeName(element_));
    if (group.minOccurs == 0 || emptiable(group, level)) return;
    if (group.compositor == SCHEMA_COMPOSITOR_CHOICE)
        run_.fail(SCHEMA_ERROR_CHILDREN_MISSING, element_);
    if (group.compositor == SCHEMA_COMPOSITOR_SEQUENCE)
        run_.failElement(SCHEMA_ERROR_OCCURRENCES, element_, XML_DOM_GetNodeName(element_));
    checkAll(group, std::vector<uint32_t>(group.particleCount, 0));
}

void Content::runChoice(const Schema_ModelGroup& group)
{
    if (!child_ && group.minOccurs == 0) return;
    push(group);
    while (child_) {
        const int picked = pick(stack_);
        if (picked < 0) break;
        const XML_DOM_Node* before = child_;
        stack_.back().current = static_cast<uint32_t>(picked);
        runParticle(group.particles[picked], true);
        if (child_ == before || complete(stack_)) break;
    }
    handOn();
    const Frame frame = stack_.back();
    if (frame.high < group.minOccurs && !frame.emptiable)
        run_.fail(SCHEMA_ERROR_CHILDREN_MISSING, element_);
    stack_.pop_back();
}

// The first particle that takes the current child, or -1.
int Content::pick(Stack copy) const
{
    const Schema_ModelGroup& group = *copy.back().group;
    for (uint32_t i = 0; i < group.particleCount; ++i)
        if (canStart(group.particles[i], child_, copy.size() + 1)) return static_cast<int>(i);
    return -1;
}

void Content::runSequence(const Schema_ModelGroup& group)
{
    push(group);
    for (;;) {
        if (stack_.back().high >= group.minOccurs && !canStart(group, child_, stack_.size())) break;
        const XML_DOM_Node* before = child_;
        runPass(group);
        if (!child_ || child_ == before || complete(stack_)) break;
    }
    handOn();
    const Frame frame = stack_.back();
    if (frame.high < group.minOccurs && !frame.emptiable)
        run_.failElement(SCHEMA_ERROR_OCCURRENCES, element_, XML_DOM_GetNodeName(element_));
    stack_.pop_back();
}

// Runs every particle of the innermost frame's sequence once. A pass that takes a child is at least
// one repetition, whatever its particles have added.
void Content::runPass(const Schema_ModelGroup& group)
{
    const std::size_t at = stack_.size() - 1;
    const XML_DOM_Node* before = child_;
    const uint32_t high = stack_[at].high;
    stack_[at].passLow = stack_[at].low;
    stack_[at].required = 0;
    stack_[at].added = false;
    for (uint32_t i = 0; i < group.particleCount; ++i)
        stack_[at].required += emptiable(group.particles[i], stack_.size() + 1) ? 0u : 1u;
    for (uint32_t i = 0; i < group.particleCount; ++i) {
        stack_[at].current = i;
        stack_[at].othersOptional = othersEmptiable(stack_, at);
        runParticle(group.particles[i], stack_[at].othersOptional);
    }
    if (stack_[at].required < 2 && child_ == before) return;
    stack_[at].low = std::max(stack_[at].low, stack_[at].passLow + 1);
    stack_[at].high = std::max(stack_[at].high, high + 1);
}

void Content::runAll(const Schema_ModelGroup& group)
{
    std::vector<uint32_t> counters(group.particleCount, 0);
    if (!child_) {
        if (group.minOccurs != 0) checkAll(group, counters);
        return;
    }
    push(group);
    while (child_) {
        uint32_t at = 0;
        while (at < group.particleCount &&
               !run_.names().matches(child_, elementOf(group.particles[at])))
            ++at;
        if (at == group.particleCount) break;
        run_.checkElement(child_, follow(&elementOf(group.particles[at])).decl);
        ++counters[at];
        child_ = nextElement(child_);
    }
    checkAll(group, counters);
    stack_.pop_back();
}

void Content::checkAll(const Schema_ModelGroup& group, const std::vector<uint32_t>& counters)
{
    for (uint32_t i = 0; i < group.particleCount; ++i) {
        const Schema_ElementDecl& particle = elementOf(group.particles[i]);
        const Schema_ElementDecl* decl = follow(&particle).decl;
        if (counters[i] > 1 || (counters[i] == 1 && particle.maxOccurs == 0))
            run_.failElement(SCHEMA_ERROR_OCCURRENCES, element_, decl->name);
        if (counters[i] == 0 && particle.minOccurs == 1)
            run_.failElement(SCHEMA_ERROR_ELEMENT_EXPECTED, element_, decl->name,
                             decl->namespaceName);
    }
}

}  // namespace plain
