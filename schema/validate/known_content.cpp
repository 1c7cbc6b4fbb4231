#include "schema/validate/known_content.hpp"

#include <new>

namespace netxml {

// A new address is compared with a few texts, once.
const char* NamespaceNames::find(const char* name) noexcept
{
    if (const char** known = ids_.find(name)) return *known;
    const char* id = name;
    std::size_t i = 0;
    while (i < textCount_ && std::strcmp(texts_[i], name) != 0) ++i;
    if (i < textCount_) id = texts_[i];
    else if (textCount_ < kMostTexts) texts_[textCount_++] = name;
    if (const char** place = ids_.add(name)) *place = id;
    return id;
}

ContentState* KnownContent::learn(ModelMemory& memory, ContentState& at, const Subject& child,
                                  const ElementFacts* wanted, ContentState* next) noexcept
{
    if (const ContentStep* known = find(at, child, false)) return known->next;
    if (at.stepCount == kMostSteps) return nullptr;
    if (!next) next = newState(memory);
    return next && add(at, child, wanted, next) ? next : nullptr;
}

void KnownContent::learnEnd(ContentState& at, const Subject& child) noexcept
{
    if (!child) at.mayEnd = true;
    else if (at.stepCount < kMostSteps && !find(at, child, false)) add(at, child, nullptr, nullptr);
}

ContentState* KnownContent::newState(ModelMemory& memory) noexcept
{
    if (stateCount_ == kMostStates || memory.states == kModelStates) return nullptr;
    auto* state = static_cast<ContentState*>(kept_.allocate(sizeof(ContentState)));
    if (!state) return nullptr;
    ++stateCount_;
    ++memory.states;
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
    *last = new (place) ContentStep{nullptr, KnownName{child.name()},
                                    names_.idOf(child.namespaceName), wanted, next};
    ++at.stepCount;
    return true;
}

}  // namespace netxml
