// The schema that documents are validated by: one that is built in, or schema documents.
#pragma once

#include "known_schema.hpp"
#include "options.hpp"
#include "outcome.hpp"
#include "top_level_index.hpp"
#include "xsd/compile_schema.hpp"
#include "xsd/runtime_schema.hpp"

#include <memory>
#include <optional>

namespace netxml::tool {

class ChosenSchema {
public:
    // Reads the schema documents that the options name, unless they name one that is built in.
    // Throws std::bad_alloc.
    explicit ChosenSchema(const Options& options);

    // What is wrong with the documents, and what their records say otherwise.
    const Outcome& outcome() const { return outcome_; }
    // Nothing when the schema cannot be used.
    const TopLevelIndex* elements() const { return elements_ ? &*elements_ : nullptr; }

private:
    std::optional<RegisteredSchema> known_;
    std::unique_ptr<xsd::CompiledSchema> compiled_;
    std::unique_ptr<xsd::RuntimeSchema> runtime_;
    std::optional<TopLevelIndex> elements_;
    Outcome outcome_;
};

}  // namespace netxml::tool
