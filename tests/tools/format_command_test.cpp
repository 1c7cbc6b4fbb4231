// netxml format: what it changes, what it keeps, what it refuses.
#include "tool_process.hpp"

#include <gtest/gtest.h>

namespace netxml::testing {
namespace {

using namespace std::string_view_literals;

struct FormatCase {
    const char* why;
    std::string text;
    std::string result;
};

// clang-format off
const FormatCase kFormats[] = {
    {"nested elements", "<a><b><c/></b></a>",
     "<a>\n  <b>\n    <c/>\n  </b>\n</a>\n"},
    {"a leaf is kept as it stands", "<a><b></b><c/><d> </d><e>x</e></a>",
     "<a>\n  <b></b>\n  <c/>\n  <d> </d>\n  <e>x</e>\n</a>\n"},
    {"text makes content mixed", "<a><b> x <i><u/></i> </b></a>",
     "<a>\n  <b> x <i><u/></i> </b>\n</a>\n"},
    {"so does a reference", "<a>&#32;<b/></a>",
     "<a>&#32;<b/></a>\n"},
    {"and a CDATA section", "<a> <![CDATA[ ]]> <b/></a>",
     "<a> <![CDATA[ ]]> <b/></a>\n"},
    {"references stay as written", "<a b=\"&#x41;&lt;\"><c>&amp;&#10;</c></a>",
     "<a b=\"&#x41;&lt;\">\n  <c>&amp;&#10;</c>\n</a>\n"},
    {"blanks inside tags", "<a  x = '1'\n\ty=\"2 >\" ><b   /></a\n>",
     "<a x='1' y=\"2 >\">\n  <b/>\n</a>\n"},
    {"a slash in a value ends no tag", "<a x='/'><b y='/' ></b></a>",
     "<a x='/'>\n  <b y='/'></b>\n</a>\n"},
    {"comments and instructions", "<!--p--><?q r?><a><!--c\n  d--><?e?><b/></a><!--f-->",
     "<!--p-->\n<?q r?>\n<a>\n  <!--c\n  d-->\n  <?e?>\n  <b/>\n</a>\n<!--f-->\n"},
    {"a comment alone is content", "<a><!--c--></a>",
     "<a>\n  <!--c-->\n</a>\n"},
    {"the XML declaration", "<?xml version='1.0'  standalone='yes' ?><a/>",
     "<?xml version='1.0'  standalone='yes' ?>\n<a/>\n"},
    {"one blank line between siblings", "<a>\n\n\n<b/>\n\n \n<c/>\n<d/>\n\n</a>",
     "<a>\n  <b/>\n\n  <c/>\n  <d/>\n</a>\n"},
    {"a blank line in the prolog", "<?xml version=\"1.0\"?>\n\n\n<!--c-->\n\n<a/>\n\n",
     "<?xml version=\"1.0\"?>\n\n<!--c-->\n\n<a/>\n"},
    {"line ends of the first line", "<a>\r\n\r\n<b/>\r\n\r\n<c/></a>",
     "<a>\r\n  <b/>\r\n\r\n  <c/>\r\n</a>\r\n"},
    {"line ends of carriage returns", "<a>\r<b/>\r\r<c/></a>",
     "<a>\r  <b/>\r\r  <c/>\r</a>\r"},
    {"a line end that goes does not count", "\n<a>x\r\n</a>",
     "<a>x\r\n</a>\r\n"},
    {"preserved content", "<a><b xml:space=\"preserve\"> <c  /> </b><d/></a>",
     "<a>\n  <b xml:space=\"preserve\"> <c  /> </b>\n  <d/>\n</a>\n"},
    {"preserved with a reference", "<a xml:space='&#112;reserve'> <c/> </a>",
     "<a xml:space='&#112;reserve'> <c/> </a>\n"},
    {"preserving ends at a default",
     "<a xml:space=\"preserve\"> <b> <c xml:space=\"default\"><d/></c> </b> </a>",
     "<a xml:space=\"preserve\"> <b> <c xml:space=\"default\">\n      <d/>\n    </c> </b> </a>\n"},
    {"behind preserved content", "<a><b xml:space=\"preserve\"><c/></b>\n\n<d/></a>",
     "<a>\n  <b xml:space=\"preserve\"><c/></b>\n\n  <d/>\n</a>\n"},
    {"a byte-order mark", "\xEF\xBB\xBF<a><b/></a>",
     "\xEF\xBB\xBF<a>\n  <b/>\n</a>\n"},
    {"a source in GBK", "<?xml version=\"1.0\" encoding=\"GBK\"?><a><b>\xD6\xD0</b></a>",
     "<?xml version=\"1.0\" encoding=\"GBK\"?>\n<a>\n  <b>\xD6\xD0</b>\n</a>\n"},
    {"UTF-16 with a mark", std::string{"\xFF\xFE<\0a\0>\0<\0b\0/\0>\0<\0/\0a\0>\0"sv},
     std::string{"\xFF\xFE<\0a\0>\0\n\0 \0 \0<\0b\0/\0>\0\n\0<\0/\0a\0>\0\n\0"sv}},
};
// clang-format on

TEST(Format, IndentsWhereNothingIsSaid)
{
    for (const FormatCase& c : kFormats) {
        const Ran ran = runTool({"format", "-"}, {.input = c.text});
        EXPECT_EQ(ran.status, 0) << c.why << ": " << ran.err;
        EXPECT_EQ(ran.out, c.result) << c.why;
    }
}

TEST(Format, IsStable)
{
    for (const FormatCase& c : kFormats) {
        const Ran ran = runTool({"format", "-"}, {.input = c.result});
        EXPECT_EQ(ran.out, c.result) << c.why;
        EXPECT_EQ(runTool({"format", "--check", "-"}, {.input = c.result}).status, 0) << c.why;
    }
}

TEST(Format, KeepsTheTree)
{
    const TempDir dir;
    for (const FormatCase& c : kFormats) {
        writeText(dir / "a.xml", c.text);
        const std::string before = outlineOf(dir / "a.xml");
        ASSERT_EQ(runTool({"format", "-i", dir / "a.xml"}).status, 0) << c.why;
        EXPECT_EQ(outlineOf(dir / "a.xml"), before) << c.why;
    }
}

struct IndentCase {
    const char* width;
    const char* result;
};

TEST(Format, IndentsByTheGivenWidth)
{
    constexpr IndentCase kCases[] = {
        {"0", "<a>\n<b/>\n</a>\n"},
        {"3", "<a>\n   <b/>\n</a>\n"},
        {"16", "<a>\n                <b/>\n</a>\n"},
        {"tab", "<a>\n\t<b/>\n</a>\n"},
    };
    for (const IndentCase& c : kCases)
        EXPECT_EQ(runTool({"format", "--indent", c.width, "-"}, {.input = "<a><b/></a>"}).out,
                  c.result);
}

TEST(Format, TakesDeepNesting)
{
    std::string text;
    for (int i = 0; i < 5000; ++i) text += "<a>";
    text += "<b/>";
    for (int i = 0; i < 5000; ++i) text += "</a>";
    const Ran ran = runTool({"format", "-"}, {.input = text});
    ASSERT_EQ(ran.status, 0) << ran.err;
    EXPECT_NE(ran.out.find("\n" + std::string(400, ' ') + "<b/>\n"), std::string::npos);
    EXPECT_EQ(runTool({"format", "-"}, {.input = ran.out}).out, ran.out);
}

constexpr const char* kWithDoctype =
    "<?xml version=\"1.0\"?>\n<!DOCTYPE a [\n<!ENTITY x \"]>\">\n]>\n<a><b/></a>";

TEST(Format, RefusesADoctypeByItsPlace)
{
    const Ran ran = runTool({"format", "-"}, {.input = "<!-- <!DOCTYPE -->\n <!DOCTYPE a><a/>"});
    EXPECT_EQ(ran.status, 1);
    EXPECT_EQ(ran.out, "");
    EXPECT_EQ(ran.err, "<stdin>:2:2: error: a document type declaration cannot be kept; "
                       "--drop-doctype leaves it out. [2001]\n <!DOCTYPE a><a/>\n ^\n");
}

TEST(Format, DropsADoctypeWhenTold)
{
    const Ran ran = runTool(
        {"format", "--drop-doctype", "-"},
        {.input = "<?xml version=\"1.0\"?>\n<!DOCTYPE a [\n<!ENTITY x \"y\">\n] ><a><b/></a>"});
    EXPECT_EQ(ran.status, 0) << ran.err;
    EXPECT_EQ(ran.out, "<?xml version=\"1.0\"?>\n<a>\n  <b/>\n</a>\n");
}

TEST(Format, CutsADoctypeWhereTheParserDoes)
{
    // A "]>" in an entity's value ends the declaration for the parser, too, so this is refused.
    const Ran ran = runTool({"format", "--drop-doctype", "-"}, {.input = kWithDoctype});
    EXPECT_EQ(ran.status, 1);
    EXPECT_EQ(ran.err.substr(0, 12), "<stdin>:3:15");
}

TEST(Format, WritesSeveralFilesInOrder)
{
    const TempDir dir;
    writeText(dir / "1.xml", "<a/>");
    writeText(dir / "2.xml", "<b><c/></b>");
    EXPECT_EQ(runTool({"format", "--jobs=2", dir / "2.xml", dir / "1.xml"}).out,
              "<b>\n  <c/>\n</b>\n<a/>\n");
}

TEST(Format, CheckNamesWhatWouldChangeAndWritesNothing)
{
    const TempDir dir;
    writeText(dir / "done.xml", "<a/>\n");
    writeText(dir / "todo.xml", "<a><b/></a>");
    const Ran ran =
        runTool({"format", "--check", "done.xml", "todo.xml"}, {.directory = dir.path()});
    EXPECT_EQ(ran.status, 1);
    EXPECT_EQ(ran.out, "todo.xml: would change\n");
    EXPECT_EQ(readText(dir / "todo.xml"), "<a><b/></a>");
    EXPECT_EQ(runTool({"format", "--check", dir / "done.xml"}).status, 0);
    EXPECT_EQ(runTool({"format", "--check", "-q", dir / "todo.xml"}).out, "");
}

TEST(Format, RecursiveInPlace)
{
    const TempDir dir;
    std::filesystem::create_directories(dir.path() / "sub");
    writeText(dir / "a.xml", "<a><b/></a>");
    writeText(dir / "sub/b.svg", "<a><b/></a>");
    writeText(dir / "sub/c.txt", "<a><b/></a>");
    ASSERT_EQ(runTool({"format", "-r", "-i", "-j", "3", dir.path().string()}).status, 0);
    EXPECT_EQ(readText(dir / "a.xml"), "<a>\n  <b/>\n</a>\n");
    EXPECT_EQ(readText(dir / "sub/b.svg"), "<a>\n  <b/>\n</a>\n");
    EXPECT_EQ(readText(dir / "sub/c.txt"), "<a><b/></a>");
}

}  // namespace
}  // namespace netxml::testing
