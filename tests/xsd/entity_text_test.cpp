// Schema documents in two more encodings, and with entities of their own.
#include "xsd/entity_text.hpp"

#include <gtest/gtest.h>
#include <utility>

namespace netxml::xsd {
namespace {

struct Row {
    const char* why;
    const char* bytes;
    const char* readable;
};

std::string readableBytes(const std::string& bytes)
{
    return ReadableText{bytes}.text();
}

TEST(EntityText, RewritesThese)
{
    const Row rows[] = {
        {"nothing to do", "<a/>", "<a/>"},
        {"US-ASCII", "<?xml version=\"1.0\" encoding=\"US-ASCII\"?><a/>",
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?><a/>"},
        {"in small letters, other quotes", "<?xml version='1.0' encoding='us-ascii'?><a/>",
         "<?xml version='1.0' encoding='UTF-8'?><a/>"},
        {"ISO-8859-1", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a b=\"\xE4\"/>",
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?><a b=\"\xC3\xA4\"/>"},
        {"Windows-1252 without characters of its own",
         "<?xml version=\"1.0\" encoding=\"Windows-1252\"?><a b=\"\xE4\"/>",
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?><a b=\"\xC3\xA4\"/>"},
        {"Windows-1252 with one of them",
         "<?xml version=\"1.0\" encoding=\"Windows-1252\"?><a b=\"\x80\"/>",
         "<?xml version=\"1.0\" encoding=\"Windows-1252\"?><a b=\"\x80\"/>"},
        {"another encoding", "<?xml version=\"1.0\" encoding=\"GBK\"?><a/>",
         "<?xml version=\"1.0\" encoding=\"GBK\"?><a/>"},
        {"an entity in an attribute", "<!DOCTYPE a [<!ENTITY x \"urn:x\">]><a b=\"&x;#int\"/>",
         "<!DOCTYPE a [<!ENTITY x \"urn:x\">]><a b=\"urn:x#int\"/>"},
        {"in another one", "<!DOCTYPE a [<!ENTITY x 'y'><!ENTITY z '&x;&x;'>]><a>&z;</a>",
         "<!DOCTYPE a [<!ENTITY x 'y'><!ENTITY z '&x;&x;'>]><a>yy</a>"},
        {"a character reference in its value", "<!DOCTYPE a [<!ENTITY x '&#65;&#x42;'>]><a>&x;</a>",
         "<!DOCTYPE a [<!ENTITY x '&#65;&#x42;'>]><a>AB</a>"},
        {"quotes in its value", "<!DOCTYPE a [<!ENTITY x '\"'>]><a b=\"&x;\"/>",
         "<!DOCTYPE a [<!ENTITY x '\"'>]><a b=\"&#34;\"/>"},
        {"markup in its value", "<!DOCTYPE a [<!ENTITY x \"<b c='d'>'</b>\">]><a>&x;&x;</a>",
         "<!DOCTYPE a [<!ENTITY x \"<b c='d'>'</b>\">]><a><b c='d'>'</b><b c='d'>'</b></a>"},
        {"another one in the markup of its value",
         "<!DOCTYPE a [<!ENTITY x \"<b c='&q;'>&q;</b>\"><!ENTITY q \"'\">]><a>&x;</a>",
         "<!DOCTYPE a [<!ENTITY x \"<b c='&q;'>&q;</b>\"><!ENTITY q \"'\">]><a><b "
         "c='&#39;'>'</b></a>"},
        {"a comment in its value",
         "<!DOCTYPE a [<!ENTITY x '<!--&y;-->&y;'><!ENTITY y '1'>]><a>&x;</a>",
         "<!DOCTYPE a [<!ENTITY x '<!--&y;-->&y;'><!ENTITY y '1'>]><a>"
         "<!--&y;-->1</a>"},
        {"GBK, for the sake of an entity",
         "<?xml version='1.0' encoding='GBK'?><!DOCTYPE a [<!ENTITY x '\xD6\xD0'>]><a>&x;</a>",
         "<?xml version='1.0' encoding='UTF-8'?><!DOCTYPE a [<!ENTITY x '\xE4\xB8\xAD'>]><a>"
         "\xE4\xB8\xAD</a>"},
        {"the first of two counts", "<!DOCTYPE a [<!ENTITY x '1'><!ENTITY x '2'>]><a>&x;</a>",
         "<!DOCTYPE a [<!ENTITY x '1'><!ENTITY x '2'>]><a>1</a>"},
        {"not in comments and CDATA",
         "<!DOCTYPE a [<!ENTITY x '1'>]><a><!--&x;--><![CDATA[&x;]]>&x;</a>",
         "<!DOCTYPE a [<!ENTITY x '1'>]><a><!--&x;--><![CDATA[&x;]]>1</a>"},
        {"one that is unknown", "<!DOCTYPE a [<!ENTITY x '1'>]><a>&y;&amp;&x;</a>",
         "<!DOCTYPE a [<!ENTITY x '1'>]><a>&y;&amp;1</a>"},
        {"one in a file", "<!DOCTYPE a [<!ENTITY x SYSTEM \"/etc/passwd\">]><a>&x;</a>",
         "<!DOCTYPE a [<!ENTITY x SYSTEM \"/etc/passwd\">]><a>&x;</a>"},
        {"a comment between them",
         "<!DOCTYPE a [<!-- <!ENTITY x '2'> --><!ENTITY x '1'>]><a>&x;</a>",
         "<!DOCTYPE a [<!-- <!ENTITY x '2'> --><!ENTITY x '1'>]><a>1</a>"},
    };
    for (const Row& row : rows) EXPECT_EQ(readableBytes(row.bytes), row.readable) << row.why;
}

TEST(EntityText, DoesNotExplode)
{
    std::string doctype = "<!DOCTYPE a [<!ENTITY e0 '0123456789'>";
    for (int i = 1; i != 30; ++i) {
        const std::string inner = "&e" + std::to_string(i - 1) + ";";
        doctype += "<!ENTITY e" + std::to_string(i) + " '" + inner + inner + inner + inner + "'>";
    }
    doctype += "]>";
    const ReadableText text{doctype + "<a>&e29;</a>"};
    EXPECT_LT(text.text().size(), std::size_t{4} << 20);
    ASSERT_TRUE(text.trouble());
    EXPECT_EQ(text.trouble()->offset, doctype.size() + 3);
    EXPECT_NE(text.trouble()->message.find(
                  " does not fit: the entities of a document may come to 1 MiB of text."),
              std::string::npos);
}

struct TroubleRow {
    const char* why;
    std::string bytes;
    const char* message;
};

TEST(EntityText, SaysWhatIsWrongWithAnEntity)
{
    std::string deep = "<!DOCTYPE a [<!ENTITY e0 '1'>";
    for (int i = 1; i != 65; ++i)
        deep += "<!ENTITY e" + std::to_string(i) + " '&e" + std::to_string(i - 1) + ";'>";
    deep += "]>";
    const TroubleRow rows[] = {
        {"holds itself", "<!DOCTYPE a [<!ENTITY x '&x;&x;'>]><a>&x;</a>",
         "the entity \"x\" holds itself."},
        {"holds itself through another",
         "<!DOCTYPE a [<!ENTITY x '&y;'><!ENTITY y '&x;'>]><a b='&y;'/>",
         "the entity \"y\" holds itself."},
        {"64 deep", deep + "<a>&e63;</a>", nullptr},
        {"65 deep", deep + "<a>&e64;</a>",
         "the entity \"e0\" lies in more than 64 others; that is more than this compiler takes."},
        {"not referred to", "<!DOCTYPE a [<!ENTITY x '&x;'>]><a/>", nullptr},
    };
    for (const TroubleRow& row : rows) {
        const ReadableText text{row.bytes};
        if (row.message) {
            ASSERT_TRUE(text.trouble()) << row.why;
            EXPECT_EQ(text.trouble()->message, row.message) << row.why;
        } else EXPECT_FALSE(text.trouble()) << row.why;
    }
}

TEST(EntityText, HasOneLimitForAllReferencesTogether)
{
    const std::string doctype = "<!DOCTYPE a [<!ENTITY x '" + std::string(1 << 19, 'x') + "'>]>";
    EXPECT_FALSE(ReadableText{doctype + "<a>&x;<b c='&x;'/></a>"}.trouble());
    EXPECT_TRUE(ReadableText{doctype + "<a>&x;<b c='&x;'/>&x;</a>"}.trouble());
    EXPECT_EQ(ReadableText{doctype + "<a>&x;<b c='&x;'/></a>"}.text().size(),
              doctype.size() + std::string{"<a><b c=''/></a>"}.size() + (1 << 20));
}

TEST(EntityText, KnowsWhereItIsWritten)
{
    const std::string doctype = "<!DOCTYPE a [<!ENTITY x 'long'><!ENTITY e ''>]>";
    const ReadableText text{doctype + "<a>&x;b&e;c&x;</a>"};
    const std::size_t start = doctype.size();
    ASSERT_EQ(text.text(), doctype + "<a>longbclong</a>");
    const std::pair<std::size_t, std::size_t> rows[] = {
        {0, 0}, {2, 2}, {3, 3}, {6, 3}, {7, 6}, {8, 10}, {9, 11}, {12, 11}, {13, 14}, {15, 16}};
    for (const auto& [offset, written] : rows)
        EXPECT_EQ(text.writtenOffset(start + offset), start + written) << offset;
    EXPECT_EQ(text.writtenOffset(1), 1u);
    EXPECT_EQ(text.written(), doctype + "<a>&x;b&e;c&x;</a>");

    const ReadableText plain{"<a/>"};
    EXPECT_EQ(plain.writtenOffset(3), 3u);
    EXPECT_EQ(plain.written(), "<a/>");
}

}  // namespace
}  // namespace netxml::xsd
