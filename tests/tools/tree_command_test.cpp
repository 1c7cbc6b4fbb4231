// netxml tree: kinds, namespaces, paths.
#include "tool_process.hpp"

#include <gtest/gtest.h>

namespace netxml::testing {
namespace {

TEST(Tree, ShowsKindsNamespacesAndPaths)
{
    const Ran ran =
        runTool({"tree", "-"}, {.input = R"(<?go now?><config xmlns="urn:c" xmlns:p="urn:p">
  <interface p:k="1"><name>eth0</name></interface><p:x xmlns=""/>
  <interface><!--c--><![CDATA[<&>]]> &quot;tab:&#9;&quot;</interface><?end?>
</config>)"});
    EXPECT_EQ(ran.status, 0) << ran.err;
    EXPECT_EQ(ran.out, R"(instruction go "now"
element config {urn:c} /config
  namespace (default) "urn:c"
  namespace p "urn:p"
  element interface {urn:c} /config/interface[1]
    attribute p:k {urn:p} "1"
    element name {urn:c} /config/interface[1]/name[1]
      text "eth0"
  element p:x {urn:p} /config/x[1]
    namespace (default) ""
  element interface {urn:c} /config/interface[2]
    comment "c"
    cdata "<&>"
    text "\"tab:\t\""
  instruction end ""
)");
}

TEST(Tree, CutsLongValues)
{
    const Ran ran = runTool({"tree", "-"}, {.input = "<a>" + std::string(100, 'x') + "</a>"});
    EXPECT_EQ(ran.out, "element a /a\n  text \"" + std::string(72, 'x') + "\"...\n");
}

TEST(Tree, NamesTheFilesWhenThereAreSeveral)
{
    const TempDir dir;
    writeText(dir / "1.xml", "<a/>");
    writeText(dir / "2.xml", "<b/>");
    const Ran ran = runTool({"tree", "2.xml", "1.xml"}, {.directory = dir.path()});
    EXPECT_EQ(ran.out, "2.xml:\nelement b /b\n1.xml:\nelement a /a\n");
}

TEST(Tree, TakesDeepNesting)
{
    std::string text;
    for (int i = 0; i < 20000; ++i) text += "<a>";
    for (int i = 0; i < 20000; ++i) text += "</a>";
    const Ran ran = runTool({"tree", "-"}, {.input = text});
    EXPECT_EQ(ran.status, 0) << ran.err;
    EXPECT_LT(ran.out.size(), 20000u * 1300);
}

TEST(Tree, WritesNothingOfAMalformedDocument)
{
    const Ran ran = runTool({"tree", "-"}, {.input = "<a><b/>"});
    EXPECT_EQ(ran.status, 1);
    EXPECT_EQ(ran.out, "");
    EXPECT_EQ(ran.err, "<stdin>:1:8: error: tag not finished. [77]\n<a><b/>\n       ^\n");
}

TEST(Tree, ColorsWhenTold)
{
    const Ran ran = runTool({"tree", "--color=always", "-"}, {.input = "<a>x</a>"});
    EXPECT_EQ(ran.out, "\033[2melement\033[0m \033[36ma\033[0m /a\n"
                       "  \033[2mtext\033[0m \033[32m\"x\"\033[0m\n");
}

}  // namespace
}  // namespace netxml::testing
