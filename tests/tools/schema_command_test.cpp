// netxml schema compile: what is written, what it is made of, and what is wrong with schemas.
#include "tool_process.hpp"

#include <gtest/gtest.h>

namespace netxml::testing {
namespace {

constexpr const char* kOpen =
    "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' xmlns='urn:t' targetNamespace='urn:t' "
    "elementFormDefault='qualified'>\n";

std::string schemaWith(const std::string& body)
{
    return kOpen + body + "\n</xs:schema>";
}

struct ProblemRow {
    const char* body;
    const char* problem;  // behind "t.xsd:"
    int status;
};

const ProblemRow kProblems[] = {
    {"<xs:element name='a' type='B'/>", "2:1: error: the type \"{urn:t}B\" is not declared. [2020]",
     5},
    {"<xs:element name='a' type='q:B'/>",
     "2:1: error: the prefix \"q\" of \"q:B\" is not declared. [2020]", 5},
    {"<xs:element name='a' type='xs:number'/>",
     "2:1: error: XML Schema has no simple type \"number\". [2020]", 5},
    {"<xs:element name='a'/>\n<xs:element name='a'/>",
     "3:1: error: the element \"{urn:t}a\" is declared at t.xsd:2 already. [2020]", 5},
    {"<xs:element name='a'/><xs:element name='a'/>",
     "2:23: error: the element \"{urn:t}a\" is declared at t.xsd:2 already. [2020]", 5},
    {"<xs:element/>", "2:1: error: a top-level \"element\" needs the attribute \"name\". [2020]",
     5},
    {"<xs:sequence/>", "2:1: error: \"sequence\" cannot stand at the top of a schema. [2020]", 5},
    {"<xs:include schemaLocation='no.xsd'/>",
     "2:1: error: cannot find the schema document \"no.xsd\": give its directory with "
     "--include-path, or the file with --location no.xsd=FILE. [2020]",
     5},
    {"<xs:import namespace='urn:o'/><xs:element name='a' type='o:T' xmlns:o='urn:o'/>",
     "2:31: error: the type \"{urn:o}T\" is not declared: no document was found for its namespace, "
     "which is imported at t.xsd:2; give one with --location urn:o=FILE. [2020]",
     5},
    {"<xs:redefine schemaLocation='x.xsd'><xs:simpleType name='A'/></xs:redefine>",
     "2:1: error: \"redefine\" is not supported: declare the changed types in a schema of your "
     "own, "
     "and include this one's parts. [2020]",
     5},
    {"<xs:simpleType name='A'><xs:restriction base='A'/></xs:simpleType>",
     "2:25: error: the type \"{urn:t}A\" is derived from itself. [2020]", 5},
    {"<xs:complexType name='A'><xs:complexContent><xs:extension base='A'/></xs:complexContent>"
     "</xs:complexType>",
     "2:1: error: the type \"A\" is derived from itself. [2020]", 5},
    {"<xs:group name='g'><xs:sequence><xs:group ref='g'/></xs:sequence></xs:group><xs:element "
     "name='a'><xs:complexType><xs:group ref='g'/></xs:complexType></xs:element>",
     "2:33: error: the group \"{urn:t}g\" holds itself. [2020]", 5},
    {"<xs:attributeGroup name='g'><xs:attributeGroup ref='g'/></xs:attributeGroup><xs:element "
     "name='a'><xs:complexType><xs:attributeGroup ref='g'/></xs:complexType></xs:element>",
     "2:29: error: the attribute group \"{urn:t}g\" holds itself. [2020]", 5},
    {"<xs:element name='a'><xs:complexType><xs:sequence><xs:element name='b' minOccurs='x'/>"
     "</xs:sequence></xs:complexType></xs:element>",
     "2:51: error: \"minOccurs\" is \"x\"; expected a number. [2020]", 5},
    {"<xs:element name='a'><xs:complexType><xs:sequence><xs:element name='b' minOccurs='3'/>"
     "</xs:sequence></xs:complexType></xs:element>",
     "2:51: error: \"maxOccurs\" is below \"minOccurs\". [2020]", 5},
    {"<xs:element name='a'><xs:simpleType/></xs:element>",
     "2:22: error: expected \"restriction\", \"list\" or \"union\" in a simpleType. [2020]", 5},
    {"<xs:element name='a'><xs:complexType><xs:simpleContent/></xs:complexType></xs:element>",
     "2:38: error: expected \"extension\" or \"restriction\" in \"simpleContent\". [2020]", 5},
    {"<xs:simpleType name='A'><xs:restriction base='xs:int'><xs:maxInclusive value='x'/>"
     "</xs:restriction></xs:simpleType>",
     "2:55: error: \"x\" is no number. [2020]", 5},
    {"<xs:simpleType name='A'><xs:restriction base='xs:string'><xs:maxLength value='99'/>"
     "</xs:restriction></xs:simpleType>",
     "2:58: warning: \"maxLength\" counts bytes: of characters beyond ASCII each counts as two or "
     "four. [2021]",
     0},
    {"<xs:simpleType name='A'><xs:restriction base='xs:string'><xs:pattern value='(a'/>"
     "</xs:restriction></xs:simpleType>",
     "2:58: warning: this pattern is not checked: a \"(\" without its \")\", at character 3. "
     "[2021]",
     0},
    {"<xs:simpleType name='A'><xs:restriction base='xs:float'><xs:maxInclusive value='9'/>"
     "</xs:restriction></xs:simpleType>",
     "2:57: warning: \"maxInclusive\" is not checked for values of this type. [2021]", 0},
    {"<xs:simpleType name='A'><xs:restriction><xs:simpleType><xs:list itemType='xs:int'/>"
     "</xs:simpleType><xs:enumeration value='1 2'/></xs:restriction></xs:simpleType>",
     "2:100: warning: enumerated values of this type compare as text. [2021]", 0},
    {"<xs:simpleType name='A'><xs:restriction><xs:simpleType><xs:union memberTypes='xs:int "
     "xs:NCName'/></xs:simpleType><xs:enumeration value='1'/></xs:restriction></xs:simpleType>",
     "2:114: warning: enumerated values of this type compare as text. [2021]", 0},
    {"<xs:simpleType name='A'><xs:restriction base='xs:hexBinary'><xs:enumeration value='0A'/>"
     "</xs:restriction></xs:simpleType>",
     "2:61: warning: enumerated values of this type compare as text. [2021]", 0},
    {"<xs:element name='a' type='xs:string'><xs:key name='k'><xs:selector xpath='b'/></xs:key>"
     "</xs:element>",
     "2:39: warning: the identity constraint \"k\" is not checked. [2021]", 0},
    {"<xs:element name='a'><xs:complexType><xs:sequence><xs:choice minOccurs='0' "
     "maxOccurs='unbounded'><xs:element name='b'/><xs:element name='c'/></xs:choice><xs:element "
     "name='b'/><xs:choice><xs:element name='b'/><xs:element name='c'/></xs:choice></xs:sequence>"
     "</xs:complexType></xs:element>",
     "2:38: warning: the content model cannot be said in a form that the validator follows "
     "exactly: "
     "for one, \"b b\" is refused. [2021]",
     0},
};

TEST(SchemaCommand, SaysWhatIsWrongAndWhere)
{
    const TempDir directory;
    for (const ProblemRow& row : kProblems) {
        writeText(directory / "t.xsd", schemaWith(row.body));
        const Ran ran =
            runTool({"schema", "compile", "t.xsd"}, {.directory = directory.path().string()});
        EXPECT_EQ(ran.status, row.status) << row.body;
        EXPECT_EQ(ran.err.substr(0, ran.err.find('\n')), std::string{"t.xsd:"} + row.problem)
            << row.body << ran.err;
        const Ran strict = runTool({"schema", "compile", "--strict", "t.xsd"},
                                   {.directory = directory.path().string()});
        EXPECT_EQ(strict.status, 5) << row.body;
    }
}

TEST(SchemaCommand, WritesNothingForASchemaThatCannotBeUsed)
{
    const TempDir directory;
    writeText(directory / "t.xsd", schemaWith("<xs:element name='a' type='B'/>"));
    runTool({"schema", "compile", "t.xsd"}, {.directory = directory.path().string()});
    EXPECT_EQ(directory.names(), std::vector<std::string>{"t.xsd"});
}

TEST(SchemaCommand, NamesItsOutputsAndWhatTheyAreMadeOf)
{
    const TempDir directory;
    const Surroundings there{.directory = directory.path().string()};
    writeText(directory / "my net.xsd",
              schemaWith("<xs:include schemaLocation='part.xsd'/><xs:element name='a' type='P'/>"));
    writeText(directory / "part.xsd",
              "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:include "
              "schemaLocation='my%20net.xsd'/><xs:simpleType name='P'><xs:restriction "
              "base='xs:int'/></xs:simpleType></xs:schema>");
    EXPECT_EQ(runTool({"schema", "compile", "--list-outputs", "my net.xsd"}, there).out,
              "my net_schema.c\nmy net_schema.h\n");
    EXPECT_EQ(
        runTool({"schema", "compile", "--list-outputs", "--lang", "c++", "my net.xsd"}, there).out,
        "my net_schema.cpp\nmy net_schema.hpp\n");
    writeText(directory / "part.xsd",
              "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:simpleType name='P'>"
              "<xs:restriction base='xs:int'/></xs:simpleType></xs:schema>");
    const Ran ran = runTool({"schema", "compile", "--depfile", "d", "-o", "x.c", "-H", "x.h",
                             "--prefix", "mine", "my net.xsd"},
                            there);
    EXPECT_EQ(ran.status, 0) << ran.err;
    EXPECT_EQ(readText(directory / "d"), "x.c x.h: \\\n  my\\ net.xsd \\\n  part.xsd\n");
    const std::string header = readText(directory / "x.h");
    EXPECT_NE(header.find("uint32_t mine_schema_register(Schema_Root* root);"), std::string::npos);
    EXPECT_NE(header.find("void mine_schema_deregister(Schema_Root* root);"), std::string::npos);
    const std::string source = readText(directory / "x.c");
    EXPECT_NE(source.find("/* part.xsd:1: <simpleType name=\"P\"> */"), std::string::npos);
    EXPECT_NE(source.find("mine_element_a"), std::string::npos);

    runTool({"schema", "compile", "-o", "y.c", "-H", "x.h", "--prefix", "mine", "my net.xsd"},
            there);
    EXPECT_EQ(readText(directory / "y.c"), source);
}

TEST(SchemaCommand, FindsDocumentsByCatalogPathAndLocation)
{
    const TempDir directory;
    const Surroundings there{.directory = directory.path().string()};
    std::filesystem::create_directory(directory.path() / "sub");
    writeText(directory / "t.xsd",
              schemaWith("<xs:import namespace='urn:o' schemaLocation='http://example.net/o.xsd'/>"
                         "<xs:element name='a' type='o:T' xmlns:o='urn:o'/>"));
    writeText(
        directory / "sub/o.xsd",
        "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' targetNamespace='urn:o'>"
        "<xs:simpleType name='T'><xs:restriction base='xs:int'/></xs:simpleType></xs:schema>");
    writeText(directory / "catalog.xml",
              "<catalog xmlns='urn:oasis:names:tc:entity:xmlns:xml:catalog'><rewriteURI "
              "uriStartString='http://example.net/' rewritePrefix='sub/'/></catalog>");
    const std::vector<std::vector<std::string>> ways = {
        {"-I", "sub"},
        {"--location", "urn:o=sub/o.xsd"},
        {"--location", "http://example.net/o.xsd=sub/o.xsd"},
        {"--catalog", "catalog.xml"}};
    for (std::vector<std::string> way : ways) {
        way.insert(way.begin(), {"validate", "-q", "--schema", "t.xsd"});
        way.emplace_back("-");
        Surroundings around = there;
        around.input = "<a xmlns='urn:t'>1</a>";
        EXPECT_EQ(runTool(way, around).status, 0) << way[4];
        around.input = "<a xmlns='urn:t'>x</a>";
        EXPECT_EQ(runTool(way, around).status, 3) << way[4];
    }
    EXPECT_EQ(runTool({"schema", "compile", "t.xsd"}, there).status, 5);
}

TEST(SchemaCommand, KnowsNetworkTypesByTheirNames)
{
    const TempDir directory;
    const std::string schema = directory / "t.xsd";
    writeText(schema, schemaWith("<xs:element name='v' type='_VlanRange'/><xs:element name='m' "
                                 "type='_Ipv4Mask'/><xs:simpleType name='_Ipv4Mask'>"
                                 "<xs:restriction base='xs:string'/></xs:simpleType>"));
    const auto status = [&](const char* document) {
        return runTool({"validate", "-q", "--network-types", "urn:t", "--schema", schema, "-"},
                       {.input = document})
            .status;
    };
    EXPECT_EQ(status("<v xmlns='urn:t'>1-4094</v>"), 0);
    EXPECT_EQ(status("<v xmlns='urn:t'>4095</v>"), 3);
    EXPECT_EQ(status("<m xmlns='urn:t'>255.255.0.0</m>"), 0);
    EXPECT_EQ(status("<m xmlns='urn:t'>255.0.255.0</m>"), 3);
    EXPECT_EQ(runTool({"validate", "-q", "--schema", schema, "-"}, {.input = "<a/>"}).status, 5);
}

}  // namespace
}  // namespace netxml::testing
