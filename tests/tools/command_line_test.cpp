// The command line: help, version, mistakes, colours.
#include "tool_process.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace netxml::testing {
namespace {

struct MistakeCase {
    const char* why;
    std::vector<std::string> arguments;
    const char* message;
};

const MistakeCase kMistakes[] = {
    {"no command", {}, "A subcommand is required"},
    {"an unknown command", {"frob"}, "\"frob\" is no command"},
    {"an unknown option in front", {"--frob"}, "\"--frob\" is no option here"},
    {"an unknown option",
     {"check", "--frob", "a"},
     "The following argument was not expected: --frob"},
    {"check without a file", {"check"}, "FILE is required"},
    {"convert without an encoding", {"convert", "a"}, "--to is required"},
    {"convert to an unknown encoding",
     {"convert", "--to", "KOI8-R", "a"},
     "--to: \"KOI8-R\" is none of UTF-8, UTF-16LE, UTF-16BE, GB2312, UTF-32LE, UTF-32BE, UTF-16, "
     "UTF-32, GBK, GB18030, UCS-4, UCS-4BE, UCS-4LE"},
    {"path without a file", {"path", "/a"}, "FILE is required"},
    {"a path that is none",
     {"path", "a/b", "a"},
     "PATH: \"a/b\" is no path such as /config/interface[2]/name[1]"},
    {"a path with an empty step",
     {"path", "/a//b", "a"},
     "PATH: \"/a//b\" is no path such as /config/interface[2]/name[1]"},
    {"a path with position 0",
     {"path", "/a[0]", "a"},
     "PATH: \"/a[0]\" is no path such as /config/interface[2]/name[1]"},
    {"a path with an open bracket",
     {"path", "/a[", "a"},
     "PATH: \"/a[\" is no path such as /config/interface[2]/name[1]"},
    {"a path with a prefix",
     {"path", "/p:a", "a"},
     "PATH: \"/p:a\" is no path such as /config/interface[2]/name[1]"},
    {"an indentation out of range",
     {"format", "--indent", "17", "a"},
     "--indent: \"17\" is neither a number up to 16 nor \"tab\""},
    {"an indentation that is no number",
     {"format", "--indent", "x", "a"},
     "--indent: \"x\" is neither a number up to 16 nor \"tab\""},
    {"check and write at once",
     {"format", "--check", "--in-place", "a"},
     "--check excludes --in-place"},
    {"standard input in place",
     {"format", "--in-place", "-"},
     "--in-place: standard input cannot be written to"},
    {"standard input twice", {"check", "-", "-"}, "FILE: standard input can be read only once"},
    {"an unknown colour",
     {"check", "--color=blue", "a"},
     "--color: \"blue\" is none of auto, always, never"},
    {"an unknown error format",
     {"check", "--error-format=xml", "a"},
     "--error-format: \"xml\" is none of text, json"},
    {"too many jobs", {"check", "--jobs=257", "a"}, "--jobs: Value 257 not in range 0 to 256"},
};

TEST(CommandLine, AMistakeHasStatus2)
{
    for (const MistakeCase& c : kMistakes) {
        const Ran ran = runTool(c.arguments);
        EXPECT_EQ(ran.status, 2) << c.why;
        EXPECT_EQ(ran.out, "") << c.why;
        EXPECT_EQ(ran.err, std::string{"netxml: "} + c.message + "\nTry \"netxml --help\".\n")
            << c.why;
    }
}

TEST(CommandLine, EachCommandHasHelpWithAnExample)
{
    for (const char* command : {"check", "format", "convert", "tree", "path", "validate"}) {
        const Ran ran = runTool({command, "--help"});
        EXPECT_EQ(ran.status, 0) << command;
        EXPECT_EQ(ran.err, "") << command;
        EXPECT_NE(ran.out.find(std::string{"Usage: netxml "} + command), std::string::npos);
        EXPECT_NE(ran.out.find(std::string{"Example:\n  netxml "} + command), std::string::npos);
        EXPECT_NE(ran.out.find("Exit status"), std::string::npos) << command;
    }
}

TEST(CommandLine, HelpNamesTheCommandsAndTheEndings)
{
    const std::string help = runTool({"--help"}).out;
    for (const char* command : {"check", "format", "convert", "tree", "path", "validate"})
        EXPECT_NE(help.find(std::string{"\n  "} + command), std::string::npos) << command;
    EXPECT_NE(runTool({"check", "-h"}).out.find("*.xml, *.xsd, *.xsl"), std::string::npos);
}

TEST(CommandLine, VersionTellsHowItWasBuilt)
{
    const Ran ran = runTool({"--version"});
    EXPECT_EQ(ran.status, 0);
    EXPECT_EQ(ran.out.find("netxml " NETXML_TOOL_VERSION "\ncompiler: "), 0u) << ran.out;
    EXPECT_NE(ran.out.find("\niconv: "), std::string::npos);
    EXPECT_NE(ran.out.find("\nencodings: UTF-8 UTF-16LE UTF-16BE GB2312 UTF-32LE UTF-32BE UTF-16 "
                           "UTF-32 GBK GB18030 UCS-4 UCS-4BE UCS-4LE\n"),
              std::string::npos)
        << ran.out;
}

struct ColorCase {
    const char* why;
    const char* option;
    std::vector<std::string> environment;
    bool colored;
};

const ColorCase kColors[] = {
    {"not on a file", "--color=auto", {}, false},
    {"always", "--color=always", {}, true},
    {"never", "--color=never", {}, false},
    {"an option wins over the environment", "--color=always", {"NO_COLOR=1"}, true},
};

constexpr const char* kColoredError = "\033[1m<stdin>:1:4:\033[0m \033[1;31merror:\033[0m "
                                      "tag not finished. [77]\n<a>\n   \033[1;32m^\033[0m\n";
constexpr const char* kPlainError = "<stdin>:1:4: error: tag not finished. [77]\n<a>\n   ^\n";

TEST(CommandLine, ColorsAsTold)
{
    for (const ColorCase& c : kColors) {
        const Ran ran =
            runTool({"check", c.option, "-"}, {.input = "<a>", .environment = c.environment});
        EXPECT_EQ(ran.err, c.colored ? kColoredError : kPlainError) << c.why;
    }
}

TEST(CommandLine, JsonIsNeverColored)
{
    const Ran ran =
        runTool({"check", "--color=always", "--error-format=json", "-"}, {.input = "<a>"});
    EXPECT_EQ(ran.err.find('\033'), std::string::npos);
}

TEST(CommandLine, AFullDeviceIsStatus4)
{
    const Ran ran = runTool({"tree", "-"}, {.input = "<a/>", .before = [] {
                                                dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO);
                                            }});
    EXPECT_EQ(ran.status, 4);
    EXPECT_EQ(ran.err, "<stdout>: error: cannot write: No space left on device. [2010]\n");
}

TEST(CommandLine, AClosedStandardOutputIsStatus4)
{
    const Ran ran =
        runTool({"tree", "-"}, {.input = "<a/>", .before = [] { close(STDOUT_FILENO); }});
    EXPECT_EQ(ran.status, 4);
    EXPECT_EQ(ran.err, "<stdout>: error: cannot write: Bad file descriptor. [2010]\n");
}

TEST(CommandLine, AClosedPipeEndsQuietly)
{
    const Ran ran = runTool({"tree", "-"}, {.input = "<a/>", .before = [] {
                                                int ends[2];
                                                if (pipe(ends) != 0) _exit(125);
                                                close(ends[0]);
                                                dup2(ends[1], STDOUT_FILENO);
                                            }});
    EXPECT_EQ(ran.status, 0);
    EXPECT_EQ(ran.err, "");
}

}  // namespace
}  // namespace netxml::testing
