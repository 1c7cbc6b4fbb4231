// Where schema documents are found: beside each other, in directories, or by a catalog. Never on
// the network.
#pragma once

#include "xsd/diagnostics.hpp"
#include "xsd/schema_options.hpp"

#include <map>
#include <optional>
#include <string>

namespace netxml::xsd {

class SchemaLocations {
public:
    // Reads the catalogs (OASIS XML Catalogs 1.1: uri, system, rewriteURI, rewriteSystem and
    // nextCatalog). What cannot be read is an error.
    SchemaLocations(const SchemaOptions& options, Diagnostics& diagnostics);

    // The file of an included document: `location` as written in the file `from`. Nothing when
    // there is none.
    std::optional<std::string> ofInclude(const std::string& location,
                                         const std::string& from) const;
    // The file of an imported namespace; `location` may be empty.
    std::optional<std::string> ofImport(const std::string& nameSpace, const std::string& location,
                                        const std::string& from) const;

private:
    void readCatalog(const std::string& path, Diagnostics& diagnostics);
    std::optional<std::string> mapped(const std::string& key) const;

    const SchemaOptions& options_;
    std::map<std::string, std::string> known_;     // by namespace or location
    std::map<std::string, std::string> prefixes_;  // of locations
};

// The directory part of a path, with its slash; empty when there is none.
std::string directoryOf(const std::string& path);

}  // namespace netxml::xsd
