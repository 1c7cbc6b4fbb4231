// What the command line says about schemas, and what is refused there.
#include "tool_process.hpp"

#include <gtest/gtest.h>

namespace netxml::testing {
namespace {

constexpr const char* kOptionSchema = "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>"
                                      "<xs:element name='a' type='xs:int'/></xs:schema>";

struct SchemaOptionRow {
    std::vector<std::string> arguments;
    const char* message;
};

TEST(SchemaOption, IsRefusedWhenItMeansNothing)
{
    const TempDir directory;
    writeText(directory / "x.xsd", kOptionSchema);
    const SchemaOptionRow rows[] = {
        {{"--type-map", "xs:int=xs:nope"}, "--type-map: XML Schema has no simple type \"xs:nope\""},
        {{"--type-map", "xs:nope=xs:int"}, "--type-map: XML Schema has no simple type \"xs:nope\""},
        {{"--type-map", "xs:int=a=b"}, "--type-map: XML Schema has no simple type \"xs:int=a\""},
        {{"--type-map", "native=xs:int"}, "--type-map: XML Schema has no simple type \"native\""},
        {{"--type-map", "xs:int"}, "--type-map: \"xs:int\" is no pair such as NAME=VALUE"},
        {{"--namespace-map", "urn:nosuch=1a"},
         "--namespace-map: \"1a\" is no identifier that begins with a letter"},
        {{"--namespace-map", "urn:a=b c"},
         "--namespace-map: \"b c\" is no identifier that begins with a letter"},
        {{"--namespace-map", "urn: a=b"},
         "--namespace-map: \"urn: a\" is no namespace: there is white space in it"},
        {{"--prefix", "_a"}, "--prefix: \"_a\" is no identifier that begins with a letter"},
        {{"--prefix", "1a"}, "--prefix: \"1a\" is no identifier that begins with a letter"},
        {{"--prefix", "a-b"}, "--prefix: \"a-b\" is no identifier that begins with a letter"},
    };
    for (SchemaOptionRow row : rows) {
        row.arguments.insert(row.arguments.begin(), {"schema", "compile", "x.xsd"});
        const Ran ran = runTool(row.arguments, {.directory = directory.path().string()});
        EXPECT_EQ(ran.status, 2) << row.message;
        EXPECT_EQ(ran.err, std::string{"netxml: "} + row.message + "\nTry \"netxml --help\".\n");
    }
    EXPECT_EQ(directory.names(), std::vector<std::string>{"x.xsd"});
}

TEST(SchemaOption, MapsTypes)
{
    const TempDir directory;
    writeText(directory / "x.xsd", kOptionSchema);
    for (const char* map : {"xs:int=xs:string", "int=string", "xs:int=xs:string"}) {
        EXPECT_EQ(
            runTool({"validate", "-q", "--schema", directory / "x.xsd", "--type-map", map, "-"},
                    {.input = "<a>x</a>"})
                .status,
            0)
            << map;
    }
    EXPECT_EQ(runTool({"validate", "-q", "--schema", directory / "x.xsd", "--type-map",
                       "xs:int=native", "-"},
                      {.input = "<a>x</a>"})
                  .status,
              3);
}

TEST(SchemaOption, TakesEveryPrefixThatCTakes)
{
    const TempDir directory;
    writeText(directory / "x.xsd", kOptionSchema);
    for (const std::string prefix : {"a__b", "a_", "B2"}) {
        EXPECT_EQ(runTool({"schema", "compile", "--prefix", prefix, "x.xsd"},
                          {.directory = directory.path().string()})
                      .status,
                  0)
            << prefix;
        EXPECT_NE(readText(directory / "x_schema.h")
                      .find("uint32_t " + prefix + "_schema_register(Schema_Root* root);\n"),
                  std::string::npos);
        EXPECT_NE(readText(directory / "x_schema.c").find("&" + prefix + "_element_a, "),
                  std::string::npos);
    }
}

TEST(SchemaOption, ReadsStandardInputOnce)
{
    const TempDir directory;
    writeText(directory / "x.xsd", kOptionSchema);
    const std::string schema = directory / "x.xsd";
    const std::vector<std::vector<std::string>> rows = {
        {"validate", "--schema", "-", "-"},
        {"validate", "--schema", "-", "--schema", "-", schema},
        {"validate", "--schema", schema, "--catalog", "-", "-"},
        {"validate", "--schema", schema, "--location", "urn:a=-", "-"},
        {"schema", "compile", "-", "-"},
    };
    for (const std::vector<std::string>& row : rows) {
        const Ran ran =
            runTool(row, {.input = kOptionSchema, .directory = directory.path().string()});
        EXPECT_EQ(ran.status, 2) << row[1] << row[2];
        EXPECT_EQ(ran.err, "netxml: FILE: standard input can be read only once\n"
                           "Try \"netxml --help\".\n");
    }
    writeText(directory / "d.xml", "<a>1</a>");
    EXPECT_EQ(
        runTool({"validate", "-q", "--schema", "-", directory / "d.xml"}, {.input = kOptionSchema})
            .status,
        0);
}

}  // namespace
}  // namespace netxml::testing
