#include "schema/validate/known_content.hpp"

#include <new>

namespace netxml {

ContentState* KnownContent::learn(ContentState& at, const Subject& child,
                                  const ElementFacts* wanted, ContentState* next) noexcept
{
    if (const ContentStep* known = at.find(child, false)) return known->next;
    if (at.stepCount == kMostSteps) return nullptr;
    if (!next) next = newState();
    return next && add(at, child, wanted, next) ? next : nullptr;
}

void KnownContent::learnEnd(ContentState& at, const Subject& child) noexcept
{
    if (!child) at.mayEnd = true;
    else if (at.stepCount < kMostSteps && !at.find(child, false)) add(at, child, nullptr, nullptr);
}

ContentState* KnownContent::newState() noexcept
{
    if (stateCount_ == kMostStates) return nullptr;
    auto* state = static_cast<ContentState*>(kept_.allocate(sizeof(ContentState)));
    if (!state) return nullptr;
    ++stateCount_;
    *state = ContentState{};
    return state;
}

// What was met first is found first.
bool KnownContent::add(ContentState& at, const Subject& child, const ElementFacts* wanted,
                       ContentState* next) noexcept
{
    void* place = kept_.allocate(sizeof(ContentStep));
    if (!place) return false;
    ContentStep** last = &at.steps;
    while (*last) last = &(*last)->other;
    *last = new (place)
        ContentStep{nullptr, KnownName{child.name()}, child.namespaceName, wanted, next};
    ++at.stepCount;
    return true;
}

}  // namespace netxml
