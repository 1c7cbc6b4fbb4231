// Where a problem stands in a schema document that has entities of its own.
#include "tool_process.hpp"

#include <gtest/gtest.h>

namespace netxml::testing {
namespace {

struct SchemaPlaceRow {
    const char* why;
    std::string schema;
    int status;
    const char* problem;  // the first line
};

std::string withDoctype(const std::string& entities, const std::string& body)
{
    return "<!DOCTYPE xs:schema [" + entities +
           "]>\n<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>\n" + body +
           "\n</xs:schema>";
}

TEST(SchemaPlace, IsThatInTheFile)
{
    const TempDir directory;
    const SchemaPlaceRow rows[] = {
        {"behind a reference in the line",
         withDoctype("<!ENTITY long 'a text that is long'>",
                     "<xs:annotation id='&long;'/><xs:element name='a' type='xs:x'/>"),
         5, "t.xsd:3:29: error: XML Schema has no simple type \"x\". [2020]"},
        {"behind one that has lines",
         withDoctype("<!ENTITY lines '\n\n\n'>", "&lines;\n<xs:element name='a' type='xs:x'/>"), 5,
         "t.xsd:7:1: error: XML Schema has no simple type \"x\". [2020]"},
        {"in one: where it is referred to",
         withDoctype("<!ENTITY e \"<xs:element name='a' type='xs:x'/>\">", "<!---->\n  &e;"), 5,
         "t.xsd:4:3: error: XML Schema has no simple type \"x\". [2020]"},
        {"in one inside another",
         withDoctype("<!ENTITY e \"<xs:element name='a' type='xs:&t;'/>\"><!ENTITY f ' &e; '>"
                     "<!ENTITY t 'x'>",
                     "  &f;"),
         5, "t.xsd:3:3: error: XML Schema has no simple type \"x\". [2020]"},
        {"what the parser says",
         withDoctype("<!ENTITY lines '\n\n\n'>", "&lines;<xs:element name='&lines;' b=1/>"), 5,
         "t.xsd:6:37: error: "},
        {"an entity that holds itself",
         withDoctype("<!ENTITY e '&f;'><!ENTITY f 'x&e;'>", "<!-- --> &e;"), 5,
         "t.xsd:3:10: error: the entity \"e\" holds itself. [2020]"},
        {"in a value", withDoctype("<!ENTITY e '&e;'>", "<xs:element name='&e;'/>"), 5,
         "t.xsd:3:19: error: the entity \"e\" holds itself. [2020]"},
        {"behind a byte-order mark",
         "\xEF\xBB\xBF" + withDoctype("<!ENTITY e 'xs:'>", "<xs:element name='a' type='&e;x'/>"
                                                           "<xs:element name='b' type='&e;y'/>"),
         5, "t.xsd:3:1: error: XML Schema has no simple type \"x\". [2020]"},
        {"in another encoding",
         "<?xml version='1.0' encoding='GBK'?>" +
             withDoctype("<!ENTITY e '\xD6\xD0'>",
                         "<!--\xD6\xD0\xCE\xC4--><xs:annotation id='&e;&e;'/>"
                         "<xs:element name='b' type='xs:y'/>"),
         5, "t.xsd:3:38: error: XML Schema has no simple type \"y\". [2020]"},
    };
    for (const SchemaPlaceRow& row : rows) {
        writeText(directory / "t.xsd", row.schema);
        const Ran ran =
            runTool({"schema", "compile", "t.xsd"}, {.directory = directory.path().string()});
        EXPECT_EQ(ran.status, row.status) << row.why;
        EXPECT_EQ(ran.err.substr(0, std::string{row.problem}.size()), row.problem)
            << row.why << "\n"
            << ran.err;
    }
}

TEST(SchemaPlace, OfAReferenceStandsInTheSource)
{
    const TempDir directory;
    writeText(directory / "t.xsd",
              withDoctype("<!ENTITY el \"<xs:element name='foo'/>\n\n<xs:element name='bar'/>\">",
                          "&el;\n<xs:element name='last'/>"));
    const Ran ran =
        runTool({"schema", "compile", "t.xsd"}, {.directory = directory.path().string()});
    EXPECT_EQ(ran.status, 0) << ran.err;
    const std::string source = readText(directory / "t_schema.c");
    for (const char* line :
         {"/* t.xsd:5: <element name=\"foo\"> */\n", "/* t.xsd:5: <element name=\"bar\"> */\n",
          "/* t.xsd:6: <element name=\"last\"> */\n"})
        EXPECT_NE(source.find(line), std::string::npos) << line;
}

TEST(SchemaPlace, EntitiesHaveOneLimitForADocument)
{
    const TempDir directory;
    const std::string hundred(100000, ' ');
    const auto compileWith = [&](int references) {
        std::string body;
        for (int i = 0; i != references; ++i) body += "<xs:annotation id='&e;'/>\n";
        writeText(directory / "t.xsd", withDoctype("<!ENTITY e '" + hundred + "'>", body));
        return runTool({"schema", "compile", "t.xsd"}, {.directory = directory.path().string()});
    };
    EXPECT_EQ(compileWith(10).status, 0);
    const Ran ran = compileWith(11);
    EXPECT_EQ(ran.status, 5);
    EXPECT_EQ(ran.err.substr(0, ran.err.find('\n')),
              "t.xsd:13:20: error: the entity \"e\" does not fit: the entities of a document may "
              "come to 1 MiB of text. [2020]");
}

}  // namespace
}  // namespace netxml::testing
