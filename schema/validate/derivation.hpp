// The chain of types that a complex type is derived from.
#pragma once

#include "netxml/schema.h"

namespace netxml {

inline bool hasSimpleContent(const Schema_Derivation& derivation) noexcept
{
    return derivation.kind == SCHEMA_KIND_SIMPLE_RESTRICTION ||
           derivation.kind == SCHEMA_KIND_SIMPLE_EXTENSION;
}

// The type that a type is derived from when that is a complex one, else nullptr.
inline const Schema_ComplexType* complexBase(const Schema_ComplexType& type) noexcept
{
    const Schema_Derivation* derivation = type.derivation;
    if (!derivation || derivation->baseKind != SCHEMA_KIND_COMPLEX_TYPE) return nullptr;
    return static_cast<const Schema_ComplexType*>(derivation->base);
}

// Whether every derivation along the chain is of a known kind and has a base, and the chain ends.
bool basesAreSound(const Schema_ComplexType& type) noexcept;

}  // namespace netxml
