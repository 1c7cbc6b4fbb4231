// netxml check: is a file well-formed?
#include "commands.hpp"
#include "source_text.hpp"

namespace netxml::tool {

Outcome checkFile(const std::string& file, const Options& options, ProgressBar& progress)
{
    SourceText source{file, progress};
    source.parse(nullptr);
    Outcome outcome;
    source.warnOfBrokenText(outcome);
    if (!options.quiet) outcome.output = source.name() + ": ok\n";
    return outcome;
}

}  // namespace netxml::tool
