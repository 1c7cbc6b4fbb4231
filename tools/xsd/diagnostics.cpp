#include "xsd/diagnostics.hpp"

#include <utility>

namespace netxml::xsd {

using tool::Problem;
using tool::ToolCode;

std::string lineOf(const SourcePlace& place)
{
    return place.file ? *place.file + ":" + std::to_string(place.line) : std::string{"built in"};
}

void Diagnostics::report(const SourcePlace& place, std::string message, Problem::Severity severity,
                         ToolCode code)
{
    Problem problem;
    problem.file = place.file ? *place.file : "<built in>";
    problem.line = place.line;
    problem.column = place.column;
    problem.severity = severity;
    problem.message = std::move(message);
    problem.code = static_cast<std::uint32_t>(code);
    add(problem);
}

void Diagnostics::add(const Problem& problem)
{
    // One mistake may be met on several ways.
    if (!known_.emplace(problem.file, problem.line, problem.column, problem.message).second) return;
    problems_.push_back(problem);
    if (problem.severity == Problem::Severity::Error) failed_ = true;
}

void Diagnostics::error(const SourcePlace& place, std::string message)
{
    report(place, std::move(message), Problem::Severity::Error, ToolCode::SchemaBroken);
}

void Diagnostics::approximate(const SourcePlace& place, std::string message)
{
    report(place, std::move(message),
           strict_ ? Problem::Severity::Error : Problem::Severity::Warning,
           ToolCode::SchemaApproximated);
}

}  // namespace netxml::xsd
