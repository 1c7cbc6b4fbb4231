// Memory that runs out at any record: where the first pieces, which cost no heap, end depends on
// the sizes of names and values, so each kind of record is once the first that asks the heap.
#include "tests/support/callback_tree.hpp"
#include "tests/support/event_log.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <functional>

namespace {

constexpr char kInner[] =
    "<p:e xmlns:p='u' xmlns='v' a='1' p:b='x&lt;y' c='&#20013;' p:d='z'>t&amp;u<![CDATA[c]]>"
    "<!--n--><?i d?></p:e><q:f xmlns:q='w' q:g='1'>t</q:f><\xE4\xB8\xAD h='2' i='&gt;'/>";

// What a run made, as text; "" when it failed.
using Run = std::function<std::string()>;

std::string eventsOfChunks(const std::string& document, std::size_t size)
{
    const ChunkList chunks{document, size};
    EventLog log;
    return XML_Parser_ByMemList(chunks.list(), log.handler()) == XML_RET_OK ? log.text() : "";
}

std::string eventsOfABlock(const std::string& document)
{
    EventLog log;
    const auto size = static_cast<uint32_t>(document.size());
    return XML_Parser_ByMem(bytesOf(document), size, log.handler()) == XML_RET_OK ? log.text() : "";
}

// The tree as text, made where memory does not fail.
std::string textOf(XML_DOM_Node* root)
{
    if (!root) return "";
    const std::string text = written(root);
    XML_DOM_DelNode(root);
    return text;
}

// With one allocation failing after another, and all from there on: the run fails or comes to the
// same, and holds nothing.
void expectNoHarm(const std::string& what, const std::string& expected,
                  const std::function<XML_DOM_Node*()>& build, const Run& run)
{
    for (const std::size_t failures : {std::size_t{1}, FailingHeap::kForever}) {
        bool refused = true;
        for (std::size_t allowed = 0; refused; ++allowed) {
            ASSERT_LT(allowed, 500u) << what;
            const long before = heapLiveBlocks();
            std::string made;
            XML_DOM_Node* root = nullptr;
            {
                const FailingHeap heap{allowed, failures};
                if (run) made = run();
                else root = build();
                refused = FailingHeap::refused();
            }
            if (build) made = textOf(root);
            if (!refused || !made.empty()) {
                ASSERT_EQ(made, expected) << what << ", after " << allowed;
            }
            ASSERT_EQ(heapLiveBlocks(), before) << what << ", after " << allowed;
        }
    }
}

void expectNoHarmTo(const std::string& document)
{
    const auto size = static_cast<uint32_t>(document.size());
    const ChunkList chunks{document, 61};
    const auto ofABlock = [&] {
        return XML_DOM_BuildTreeByMem(bytesOf(document), size, 0, nullptr);
    };
    const auto ofChunks = [&] { return XML_DOM_BuildTreeByMemList(chunks.list(), 0, nullptr); };
    const std::string tree = textOf(ofABlock());
    ASSERT_NE(tree, "");
    expectNoHarm("a tree of a block", tree, ofABlock, {});
    expectNoHarm("a tree of chunks", tree, ofChunks, {});
    expectNoHarm("events of a block", eventsOfABlock(document), {},
                 [&] { return eventsOfABlock(document); });
    expectNoHarm("events of chunks", eventsOfChunks(document, 61), {},
                 [&] { return eventsOfChunks(document, 61); });
}

TEST(MemoryBorder, BehindANameOfAnySize)
{
    for (std::size_t size = 1; size < 1100; size += 7) {
        const std::string name(size, 'n');
        expectNoHarmTo("<" + name + ">" + kInner + "</" + name + ">");
        if (HasFatalFailure()) return;
    }
}

TEST(MemoryBorder, BehindAValueOfAnySize)
{
    for (std::size_t size = 1; size < 1100; size += 7) {
        const std::string value(size, 'n');
        expectNoHarmTo("<r x='" + value + "' b='x&lt;y' xmlns:p='u' c='z' p:d='&#20013;'/>");
        expectNoHarmTo("<r x='" + value + "' y='1' xmlns:p='u' c='z' p:d='z'/>");
        if (HasFatalFailure()) return;
    }
}

TEST(MemoryBorder, AtAnyDepthAndWithAnyNumberOfAttributes)
{
    for (std::size_t depth = 28; depth < 36; ++depth) {
        std::string begin;
        std::string end;
        for (std::size_t i = 0; i < depth; ++i) {
            begin += "<e>";
            end += "</e>";
        }
        expectNoHarmTo(begin + kInner + end);
        expectNoHarmTo(begin + "<\xE4\xB8\xAD/>" + end);
        if (HasFatalFailure()) return;
    }
    std::string tag = "<r";
    for (int i = 0; i < 40; ++i) {
        const std::string number = std::to_string(i);
        tag += " a" + number + "='1' xmlns:p" + number + "='u" + number + "'";
        expectNoHarmTo(tag + "><p0:e p0:x='1'/></r>");
        expectNoHarmTo(tag + " z='&lt;'/>");
        if (HasFatalFailure()) return;
    }
}

// So much beyond ASCII that the converter is left for what is known of the characters.
TEST(MemoryBorder, WithMuchTextBeyondAscii)
{
    std::string text;
    for (int i = 0; i < 6000; ++i) text += "\xE4\xB8\xAD";
    std::string document = "<r><e>" + text + "</e>";
    for (int i = 0; i < 20; ++i)
        document += "<e>x\xE4\xB8\xAD\xC3\xA9y\xF0\x9F\x98\x80z\xE6\x96\x87</e>" +
                    ("<f a='\xE4\xB8\xAD'>" + text.substr(0, static_cast<std::size_t>(30 * i))) +
                    "</f>";
    expectNoHarmTo(document + "</r>");
}

// Strings that are blocks of their own, or fill a slab alone.
TEST(MemoryBorder, OfLongStrings)
{
    for (const std::size_t size : {900u, 3000u, 4000u, 5000u}) {
        const std::string text(size, 'x');
        expectNoHarmTo("<" + text + "/>");
        expectNoHarmTo("<r " + text + "='1' b='" + text + "\xE4\xB8\xAD'/>");
        expectNoHarmTo("<r xmlns:" + text + "='u' xmlns='" + text + "'/>");
        expectNoHarmTo("<\xE4\xB8\xAD xmlns:a='" + text + "' xmlns:b='" + text + "'/>");
        expectNoHarmTo("<r a='&lt;" + text + "' b='&#20013;" + text + "'/>");
        expectNoHarmTo("<r a='&#20013;'/>");
        expectNoHarmTo("<?i " + text + "?><r><?j " + text + text + "?><!--" + text + "--></r>");
        if (HasFatalFailure()) return;
    }
}

// The exported callbacks, which look prefixes up and keep them.
TEST(MemoryBorder, OfTheCallbacks)
{
    for (int count = 0; count < 24; ++count) {
        std::string tag = "<r";
        for (int i = 0; i < count; ++i) {
            const std::string number = std::to_string(i);
            tag += " xmlns:p" + number + "='u" + number + "' a" + number + "='1'";
        }
        std::string uses = "<e";
        for (int i = 0; i < count; ++i) uses += " p" + std::to_string(i) + ":x='1'";
        const std::string document = tag + ">" + uses + "/><f xmlns='d'>t</f></r>";
        const auto size = static_cast<uint32_t>(document.size());
        const auto build = [&]() -> XML_DOM_Node* {
            const CallbackTree tree;
            return XML_Parser_ByMem(bytesOf(document), size, tree.handler()) == XML_RET_OK
                       ? tree.root()
                       : nullptr;
        };
        const std::string expected = textOf(build());
        ASSERT_NE(expected, "");
        expectNoHarm("callbacks", expected, build, {});
        if (HasFatalFailure()) return;
    }
}

}  // namespace
