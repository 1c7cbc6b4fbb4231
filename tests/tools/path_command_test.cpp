// netxml path: what is found, and what is said when nothing is.
#include "tool_process.hpp"

#include <gtest/gtest.h>

namespace netxml::testing {
namespace {

constexpr const char* kConfig =
    "<config xmlns='urn:c' xmlns:p=\"urn:p\">\n"
    "<interface><name>a</name></interface>\n"
    "<other><name>x</name></other>\n"
    "<p:interface k='1' ><name>b &amp; <!--c--></name><mtu/></p:interface>\n"
    "<interface xmlns='urn:d'><name/><name>c</name></interface>\n"
    "</config>\n";

struct FoundCase {
    const char* why;
    const char* path;
    const char* out;
};

const FoundCase kFound[] = {
    {"one of several", "/config/interface[1]/name",
     "<name xmlns:p=\"urn:p\" xmlns='urn:c'>a</name>\n"},
    {"as it is written, with a comment", "/config/interface[2]/name[1]",
     "<name xmlns:p=\"urn:p\" xmlns='urn:c'>b &amp; <!--c--></name>\n"},
    {"all of a name", "/config/interface/name",
     "<name xmlns:p=\"urn:p\" xmlns='urn:c'>a</name>\n"
     "<name xmlns:p=\"urn:p\" xmlns='urn:c'>b &amp; <!--c--></name>\n"
     "<name xmlns='urn:d' xmlns:p=\"urn:p\"/>\n"
     "<name xmlns='urn:d' xmlns:p=\"urn:p\">c</name>\n"},
    {"the second of a name in each", "/config/interface/name[2]",
     "<name xmlns='urn:d' xmlns:p=\"urn:p\">c</name>\n"},
    {"an element that declares the prefix itself", "/config/interface[3]",
     "<interface xmlns:p=\"urn:p\" xmlns='urn:d'><name/><name>c</name></interface>\n"},
    {"a tag with blanks", "/config[1]/interface[2]",
     "<p:interface xmlns:p=\"urn:p\" xmlns='urn:c' k='1' ><name>b &amp; <!--c--></name><mtu/>"
     "</p:interface>\n"},
    {"an empty element", "/config/interface[2]/mtu", "<mtu xmlns:p=\"urn:p\" xmlns='urn:c'/>\n"},
};

TEST(Path, PrintsWhatStandsThere)
{
    for (const FoundCase& c : kFound) {
        const Ran ran = runTool({"path", c.path, "-"}, {.input = kConfig});
        EXPECT_EQ(ran.status, 0) << c.why << ": " << ran.err;
        EXPECT_EQ(ran.out, c.out) << c.why;
    }
}

TEST(Path, WhatIsPrintedForOneElementIsADocument)
{
    const Ran ran = runTool({"path", "/config/interface[2]", "-"}, {.input = kConfig});
    EXPECT_EQ(runTool({"check", "-"}, {.input = ran.out}).status, 0);
}

TEST(Path, PrintsTheRootAsItIs)
{
    EXPECT_EQ(runTool({"path", "/config", "-"}, {.input = kConfig}).out, kConfig);
}

TEST(Path, PrintsUtf8)
{
    const Ran ran = runTool({"path", "/a/\xE5\x90\x8D", "-"},
                            {.input = "<?xml version=\"1.0\" encoding=\"GBK\"?>"
                                      "<a><\xC3\xFB>\xD6\xD0</\xC3\xFB></a>"});
    EXPECT_EQ(ran.out, "<\xE5\x90\x8D>\xE4\xB8\xAD</\xE5\x90\x8D>\n");
}

TEST(Path, AnUndeclaredDefaultNamespaceStaysUndeclared)
{
    const Ran ran =
        runTool({"path", "/a/b/c", "-"}, {.input = "<a xmlns='urn:a'><b xmlns=''><c/></b></a>"});
    EXPECT_EQ(ran.out, "<c/>\n");
}

struct NothingCase {
    const char* why;
    const char* path;
    const char* message;
};

const NothingCase kNothing[] = {
    {"another root", "/configuration/a",
     "nothing is at /configuration/a: step 1, \"configuration\", matches nothing as the root."},
    {"a position beyond the last", "/config/interface[4]/name",
     "nothing is at /config/interface[4]/name: step 2, \"interface[4]\", matches nothing in "
     "/config."},
    {"the last step", "/config/interface/speed[1]",
     "nothing is at /config/interface/speed[1]: step 3, \"speed[1]\", matches nothing in "
     "/config/interface."},
    {"a second root", "/config[2]",
     "nothing is at /config[2]: step 1, \"config[2]\", matches nothing as the root."},
};

TEST(Path, NamesTheFirstStepThatFails)
{
    for (const NothingCase& c : kNothing) {
        const Ran ran = runTool({"path", c.path, "-"}, {.input = kConfig});
        EXPECT_EQ(ran.status, 1) << c.why;
        EXPECT_EQ(ran.out, "") << c.why;
        EXPECT_EQ(ran.err, std::string{"<stdin>: error: "} + c.message + " [2003]\n") << c.why;
    }
}

TEST(Path, LooksIntoEachFile)
{
    const TempDir dir;
    writeText(dir / "1.xml", "<a><b>1</b></a>");
    writeText(dir / "2.xml", "<a/>");
    const Ran ran = runTool({"path", "/a/b", "2.xml", "1.xml"}, {.directory = dir.path()});
    EXPECT_EQ(ran.status, 1);
    EXPECT_EQ(ran.out, "<b>1</b>\n");
    EXPECT_EQ(ran.err,
              "2.xml: error: nothing is at /a/b: step 2, \"b\", matches nothing in /a. [2003]\n");
}

}  // namespace
}  // namespace netxml::testing
