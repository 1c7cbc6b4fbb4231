// From the arguments of the process to options.
#pragma once

#include "options.hpp"

#include <optional>

namespace netxml::tool {

// Reads the command line. Where that is all there is to do (help, the version, a mistake in usage),
// it has been written and `status` is the exit status.
std::optional<Options> readCommandLine(int count, char** arguments, int& status);

}  // namespace netxml::tool
