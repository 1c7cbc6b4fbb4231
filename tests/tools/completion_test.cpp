// The completion of bash.
#include "tool_process.hpp"

#include <gtest/gtest.h>

namespace netxml::testing {
namespace {

struct CompletionCase {
    const char* why;
    const char* words;  // an array of bash; the last one is completed
    const char* replies;
};

const CompletionCase kCompletions[] = {
    {"all commands", "netxml ''",
     "check format convert tree path validate schema --help --version"},
    {"a command begun", "netxml co", "convert"},
    {"the command of schemas", "netxml schema ''", "compile --help"},
    {"a language", "netxml schema compile --lang ''", "c c++"},
    {"an option of schemas", "netxml schema compile --pre", "--prefix"},
    {"an encoding, in any case", "netxml convert --to gb", "GB2312 GBK GB18030"},
    {"all encodings", "netxml convert -t ''",
     "UTF-8 UTF-16LE UTF-16BE GB2312 UTF-32LE UTF-32BE UTF-16 UTF-32 GBK GB18030 UCS-4 UCS-4BE "
     "UCS-4LE"},
    {"an encoding behind an equals sign", "netxml convert --to = utf-16",
     "UTF-16LE UTF-16BE UTF-16"},
    {"a colour", "netxml check --color = ''", "auto always never"},
    {"the sign itself", "netxml check --color =", "auto always never"},
    {"an error format", "netxml tree --error-format j", "json"},
    {"an option of the command", "netxml format --in", "--indent --in-place"},
    {"an indentation", "netxml format --indent t", "tab"},
    {"convert takes one file", "netxml convert --re", ""},
    {"validate takes several", "netxml validate --re", "--recursive"},
    {"the schema's option", "netxml validate --sch", "--schema"},
    {"the limit's option", "netxml validate --max", "--max-errors"},
    {"files", "netxml check /dev/nul", "/dev/null"},
};

TEST(Completion, CompletesCommandsOptionsAndEncodings)
{
    for (const CompletionCase& c : kCompletions) {
        const std::string script = std::string{"set -u; source '"} + NETXML_COMPLETION +
                                   "'; COMP_WORDS=(" + c.words +
                                   "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _netxml; "
                                   "echo \"${COMPREPLY[@]-}\"";
        const Ran ran = runProgram({"bash", "--norc", "-c", script});
        EXPECT_EQ(ran.status, 0) << c.why << ": " << ran.err;
        EXPECT_EQ(ran.out, std::string{c.replies} + "\n") << c.why;
    }
}

TEST(Completion, IsRegisteredForTheTool)
{
    const Ran ran = runProgram(
        {"bash", "--norc", "-c", "source '" NETXML_COMPLETION "' && complete -p netxml"});
    EXPECT_EQ(ran.out, "complete -F _netxml netxml\n");
}

}  // namespace
}  // namespace netxml::testing
