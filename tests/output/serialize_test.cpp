#include "tests/support/failing_heap.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace {

struct Pieces {
    std::vector<std::string> list;
    int failAt = -1;  // the piece that fails
    uint32_t with = 5;
};

uint32_t collect(void* context, const char* bytes, size_t length)
{
    auto* pieces = static_cast<Pieces*>(context);
    pieces->list.emplace_back(bytes, length);
    return static_cast<int>(pieces->list.size()) - 1 == pieces->failAt ? pieces->with : 0;
}

std::string joined(const Pieces& pieces, const char* between = "|")
{
    std::string text;
    for (const std::string& piece : pieces.list) text += (text.empty() ? "" : between) + piece;
    return text;
}

TEST(Escape, EveryCharacterAndBothEnds)
{
    struct Case {
        const char* why;
        const char* text;
        const char* pieces;
    };
    // clang-format off
    constexpr Case kCases[] = {
        {"plain",                              "abc",          "abc"},
        {"empty",                              "",             ""},
        {"the three",                          "a<b>c&d",      "a|&lt;|b|&gt;|c|&amp;|d"},
        {"at the ends, without empty pieces",  "<x>",          "&lt;|x|&gt;"},
        {"side by side",                       "<<",           "&lt;|&lt;"},
        {"quotes stay (Kept)",                 "\"'",          "\"'"},
        {"blanks at both ends",                " a\nb ",       "&#x20;|a\nb|&#x20;"},
        {"each blank in front",                "\rx",          "&#x0d;|x"},
        {"line feed in front",                 "\nx",          "&#x0a;|x"},
        {"tab in front",                       "\tx",          "&#x09;|x"},
        {"each blank behind",                  "x\r",          "x|&#x0d;"},
        {"line feed behind",                   "x\n",          "x|&#x0a;"},
        {"tab behind",                         "x\t",          "x|&#x09;"},
        {"one blank gives one reference",      " ",            "&#x20;"},
        {"two blanks give two",                "  ",           "&#x20;|&#x20;"},
        {"only the outermost blanks",          "  x  ",        "&#x20;| x |&#x20;"},
        {"a blank behind an entity",           "& ",           "&amp;|&#x20;"},
        {"a blank before an entity",           " &",           "&#x20;|&amp;"},
        {"blanks between entities stay",       "& &",          "&amp;| |&amp;"},
        {"bytes of GB18030 are no markup",     "\x81\x30\x81\x38<", "\x81\x30\x81\x38|&lt;"},
    };
    // clang-format on
    for (const Case& row : kCases) {
        Pieces pieces;
        EXPECT_EQ(XML_OutTextString(row.text, collect, &pieces), XML_RET_OK) << row.why;
        EXPECT_EQ(joined(pieces), row.pieces) << row.why;
    }
    Pieces none;
    EXPECT_EQ(XML_OutTextString(nullptr, collect, &none), XML_RET_FAIL);
    EXPECT_EQ(XML_OutTextString("x", nullptr, nullptr), XML_RET_FAIL);
}

TEST(Escape, StopsAtTheFirstPieceThatFails)
{
    for (int piece = 0; piece < 5; ++piece) {
        Pieces pieces;
        pieces.failAt = piece;
        EXPECT_EQ(XML_OutTextString(" a<b ", collect, &pieces), 5u) << piece;
        EXPECT_EQ(static_cast<int>(pieces.list.size()), piece + 1);
    }
}

struct WriteCase {
    const char* why;
    const char* document;
    uint32_t flags;
    const char* text;
};

// clang-format off
constexpr WriteCase kWrites[] = {
    {"declaration, text and entities", "<a>x&lt;y</a>", 0, "<?xml version=\"1.0\" encoding=\"UTF-8\"?><a>x&lt;y</a>"},
    {"no declaration",                 "<a>x&lt;y</a>", 1, "<a>x&lt;y</a>"},
    {"other bits are ignored",         "<a/>", 0x7FFFFFFE, "<?xml version=\"1.0\" encoding=\"UTF-8\"?><a/>"},
    {"CDATA as it is",                 "<a><![CDATA[<&>\" ]]></a>", 1, "<a><![CDATA[<&>\" ]]></a>"},
    {"declarations before attributes", "<p:a x='1' xmlns:p='u' p:y='2' xmlns='d'/>", 1, "<p:a xmlns:p=\"u\" xmlns=\"d\" x=\"1\" p:y=\"2\"/>"},
    {"values are escaped",             "<a x=' &lt;&#9;' xmlns:p='&amp;'/>", 1, "<a xmlns:p=\"&amp;\" x=\"&#x20;&lt;&#x09;\"/>"},
    {"quotes in values are not (Kept)", "<a x='\"'/>", 1, "<a x=\"\"\"/>"},
    {"the base namespace left out",    "<x:a xmlns='urn:ietf:params:xml:ns:netconf:base:1.0' xmlns:x='u'/>", 0x80000001, "<x:a xmlns:x=\"u\"/>"},
    {"and kept without the flag",      "<a xmlns='urn:ietf:params:xml:ns:netconf:base:1.0'/>", 1, "<a xmlns=\"urn:ietf:params:xml:ns:netconf:base:1.0\"/>"},
    {"only exactly that name",         "<a xmlns='urn:ietf:params:xml:ns:netconf:base:1.1'/>", 0x80000001, "<a xmlns=\"urn:ietf:params:xml:ns:netconf:base:1.1\"/>"},
    {"also with a prefix, and below",  "<a><b xmlns:n='urn:ietf:params:xml:ns:netconf:base:1.0'>t</b></a>", 0x80000001, "<a><b>t</b></a>"},
    {"no line breaks are added",       "<a>\n <b>\n  <c/> </b>\n</a>", 1, "<a><b><c/></b></a>"},
};
// clang-format on

TEST(TranslateStr, WritesWhatTheTreeHolds)
{
    for (const WriteCase& row : kWrites) {
        XML_DOM_Node* root = treeOf(row.document);
        EXPECT_EQ(written(root, row.flags), row.text) << row.why;
        Pieces pieces;
        EXPECT_EQ(XML_DOM_OutPutTranslateStr(root, row.flags, collect, &pieces), XML_RET_OK)
            << row.why;
        EXPECT_EQ(joined(pieces, ""), row.text) << row.why;
        XML_DOM_DelNode(root);
    }
}

TEST(TranslateStr, ArgumentsLengthAndTerminator)
{
    XML_DOM_Node* root = treeOf("<a><b/>t</a>");
    char* text = nullptr;
    EXPECT_EQ(XML_DOM_TranslateStr(nullptr, 0, &text, nullptr), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_TranslateStr(root, 0, nullptr, nullptr), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_TranslateStr4AllChild(nullptr, &text, nullptr), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_TranslateStr4AllChild(root, nullptr, nullptr), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_OutPutTranslateStr(nullptr, 0, collect, nullptr), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_OutPutTranslateStr(root, 0, nullptr, nullptr), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_NodeBegin2Str(nullptr, 0, nullptr), nullptr);
    EXPECT_EQ(XML_DOM_NodeEnd2Str(nullptr, nullptr), nullptr);
    EXPECT_EQ(text, nullptr);
    EXPECT_EQ(XML_DOM_TranslateStr(root, 1, &text, nullptr), XML_RET_OK)
        << "the length may be NULL";
    EXPECT_STREQ(text, "<a><b/>t</a>");
    heapReleaseHandedOut(text);
    XML_DOM_DelNode(root);
}

TEST(TranslateStr, OnlyARootHasADeclaration)
{
    XML_DOM_Node* root = treeOf("<a><b/></a>");
    EXPECT_EQ(written(XML_DOM_GetFirstChild(root), 0), "<b/>");
    XML_DOM_Node* alone = XML_DOM_CreateElementWithText("n", "\xD6\xD0");
    EXPECT_EQ(written(alone, 0), "<n>\xE4\xB8\xAD</n>") << "UTF-8 without a document";
    XML_DOM_DelNode(alone);
    XML_DOM_DelNode(root);
}

TEST(TranslateStr4AllChild, WritesTheChildren)
{
    XML_DOM_Node* root = treeOf("<a x='1'>t<b/><c><d/></c><![CDATA[e]]></a>");
    char* text = nullptr;
    size_t length = 0;
    EXPECT_EQ(XML_DOM_TranslateStr4AllChild(root, &text, &length), XML_RET_OK);
    EXPECT_STREQ(text, "t<b/><c><d/></c><![CDATA[e]]>");
    EXPECT_EQ(length, 29u);
    heapReleaseHandedOut(text);
    text = nullptr;
    EXPECT_EQ(XML_DOM_TranslateStr4AllChild(XML_DOM_GetNextSibling(XML_DOM_GetFirstChild(root)),
                                            &text, &length),
              XML_RET_OK);
    EXPECT_STREQ(text, "") << "no children: the empty string";
    EXPECT_EQ(length, 0u);
    heapReleaseHandedOut(text);
    XML_DOM_DelNode(root);
}

TEST(BeginAndEnd, AreAlwaysOpenTags)
{
    XML_DOM_Node* root = treeOf("<p:a xmlns:p='u' x='1'>t<b/><![CDATA[c]]></p:a>");
    struct Case {
        XML_DOM_Node* node;
        uint32_t flags;
        const char* begin;
        const char* end;
    };
    XML_DOM_Node* t = XML_DOM_GetFirstChild(root);
    XML_DOM_Node* b = XML_DOM_GetNextSibling(t);
    for (const Case& row :
         {Case{root, 0, "<?xml version=\"1.0\" encoding=\"UTF-8\"?><p:a xmlns:p=\"u\" x=\"1\">",
               "</p:a>"},
          Case{root, 1, "<p:a xmlns:p=\"u\" x=\"1\">", "</p:a>"}, Case{b, 0, "<b>", "</b>"},
          Case{t, 0, "t", ""}, Case{XML_DOM_GetNextSibling(b), 0, "<![CDATA[c]]>", ""}}) {
        size_t length = 99;
        char* text = XML_DOM_NodeBegin2Str(row.node, row.flags, &length);
        EXPECT_EQ(std::string(text, length), row.begin);
        heapReleaseHandedOut(text);
        text = XML_DOM_NodeEnd2Str(row.node, &length);
        EXPECT_EQ(std::string(text, length), row.end);
        EXPECT_EQ(text[length], '\0');
        heapReleaseHandedOut(text);
        text = XML_DOM_NodeEnd2Str(row.node, nullptr);
        heapReleaseHandedOut(text);
    }
    XML_DOM_DelNode(root);
}

// What has no bytes of ASCII in it is written piece by piece.
TEST(BeginAndEnd, InAnEncodingOfSeveralBytes)
{
    XML_DOM_Node* root = treeOf("<p:a xmlns:p='u' x='1'>t<b/><![CDATA[c]]></p:a>");
    ASSERT_EQ(XML_DOM_SetEncoding(root, XML_ENCODING_UTF_16BE), XML_RET_OK);
    XML_DOM_Node* t = XML_DOM_GetFirstChild(root);
    XML_DOM_Node* b = XML_DOM_GetNextSibling(t);
    XML_DOM_Node* c = XML_DOM_GetNextSibling(b);
    XML_DOM_Node* strange = XML_DOM_CreateTextualNodeInner(9, "x", 1);
    ASSERT_EQ(XML_DOM_AddChildNode(root, strange), XML_RET_OK);
    struct Case {
        XML_DOM_Node* node;
        const char* begin;
        const char* end;
    };
    for (const Case& row :
         {Case{root, "<p:a xmlns:p=\"u\" x=\"1\">", "</p:a>"}, Case{t, "t", ""},
          Case{b, "<b>", "</b>"}, Case{c, "<![CDATA[c]]>", ""}, Case{strange, "", ""}}) {
        size_t length = 99;
        char* text = XML_DOM_NodeBegin2Str(row.node, XML_DOM_WRITE_NO_DECLARATION, &length);
        EXPECT_EQ(std::string(text, length), convertTo("UTF-16BE", row.begin));
        heapReleaseHandedOut(text);
        text = XML_DOM_NodeEnd2Str(row.node, &length);
        EXPECT_EQ(std::string(text, length), convertTo("UTF-16BE", row.end));
        heapReleaseHandedOut(text);
    }
    XML_DOM_DelNode(root);
}

TEST(OutPut, HandsOutEachTokenAsOnePiece)
{
    XML_DOM_Node* root =
        treeOf("<p:a xmlns:p='u' xmlns='d' x=' v&lt;' p:y=''>t&amp;u<b/><![CDATA[c]]></p:a>");
    Pieces pieces;
    EXPECT_EQ(XML_DOM_OutPutTranslateStr(root, 0, collect, &pieces), XML_RET_OK);
    EXPECT_EQ(joined(pieces), "<?xml version=\"|1.0|\" encoding=\"|UTF-8|\"?>|<|p|:|a| "
                              "xmlns|:|p|=\"|u|\"| xmlns|=\"|d|\"| |x|=\"|&#x20;|v|&lt;|\"|"
                              " |p|:|y|=\"|\"|>|t|&amp;|u|<|b|/>|<![CDATA[|c|]]>|</|p|:|a|>");
    XML_DOM_DelNode(root);
}

// A name that is missing, or empty, is no piece.
TEST(OutPut, AnElementWithoutANameHasNoPieceForIt)
{
    for (XML_DOM_Node* element : {XML_DOM_CreateTextualNodeInner(XML_DOM_NODE_ELEMENT, "x", 1),
                                  XML_DOM_CreateElementNodeInner("")}) {
        ASSERT_NE(element, nullptr);
        Pieces pieces;
        EXPECT_EQ(XML_DOM_OutPutTranslateStr(element, 1, collect, &pieces), XML_RET_OK);
        EXPECT_EQ(joined(pieces), "<|/>");
        EXPECT_EQ(written(element), "</>");
        XML_DOM_DelNode(element);
    }
}

// Kept: an empty CDATA section is an empty piece, and that is a failure.
TEST(OutPut, FailsForAnEmptyCDataSection)
{
    XML_DOM_Node* root = treeOf("<a><![CDATA[]]><b/></a>");
    Pieces pieces;
    EXPECT_EQ(XML_DOM_OutPutTranslateStr(root, 1, collect, &pieces), XML_RET_FAIL);
    EXPECT_EQ(joined(pieces), "<|a|>|<![CDATA[|]]>|</|a|>") << "no sibling behind it, but the end";
    EXPECT_EQ(written(root), "<a><![CDATA[]]><b/></a>") << "a string has no such trouble";
    XML_DOM_DelNode(root);
}

struct FailCase {
    const char* why;
    int piece;
    const char* seen;
};

// By the rule: begin, children up to the first that fails, end.
TEST(OutPut, AFailureStopsTheSiblingsOfWhatFailed)
{
    // <a> <b x="1"> t <c/> </b> <d/> </a>
    constexpr FailCase kCases[] = {
        {"the root's begin", 0, "<|a|>|<|b| |x|=\"|1|\"|>|t|<|c|/>|</|b|>|<|d|/>|</|a|>"},
        {"an attribute: the tag is closed, the children follow, the sibling does not", 6,
         "<|a|>|<|b| |x|=\"|1|\"|>|t|<|c|/>|</|b|>|</|a|>"},
        {"a text: its siblings do not follow, nor the parent's", 11,
         "<|a|>|<|b| |x|=\"|1|\"|>|t|</|b|>|</|a|>"},
        {"an end tag", 15, "<|a|>|<|b| |x|=\"|1|\"|>|t|<|c|/>|</|b|>|</|a|>"},
    };
    XML_DOM_Node* root = treeOf("<a><b x='1'>t<c/></b><d/></a>");
    for (const FailCase& row : kCases) {
        Pieces pieces;
        pieces.failAt = row.piece;
        EXPECT_EQ(XML_DOM_OutPutTranslateStr(root, 1, collect, &pieces), 5u) << row.why;
        EXPECT_EQ(joined(pieces), row.seen) << row.why;
    }
    Pieces declaration;
    declaration.failAt = 0;
    EXPECT_EQ(XML_DOM_OutPutTranslateStr(root, 0, collect, &declaration), 5u);
    EXPECT_EQ(joined(declaration), "<?xml version=\"|1.0|\" encoding=\"|UTF-8|\"?>")
        << "a failing declaration stops all";
    XML_DOM_DelNode(root);
}

TEST(OutPut, AFailureLeavesOutTheRestOfTheDeclarations)
{
    XML_DOM_Node* root = treeOf("<a xmlns:p='u' xmlns:q='v' x='1'><b/></a>");
    Pieces pieces;
    pieces.failAt = 2;
    EXPECT_EQ(XML_DOM_OutPutTranslateStr(root, 1, collect, &pieces), 5u);
    EXPECT_EQ(joined(pieces), "<|a| xmlns|:|p|=\"|u|\"| |x|=\"|1|\"|>|<|b|/>|</|a|>");
    XML_DOM_DelNode(root);
}

uint32_t failAlways(void*, const char*, size_t)
{
    return 0x80000000;
}

TEST(OutPut, StatusesThatSumToZeroAreStillAFailure)
{
    XML_DOM_Node* root = treeOf("<a/>");
    EXPECT_NE(XML_DOM_OutPutTranslateStr(root, 1, failAlways, nullptr), XML_RET_OK);
    XML_DOM_DelNode(root);
}

TEST(OutPut, BytesOfAnIncompleteCharacterWaitForTheNextPiece)
{
    XML_DOM_Node* a = XML_DOM_CreateElementNode("a");
    XML_DOM_AddChildNode(a, XML_DOM_CreateTextNode("x\xD6"));  // no whole character
    Pieces pieces;
    EXPECT_NE(XML_DOM_OutPutTranslateStr(a, 1, collect, &pieces), XML_RET_OK);
    XML_DOM_DelNode(a);
}

// Every encoding: the terminator is a NUL of the encoding, marks begin each string of UTF-16 and
// UTF-32.
TEST(TranslateStr, WritesEveryEncoding)
{
    XML_DOM_Node* root = treeOf("<a>\xE4\xB8\xAD</a>");
    for (XML_Encoding e = 0; e < 13; ++e) {
        const std::string name = XML_DOM_EncodingEnumToStr(e);
        SCOPED_TRACE(name);
        EXPECT_EQ(XML_DOM_SetEncoding(root, e), XML_RET_OK);
        const std::string expected = convertTo(name.c_str(), "<?xml version=\"1.0\" encoding=\"" +
                                                                 name + "\"?><a>\xE4\xB8\xAD</a>");
        char* text = nullptr;
        size_t length = 0;
        ASSERT_EQ(XML_DOM_TranslateStr(root, 0, &text, &length), XML_RET_OK);
        EXPECT_EQ(std::string(text, length), expected);
        const std::size_t unit = convertTo(name.c_str(), std::string(2, '\0')).size() -
                                 convertTo(name.c_str(), std::string(1, '\0')).size();
        EXPECT_EQ(std::string(text + length, unit), std::string(unit, '\0'));
        heapReleaseHandedOut(text);
        Pieces pieces;
        EXPECT_EQ(XML_DOM_OutPutTranslateStr(root, 0, collect, &pieces), XML_RET_OK);
        EXPECT_EQ(joined(pieces, ""), expected);
    }
    XML_DOM_DelNode(root);
}

TEST(TranslateStr, WhatTheEncodingLacksFails)
{
    XML_DOM_Node* root = treeOf("<a>\xF0\x9F\x98\x80</a>");
    EXPECT_EQ(XML_DOM_SetEncoding(root, XML_ENCODING_GB2312), XML_RET_OK);
    char* text = nullptr;
    size_t length = 77;
    EXPECT_NE(XML_DOM_TranslateStr(root, 0, &text, &length), XML_RET_OK);
    EXPECT_EQ(text, nullptr) << "not written on failure";
    EXPECT_NE(length, 77u) << "but the length says how much was rendered";
    EXPECT_EQ(XML_DOM_AddChildNode(root, XML_DOM_CreateElementNode("b")), XML_RET_OK);
    EXPECT_NE(XML_DOM_TranslateStr4AllChild(root, &text, &length), XML_RET_OK);
    EXPECT_EQ(text, nullptr);
    EXPECT_EQ(length, 0u) << "not the child behind the one that fails";
    XML_DOM_DelNode(root);
}

TEST(TranslateStr, LeavesNothingBehindWhicheverAllocationFails)
{
    std::string document = "<a>";
    for (int i = 0; i < 2000; ++i) document += "<b>\xE4\xB8\xAD</b>";
    XML_DOM_Node* root = treeOf(document + "</a>");
    for (std::size_t allowed = 0;; ++allowed) {
        const FailingHeap heap{allowed};
        char* text = nullptr;
        const uint32_t status = XML_DOM_TranslateStr(root, 0, &text, nullptr);
        EXPECT_EQ(status == XML_RET_OK, text != nullptr);
        heapReleaseHandedOut(text);
        EXPECT_EQ(FailingHeap::liveBlocks(), 0) << allowed;
        if (!FailingHeap::refused()) break;
    }
    XML_DOM_DelNode(root);
}

TEST(TranslateStr, WithoutMemoryForTheTerminatorThereIsNoText)
{
    XML_DOM_Node* root = treeOf("<a/>");
    char* text = nullptr;
    std::size_t failures = 0;
    for (std::size_t allowed = 0; !text; ++allowed) {
        const FailingHeap heap{allowed};
        const uint32_t status = XML_DOM_TranslateStr4AllChild(root, &text, nullptr);
        EXPECT_EQ(status == XML_RET_OK, text != nullptr);
        failures += text == nullptr;
    }
    EXPECT_EQ(failures, 3u) << "the stream, its block's record, the block";
    heapReleaseHandedOut(text);
    XML_DOM_DelNode(root);
}

TEST(TranslateStr, AnEmptyRenderingIsJustTheTerminatorInEveryEncoding)
{
    XML_DOM_Node* root = treeOf("<a/>");
    for (XML_Encoding e = 0; e < 13; ++e) {
        EXPECT_EQ(XML_DOM_SetEncoding(root, e), XML_RET_OK);
        char* text = nullptr;
        size_t length = 9;
        EXPECT_EQ(XML_DOM_TranslateStr4AllChild(root, &text, &length), XML_RET_OK);
        EXPECT_EQ(length, 0u);
        const std::size_t unit =
            convertTo(XML_DOM_EncodingEnumToStr(e), std::string(2, '\0')).size() -
            convertTo(XML_DOM_EncodingEnumToStr(e), std::string(1, '\0')).size();
        EXPECT_EQ(std::string(text, unit), std::string(unit, '\0')) << e;
        heapReleaseHandedOut(text);
    }
    XML_DOM_DelNode(root);
}

}  // namespace
