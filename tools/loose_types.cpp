#include "loose_types.hpp"

namespace netxml::tool {
namespace {

constexpr const char* kAnyNamespace = "##any";

}  // namespace

LooseTypes::LooseTypes(const Schema_ComplexType& type, const std::vector<Schema_Object>& particles)
    : type_{type}, parts_{{&passedOver_, SCHEMA_KIND_WILDCARD},
                          {&anyOrder_, SCHEMA_KIND_MODEL_GROUP}}
{
    passedOver_.namespaceName = kAnyNamespace;
    passedOver_.processContents = SCHEMA_PROCESS_SKIP;
    anyOrder_.compositor = SCHEMA_COMPOSITOR_CHOICE;
    anyOrder_.particles = particles.data();
    anyOrder_.particleCount = static_cast<std::uint32_t>(particles.size());
    anyOrder_.maxOccurs = SCHEMA_UNBOUNDED;
    content_.compositor = SCHEMA_COMPOSITOR_SEQUENCE;
    content_.minOccurs = content_.maxOccurs = 1;
}

// Nothing is passed over by leaving the wildcard out: one that occurs never takes its element.
const Schema_ComplexType& LooseTypes::behind(std::uint32_t count)
{
    passedOver_.minOccurs = passedOver_.maxOccurs = count;
    content_.particles = count == 0 ? parts_ + 1 : parts_;
    content_.particleCount = count == 0 ? 1 : 2;
    return holding(content_);
}

const Schema_ComplexType& LooseTypes::attributesOnly()
{
    passedOver_.minOccurs = 0;
    passedOver_.maxOccurs = SCHEMA_UNBOUNDED;
    content_.particles = parts_;
    content_.particleCount = 1;
    return holding(content_);
}

const Schema_ComplexType& LooseTypes::withText()
{
    loose_ = type_;
    loose_.mixed = 1;
    return loose_;
}

// A restriction replaces the content of its base and keeps its attributes.
const Schema_ComplexType& LooseTypes::holding(const Schema_ModelGroup& content)
{
    loose_ = type_;
    loose_.mixed = 1;
    loose_.content = &content;
    if (!type_.derivation) return loose_;
    derivation_ = *type_.derivation;
    derivation_.kind = SCHEMA_KIND_COMPLEX_RESTRICTION;
    derivation_.content = &content;
    loose_.derivation = &derivation_;
    return loose_;
}

AnyAttributes::AnyAttributes(const Schema_SimpleType& values)
{
    any_.namespaceName = kAnyNamespace;
    any_.processContents = SCHEMA_PROCESS_SKIP;
    derivation_.kind = SCHEMA_KIND_SIMPLE_EXTENSION;
    derivation_.base = &values;
    derivation_.baseKind = SCHEMA_KIND_SIMPLE_TYPE;
    derivation_.anyAttribute = &any_;
    type_.derivation = &derivation_;
}

}  // namespace netxml::tool
