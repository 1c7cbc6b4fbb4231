#include "schema/validate/type_facts.hpp"

#include "schema/validate/derivation.hpp"

namespace netxml {
namespace {

// Text may stand where the content is simple or mixed. An element without any content may have a
// text that is fixed.
void addText(TypeFacts& facts) noexcept
{
    const Schema_ComplexType& type = *facts.type;
    const bool isEmpty = !type.derivation && !type.content;
    facts.hasFixedText = isEmpty;
    facts.hasText = type.mixed == 1 && !isEmpty;
    if (type.derivation && hasSimpleContent(*type.derivation)) facts.hasText = true;
}

}  // namespace

TypeFacts* TypeFactsTable::add(const Schema_ComplexType& type) noexcept
{
    auto* facts = static_cast<TypeFacts*>(kept_.allocate(sizeof(TypeFacts)));
    if (!facts) return nullptr;
    *facts = TypeFacts{};
    facts->type = &type;
    facts->sound = basesAreSound(type);
    if (facts->sound) {
        const ContentPlan plan = planContent(type, kept_);
        if (!plan.made) return nullptr;
        facts->parts = plan.first;
        facts->hasModel = plan.hasModel;
        addText(*facts);
    }
    TypeFacts** place = facts_.add(&type);
    if (!place) return nullptr;
    *place = facts;
    return facts;
}

}  // namespace netxml
