// Characters that an encoding lacks.
#pragma once

#include "netxml/base.h"

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>

namespace netxml::tool {

// Tells which characters an encoding has; each is tried once.
class Repertoire {
public:
    explicit Repertoire(XML_Encoding encoding) : encoding_{encoding} {}

    bool has(std::string_view character);

private:
    XML_Encoding encoding_;
    std::unordered_map<std::string, bool> tried_;
};

// A character that cannot be written as a reference where it stands.
struct MissingCharacter : std::runtime_error {
    MissingCharacter(std::size_t at, std::uint32_t character, const char* in)
        : std::runtime_error{in}, offset{at}, code{character}
    {
    }
    std::size_t offset;  // in the text
    std::uint32_t code;
};

// `text`, which is well-formed UTF-8, with a numeric reference in the place of each character in
// character data and attribute values that the repertoire lacks. Throws MissingCharacter for one in
// any other place.
std::string referMissing(std::string_view text, Repertoire& repertoire);

}  // namespace netxml::tool
