// Character classes and the two checks of names.
#include "parser/char_classes.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

namespace {

using namespace netxml;

// XML 1.0, productions Char, NameStartChar and NameChar without the colon, written out once more.
bool inAny(uint32_t c, std::initializer_list<std::pair<uint32_t, uint32_t>> ranges)
{
    for (const auto& [first, last] : ranges) {
        if (c >= first && c <= last) return true;
    }
    return false;
}

TEST(CharClasses, HoldForEveryCodePoint)
{
    for (uint32_t c = 0; c <= 0x120000; ++c) {
        const bool valid =
            inAny(c, {{9, 0xA}, {0xD, 0xD}, {0x20, 0xD7FF}, {0xE000, 0xFFFD}, {0x10000, 0x10FFFF}});
        const bool start = inAny(c, {{'A', 'Z'},
                                     {'_', '_'},
                                     {'a', 'z'},
                                     {0xC0, 0xD6},
                                     {0xD8, 0xF6},
                                     {0xF8, 0x2FF},
                                     {0x370, 0x37D},
                                     {0x37F, 0x1FFF},
                                     {0x200C, 0x200D},
                                     {0x2070, 0x218F},
                                     {0x2C00, 0x2FEF},
                                     {0x3001, 0xD7FF},
                                     {0xF900, 0xFDCF},
                                     {0xFDF0, 0xFFFD},
                                     {0x10000, 0xEFFFF}});
        const bool name =
            start ||
            inAny(c, {{'-', '.'}, {'0', '9'}, {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}});
        ASSERT_EQ(isValid(c), valid) << c;
        ASSERT_EQ(isNameStart(c), start) << c;
        ASSERT_EQ(isName(c), name) << c;
        if (c < 256) {
            ASSERT_EQ((kAsciiClasses[c] & kClassName) != 0, c < 128 && name) << c;
            ASSERT_EQ((kAsciiClasses[c] & kClassBlank) != 0,
                      c == 32 || c == 9 || c == 13 || c == 10)
                << c;
        }
    }
    for (const uint32_t none : {kUndecodable})
        EXPECT_FALSE(isValid(none) || isNameStart(none) || isName(none));
}

TEST(CharClasses, EncodingAndDecodingAgree)
{
    for (uint32_t c = 1; c <= 0x10FFFF; ++c) {
        if (!isValid(c)) continue;
        uint8_t bytes[4];
        const std::size_t size = encodeCharacter(c, bytes);
        ASSERT_EQ(size, stepOf(bytes[0]));
        ASSERT_EQ(decodeCharacter(bytes, bytes + size), c);
        for (std::size_t cut = 1; cut < size; ++cut)
            ASSERT_EQ(decodeCharacter(bytes, bytes + cut), kUndecodable);
    }
}

// Every lead with every second byte, whole and cut short, against the rule.
TEST(CharClasses, EveryLeadWithEverySecondByte)
{
    for (uint32_t lead = 0x80; lead < 0x100; ++lead) {
        for (uint32_t second = 0; second < 0x100; ++second) {
            const uint8_t bytes[4] = {static_cast<uint8_t>(lead), static_cast<uint8_t>(second),
                                      0x80, 0x80};
            const std::size_t size = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
            bool decodable = lead >= 0xC0 && second >= 0x80 && second <= 0xBF;
            if (lead == 0xE0 && second < 0xA0) decodable = false;
            if (lead == 0xED && second > 0x9F) decodable = false;
            if (lead == 0xF0 && second < 0x90) decodable = false;
            if (lead == 0xF4 && second > 0x8F) decodable = false;
            uint32_t code = lead & (size == 2 ? 0x1F : size == 3 ? 0x0F : 0x07);
            code = (code << 6) | (second & 0x3F);
            for (std::size_t i = 2; i < size; ++i) code <<= 6;
            ASSERT_EQ(decodeCharacter(bytes, bytes + 4), decodable ? code : kUndecodable)
                << lead << " " << second;
            ASSERT_EQ(decodeCharacter(bytes, bytes + size - 1), kUndecodable);
        }
    }
}

TEST(CheckQName, Table)
{
    struct Case {
        const char* why;
        const char* name;
        bool valid;
    };
    // clang-format off
    constexpr Case kCases[] = {
        {"letters",                     "abc",          true},
        {"an underscore in front",      "_x",           true},
        {"a hyphen inside",             "a-1",          true},
        {"a full stop inside",          "a.b",          true},
        {"a digit in front",            "1a",           false},
        {"a hyphen in front",           "-a",           false},
        {"a colon (Kept: never)",       "a:b",          false},
        {"a colon alone",               ":",            false},
        {"empty",                       "",             false},
        {"NULL",                        nullptr,        false},
        {"a blank",                     "a b",          false},
        {"Chinese",                     "\xC5\xE4\xD6\xC3", true},
        {"Chinese and a blank",         "\xC5\xE4 ",    false},
        {"Chinese and a colon",         "\xC5\xE4:a",   false},
        {"a digit before Chinese",      "1\xC5\xE4",    false},
        {"U+00B7 inside",               "a\xA1\xA4",    true},
        {"U+00B7 in front",             "\xA1\xA4" "a", false},
        {"beyond the basic plane",      "\x90\x30\x81\x30", true},
        {"an emoji is a name character", "\x94\x39\xFC\x36", true},
        {"ends inside a character",     "ab\xC5",       false},
        {"a lead byte alone",           "\x81",         false},
        {"ends inside four bytes",      "a\x90\x30\x81", false},
        {"no GB18030",                  "a\xFF" "b",    false},
    };
    // clang-format on
    for (const Case& row : kCases)
        EXPECT_EQ(XML_CheckQName(row.name) == XML_RET_OK, row.valid) << row.why;
    EXPECT_EQ(XML_CheckQName("1"), XML_RET_FAIL);
    const FailingHeap heap{0};
    EXPECT_EQ(XML_CheckQName("abc"), XML_RET_OK) << "needs no memory";
    EXPECT_EQ(XML_CheckQName("\xC5\xE4"), XML_RET_FAIL);
    EXPECT_EQ(FailingHeap::liveBlocks(), 0);
}

TEST(CheckNamespace, Table)
{
    constexpr char kXml[] = "http://www.w3.org/XML/1998/namespace";
    constexpr char kXmlns[] = "http://www.w3.org/2000/xmlns/";
    struct Case {
        const char* why;
        const char* prefix;
        const char* name;
        bool accepted;
    };
    // clang-format off
    const Case kCases[] = {
        {"a prefix",                     "p",     "u",    true},
        {"the default",                  nullptr, "u",    true},
        {"undeclaring the default",      nullptr, "",     true},
        {"undeclaring a prefix",         "p",     "",     false},
        {"an empty prefix counts as given", "",   "",     false},
        {"an empty prefix with a name",  "",      "u",    true},
        {"xml as it is",                 "xml",   kXml,   true},
        {"xml for another",              "xml",   "u",    false},
        {"the xml name for another",     "p",     kXml,   false},
        {"the xml name as the default",  nullptr, kXml,   false},
        {"xmlns",                        "xmlns", "u",    false},
        {"xmlns for its own name",       "xmlns", kXmlns, false},
        {"the xmlns name",               "p",     kXmlns, false},
        {"the xmlns name as the default", nullptr, kXmlns, false},
        {"no name",                      "p",     nullptr, false},
        {"nothing",                      nullptr, nullptr, false},
        {"longer than xml",              "xmlx",  "u",    true},
        {"XML in capitals",              "XML",   "u",    true},
    };
    // clang-format on
    for (const Case& row : kCases)
        EXPECT_EQ(XML_CheckNamespace(row.prefix, row.name),
                  row.accepted ? XML_RET_OK : XML_RET_FAIL)
            << row.why;
}

}  // namespace
