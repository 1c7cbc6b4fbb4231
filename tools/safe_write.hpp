// Writing a whole file so that a failure loses nothing.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace netxml::tool {

// Puts `contents` into the file at `path`. It goes to a new file beside the target, with the
// target's permissions, which is committed to storage and then takes the target's name. A symbolic
// link stays, and what it points at is written. A device or a pipe is written directly. Throws
// Failure; the target is as it was then.
void writeFile(const std::string& path, std::string_view contents);

// A file and what it is to hold; the contents belong to the caller.
struct NewContents {
    std::string path;
    std::string_view contents;
};

// Writes several files together: each new file is complete before the first one takes its target's
// name, so that a failure up to then changes nothing. They take their names in this order.
void writeFiles(const std::vector<NewContents>& files);

// Where a symbolic link at the end of the path leads, which need not exist yet. Throws Failure when
// links run in a circle.
std::string finalPath(const std::string& path);

// Writes everything to a descriptor. Returns 0, or errno's value.
int writeAll(int descriptor, std::string_view contents);

}  // namespace netxml::tool
