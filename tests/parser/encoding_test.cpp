// Documents in every encoding: with and without mark, declared or not, whole and in pieces; and
// what is written in every encoding parses back.
#include "tests/support/event_log.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

namespace {

constexpr char kBody[] =
    "<a x='\xE4\xB8\xAD'>text \xE4\xB8\xAD\xE6\x96\x87<b/></a>";  // in GB2312, too
constexpr char kTree[] = "<a x=\"\xE4\xB8\xAD\">text \xE4\xB8\xAD\xE6\x96\x87<b/></a>";

struct SourceCase {
    const char* why;
    const char* mark;       // bytes in front, as hexadecimal digits
    const char* bytes;      // the encoding of the bytes, as iconv names it
    const char* declared;   // NULL: no declaration at all; "": one without an encoding
    XML_Encoding encoding;  // of the document afterwards; XML_ENCODING_NONE: does not parse
};

// clang-format off
const SourceCase kSources[] = {
    {"UTF-8 bare",                          "",         "UTF-8",    nullptr,     0},
    {"UTF-8 with a declaration",            "",         "UTF-8",    "",          0},
    {"UTF-8 declared",                      "",         "UTF-8",    "UTF-8",     0},
    {"UTF-8 declared in small letters",     "",         "UTF-8",    "utf-8",     0},
    {"UTF-8 with a mark",                   "EFBBBF",   "UTF-8",    nullptr,     0},
    {"UTF-8 with a mark, declared",         "EFBBBF",   "UTF-8",    "UTF-8",     0},
    {"GB18030 declared",                    "",         "GB18030",  "GB18030",   9},
    {"gb18030 in small letters",            "",         "GB18030",  "gb18030",   9},
    {"GBK declared",                        "",         "GBK",      "GBK",       8},
    {"GB2312 declared",                     "",         "GB2312",   "GB2312",    3},
    {"UTF-16LE with a mark",                "FFFE",     "UTF-16LE", nullptr,     1},
    {"UTF-16LE with a mark, declared",      "FFFE",     "UTF-16LE", "UTF-16LE",  1},
    {"UTF-16LE with a mark, UTF-16 declared", "FFFE",   "UTF-16LE", "UTF-16",    6},
    {"UTF-16BE with a mark",                "FEFF",     "UTF-16BE", nullptr,     2},
    {"UTF-16BE with a mark, UTF-16 declared", "FEFF",   "UTF-16BE", "utf-16",    6},
    {"UTF-16LE without a mark (the encoding is taken before detection)", "", "UTF-16LE", "", 0},
    {"UTF-16BE without a mark",             "",         "UTF-16BE", "",          0},
    {"UTF-16LE without a mark, declared",   "",         "UTF-16LE", "UTF-16LE",  1},
    {"UTF-16LE without a mark, UTF-16 declared", "",    "UTF-16LE", "UTF-16",    6},
    {"UTF-16BE without a mark, UTF-16 declared", "",    "UTF-16BE", "UTF-16",    6},
    {"UTF-32LE with a mark",                "FFFE0000", "UTF-32LE", nullptr,     4},
    {"UTF-32LE with a mark, UTF-32 declared", "FFFE0000", "UTF-32LE", "UTF-32",  7},
    {"UTF-32BE with a mark, UTF-32 declared", "0000FEFF", "UTF-32BE", "UTF-32",  7},
    {"UTF-32BE with a mark, UCS-4 declared", "0000FEFF", "UTF-32BE", "UCS-4",    10},
    {"UTF-32LE with a mark, UCS-4 declared", "FFFE0000", "UTF-32LE", "UCS-4",    10},
    {"UTF-32LE with a mark, UCS-4LE declared", "FFFE0000", "UTF-32LE", "UCS-4LE", 12},
    {"UTF-32BE with a mark, UCS-4BE declared", "0000FEFF", "UTF-32BE", "UCS-4BE", 11},
    {"UTF-32LE without a mark",             "",         "UTF-32LE", "",          0},
    {"UTF-32BE without a mark",             "",         "UTF-32BE", "",          0},
    {"UTF-32LE without a mark, declared",   "",         "UTF-32LE", "UTF-32LE",  4},
    {"UTF-32BE without a mark, declared",   "",         "UTF-32BE", "UTF-32BE",  5},
    {"UTF-32LE without a mark, UTF-32 declared", "",    "UTF-32LE", "UTF-32",    7},
    {"UTF-32BE without a mark, UTF-32 declared", "",    "UTF-32BE", "UTF-32",    7},
    {"UCS-4LE without a mark, declared",    "",         "UCS-4LE",  "UCS-4LE",   12},
    {"UCS-4BE without a mark, declared",    "",         "UCS-4BE",  "UCS-4BE",   11},
    {"UCS-4 without a mark, little",        "",         "UCS-4LE",  "UCS-4",     10},
    {"UCS-4 without a mark, big",           "",         "UCS-4BE",  "UCS-4",     10},
    {"an unknown encoding",                 "",         "UTF-8",    "LATIN1",    13},
    {"UTF-16 declared in UTF-8",            "",         "UTF-8",    "UTF-16",    13},
    {"UTF-8 declared in UTF-16LE",          "FFFE",     "UTF-16LE", "UTF-8",     13},
    {"UTF-16BE declared in UTF-16LE",       "FFFE",     "UTF-16LE", "UTF-16BE",  13},
    {"UTF-16 declared in UTF-32LE", "FFFE0000", "UTF-32LE", "UTF-16", 13},
    {"UTF-16 declared in UTF-32BE", "0000FEFF", "UTF-32BE", "UTF-16", 13},
    {"UTF-32 declared in UTF-16LE",         "FFFE",     "UTF-16LE", "UTF-32",    13},
};
// clang-format on

std::string fromHex(std::string_view digits)
{
    std::string bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2)
        bytes.push_back(
            static_cast<char>(std::stoi(std::string{digits.substr(i, 2)}, nullptr, 16)));
    return bytes;
}

std::string sourceOf(const SourceCase& row, const std::string& body)
{
    std::string text;
    if (row.declared) {
        text = "<?xml version='1.0'";
        if (*row.declared) text += std::string{" encoding='"} + row.declared + "'";
        text += "?>";
    }
    return fromHex(row.mark) + convertTo(row.bytes, text + body);
}

void expectTree(const SourceCase& row, XML_DOM_Node* root, const std::string& tree,
                const char* error)
{
    if (row.encoding == XML_ENCODING_NONE) {
        EXPECT_EQ(root, nullptr) << row.why;
        XML_DOM_DelNode(root);
        return;
    }
    ASSERT_NE(root, nullptr) << row.why << ": " << error;
    EXPECT_EQ(XML_DOM_GetEncoding(root), row.encoding) << row.why;
    ASSERT_EQ(XML_DOM_SetEncoding(root, XML_ENCODING_UTF_8), XML_RET_OK);
    EXPECT_EQ(written(root), tree) << row.why;
    XML_DOM_DelNode(root);
}

TEST(Encodings, EverySourceParsesAsBlockListAndFile)
{
    for (const SourceCase& row : kSources) {
        SCOPED_TRACE(row.why);
        const std::string source = sourceOf(row, kBody);
        const GuardedBytes block{source};
        char error[300] = "";
        expectTree(
            row,
            XML_DOM_BuildTreeByMem(block.data(), static_cast<uint32_t>(block.size()), 300, error),
            kTree, error);
        const TempFile file{source};
        expectTree(row, XML_DOM_BuildTreeByFile(file.path(), 300, error), kTree, error);
        for (std::size_t cut = 0; cut <= source.size(); ++cut) {
            const ChunkList list{source, std::vector<std::size_t>{cut}};
            expectTree(row, XML_DOM_BuildTreeByMemList(list.list(), 300, error), kTree, error);
        }
        const ChunkList bytes{source, 1};
        expectTree(row, XML_DOM_BuildTreeByMemList(bytes.list(), 300, error), kTree, error);
    }
}

// Sizes around the buffers' steps: whatever does not fit is read when there is room.
TEST(Encodings, LongSourcesOfEverySizeParseLikeTheBlock)
{
    for (const SourceCase& row : kSources) {
        if (row.encoding == XML_ENCODING_NONE) continue;
        for (const std::size_t size :
             {230u, 250u, 330u, 470u, 500u, 990u, 1010u, 1030u, 2500u, 5003u}) {
            std::string text;
            for (std::size_t i = 0; i < size; ++i) text += i % 7 == 0 ? "x" : "\xE4\xB8\xAD";
            const std::string body = "<a>" + text + "</a>";
            const std::string source = sourceOf(row, body);
            char error[300] = "";
            expectTree(row,
                       XML_DOM_BuildTreeByMem(bytesOf(source), static_cast<uint32_t>(source.size()),
                                              300, error),
                       body, error);
            for (const std::size_t chunk : {1u, 3u, 64u, 1021u}) {
                const ChunkList list{source, chunk};
                expectTree(row, XML_DOM_BuildTreeByMemList(list.list(), 300, error), body, error);
            }
            const TempFile file{source};
            expectTree(row, XML_DOM_BuildTreeByFile(file.path(), 300, error), body, error);
        }
    }
}

TEST(Encodings, WhatIsWrittenParsesBack)
{
    XML_DOM_Node* root = treeOf(kBody);
    for (XML_Encoding encoding = 0; encoding < XML_ENCODING_NONE; ++encoding) {
        SCOPED_TRACE(XML_DOM_EncodingEnumToStr(encoding));
        ASSERT_EQ(XML_DOM_SetEncoding(root, encoding), XML_RET_OK);
        const std::string text = written(root, 0);
        char error[300] = "";
        XML_DOM_Node* back = XML_DOM_BuildTreeByMem(
            bytesOf(text), static_cast<uint32_t>(text.size()), sizeof error, error);
        ASSERT_NE(back, nullptr) << error;
        EXPECT_EQ(XML_DOM_GetEncoding(back), encoding);
        XML_DOM_SetEncoding(back, XML_ENCODING_UTF_8);
        EXPECT_EQ(written(back), kTree);
        XML_DOM_DelNode(back);
    }
    XML_DOM_DelNode(root);
}

struct BadCase {
    const char* why;
    std::string source;
};

// The excerpt of such a source is often no text at all, so the code is looked at and not the
// report.
TEST(Encodings, BrokenBlocksAreReported)
{
    const BadCase kBad[] = {
        {"a block cut inside a unit", std::string("\xFF\xFE<\0a\0/\0>\0x", 11)},
        {"a surrogate alone", std::string("\xFF\xFE<\0a\0>\0\x00\xD8<\0", 12)},
        {"a surrogate in UTF-32", std::string("\xFF\xFE\0\0<\0\0\0\0\xD8\0\0", 12)},
        {"invalid GBK in a declared block", "<?xml version='1.0' encoding='GBK'?><a>\xFF</a>"},
        {"GBK cut at the end", "<?xml version='1.0' encoding='GBK'?><a>\xD6"},
        {"no GB2312", "<?xml version='1.0' encoding='GB2312'?><a>\x81\x40</a>"},
    };
    for (const BadCase& row : kBad) {
        EventLog log;
        EXPECT_EQ(XML_Parser_ByMem(bytesOf(row.source), static_cast<uint32_t>(row.source.size()),
                                   log.handler()),
                  XML_RET_FAIL);
        EXPECT_EQ(log.error(), 1500u) << row.why;
    }
}

// Kept: far from the start of a file an invalid sequence just ends the text.
TEST(Encodings, InvalidSequenceFarInAFileEndsTheText)
{
    const std::string source =
        "<?xml version='1.0' encoding='GBK'?><a>" + std::string(5000, 'x') + "\xFF</a>";
    const TempFile file{source};
    char error[300] = "";
    EXPECT_EQ(XML_DOM_BuildTreeByFile(file.path(), sizeof error, error), nullptr);
    EXPECT_NE(std::string{error}.find("tag not finished."), std::string::npos) << error;
}

TEST(Encodings, TheHandlerSeesTheDeclaredEncoding)
{
    const std::string source = "<?xml version='1.0' encoding='gbk'?><a>\xD6\xD0</a>";
    EventLog log;
    EXPECT_EQ(
        XML_Parser_ByMem(bytesOf(source), static_cast<uint32_t>(source.size()), log.handler()),
        XML_RET_OK);
    EXPECT_EQ(log.text(),
              "1:37 document encoding=8 version=1.0\n1:39 start 'a' null null\n"
              "1:41 text '\xE4\xB8\xAD'\n1:45 end 'a' null null\n1:45 end of document\n");
}

TEST(Encodings, AFailingSwitchAfterTheFirstFourBytesIsReported)
{
    const std::string source("<\0?\0x\0m\0\0\xD8<\0", 12);
    EventLog log;
    EXPECT_EQ(
        XML_Parser_ByMem(bytesOf(source), static_cast<uint32_t>(source.size()), log.handler()),
        XML_RET_FAIL);
    EXPECT_EQ(log.error(), 1500u);
    EXPECT_EQ(log.events(), 1) << "no document began";
}

// The stream's failure speaks in the end, also where the scanner found nothing wrong.
TEST(Encodings, AFailedStreamOverrulesACleanDocument)
{
    const std::string source = "<?xml version='1.0' encoding='UTF-32'?><a/>";
    EventLog log;
    EXPECT_EQ(
        XML_Parser_ByMem(bytesOf(source), static_cast<uint32_t>(source.size()), log.handler()),
        XML_RET_FAIL);
    EXPECT_EQ(log.error(), 1500u);
    EXPECT_NE(log.text().find("end of document\n"), std::string::npos);
}

TEST(Encodings, TheMarkStaysInTheBufferAndSoInTheExcerpt)
{
    const std::string source = "\xEF\xBB\xBF<a></b>";
    EventLog log;
    EXPECT_EQ(
        XML_Parser_ByMem(bytesOf(source), static_cast<uint32_t>(source.size()), log.handler()),
        XML_RET_FAIL);
    EXPECT_NE(log.text().find("Line 1 Column 6 :\"\xEF\xBB\xBF<a></b>\""), std::string::npos)
        << log.text();
}

}  // namespace
