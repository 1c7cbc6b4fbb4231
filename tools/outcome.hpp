// What a command makes of one file: output, problems and an exit status.
#pragma once

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace netxml::tool {

// The exit statuses; of several files the largest counts.
enum class Status { Ok = 0, Rejected = 1, Usage = 2, Invalid = 3, File = 4, Schema = 5 };

// What the tool itself finds, next to the parser's codes (XML_ErrorCode), which stay below 2000.
enum class ToolCode : std::uint32_t {
    DoctypeNotKept = 2001,
    CharacterMissing = 2002,
    NothingAtPath = 2003,
    NotInEncoding = 2004,
    EncodingChanges = 2005,
    NotValid = 2006,
    MoreViolations = 2007,
    File = 2010,
    SchemaBroken = 2020,
    SchemaApproximated = 2021,
    Internal = 2099,
};

struct Problem {
    enum class Severity { Error, Warning };

    std::string file;
    std::uint32_t line = 0;  // from 1; 0 where a problem has no place
    std::uint32_t column = 0;
    Severity severity = Severity::Error;
    std::string message;
    std::uint32_t code = 0;
    std::uint32_t violation = 0;  // what validation found (Schema_ErrorCode), and the path of the
    std::string path;             // element that it says it of; else 0 and empty
    std::string sourceLine;       // the line with the place, and below it a caret; may be empty
    std::string caretLine;
};

struct Outcome {
    std::string output;  // for standard output
    std::vector<Problem> problems;
    Status status = Status::Ok;

    void worsen(Status other) { status = std::max(status, other); }
};

// Ends the work on one file.
class Failure : public std::runtime_error {
public:
    Failure(Status status, Problem problem)
        : std::runtime_error{problem.message}, status_{status}, problem_{std::move(problem)}
    {
    }
    Status status() const { return status_; }
    const Problem& problem() const { return problem_; }

private:
    Status status_;
    Problem problem_;
};

// A file that cannot be opened, read or written; `number` is errno's.
Failure fileFailure(const std::string& file, const char* doing, int number);

// A result that differs from what it was made of: an error of this tool.
Failure internalFailure(const std::string& file, const char* what);

}  // namespace netxml::tool
