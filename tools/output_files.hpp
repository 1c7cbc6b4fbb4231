// Files that a command is to write, and that must not be ones that it reads.
#pragma once

#include <string>
#include <vector>

namespace netxml::tool {

// Refuses standard output, a file that two outputs name, and one of `inputs`, in whatever way it is
// named: by another path, or through a link. Devices and pipes may be named twice, since nothing is
// lost there. Throws Failure.
void refuseSharedOutputs(const std::vector<std::string>& outputs,
                         const std::vector<std::string>& inputs);

}  // namespace netxml::tool
