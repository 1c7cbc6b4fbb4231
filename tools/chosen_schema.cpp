#include "chosen_schema.hpp"

namespace netxml::tool {
namespace {

// Warnings are for who works on the schema; who validates is told that there are some.
std::vector<Problem> inShort(const std::vector<Problem>& problems)
{
    std::vector<Problem> result;
    std::size_t warnings = 0;
    for (const Problem& problem : problems) {
        if (problem.severity == Problem::Severity::Error) result.push_back(problem);
        else if (++warnings == 1) result.push_back(problem);
    }
    for (Problem& problem : result) {
        if (warnings < 2 || problem.severity == Problem::Severity::Error) continue;
        problem.message += " There are " + std::to_string(warnings - 1) +
                           " more places that are not followed exactly; \"netxml schema compile\" "
                           "tells them.";
    }
    return result;
}

}  // namespace

ChosenSchema::ChosenSchema(const Options& options)
{
    const std::vector<std::string>& files = options.schemas.files;
    const KnownSchema* known = files.size() == 1 ? findSchema(files.front()) : nullptr;
    if (known) {
        known_.emplace(*known);
        elements_.emplace(*known_->root());
        return;
    }
    compiled_ = xsd::compileSchema(options.schemas);
    if (!options.quiet || compiled_->failed) outcome_.problems = inShort(compiled_->problems);
    if (compiled_->failed) {
        outcome_.status = Status::Schema;
        return;
    }
    runtime_ = std::make_unique<xsd::RuntimeSchema>(compiled_->records);
    elements_.emplace(*runtime_->root());
}

}  // namespace netxml::tool
