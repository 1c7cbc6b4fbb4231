// Where schema documents are found: beside each other, in directories, or by a catalog. Never on
// the network.
#pragma once

#include "xsd/diagnostics.hpp"
#include "xsd/schema_options.hpp"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace netxml::xsd {

class SchemaFile;

class SchemaLocations {
public:
    // Reads the catalogs (OASIS XML Catalogs 1.1: uri, system, rewriteURI, rewriteSystem,
    // uriSuffix, systemSuffix and nextCatalog, below xml:base). What cannot be read, or is none, is
    // an error.
    SchemaLocations(const SchemaOptions& options, Diagnostics& diagnostics);

    // The catalogs that were read, in this order.
    const std::vector<std::string>& catalogs() const { return catalogs_; }

    // The file of an included document: `location` as written in the file `from`, a URI or a path.
    // Nothing when there is none.
    std::optional<std::string> ofInclude(const std::string& location,
                                         const std::string& from) const;
    // The file of an imported namespace; `location` may be empty.
    std::optional<std::string> ofImport(const std::string& nameSpace, const std::string& location,
                                        const std::string& from) const;

private:
    void readCatalog(const std::string& path, Diagnostics& diagnostics);
    void readEntries(const SchemaFile& catalog, std::vector<std::string>& waiting);
    std::optional<std::string> ofName(const std::string& location, const std::string& from) const;
    std::optional<std::string> mapped(const std::string& key) const;

    const SchemaOptions& options_;
    std::map<std::string, std::string> known_;     // by namespace or location
    std::map<std::string, std::string> prefixes_;  // of locations
    std::map<std::string, std::string> suffixes_;
    std::vector<std::string> catalogs_;
};

// The directory part of a path, with its slash; empty when there is none.
std::string directoryOf(const std::string& path);

}  // namespace netxml::xsd
