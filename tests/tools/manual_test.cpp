// The manual page: renders without a warning and tells all that the tool has.
#include "tool_process.hpp"

#include <gtest/gtest.h>

namespace netxml::testing {
namespace {

TEST(Manual, IsMadeWithTheVersionAndADate)
{
    const std::string page = readText(NETXML_MANUAL);
    EXPECT_EQ(page.find(".TH NETXML 1 \"20"), 0u);
    EXPECT_NE(page.find("\"netxml " NETXML_TOOL_VERSION "\""), std::string::npos);
    EXPECT_EQ(page.find('@'), std::string::npos) << "a variable without a value";
}

TEST(Manual, NamesEveryOptionOfTheHelp)
{
    const std::string page = readText(NETXML_MANUAL);
    const std::vector<std::vector<std::string>> commands = {
        {"check"}, {"format"},   {"convert"},          {"tree"},
        {"path"},  {"validate"}, {"schema", "compile"}};
    for (std::vector<std::string> command : commands) {
        command.emplace_back("--help");
        const std::string help = runTool(command).out;
        for (std::size_t at = 0; (at = help.find("--", at)) != std::string::npos;) {
            std::size_t end = at + 2;
            while (end < help.size() &&
                   (std::isalpha(static_cast<unsigned char>(help[end])) || help[end] == '-'))
                ++end;
            std::string option;
            for (const char c : help.substr(at, end - at))
                option += c == '-' ? "\\-" : std::string{c};
            EXPECT_NE(page.find(option), std::string::npos) << command[0] << " " << option;
            at = end;
        }
    }
}

TEST(Manual, RendersWithoutAWarning)
{
    const Ran ran = runProgram({"groff", "-man", "-Tascii", "-ww", NETXML_MANUAL});
    ASSERT_NE(ran.status, 126) << "install groff-base";
    EXPECT_EQ(ran.status, 0);
    EXPECT_EQ(ran.err, "");
    EXPECT_NE(ran.out.find("The command line is mistaken."), std::string::npos);
}

}  // namespace
}  // namespace netxml::testing
