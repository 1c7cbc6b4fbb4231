// The tool: reads the command line, runs the command over the files, and tells what came out.
#include "chosen_schema.hpp"
#include "command_line.hpp"
#include "commands.hpp"
#include "file_list.hpp"
#include "input_file.hpp"
#include "interruption.hpp"
#include "job_queue.hpp"
#include "reporter.hpp"
#include "schema_command.hpp"

#include <cerrno>
#include <new>
#include <unistd.h>

namespace netxml::tool {
namespace {

using Run = Outcome (*)(const std::string&, const Options&, ProgressBar&);

struct CommandRow {
    Command command;
    Run run;
    unsigned passes;
};

constexpr CommandRow kCommands[] = {
    {Command::Check, checkFile, 1},     {Command::Format, formatFile, 2},
    {Command::Convert, convertFile, 2}, {Command::Outline, outlineFile, 1},
    {Command::Path, findInFile, 1},     {Command::Validate, validateFile, 2},
};

const CommandRow& rowOf(Command command)
{
    return kCommands[static_cast<std::size_t>(command)];
}

// The bytes of all files, or 0 where one of them does not tell.
std::uint64_t totalSize(const std::vector<std::string>& files)
{
    std::uint64_t total = 0;
    for (const std::string& file : files) {
        const std::uint64_t size = file == "-" ? 0 : regularSize(file);
        if (size == 0) return 0;
        total += size;
    }
    return total;
}

Outcome runOne(const std::string& file, const Options& options, ProgressBar& progress)
{
    Outcome outcome;
    try {
        return rowOf(options.command).run(file, options, progress);
    } catch (const Failure& failure) {
        outcome.problems.push_back(failure.problem());
        outcome.status = failure.status();
    } catch (const std::bad_alloc&) {
        const Failure failure = fileFailure(file, "work on this", ENOMEM);
        outcome.problems.push_back(failure.problem());
        outcome.status = failure.status();
    }
    return outcome;
}

// Runs what works on one thing instead of a list of documents.
Status runCompileSchema(const Options& options)
{
    ProgressBar silent{false, 0, 1};
    Reporter reporter{options, silent};
    Outcome outcome;
    try {
        outcome = compileSchemas(options);
    } catch (const Failure& failure) {
        outcome.problems.push_back(failure.problem());
        outcome.status = failure.status();
    }
    reporter.report(outcome);
    return reporter.status();
}

Status runAll(Options& options)
{
    const FileList list = listFiles(options.files, options.recursive);
    const bool terminal = isatty(STDERR_FILENO) != 0;
    ProgressBar progress{terminal && !options.quiet, totalSize(list.files),
                         rowOf(options.command).passes};
    Reporter reporter{options, progress};
    reporter.report(list.unreadable);
    std::optional<ChosenSchema> schema;
    if (options.command == Command::Validate) {
        try {
            schema.emplace(options);
        } catch (const std::bad_alloc&) {
            Outcome outcome;
            outcome.problems.push_back(
                fileFailure(options.schemas.files.front(), "use this schema", ENOMEM).problem());
            outcome.status = Status::File;
            reporter.report(outcome);
            return reporter.status();
        }
        reporter.report(schema->outcome());
        options.schema = schema->elements();
        if (!options.schema) return reporter.status();
    }
    runInOrder(
        list.files.size(), options.jobs,
        [&](std::size_t index) { return runOne(list.files[index], options, progress); },
        [&](const Outcome& outcome) { return reporter.report(outcome); });
    return reporter.status();
}

}  // namespace
}  // namespace netxml::tool

int main(int count, char** arguments)
{
    using namespace netxml::tool;
    prepareProcess();
    int status = 0;
    auto options = readCommandLine(count, arguments, status);
    if (!options) return status;
    const bool compiles = options->command == Command::CompileSchema;
    return static_cast<int>(compiles ? runCompileSchema(*options) : runAll(*options));
}
