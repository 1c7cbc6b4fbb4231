// Documents and the accessors.
#include "tests/support/failing_heap.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

namespace {

TEST(Document, SetRootTakesOnlyADetachedElementOnce)
{
    XML_DOM_Node* root = XML_DOM_CreateElementNode("a");
    XML_DOM_Node* child = XML_DOM_CreateElementNode("b");
    XML_DOM_Node* text = XML_DOM_CreateTextNode("t");
    EXPECT_EQ(XML_DOM_AddChildNode(root, child), XML_RET_OK);
    EXPECT_EQ(XML_DOM_SetRoot(nullptr), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_SetRoot(text), XML_RET_FAIL) << "no element";
    EXPECT_EQ(XML_DOM_SetRoot(child), XML_RET_FAIL) << "has a parent";
    EXPECT_EQ(XML_DOM_GetRoot(child), nullptr);
    EXPECT_EQ(XML_DOM_SetRoot(root), XML_RET_OK);
    EXPECT_EQ(XML_DOM_SetRoot(root), XML_RET_FAIL) << "is one already";
    EXPECT_EQ(XML_DOM_GetRoot(child), root);
    EXPECT_EQ(XML_DOM_GetRoot(root), root);
    EXPECT_EQ(XML_DOM_GetRoot(text), nullptr);
    EXPECT_EQ(XML_DOM_GetRoot(nullptr), nullptr);
    EXPECT_STREQ(XML_DOM_GetVersion(child), "1.0");
    EXPECT_EQ(XML_DOM_GetEncoding(child), 0u);
    XML_DOM_DelNode(text);
    XML_DOM_DelNode(root);
}

TEST(Document, VersionIsOnePointZero)
{
    XML_DOM_Node* root = treeOf("<a><b/></a>");
    XML_DOM_Node* child = XML_DOM_GetFirstChild(root);
    EXPECT_EQ(XML_DOM_SetVersion(child, "1.0"), XML_RET_OK);
    for (const char* version : {"1.1", "1.00", "1.0 ", "1.", ""})
        EXPECT_EQ(XML_DOM_SetVersion(root, version), XML_RET_FAIL) << version;
    EXPECT_EQ(XML_DOM_SetVersion(root, nullptr), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_SetVersion(nullptr, "1.0"), XML_RET_FAIL);
    XML_DOM_Node* alone = XML_DOM_CreateElementNode("x");
    EXPECT_EQ(XML_DOM_SetVersion(alone, "1.0"), XML_RET_FAIL) << "no document";
    EXPECT_EQ(XML_DOM_GetVersion(alone), nullptr);
    EXPECT_EQ(XML_DOM_GetVersion(nullptr), nullptr);
    XML_DOM_DelNode(alone);
    XML_DOM_DelNode(root);
}

TEST(Document, EncodingIsOneOfThirteen)
{
    XML_DOM_Node* root = treeOf("<a><b/></a>");
    XML_DOM_Node* child = XML_DOM_GetFirstChild(root);
    EXPECT_EQ(XML_DOM_SetEncoding(child, 12), XML_RET_OK);
    EXPECT_EQ(XML_DOM_GetEncoding(root), 12u);
    EXPECT_EQ(XML_DOM_SetEncoding(child, 13), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_SetEncoding(nullptr, 0), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_GetEncoding(root), 12u);
    EXPECT_EQ(XML_DOM_GetEncoding(nullptr), 13u);
    XML_DOM_Node* alone = XML_DOM_CreateElementNode("x");
    EXPECT_EQ(XML_DOM_GetEncoding(alone), 13u);
    EXPECT_EQ(XML_DOM_SetEncoding(alone, 0), XML_RET_FAIL);
    XML_DOM_DelNode(alone);
    XML_DOM_DelNode(root);
}

TEST(Document, SetRootWithoutMemoryChangesNothing)
{
    XML_DOM_Node* root = XML_DOM_CreateElementNode("a");
    {
        const FailingHeap heap{0};
        EXPECT_EQ(XML_DOM_SetRoot(root), XML_RET_FAIL);
    }
    EXPECT_EQ(XML_DOM_GetRoot(root), nullptr);
    XML_DOM_DelNode(root);
}

TEST(Access, WalksAndReads)
{
    XML_DOM_Node* root = treeOf("<a x='1' y='2'>t<b/><![CDATA[c]]></a>");
    EXPECT_EQ(XML_DOM_GetNodeType(root), 1u);
    EXPECT_STREQ(XML_DOM_GetNodeName(root), "a");
    EXPECT_EQ(XML_DOM_GetNodeValue(root), nullptr);
    EXPECT_EQ(XML_DOM_GetNodeParent(root), nullptr);
    EXPECT_EQ(XML_DOM_GetNextSibling(root), nullptr);
    XML_DOM_Node* text = XML_DOM_GetFirstChild(root);
    EXPECT_EQ(XML_DOM_GetNodeType(text), 2u);
    EXPECT_EQ(XML_DOM_GetNodeName(text), nullptr);
    EXPECT_STREQ(XML_DOM_GetNodeValue(text), "t");
    EXPECT_EQ(XML_DOM_GetNodeParent(text), root);
    EXPECT_EQ(XML_DOM_GetFirstChild(text), nullptr);
    XML_DOM_Node* cdata = XML_DOM_GetNextSibling(XML_DOM_GetNextSibling(text));
    EXPECT_EQ(XML_DOM_GetNodeType(cdata), 3u);
    EXPECT_EQ(XML_DOM_GetNextSibling(cdata), nullptr);
    XML_DOM_Attr* x = XML_DOM_GetFirstAttr(root);
    EXPECT_STREQ(XML_DOM_GetAttrValByHandle(x), "1");
    XML_DOM_Attr* y = XML_DOM_GetNextAttr(x);
    EXPECT_STREQ(XML_DOM_GetAttrValByHandle(y), "2");
    EXPECT_EQ(XML_DOM_GetNextAttr(y), nullptr);
    EXPECT_STREQ(XML_DOM_GetNodeAttrValByName(root, "y"), "2");
    EXPECT_EQ(XML_DOM_GetNodeAttrValByName(root, "z"), nullptr);
    EXPECT_EQ(XML_DOM_GetNodeAttrValByName(root, nullptr), nullptr);
    XML_DOM_DelNode(root);
}

TEST(Access, NullGivesTheEmptyResult)
{
    EXPECT_EQ(XML_DOM_GetNodeParent(nullptr), nullptr);
    EXPECT_EQ(XML_DOM_GetFirstChild(nullptr), nullptr);
    EXPECT_EQ(XML_DOM_GetNextSibling(nullptr), nullptr);
    EXPECT_EQ(XML_DOM_GetNodeType(nullptr), 0u);
    EXPECT_EQ(XML_DOM_GetNodeName(nullptr), nullptr);
    EXPECT_EQ(XML_DOM_GetNodeValue(nullptr), nullptr);
    EXPECT_EQ(XML_DOM_GetFirstTextChildValue(nullptr), nullptr);
    EXPECT_EQ(XML_DOM_GetFirstCDataChildValue(nullptr), nullptr);
    EXPECT_EQ(XML_DOM_GetFirstAttr(nullptr), nullptr);
    EXPECT_EQ(XML_DOM_GetNextAttr(nullptr), nullptr);
    EXPECT_EQ(XML_DOM_GetAttrValByHandle(nullptr), nullptr);
    EXPECT_EQ(XML_DOM_GetNodeAttrValByName(nullptr, "a"), nullptr);
}

TEST(Access, FirstTextAndCDataChildOfTheDirectChildren)
{
    XML_DOM_Node* root = treeOf("<a><b>inner</b><![CDATA[c]]>t<![CDATA[d]]>u</a>");
    EXPECT_STREQ(XML_DOM_GetFirstTextChildValue(root), "t");
    EXPECT_STREQ(XML_DOM_GetFirstCDataChildValue(root), "c");
    EXPECT_EQ(XML_DOM_GetFirstCDataChildValue(XML_DOM_GetFirstChild(root)), nullptr);
    XML_DOM_Node* empty = XML_DOM_CreateElementNode("e");
    EXPECT_EQ(XML_DOM_GetFirstTextChildValue(empty), nullptr);
    XML_DOM_DelNode(empty);
    XML_DOM_DelNode(root);
}

TEST(Access, AttributesWithTheirNamespace)
{
    XML_DOM_Node* root = treeOf("<a xmlns='d' xmlns:p='u' x='1' p:y='2'/>");
    XML_DOM_Attr* x = XML_DOM_GetFirstAttr(root);
    const char* name = nullptr;
    const char* space = "unset";
    EXPECT_EQ(XML_DOM_GetAttrNameSpace(x, &name, &space), XML_RET_OK);
    EXPECT_STREQ(name, "x");
    EXPECT_EQ(space, nullptr) << "no prefix, no namespace";
    EXPECT_EQ(XML_DOM_GetAttrNameSpace(XML_DOM_GetNextAttr(x), nullptr, &space), XML_RET_OK);
    EXPECT_STREQ(space, "u");
    EXPECT_EQ(XML_DOM_GetAttrNameSpace(XML_DOM_GetNextAttr(x), &name, nullptr), XML_RET_OK);
    EXPECT_STREQ(name, "y");
    EXPECT_EQ(XML_DOM_GetAttrNameSpace(x, nullptr, nullptr), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_GetAttrNameSpace(nullptr, &name, &space), XML_RET_FAIL);
    XML_DOM_DelNode(root);
}

TEST(Strcmp, ReadsNullAsEmpty)
{
    EXPECT_EQ(XML_Strcmp(nullptr, ""), 0);
    EXPECT_EQ(XML_Strcmp(nullptr, nullptr), 0);
    EXPECT_EQ(XML_Strcmp("a", "a"), 0);
    EXPECT_LT(XML_Strcmp(nullptr, "a"), 0);
    EXPECT_GT(XML_Strcmp("b", "a"), 0);
    EXPECT_GT(XML_Strcmp("\xFF", "a"), 0) << "bytes are unsigned";
}

}  // namespace
