// The commands: what each does with one file. All throw Failure.
#pragma once

#include "color.hpp"
#include "options.hpp"
#include "outcome.hpp"
#include "progress_bar.hpp"

#include <string>

namespace netxml::tool {

Outcome checkFile(const std::string& file, const Options& options, ProgressBar& progress);
Outcome formatFile(const std::string& file, const Options& options, ProgressBar& progress);
Outcome convertFile(const std::string& file, const Options& options, ProgressBar& progress);
Outcome outlineFile(const std::string& file, const Options& options, ProgressBar& progress);
Outcome findInFile(const std::string& file, const Options& options, ProgressBar& progress);
Outcome validateFile(const std::string& file, const Options& options, ProgressBar& progress);

}  // namespace netxml::tool
