#include "schema/validate/content_plan.hpp"

#include "schema/validate/derivation.hpp"

namespace netxml {
namespace {

class Planner {
public:
    explicit Planner(ChunkStack& memory) noexcept : memory_{memory} {}

    // From the derived type to its bases, each part put before what is there.
    ContentPlan plan(const Schema_ComplexType& type) noexcept
    {
        const Schema_ComplexType* t = &type;
        while (t && t->derivation) t = derived(*t, *t->derivation);
        if (t) addModel(t->content);
        return plan_;
    }

private:
    // Returns the base whose content goes before, or nullptr when there is none.
    const Schema_ComplexType* derived(const Schema_ComplexType& type,
                                      const Schema_Derivation& derivation) noexcept
    {
        if (!hasSimpleContent(derivation)) {
            addModel(derivation.content);
            const bool extends = derivation.kind == SCHEMA_KIND_COMPLEX_EXTENSION;
            return extends ? complexBase(type) : nullptr;
        }
        if (derivation.kind == SCHEMA_KIND_SIMPLE_RESTRICTION)
            add(ContentPart{nullptr, nullptr, nullptr, nullptr, &derivation});
        if (derivation.baseKind == SCHEMA_KIND_SIMPLE_TYPE) {
            const auto* value = static_cast<const Schema_SimpleType*>(derivation.base);
            add(ContentPart{nullptr, nullptr, nullptr, value, nullptr});
        }
        return complexBase(type);
    }

    void addModel(const Schema_ModelGroup* model) noexcept
    {
        if (!model) return;
        plan_.hasModel = true;
        add(ContentPart{nullptr, nullptr, model, nullptr, nullptr});
    }

    void add(ContentPart part) noexcept
    {
        auto* place = static_cast<ContentPart*>(memory_.allocate(sizeof part));
        if (!place) {
            plan_.made = false;
            return;
        }
        part.next = plan_.first;
        *place = part;
        plan_.first = place;
        ++plan_.partCount;
    }

    ChunkStack& memory_;
    ContentPlan plan_{nullptr, false, 0, true};
};

}  // namespace

ContentPlan planContent(const Schema_ComplexType& type, ChunkStack& memory) noexcept
{
    return Planner{memory}.plan(type);
}

}  // namespace netxml
