#include "schema/validate/group_facts.hpp"

#include "schema/validate/declaration.hpp"

#include <algorithm>
#include <cstdint>

namespace netxml {
namespace {

constexpr GroupFacts kBroken{0, 0, false};

bool isKnown(Schema_Compositor compositor) noexcept
{
    return compositor >= SCHEMA_COMPOSITOR_ALL && compositor <= SCHEMA_COMPOSITOR_SEQUENCE;
}

// Whether a particle that is no group may stand in a group.
bool isSound(const Schema_Object& particle, Schema_Compositor compositor) noexcept
{
    if (particle.kind == SCHEMA_KIND_WILDCARD) return compositor != SCHEMA_COMPOSITOR_ALL;
    return particle.kind == SCHEMA_KIND_ELEMENT &&
           resolve(static_cast<const Schema_ElementDecl*>(particle.def));
}

std::uint32_t minOccursOf(const Schema_Object& leaf) noexcept
{
    if (leaf.kind == SCHEMA_KIND_WILDCARD)
        return static_cast<const Schema_Wildcard*>(leaf.def)->minOccurs;
    return static_cast<const Schema_ElementDecl*>(leaf.def)->minOccurs;
}

}  // namespace

bool GroupFactsTable::isEmptiable(const Schema_Object& particle) noexcept
{
    if (particle.kind == SCHEMA_KIND_MODEL_GROUP)
        return of(*static_cast<const Schema_ModelGroup*>(particle.def)).emptiable;
    return minOccursOf(particle) == 0;
}

// `levels` is how many groups may still lie in one another from here on.
GroupFacts GroupFactsTable::find(const Schema_ModelGroup& group, unsigned levels) noexcept
{
    const Entry* known = entries_.find(&group);
    if (!known) {
        const GroupFacts facts = levels == 0 ? kBroken : examine(group, levels);
        if (facts.height == 0) return kBroken;  // not kept: it may only lie too deep here
        Entry* entry = entries_.add(&group);
        if (!entry) return kBroken;
        entry->facts = facts;
        known = entry;
    }
    return known->facts.height <= levels ? known->facts : kBroken;
}

// Calls itself through find(), six levels deep at most.
GroupFacts GroupFactsTable::examine(const Schema_ModelGroup& group, unsigned levels) noexcept
{
    if (!isKnown(group.compositor) || (group.particleCount != 0 && !group.particles))
        return kBroken;
    std::uint32_t required = 0;
    unsigned height = 1;
    for (std::uint32_t i = 0; i < group.particleCount; ++i) {
        const Schema_Object& particle = group.particles[i];
        if (!particle.def) return kBroken;
        bool emptiable = false;
        if (particle.kind == SCHEMA_KIND_MODEL_GROUP && group.compositor != SCHEMA_COMPOSITOR_ALL) {
            const GroupFacts inner =
                find(*static_cast<const Schema_ModelGroup*>(particle.def), levels - 1);
            if (inner.height == 0) return kBroken;
            height = std::max(height, inner.height + 1u);
            emptiable = inner.emptiable;
        } else {
            if (!isSound(particle, group.compositor)) return kBroken;
            emptiable = minOccursOf(particle) == 0;
        }
        if (!emptiable) ++required;
    }
    const bool oneSuffices = group.compositor == SCHEMA_COMPOSITOR_CHOICE;
    const bool emptiable =
        group.minOccurs == 0 || (oneSuffices ? required < group.particleCount : required == 0);
    return {static_cast<std::uint8_t>(height),
            static_cast<std::uint8_t>(std::min<std::uint32_t>(required, 2)), emptiable};
}

}  // namespace netxml
