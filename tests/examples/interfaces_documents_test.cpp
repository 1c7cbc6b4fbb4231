// The example's documents: what its program says of each is what its README says.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <sys/wait.h>

#include "examples/interfaces/interfaces_schema.h"
#include "netxml/netxml.h"

namespace {

namespace fs = std::filesystem;

struct Row {
    unsigned code;
    std::string sentence;
};

std::string withoutBlanks(std::string_view text)
{
    while (text.starts_with(' ')) text.remove_prefix(1);
    while (text.ends_with(' ')) text.remove_suffix(1);
    return std::string{text};
}

// The README's table, by document:
//
//     | `documents/NAME` | CODE | SENTENCE |
std::map<std::string, Row> table()
{
    std::ifstream readme{fs::path{EXAMPLE_DIRECTORY} / "README.md"};
    std::map<std::string, Row> rows;
    for (std::string line; std::getline(readme, line);) {
        if (!line.starts_with("| `documents/")) continue;
        const std::size_t first = line.find('|', 1);
        const std::size_t second = line.find('|', first + 1);
        const std::size_t last = line.rfind('|');
        const std::string name = withoutBlanks(std::string_view{line}.substr(1, first - 1));
        rows[name.substr(11, name.size() - 12)] = {
            static_cast<unsigned>(std::stoul(line.substr(first + 1))),
            withoutBlanks(std::string_view{line}.substr(second + 1, last - second - 1))};
    }
    return rows;
}

struct Ran {
    int status;
    std::string out;
};

// Runs the program in the directory of the documents.
Ran runExample(const std::string& arguments)
{
    const std::string command = "cd '" EXAMPLE_DIRECTORY "/documents' && " EXAMPLE_EMULATOR
                                " '" EXAMPLE_PROGRAM "' " +
                                arguments + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return {-1, ""};
    std::string out;
    char piece[4096];
    for (std::size_t size = 0; (size = std::fread(piece, 1, sizeof piece, pipe)) != 0;)
        out.append(piece, size);
    const int status = pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out};
}

TEST(InterfacesDocuments, TheReadmeHasThemAll)
{
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator{fs::path{EXAMPLE_DIRECTORY} / "documents"})
        names.insert(entry.path().filename().string());
    std::set<std::string> listed;
    for (const auto& [name, row] : table()) listed.insert(name);
    EXPECT_EQ(listed, names);
}

TEST(InterfacesDocuments, TheProgramSaysWhatTheReadmeSays)
{
    unsigned valid = 0;
    for (const auto& [name, row] : table()) {
        const Ran ran = runExample(name);
        EXPECT_EQ(ran.out, name + ": " + row.sentence + "\n");
        EXPECT_EQ(ran.status, row.code == 0 ? 0 : 3) << name;
        valid += row.code == 0;
    }
    EXPECT_GE(valid, 4u);
}

TEST(InterfacesDocuments, TheCodesAreThoseOfTheReadmeAndAllTwelve)
{
    Schema_Root root;
    ASSERT_EQ(Schema_InitRoot(&root), XML_RET_OK);
    ASSERT_EQ(interfaces_schema_register(&root), XML_RET_OK);
    std::set<unsigned> met;
    for (const auto& [name, row] : table()) {
        const fs::path path = fs::path{EXAMPLE_DIRECTORY} / "documents" / name;
        XML_DOM_Node* tree = XML_DOM_BuildTreeByFile(path.c_str(), 0, nullptr);
        ASSERT_NE(tree, nullptr) << name;
        Schema_ValidateResult result;
        EXPECT_EQ(Schema_ValidateXml(tree, &root, &result), XML_RET_OK) << name;
        EXPECT_EQ(result.code, row.code) << name;
        met.insert(result.code);
        XML_DOM_DelNode(tree);
    }
    EXPECT_EQ(met, (std::set<unsigned>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
    interfaces_schema_deregister(&root);
    Schema_ExitRoot(&root);
}

TEST(InterfacesDocuments, OfSeveralFilesTheLargestStatusCounts)
{
    const Ran ran = runExample("valid-01-minimal.xml broken-12-another-root.xml missing.xml");
    EXPECT_EQ(ran.status, 3);
    EXPECT_EQ(ran.out, "valid-01-minimal.xml: valid\n"
                       "broken-12-another-root.xml: The root element of XML document is invalid.\n"
                       "missing.xml: cannot be opened.\n");
    EXPECT_EQ(runExample("missing.xml valid-01-minimal.xml").status, 1);
    EXPECT_EQ(runExample("").status, 1);
}

TEST(InterfacesDocuments, AParseErrorIsTrouble)
{
    const Ran ran = runExample("/dev/null");
    EXPECT_EQ(ran.status, 1);
    EXPECT_NE(ran.out.find("/dev/null: The Line 1 Column 1 :\"\", document is empty."),
              std::string::npos)
        << ran.out;
}

}  // namespace
