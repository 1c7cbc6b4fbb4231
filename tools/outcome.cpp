#include "outcome.hpp"

#include <system_error>

namespace netxml::tool {

Failure fileFailure(const std::string& file, const char* doing, int number)
{
    Problem problem;
    problem.file = file;
    problem.message =
        std::string{"cannot "} + doing + ": " + std::generic_category().message(number) + ".";
    problem.code = static_cast<std::uint32_t>(ToolCode::File);
    return Failure{Status::File, std::move(problem)};
}

Failure internalFailure(const std::string& file, const char* what)
{
    Problem problem;
    problem.file = file;
    problem.message = std::string{"internal error: "} + what + "; nothing is written.";
    problem.code = static_cast<std::uint32_t>(ToolCode::Internal);
    return Failure{Status::File, std::move(problem)};
}

}  // namespace netxml::tool
