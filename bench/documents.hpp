// The documents that are measured: made from a seed, so that they are the same everywhere, and
// files of Debian packages where the machine has them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace netxml::bench {

struct Document {
    std::string name;
    std::string text;
    std::size_t elements = 0;  // what every contestant must count; 0: not known beforehand
    bool real = false;         // a file of the machine, which a peer may refuse
};

// The names of all documents that the machine offers.
std::vector<std::string> documentNames();

// Makes or reads a document by its name. Throws std::invalid_argument for an unknown one.
Document makeDocument(std::string_view name);

// What the names say.
inline bool isGb18030(std::string_view name)
{
    return name.ends_with("-gb18030");
}
inline bool isConfiguration(std::string_view name)
{
    return name.starts_with("config-");
}

// Reads a file. Throws std::runtime_error when it cannot be read.
std::string readFile(const char* path);

}  // namespace netxml::bench
