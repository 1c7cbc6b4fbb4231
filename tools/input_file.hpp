// Reading whole files.
#pragma once

#include "progress_bar.hpp"

#include <cstdint>
#include <string>

namespace netxml::tool {

struct InputFile {
    std::string bytes;
    bool regular;  // its size was known before
};

// Reads the file at `path`, or standard input for "-"; `name` stands in messages. Tells the
// progress bar what it reads unless the file is a regular one, whose bytes count when they are
// worked on. Throws Failure.
InputFile readFile(const std::string& path, const std::string& name, ProgressBar& progress);

// The size of a regular file, 0 for anything else.
std::uint64_t regularSize(const std::string& path);

}  // namespace netxml::tool
