// Writing to files: a failure loses nothing and leaves nothing behind.
#include "tool_process.hpp"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace netxml::testing {
namespace {

constexpr const char* kText = "<a><b/></a>";
constexpr const char* kFormatted = "<a>\n  <b/>\n</a>\n";

class InPlace : public ::testing::Test {
protected:
    void SetUp() override { writeText(file_, kText); }
    Ran format(const std::string& file, std::function<void()> before = {})
    {
        return runTool({"format", "--in-place", file}, {.before = std::move(before)});
    }
    void expectUntouched(const std::string& content)
    {
        EXPECT_EQ(readText(file_), content);
        EXPECT_EQ(dir_.names(), std::vector<std::string>{"a.xml"});
    }
    TempDir dir_;
    const std::string file_ = dir_ / "a.xml";
};

TEST_F(InPlace, ReplacesTheFileAndKeepsItsPermissions)
{
    ASSERT_EQ(chmod(file_.c_str(), 0640), 0);
    const Ran ran = format(file_);
    EXPECT_EQ(ran.status, 0) << ran.err;
    EXPECT_EQ(ran.out, "");
    expectUntouched(kFormatted);
    struct stat status {};
    ASSERT_EQ(stat(file_.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
}

TEST_F(InPlace, DoesNotTouchAFileThatStaysTheSame)
{
    writeText(file_, kFormatted);
    struct stat before {
    }, after{};
    ASSERT_EQ(stat(file_.c_str(), &before), 0);
    EXPECT_EQ(format(file_).status, 0);
    ASSERT_EQ(stat(file_.c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST_F(InPlace, LeavesAMalformedFileUnchanged)
{
    writeText(file_, "<a><b></a>");
    EXPECT_EQ(format(file_).status, 1);
    expectUntouched("<a><b></a>");
}

TEST_F(InPlace, SaysThatAFileIsMissing)
{
    const Ran ran = format(dir_ / "b.xml");
    EXPECT_EQ(ran.status, 4);
    EXPECT_EQ(ran.err,
              dir_ / "b.xml" + ": error: cannot open: No such file or directory. [2010]\n");
    expectUntouched(kText);
}

TEST_F(InPlace, FailsInAReadOnlyDirectory)
{
    ASSERT_EQ(chmod(dir_.path().c_str(), 0555), 0);
    const Ran ran = format(file_, obeyPermissions);
    ASSERT_EQ(chmod(dir_.path().c_str(), 0755), 0);
    EXPECT_EQ(ran.status, 4);
    EXPECT_EQ(ran.err, file_ + ": error: cannot write: Permission denied. [2010]\n");
    expectUntouched(kText);
}

TEST_F(InPlace, RespectsAWriteProtectedFile)
{
    ASSERT_EQ(chmod(file_.c_str(), 0444), 0);
    const Ran ran = format(file_, obeyPermissions);
    EXPECT_EQ(ran.status, 4);
    EXPECT_EQ(ran.err, file_ + ": error: cannot write: Permission denied. [2010]\n");
    expectUntouched(kText);
}

TEST_F(InPlace, AWriteThatFailsLosesNothing)
{
    std::string large = "<a>";
    for (int i = 0; i < 1000; ++i) large += "<b/>";
    large += "</a>";
    writeText(file_, large);
    const Ran ran = format(file_, [] {
        // The size limit also holds for what the tool prints.
        const rlimit limit{2000, 2000};
        setrlimit(RLIMIT_FSIZE, &limit);
    });
    EXPECT_EQ(ran.status, 4);
    EXPECT_EQ(ran.err, file_ + ": error: cannot write: File too large. [2010]\n");
    expectUntouched(large);
}

TEST_F(InPlace, WritesThroughASymbolicLink)
{
    std::filesystem::create_directory(dir_.path() / "sub");
    std::filesystem::create_symlink("../a.xml", dir_.path() / "sub" / "link.xml");
    EXPECT_EQ(format(dir_ / "sub/link.xml").status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(dir_.path() / "sub" / "link.xml"));
    EXPECT_FALSE(std::filesystem::is_symlink(file_));
    EXPECT_EQ(readText(file_), kFormatted);
}

class OutputFile : public ::testing::Test {
protected:
    Ran convert(const std::string& out)
    {
        return runTool({"convert", "--to", "UTF-8", "-", "-o", out}, {.input = "<a/>"});
    }
    static constexpr const char* kResult = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a/>";
    TempDir dir_;
};

TEST_F(OutputFile, IsMadeWithTheUsualPermissions)
{
    const mode_t mask = umask(027);
    const Ran ran = convert(dir_ / "new.xml");
    umask(mask);
    EXPECT_EQ(ran.status, 0) << ran.err;
    EXPECT_EQ(readText(dir_ / "new.xml"), kResult);
    struct stat status {};
    ASSERT_EQ(stat((dir_ / "new.xml").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
    EXPECT_EQ(dir_.names(), std::vector<std::string>{"new.xml"});
}

TEST_F(OutputFile, IsMadeWhereADanglingLinkPoints)
{
    std::filesystem::create_symlink("target.xml", dir_.path() / "link.xml");
    EXPECT_EQ(convert(dir_ / "link.xml").status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(dir_.path() / "link.xml"));
    EXPECT_EQ(readText(dir_ / "target.xml"), kResult);
}

TEST_F(OutputFile, ALinkToItselfIsAnError)
{
    std::filesystem::create_symlink("loop.xml", dir_.path() / "loop.xml");
    const Ran ran = convert(dir_ / "loop.xml");
    EXPECT_EQ(ran.status, 4);
    EXPECT_NE(ran.err.find("cannot write: Too many levels of symbolic links. [2010]"),
              std::string::npos)
        << ran.err;
}

TEST_F(OutputFile, ADeviceIsWrittenDirectly)
{
    EXPECT_EQ(convert("/dev/null").status, 0);
    const Ran full = convert("/dev/full");
    EXPECT_EQ(full.status, 4);
    EXPECT_EQ(full.err, "/dev/full: error: cannot write: No space left on device. [2010]\n");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST_F(OutputFile, ADirectoryIsAnError)
{
    const Ran ran = convert(dir_.path());
    EXPECT_EQ(ran.status, 4);
    EXPECT_EQ(ran.err, dir_.path().string() + ": error: cannot write: Is a directory. [2010]\n");
}

TEST_F(OutputFile, InADirectoryThatIsMissing)
{
    const Ran ran = convert(dir_ / "no/out.xml");
    EXPECT_EQ(ran.status, 4);
    EXPECT_EQ(ran.err,
              dir_ / "no/out.xml" + ": error: cannot write: No such file or directory. [2010]\n");
}

}  // namespace
}  // namespace netxml::testing
