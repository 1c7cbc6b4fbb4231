// Schema documents in two more encodings, and with entities of their own.
#include "xsd/entity_text.hpp"

#include <gtest/gtest.h>

namespace netxml::xsd {
namespace {

struct Row {
    const char* why;
    const char* bytes;
    const char* readable;
};

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
    const std::string text = readableBytes(doctype + "]><a>&e29;</a>");
    EXPECT_LT(text.size(), std::size_t{4} << 20);
    EXPECT_LT(readableBytes("<!DOCTYPE a [<!ENTITY x '&x;&x;'>]><a>&x;</a>").size(),
              std::size_t{4} << 20);
}

}  // namespace
}  // namespace netxml::xsd
