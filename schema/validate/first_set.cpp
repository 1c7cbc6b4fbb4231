#include "schema/validate/first_set.hpp"

#include "schema/validate/declaration.hpp"

#include <cstdint>

namespace netxml {

std::uint32_t FirstSets::pick(const Schema_ModelGroup& group, const Subject& subject) noexcept
{
    if (!subject) return kNone;
    ++search_;
    return answer(group, subject);
}

std::uint32_t FirstSets::answer(const Schema_ModelGroup& group, const Subject& subject) noexcept
{
    const std::size_t place = reinterpret_cast<std::uintptr_t>(&group) >> 3;
    Answer& kept = answers_[(place ^ subject.hash()) % kAnswers];
    if (kept.group != &group || !sameText(kept.name, subject.name()) ||
        !sameText(kept.namespaceName, subject.namespaceName)) {
        const std::uint32_t picked = search(group, subject);
        kept = Answer{&group, subject.name(), subject.namespaceName, picked};
    }
    return kept.picked;
}

bool FirstSets::canStart(const Schema_ModelGroup& group, const Subject& subject) noexcept
{
    return group.compositor != SCHEMA_COMPOSITOR_ALL && pick(group, subject) != kNone;
}

// Calls itself through answer(), six levels deep at most: no group that is deeper is asked about.
bool FirstSets::canStart(const Schema_Object& particle, const Subject& subject) noexcept
{
    if (particle.kind == SCHEMA_KIND_MODEL_GROUP) {
        const auto& group = *static_cast<const Schema_ModelGroup*>(particle.def);
        std::uint64_t& refusedIn = facts_.refusedIn(group);
        if (group.compositor == SCHEMA_COMPOSITOR_ALL || refusedIn == search_) return false;
        const bool can = answer(group, subject) != kNone;
        if (!can) refusedIn = search_;
        return can;
    }
    if (particle.kind == SCHEMA_KIND_WILDCARD) {
        const Schema_ElementDecl* found = nullptr;
        return elements_.matches(*static_cast<const Schema_Wildcard*>(particle.def), subject,
                                 found);
    }
    const auto& element = *static_cast<const Schema_ElementDecl*>(particle.def);
    return elements_.matches(element, *resolve(&element), subject);
}

// The particles of a sequence follow each other: behind one that must come, none can begin.
std::uint32_t FirstSets::search(const Schema_ModelGroup& group, const Subject& subject) noexcept
{
    for (std::uint32_t i = 0; i < group.particleCount; ++i) {
        if (canStart(group.particles[i], subject)) return i;
        if (group.compositor == SCHEMA_COMPOSITOR_SEQUENCE &&
            !facts_.isEmptiable(group.particles[i]))
            return kNone;
    }
    return kNone;
}

}  // namespace netxml
