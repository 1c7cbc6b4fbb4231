// What most documents consist of takes a short way through the library. Its results are those of
// the long way, so nothing but the work shows that it is taken. Work is counted, never timed.
#include "tests/hostile/work_count.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

namespace {

std::string repeated(std::size_t n, std::string_view text)
{
    std::string all;
    for (std::size_t i = 0; i < n; ++i) all += text;
    return all;
}

std::uint64_t eventsOf(const std::string& text)
{
    uint32_t status = XML_RET_FAIL;
    const std::uint64_t work = workOf([&] {
        status = XML_Parser_ByMem(bytesOf(text), static_cast<uint32_t>(text.size()), nullptr);
    });
    EXPECT_EQ(status, XML_RET_OK);
    return work;
}

std::uint64_t treeWork(const std::string& text)
{
    XML_DOM_Node* tree = nullptr;
    const std::uint64_t work = workOf([&] {
        tree =
            XML_DOM_BuildTreeByMem(bytesOf(text), static_cast<uint32_t>(text.size()), 0, nullptr);
    });
    EXPECT_NE(tree, nullptr);
    XML_DOM_DelNode(tree);
    return work;
}

std::uint64_t chunksWork(const std::string& text)
{
    const ChunkList chunks{text, 4096};
    XML_DOM_Node* tree = nullptr;
    const std::uint64_t work =
        workOf([&] { tree = XML_DOM_BuildTreeByMemList(chunks.list(), 0, nullptr); });
    EXPECT_NE(tree, nullptr);
    XML_DOM_DelNode(tree);
    return work;
}

struct FastCase {
    const char* why;
    std::uint64_t (*work)(const std::string& text);
    const char* piece;
    const char* other;  // what is like it
    double most;        // of the other one's work
};

// clang-format off
constexpr FastCase kFast[] = {
    {"characters of three bytes, against those that follow the lead ED", eventsOf,
     "\xE4\xB8\xAD\xE4\xB8\xAD\xE4\xB8\xAD\xE4\xB8\xAD\xE4\xB8\xAD\xE4\xB8\xAD",
     "\xED\x9F\x80\xED\x9F\x80\xED\x9F\x80\xED\x9F\x80\xED\x9F\x80\xED\x9F\x80", 0.5},
    {"a bracket in a text, against none", treeWork, "<e>te]t</e>", "<e>text</e>", 1.5},
    {"two brackets in a text, against none", treeWork, "<e>t]]t</e>", "<e>text</e>", 1.8},
    {"a tag within ASCII, against one beyond", treeWork, "<nam a='1'>t</nam>",
     "<\xE4\xB8\xAD a='1'>t</\xE4\xB8\xAD>", 0.5},
};
// clang-format on

TEST(FastWay, IsTaken)
{
    for (const FastCase& row : kFast) {
        const std::uint64_t work = row.work("<r>" + repeated(2000, row.piece) + "</r>");
        const std::uint64_t other = row.work("<r>" + repeated(2000, row.other) + "</r>");
        EXPECT_LE(static_cast<double>(work), row.most * static_cast<double>(other))
            << row.why << ": " << work << " against " << other;
    }
}

// Chunks are put together and read at once where they are UTF-8; nothing else is read twice.
TEST(FastWay, ChunksThatAreNoUtf8AreReadOnce)
{
    const std::string text =
        "<?xml version='1.0' encoding='GBK'?><r>" + repeated(5000, "<e>text</e>") + "</r>";
    const std::uint64_t block = treeWork(text);
    const std::uint64_t chunks = chunksWork(text);
    EXPECT_LE(static_cast<double>(chunks), 1.5 * static_cast<double>(block))
        << chunks << " against " << block;
}

}  // namespace
