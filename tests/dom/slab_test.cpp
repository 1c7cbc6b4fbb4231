// Where parsed records lie: what is held, and when it goes back.
#include "dom/slab.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

std::string wideDocument(int children)
{
    std::string text = "<r xmlns:p='u'>";
    for (int i = 0; i < children; ++i)
        text += "<p:item id='" + std::to_string(i) + "'><name>n" + std::to_string(i) +
                "</name></p:item>";
    return text + "</r>";
}

// Attaches a node, or deletes it where that is refused.
void attach(XML_DOM_Node* parent, XML_DOM_Node* child)
{
    if (XML_DOM_AddChildNode(parent, child) != XML_RET_OK) XML_DOM_DelNode(child);
}

TEST(Slab, ASmallDocumentIsOneBlock)
{
    const FailingHeap heap{1000};
    XML_DOM_Node* root = treeOf("<rpc message-id='1' xmlns='urn:x'><get/></rpc>");
    EXPECT_EQ(FailingHeap::liveBlocks(), 1);
    XML_DOM_DelNode(root);
    EXPECT_EQ(FailingHeap::liveBlocks(), 0);
}

TEST(Slab, AWholeTreeGoesInWholeSlabs)
{
    const FailingHeap heap{1000000};
    XML_DOM_Node* root = treeOf(wideDocument(20000));
    EXPECT_LT(FailingHeap::liveBlocks(), 200);
    XML_DOM_DelNode(root);
    EXPECT_EQ(FailingHeap::liveBlocks(), 0);
}

TEST(Slab, LongStringsAreBlocksOfTheirOwnAndGoAtOnce)
{
    XML_DOM_Node* root =
        treeOf("<r a='" + std::string(50000, 'v') + "'>" + std::string(100000, 't') + "<b/></r>");
    const std::size_t before = heapLiveBytes();
    XML_DOM_DelAttr(root, nullptr, "a");
    EXPECT_LE(heapLiveBytes() + 50000, before);
    XML_DOM_DelNode(XML_DOM_GetFirstChild(root));
    EXPECT_LE(heapLiveBytes() + 150000, before);
    EXPECT_EQ(written(root), "<r><b/></r>");
    XML_DOM_DelNode(root);
}

std::string longTexts(int count)
{
    std::string document = "<r>";
    for (int i = 0; i < count; ++i)
        document += "<t a='" + std::string(4000, 'v') + std::to_string(i) + "'>" +
                    std::string(5000, 't') + "</t>";
    return document + "</r>";
}

// More than one list of them, whether the tree goes as a whole or was edited before.
TEST(Slab, ManyLongStringsGoWithTheirTree)
{
    const long blocks = heapLiveBlocks();
    for (const bool edits : {false, true}) {
        XML_DOM_Node* root = treeOf(longTexts(200));
        if (edits) {
            XML_DOM_Node* text = XML_DOM_GetFirstChild(XML_DOM_GetFirstChild(root));
            EXPECT_EQ(XML_DOM_SetNodeValue(text, "short"), XML_RET_OK);
            XML_DOM_DelNode(XML_DOM_GetNextSibling(XML_DOM_GetFirstChild(root)));
        }
        XML_DOM_DelNode(root);
        EXPECT_EQ(heapLiveBlocks(), blocks) << edits;
    }
}

TEST(Slab, LongStringsThatCannotBeWrittenDownGoToo)
{
    const std::string document = longTexts(70);
    for (std::size_t at = 0;; ++at) {
        const FailingHeap heap{at, 1};
        XML_DOM_DelNode(XML_DOM_BuildTreeByMem(reinterpret_cast<const uint8_t*>(document.data()),
                                               static_cast<uint32_t>(document.size()), 0, nullptr));
        ASSERT_EQ(FailingHeap::liveBlocks(), 0) << at;
        if (!FailingHeap::refused()) break;
    }
}

// What stays after deletes is at most the slabs in which something lives, each of 64 KiB at most.
TEST(Slab, WhatStaysAfterDeletesIsBounded)
{
    const std::size_t start = heapLiveBytes();
    XML_DOM_Node* root = treeOf(wideDocument(20000));
    const std::size_t whole = heapLiveBytes() - start;
    while (XML_DOM_GetNextSibling(XML_DOM_GetFirstChild(root)))
        XML_DOM_DelNode(XML_DOM_GetFirstChild(root));
    EXPECT_GT(whole, 20 * 65536u);
    EXPECT_LE(heapLiveBytes() - start, 2 * 65536u + 4096u)
        << "the first slab and that of the last item";
    EXPECT_EQ(written(root),
              "<r xmlns:p=\"u\"><p:item id=\"19999\"><name>n19999</name></p:item></r>");
    XML_DOM_DelNode(root);
    EXPECT_EQ(heapLiveBytes(), start);
}

// Copies of parts outlive what they were copied from, and each other.
TEST(Slab, RecordsOutliveTheirNeighbours)
{
    const long blocks = heapLiveBlocks();
    XML_DOM_Node* source = treeOf(wideDocument(3000));
    XML_DOM_Node* first = treeOf("<first/>");
    EXPECT_EQ(XML_DOM_CopySubTree(first, source), XML_RET_OK);
    XML_DOM_DelNode(source);
    XML_DOM_Node* second = treeOf("<second/>");
    EXPECT_EQ(XML_DOM_CopySubTree(second, first), XML_RET_OK);
    const std::string expected = written(second);
    XML_DOM_DelNode(first);
    EXPECT_EQ(written(second), expected);
    XML_DOM_DelNode(second);
    EXPECT_EQ(heapLiveBlocks(), blocks);
}

// Random edits: nothing leaks, whatever is deleted in which order.
TEST(Slab, RandomEditsLeakNothing)
{
    const long blocks = heapLiveBlocks();
    std::mt19937 random{7};
    for (int round = 0; round < 60; ++round) {
        std::vector<XML_DOM_Node*> roots{treeOf(wideDocument(400)), treeOf("<other><x/></other>")};
        for (int step = 0; step < 200; ++step) {
            XML_DOM_Node* root = roots[random() % 2];
            XML_DOM_Node* node = XML_DOM_GetFirstChild(root);
            for (auto skip = random() % 30; node && XML_DOM_GetNextSibling(node) && skip != 0;
                 --skip)
                node = XML_DOM_GetNextSibling(node);
            if (!node) node = root;
            switch (random() % 9) {
            case 0:
                if (node != root) XML_DOM_DelNode(node);
                break;
            case 1: XML_DOM_SetNodeName(node, "renamed"); break;
            case 2:
                XML_DOM_AddAttr(node, nullptr, ("a" + std::to_string(step)).c_str(), "v");
                break;
            case 3: XML_DOM_DelAttr(node, nullptr, "id"); break;
            case 4: attach(root, XML_DOM_CopyNode(node)); break;
            case 5:
                if (step % 20 == 0) XML_DOM_CopySubTree(node, roots[0]);
                break;
            case 6:
                XML_DOM_SetNodeDefineNsVal(root, "p", ("urn:" + std::to_string(step)).c_str());
                break;
            case 7: attach(node, XML_DOM_CreateElementWithText("leaf", "text")); break;
            default:
                if (node != root) XML_DOM_InsertBeforeNode(node, XML_DOM_CreateTextNode("t"));
            }
        }
        const std::string before = written(roots[0]);
        XML_DOM_Node* again = treeOf(before);
        EXPECT_EQ(written(again), before);
        XML_DOM_DelNode(again);
        for (XML_DOM_Node* root : roots) XML_DOM_DelNode(root);
        ASSERT_EQ(heapLiveBlocks(), blocks) << "round " << round;
    }
}

TEST(Slab, ReplacedLongStringsOfSingleNodesGoAtOnce)
{
    const std::size_t start = heapLiveBytes();
    XML_DOM_Node* text = XML_DOM_CreateTextNode(std::string(100000, 'x').c_str());
    EXPECT_EQ(XML_DOM_SetNodeValue(text, "y"), XML_RET_OK);
    EXPECT_LT(heapLiveBytes(), start + 1000);
    XML_DOM_DelNode(text);
    EXPECT_EQ(heapLiveBytes(), start);
}

}  // namespace
