// Facets, within and without a run that keeps compiled patterns.
#pragma once

#include "netxml/schema.h"

#include <cstdint>

namespace netxml {

class PatternCache;

// Schema_CheckFacet() with arguments that are there. `patterns` may be nullptr.
bool facetHolds(const Schema_Facet& facet, const char* value, std::uint32_t size, char* message,
                PatternCache* patterns) noexcept;

}  // namespace netxml
