// From schema documents to records.
#pragma once

#include "xsd/diagnostics.hpp"
#include "xsd/records.hpp"
#include "xsd/schema_options.hpp"

#include <memory>

namespace netxml::xsd {

struct CompiledSchema {
    std::shared_ptr<const void> documents;  // the places in records point into them
    SchemaRecords records;
    std::vector<std::string> catalogs;    // files that were read to find documents
    std::vector<tool::Problem> problems;  // in the order of the documents
    bool failed = false;                  // then the records are not to be used
};

// Throws nothing but std::bad_alloc: what is wrong is in the problems.
std::unique_ptr<CompiledSchema> compileSchema(const SchemaOptions& options);

}  // namespace netxml::xsd
