#include "schema/validate/derivation.hpp"

#include <cstddef>

namespace netxml {
namespace {

bool isSound(const Schema_Derivation& derivation) noexcept
{
    const bool knownKind = hasSimpleContent(derivation) ||
                           derivation.kind == SCHEMA_KIND_COMPLEX_RESTRICTION ||
                           derivation.kind == SCHEMA_KIND_COMPLEX_EXTENSION;
    const bool knownBase = derivation.baseKind == SCHEMA_KIND_COMPLEX_TYPE ||
                           derivation.baseKind == SCHEMA_KIND_SIMPLE_TYPE;
    return knownKind && knownBase && derivation.base;
}

}  // namespace

// Brent's algorithm finds a circle: one pointer stays behind while the other goes on for twice as
// long.
bool basesAreSound(const Schema_ComplexType& type) noexcept
{
    const Schema_ComplexType* behind = &type;
    std::size_t steps = 0;
    std::size_t limit = 1;
    for (const Schema_ComplexType* t = &type; t->derivation;) {
        if (!isSound(*t->derivation)) return false;
        t = complexBase(*t);
        if (!t) return true;
        if (t == behind) return false;
        if (++steps == limit) {
            behind = t;
            steps = 0;
            limit *= 2;
        }
    }
    return true;
}

}  // namespace netxml
