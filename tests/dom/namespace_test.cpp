#include "tests/support/failing_heap.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

namespace {

constexpr char kXml[] = "http://www.w3.org/XML/1998/namespace";

std::string spaceOf(const XML_DOM_Node* node)
{
    const char* prefix = nullptr;
    const char* name = nullptr;
    if (XML_DOM_GetNodeNameSpace(node, &prefix, &name) != XML_RET_OK) return "fails";
    return std::string{prefix ? prefix : "-"} + "=" + (name ? name : "-");
}

TEST(NodeNameSpace, DeclaresOnceAndOverwritesOnDemand)
{
    XML_DOM_Node* e = XML_DOM_CreateElementNode("e");
    EXPECT_EQ(XML_DOM_AddNodeNameSpace(e, "p", "u1"), XML_RET_OK);
    EXPECT_EQ(XML_DOM_SetNodeNameSpace(e, "p"), XML_RET_OK);
    EXPECT_EQ(XML_DOM_AddNodeNameSpace(e, "p", "u2"), XML_RET_FAIL);
    EXPECT_EQ(spaceOf(e), "p=u1");
    EXPECT_EQ(XML_DOM_SetNodeDefineNsVal(e, "p", "u2"), XML_RET_OK);
    EXPECT_EQ(spaceOf(e), "p=u2") << "what is bound sees the new name";
    EXPECT_EQ(XML_DOM_SetNodeDefineNsVal(e, "p", "u2"), XML_RET_OK) << "the same name again";
    EXPECT_EQ(XML_DOM_SetNodeDefineNsVal(e, "q", "u3"), XML_RET_OK) << "a new one";
    EXPECT_EQ(written(e), "<p:e xmlns:p=\"u2\" xmlns:q=\"u3\"/>");
    XML_DOM_DelNode(e);
}

TEST(NodeNameSpace, ArgumentRule)
{
    struct Case {
        const char* why;
        const char* prefix;
        const char* name;
        uint32_t status;
        const char* written;
    };
    // clang-format off
    constexpr Case kCases[] = {
        {"a prefix with a name",           "p",     "u",     XML_RET_OK,   "<e xmlns:p=\"u\"/>"},
        {"the default namespace",          nullptr, "u",     XML_RET_OK,   "<e xmlns=\"u\"/>"},
        {"an empty prefix is the default", "",      "u",     XML_RET_OK,   "<e xmlns=\"u\"/>"},
        {"an empty default",               "",      "",      XML_RET_OK,   "<e xmlns=\"\"/>"},
        {"a NULL default",                 nullptr, nullptr, XML_RET_OK,   "<e xmlns=\"\"/>"},
        {"a prefix without a name",        "p",     "",      XML_RET_FAIL, "<e/>"},
        {"a prefix with a NULL name",      "p",     nullptr, XML_RET_FAIL, "<e/>"},
        {"reserved prefixes are not refused", "xmlns", "u",  XML_RET_OK,   "<e xmlns:xmlns=\"u\"/>"},
        {"nor is the prefix's syntax",     "1 2",   "u",     XML_RET_OK,   "<e xmlns:1 2=\"u\"/>"},
    };
    // clang-format on
    for (const Case& row : kCases) {
        for (const auto declare : {XML_DOM_AddNodeNameSpace, XML_DOM_SetNodeDefineNsVal}) {
            XML_DOM_Node* e = XML_DOM_CreateElementNode("e");
            EXPECT_EQ(declare(e, row.prefix, row.name), row.status) << row.why;
            EXPECT_EQ(written(e), row.written) << row.why;
            XML_DOM_DelNode(e);
        }
    }
    EXPECT_EQ(XML_DOM_AddNodeNameSpace(nullptr, "p", "u"), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_SetNodeDefineNsVal(nullptr, "p", "u"), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_AddNodeNameSpaceInner(nullptr, "p", "u", 1), XML_RET_FAIL);
}

TEST(NodeNameSpace, InnerWorkerWithItsFlag)
{
    XML_DOM_Node* e = XML_DOM_CreateElementNode("e");
    EXPECT_EQ(XML_DOM_AddNodeNameSpaceInner(e, "p", "u", 0), XML_RET_OK);
    EXPECT_EQ(XML_DOM_AddNodeNameSpaceInner(e, "p", "v", 0), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_AddNodeNameSpaceInner(e, "p", "v", 256), XML_RET_OK) << "any bit counts";
    EXPECT_EQ(XML_DOM_AddNodeNameSpaceInner(e, nullptr, "", 0), XML_RET_OK);
    EXPECT_EQ(XML_DOM_AddNodeNameSpaceInner(e, "q", nullptr, 0), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_AddNodeNameSpaceInner(e, "p", nullptr, 1), XML_RET_FAIL);
    EXPECT_EQ(written(e), "<e xmlns:p=\"v\" xmlns=\"\"/>");
    XML_DOM_DelNode(e);
}

TEST(NodeNameSpace, WithoutMemoryNothingChanges)
{
    XML_DOM_Node* e = XML_DOM_CreateElementNode("e");
    EXPECT_EQ(XML_DOM_AddNodeNameSpace(e, "p", "u"), XML_RET_OK);
    const FailingHeap heap{0};
    EXPECT_EQ(XML_DOM_AddNodeNameSpace(e, "q", "v"), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_SetNodeDefineNsVal(e, "p", "w"), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_SetNodeNameSpace(e, "q"), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_SetNodeNameSpace(e, "p"), XML_RET_OK);
    EXPECT_EQ(spaceOf(e), "p=u");
    XML_DOM_DelNode(e);
}

TEST(Binding, TheNearestDeclarationWins)
{
    XML_DOM_Node* root = treeOf("<r xmlns:p='outer'><m xmlns:p='inner'><leaf/></m><n/></r>");
    XML_DOM_Node* m = XML_DOM_GetFirstChild(root);
    XML_DOM_Node* leaf = XML_DOM_GetFirstChild(m);
    EXPECT_EQ(XML_DOM_SetNodeNameSpace(leaf, "p"), XML_RET_OK);
    EXPECT_EQ(spaceOf(leaf), "p=inner");
    EXPECT_EQ(XML_DOM_SetNodeNameSpace(XML_DOM_GetNextSibling(m), "p"), XML_RET_OK);
    EXPECT_EQ(spaceOf(XML_DOM_GetNextSibling(m)), "p=outer");
    EXPECT_EQ(XML_DOM_SetNodeNameSpace(leaf, "none"), XML_RET_FAIL);
    EXPECT_EQ(spaceOf(leaf), "p=inner") << "unchanged";
    EXPECT_EQ(XML_DOM_SetNodeNameSpace(leaf, ""), XML_RET_OK);
    EXPECT_EQ(spaceOf(leaf), "-=-") << "unbound";
    EXPECT_EQ(XML_DOM_SetNodeNameSpace(leaf, "p"), XML_RET_OK);
    EXPECT_EQ(XML_DOM_SetNodeNameSpace(leaf, nullptr), XML_RET_OK);
    EXPECT_EQ(spaceOf(leaf), "-=-");
    XML_DOM_DelNode(root);
}

TEST(Binding, XmlIsBuiltInButAnExplicitDeclarationComesFirst)
{
    XML_DOM_Node* root = XML_DOM_CreateElementNode("r");
    EXPECT_EQ(XML_DOM_SetNodeNameSpace(root, "xml"), XML_RET_OK);
    EXPECT_EQ(spaceOf(root), std::string{"xml="} + kXml);
    EXPECT_EQ(XML_DOM_AddNodeNameSpace(root, "xml", "mine"), XML_RET_OK);
    XML_DOM_Node* child = XML_DOM_CreateElementNode("c");
    EXPECT_EQ(XML_DOM_AddChildNode(root, child), XML_RET_OK);
    EXPECT_EQ(XML_DOM_SetNodeNameSpace(child, "xml"), XML_RET_OK);
    EXPECT_EQ(spaceOf(child), "xml=mine");
    XML_DOM_DelNode(root);
}

TEST(Binding, OnlyElementsAreBound)
{
    XML_DOM_Node* root = treeOf("<r xmlns:p='u'>t</r>");
    EXPECT_EQ(XML_DOM_SetNodeNameSpace(XML_DOM_GetFirstChild(root), "p"), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_SetNodeNameSpace(XML_DOM_GetFirstChild(root), nullptr), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_SetNodeNameSpace(nullptr, "p"), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_SetAttrNsInner(nullptr, "p"), XML_RET_FAIL);
    XML_DOM_Attr* attr = XML_DOM_AddAttr(root, nullptr, "a", "1");
    EXPECT_EQ(XML_DOM_SetAttrNsInner(attr, "p"), XML_RET_OK);
    EXPECT_EQ(XML_DOM_SetAttrNsInner(attr, "q"), XML_RET_FAIL);
    EXPECT_EQ(written(root), "<r xmlns:p=\"u\" p:a=\"1\">t</r>");
    EXPECT_EQ(XML_DOM_SetAttrNsInner(attr, ""), XML_RET_OK);
    EXPECT_EQ(written(root), "<r xmlns:p=\"u\" a=\"1\">t</r>");
    XML_DOM_DelNode(root);
}

TEST(GetNodeNameSpace, UnboundIsTheDefaultInScope)
{
    XML_DOM_Node* root = treeOf("<r xmlns='u'><c>t</c></r>");
    XML_DOM_Node* c = XML_DOM_GetFirstChild(root);
    EXPECT_EQ(spaceOf(c), "-=u");
    EXPECT_EQ(spaceOf(XML_DOM_GetFirstChild(c)), "-=u") << "text reports its place";
    const char* out = nullptr;
    EXPECT_EQ(XML_DOM_GetNodeNameSpace(c, nullptr, &out), XML_RET_OK);
    EXPECT_STREQ(out, "u");
    EXPECT_EQ(XML_DOM_GetNodeNameSpace(c, &out, nullptr), XML_RET_OK);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(XML_DOM_GetNodeNameSpace(c, nullptr, nullptr), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_GetNodeNameSpace(nullptr, &out, &out), XML_RET_FAIL);
    XML_DOM_DelNode(root);
    XML_DOM_Node* bare = XML_DOM_CreateElementNode("b");
    EXPECT_EQ(spaceOf(bare), "-=-");
    XML_DOM_DelNode(bare);
}

TEST(GetNodeNsAttribute, ByNameAndNamespace)
{
    XML_DOM_Node* root =
        treeOf("<r xmlns='d' xmlns:p='u' xmlns:q='u' p:a='1' b='2' xml:lang='zh'/>");
    struct Case {
        const char* why;
        const char* space;
        const char* name;
        const char* value;
    };
    // clang-format off
    constexpr Case kCases[] = {
        {"by its namespace",                     "u",   "a",    "1"},
        {"another namespace",                    "v",   "a",    nullptr},
        {"any namespace",                        nullptr, "a",  "1"},
        {"unprefixed counts as the default (Kept)", "d", "b",   "2"},
        {"but in no other",                      "u",   "b",    nullptr},
        {"xml",                                  kXml,  "lang", "zh"},
        {"no such name",                         nullptr, "c",  nullptr},
        {"NULL name",                            "u",   nullptr, nullptr},
    };
    // clang-format on
    for (const Case& row : kCases)
        EXPECT_STREQ(XML_DOM_GetNodeNsAttribute(root, row.space, row.name), row.value) << row.why;
    EXPECT_EQ(XML_DOM_GetNodeNsAttribute(nullptr, "u", "a"), nullptr);
    XML_DOM_DelNode(root);
    XML_DOM_Node* noDefault = treeOf("<r b='2'/>");
    EXPECT_EQ(XML_DOM_GetNodeNsAttribute(noDefault, "", "b"), nullptr) << "no declaration at all";
    XML_DOM_DelNode(noDefault);
    XML_DOM_Node* shadowed = treeOf("<p:r xmlns:p='u' p:a='1'/>");
    EXPECT_EQ(XML_DOM_SetNodeDefineNsVal(shadowed, "p", "w"), XML_RET_OK);
    EXPECT_STREQ(XML_DOM_GetNodeNsAttribute(shadowed, "w", "a"), "1") << "looked up afresh";
    XML_DOM_DelNode(shadowed);
}

}  // namespace
