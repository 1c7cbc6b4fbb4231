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

// More parts than that are not kept: each type of a chain has those of all its bases.
constexpr unsigned kMostParts = 32;

// Room for what will be known of the models.
bool addMemories(TypeFacts& facts, ChunkStack& kept) noexcept
{
    for (ContentPart* part = facts.parts; part; part = part->next) {
        if (!part->model) continue;
        part->memory = static_cast<ModelMemory*>(kept.allocate(sizeof(ModelMemory)));
        if (!part->memory) return false;
        *part->memory = ModelMemory{};
    }
    return true;
}

bool addContent(TypeFacts& facts, ChunkStack& kept) noexcept
{
    const ChunkStack::Mark mark = kept.mark();
    const ContentPlan plan = planContent(*facts.type, kept);
    facts.hasModel = plan.hasModel;
    facts.isLong = plan.partCount > kMostParts;
    if (facts.isLong) kept.release(mark);
    else facts.parts = plan.first;
    return plan.made && addMemories(facts, kept);
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
        if (!addContent(*facts, kept_)) return nullptr;
        addText(*facts);
    }
    TypeFacts** place = facts_.add(&type);
    if (!place) return nullptr;
    *place = facts;
    return facts;
}

}  // namespace netxml
