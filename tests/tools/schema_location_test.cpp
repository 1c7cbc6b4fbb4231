// Where schema documents are found: locations as URIs and paths, and catalogs.
#include "tool_process.hpp"

#include <gtest/gtest.h>

namespace netxml::testing {
namespace {

constexpr const char* kTypes =
    "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' targetNamespace='urn:o'>"
    "<xs:simpleType name='T'><xs:restriction base='xs:int'/></xs:simpleType></xs:schema>";
constexpr const char* kRemote = "http://example.net/v1/o.xsd";

class SchemaLocation : public ::testing::Test {
protected:
    SchemaLocation()
    {
        std::filesystem::create_directory(dir_.path() / "sub");
        writeText(dir_ / "sub/o.xsd", kTypes);
        writeText(dir_ / "n.xsd", kTypes);
        writeText(dir_ / "a b.xsd", kTypes);
        writeText(dir_ / "a%20c.xsd", kTypes);
    }
    Ran compile(std::vector<std::string> more = {})
    {
        more.insert(more.begin(), {"schema", "compile", "t.xsd"});
        return runTool(more, {.directory = dir_.path().string()});
    }
    void importFrom(const std::string& location)
    {
        writeText(dir_ / "t.xsd",
                  "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>\n<xs:import "
                  "namespace='urn:o' schemaLocation='" +
                      location +
                      "'/><xs:element name='a' type='o:T' xmlns:o='urn:o'/></xs:schema>");
    }
    void writeCatalog(const std::string& entries)
    {
        writeText(dir_ / "catalog.xml",
                  "<catalog xmlns='urn:oasis:names:tc:entity:xmlns:xml:catalog'>" + entries +
                      "</catalog>");
    }
    TempDir dir_;
};

TEST_F(SchemaLocation, IsAPathOrAUri)
{
    const std::string here = dir_.path().string();
    const std::string rows[] = {"n.xsd",
                                "file:n.xsd",
                                "file:sub/o.xsd",
                                "file:" + here + "/n.xsd",
                                "file://" + here + "/n.xsd",
                                "file://localhost" + here + "/n.xsd",
                                "  n.xsd\n",
                                "%6e.xsd",
                                "%6E.xsd",
                                "a b.xsd",
                                "a%20b.xsd",
                                "a%20c.xsd",
                                "./sub/../n.xsd"};
    for (const std::string& location : rows) {
        importFrom(location);
        const Ran ran = compile();
        EXPECT_EQ(ran.status, 0) << location << "\n" << ran.err;
    }
    for (const std::string location : {"%zz.xsd", "n.xsd%00", "file://elsewhere/n.xsd", kRemote}) {
        importFrom(location);
        EXPECT_EQ(compile().status, 5) << location;
    }
}

TEST_F(SchemaLocation, IsFoundByACatalog)
{
    importFrom(kRemote);
    const char* const rows[] = {
        "<uri name='http://example.net/v1/o.xsd' uri='file:sub/o.xsd'/>",
        "<uri name='urn:o' uri=' sub/%6F.xsd '/>",
        "<system systemId='http://example.net/v1/o.xsd' uri='sub/o.xsd'/>",
        "<rewriteURI uriStartString='http://example.net/v1/' rewritePrefix='sub/'/>",
        "<rewriteSystem systemIdStartString='http://example.net/v1/' rewritePrefix='file:sub/'/>",
        "<uriSuffix uriSuffix='v1/o.xsd' uri='sub/o.xsd'/>",
        "<uriSuffix uriSuffix='o.xsd' uri='no.xsd'/><uriSuffix uriSuffix='v1/o.xsd' "
        "uri='sub/o.xsd'/>",
        "<systemSuffix systemIdSuffix='v1/o.xsd' uri='sub/o.xsd'/>",
        "<uri xml:base='sub/' name='urn:o' uri='o.xsd'/>",
        "<group xml:base='sub/'><uri name='urn:o' uri='o.xsd'/></group>",
        "<group xml:base='no/'><uri xml:base='../sub/' name='urn:o' uri='o.xsd'/></group>"
        "<group xml:base='no/'/>",
        "<group xml:base='no/'/><uri name='urn:o' uri='sub/o.xsd'/>",
    };
    std::filesystem::create_directory(dir_.path() / "no");
    for (const char* entries : rows) {
        writeCatalog(entries);
        const Ran ran = compile({"--catalog", "catalog.xml"});
        EXPECT_EQ(ran.status, 0) << entries << "\n" << ran.err;
    }
    writeText(dir_ / "catalog.xml",
              "<catalog xmlns='urn:oasis:names:tc:entity:xmlns:xml:catalog' xml:base='sub/'>"
              "<uri name='urn:o' uri='o.xsd'/></catalog>");
    EXPECT_EQ(compile({"--catalog", "catalog.xml"}).status, 0);
    for (const char* entries :
         {"<uriSuffix uriSuffix='p.xsd' uri='sub/o.xsd'/>", "<uriSuffix uri='sub/o.xsd'/>",
          "<rewriteURI rewritePrefix='sub/'/>"}) {
        writeCatalog(entries);
        EXPECT_EQ(compile({"--catalog", "catalog.xml"}).status, 5) << entries;
    }
}

TEST_F(SchemaLocation, IsNotTakenFromWhatIsNoCatalog)
{
    importFrom("n.xsd");
    writeText(dir_ / "catalog.xml", "<catalog/>");
    Ran ran = compile({"--catalog", "catalog.xml"});
    EXPECT_EQ(ran.status, 5);
    EXPECT_EQ(ran.err, "catalog.xml:1:1: error: a catalog begins with \"catalog\" of the namespace "
                       "urn:oasis:names:tc:entity:xmlns:xml:catalog, not with \"catalog\". "
                       "[2020]\n");
    ran = compile({"--catalog", "n.xsd"});
    EXPECT_EQ(ran.status, 5);
    EXPECT_EQ(ran.err, "n.xsd:1:1: error: a catalog begins with \"catalog\" of the namespace "
                       "urn:oasis:names:tc:entity:xmlns:xml:catalog, not with "
                       "\"{http://www.w3.org/2001/XMLSchema}schema\". [2020]\n");
}

TEST_F(SchemaLocation, IsNeededToInclude)
{
    for (const std::string name : {"include", "redefine"}) {
        writeText(dir_ / "t.xsd", "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>\n<xs:" +
                                      name + "/></xs:schema>");
        const Ran ran = compile();
        EXPECT_EQ(ran.status, 5);
        EXPECT_EQ(ran.err, "t.xsd:2:1: error: \"" + name +
                               "\" needs the attribute \"schemaLocation\". [2020]\n");
    }
}

TEST_F(SchemaLocation, OfARedefinitionWithoutChangesIsRead)
{
    writeText(dir_ / "p.xsd", "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>"
                              "<xs:simpleType name='P'><xs:restriction base='xs:int'/>"
                              "</xs:simpleType></xs:schema>");
    writeText(dir_ / "t.xsd",
              "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:redefine "
              "schemaLocation='p.xsd'><xs:annotation><xs:documentation>as it is"
              "</xs:documentation></xs:annotation></xs:redefine><xs:element name='a' type='P'/>"
              "</xs:schema>");
    const Ran ran = compile();
    EXPECT_EQ(ran.status, 0) << ran.err;
}

}  // namespace
}  // namespace netxml::testing
