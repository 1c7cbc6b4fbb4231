// Text to a tree: messages, failures, and the exported callbacks.
#include "tests/support/failing_heap.hpp"
#include "tests/support/plain_scanner.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstring>

namespace {

XML_DOM_Node* build(std::string_view text, uint32_t size, char* error)
{
    return XML_DOM_BuildTreeByMem(bytesOf(text), static_cast<uint32_t>(text.size()), size, error);
}

TEST(BuildTree, MakesTheTree)
{
    struct Case {
        const char* why;
        const char* document;
        const char* tree;
    };
    // clang-format off
    constexpr Case kCases[] = {
        {"no blank text",             "<a>  <b/>  </a>",               "<a><b/></a>"},
        {"an empty CDATA node",       "<a><![CDATA[]]></a>",           "<a><![CDATA[]]></a>"},
        {"prefixes",                  "<p:a xmlns:p='u' p:x='1'/>",    "<p:a xmlns:p=\"u\" p:x=\"1\"/>"},
        {"no comments, no instructions", "<!--c--><a><?p d?>x<!--c-->y</a>", "<a>xy</a>"},
        {"unprefixed stays unbound",  "<a xmlns='u'><b/></a>",         "<a xmlns=\"u\"><b/></a>"},
    };
    // clang-format on
    for (const Case& row : kCases) {
        XML_DOM_Node* root = treeOf(row.document);
        EXPECT_EQ(written(root), row.tree) << row.why;
        XML_DOM_DelNode(root);
    }
    XML_DOM_Node* root = treeOf("<a>x<!--c-->y</a>");
    XML_DOM_Node* first = XML_DOM_GetFirstChild(root);
    EXPECT_STREQ(XML_DOM_GetNodeValue(first), "x") << "a comment divides text";
    EXPECT_STREQ(XML_DOM_GetNodeValue(XML_DOM_GetNextSibling(first)), "y");
    XML_DOM_DelNode(root);
}

TEST(BuildTree, TextIsHeldInGb18030)
{
    XML_DOM_Node* root =
        treeOf("<\xE9\x85\x8D \xE5\x80\xBC='\xE4\xB8\xAD' "
               "xmlns:\xE5\x80\xBC='\xE6\x96\x87'>\xF0\x9F\x98\x80</\xE9\x85\x8D>");
    EXPECT_STREQ(XML_DOM_GetNodeName(root), "\xC5\xE4");
    EXPECT_STREQ(XML_DOM_GetNodeAttrValByName(root, "\xD6\xB5"), "\xD6\xD0");
    EXPECT_STREQ(XML_DOM_GetNodeValue(XML_DOM_GetFirstChild(root)), "\x94\x39\xFC\x36");
    EXPECT_EQ(XML_DOM_SetNodeNameSpace(root, "\xD6\xB5"), XML_RET_OK);
    XML_DOM_DelNode(root);
}

TEST(BuildTree, Messages)
{
    char error[100];
    std::strcpy(error, "unchanged");
    EXPECT_EQ(XML_DOM_BuildTreeByMem(nullptr, 4, sizeof error, error), nullptr);
    EXPECT_STREQ(error, "Invalid parameter.");
    EXPECT_EQ(build("", sizeof error, error), nullptr);
    EXPECT_STREQ(error, "Invalid parameter.");
    EXPECT_EQ(XML_DOM_BuildTreeByMemList(nullptr, sizeof error, error), nullptr);
    EXPECT_STREQ(error, "Invalid parameter.");
    EXPECT_EQ(XML_DOM_BuildTreeByFile(nullptr, sizeof error, error), nullptr);
    EXPECT_STREQ(error, "Invalid parameter.");
    EXPECT_EQ(XML_DOM_BuildTreeByFile("/nonexistent/file", sizeof error, error), nullptr);
    EXPECT_STREQ(error, "") << "no report, but a terminated text";
    EXPECT_EQ(build("<a>", 10, error), nullptr);
    EXPECT_STREQ(error, "The Line ") << "nine bytes and the terminator";
    error[0] = 'x';
    EXPECT_EQ(build("<a>", 1, error), nullptr);
    EXPECT_STREQ(error, "");
    error[0] = 'x';
    EXPECT_EQ(build("<a>", 0, error), nullptr);
    EXPECT_EQ(error[0], 'x') << "a size of 0 writes nothing";
    EXPECT_EQ(XML_DOM_BuildTreeByMem(nullptr, 0, 0, error), nullptr);
    EXPECT_EQ(error[0], 'x');
    EXPECT_EQ(build("<a>", 100, nullptr), nullptr);
    EXPECT_EQ(XML_DOM_BuildTreeByMem(nullptr, 0, 100, nullptr), nullptr);
}

TEST(BuildTree, AReportThatIsNoTextSaysSo)
{
    char error[200];
    EXPECT_EQ(build("<a>\xFF</a>", sizeof error, error), nullptr);
    EXPECT_STREQ(error, "failed to convert encoding.");
    // Cut inside a character the report is no text any more.
    EXPECT_EQ(build("<a>\xE4\xB8\xAD</b>", 27, error), nullptr);
    EXPECT_STREQ(error, "failed to convert encoding");
}

TEST(BuildTree, BytesThatDecodeButAreNoUtf8GiveCodeOne)
{
    for (const char* document :
         {"<a>\xC1\x81</a>", "<\xC1\x81/>", "<a \xC1\x81='1'/>", "<a x='\xC1\x81'/>",
          "<a xmlns='\xC1\x81'/>", "<a xmlns:\xC1\x81='u'/>", "<a><![CDATA[\xC1\x81]]></a>",
          "<a\xF8\x90\x80\x80/>", "<a>\xF8\x90\x80\x80</a>"}) {
        char error[200];
        EXPECT_EQ(build(document, sizeof error, error), nullptr) << document;
        EXPECT_STREQ(error, "failed to convert encoding.");
    }
}

TEST(BuildTree, LeavesNothingBehindWhicheverAllocationFails)
{
    std::string document = "<?xml version='1.0' encoding='GBK'?><r xmlns:p='u'>";
    for (int i = 0; i < 30; ++i) {
        document += "<p:e" + std::to_string(i) + " xmlns:q" + std::to_string(i) + "='v'";
        for (int k = 0; k < 20; ++k) document += " a" + std::to_string(k) + "='&lt;'";
        document += ">" + std::string(i == 5 ? 9000 : 5, 't') + "\xD6\xD0&amp;</p:e" +
                    std::to_string(i) + ">";
    }
    document += "</r>";
    const ChunkList chunks{document, 500};
    const TempFile file{document};
    for (int source = 0; source < 3; ++source) {
        std::size_t failures = 0;
        for (std::size_t allowed = 0;; ++allowed, ++failures) {
            const FailingHeap heap{allowed};
            char error[300] = "";
            XML_DOM_Node* root =
                source == 0   ? build(document, sizeof error, error)
                : source == 1 ? XML_DOM_BuildTreeByMemList(chunks.list(), sizeof error, error)
                              : XML_DOM_BuildTreeByFile(file.path(), sizeof error, error);
            const bool refused = FailingHeap::refused();
            if (!root) {
                EXPECT_TRUE(refused);
            }
            XML_DOM_DelNode(root);
            ASSERT_EQ(FailingHeap::liveBlocks(), 0) << source << " with " << allowed;
            if (!refused) break;
        }
        EXPECT_GT(failures, 10u);
    }
}

TEST(BuildTree, OneFailingAllocationIsReported)
{
    std::string document = "<a";
    for (char name = 'a'; name <= 'z'; ++name) document += std::string{" "} + name + "='&lt;'";
    document += ">" + std::string(5000, 'x') + "&amp;" + std::string(5000, 'x') + "</a>";
    std::size_t memory = 0;
    std::size_t internal = 0;
    for (std::size_t at = 0;; ++at) {
        char error[300] = "";
        const FailingHeap heap{at, 1};
        XML_DOM_Node* root = build(document, sizeof error, error);
        const bool refused = FailingHeap::refused();
        XML_DOM_DelNode(root);
        if (!refused) break;
        if (root) continue;  // a block that only would have saved work
        memory += std::strstr(error, "memory allocation failed.") != nullptr;
        internal += std::strstr(error, "internal error.") != nullptr;
    }
    EXPECT_GT(memory, 0u);
    EXPECT_GT(internal, 0u);
}

// A caller's own handler around the exported callbacks: it leaves elements out.
struct Filter {
    XML_SAX_Builder builder;
    int skipping;
};

void filterStart(XML_Parser* p, const char* local, const char* prefix, const char* name,
                 uint32_t nd, const char** d, uint32_t na, uint32_t df, const char** a)
{
    auto* filter = static_cast<Filter*>(p->handler->userData);
    if (filter->skipping != 0 || std::strcmp(local, "skip") == 0) ++filter->skipping;
    else XML_SAX_StartElementNs(p, local, prefix, name, nd, d, na, df, a);
}

void filterEnd(XML_Parser* p, const char* local, const char* prefix, const char* name)
{
    auto* filter = static_cast<Filter*>(p->handler->userData);
    if (filter->skipping != 0) --filter->skipping;
    else XML_SAX_EndElementNs(p, local, prefix, name);
}

void filterText(XML_Parser* p, const char* text, uint32_t length)
{
    if (static_cast<Filter*>(p->handler->userData)->skipping == 0)
        XML_SAX_Characters(p, text, length);
}

TEST(SaxCallbacks, BuildATreeForACallersOwnHandler)
{
    Filter filter{};
    filter.builder.nameConverter = XML_IO_MemOutStreamCreate(0, 9);
    filter.builder.valueConverter = XML_IO_MemOutStreamCreate(0, 9);
    XML_SAX_Handler handler{};
    handler.startElementNs = filterStart;
    handler.endElementNs = filterEnd;
    handler.characters = filterText;
    handler.cdata = XML_SAX_CData;
    handler.endDocument = XML_SAX_EndDocument;
    handler.error = XML_SAX_Error;
    handler.userData = &filter;
    const std::string good =
        "<r xmlns:p='u'><a p:x='\xE4\xB8\xAD'>t</a><skip><b>x</b></skip><![CDATA[]]><p:c/></r>";
    EXPECT_EQ(XML_Parser_ByMem(bytesOf(good), static_cast<uint32_t>(good.size()), &handler),
              XML_RET_OK);
    EXPECT_EQ(written(filter.builder.root),
              "<r xmlns:p=\"u\"><a p:x=\"\xE4\xB8\xAD\">t</a><![CDATA[]]><p:c/></r>");
    XML_DOM_DelNode(filter.builder.root);

    char error[100];
    XML_IO_OutStream* names = filter.builder.nameConverter;
    XML_IO_OutStream* values = filter.builder.valueConverter;
    filter.builder = {nullptr, nullptr, names, values, error, sizeof error};
    EXPECT_EQ(XML_Parser_ByMem(bytesOf("<r><a></r>"), 10, &handler), XML_RET_FAIL);
    EXPECT_EQ(filter.builder.root, nullptr) << "deleted with the report";
    EXPECT_STREQ(error, "The Line 1 Column 9 :\"<r><a></r>\", tag name mismatch.");
    XML_IO_OutStreamDestroy(names);
    XML_IO_OutStreamDestroy(values);
}

TEST(SaxCallbacks, ReportTheirOwnFailures)
{
    XML_SAX_Builder builder{};
    builder.nameConverter = XML_IO_MemOutStreamCreate(0, 9);
    builder.valueConverter = XML_IO_MemOutStreamCreate(0, 9);
    XML_SAX_Handler handler{};
    handler.userData = &builder;
    XML_Parser parser{};
    parser.handler = &handler;
    parser.version = "1.0";
    const auto failed = [&parser] {
        const bool was = parser.error == XML_ERROR_INTERNAL;
        parser.error = 0;
        return was;
    };
    XML_SAX_Characters(&parser, "x", 1);
    EXPECT_TRUE(failed()) << "no element to put it into";
    XML_SAX_Characters(&parser, "\0x", 2);
    EXPECT_FALSE(failed()) << "a zero byte in front is ignored";
    XML_SAX_EndDocument(&parser);
    EXPECT_TRUE(failed()) << "no document";
    XML_SAX_StartElementNs(&parser, "bad\xFF", nullptr, nullptr, 0, nullptr, 0, 0, nullptr);
    EXPECT_TRUE(failed());
    XML_SAX_StartElementNs(&parser, "a", "p", nullptr, 0, nullptr, 0, 0, nullptr);
    EXPECT_TRUE(failed()) << "an unbound prefix";
    const char* twice[] = {"p", "u", "p", "v"};
    XML_SAX_StartElementNs(&parser, "b", nullptr, nullptr, 2, twice, 0, 0, nullptr);
    EXPECT_TRUE(failed()) << "declared twice";
    const char value[] = "v";
    const char* unbound[] = {"x", "q", nullptr, value, value + 1};
    XML_SAX_StartElementNs(&parser, "c", nullptr, nullptr, 0, nullptr, 1, 0, unbound);
    EXPECT_TRUE(failed()) << "an attribute's unbound prefix";
    const char* nameless[] = {nullptr, nullptr, nullptr, value, value + 1};
    XML_SAX_StartElementNs(&parser, "d", nullptr, nullptr, 0, nullptr, 1, 0, nameless);
    EXPECT_TRUE(failed());
    const char* badPrefix[] = {"p\xFF", "u"};
    XML_SAX_StartElementNs(&parser, "e", nullptr, nullptr, 1, badPrefix, 0, 0, nullptr);
    EXPECT_TRUE(failed()) << "a prefix that cannot be converted";
    const char* badUse[] = {"x", "q\xFF", nullptr, value, value + 1};
    XML_SAX_StartElementNs(&parser, "f", nullptr, nullptr, 0, nullptr, 1, 0, badUse);
    EXPECT_TRUE(failed()) << "nor one that is used";
    XML_DOM_Node* text = XML_DOM_CreateTextNode("t");
    builder.current = text;
    XML_SAX_Characters(&parser, "x", 1);
    EXPECT_TRUE(failed()) << "nothing lies in a text";
    XML_DOM_DelNode(text);
    builder.current = nullptr;
    XML_SAX_StartElementNs(&parser, "g", nullptr, nullptr, 0, nullptr, 0, 0, nullptr);
    EXPECT_TRUE(failed()) << "a second root";
    parser.encoding = 13;
    XML_SAX_EndDocument(&parser);
    EXPECT_TRUE(failed()) << "no such encoding";
    parser.encoding = 3;
    parser.version = nullptr;
    XML_SAX_EndDocument(&parser);
    EXPECT_TRUE(failed()) << "no version";
    parser.version = "1.0";
    XML_SAX_EndDocument(&parser);
    EXPECT_FALSE(failed());
    EXPECT_EQ(XML_DOM_GetEncoding(builder.root), 3u);
    XML_SAX_Error(&parser, "%s", "gone");
    EXPECT_EQ(builder.root, nullptr);
    XML_IO_OutStreamDestroy(builder.nameConverter);
    XML_IO_OutStreamDestroy(builder.valueConverter);
}

TEST(BuildTree, WithoutAnyMemoryItReportsThat)
{
    char error[100] = "old";
    const FailingHeap heap{0};
    EXPECT_EQ(build("<a/>", sizeof error, error), nullptr);
    EXPECT_STREQ(error, "The Line 1 Column 3 :\"<a/>\", internal error.");
}

TEST(BuildTree, WithoutMemoryForAStreamTheTextIsEmpty)
{
    const ChunkList chunks{"<a/>", 2};
    for (std::size_t allowed = 0; allowed < 2; ++allowed) {
        char error[100] = "old";
        const FailingHeap heap{allowed};
        EXPECT_EQ(XML_DOM_BuildTreeByMemList(chunks.list(), sizeof error, error), nullptr);
        EXPECT_STREQ(error, "");
    }
}

// A declaration so long that what it says is not seen before it is read.
TEST(BuildTree, ChunksWhoseEncodingStandsFarBehind)
{
    const std::string document =
        "<?xml version='1.0'" + std::string(300, ' ') + "encoding='GBK'?><a>\xD6\xD0</a>";
    const ChunkList chunks{document, 100};
    XML_DOM_Node* root = XML_DOM_BuildTreeByMemList(chunks.list(), 0, nullptr);
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(XML_DOM_GetEncoding(root), XML_Encoding{XML_ENCODING_GBK});
    EXPECT_STREQ(XML_DOM_GetFirstTextChildValue(root), "\xD6\xD0");
    XML_DOM_DelNode(root);
}

// A root that leaves no room for its document's record in the first slab.
TEST(BuildTree, LeavesNothingBehindWhereTheFirstSlabEnds)
{
    for (std::size_t size = 800; size < 5000; size += size < 960 ? 8 : 1011) {
        const std::string document = "<" + std::string(size, 'n') + "/>";
        const ChunkList chunks{document, 400};
        for (std::size_t allowed = 0;; ++allowed) {
            const FailingHeap heap{allowed};
            XML_DOM_Node* root = XML_DOM_BuildTreeByMemList(chunks.list(), 0, nullptr);
            const bool refused = FailingHeap::refused();
            XML_DOM_DelNode(root);
            ASSERT_EQ(FailingHeap::liveBlocks(), 0) << size << " with " << allowed;
            if (!refused) break;
        }
    }
}

// A file too large to be put together is read through the window: little of it, for an early error.
TEST(BuildTree, AnEarlyErrorInAVeryLargeFileCostsLittle)
{
    const TempFile file{"!"};
    ASSERT_EQ(truncate(file.path(), off_t{1} << 30), 0);
    heapResetPeak();
    const std::size_t before = heapPeakBytes();
    char error[200] = "";
    EXPECT_EQ(XML_DOM_BuildTreeByFile(file.path(), sizeof error, error), nullptr);
    EXPECT_EQ(std::string{error}.substr(0, 22), "The Line 1 Column 1 :\"");
    EXPECT_LT(heapPeakBytes() - before, 100000u);
}

}  // namespace
