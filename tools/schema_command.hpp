// netxml schema compile.
#pragma once

#include "options.hpp"
#include "outcome.hpp"

namespace netxml::tool {

// Writes the source, the header and what they depend on; nothing when the schema cannot be used.
// Throws Failure.
Outcome compileSchemas(const Options& options);

}  // namespace netxml::tool
