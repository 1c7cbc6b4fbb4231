// Output, problems and the exit status of a run, as one file after the other comes in.
#pragma once

#include "options.hpp"
#include "outcome.hpp"
#include "problem_text.hpp"
#include "progress_bar.hpp"

namespace netxml::tool {

class Reporter {
public:
    Reporter(const Options& options, ProgressBar& progress);

    // Writes an outcome. False when nobody takes more of the output.
    bool report(const Outcome& outcome);
    Status status() const { return status_; }

private:
    void reportProblem(const Problem& problem);
    bool writeOutput(const std::string& output);

    const ErrorFormat format_;
    const Palette palette_;
    ProgressBar& progress_;
    Status status_ = Status::Ok;
};

}  // namespace netxml::tool
