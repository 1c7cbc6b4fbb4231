// netxml schema compile: which files are written, and that none is that is read.
#include "tool_process.hpp"

#include <gtest/gtest.h>

namespace netxml::testing {
namespace {

constexpr const char* kEmpty = "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'/>";
constexpr const char* kOne =
    "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='a'/></xs:schema>";

class SchemaOutput : public ::testing::Test {
protected:
    void SetUp() override { writeText(dir_ / "x.xsd", kOne); }
    Ran compile(std::vector<std::string> arguments, const std::string& input = {})
    {
        arguments.insert(arguments.begin(), {"schema", "compile"});
        return runTool(arguments, {.input = input, .directory = dir_.path().string()});
    }
    TempDir dir_;
};

TEST_F(SchemaOutput, IsNoDocumentThatIsRead)
{
    struct SharedOutputRow {
        const char* why;
        std::vector<std::string> arguments;
        const char* message;
    };
    std::filesystem::create_hard_link(dir_.path() / "x.xsd", dir_.path() / "hard.xsd");
    std::filesystem::create_symlink("x.xsd", dir_.path() / "soft.xsd");
    std::filesystem::create_directory(dir_.path() / "sub");
    std::filesystem::create_symlink("new.c", dir_.path() / "dangling.c");
    writeText(dir_ / "catalog.xml", "<catalog xmlns='urn:oasis:names:tc:entity:xmlns:xml:catalog'>"
                                    "<nextCatalog catalog='next.xml'/></catalog>");
    writeText(dir_ / "next.xml", "<catalog xmlns='urn:oasis:names:tc:entity:xmlns:xml:catalog'/>");
    writeText(dir_ / "part.xsd", kEmpty);
    writeText(dir_ / "whole.xsd", "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>"
                                  "<xs:include schemaLocation='part.xsd'/></xs:schema>");
    const SharedOutputRow rows[] = {
        {"the source",
         {"x.xsd", "-o", "x.xsd", "-H", "y.h"},
         "x.xsd: error: is not written: the schema is read from it. [2010]\n"},
        {"the header",
         {"x.xsd", "-H", "x.xsd"},
         "x.xsd: error: is not written: the schema is read from it. [2010]\n"},
        {"the rule",
         {"x.xsd", "--depfile", "x.xsd"},
         "x.xsd: error: is not written: the schema is read from it. [2010]\n"},
        {"by another path",
         {"x.xsd", "-o", "sub/../x.xsd"},
         "sub/../x.xsd: error: is not written: the schema is read from it, as \"x.xsd\". "
         "[2010]\n"},
        {"by a hard link",
         {"x.xsd", "-o", "hard.xsd"},
         "hard.xsd: error: is not written: the schema is read from it, as \"x.xsd\". [2010]\n"},
        {"by a symbolic link",
         {"x.xsd", "-o", "soft.xsd"},
         "soft.xsd: error: is not written: the schema is read from it, as \"x.xsd\". [2010]\n"},
        {"an included document",
         {"whole.xsd", "-o", "part.xsd"},
         "part.xsd: error: is not written: the schema is read from it. [2010]\n"},
        {"a catalog",
         {"x.xsd", "--catalog", "catalog.xml", "-o", "catalog.xml"},
         "catalog.xml: error: is not written: the schema is read from it. [2010]\n"},
        {"a catalog that another one names",
         {"x.xsd", "--catalog", "catalog.xml", "-o", "next.xml"},
         "next.xml: error: is not written: the schema is read from it. [2010]\n"},
        {"one file for two outputs",
         {"x.xsd", "-o", "same.c", "-H", "same.c"},
         "same.c: error: is not written: another output is the same file. [2010]\n"},
        {"by another path, which does not exist yet",
         {"x.xsd", "-o", "o.c", "-H", "./o.c", "--depfile", "o.d"},
         "./o.c: error: is not written: another output is the same file, as \"o.c\". [2010]\n"},
        {"and the rule",
         {"x.xsd", "-o", "o.c", "-H", "o.h", "--depfile", "sub/../o.c"},
         "sub/../o.c: error: is not written: another output is the same file, as \"o.c\". "
         "[2010]\n"},
        {"by a link to a file that does not exist yet",
         {"x.xsd", "-o", "new.c", "-H", "dangling.c"},
         "dangling.c: error: is not written: another output is the same file, as \"new.c\". "
         "[2010]\n"},
        {"standard output",
         {"x.xsd", "-o", "-", "-H", "-"},
         "-: error: standard output takes none of the files; name one. [2010]\n"},
        {"standard output for the rule",
         {"x.xsd", "--depfile", "-"},
         "-: error: standard output takes none of the files; name one. [2010]\n"},
    };
    const std::vector<std::string> before = dir_.names();
    for (const SharedOutputRow& row : rows) {
        const Ran ran = compile(row.arguments);
        EXPECT_EQ(ran.status, 2) << row.why;
        EXPECT_EQ(ran.err, row.message) << row.why;
        EXPECT_EQ(dir_.names(), before) << row.why;
        EXPECT_EQ(readText(dir_ / "x.xsd"), kOne) << row.why;
    }
}

TEST_F(SchemaOutput, IsNotTheFileOnStandardInput)
{
    const Ran ran = runProgram(
        {"sh", "-c", std::string{NETXML_TOOL} + " schema compile - -o x.xsd -H x.h <x.xsd"},
        {.directory = dir_.path().string()});
    EXPECT_EQ(ran.status, 2);
    EXPECT_EQ(ran.err,
              "x.xsd: error: is not written: the schema is read from it, as \"-\". [2010]\n");
    EXPECT_EQ(readText(dir_ / "x.xsd"), kOne);
}

TEST_F(SchemaOutput, MayBeADeviceTwice)
{
    EXPECT_EQ(compile({"x.xsd", "-o", "/dev/null", "-H", "/dev/null"}).status, 0);
}

TEST_F(SchemaOutput, IsWrittenWhollyOrNotAtAll)
{
    writeText(dir_ / "old.c", "old");
    const Ran ran = compile({"x.xsd", "-o", "old.c", "-H", "no/o.h", "--depfile", "o.d"});
    EXPECT_EQ(ran.status, 4);
    EXPECT_EQ(ran.err, "no/o.h: error: cannot write: No such file or directory. [2010]\n");
    EXPECT_EQ(compile({"x.xsd", "-o", "no/o.c", "-H", "new.h"}).status, 4);
    EXPECT_EQ(compile({"x.xsd", "-o", "new.c", "-H", "new.h", "--depfile", "no/o.d"}).status, 4);
    EXPECT_EQ(readText(dir_ / "old.c"), "old");
    EXPECT_EQ(dir_.names(), (std::vector<std::string>{"old.c", "x.xsd"}));
}

TEST_F(SchemaOutput, HasAGuardThatBeginsWithALetterAndIsNotTheLibrarys)
{
    struct GuardRow {
        const char* document;
        const char* header;
        const char* guard;
    };
    const GuardRow rows[] = {
        {"3gpp.xsd", "3gpp_schema.h", "SCHEMA_3GPP_SCHEMA_RECORDS_H"},
        {"netxml.xsd", "netxml_schema.h", "NETXML_SCHEMA_RECORDS_H"},
        {"-a.b.xsd", "-a.b_schema.h", "SCHEMA_A_B_SCHEMA_RECORDS_H"},
        {"++.xsd", "++_schema.h", "SCHEMA_SCHEMA_RECORDS_H"},
    };
    for (const GuardRow& row : rows) {
        writeText(dir_ / row.document, kOne);
        EXPECT_EQ(compile({"--", row.document}).status, 0) << row.document;
        const std::string guard = row.guard;
        EXPECT_EQ(readText(dir_ / row.header).substr(0, std::string{row.document}.size() + 130),
                  ("/* Made by \"netxml schema compile\" from " + std::string{row.document} +
                   ". Do not edit. */\n#ifndef " + guard + "\n#define " + guard +
                   "\n\n#include \"netxml/schema.h\"\n\n#ifdef __cplusplus\n")
                      .substr(0, std::string{row.document}.size() + 130));
    }
    EXPECT_EQ(compile({"x.xsd", "-o", "y.c", "-H", "netxml_schema.h"}).status, 0);
    EXPECT_NE(readText(dir_ / "netxml_schema.h").find("#ifndef X_SCHEMA_RECORDS_H\n"),
              std::string::npos);
}

TEST_F(SchemaOutput, OfASchemaThatDeclaresNothing)
{
    writeText(dir_ / "e.xsd", kEmpty);
    EXPECT_EQ(compile({"e.xsd"}).status, 0);
    EXPECT_EQ(readText(dir_ / "e_schema.c"),
              "/* Made by \"netxml schema compile\" from e.xsd. Do not edit. */\n"
              "#include \"e_schema.h\"\n\n#include <stddef.h>\n\n\n\n"
              "static void fillBases(void)\n{\n}\n\n"
              "/* The schema declares nothing at its top, so a root has nothing to hold. */\n"
              "uint32_t e_schema_register(Schema_Root* root)\n{\n    fillBases();\n"
              "    return root ? XML_RET_OK : XML_RET_FAIL;\n}\n\n"
              "void e_schema_deregister(Schema_Root* root)\n{\n    (void)root;\n}\n");
}

TEST_F(SchemaOutput, HasAHeaderThatCanBeIncluded)
{
    for (const std::string name : {"a\"b.h", "a\nb.h", "a\\b.h"}) {
        const Ran ran = compile({"x.xsd", "-H", name});
        EXPECT_EQ(ran.status, 2) << name;
        EXPECT_NE(ran.err.find("error: a header of this name cannot be included: quotes, "
                               "backslashes and control characters end it or mean something else; "
                               "name it with -H. [2010]\n"),
                  std::string::npos)
            << ran.err;
    }
    EXPECT_EQ(dir_.names(), std::vector<std::string>{"x.xsd"});
    EXPECT_EQ(compile({"x.xsd", "-H", "a b'c.h"}).status, 0);
    EXPECT_NE(readText(dir_ / "x_schema.c").find("#include \"a b'c.h\"\n"), std::string::npos);
}

TEST_F(SchemaOutput, DependsOnCatalogs)
{
    std::filesystem::create_directory(dir_.path() / "sub");
    writeText(dir_ / "catalog.xml", "<catalog xmlns='urn:oasis:names:tc:entity:xmlns:xml:catalog'>"
                                    "<nextCatalog catalog='sub/next.xml'/></catalog>");
    writeText(dir_ / "sub/next.xml", "<catalog xmlns='urn:oasis:names:tc:entity:xmlns:xml:catalog'>"
                                     "<uri name='urn:p' uri='part.xsd'/></catalog>");
    writeText(dir_ / "sub/part.xsd", "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' "
                                     "targetNamespace='urn:p'/>");
    writeText(dir_ / "w.xsd", "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>"
                              "<xs:import namespace='urn:p'/></xs:schema>");
    EXPECT_EQ(compile({"w.xsd", "--catalog", "catalog.xml", "--depfile", "d"}).status, 0);
    EXPECT_EQ(readText(dir_ / "d"),
              "w_schema.c w_schema.h: \\\n  w.xsd \\\n  sub/part.xsd \\\n  catalog.xml \\\n"
              "  sub/next.xml\n");
    EXPECT_NE(readText(dir_ / "w_schema.c").find("from w.xsd, part.xsd. Do not edit."),
              std::string::npos);
}

TEST_F(SchemaOutput, OfAnAbsoluteNameHasAbsoluteDependencies)
{
    const std::string here = std::filesystem::canonical(dir_.path()).string() + "/";
    EXPECT_EQ(compile({"x.xsd", "-o", here + "o.c", "-H", here + "o.h", "--depfile", "d"}).status,
              0);
    EXPECT_EQ(readText(dir_ / "d"), here + "o.c " + here + "o.h: \\\n  " + here + "x.xsd\n");
    // What comes from standard input has no name that make could look at.
    EXPECT_EQ(compile({"-", "-o", "o.c", "-H", "o.h", "--depfile", "d"}, kOne).status, 0);
    EXPECT_EQ(readText(dir_ / "d"), "o.c o.h:\n");
}

}  // namespace
}  // namespace netxml::testing
