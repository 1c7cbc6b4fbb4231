#include "tool_process.hpp"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <sstream>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace netxml::testing {
namespace {

void redirect(int descriptor, const std::string& path, int flags)
{
    const int opened = open(path.c_str(), flags, 0600);
    if (opened < 0 || dup2(opened, descriptor) < 0) _exit(125);
    close(opened);
}

[[noreturn]] void runChild(const std::vector<std::string>& command, const Surroundings& around,
                           const TempDir& files)
{
    redirect(STDIN_FILENO, files / "in", O_RDONLY);
    redirect(STDOUT_FILENO, files / "out", O_WRONLY | O_CREAT);
    redirect(STDERR_FILENO, files / "err", O_WRONLY | O_CREAT);
    unsetenv("NO_COLOR");
    setenv("TERM", "xterm", 1);
    for (const std::string& variable : around.environment) putenv(strdup(variable.c_str()));
    if (!around.directory.empty() && chdir(around.directory.c_str()) != 0) _exit(125);
    std::vector<char*> arguments;
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    if (around.before) around.before();
    execvp(arguments[0], arguments.data());
    _exit(126);
}

}  // namespace

TempDir::TempDir()
{
    std::string name = (std::filesystem::temp_directory_path() / "netxml-test-XXXXXX").string();
    if (!mkdtemp(name.data())) std::abort();
    path_ = name;
}

TempDir::~TempDir()
{
    std::error_code ignored;
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
    std::filesystem::remove_all(path_, ignored);
}

std::vector<std::string> TempDir::names() const
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator{path_})
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

void writeText(const std::string& path, std::string_view text)
{
    std::ofstream file{path, std::ios::binary | std::ios::trunc};
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    file.close();
    ASSERT_TRUE(file.good()) << path;
}

std::string readText(const std::string& path)
{
    std::ifstream file{path, std::ios::binary};
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

Ran runValidate(std::vector<std::string> arguments, const Surroundings& around)
{
    arguments.insert(arguments.begin(), {"validate", "--schema", "interfaces"});
    return runTool(arguments, around);
}

Ran runProgram(const std::vector<std::string>& command, const Surroundings& around)
{
    const TempDir files;
    writeText(files / "in", around.input);
    const pid_t child = fork();
    if (child == 0) runChild(command, around, files);
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    const int code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return {code, readText(files / "out"), readText(files / "err")};
}

Ran runTool(const std::vector<std::string>& arguments, const Surroundings& around)
{
    std::vector<std::string> command{NETXML_TOOL};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return runProgram(command, around);
}

// A program that root starts gets what the bounding set still holds.
void obeyPermissions()
{
    if (geteuid() != 0) return;
    if (prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE) != 0 ||
        prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH) != 0)
        _exit(124);
}

std::string outlineOf(const std::string& path)
{
    const Ran ran = runTool({"tree", path});
    EXPECT_EQ(ran.status, 0) << ran.err;
    return ran.out;
}

}  // namespace netxml::testing
