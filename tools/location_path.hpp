// Paths such as "/config/interface[2]/name[1]".
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace netxml::tool {

struct PathStep {
    std::string name;          // without a prefix
    std::size_t position = 0;  // among the siblings of that name, from 1; 0 for all of them

    std::string text() const;
};

// Reads a path; nothing for anything else.
//
//     path := ("/" name ("[" positive-number "]")?)+
//
// A name has no colon: as everywhere in the library, paths do not know prefixes.
std::optional<std::vector<PathStep>> readPath(const std::string& text);

}  // namespace netxml::tool
