// Splitting a text at a separator, with its oddities.
#include "tests/schema/guarded_space.hpp"

#include "netxml/schema.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using Items = std::vector<std::string>;

// All items, each in a buffer that ends where memory ends.
Items split(const char* text, const char* separator, uint32_t size)
{
    GuardedSpace texts{1000};
    GuardedSpace separators;
    GuardedSpace buffers;
    char* buffer = buffers.room(size);
    Schema_SplitCtx context{};
    Items items;
    const char* item = Schema_GetFirstSplitStr(texts.text(text), separators.text(separator), size,
                                               buffer, &context);
    for (; item; item = Schema_GetNextSplitStr(&context)) {
        EXPECT_EQ(item, buffer);
        items.emplace_back(item);
        if (items.size() > 1000) break;
    }
    EXPECT_EQ(Schema_GetNextSplitStr(&context), nullptr) << "the end stays the end";
    EXPECT_TRUE(buffers.untouchedBefore(size));
    return items;
}

struct SplitCase {
    const char* why;
    const char* text;
    const char* separator;
    uint32_t size;
    Items items;
};

// clang-format off
const SplitCase kSplits[] = {
    // why                                         text        sep   size items
    {"an empty item between",                      "a,,b",     ",",  32, {"a", "", "b"}},
    {"one item",                                   "abc",      ",",  32, {"abc"}},
    {"two items",                                  "a,b",      ",",  32, {"a", "b"}},
    {"a separator first",                          ",a",       ",",  32, {"", "a"}},
    {"none behind the last separator (Kept)",      "a,",       ",",  32, {"a"}},
    {"a separator alone",                          ",",        ",",  32, {""}},
    {"two separators alone",                       ",,",       ",",  32, {"", ""}},
    {"no text",                                    "",         ",",  32, {}},
    {"a separator that is not there",              "a,b",      ";",  32, {"a,b"}},
    {"an item that fits exactly",                  "abc,d",    ",",  4,  {"abc", "d"}},
    {"one that is cut loses a byte (Kept)",        "abcd,e",   ",",  4,  {"abc", "", "e"}},
    {"the byte behind the cut (Kept)",             "abcdef,g", ",",  4,  {"abc", "ef", "g"}},
    {"cut twice (Kept)",                           "abcdefghi,j", ",", 4, {"abc", "efg", "i", "j"}},
    {"none is lost without a separator behind",    "abcdefg",  ",",  4,  {"abc", "def", "g"}},
    {"nor in the last item",                       "a,bcdef",  ",",  3,  {"a", "bc", "de", "f"}},
    {"one character an item (Kept)",               "abc,d",    ",",  2,  {"a", "c", "d"}},
    {"a long separator is stepped over by one byte (Kept)", "a--b", "--", 32, {"a", "-b"}},
    {"of three dashes (Kept)",                     "a---b",    "--", 32, {"a", "", "-b"}},
    {"half a separator is none",                   "a-b",      "--", 32, {"a-b"}},
    {"a separator that is empty (Kept)",           "ab",       "",   32, {"", ""}},
    {"a separator longer than the text",           "a",        "abc", 32, {"a"}},
    {"the text is the separator (Kept)",           "ab",       "ab", 32, {"", "b"}},
    {"bytes beyond ASCII",                         "\xC3\xA9,\xFF", ",", 32, {"\xC3\xA9", "\xFF"}},
    {"spaces, as between namespaces",              "urn:a urn:b", " ", 32, {"urn:a", "urn:b"}},
};
// clang-format on

TEST(Split, Items)
{
    for (const SplitCase& c : kSplits)
        EXPECT_EQ(split(c.text, c.separator, c.size), c.items) << c.why;
}

// What the rule says, byte for byte.
Items splitPlainly(const std::string& text, const std::string& separator, std::size_t size)
{
    Items items;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t found = text.find(separator, at);
        const std::size_t whole = (found == std::string::npos ? text.size() : found) - at;
        items.push_back(text.substr(at, std::min(whole, size - 1)));
        at += items.back().size() + (found == std::string::npos ? 0 : 1);
    }
    return items;
}

TEST(Split, AllShortTexts)
{
    constexpr char kLetters[] = "a,-";
    for (std::size_t length = 0; length <= 6; ++length) {
        std::size_t count = 1;
        for (std::size_t i = 0; i < length; ++i) count *= 3;
        for (std::size_t number = 0; number < count; ++number) {
            std::string text;
            for (std::size_t i = 0, rest = number; i < length; ++i, rest /= 3)
                text += kLetters[rest % 3];
            for (const char* separator : {",", ",-"}) {
                for (const uint32_t size : {2u, 3u, 32u})
                    ASSERT_EQ(split(text.c_str(), separator, size),
                              splitPlainly(text, separator, size))
                        << text << " at " << separator << " in " << size;
            }
        }
    }
}

TEST(Split, FillsItsContext)
{
    Schema_SplitCtx context{};
    char buffer[8] = "before";
    const char* text = "a,b";
    EXPECT_EQ(Schema_GetFirstSplitStr(text, ",", sizeof buffer, buffer, &context), buffer);
    EXPECT_EQ(context.item, buffer);
    EXPECT_EQ(context.cursor, text + 2);
    EXPECT_STREQ(context.separator, ",");
    EXPECT_EQ(context.itemSize, sizeof buffer);
}

TEST(Split, AnEmptyTextEmptiesTheBuffer)
{
    Schema_SplitCtx context{};
    char buffer[8] = "before";
    EXPECT_EQ(Schema_GetFirstSplitStr("", ",", sizeof buffer, buffer, &context), nullptr);
    EXPECT_STREQ(buffer, "");
    EXPECT_EQ(Schema_GetNextSplitStr(&context), nullptr);
}

TEST(Split, WithoutArgumentsThereIsNoItem)
{
    Schema_SplitCtx context{};
    char buffer[8] = "before";
    EXPECT_EQ(Schema_GetFirstSplitStr(nullptr, ",", sizeof buffer, buffer, &context), nullptr);
    EXPECT_STREQ(buffer, "") << "the buffer is set all the same";
    EXPECT_EQ(Schema_GetNextSplitStr(&context), nullptr) << "and the context is filled";
    EXPECT_EQ(Schema_GetFirstSplitStr("a", nullptr, sizeof buffer, buffer, &context), nullptr);
    EXPECT_EQ(Schema_GetFirstSplitStr("a", ",", sizeof buffer, nullptr, &context), nullptr);
    EXPECT_EQ(Schema_GetFirstSplitStr("a", ",", sizeof buffer, buffer, nullptr), nullptr);
    EXPECT_EQ(Schema_GetNextSplitStr(nullptr), nullptr);
    EXPECT_EQ(Schema_GetNextSplitStr(&context), nullptr) << "a context that nothing filled";
    context = {nullptr, "a", ",", sizeof buffer};
    EXPECT_EQ(Schema_GetNextSplitStr(&context), nullptr) << "no buffer";
    context = {buffer, "a", nullptr, sizeof buffer};
    EXPECT_EQ(Schema_GetNextSplitStr(&context), nullptr) << "no separator";
}

TEST(Split, ABufferWithoutRoomGivesNoItem)
{
    for (const uint32_t size : {0u, 1u}) {
        GuardedSpace buffers;
        Schema_SplitCtx context{};
        char* buffer = buffers.room(size);
        EXPECT_EQ(Schema_GetFirstSplitStr("a,b", ",", size, buffer, &context), nullptr);
        EXPECT_EQ(Schema_GetNextSplitStr(&context), nullptr);
        EXPECT_TRUE(buffers.untouchedBefore(size));
    }
}

}  // namespace
