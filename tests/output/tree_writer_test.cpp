// Trees written in one go against the same trees written piece by piece.
#include "netxml/netxml.h"
#include "output/text_writer.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/random.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace {

std::string pieces(const XML_DOM_Node* node, uint32_t flags)
{
    std::string text;
    const auto add = [](void* context, const char* bytes, size_t size) -> uint32_t {
        static_cast<std::string*>(context)->append(bytes, size);
        return 0;
    };
    const uint32_t status = XML_DOM_OutPutTranslateStr(node, flags, add, &text);
    return status == XML_RET_OK ? text : "failed";
}

std::string atOnce(const XML_DOM_Node* node, uint32_t flags)
{
    char* text = nullptr;
    size_t length = 0;
    if (XML_DOM_TranslateStr(node, flags, &text, &length) != XML_RET_OK) return "failed";
    const std::string written{text, length};
    std::free(text);
    return written;
}

// Each allocation fails, once and from there on: the text comes out all the same, or nothing stays.
void failAnywhere(const XML_DOM_Node* root, const std::string& expected)
{
    for (const std::size_t failures : {std::size_t{1}, FailingHeap::kForever}) {
        for (std::size_t allowed = 0;; ++allowed) {
            const FailingHeap heap{allowed, failures};
            const std::string text = atOnce(root, 0);
            if (!FailingHeap::refused()) break;
            if (text == expected) continue;  // a block that only would have saved work
            ASSERT_EQ(text, "failed");
            ASSERT_EQ(FailingHeap::liveBlocks(), 0);
        }
    }
}

std::string someText(Random& random)
{
    std::string text;
    for (std::size_t left = random.below(12); left != 0; --left) {
        text += random.one<const char*>({"x", "a long piece of text ", "<", ">", "&", " ", "\n",
                                         "\t", "\r", "\xD6\xD0", "\xCE\xC4", "\x81\x30\x81\x30",
                                         "\"", "]]>", "\xE9\x45", "0"});
    }
    return text;
}

// Strings of parsed trees lie in slabs, those that are set later on the heap.
void edit(Random& random, XML_DOM_Node* element)
{
    if (random.percent(30)) XML_DOM_SetNodeName(element, random.one({"renamed", "r"}));
    if (random.percent(40)) XML_DOM_AddAttr(element, nullptr, "added", someText(random).c_str());
    if (random.percent(30))
        XML_DOM_AddNodeNameSpace(element, "n", ("u" + someText(random)).c_str());
    if (random.percent(30)) XML_DOM_AddAttr(element, "n", "bound", "1");
    if (random.percent(50)) {
        XML_DOM_Node* text = random.percent(70)
                                 ? XML_DOM_CreateTextNode(someText(random).c_str())
                                 : XML_DOM_CreateCDataNode(("c" + someText(random)).c_str());
        XML_DOM_AddChildNode(element, text);
    }
}

XML_DOM_Node* someTree(Random& random)
{
    const std::string document =
        "<a xmlns='urn:ietf:params:xml:ns:netconf:base:1.0' xmlns:p='u'><p:b c='1 &amp; 2'>text"
        "</p:b><d/><e>\xE4\xB8\xAD\xE6\x96\x87 and &lt;more&gt;</e><f><![CDATA[c]]></f></a>";
    XML_DOM_Node* root = XML_DOM_BuildTreeByMem(reinterpret_cast<const uint8_t*>(document.data()),
                                                static_cast<uint32_t>(document.size()), 0, nullptr);
    for (XML_DOM_Node* child = XML_DOM_GetFirstChild(root); child;
         child = XML_DOM_GetNextSibling(child))
        edit(random, child);
    edit(random, root);
    return root;
}

TEST(TreeWriter, WritesWhatThePiecesMake)
{
    Random random{11};
    for (std::size_t i = randomRounds(20000); i != 0; --i) {
        XML_DOM_Node* root = someTree(random);
        const XML_Encoding encoding = random.one<XML_Encoding>({0, 9, 8, 3, 1, 5});
        ASSERT_EQ(XML_DOM_SetEncoding(root, encoding), XML_RET_OK);
        for (const uint32_t flags : {0u, 1u, 0x80000000u})
            ASSERT_EQ(atOnce(root, flags), pieces(root, flags)) << "encoding " << encoding;
        const XML_DOM_Node* child = XML_DOM_GetFirstChild(root);
        ASSERT_EQ(atOnce(child, 0), pieces(child, 0));
        XML_DOM_DelNode(root);
    }
}

XML_DOM_Node* rootWith(const std::vector<std::string>& texts)
{
    XML_DOM_Node* root = XML_DOM_CreateElementNode("a");
    EXPECT_EQ(XML_DOM_SetRoot(root), XML_RET_OK);
    for (const std::string& text : texts)
        XML_DOM_AddChildNode(root, XML_DOM_CreateTextNode(text.c_str()));
    return root;
}

// What a stream makes of the pieces one after the other.
std::string byStream(const std::vector<std::string>& texts)
{
    XML_IO_OutStream* stream = XML_IO_MemOutStreamCreate(XML_ENCODING_GB18030, XML_ENCODING_UTF_8);
    std::vector<std::string> all{"<", "a", ">"};
    all.insert(all.end(), texts.begin(), texts.end());
    all.insert(all.end(), {"</", "a", ">", std::string(1, '\0')});
    uint32_t sum = 0;
    for (const std::string& piece : all)
        sum |= XML_IO_OutStreamAppend(stream, piece.data(), piece.size());
    size_t length = 0;
    const char* text = XML_IO_MemOutStreamGetBuf(stream, &length);
    const std::string written = sum == 0 ? std::string{text, length - 1} : "failed";
    XML_IO_OutStreamDestroy(stream);
    return written;
}

// A character that is cut off in one string is completed by what follows it, or fails there.
TEST(TreeWriter, CutCharactersGoTheWayOfTheStream)
{
    Random random{12};
    std::size_t failed = 0;
    const std::size_t rounds = randomRounds(5000);
    for (std::size_t i = rounds; i != 0; --i) {
        std::vector<std::string> texts;
        for (int n = 0; n < 3; ++n) {
            texts.push_back(random.one<const char*>({"t", "\x30", "\x30\x81\x30", "\xD0", "text"}));
            for (std::size_t left = random.below(4); left != 0; --left)
                texts.back() += random.one<const char*>({"\xD6\xD0", "x", "\x81\x30\x81\x30"});
            if (random.percent(40))
                texts.back() += random.one<const char*>({"\x81", "\x81\x30", "\xFF", "\xD6"});
        }
        XML_DOM_Node* root = rootWith(texts);
        const std::string expected = byStream(texts);
        failed += expected == "failed";
        ASSERT_EQ(atOnce(root, XML_DOM_WRITE_NO_DECLARATION), expected);
        XML_DOM_DelNode(root);
    }
    EXPECT_GT(failed, 0u);
    EXPECT_LT(failed, rounds);
}

// Long enough for the writer to go over from the converter to its cache.
TEST(TreeWriter, WritesMuchTextBeyondAsciiAsThePiecesDo)
{
    Random random{14};
    for (std::size_t round = randomRounds(8); round != 0; --round) {
        std::vector<std::string> texts;
        for (int i = 0; i < 300; ++i) {
            std::string text = "t";
            for (std::size_t left = random.below(150); left != 0; --left) {
                if (random.percent(70)) {
                    text += static_cast<char>(random.between(0xB0, 0xF7));
                    text += static_cast<char>(random.between(0xA1, 0xFE));
                } else {
                    text +=
                        random.one<const char*>({"x", " ", "<", "&", "\x81\x30\x84\x36", "\xA1\xA4",
                                                 "\x81\x40", "\xFE\xFE", "\x90\x30\x81\x30", "0"});
                }
            }
            texts.push_back(text);
        }
        XML_DOM_Node* root = rootWith(texts);
        const std::string inPieces = pieces(root, 0);
        const std::string written = atOnce(root, 0);
        ASSERT_EQ(written == inPieces, true) << round;
        XML_DOM_DelNode(root);
    }
}

// Strings that may not be read in whole blocks end where memory does.
TEST(TreeWriter, ReadsNoByteBehindAString)
{
    for (std::size_t size = 0; size < 70; ++size) {
        const std::string text = std::string(size, 'x');
        const GuardedBytes block{std::string_view{text.c_str(), size + 1}};
        const auto* string = reinterpret_cast<const char*>(block.data());
        XML_IO_OutStream* stream =
            XML_IO_MemOutStreamCreate(XML_ENCODING_GB18030, XML_ENCODING_UTF_8);
        {
            netxml::TextWriter writer{*stream};
            writer.string(string, false);
            writer.escaped(string, false);
            writer.finish();
            EXPECT_TRUE(writer.ok());
        }
        size_t length = 0;
        const char* written = XML_IO_MemOutStreamGetBuf(stream, &length);
        EXPECT_EQ((written ? std::string{written, length} : std::string{}), text + text);
        XML_IO_OutStreamDestroy(stream);
    }
}

// Beyond what the converter is asked for, with strings of any length at the end of the room.
TEST(TreeWriter, MuchTextMayRunOutOfMemoryAnywhere)
{
    std::string much;
    for (int i = 0; i < 20000; ++i) much += "\xD6\xD0";
    XML_DOM_Node* root = rootWith({much, much, much});
    for (std::size_t size = 0; size < 1200; size += 37) {
        const std::string piece = std::string(size, 'x') + much.substr(0, size);
        XML_DOM_Node* element = XML_DOM_CreateElementNode("e");
        XML_DOM_AddAttr(element, nullptr, "a", (" " + piece + "<>&").c_str());
        XML_DOM_AddChildNode(element, XML_DOM_CreateCDataNode(("c" + piece).c_str()));
        XML_DOM_AddChildNode(element, XML_DOM_CreateTextNode((piece + "\n").c_str()));
        XML_DOM_AddChildNode(root, element);
    }
    const std::string expected = atOnce(root, 0);
    EXPECT_EQ(expected, pieces(root, 0));
    failAnywhere(root, expected);
    XML_DOM_DelNode(root);
    for (const char* bad : {"cut\xD6", "x\x80y", "x\xFFy"}) {
        root = rootWith({much, bad});
        EXPECT_EQ(pieces(root, 0), "failed") << bad;
        EXPECT_EQ(atOnce(root, 0), "failed") << bad;
        XML_DOM_DelNode(root);
    }
}

// The room ends in front of any piece of markup, and the heap gives no more.
TEST(TreeWriter, MemoryMayRunOutAtAnyPiece)
{
    for (std::size_t size = 500; size < 1100; ++size) {
        XML_DOM_Node* root = rootWith({std::string(size, 'x')});
        XML_DOM_AddNodeNameSpace(root, nullptr, "d");
        XML_DOM_AddNodeNameSpace(root, "p", "u");
        XML_DOM_AddAttr(root, nullptr, "a", "1");
        XML_DOM_AddAttr(root, "p", "b", " < >&\n");
        XML_DOM_Node* child = XML_DOM_CreateElementNode("e");
        XML_DOM_AddChildNode(root, child);
        XML_DOM_SetNodeNameSpace(child, "p");
        XML_DOM_AddChildNode(child, XML_DOM_CreateElementNode("f"));
        XML_DOM_AddChildNode(child, XML_DOM_CreateCDataNode("c\xD6\xD0"));
        XML_DOM_AddChildNode(root, XML_DOM_CreateTextNode("\t&\xD6\xD0\n"));
        const std::string expected = atOnce(root, 0);
        failAnywhere(root, expected);
        XML_DOM_DelNode(root);
    }
}

TEST(TreeWriter, WithoutMemoryItFailsAndLeavesNothing)
{
    Random random{13};
    XML_DOM_Node* root = someTree(random);
    const std::string expected = atOnce(root, 0);
    for (std::size_t allowed = 0;; ++allowed) {
        const FailingHeap heap{allowed};
        const std::string text = atOnce(root, 0);
        if (!FailingHeap::refused()) break;
        if (text == expected) continue;  // a block that only would have saved work
        EXPECT_EQ(text, "failed");
        EXPECT_EQ(FailingHeap::liveBlocks(), 0);
    }
    EXPECT_EQ(atOnce(root, 0), expected);
    XML_DOM_DelNode(root);
}

}  // namespace
