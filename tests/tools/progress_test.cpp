// The progress bar and colours, on a terminal of the test's own.
#include "tool_process.hpp"

#include <chrono>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace netxml::testing {
namespace {

// The tool with a pipe on standard input and a terminal on standard error.
class OnTerminal {
public:
    explicit OnTerminal(std::vector<std::string> arguments,
                        const std::vector<std::string>& environment = {})
    {
        int input[2];
        int terminal = -1;
        if (pipe2(input, O_CLOEXEC) != 0 ||
            openpty(&master_, &terminal, nullptr, nullptr, nullptr) != 0)
            std::abort();
        fcntl(master_, F_SETFD, FD_CLOEXEC);
        child_ = fork();
        if (child_ == 0) {
            dup2(input[0], STDIN_FILENO);
            dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
            dup2(terminal, STDERR_FILENO);
            unsetenv("NO_COLOR");
            setenv("TERM", "xterm", 1);
            for (const std::string& e : environment) putenv(const_cast<char*>(e.c_str()));
            arguments.insert(arguments.begin(), NETXML_TOOL);
            std::vector<char*> argv;
            for (std::string& argument : arguments) argv.push_back(argument.data());
            argv.push_back(nullptr);
            execv(argv[0], argv.data());
            _exit(126);
        }
        close(input[0]);
        close(terminal);
        input_ = input[1];
    }
    ~OnTerminal()
    {
        closeInput();
        close(master_);
        if (child_ > 0) waitpid(child_, nullptr, 0);
    }
    OnTerminal(const OnTerminal&) = delete;
    OnTerminal& operator=(const OnTerminal&) = delete;

    void type(std::string_view text)
    {
        EXPECT_EQ(write(input_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    void closeInput()
    {
        if (input_ >= 0) close(input_);
        input_ = -1;
    }
    // Everything that came to the terminal until the tool ended.
    std::string finish()
    {
        closeInput();
        std::string shown;
        char buffer[4096];
        ssize_t count = 0;
        while ((count = read(master_, buffer, sizeof buffer)) > 0)
            shown.append(buffer, static_cast<std::size_t>(count));
        waitpid(child_, nullptr, 0);
        child_ = 0;
        return shown;
    }

private:
    pid_t child_ = 0;
    int master_ = -1;
    int input_ = -1;
};

constexpr std::string_view kErase = "\r\033[K";

TEST(Progress, IsNotShownForQuickWork)
{
    OnTerminal tool{{"check", "-"}};
    tool.type("<a/>");
    EXPECT_EQ(tool.finish(), "");
}

TEST(Progress, IsShownAfterASecondAndRemoved)
{
    OnTerminal tool{{"check", "-"}};
    tool.type("<a>" + std::string(50000, 'x'));
    std::this_thread::sleep_for(std::chrono::milliseconds{1400});
    tool.type("</a>");
    const std::string shown = tool.finish();
    EXPECT_NE(shown.find("0.1 MB, 0.0 MB/s"), std::string::npos) << shown;
    ASSERT_GE(shown.size(), kErase.size());
    EXPECT_EQ(shown.substr(shown.size() - kErase.size()), kErase) << shown;
}

TEST(Progress, IsRemovedBeforeAnErrorIsWritten)
{
    OnTerminal tool{{"check", "--color=never", "-"}};
    tool.type("<a>");
    std::this_thread::sleep_for(std::chrono::milliseconds{1300});
    const std::string shown = tool.finish();
    const std::size_t error = shown.find("<stdin>:1:4: error");
    ASSERT_NE(error, std::string::npos) << shown;
    EXPECT_EQ(shown.substr(error - kErase.size(), kErase.size()), kErase) << shown;
}

TEST(Progress, IsNotShownWhenQuiet)
{
    OnTerminal tool{{"check", "-q", "-"}};
    tool.type("<a>");
    std::this_thread::sleep_for(std::chrono::milliseconds{1300});
    tool.type("</a>");
    EXPECT_EQ(tool.finish(), "");
}

struct TerminalColorCase {
    const char* why;
    std::vector<std::string> environment;
    bool colored;
};

TEST(Color, OnATerminalUnlessTheEnvironmentSaysNo)
{
    const TerminalColorCase kCases[] = {
        {"a terminal", {}, true},
        {"NO_COLOR", {"NO_COLOR=1"}, false},
        {"an empty NO_COLOR says nothing", {"NO_COLOR="}, true},
        {"a dumb terminal", {"TERM=dumb"}, false},
    };
    for (const TerminalColorCase& c : kCases) {
        OnTerminal tool{{"check", "-"}, c.environment};
        tool.type("<a>");
        const std::string shown = tool.finish();
        EXPECT_NE(shown.find("tag not finished."), std::string::npos) << c.why;
        EXPECT_EQ(shown.find("\033[1;31merror:") != std::string::npos, c.colored) << c.why;
    }
}

}  // namespace
}  // namespace netxml::testing
