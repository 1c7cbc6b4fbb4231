// Depth takes no stack, and many of anything take time in proportion. Work is counted, not timed:
// by allocations and bytes where they show it, and by sizes that a quadratic rule would not finish.
#include "tests/support/callback_tree.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/small_stack.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

namespace {

uint32_t countVisit(XML_DOM_Node*, void* context)
{
    ++*static_cast<std::size_t*>(context);
    return 0;
}

uint32_t countBytes(void* context, const char*, size_t length)
{
    *static_cast<std::size_t*>(context) += length;
    return 0;
}

TEST(Scale, AMillionNestedElements)
{
    static constexpr std::size_t kDepth = 1000000;
    std::string document = "<p:e xmlns:p='u'>";
    document.reserve(kDepth * 14);
    for (std::size_t i = 1; i < kDepth; ++i) document += "<p:e>";
    for (std::size_t i = 0; i < kDepth; ++i) document += "</p:e>";
    onSmallStack([&document] {
        const long before = heapLiveBlocks();
        XML_DOM_Node* root = treeOf(document);
        std::size_t visited = 0;
        EXPECT_EQ(XML_DOM_ScanTree(root, countVisit, &visited), XML_RET_OK);
        EXPECT_EQ(visited, kDepth);
        char* text = nullptr;
        size_t length = 0;
        ASSERT_EQ(XML_DOM_TranslateStr(root, 1, &text, &length), XML_RET_OK);
        EXPECT_EQ(length, document.size() - 5) << "the innermost is one tag";
        std::size_t bytes = 0;
        EXPECT_EQ(XML_DOM_OutPutTranslateStr(root, 1, countBytes, &bytes), XML_RET_OK);
        EXPECT_EQ(bytes, length);
        XML_DOM_Node* copy = XML_DOM_CopyRoot(root);
        EXPECT_EQ(XML_DOM_CopySubTree(copy, root), XML_RET_OK);
        char* again = nullptr;
        ASSERT_EQ(XML_DOM_TranslateStr(copy, 1, &again, &length), XML_RET_OK);
        EXPECT_STREQ(again, text);
        heapReleaseHandedOut(text);
        heapReleaseHandedOut(again);
        XML_DOM_Node* deepest = root;
        while (XML_DOM_GetFirstChild(deepest)) deepest = XML_DOM_GetFirstChild(deepest);
        std::string path(8 * kDepth, '\0');
        EXPECT_EQ(XML_DOM_GetXPath(deepest, path.size(), path.data()), 2 + (kDepth - 1) * 5);
        XML_DOM_DelNode(copy);  // record by record
        XML_DOM_DelNode(root);  // slab by slab
        EXPECT_EQ(heapLiveBlocks(), before);
    });
}

TEST(Scale, AMillionNestedElementsThatNeverClose)
{
    std::string document;
    for (std::size_t i = 0; i < 1000000; ++i) document += "<e a='1'>";
    onSmallStack([&document] {
        const long before = heapLiveBlocks();
        char error[200];
        EXPECT_EQ(XML_DOM_BuildTreeByMem(bytesOf(document), static_cast<uint32_t>(document.size()),
                                         sizeof error, error),
                  nullptr);
        EXPECT_EQ(heapLiveBlocks(), before);
    });
}

TEST(Scale, AHundredThousandAttributes)
{
    std::string document = "<e xmlns:p='u'";
    for (int i = 0; i < 100000; ++i) document += " p:a" + std::to_string(i) + "='v'";
    XML_DOM_Node* root = treeOf(document + "/>");
    std::size_t count = 0;
    for (XML_DOM_Attr* a = XML_DOM_GetFirstAttr(root); a; a = XML_DOM_GetNextAttr(a)) ++count;
    EXPECT_EQ(count, 100000u);
    XML_DOM_DelNode(root);
    const std::string twice = document + " p:a77777='w'/>";
    EXPECT_EQ(XML_Parser_ByMem(bytesOf(twice), static_cast<uint32_t>(twice.size()), nullptr),
              XML_RET_FAIL);
}

TEST(Scale, AHundredThousandDeclarationsAndTheirUses)
{
    std::string document = "<e";
    for (int i = 0; i < 100000; ++i)
        document += " xmlns:p" + std::to_string(i) + "='u" + std::to_string(i) + "'";
    document += ">";
    for (int i = 0; i < 100000; ++i)
        document += "<p" + std::to_string(i) + ":c p" + std::to_string(99999 - i) + ":a='1'/>";
    XML_DOM_Node* root = treeOf(document + "</e>");
    XML_DOM_Node* copy = XML_DOM_CopyRoot(root);
    EXPECT_EQ(XML_DOM_CopySubTree(copy, root), XML_RET_OK);
    EXPECT_EQ(written(copy), written(root));
    XML_DOM_DelNode(copy);
    // Copied to where nothing is declared, each child brings its own two.
    XML_DOM_Node* bare = treeOf("<e/>");
    EXPECT_EQ(XML_DOM_CopySubTree(bare, root), XML_RET_OK);
    const char* name = nullptr;
    EXPECT_EQ(XML_DOM_GetNodeNameSpace(XML_DOM_GetFirstChild(bare), nullptr, &name), XML_RET_OK);
    EXPECT_STREQ(name, "u0");
    XML_DOM_DelNode(bare);
    XML_DOM_DelNode(root);
}

TEST(Scale, APrefixDeclaredAtEachOfManyLevels)
{
    constexpr int kDepth = 20000;
    std::string document = "<o xmlns:q='v'>";
    for (int i = 0; i < kDepth; ++i) document += "<p:e xmlns:p='u" + std::to_string(i) + "'><q:x/>";
    for (int i = 0; i < kDepth; ++i) document += "</p:e>";
    XML_DOM_Node* root = treeOf(document + "</o>");
    XML_DOM_Node* copy = XML_DOM_CopyRoot(root);
    EXPECT_EQ(XML_DOM_CopySubTree(copy, root), XML_RET_OK);
    EXPECT_EQ(written(copy), written(root));
    XML_DOM_DelNode(copy);
    XML_DOM_DelNode(root);
}

// Long tokens from small chunks: the buffer's blocks grow by doubling.
TEST(Scale, LongTokensCostFewAllocations)
{
    const std::string text(8 << 20, 'x');
    for (const std::string& document :
         {"<a>" + text + "</a>", "<a b='" + text + "'/>", "<a><!--" + text + "--></a>",
          "<a><![CDATA[" + text + "]]></a>", "<a><?p " + text + "?></a>", "<" + text + "/>",
          "<!DOCTYPE " + text + "><a/>"}) {
        const ChunkList chunks{document, 4096};
        const FailingHeap heap{FailingHeap::kForever};
        XML_DOM_Node* root = XML_DOM_BuildTreeByMemList(chunks.list(), 0, nullptr);
        EXPECT_NE(root, nullptr) << document.substr(0, 12);
        EXPECT_LT(FailingHeap::allocations(), 60u);
        XML_DOM_DelNode(root);
        EXPECT_EQ(FailingHeap::liveBlocks(), 0);
    }
}

TEST(Scale, ManyReferencesAndManyDigits)
{
    std::string document = "<a>";
    for (int i = 0; i < 1000000; ++i) document += "&#65;";
    document += "&#" + std::string(1000000, '0') + "66;</a>";
    XML_DOM_Node* root = treeOf(document);
    EXPECT_EQ(std::string{XML_DOM_GetFirstTextChildValue(root)}, std::string(1000000, 'A') + "B");
    XML_DOM_DelNode(root);
}

// One long namespace name shared by many attributes is hashed once.
TEST(Scale, ManyAttributesInALongNamespace)
{
    std::string document = "<e xmlns:p='" + std::string(1000000, 'u') + "'";
    for (int i = 0; i < 100000; ++i) document += " p:a" + std::to_string(i) + "=''";
    XML_DOM_DelNode(treeOf(document + "/>"));
    // One local name in as many namespaces.
    document = "<e";
    for (int i = 0; i < 50000; ++i) {
        const std::string n = std::to_string(i);
        document += " xmlns:p" + n + "='u" + n + "' p" + n + ":a=''";
    }
    XML_DOM_DelNode(treeOf(document + "/>"));
}

TEST(Scale, ALargeTextThroughAFileStream)
{
    std::string text;
    for (int i = 0; i < 3000000; ++i) text += "\xE4\xB8\xAD";
    const TempFile path;
    XML_IO_OutStream* stream =
        XML_IO_FileOutStreamCreate(path.path(), XML_ENCODING_UTF_8, XML_ENCODING_GB18030);
    EXPECT_EQ(XML_IO_OutStreamAppend(stream, text.data(), text.size()), XML_RET_OK);
    XML_IO_OutStreamDestroy(stream);
    EXPECT_EQ(path.content(), convertTo("GB18030", text));
}

TEST(Scale, ManyDeclarationsThroughTheCallbacks)
{
    std::string document = "<e";
    for (int i = 0; i < 50000; ++i) {
        const std::string n = std::to_string(i);
        document += " xmlns:p" + n + "='u" + n + "' p" + n + ":a='v'";
    }
    document += "/>";
    const CallbackTree tree;
    EXPECT_EQ(
        XML_Parser_ByMem(bytesOf(document), static_cast<uint32_t>(document.size()), tree.handler()),
        XML_RET_OK);
    XML_DOM_Node* direct = treeOf(document);
    EXPECT_EQ(written(tree.root()), written(direct));
    XML_DOM_DelNode(direct);
    XML_DOM_DelNode(tree.root());
}

}  // namespace
