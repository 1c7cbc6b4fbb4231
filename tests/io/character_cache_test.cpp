// The cache of characters against the converter that it asks.
#include "io/character_cache.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/random.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

namespace {

using namespace netxml;

std::string utf8Of(std::uint32_t code)
{
    if (code < 0x800)
        return {static_cast<char>(0xC0 | code >> 6), static_cast<char>(0x80 | (code & 0x3F))};
    return {static_cast<char>(0xE0 | code >> 12), static_cast<char>(0x80 | (code >> 6 & 0x3F)),
            static_cast<char>(0x80 | (code & 0x3F))};
}

// What iconv makes of one character; empty if it refuses it.
std::string converted(iconv_t converter, const std::string& text)
{
    std::uint8_t bytes[16];
    ConvertInput in{bytesOf(text), bytesOf(text) + text.size()};
    ConvertOutput out{bytes, bytes + sizeof bytes};
    if (convertThrough(converter, in, out) != ConvertEnd::Done) return {};
    return {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(out.cursor - bytes)};
}

TEST(CharacterCache, SaysWhatTheConverterSaysOfEveryCharacterOfTwoOrThreeBytes)
{
    const ScopedConverter converter{"GB18030", "UTF-8"};
    ASSERT_TRUE(converter);
    CharacterCache cache;
    for (std::uint32_t code = 0x80; code < 0x10000; ++code) {
        if (code >= 0xD800 && code < 0xE000) continue;  // surrogates are no characters
        const std::string text = utf8Of(code);
        const std::string expected = converted(converter.get(), text);
        char form[6];
        const std::uint8_t* p = bytesOf(text);
        const char* end = cache.convert(converter.get(), p, p + text.size(), form);
        ASSERT_EQ(std::string(form, static_cast<std::size_t>(end - form)), expected)
            << std::hex << code;
        ASSERT_EQ(static_cast<std::size_t>(p - bytesOf(text)), expected.empty() ? 0 : text.size())
            << std::hex << code;
    }
}

TEST(CharacterCache, WithoutMemoryItConvertsNothing)
{
    const ScopedConverter converter{"GB18030", "UTF-8"};
    const std::string text = utf8Of(0x4E2D);
    for (std::size_t allowed = 0; allowed < 2; ++allowed) {
        const FailingHeap heap{allowed};
        CharacterCache cache;
        char form[6];
        const std::uint8_t* p = bytesOf(text);
        EXPECT_EQ(cache.convert(converter.get(), p, p + text.size(), form), form);
        EXPECT_EQ(p, bytesOf(text));
    }
    EXPECT_EQ(FailingHeap::liveBlocks(), 0);
}

// Long enough for a tree to go over from the converter to the cache.
TEST(CharacterCache, TreesHoldTheSameTextBeforeAndBehindTheChange)
{
    Random random{7};
    for (int round = 0; round < 20; ++round) {
        std::string document = "<a>";
        std::string expected;
        for (int i = 0; i < 200; ++i) {
            std::string text = "x";
            for (std::size_t left = random.below(200); left != 0; --left) {
                if (random.percent(80))
                    text += utf8Of(0x4E00 + static_cast<uint32_t>(random.below(20000)));
                else
                    text += random.one<const char*>({"a", "\xC2\xB7", "\xD0\xAF", "\xC3\xBC",
                                                     "\xE2\x82\xAC", "\xF0\x9F\x98\x80",
                                                     "\xEF\xBC\x8C", "\xE1\x80\x80", "0"});
            }
            document += "<b c='" + text + "'>" + text + "</b>";
        }
        document += "</a>";
        XML_DOM_Node* root = XML_DOM_BuildTreeByMem(
            bytesOf(document), static_cast<uint32_t>(document.size()), 0, nullptr);
        ASSERT_NE(root, nullptr);
        const ScopedConverter converter{"GB18030", "UTF-8"};
        std::size_t at = 0;
        for (XML_DOM_Node* b = XML_DOM_GetFirstChild(root); b; b = XML_DOM_GetNextSibling(b)) {
            at = document.find('>', document.find("<b c=", at)) + 1;
            const std::string text = document.substr(at, document.find('<', at) - at);
            std::string gb(text.size() * 4 + 1, '\0');
            ConvertInput in{bytesOf(text), bytesOf(text) + text.size()};
            auto* out = reinterpret_cast<std::uint8_t*>(gb.data());
            ConvertOutput to{out, out + gb.size()};
            ASSERT_EQ(convertThrough(converter.get(), in, to), ConvertEnd::Done);
            gb.resize(static_cast<std::size_t>(to.cursor - out));
            ASSERT_EQ(gb, XML_DOM_GetFirstTextChildValue(b));
            ASSERT_EQ(gb, XML_DOM_GetNodeAttrValByName(b, "c"));
        }
        XML_DOM_DelNode(root);
    }
}

}  // namespace
