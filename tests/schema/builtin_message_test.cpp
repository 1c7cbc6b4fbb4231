// What a refused value of a built-in type is called, and how the sentence is cut.
#include "tests/schema/guarded_space.hpp"
#include "tests/support/plain_values.hpp"

#include "netxml/schema.h"

#include <gtest/gtest.h>

#include <string>

namespace {

Schema_SimpleType typeOf(uint32_t kind)
{
    Schema_SimpleType type{};
    type.kind = kind;
    return type;
}

std::string sentenceFor(uint32_t kind, const char* value, uint32_t size = 512)
{
    const Schema_SimpleType type = typeOf(kind);
    const Sentence sentence{size};
    const uint32_t result = Schema_CheckBaseType(&type, value, size, sentence.buffer());
    const std::string text = sentence.text();
    if (result == 1) return text == "(untouched)" ? "(valid)" : "valid, but wrote " + text;
    return result == 0 ? text : "neither 0 nor 1";
}

struct MessageCase {
    const char* why;
    uint32_t kind;
    const char* value;
    const char* message;
};

// clang-format off
constexpr MessageCase kMessages[] = {
    // why                                    kind value   message
    {"a value out of range",                  3,  "128",   "128 is an invalid value of byte type value."},
    {"an empty value",                        7,  "",      "int cannot be empty."},
    {"NULL is an empty value",                7,  nullptr, "int cannot be empty."},
    {"an empty string is valid",              28, "",      "(valid)"},
    {"and so is NULL",                        28, nullptr, "(valid)"},
    {"empty base64 is valid",                 31, "",      "(valid)"},
    {"and so is NULL for it",                 31, nullptr, "(valid)"},
    {"empty hexBinary is not",                30, "",      "hexBinary cannot be empty."},
    {"anySimpleType takes everything",        1,  "x",     "(valid)"},
    {"anySimpleType takes nothing, too",      1,  "",      "(valid)"},
    {"anySimpleType takes NULL",              1,  nullptr, "(valid)"},
    {"anyType as a simple type has no rule",  2,  "x",     "x is an invalid value of anyType type value."},
    {"a kind without a rule",                 16, "1.5",   "1.5 is an invalid value of decimal type value."},
    {"a kind without a rule, empty",          16, "",      "decimal cannot be empty."},
    {"no kind at all",                        0,  "x",     "x is an invalid value of  type value."},
    {"no kind and no value",                  0,  "",      " cannot be empty."},
    {"the last kind has no name",             47, "x",     "x is an invalid value of  type value."},
    {"language prints NOTATION (Kept)",       34, "",      "NOTATION cannot be empty."},
    {"with a value, too (Kept)",              34, "EN",    "EN is an invalid value of NOTATION type value."},
    {"kind 37 has the name only (Kept)",      37, "en",    "en is an invalid value of language type value."},
    {"dateTime prints in lower case (Kept)",  20, "",      "datetime cannot be empty."},
    {"with a value, too (Kept)",              20, "x",     "x is an invalid value of datetime type value."},
    {"kind 46 has its own spelling (Kept)",   46, "x",     "x is an invalid value of ENTITYS type value."},
    {"a form in the value is text",           7,  "%s%n",  "%s%n is an invalid value of int type value."},
    {"bytes beyond ASCII are kept",           7,  "\xC3\xA9", "\xC3\xA9 is an invalid value of int type value."},
    {"a valid value leaves the buffer alone", 7,  "1",     "(valid)"},
};
// clang-format on

TEST(CheckBaseType, Sentences)
{
    for (const MessageCase& c : kMessages)
        EXPECT_EQ(sentenceFor(c.kind, c.value), c.message) << c.why;
}

// The name of kinds 1 and 28 never comes into a sentence: they take every value.
TEST(CheckBaseType, NamesOfAllKinds)
{
    for (uint32_t kind = 0; kind < 48; ++kind) {
        if (kind == 1 || kind == 28) continue;
        const std::string name = plainTypeName(kind);
        EXPECT_EQ(sentenceFor(kind, "!"), "! is an invalid value of " + name + " type value.");
        if (kind != 31) {
            EXPECT_EQ(sentenceFor(kind, ""), name + " cannot be empty.");
        }
    }
}

TEST(CheckBaseType, KindsBeyondTheTableAreRefused)
{
    for (const uint32_t kind : {48u, 49u, 1000u, 0x10001u, 0xFFFFFFFFu}) {
        const Schema_SimpleType type = typeOf(kind);
        char buffer[512] = "";
        EXPECT_EQ(Schema_CheckBaseType(&type, "1", sizeof buffer, buffer), 0u) << kind;
        EXPECT_EQ(Schema_CheckBaseType(&type, "", sizeof buffer, buffer), 0u) << kind;
    }
}

TEST(CheckBaseType, NoTypeGivesNoSentence)
{
    char buffer[8] = "as is";
    EXPECT_EQ(Schema_CheckBaseType(nullptr, "1", sizeof buffer, buffer), 0u);
    EXPECT_STREQ(buffer, "as is");
}

// Only the kind is read.
TEST(CheckBaseType, OtherFieldsDoNotMatter)
{
    Schema_SimpleType type = typeOf(SCHEMA_BUILTIN_BYTE);
    type.name = "other";
    type.memberCount = 5;
    type.facetCount = 5;
    char buffer[512] = "";
    EXPECT_EQ(Schema_CheckBaseType(&type, "1", sizeof buffer, buffer), 1u);
    EXPECT_EQ(Schema_CheckBaseType(&type, "", sizeof buffer, buffer), 0u);
    EXPECT_STREQ(buffer, "byte cannot be empty.");
}

// From 111 on there is room for the sentence, and the rest is for the value.
TEST(CheckBaseType, QuotesAsMuchOfTheValueAsFits)
{
    const std::string kTail = " is an invalid value of nonPositiveInteger type value.";
    for (const std::size_t length : {1u, 2u, 100u, 400u, 401u, 402u, 700u, 100000u}) {
        const std::string value(length, 'x');
        for (uint32_t size = 111; size <= 600; ++size) {
            const std::string expected = value.substr(0, size - 111) + kTail;
            ASSERT_EQ(sentenceFor(13, value.c_str(), size), expected) << length << " in " << size;
            std::string plain;
            ASSERT_FALSE(plainBaseType(13, value, size, plain));
            ASSERT_EQ(plain, expected) << "the plain rules are wrong";
        }
    }
}

// A value that fits is quoted whole in a smaller buffer, too; the sentence is cut at its end.
TEST(CheckBaseType, IsCutAtEverySize)
{
    const std::string invalid = "70000 is an invalid value of unsignedShort type value.";
    const std::string empty = "unsignedShort cannot be empty.";
    for (uint32_t size = 1; size <= 600; ++size) {
        if (size < 111 || size >= 116) {  // between them the value is quoted in part
            EXPECT_EQ(sentenceFor(6, "70000", size), plainCut(invalid, size)) << size;
        }
        EXPECT_EQ(sentenceFor(6, "", size), plainCut(empty, size)) << size;
    }
    EXPECT_EQ(sentenceFor(6, "70000", 111), " is an invalid value of unsignedShort type value.");
    EXPECT_EQ(sentenceFor(6, "70000", 114), "700 is an invalid value of unsignedShort type value.");
}

TEST(CheckBaseType, NothingIsWrittenBeyondASmallBuffer)
{
    const std::string value(1000, '!');
    for (uint32_t size = 1; size < 111; ++size) {
        for (uint32_t kind = 0; kind < 48; ++kind) {
            if (kind == 1 || kind == 28) continue;
            const std::string text = sentenceFor(kind, value.c_str(), size);
            ASSERT_LT(text.size(), size);
            ASSERT_EQ(text, value.substr(0, text.size())) << "a value that long fills all";
        }
    }
}

TEST(CheckBaseType, ABufferOfNoSizeIsNotWrittenTo)
{
    EXPECT_EQ(sentenceFor(6, "70000", 0), "(untouched)");
    EXPECT_EQ(sentenceFor(6, "", 0), "(untouched)");
    const Schema_SimpleType type = typeOf(6);
    EXPECT_EQ(Schema_CheckBaseType(&type, "70000", 0, nullptr), 0u);
    EXPECT_EQ(Schema_CheckBaseType(&type, "1", 0, nullptr), 1u);
}

}  // namespace
