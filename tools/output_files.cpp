#include "output_files.hpp"

#include "outcome.hpp"
#include "safe_write.hpp"

#include <cstdlib>
#include <map>
#include <memory>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>

namespace netxml::tool {
namespace {

// A file is told by its device and number; one that does not exist yet, by those of its directory
// and by its name.
using Identity = std::tuple<dev_t, ino_t, std::string>;

enum class Kind { Regular, Missing, Other };

struct Known {
    Kind kind;
    Identity identity;
};

Known known(int result, const struct stat& status)
{
    if (result != 0) return {Kind::Missing, {}};
    return {S_ISREG(status.st_mode) ? Kind::Regular : Kind::Other,
            {status.st_dev, status.st_ino, {}}};
}

Known inputAt(const std::string& path)
{
    struct stat status {};
    const int result = path == "-" ? fstat(STDIN_FILENO, &status) : stat(path.c_str(), &status);
    return known(result, status);
}

Known outputAt(const std::string& path)
{
    struct stat status {};
    if (const int result = stat(path.c_str(), &status); result == 0) return known(result, status);
    const std::string target = finalPath(path);
    const std::size_t slash = target.rfind('/');
    const std::string directory = slash == std::string::npos ? "." : target.substr(0, slash + 1);
    // That a directory is missing is found when the file is written.
    if (stat(directory.c_str(), &status) != 0) return {Kind::Missing, {0, 0, target}};
    return {Kind::Missing, {status.st_dev, status.st_ino, target.substr(slash + 1)}};
}

Failure refusal(const std::string& path, const std::string& why)
{
    Problem problem;
    problem.file = path;
    problem.message = why;
    problem.code = static_cast<std::uint32_t>(ToolCode::File);
    return Failure{Status::Usage, problem};
}

}  // namespace

void refuseSharedOutputs(const std::vector<std::string>& outputs,
                         const std::vector<std::string>& inputs)
{
    std::map<Identity, std::string> read;
    for (const std::string& input : inputs) {
        const Known file = inputAt(input);
        if (file.kind == Kind::Regular) read.emplace(file.identity, input);
    }
    std::map<Identity, std::string> written;
    for (const std::string& output : outputs) {
        if (output == "-")
            throw refusal(output, "standard output takes none of the files; name one.");
        const Known file = outputAt(output);
        if (file.kind == Kind::Other) continue;
        if (const auto found = read.find(file.identity); found != read.end()) {
            throw refusal(output,
                          "is not written: the schema is read from it" +
                              (found->second == output ? std::string{"."}
                                                       : ", as \"" + found->second + "\"."));
        }
        if (const auto [place, added] = written.emplace(file.identity, output); !added) {
            throw refusal(output,
                          "is not written: another output is the same file" +
                              (place->second == output ? std::string{"."}
                                                       : ", as \"" + place->second + "\"."));
        }
    }
}

}  // namespace netxml::tool
