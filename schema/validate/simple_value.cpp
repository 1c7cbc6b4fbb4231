#include "schema/validate/simple_value.hpp"

#include "schema/types/builtin_table.hpp"
#include "schema/types/facet.hpp"
#include "support/format.hpp"
#include "support/text.hpp"

#include <cstdint>

namespace netxml {
namespace {

using Outcome = SimpleValue::Outcome;

// The marks of types while a value is checked: being asked, or how it went.
constexpr unsigned kAsked = 3;

constexpr unsigned markOf(Outcome outcome) noexcept
{
    return static_cast<unsigned>(outcome);
}

bool isUnion(const Schema_SimpleType& type) noexcept
{
    return type.memberCount > 1;
}

Outcome outcomeOf(std::uint32_t valid) noexcept
{
    return valid == 1 ? Outcome::Valid : Outcome::Invalid;
}

}  // namespace

Outcome SimpleValue::check(const Schema_SimpleType& type, const char* value) noexcept
{
    value = orEmpty(value);
    const ValuePlan* plan = plans_.of(type);
    return plan && plan->holds(value) ? Outcome::Valid : walk(type, value);
}

// A walk over the type's members and bases with a stack of its own. A type that has been asked
// answers from its mark, so that what is shared by many is asked once.
Outcome SimpleValue::walk(const Schema_SimpleType& type, const char* value) noexcept
{
    const ChunkStack::Mark mark = memory_.mark();
    marks_.beginWalk();
    Level* level = nullptr;
    Outcome outcome = descend(&type, value, level);
    while (level && outcome != Outcome::Broken) {
        if (!isUnfinished(*level, outcome)) {
            outcome = finish(*level, outcome, value);
            level = level->outer;
        } else {
            outcome = descend(level->type->members[level->next++], value, level);
        }
    }
    memory_.release(mark);
    return outcome;
}

// From a type down to one that can answer; the types on the way are put on the levels.
Outcome SimpleValue::descend(const Schema_SimpleType* type, const char* value,
                             Level*& level) noexcept
{
    for (;;) {
        if (!type) return Outcome::Broken;
        if (!isUnion(*type)) {
            if (type->kind != SCHEMA_BUILTIN_NONE) return checkBuiltin(*type, value);
            const Schema_ExtType* network =
                Schema_FoundZynBltInType(type->name, type->namespaceName);
            if (network)
                return outcomeOf(Schema_checkZynBltInType(network, value, sizeof detail_, detail_));
        }
        const unsigned mark = marks_.get(type);
        if (mark == kAsked) return Outcome::Broken;  // a circle
        if (mark != 0) return static_cast<Outcome>(mark);
        if (!type->members || !marks_.set(type, kAsked)) return Outcome::Broken;
        auto* place = static_cast<Level*>(memory_.allocate(sizeof(Level)));
        if (!place) return Outcome::Broken;
        *place = Level{level, type, 1};
        level = place;
        type = type->members[0];
    }
}

Outcome SimpleValue::checkBuiltin(const Schema_SimpleType& type, const char* value) noexcept
{
    if (!builtinType(type.kind)) return Outcome::Broken;
    return outcomeOf(Schema_CheckBaseType(&type, value, sizeof detail_, detail_));
}

// A union goes on with its members until one accepts the value.
bool SimpleValue::isUnfinished(const Level& level, Outcome outcome) const noexcept
{
    return isUnion(*level.type) && outcome == Outcome::Invalid &&
           level.next < level.type->memberCount;
}

// The answer of a union after its last member, or of a restriction after its base.
Outcome SimpleValue::finish(const Level& level, Outcome outcome, const char* value) noexcept
{
    const Schema_SimpleType& type = *level.type;
    if (isUnion(type)) {
        if (outcome == Outcome::Invalid)
            formatTexts(detail_, sizeof detail_, "%s does not match any member of union", {value});
    } else if (outcome == Outcome::Valid) {
        outcome = checkFacets(type.facets, type.facetCount, value);
    }
    return marks_.set(&type, markOf(outcome)) ? outcome : Outcome::Broken;
}

Outcome SimpleValue::checkFacets(const Schema_Facet* facets, std::uint32_t count,
                                 const char* value) noexcept
{
    if (count != 0 && !facets) return Outcome::Broken;
    value = orEmpty(value);
    bool enumerated = false;
    bool matched = false;
    for (std::uint32_t i = 0; i < count; ++i) {
        const bool isEnumeration = facets[i].kind == SCHEMA_FACET_ENUMERATION;
        const bool holds = facetHolds(facets[i], value, sizeof detail_, detail_, &patterns_);
        if (!holds && patterns_.ranOut()) return Outcome::Broken;
        if (!holds && !isEnumeration) return Outcome::Invalid;
        enumerated |= isEnumeration;
        matched |= isEnumeration && holds;
    }
    return !enumerated || matched ? Outcome::Valid : Outcome::Invalid;
}

bool SimpleValue::equals(const char* value, const char* fixed) noexcept
{
    if (sameText(value, fixed)) return true;
    const char* sentence = isEmpty(fixed) ? "must be empty" : "must equal %s";
    formatTexts(detail_, sizeof detail_, sentence, {fixed});
    return false;
}

}  // namespace netxml
