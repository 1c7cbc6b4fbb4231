#include "reporter.hpp"

#include "safe_write.hpp"

#include <cerrno>
#include <unistd.h>

namespace netxml::tool {

Reporter::Reporter(const Options& options, ProgressBar& progress)
    : format_{options.errorFormat}, palette_{wantsColor(options.color, STDERR_FILENO)},
      progress_{progress}
{
}

void Reporter::reportProblem(const Problem& problem)
{
    // Where standard error cannot be written there is nobody left to tell.
    writeAll(STDERR_FILENO,
             format_ == ErrorFormat::Json ? jsonOf(problem) : textOf(problem, palette_));
}

// A reader that closes its pipe has seen enough: that is no failure.
bool Reporter::writeOutput(const std::string& output)
{
    const int error = writeAll(STDOUT_FILENO, output);
    if (error == 0) return true;
    if (error != EPIPE) {
        const Failure failure = fileFailure("<stdout>", "write", error);
        reportProblem(failure.problem());
        status_ = std::max(status_, failure.status());
    }
    return false;
}

bool Reporter::report(const Outcome& outcome)
{
    const ProgressBar::Hidden hidden{progress_};
    status_ = std::max(status_, outcome.status);
    for (const Problem& problem : outcome.problems) reportProblem(problem);
    return writeOutput(outcome.output);
}

}  // namespace netxml::tool
