// The sentences of results, byte for byte and cut at every size.
#include "netxml/netxml.h"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <cstring>

namespace {

class ResultText : public testing::Test {
protected:
    ResultText() : tree_{treeOf("<p:a xmlns:p='urn:p'><p:b/><b/></p:a>")} {}
    ~ResultText() override { XML_DOM_DelNode(tree_); }

    XML_DOM_Node* root() const { return tree_; }
    XML_DOM_Node* child() const { return XML_DOM_GetFirstChild(tree_); }

    // A result with every field set, so that a sentence shows which ones it takes.
    Schema_ValidateResult resultOf(Schema_ErrorCode code) const
    {
        Schema_ValidateResult result{};
        result.code = code;
        result.node = child();
        result.elementName = "en";
        result.elementNamespace = "urn:e";
        result.attrName = "an";
        result.attrNamespace = "urn:a";
        std::strcpy(result.detail, "Detail.");
        return result;
    }

    static std::string sentence(const Schema_ValidateResult& result, uint32_t size = 4096)
    {
        std::string buffer(size + 1, '#');
        EXPECT_EQ(Schema_GetErrorDesc(&result, size, buffer.data()), XML_RET_OK);
        EXPECT_EQ(buffer[size], '#') << "wrote beyond its size";
        EXPECT_NE(buffer.find('\0'), std::string::npos);
        return buffer.c_str();
    }

private:
    XML_DOM_Node* tree_;
};

struct SentenceCase {
    Schema_ErrorCode code;
    const char* full;
    const char* bare;  // the same without any name
};

// clang-format off
constexpr SentenceCase kSentences[] = {
    {1,  "Expecting element 'urn:e':'en' under element '/a/b[1]'.",
         "Expecting element '':'' under element '/a/b[1]'."},
    {2,  "The element '/a/b[1]' should have an attribute 'urn:a':'an'.",
         "The element '/a/b[1]' should have an attribute '':''."},
    {3,  "The value of element '/a/b[1]' is invalid. Detail.",
         "The value of element '/a/b[1]' is invalid. "},
    {4,  "The value of attribute 'urn:a':'an' for element '/a/b[1]' is invalid. Detail.",
         "The value of attribute '':'' for element '/a/b[1]' is invalid. "},
    {5,  "The number of occurrences of element '/a/b[1]/en' is invalid.",
         "The number of occurrences of element '/a/b[1]/' is invalid."},
    {6,  "Unexpected element 'urn:p':'b' under element '/a",
         "Unexpected element 'urn:p':'b' under element '/a"},
    {7,  "Unexpected attribute 'urn:a':'an' of element '/a/b[1]'.",
         "Unexpected attribute '':'' of element '/a/b[1]'."},
    {8,  "The child elements of '/a/b[1]' are invalid.",
         "The child elements of '/a/b[1]' are invalid."},
    {9,  "Element '/a/b[1]' can not have a textual child element.",
         "Element '/a/b[1]' can not have a textual child element."},
    {10, "Element '/a/b[1]' can not have a child element.",
         "Element '/a/b[1]' can not have a child element."},
    {11, "Required child elements are missing for element '/a/b[1]'.",
         "Required child elements are missing for element '/a/b[1]'."},
    {12, "The root element of XML document is invalid.",
         "The root element of XML document is invalid."},
};
// clang-format on

TEST_F(ResultText, HasASentenceForEachCode)
{
    for (const SentenceCase& row : kSentences) {
        SCOPED_TRACE(row.code);
        EXPECT_EQ(sentence(resultOf(row.code)), row.full);
        Schema_ValidateResult bare{};
        bare.code = row.code;
        bare.node = child();
        EXPECT_EQ(sentence(bare), row.bare);
    }
}

TEST_F(ResultText, WithoutANodeThePathIsEmpty)
{
    Schema_ValidateResult result{};
    result.code = SCHEMA_ERROR_OCCURRENCES;
    result.elementName = "r";
    EXPECT_EQ(sentence(result), "The number of occurrences of element '/r' is invalid.");
    result.code = SCHEMA_ERROR_ELEMENT_UNEXPECTED;
    EXPECT_EQ(sentence(result), "Unexpected element '':'' under element ''.")
        << "no slash to cut at";
}

TEST_F(ResultText, UnexpectedElementsEndAtTheLastSlash)
{
    Schema_ValidateResult result{};
    result.code = SCHEMA_ERROR_ELEMENT_UNEXPECTED;
    result.node = root();
    EXPECT_EQ(sentence(result), "Unexpected element 'urn:p':'a' under element '") << "(Kept)";
    result.node = XML_DOM_GetNextSibling(child());
    EXPECT_EQ(sentence(result), "Unexpected element '':'b' under element '/a") << "no namespace";
}

TEST_F(ResultText, IsCutAtEverySize)
{
    Schema_ValidateResult result = resultOf(SCHEMA_ERROR_ELEMENT_VALUE);
    std::memset(result.detail, 'd', sizeof result.detail - 1);
    result.detail[sizeof result.detail - 1] = '\0';
    const std::string whole = sentence(result);
    ASSERT_EQ(whole.size(), std::strlen("The value of element '/a/b[1]' is invalid. ") + 1023);
    for (uint32_t size = 512; size <= whole.size() + 2; ++size)
        ASSERT_EQ(sentence(result, size), whole.substr(0, size - 1));
}

TEST_F(ResultText, ALongPathIsCut)
{
    std::string document;
    for (int i = 0; i < 200; ++i) document += "<level>";
    for (int i = 0; i < 200; ++i) document += "</level>";
    XML_DOM_Node* tree = treeOf(document);
    XML_DOM_Node* deepest = tree;
    while (XML_DOM_Node* next = XML_DOM_GetFirstChild(deepest)) deepest = next;
    Schema_ValidateResult result{};
    result.code = SCHEMA_ERROR_TEXT;
    result.node = deepest;
    std::string path = "/level";
    while (path.size() < 600) path += "/level[1]";
    EXPECT_EQ(sentence(result),
              "Element '" + path.substr(0, 511) + "' can not have a textual child element.");
    XML_DOM_DelNode(tree);
}

TEST_F(ResultText, RefusesWhatItCannotTell)
{
    char buffer[512] = "kept";
    Schema_ValidateResult result{};
    EXPECT_EQ(Schema_GetErrorDesc(nullptr, sizeof buffer, buffer), XML_RET_FAIL);
    EXPECT_EQ(Schema_GetErrorDesc(&result, sizeof buffer, nullptr), XML_RET_FAIL);
    EXPECT_EQ(Schema_GetErrorDesc(&result, 511, buffer), XML_RET_FAIL) << "also when valid";
    EXPECT_EQ(Schema_GetErrorDesc(&result, 512, buffer), XML_RET_OK);
    EXPECT_STREQ(buffer, "kept") << "a valid document has no sentence";
    for (const Schema_ErrorCode code : {13u, 14u, 0x80000001u, UINT32_MAX}) {
        result.code = code;
        EXPECT_EQ(Schema_GetErrorDesc(&result, sizeof buffer, buffer), XML_RET_FAIL) << code;
    }
    EXPECT_STREQ(buffer, "kept");
}

}  // namespace
