// Paths and visits.
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace {

std::string pathOf(const XML_DOM_Node* node, std::size_t size = 200)
{
    std::vector<char> buffer(size + 8, '#');
    const std::size_t written = XML_DOM_GetXPath(node, size, buffer.data());
    EXPECT_LT(written, size);
    EXPECT_EQ(buffer[written], '\0');
    EXPECT_EQ(std::string(buffer.begin() + static_cast<std::ptrdiff_t>(size), buffer.end()),
              "########");
    return std::string(buffer.data(), written);
}

XML_DOM_Node* child(XML_DOM_Node* node, int index)
{
    node = XML_DOM_GetFirstChild(node);
    while (index-- > 0) node = XML_DOM_GetNextSibling(node);
    return node;
}

TEST(XPath, CountsSiblingsOfTheSameName)
{
    XML_DOM_Node* root = treeOf("<a><b/><b/><c>t<d/></c><p:b xmlns:p='u'/><b2/></a>");
    EXPECT_EQ(pathOf(root), "/a");
    EXPECT_EQ(pathOf(child(root, 0)), "/a/b[1]");
    EXPECT_EQ(pathOf(child(root, 1)), "/a/b[2]");
    EXPECT_EQ(pathOf(child(root, 2)), "/a/c[1]");
    EXPECT_EQ(pathOf(child(child(root, 2), 0)), "/a/c[1]") << "the path of text is its parent's";
    EXPECT_EQ(pathOf(child(child(root, 2), 1)), "/a/c[1]/d[1]");
    EXPECT_EQ(pathOf(child(root, 3)), "/a/b[3]") << "prefixes do not count";
    EXPECT_EQ(pathOf(child(root, 4)), "/a/b2[1]");
    XML_DOM_DelNode(root);
    root = treeOf("<a><b/>text<x/><b/></a>");
    EXPECT_EQ(pathOf(child(root, 3)), "/a/b[2]");
    XML_DOM_DelNode(root);
}

TEST(XPath, LargePositions)
{
    std::string document = "<a>";
    for (int i = 0; i < 1234; ++i) document += "<b/>";
    XML_DOM_Node* root = treeOf(document + "</a>");
    EXPECT_EQ(pathOf(child(root, 9)), "/a/b[10]");
    EXPECT_EQ(pathOf(child(root, 1233)), "/a/b[1234]");
    XML_DOM_DelNode(root);
}

TEST(XPath, IsCutAtEverySize)
{
    XML_DOM_Node* root = treeOf("<a><b><name>t</name></b></a>");
    const std::string whole = "/a/b[1]/name[1]";
    for (std::size_t size = 1; size < 30; ++size)
        EXPECT_EQ(pathOf(child(child(root, 0), 0), size), whole.substr(0, size - 1)) << size;
    char buffer[8] = "x";
    EXPECT_EQ(XML_DOM_GetXPath(root, 0, buffer), 0u);
    EXPECT_STREQ(buffer, "x");
    EXPECT_EQ(XML_DOM_GetXPath(nullptr, 8, buffer), 0u);
    EXPECT_EQ(XML_DOM_GetXPath(root, 8, nullptr), 0u);
    XML_DOM_DelNode(root);
}

TEST(XPath, OfDetachedNodes)
{
    XML_DOM_Node* text = XML_DOM_CreateTextNode("t");
    EXPECT_EQ(pathOf(text), "") << "empty and terminated";
    XML_DOM_Node* top = XML_DOM_CreateElementNode("top");
    EXPECT_EQ(XML_DOM_AddChildNode(top, text), XML_RET_OK);
    EXPECT_EQ(pathOf(text), "/top");
    XML_DOM_DelNode(top);
}

struct Visitor {
    std::string seen;
    const char* stopAt;
};

uint32_t visit(XML_DOM_Node* node, void* context)
{
    auto* visitor = static_cast<Visitor*>(context);
    const char* name = XML_DOM_GetNodeName(node);
    visitor->seen += name ? name : XML_DOM_GetNodeValue(node);
    visitor->seen += ' ';
    return visitor->stopAt && name && std::string{name} == visitor->stopAt ? 7 : 0;
}

TEST(ScanTree, VisitsInDocumentOrder)
{
    XML_DOM_Node* root = treeOf("<r><b><d/></b>text<c><![CDATA[cd]]></c><e/></r>");
    Visitor all{"", nullptr};
    EXPECT_EQ(XML_DOM_ScanTree(root, visit, &all), XML_RET_OK);
    EXPECT_EQ(all.seen, "r b d text c cd e ");
    Visitor stopped{"", "d"};
    EXPECT_EQ(XML_DOM_ScanTree(root, visit, &stopped), XML_RET_FAIL)
        << "not the function's own value";
    EXPECT_EQ(stopped.seen, "r b d ");
    Visitor siblings{"", nullptr};
    EXPECT_EQ(XML_DOM_ScanTree(child(root, 2), visit, &siblings), XML_RET_OK);
    EXPECT_EQ(siblings.seen, "c cd e ") << "following siblings, but not the parent's";
    EXPECT_EQ(XML_DOM_ScanTree(nullptr, visit, &all), XML_RET_EMPTY);
    EXPECT_EQ(XML_DOM_ScanTree(root, nullptr, &all), XML_RET_EMPTY);
    XML_DOM_DelNode(root);
}

}  // namespace
