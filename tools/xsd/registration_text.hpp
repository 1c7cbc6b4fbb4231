// The functions in generated code that put a schema into a root and take it out.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace netxml::xsd {

struct Registration {
    std::string prefix;
    std::size_t objectCount;  // of the array `topObjects`, which does not exist when it is 0
    std::string null;         // a null pointer in the language
    std::vector<std::string> networkTypes;  // as literals; may be empty
    std::string networkNamespace;           // the constant with their namespace
};

std::string registrationText(const Registration& registration);

}  // namespace netxml::xsd
