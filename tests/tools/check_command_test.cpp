// netxml check: verdicts, messages, several files, directories.
#include "tool_process.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace netxml::testing {
namespace {

struct CheckCase {
    const char* why;
    std::string text;
    int status;
    const char* err;
};

// A line that is longer than what is shown, with a mistake at its 300th character.
std::string longLine()
{
    std::string line = "<a>" + std::string(296, 'x') + "</b>" + std::string(200, 'y');
    return line;
}

const CheckCase kChecks[] = {
    {"a plain document", "<a/>", 0, ""},
    {"a declaration, a comment and an instruction", "<?xml version=\"1.0\"?><!--c--><?p d?><a/>", 0,
     ""},
    {"an empty file", "", 1, "<stdin>:1:1: error: document is empty. [4]\n\n^\n"},
    {"the caret stands under the place", "<a>\n  <b></c>\n</a>", 1,
     "<stdin>:2:8: error: tag name mismatch. [76]\n  <b></c>\n       ^\n"},
    {"a tab stays a tab above the caret", "<a>\n\t<b>\t</c>\n</a>", 1,
     "<stdin>:2:8: error: tag name mismatch. [76]\n\t<b>\t</c>\n\t   \t  ^\n"},
    {"wide characters take two cells", "<a>\xE4\xB8\xAD\xE6\x96\x87</b>", 1,
     "<stdin>:1:8: error: tag name mismatch. [76]\n<a>\xE4\xB8\xAD\xE6\x96\x87</b>\n         ^\n"},
    {"a combining mark takes none", "<a>e\xCC\x81</b>", 1,
     "<stdin>:1:8: error: tag name mismatch. [76]\n<a>e\xCC\x81</b>\n      ^\n"},
    {"a carriage return alone ends a line", "<a>\r<b></c>", 1,
     "<stdin>:2:6: error: tag name mismatch. [76]\n<b></c>\n     ^\n"},
    {"a pair of line end characters is one line end", "<a>\r\n<b></c>\r\n", 1,
     "<stdin>:2:6: error: tag name mismatch. [76]\n<b></c>\n     ^\n"},
    {"a control character does not reach the terminal", "<a>\x1B[31m</a>", 1,
     "<stdin>:1:4: error: invalid character. [9]\n<a>\xEF\xBF\xBD[31m</a>\n   ^\n"},
    {"an undeclared entity", "<a>&nbsp;</a>", 1,
     "<stdin>:1:5: error: undeclared entity. [26]\n<a>&nbsp;</a>\n    ^\n"},
    {"the end of the input", "<a>\n", 1, "<stdin>:2:1: error: tag not finished. [77]\n\n^\n"},
    {"a source in GBK is shown in UTF-8",
     "<?xml version=\"1.0\" encoding=\"GBK\"?>\n<a>\xD6\xD0</b>", 1,
     "<stdin>:2:7: error: tag name mismatch. [76]\n<a>\xE4\xB8\xAD</b>\n       ^\n"},
    {"a source in UTF-16 is shown in UTF-8", std::string{"\xFF\xFE<\0a\0>\0-N<\0/\0b\0>\0", 18}, 1,
     "<stdin>:1:7: error: tag name mismatch. [76]\n<a>\xE4\xB8\xAD</b>\n       ^\n"},
    {"an unknown encoding", "<?xml version=\"1.0\" encoding=\"KOI8-R\"?><a/>", 1,
     "<stdin>:1:37: error: unsupported encoding. [32]\n"
     "<?xml version=\"1.0\" encoding=\"KOI8-R\"?><a/>\n"
     "                                    ^\n"},
    {"bytes that are no text are accepted with a warning", "<a>\xC1\x81</a>", 0,
     "<stdin>:1:4: warning: bytes that are no text in UTF-8. [2004]\n<a>\xEF\xBF\xBD</a>\n   ^\n"},
};

TEST(Check, TellsTheVerdictThePlaceAndTheLine)
{
    for (const CheckCase& c : kChecks) {
        const Ran ran = runTool({"check", "-"}, {.input = c.text});
        EXPECT_EQ(ran.status, c.status) << c.why;
        EXPECT_EQ(ran.err, c.err) << c.why;
        EXPECT_EQ(ran.out, c.status == 0 ? "<stdin>: ok\n" : "") << c.why;
    }
}

TEST(Check, CutsAnOverLongLineAroundThePlace)
{
    const Ran ran = runTool({"check", "-"}, {.input = longLine()});
    EXPECT_EQ(ran.err, "<stdin>:1:302: error: tag name mismatch. [76]\n..." + std::string(58, 'x') +
                           "</b>" + std::string(38, 'y') + "...\n" + std::string(63, ' ') + "^\n");
}

struct JsonCase {
    const char* why;
    const char* file;
    const char* text;
    const char* err;
};

const JsonCase kJson[] = {
    {"the parser's error", "a.xml", "<a></b>",
     R"({"file":"a.xml","line":1,"column":6,"severity":"error",)"
     R"("message":"tag name mismatch.","code":76})"
     "\n"},
    {"a file name with quotes", "a\"b\\.xml", "<a>",
     R"({"file":"a\"b\\.xml","line":1,"column":4,"severity":"error",)"
     R"("message":"tag not finished.","code":77})"
     "\n"},
    {"a file name with a line feed and a broken byte", "a\n\xFF.xml", "<a>",
     "{\"file\":\"a\\u000a\xEF\xBF\xBD.xml\",\"line\":1,\"column\":4,\"severity\":\"error\","
     "\"message\":\"tag not finished.\",\"code\":77}\n"},
    {"quotes in a message", "a.xml", "<a b=>",
     R"({"file":"a.xml","line":1,"column":6,"severity":"error",)"
     R"("message":"string not started expecting \" or '.","code":33})"
     "\n"},
    {"a warning", "a.xml", "<a>\xC1\x81</a>",
     R"({"file":"a.xml","line":1,"column":4,"severity":"warning",)"
     R"("message":"bytes that are no text in UTF-8.","code":2004})"
     "\n"},
};

TEST(Check, WritesErrorsAsJson)
{
    for (const JsonCase& c : kJson) {
        const TempDir dir;
        writeText(dir / c.file, c.text);
        const Ran ran =
            runTool({"check", "--error-format=json", c.file}, {.directory = dir.path()});
        EXPECT_EQ(ran.err, c.err) << c.why;
    }
}

TEST(Check, WritesAMissingFileAsJson)
{
    const Ran ran = runTool({"check", "--error-format=json", "/nowhere/a.xml"});
    EXPECT_EQ(ran.status, 4);
    EXPECT_EQ(ran.err, R"({"file":"/nowhere/a.xml","line":0,"column":0,"severity":"error",)"
                       R"("message":"cannot open: No such file or directory.","code":2010})"
                       "\n");
}

class CheckFiles : public ::testing::Test {
protected:
    void SetUp() override
    {
        writeText(dir_ / "good.xml", "<a/>");
        writeText(dir_ / "bad.xml", "<a>");
        std::filesystem::create_directories(dir_.path() / "sub" / "deep");
        writeText(dir_ / "sub/z.xml", "<z/>");
        writeText(dir_ / "sub/deep/b.xsd", "<b/>");
        writeText(dir_ / "sub/notes.txt", "no XML");
    }
    Ran check(std::vector<std::string> arguments, std::function<void()> before = {})
    {
        arguments.insert(arguments.begin(), "check");
        return runTool(arguments, {.directory = dir_.path(), .before = std::move(before)});
    }
    TempDir dir_;
};

TEST_F(CheckFiles, TheLargestStatusCounts)
{
    EXPECT_EQ(check({"good.xml", "good.xml"}).status, 0);
    EXPECT_EQ(check({"bad.xml", "good.xml"}).status, 1);
    EXPECT_EQ(check({"missing.xml", "bad.xml", "good.xml"}).status, 4);
    EXPECT_EQ(check({"good.xml", "sub"}).status, 4);
}

TEST_F(CheckFiles, EachFileIsReported)
{
    const Ran ran = check({"good.xml", "missing.xml", "bad.xml", "good.xml"});
    EXPECT_EQ(ran.out, "good.xml: ok\ngood.xml: ok\n");
    EXPECT_EQ(ran.err, "missing.xml: error: cannot open: No such file or directory. [2010]\n"
                       "bad.xml:1:4: error: tag not finished. [77]\n<a>\n   ^\n");
}

TEST_F(CheckFiles, QuietPrintsErrorsOnly)
{
    const Ran ran = check({"-q", "good.xml", "bad.xml"});
    EXPECT_EQ(ran.out, "");
    EXPECT_EQ(ran.err, "bad.xml:1:4: error: tag not finished. [77]\n<a>\n   ^\n");
}

TEST_F(CheckFiles, RecursiveTakesTheKnownEndingsInOrder)
{
    const Ran ran = check({"--recursive", "sub", "good.xml"});
    EXPECT_EQ(ran.status, 0);
    EXPECT_EQ(ran.out, "sub/deep/b.xsd: ok\nsub/z.xml: ok\ngood.xml: ok\n");
}

TEST_F(CheckFiles, ADirectoryWithoutRecursiveIsAnError)
{
    EXPECT_EQ(check({"sub"}).err, "sub: error: cannot read: Is a directory. [2010]\n");
}

TEST_F(CheckFiles, ADirectoryThatCannotBeReadDoesNotHideTheOthers)
{
    ASSERT_EQ(chmod((dir_ / "sub/deep").c_str(), 0), 0);
    const Ran ran = check({"-r", "sub"}, obeyPermissions);
    chmod((dir_ / "sub/deep").c_str(), 0700);
    EXPECT_EQ(ran.status, 4);
    EXPECT_EQ(ran.out, "sub/z.xml: ok\n");
    EXPECT_EQ(ran.err, "sub/deep: error: cannot read: Permission denied. [2010]\n");
}

TEST_F(CheckFiles, ALinkIntoItsOwnDirectoryIsNotFollowed)
{
    std::filesystem::create_directory_symlink("..", dir_.path() / "sub" / "loop");
    EXPECT_EQ(check({"-r", "sub"}).out, "sub/deep/b.xsd: ok\nsub/z.xml: ok\n");
}

TEST_F(CheckFiles, JobsKeepTheOrderOfTheFiles)
{
    std::vector<std::string> arguments{"--jobs=4"};
    std::string out;
    std::string err;
    for (int i = 0; i < 60; ++i) {
        const std::string name = std::to_string(i) + ".xml";
        // Large and small ones by turns, so that they are not done in order.
        const std::string content(i % 3 == 0 ? 400000 : 3, 'x');
        writeText(dir_ / name, "<a>" + content + (i % 7 == 0 ? "</b>" : "</a>"));
        arguments.push_back(name);
        if (i % 7 == 0)
            err.append(name + ":1:").append(std::to_string(content.size() + 6)).append("\n");
        else out += name + ": ok\n";
    }
    const Ran ran = check(arguments);
    EXPECT_EQ(ran.status, 1);
    EXPECT_EQ(ran.out, out);
    std::string places;
    for (std::size_t at = 0; (at = ran.err.find(": error", at)) != std::string::npos; ++at) {
        const std::size_t begin = ran.err.rfind('\n', at) + 1;
        places += ran.err.substr(begin, at - begin) + "\n";
    }
    EXPECT_EQ(places, err);
}

}  // namespace
}  // namespace netxml::testing
