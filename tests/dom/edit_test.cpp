// Creating, linking, changing and deleting.
#include "tests/support/failing_heap.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

namespace {

struct CreateCase {
    const char* why;
    const char* name;
    const char* text;
    const char* made;
};

// clang-format off
constexpr CreateCase kElementWithText[] = {
    {"a plain pair",                         "mtu",   "1500",  "<mtu>1500</mtu>"},
    {"NULL text leaves the element empty",   "mtu",   nullptr, "<mtu/>"},
    {"empty text still makes a child",       "mtu",   "",      "<mtu></mtu>"},
    {"a colon is no part of a name (Kept)",  "p:mtu", "1500",  "NULL"},
    {"no name",                              nullptr, "1500",  "NULL"},
    {"an empty name",                        "",      "1500",  "NULL"},
    {"a name beyond ASCII",                  "\xC5\xE4\xD6\xC3", "x", "<\xE9\x85\x8D\xE7\xBD\xAE>x</\xE9\x85\x8D\xE7\xBD\xAE>"},
};
// clang-format on

TEST(Create, ElementWithText)
{
    for (const CreateCase& row : kElementWithText)
        EXPECT_EQ(writtenAndDeleted(XML_DOM_CreateElementWithText(row.name, row.text)), row.made)
            << row.why;
}

TEST(Create, ElementWithCData)
{
    EXPECT_EQ(writtenAndDeleted(XML_DOM_CreateElementWithCData("a", "x<y")),
              "<a><![CDATA[x<y]]></a>");
    EXPECT_EQ(writtenAndDeleted(XML_DOM_CreateElementWithCData("a", nullptr)), "<a/>");
    EXPECT_EQ(writtenAndDeleted(XML_DOM_CreateElementWithCData("1", "x")), "NULL");
}

TEST(Create, SingleNodes)
{
    EXPECT_EQ(writtenAndDeleted(XML_DOM_CreateElementNode("a")), "<a/>");
    EXPECT_EQ(writtenAndDeleted(XML_DOM_CreateElementNode("a:b")), "NULL");
    EXPECT_EQ(writtenAndDeleted(XML_DOM_CreateElementNode(nullptr)), "NULL");
    EXPECT_EQ(writtenAndDeleted(XML_DOM_CreateElementNodeInner("a:b")), "<a:b/>") << "not checked";
    EXPECT_EQ(writtenAndDeleted(XML_DOM_CreateElementNodeInner(nullptr)), "NULL");
    EXPECT_EQ(writtenAndDeleted(XML_DOM_CreateTextNode("x")), "x");
    EXPECT_EQ(writtenAndDeleted(XML_DOM_CreateTextNode(nullptr)), "NULL");
    EXPECT_EQ(writtenAndDeleted(XML_DOM_CreateCDataNode("x")), "<![CDATA[x]]>");
    EXPECT_EQ(writtenAndDeleted(XML_DOM_CreateCDataNode(nullptr)), "NULL");
    EXPECT_EQ(writtenAndDeleted(XML_DOM_CreateTextualNodeInner(2, "abcdef", 3)), "abc")
        << "so many bytes";
    EXPECT_EQ(writtenAndDeleted(XML_DOM_CreateTextualNodeInner(3, "abc", 0)), "<![CDATA[]]>");
    EXPECT_EQ(writtenAndDeleted(XML_DOM_CreateTextualNodeInner(2, nullptr, 0)), "NULL");
    XML_DOM_Node* strange = XML_DOM_CreateTextualNodeInner(9, "x", 1);
    EXPECT_EQ(XML_DOM_GetNodeType(strange), 9u) << "the type is stored unchanged";
    EXPECT_EQ(writtenAndDeleted(strange), "") << "and such a node writes nothing";
    EXPECT_EQ(XML_DOM_CreateTextualNodeInner(2, "x", SIZE_MAX), nullptr);
    EXPECT_EQ(XML_DOM_CreateTextualNodeInner(2, "x", SIZE_MAX - 8), nullptr);
}

TEST(Create, LeavesNothingBehindWhicheverAllocationFails)
{
    XML_DOM_Node* element = nullptr;
    for (unsigned allowed = 0; !element; ++allowed) {
        ASSERT_LT(allowed, 20u) << "fails even with every allocation allowed";
        const FailingHeap heap{allowed};
        element = XML_DOM_CreateElementWithText("\xC5\xE4", "1500");
        EXPECT_TRUE(element || FailingHeap::liveBlocks() == 0) << "with " << allowed << " allowed";
    }
    XML_DOM_DelNode(element);
}

TEST(Link, AddChildChecksBothSides)
{
    XML_DOM_Node* a = XML_DOM_CreateElementNode("a");
    XML_DOM_Node* b = XML_DOM_CreateElementNode("b");
    XML_DOM_Node* t = XML_DOM_CreateTextNode("t");
    XML_DOM_Node* root = treeOf("<r/>");
    EXPECT_EQ(XML_DOM_AddChildNode(nullptr, b), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_AddChildNode(a, nullptr), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_AddChildNode(t, b), XML_RET_FAIL) << "no element";
    EXPECT_EQ(XML_DOM_AddChildNode(a, root), XML_RET_FAIL) << "a document's root";
    EXPECT_EQ(XML_DOM_AddChildNode(a, b), XML_RET_OK);
    EXPECT_EQ(XML_DOM_AddChildNode(a, b), XML_RET_FAIL) << "it has a parent";
    EXPECT_EQ(XML_DOM_AddChildNode(a, t), XML_RET_OK);
    EXPECT_EQ(XML_DOM_AddChildNode(root, a), XML_RET_OK);
    EXPECT_EQ(writtenAndDeleted(root), "<r><a><b/>t</a></r>");
}

TEST(Link, InsertBefore)
{
    XML_DOM_Node* root = treeOf("<r><b/><d/></r>");
    XML_DOM_Node* b = XML_DOM_GetFirstChild(root);
    XML_DOM_Node* d = XML_DOM_GetNextSibling(b);
    EXPECT_EQ(XML_DOM_InsertBeforeNode(b, XML_DOM_CreateElementNode("a")), XML_RET_OK);
    EXPECT_EQ(XML_DOM_InsertBeforeNode(d, XML_DOM_CreateElementNode("c")), XML_RET_OK);
    XML_DOM_Node* x = XML_DOM_CreateElementNode("x");
    EXPECT_EQ(XML_DOM_InsertBeforeNode(root, x), XML_RET_FAIL) << "the reference has no parent";
    EXPECT_EQ(XML_DOM_InsertBeforeNode(nullptr, x), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_InsertBeforeNode(b, nullptr), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_AddChildNode(root, x), XML_RET_OK) << "the last child is still known";
    EXPECT_EQ(writtenAndDeleted(root), "<r><a/><b/><c/><d/><x/></r>");
}

// Kept: the new node is not checked, so a document's root can be put into another tree.
TEST(Link, InsertBeforeTakesARootAndItsDocumentWithIt)
{
    const long before = heapLiveBlocks();
    XML_DOM_Node* root = treeOf("<r><b/></r>");
    XML_DOM_Node* other = treeOf("<o><p/></o>");
    EXPECT_EQ(XML_DOM_InsertBeforeNode(XML_DOM_GetFirstChild(root), other), XML_RET_OK);
    EXPECT_EQ(XML_DOM_GetRoot(XML_DOM_GetFirstChild(other)), other);
    EXPECT_EQ(writtenAndDeleted(root), "<r><o><p/></o><b/></r>");
    EXPECT_EQ(heapLiveBlocks(), before);
}

TEST(Change, SetNodeValue)
{
    XML_DOM_Node* root = treeOf("<r>old<![CDATA[c]]></r>");
    XML_DOM_Node* text = XML_DOM_GetFirstChild(root);
    EXPECT_EQ(XML_DOM_SetNodeValue(text, "new"), XML_RET_OK);
    EXPECT_EQ(XML_DOM_SetNodeValue(text, ""), XML_RET_FAIL) << "the empty string cannot be set";
    EXPECT_EQ(XML_DOM_SetNodeValue(text, nullptr), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_SetNodeValue(nullptr, "x"), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_SetNodeValue(root, "x"), XML_RET_FAIL) << "an element";
    EXPECT_EQ(XML_DOM_SetNodeValue(XML_DOM_GetNextSibling(text), "d"), XML_RET_OK);
    EXPECT_EQ(XML_DOM_SetNodeValue(text, XML_DOM_GetNodeValue(text) + 1), XML_RET_OK)
        << "part of its own";
    {
        const FailingHeap heap{0};
        EXPECT_EQ(XML_DOM_SetNodeValue(text, "lost"), XML_RET_FAIL);
    }
    EXPECT_EQ(writtenAndDeleted(root), "<r>ew<![CDATA[d]]></r>");
}

TEST(Change, SetNodeName)
{
    XML_DOM_Node* root = treeOf("<p:r xmlns:p='u'>t</p:r>");
    EXPECT_EQ(XML_DOM_SetNodeName(root, "s"), XML_RET_OK);
    EXPECT_EQ(XML_DOM_SetNodeName(root, "p:s"), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_SetNodeName(root, ""), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_SetNodeName(root, nullptr), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_SetNodeName(nullptr, "s"), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_SetNodeName(XML_DOM_GetFirstChild(root), "s"), XML_RET_FAIL) << "text";
    EXPECT_EQ(XML_DOM_SetNodeName(root, XML_DOM_GetNodeName(root)), XML_RET_OK) << "its own";
    {
        const FailingHeap heap{0};
        EXPECT_EQ(XML_DOM_SetNodeName(root, "t"), XML_RET_FAIL);
    }
    EXPECT_EQ(writtenAndDeleted(root), "<p:s xmlns:p=\"u\">t</p:s>") << "the binding stays";
}

TEST(Attributes, AreAddedWithTheirChecks)
{
    XML_DOM_Node* root = treeOf("<r xmlns:p='u' xmlns:q='u' xmlns:z='v'><c/>t</r>");
    XML_DOM_Node* c = XML_DOM_GetFirstChild(root);
    EXPECT_NE(XML_DOM_AddAttr(c, nullptr, "a", "1"), nullptr);
    EXPECT_EQ(XML_DOM_AddAttr(c, "", "a", "2"), nullptr) << "the same name twice";
    EXPECT_NE(XML_DOM_AddAttr(c, "p", "a", "3"), nullptr);
    EXPECT_EQ(XML_DOM_AddAttr(c, "q", "a", "4"), nullptr) << "two prefixes, one namespace name";
    EXPECT_NE(XML_DOM_AddAttr(c, "z", "a", "5"), nullptr);
    EXPECT_NE(XML_DOM_AddAttr(c, "xml", "lang", "zh"), nullptr) << "xml needs no declaration";
    EXPECT_EQ(XML_DOM_AddAttr(c, "n", "b", "6"), nullptr) << "nothing declares the prefix";
    EXPECT_EQ(XML_DOM_AddAttr(c, nullptr, "xmlns", "7"), nullptr);
    EXPECT_NE(XML_DOM_AddAttr(c, nullptr, "xmlnsx", "8"), nullptr) << "a longer name is accepted";
    EXPECT_EQ(XML_DOM_AddAttr(c, nullptr, "x:y", "9"), nullptr);
    EXPECT_EQ(XML_DOM_AddAttr(c, nullptr, "", "9"), nullptr);
    EXPECT_EQ(XML_DOM_AddAttr(c, nullptr, nullptr, "9"), nullptr);
    EXPECT_EQ(XML_DOM_AddAttr(c, nullptr, "v", nullptr), nullptr);
    EXPECT_NE(XML_DOM_AddAttr(c, nullptr, "v", ""), nullptr);
    EXPECT_EQ(XML_DOM_AddAttr(nullptr, nullptr, "v", "1"), nullptr);
    EXPECT_EQ(XML_DOM_AddAttr(XML_DOM_GetNextSibling(c), nullptr, "v", "1"), nullptr)
        << "no element";
    EXPECT_EQ(XML_DOM_AddAttrInner(nullptr, "v", "1"), nullptr);
    EXPECT_EQ(XML_DOM_AddAttrInner(c, nullptr, "1"), nullptr);
    EXPECT_EQ(XML_DOM_AddAttrInner(c, "v", nullptr), nullptr);
    EXPECT_EQ(written(c), "<c a=\"1\" p:a=\"3\" z:a=\"5\" xml:lang=\"zh\" xmlnsx=\"8\" v=\"\"/>");
    XML_DOM_DelNode(root);
}

TEST(Attributes, AddedAndWithoutMemory)
{
    XML_DOM_Node* root = treeOf("<r xmlns:p='u' a='1'/>");
    for (std::size_t allowed = 0;; ++allowed) {
        const FailingHeap heap{allowed};
        if (XML_DOM_AddAttr(root, "p", "b", "2")) break;
        EXPECT_EQ(FailingHeap::liveBlocks(), 0);
        EXPECT_EQ(XML_DOM_GetNextAttr(XML_DOM_GetFirstAttr(root)), nullptr);
    }
    EXPECT_EQ(writtenAndDeleted(root), "<r xmlns:p=\"u\" a=\"1\" p:b=\"2\"/>");
}

TEST(Attributes, AreDeletedByPrefixAndName)
{
    XML_DOM_Node* root = treeOf("<r xmlns:p='u' xmlns:q='u' p:a='1' a='2' b='3' c='4'/>");
    XML_DOM_DelAttr(nullptr, nullptr, "a");
    XML_DOM_DelAttr(root, nullptr, nullptr);
    XML_DOM_DelAttr(root, nullptr, "");
    XML_DOM_DelAttr(root, "q", "a");  // by prefix, not by namespace name
    XML_DOM_DelAttr(root, nullptr, "none");
    EXPECT_EQ(written(root), "<r xmlns:p=\"u\" xmlns:q=\"u\" p:a=\"1\" a=\"2\" b=\"3\" c=\"4\"/>");
    XML_DOM_DelAttr(root, nullptr, "a");
    EXPECT_EQ(written(root), "<r xmlns:p=\"u\" xmlns:q=\"u\" p:a=\"1\" b=\"3\" c=\"4\"/>")
        << "in the middle";
    XML_DOM_DelAttr(root, "", "c");
    EXPECT_EQ(written(root), "<r xmlns:p=\"u\" xmlns:q=\"u\" p:a=\"1\" b=\"3\"/>") << "the last";
    XML_DOM_DelAttr(root, "p", "a");
    EXPECT_EQ(written(root), "<r xmlns:p=\"u\" xmlns:q=\"u\" b=\"3\"/>") << "the first";
    XML_DOM_DelAttr(root, nullptr, "b");
    EXPECT_EQ(XML_DOM_GetFirstAttr(root), nullptr);
    XML_DOM_DelAttr(root, nullptr, "b");
    XML_DOM_Attr* only = XML_DOM_AddAttr(root, nullptr, "n", "5");
    EXPECT_EQ(XML_DOM_GetFirstAttr(root), only);
    EXPECT_NE(XML_DOM_AddAttr(root, nullptr, "m", "6"), nullptr);
    EXPECT_EQ(writtenAndDeleted(root), "<r xmlns:p=\"u\" xmlns:q=\"u\" n=\"5\" m=\"6\"/>");
}

TEST(Delete, UnlinksFromEveryPlace)
{
    XML_DOM_Node* root = treeOf("<r><a/><b><c>t</c></b><d/></r>");
    XML_DOM_Node* a = XML_DOM_GetFirstChild(root);
    XML_DOM_Node* b = XML_DOM_GetNextSibling(a);
    XML_DOM_Node* d = XML_DOM_GetNextSibling(b);
    XML_DOM_DelNode(nullptr);
    XML_DOM_DelNode(b);
    EXPECT_EQ(written(root), "<r><a/><d/></r>");
    XML_DOM_DelNode(d);
    EXPECT_EQ(XML_DOM_AddChildNode(root, XML_DOM_CreateTextNode("t")), XML_RET_OK);
    EXPECT_EQ(written(root), "<r><a/>t</r>");
    XML_DOM_DelNode(a);
    EXPECT_EQ(written(root), "<r>t</r>");
    XML_DOM_DelNode(XML_DOM_GetFirstChild(root));
    EXPECT_EQ(written(root), "<r/>");
    EXPECT_EQ(XML_DOM_AddChildNode(root, XML_DOM_CreateTextNode("u")), XML_RET_OK);
    EXPECT_EQ(writtenAndDeleted(root), "<r>u</r>");
}

}  // namespace
