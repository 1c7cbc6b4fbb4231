// netxml convert: thirteen encodings there and back, and characters that some of them lack.
#include "tool_process.hpp"

#include <gtest/gtest.h>

namespace netxml::testing {
namespace {

constexpr const char* kEncodings[] = {
    "UTF-8",  "UTF-16LE", "UTF-16BE", "GB2312", "UTF-32LE", "UTF-32BE", "UTF-16",
    "UTF-32", "GBK",      "GB18030",  "UCS-4",  "UCS-4BE",  "UCS-4LE",
};

// Chinese that GB2312 has, in a name, a value, a comment, an instruction and text.
constexpr const char* kBody =
    "<!DOCTYPE a [<!ELEMENT a ANY>]>\n<!-- \xE4\xB8\xAD -->\n"
    "<a xmlns:p='urn:\xE6\x96\x87' p:\xE5\x80\xBC=\"\xE4\xB8\xAD &amp; >\">\r\n"
    "  <\xE5\x90\x8D/>\t<![CDATA[ \xE6\x96\x87 <&> ]]>\n<?t \xE4\xB8\xAD?> x &#x20AC;</a >\n";

std::string declared(const std::string& encoding)
{
    return "<?xml version=\"1.0\" encoding=\"" + encoding + "\"?>\n";
}

TEST(Convert, ThereAndBackGivesTheSameBytesFromEachToEach)
{
#ifdef __SANITIZE_ADDRESS__
    constexpr std::size_t kStep = 4;  // starting a watched process takes its time
#else
    constexpr std::size_t kStep = 1;
#endif
    std::size_t pair = 0;
    const TempDir dir;
    writeText(dir / "utf8.xml", declared("UTF-8") + kBody);
    const std::string tree = outlineOf(dir / "utf8.xml");
    for (const char* first : kEncodings) {
        const Ran there = runTool({"convert", "--to", first, dir / "utf8.xml"});
        ASSERT_EQ(there.status, 0) << first << ": " << there.err;
        for (const char* second : kEncodings) {
            if (pair++ % kStep != 0) continue;
            writeText(dir / "same.xml", there.out);
            const Ran on =
                runTool({"convert", "--to", second, dir / "same.xml", "-o", dir / "same.xml"});
            ASSERT_EQ(on.status, 0) << first << " to " << second << ": " << on.err;
            EXPECT_EQ(outlineOf(dir / "same.xml").substr(1), tree.substr(1));
            const Ran back = runTool({"convert", "--to", "UTF-8", dir / "same.xml"});
            EXPECT_EQ(back.out, declared("UTF-8") + kBody) << first << " to " << second;
        }
    }
}

TEST(Convert, FormatsInEveryEncoding)
{
    const TempDir dir;
    writeText(dir / "a.xml", declared("UTF-8") + "<a><b>\xE4\xB8\xAD</b></a>");
    for (const char* encoding : kEncodings) {
        ASSERT_EQ(runTool({"convert", "--to", encoding, dir / "a.xml", "-o", dir / "b.xml"}).status,
                  0);
        ASSERT_EQ(runTool({"format", "-i", dir / "b.xml"}).status, 0) << encoding;
        EXPECT_EQ(runTool({"convert", "--to", "UTF-8", dir / "b.xml"}).out,
                  declared("UTF-8") + "<a>\n  <b>\xE4\xB8\xAD</b>\n</a>\n")
            << encoding;
    }
}

struct BytesCase {
    const char* why;
    const char* to;
    std::string text;
    std::string result;
};

// clang-format off
const BytesCase kBytes[] = {
    {"a declaration is added", "UTF-8", "<a/>",
     "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a/>"},
    {"also in front of a comment", "gbk", "\n<!--c--><a/>",
     "<?xml version=\"1.0\" encoding=\"GBK\"?>\n\n<!--c--><a/>"},
    {"an encoding is added to a declaration", "GBK", "<?xml version='1.0' standalone='no' ?><a/>",
     "<?xml version='1.0' encoding=\"GBK\" standalone='no' ?><a/>"},
    {"an encoding is replaced where it stands", "GBK",
     "<?xml  version = \"1.0\"\tencoding = 'UTF-8' standalone='yes'?><a/>",
     "<?xml  version = \"1.0\"\tencoding = 'GBK' standalone='yes'?><a/>"},
    {"a byte-order mark goes", "UTF-8", "\xEF\xBB\xBF<?xml version=\"1.0\"?><a/>",
     "<?xml version=\"1.0\" encoding=\"UTF-8\"?><a/>"},
    {"an instruction in front is no declaration", "UTF-8", "<?x version=\"1.0\"?><a/>",
     "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<?x version=\"1.0\"?><a/>"},
    {"what GBK lacks becomes a reference in text and values", "GBK",
     "<a b='\xF0\x9F\x98\x80\xE4\xB8\xAD' c=\"\xC2\xA9\">\xE4\xB8\xAD\xF0\x9F\x98\x80</a>",
     "<?xml version=\"1.0\" encoding=\"GBK\"?>\n"
     "<a b='&#x1F600;\xD6\xD0' c=\"&#xA9;\">\xD6\xD0&#x1F600;</a>"},
    {"what GB2312 lacks", "GB2312", "<a>\xE2\x82\xAC\xE4\xB8\xAD\xE9\x95\x95</a>",
     "<?xml version=\"1.0\" encoding=\"GB2312\"?>\n<a>&#x20AC;\xD6\xD0&#x9555;</a>"},
    {"GB18030 has them all", "GB18030", "<a>\xF0\x9F\x98\x80</a>",
     "<?xml version=\"1.0\" encoding=\"GB18030\"?>\n<a>\x94\x39\xFC\x36</a>"},
};
// clang-format on

TEST(Convert, RewritesTheDeclarationAndNothingElse)
{
    for (const BytesCase& c : kBytes) {
        const Ran ran = runTool({"convert", "--to", c.to, "-"}, {.input = c.text});
        EXPECT_EQ(ran.status, 0) << c.why << ": " << ran.err;
        EXPECT_EQ(ran.out, c.result) << c.why;
    }
}

TEST(Convert, WritesMarksWhereIconvDoes)
{
    const Ran utf16 = runTool({"convert", "--to", "UTF-16", "-"}, {.input = "<a/>"});
    EXPECT_TRUE(utf16.out.starts_with("\xFF\xFE") || utf16.out.starts_with("\xFE\xFF"));
    const Ran little = runTool({"convert", "--to", "UTF-16LE", "-"}, {.input = "<a/>"});
    EXPECT_TRUE(little.out.starts_with(std::string_view{"<\0?\0x\0", 6}));
}

struct MissingCase {
    const char* why;
    const char* text;
    const char* err;
};

const MissingCase kMissing[] = {
    {"in a comment", "<a>\n<!-- \xE4\xB8\xAD\xF0\x9F\x98\x80 --></a>",
     "<stdin>:2:7: error: the character U+1F600 in a comment does not exist in GBK. [2002]\n"
     "<!-- \xE4\xB8\xAD\xF0\x9F\x98\x80 --></a>\n       ^\n"},
    {"in an instruction", "<a><?p \xC2\xA9?></a>",
     "<stdin>:1:8: error: the character U+00A9 in a processing instruction does not exist in GBK. "
     "[2002]\n<a><?p \xC2\xA9?></a>\n       ^\n"},
    {"in a CDATA section", "<a><![CDATA[\xC2\xA9]]></a>",
     "<stdin>:1:13: error: the character U+00A9 in a CDATA section does not exist in GBK. [2002]\n"
     "<a><![CDATA[\xC2\xA9]]></a>\n            ^\n"},
    {"in an element's name", "<a\xC3\x91/>",
     "<stdin>:1:3: error: the character U+00D1 in a name does not exist in GBK. [2002]\n"
     "<a\xC3\x91/>\n  ^\n"},
    {"in an attribute's name", "<a b='1' \xC3\x91='\xC2\xA9'/>",
     "<stdin>:1:10: error: the character U+00D1 in a name does not exist in GBK. [2002]\n"
     "<a b='1' \xC3\x91='\xC2\xA9'/>\n         ^\n"},
    {"in a document type declaration", "<!DOCTYPE a [<!ENTITY c '\xC2\xA9'>]><a/>",
     "<stdin>:1:26: error: the character U+00A9 in a document type declaration does not exist in "
     "GBK. [2002]\n<!DOCTYPE a [<!ENTITY c '\xC2\xA9'>]><a/>\n                         ^\n"},
};

TEST(Convert, SaysWhereACharacterCannotBeWritten)
{
    for (const MissingCase& c : kMissing) {
        const Ran ran = runTool({"convert", "--to", "GBK", "-"}, {.input = c.text});
        EXPECT_EQ(ran.status, 1) << c.why;
        EXPECT_EQ(ran.out, "") << c.why;
        EXPECT_EQ(ran.err, c.err) << c.why;
    }
}

TEST(Convert, RefusesBytesThatAreNoText)
{
    const Ran ran = runTool({"convert", "--to", "UTF-16", "-"}, {.input = "<a>\n \xC1\x81</a>"});
    EXPECT_EQ(ran.status, 1);
    EXPECT_EQ(
        ran.err,
        "<stdin>:2:2: error: bytes that are no text in UTF-8. [2004]\n \xEF\xBF\xBD</a>\n ^\n");
}

TEST(Convert, RefusesAMalformedDocumentAndLeavesTheOutput)
{
    const TempDir dir;
    writeText(dir / "out.xml", "before");
    const Ran ran =
        runTool({"convert", "--to", "GBK", "-", "-o", dir / "out.xml"}, {.input = "<a>"});
    EXPECT_EQ(ran.status, 1);
    EXPECT_EQ(readText(dir / "out.xml"), "before");
    EXPECT_EQ(dir.names(), std::vector<std::string>{"out.xml"});
}

}  // namespace
}  // namespace netxml::testing
