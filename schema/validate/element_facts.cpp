#include "schema/validate/element_facts.hpp"

#include "schema/validate/declaration.hpp"

namespace netxml {

const ElementFacts* ElementFactsTable::add(const Schema_ElementDecl& decl) noexcept
{
    auto* facts = static_cast<ElementFacts*>(kept_.allocate(sizeof(ElementFacts)));
    if (!facts) return nullptr;
    const Schema_ElementDecl* used = resolve(&decl);
    const bool isDirect = used && used->abstract != 1;
    *facts = ElementFacts{&decl, isDirect ? used : nullptr, nullptr, nullptr};
    if (used && used->type) {
        if (used->typeKind != SCHEMA_KIND_SIMPLE_TYPE) {
            facts->type = types_.of(*static_cast<const Schema_ComplexType*>(used->type));
            if (!facts->type) return nullptr;
        } else if (isDirect && used->fixed != 1) {
            facts->plan = values_.plan(*static_cast<const Schema_SimpleType*>(used->type));
        }
    }
    const ElementFacts** place = facts_.add(&decl);
    if (!place) return nullptr;
    *place = facts;
    return facts;
}

}  // namespace netxml
