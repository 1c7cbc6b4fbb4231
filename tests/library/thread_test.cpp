// Distinct trees in parallel threads, also trees whose records were made by one call.
#include "dom/node.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

constexpr int kThreads = 8;

std::string documentFor(int thread)
{
    std::string text = "<?xml version='1.0' encoding='UTF-8'?><r xmlns:p='u'>";
    for (int i = 0; i < 500; ++i)
        text += "<p:item id='" + std::to_string(thread * 1000 + i) + "'>\xE4\xB8\xAD " +
                std::to_string(i) + "</p:item>";
    return text + "</r>";
}

template <class Work>
void inParallel(Work work)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) threads.emplace_back(work, i);
    for (std::thread& thread : threads) thread.join();
}

TEST(Threads, ParseEditWriteAndFreeDistinctTrees)
{
    inParallel([](int thread) {
        for (int round = 0; round < 20; ++round) {
            const std::string document = documentFor(thread);
            XML_DOM_Node* root = treeOf(document);
            XML_DOM_Node* first = XML_DOM_GetFirstChild(root);
            EXPECT_EQ(XML_DOM_SetNodeNameSpace(first, "xml"), XML_RET_OK)
                << "the shared built-in declaration";
            EXPECT_EQ(XML_DOM_SetNodeName(first, "renamed"), XML_RET_OK);
            XML_DOM_DelNode(XML_DOM_GetNextSibling(first));
            XML_DOM_SetEncoding(root, static_cast<XML_Encoding>(round % 13));
            EXPECT_NE(written(root, 0), "failed");
            XML_DOM_DelNode(root);
        }
    });
}

// The children of one copy lie in shared slabs. A node is put into a tree of each thread, which
// deletes it there; what one thread does to a slab's count the others must see.
TEST(Threads, RecordsOfOneSlabDieInManyThreads)
{
    const long before = heapLiveBlocks();
    for (int round = 0; round < 20; ++round) {
        XML_DOM_Node* source = treeOf(documentFor(1));
        XML_DOM_Node* pool = treeOf("<pool/>");
        EXPECT_EQ(XML_DOM_CopySubTree(pool, source), XML_RET_OK);
        XML_DOM_DelNode(source);

        // No public function takes a child out alive: unlink by hand, as an owner of both trees
        // could.
        std::vector<XML_DOM_Node*> parts;
        for (int i = 0; i < kThreads; ++i) parts.push_back(treeOf("<part/>"));
        for (std::size_t i = 0; XML_DOM_Node* child = pool->firstChild; ++i) {
            pool->firstChild = child->nextSibling;
            child->nextSibling = child->parent = nullptr;
            EXPECT_EQ(XML_DOM_AddChildNode(parts[i % kThreads], child), XML_RET_OK);
        }
        pool->lastChild = nullptr;
        inParallel([&parts](int thread) {
            XML_DOM_Node* part = parts[static_cast<std::size_t>(thread)];
            EXPECT_NE(written(part), "failed");  // while others edit what lies beside it
            while (XML_DOM_Node* child = XML_DOM_GetFirstChild(part)) {
                XML_DOM_SetNodeName(child, "x");
                XML_DOM_DelNode(child);
            }
            XML_DOM_DelNode(part);
        });
        XML_DOM_DelNode(pool);
    }
    EXPECT_EQ(heapLiveBlocks(), before);
}

TEST(Threads, ManyReadOneTree)
{
    XML_DOM_Node* root = treeOf(documentFor(2));
    const std::string expected = written(root);
    inParallel([root, &expected](int) {
        EXPECT_EQ(written(root), expected);
        char path[64];
        XML_DOM_GetXPath(XML_DOM_GetFirstChild(root), sizeof path, path);
        EXPECT_STREQ(path, "/r/item[1]");
    });
    XML_DOM_DelNode(root);
}

}  // namespace
