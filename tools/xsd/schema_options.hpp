// What the command line says about schema documents.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace netxml::xsd {

struct SchemaOptions {
    using Pairs = std::vector<std::pair<std::string, std::string>>;

    std::vector<std::string> files;
    std::vector<std::string> includePaths;  // directories
    std::vector<std::string> catalogs;      // files
    Pairs locations;                        // a namespace or location, and the file that has it
    Pairs typeMap;       // a type of XML Schema, and the one that stands for it or "native"
    Pairs namespaceMap;  // a namespace, and its part of identifiers
    std::string networkNamespace;  // in which the network types are known by their names
    bool strict = false;
};

}  // namespace netxml::xsd
