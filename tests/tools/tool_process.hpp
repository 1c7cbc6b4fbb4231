// Running the built tool, and a directory to do it in.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace netxml::testing {

// A new directory, removed with all that is in it.
class TempDir {
public:
    TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    ~TempDir();

    const std::filesystem::path& path() const { return path_; }
    std::string operator/(std::string_view name) const { return (path_ / name).string(); }
    // The names in the directory, sorted.
    std::vector<std::string> names() const;

private:
    std::filesystem::path path_;
};

void writeText(const std::string& path, std::string_view text);
std::string readText(const std::string& path);

struct Ran {
    int status;  // the exit status; 128 + the signal that ended it
    std::string out;
    std::string err;
};

struct Surroundings {
    std::string input = {};                     // on standard input
    std::string directory = {};                 // to run in; empty for the current one
    std::vector<std::string> environment = {};  // "NAME=value"
    std::function<void()> before = {};          // called in the new process
};

// Runs the tool with these arguments.
Ran runTool(const std::vector<std::string>& arguments, const Surroundings& around = {});
// Validates with these arguments by the schema that is built in.
Ran runValidate(std::vector<std::string> arguments, const Surroundings& around = {});
// Runs a program found on the path.
Ran runProgram(const std::vector<std::string>& command, const Surroundings& around = {});

// Takes the right to pass over file permissions away from a process that root runs.
void obeyPermissions();

// The outline of a document, which tells its tree.
std::string outlineOf(const std::string& path);

}  // namespace netxml::testing
