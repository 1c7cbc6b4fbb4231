// Writing a whole file so that a failure loses nothing.
#pragma once

#include <string>
#include <string_view>

namespace netxml::tool {

// Puts `contents` into the file at `path`. It goes to a new file beside the target, with the
// target's permissions, which is committed to storage and then takes the target's name. A symbolic
// link stays, and what it points at is written. A device or a pipe is written directly. Throws
// Failure; the target is as it was then.
void writeFile(const std::string& path, std::string_view contents);

// Writes everything to a descriptor. Returns 0, or errno's value.
int writeAll(int descriptor, std::string_view contents);

}  // namespace netxml::tool
