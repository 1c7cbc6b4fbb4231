#include "content_shape.hpp"

#include "schema_names.hpp"

#include <cstdint>
#include <unordered_set>

namespace netxml::tool {

ContentShape::ContentShape(const Schema_ComplexType& type)
{
    anyAttribute_.namespaceName = "##any";
    anyAttribute_.processContents = SCHEMA_PROCESS_SKIP;
    std::unordered_set<const Schema_ComplexType*> met;
    const Schema_ComplexType* t = &type;
    while (t && met.insert(t).second) {
        Schema_ComplexType shape{};
        shape.mixed = 1;
        shape.anyAttribute = &anyAttribute_;
        if (!t->derivation) {
            shape.content = shapeOf(t->content);
            exists_ = !types_.empty() || t->content;
            types_.push_back(shape);
            break;
        }
        const Schema_Derivation& derivation = *t->derivation;
        shape.derivation = shapeOf(derivation);
        if (!shape.derivation) break;
        types_.push_back(shape);
        const bool extends = derivation.kind == SCHEMA_KIND_COMPLEX_EXTENSION &&
                             derivation.baseKind == SCHEMA_KIND_COMPLEX_TYPE;
        exists_ = !extends;
        t = extends ? static_cast<const Schema_ComplexType*>(derivation.base) : nullptr;
    }
    if (!exists_) return;
    for (std::size_t i = 0; i + 1 < types_.size(); ++i) derivations_[i].base = &types_[i + 1];
    for (std::size_t i = 0; i != waiting_.size(); ++i) {
        const Schema_ModelGroup& model = *waiting_[i];
        if (!model.particles) continue;
        std::vector<Schema_Object>& particles = particles_.emplace_back();
        for (std::uint32_t p = 0; p != model.particleCount; ++p)
            particles.push_back(shapeOf(model.particles[p]));
        known_.at(&model)->particles = particles.data();
    }
}

// The base follows later, if it counts.
const Schema_Derivation* ContentShape::shapeOf(const Schema_Derivation& derivation)
{
    if (derivation.kind != SCHEMA_KIND_COMPLEX_EXTENSION &&
        derivation.kind != SCHEMA_KIND_COMPLEX_RESTRICTION)
        return nullptr;
    Schema_Derivation shape{};
    shape.kind = derivation.kind;
    shape.baseKind = SCHEMA_KIND_COMPLEX_TYPE;
    shape.base = &nothing_;
    shape.content = shapeOf(derivation.content);
    derivations_.push_back(shape);
    return &derivations_.back();
}

// The particles follow later, so that groups may lie in one another as they like.
const Schema_ModelGroup* ContentShape::shapeOf(const Schema_ModelGroup* model)
{
    if (!model) return nullptr;
    Schema_ModelGroup*& place = known_[model];
    if (!place) {
        groups_.push_back(*model);
        place = &groups_.back();
        waiting_.push_back(model);
    }
    return place;
}

Schema_Object ContentShape::shapeOf(const Schema_Object& particle)
{
    if (particle.kind == SCHEMA_KIND_MODEL_GROUP)
        return {shapeOf(static_cast<const Schema_ModelGroup*>(particle.def)), particle.kind};
    const auto* element = static_cast<const Schema_ElementDecl*>(particle.def);
    const Schema_ElementDecl* final =
        particle.kind == SCHEMA_KIND_ELEMENT ? recordAtEnd(element) : nullptr;
    if (!final) return particle;
    Schema_ElementDecl& shape = elements_.emplace_back(*final);
    shape.type = nullptr;
    if (!element->ref) return {&shape, particle.kind};
    Schema_ElementDecl& reference = elements_.emplace_back(*element);
    reference.ref = &shape;
    return {&reference, particle.kind};
}

}  // namespace netxml::tool
