// What tracing prints, byte for byte.
#include "netxml/netxml.h"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <functional>

namespace {

std::string printedBy(const std::function<void()>& work)
{
    testing::internal::CaptureStdout();
    work();
    std::fflush(stdout);
    return testing::internal::GetCapturedStdout();
}

class Trace : public testing::Test {
protected:
    Trace() { Schema_Debug_Enable(1); }
    ~Trace() override { Schema_Debug_Enable(0); }
};

TEST_F(Trace, OnlyOneIsOn)
{
    EXPECT_EQ(Schema_Debug_Enable(2), 1);
    EXPECT_EQ(printedBy([] {
                  Schema_Debug_ShowMsg("%s", "x");
                  Schema_Debug_ShowMsgLine("%s", "x");
              }),
              "");
    EXPECT_EQ(Schema_Debug_Enable(0), 2);
    EXPECT_EQ(Schema_Debug_Enable(1), 0);
    EXPECT_EQ(printedBy([] { Schema_Debug_ShowMsg("%s=%u", "x", 7u); }), "x=7");
}

TEST_F(Trace, LinesBeginAndAreIndented)
{
    EXPECT_EQ(printedBy([] {
                  Schema_Debug_ShowMsgLine("%s", "a");
                  for (int i = 0; i < 3; ++i) Schema_Debug_BlankAdd();
                  Schema_Debug_ShowMsgLine("%d", 2);
                  Schema_Debug_ShowMsg("-");
                  for (int i = 0; i < 3; ++i) Schema_Debug_BlankSub();
                  Schema_Debug_ShowMsgLine("c");
              }),
              "\r\na\r\n      2-\r\nc");
}

TEST_F(Trace, TheLevelHasNoLowerBound)
{
    Schema_Debug_BlankSub();
    Schema_Debug_BlankAdd();
    EXPECT_EQ(printedBy([] { Schema_Debug_ShowMsgLine("x"); }), "\r\nx");
}

TEST_F(Trace, WithoutATextNothingIsPrinted)
{
    EXPECT_EQ(printedBy([] {
                  Schema_Debug_ShowMsg(nullptr);
                  Schema_Debug_ShowMsgLine(nullptr);
              }),
              "");
}

TEST_F(Trace, TextsAreCutAt1023Bytes)
{
    const std::string text(3000, 'x');
    EXPECT_EQ(printedBy([&] { Schema_Debug_ShowMsg("%s", text.c_str()); }), text.substr(0, 1023));
    EXPECT_EQ(printedBy([&] { Schema_Debug_ShowMsgLine("%s", text.c_str()); }),
              "\r\n" + text.substr(0, 1023));
}

TEST_F(Trace, ShowsANode)
{
    XML_DOM_Node* tree = treeOf("<p:a xmlns:p='urn:p'><p:b>7</p:b><c/></p:a>");
    XML_DOM_Node* b = XML_DOM_GetFirstChild(tree);
    const auto address = [](const XML_DOM_Node* node) {
        return std::to_string(reinterpret_cast<uintptr_t>(node));
    };
    Schema_Debug_BlankAdd();
    EXPECT_EQ(printedBy([&] { Schema_Debug_ShowNode(b, "check"); }),
              "\r\n  func=check,current node=[/a/b[1]], Value=[7],ns=[urn:p],addr=[" + address(b) +
                  "]");
    Schema_Debug_BlankSub();
    XML_DOM_Node* c = XML_DOM_GetNextSibling(b);
    EXPECT_EQ(printedBy([&] { Schema_Debug_ShowNode(c, "f"); }),
              "\r\nfunc=f,current node=[/a/c[1]], Value=[],ns=[],addr=[" + address(c) + "]");
    EXPECT_EQ(printedBy([&] { Schema_Debug_ShowNode(c, nullptr); }),
              "\r\nfunc=,current node=[/a/c[1]], Value=[],ns=[],addr=[" + address(c) + "]");
    EXPECT_EQ(printedBy([] { Schema_Debug_ShowNode(nullptr, "f"); }), "");
    Schema_Debug_Enable(0);
    EXPECT_EQ(printedBy([&] { Schema_Debug_ShowNode(b, "f"); }), "");
    XML_DOM_DelNode(tree);
}

TEST_F(Trace, ListsTheTopElements)
{
    Schema_Root root{};
    EXPECT_EQ(printedBy([&] { Schema_Debug_ListTopObjects(&root); }),
              "\r\nTop Elements count=0\r\n");
    Schema_ElementDecl elements[2] = {};
    elements[0].name = "interfaces";
    elements[0].namespaceName = "urn:if";
    elements[1].name = "routes";
    for (const Schema_ElementDecl& element : elements) {
        const Schema_Object object{&element, SCHEMA_KIND_ELEMENT};
        ASSERT_EQ(Schema_RegTopObject(&root, &object), XML_RET_OK);
    }
    EXPECT_EQ(printedBy([&] { Schema_Debug_ListTopObjects(&root); }),
              "\r\nTop Elements count=2\r\n[urn:if][interfaces]\r\n[][routes]\r\n");
    EXPECT_EQ(printedBy([] { Schema_Debug_ListTopObjects(nullptr); }), "");
    // A list that somebody else has filled.
    elements[1].name = nullptr;
    const void* items[] = {nullptr, &elements[1]};
    Schema_Root odd{};
    odd.elements.items = items;
    odd.elements.count = 2;
    EXPECT_EQ(printedBy([&] { Schema_Debug_ListTopObjects(&odd); }),
              "\r\nTop Elements count=2\r\n[][]\r\n");
    elements[1].name = "routes";
    Schema_Debug_Enable(0);
    EXPECT_EQ(printedBy([&] { Schema_Debug_ListTopObjects(&root); }), "");
    for (const Schema_ElementDecl& element : elements) {
        const Schema_Object object{&element, SCHEMA_KIND_ELEMENT};
        Schema_DeregTopObject(&root, &object);
    }
}

}  // namespace
