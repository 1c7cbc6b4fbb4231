// What the compiler of schema documents has to say, each with its place.
#pragma once

#include "outcome.hpp"

#include <cstdint>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace netxml::xsd {

// Where something stands in a schema document.
struct SourcePlace {
    const std::string* file = nullptr;  // as it was named; lives as long as the schema
    std::uint32_t line = 0;
    std::uint32_t column = 0;
};

// "FILE:LINE", for comments in generated code.
std::string lineOf(const SourcePlace& place);

class Diagnostics {
public:
    explicit Diagnostics(bool strict) : strict_{strict} {}

    // The schema cannot be used.
    void error(const SourcePlace& place, std::string message);
    // The records say something else than the schema; an error when the run is strict.
    void approximate(const SourcePlace& place, std::string message);
    // A problem that another part of the tool has found.
    void add(const tool::Problem& problem);

    bool failed() const { return failed_; }
    const std::vector<tool::Problem>& problems() const { return problems_; }

private:
    void report(const SourcePlace& place, std::string message, tool::Problem::Severity severity,
                tool::ToolCode code);

    bool strict_;
    bool failed_ = false;
    std::vector<tool::Problem> problems_;
    std::set<std::tuple<std::string, std::uint32_t, std::uint32_t, std::string>> known_;
};

}  // namespace netxml::xsd
