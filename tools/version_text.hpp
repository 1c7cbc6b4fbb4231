// What --version prints.
#pragma once

#include <string>

namespace netxml::tool {

// The version, the compiler, and what the build was configured with.
std::string versionText();

}  // namespace netxml::tool
