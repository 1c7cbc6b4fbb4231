// What each construct delivers, and where the parser stands when it does.
#include "tests/support/event_log.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

namespace {

struct EventCase {
    const char* why;
    const char* document;
    const char* events;  // between the start and the end of the document
};

// clang-format off
const EventCase kEvents[] = {
    {"an empty element",            "<a/>",              "1:3 start 'a' null null\n1:5 end 'a' null null\n"},
    {"start and end tag",           "<a></a>",           "1:3 start 'a' null null\n1:8 end 'a' null null\n"},
    {"blanks in tags",              "<a ></a\n>",        "1:4 start 'a' null null\n2:2 end 'a' null null\n"},
    {"blank text is no event",      "<a>  </a>",         "1:3 start 'a' null null\n1:10 end 'a' null null\n"},
    {"text is trimmed",             "<a> x </a>",        "1:3 start 'a' null null\n1:7 text 'x'\n1:11 end 'a' null null\n"},
    {"inner blanks and line ends stay", "<a>x \r\n y</a>", "1:3 start 'a' null null\n2:3 text 'x \r\n y'\n2:7 end 'a' null null\n"},
    {"a reference is not trimmed",  "<a>&#32;</a>",      "1:3 start 'a' null null\n1:9 text ' '\n1:13 end 'a' null null\n"},
    {"blanks beside references",    "<a> &#9; x &#10; </a>", "1:3 start 'a' null null\n1:18 text '\t x \n'\n1:22 end 'a' null null\n"},
    {"the five entities",           "<a>&lt;&gt;&amp;&apos;&quot;</a>", "1:3 start 'a' null null\n1:29 text '<>&'\"'\n1:33 end 'a' null null\n"},
    {"character references",        "<a>&#65;&#x41;&#x4e2D;&#x10000;</a>", "1:3 start 'a' null null\n1:32 text 'AA\xE4\xB8\xAD\xF0\x90\x80\x80'\n1:36 end 'a' null null\n"},
    {"a number that wraps",         "<a>&#4294967361;</a>", "1:3 start 'a' null null\n1:17 text 'A'\n1:21 end 'a' null null\n"},
    {"leading zeros",               "<a>&#x0000000000041;</a>", "1:3 start 'a' null null\n1:21 text 'A'\n1:25 end 'a' null null\n"},
    {"brackets in text",            "<a>]]x]></a>",      "1:3 start 'a' null null\n1:9 text ']]x]>'\n1:13 end 'a' null null\n"},
    {"CDATA before its delimiter",  "<a><![CDATA[x]]></a>", "1:3 start 'a' null null\n1:14 cdata 'x'\n1:21 end 'a' null null\n"},
    {"CDATA keeps blanks and markup", "<a><![CDATA[ <b>&amp;]] ]]></a>", "1:3 start 'a' null null\n1:25 cdata ' <b>&amp;]] '\n1:32 end 'a' null null\n"},
    {"empty CDATA",                 "<a><![CDATA[]]></a>", "1:3 start 'a' null null\n1:13 cdata ''\n1:20 end 'a' null null\n"},
    {"CDATA of brackets",           "<a><![CDATA[]]]]></a>", "1:3 start 'a' null null\n1:15 cdata ']]'\n1:22 end 'a' null null\n"},
    {"comment behind its delimiter", "<!-- c --><a/>",   "1:11 comment ' c '\n1:13 start 'a' null null\n1:15 end 'a' null null\n"},
    {"empty comment",               "<a><!----></a>",    "1:3 start 'a' null null\n1:11 comment ''\n1:15 end 'a' null null\n"},
    {"single hyphens in a comment", "<!--a-b- c--><a/>", "1:14 comment 'a-b- c'\n1:16 start 'a' null null\n1:18 end 'a' null null\n"},
    {"instruction before its delimiter", "<?p  d e ?><a/>", "1:10 instruction 'p' 'd e '\n1:14 start 'a' null null\n1:16 end 'a' null null\n"},
    {"instruction without data",    "<?p?><a/>",         "1:4 instruction 'p' null\n1:8 start 'a' null null\n1:10 end 'a' null null\n"},
    {"instruction with blanks only", "<?p ?><a/>",       "1:5 instruction 'p' ''\n1:9 start 'a' null null\n1:11 end 'a' null null\n"},
    {"target XML in capitals",      "<a><?XML d?></a>",  "1:3 start 'a' null null\n1:11 instruction 'XML' 'd'\n1:17 end 'a' null null\n"},
    {"a target that begins with xml", "<a><?xml-x d?></a>", "1:3 start 'a' null null\n1:13 instruction 'xml-x' 'd'\n1:19 end 'a' null null\n"},
    {"question marks in data",      "<?p a?b?" "?><a/>",    "1:9 instruction 'p' 'a?b?'\n1:13 start 'a' null null\n1:15 end 'a' null null\n"},
    {"items after the root",        "<a/> <!--x--> <?p?> ", "1:3 start 'a' null null\n1:5 end 'a' null null\n1:14 comment 'x'\n1:18 instruction 'p' null\n"},
    {"DOCTYPE is skipped",          "<!DOCTYPE a SYSTEM \"x\" [<!ENTITY e '>'>]><a/>", "1:44 start 'a' null null\n1:46 end 'a' null null\n"},
    {"two brackets end a DOCTYPE",  "<!DOCTYPE a [ ]]><a/>", "1:20 start 'a' null null\n1:22 end 'a' null null\n"},
    {"blanks after the subset",     "<!DOCTYPE a [ ] \n ><a/>", "2:5 start 'a' null null\n2:7 end 'a' null null\n"},
    {"attributes in their order",   "<a b='1' c=\"2\"/>", "1:15 start 'a' null null attribute 'b' null null='1' attribute 'c' null null='2'\n1:17 end 'a' null null\n"},
    {"blanks around =",             "<a b \n=\t '1'/>",   "2:7 start 'a' null null attribute 'b' null null='1'\n2:9 end 'a' null null\n"},
    {"values as written",           "<a b=' x\n\t '/>",    "2:4 start 'a' null null attribute 'b' null null=' x\n\t '\n2:6 end 'a' null null\n"},
    {"references in values",        "<a b='&lt;&#x20;&quot;'/>", "1:24 start 'a' null null attribute 'b' null null='< \"'\n1:26 end 'a' null null\n"},
    {"empty value",                 "<a b=''/>",         "1:8 start 'a' null null attribute 'b' null null=''\n1:10 end 'a' null null\n"},
    {"the other quote and ]]> in a value", "<a b='\"]]>'/>", "1:12 start 'a' null null attribute 'b' null null='\"]]>'\n1:14 end 'a' null null\n"},
    {"a default namespace",         "<a xmlns='u'><b/></a>", "1:13 start 'a' null 'u' declares null='u'\n1:16 start 'b' null 'u'\n1:18 end 'b' null 'u'\n1:22 end 'a' null 'u'\n"},
    {"a default undeclared is the empty text", "<a xmlns='u'><b xmlns=''/></a>", "1:13 start 'a' null 'u' declares null='u'\n1:25 start 'b' null '' declares null=''\n1:27 end 'b' null ''\n1:31 end 'a' null 'u'\n"},
    {"prefixes, also declared after their use", "<p:a p:x='1' y='2' xmlns:p='u'/>", "1:31 start 'a' 'p' 'u' declares 'p'='u' attribute 'x' 'p' 'u'='1' attribute 'y' null null='2'\n1:33 end 'a' 'p' 'u'\n"},
    {"the nearest declaration wins", "<p:a xmlns:p='u'><p:b xmlns:p='v'/><p:c/></p:a>", "1:17 start 'a' 'p' 'u' declares 'p'='u'\n1:34 start 'b' 'p' 'v' declares 'p'='v'\n1:36 end 'b' 'p' 'v'\n1:40 start 'c' 'p' 'u'\n1:42 end 'c' 'p' 'u'\n1:48 end 'a' 'p' 'u'\n"},
    {"xml needs no declaration",    "<xml:a xml:lang='zh'/>", "1:21 start 'a' 'xml' 'http://www.w3.org/XML/1998/namespace' attribute 'lang' 'xml' 'http://www.w3.org/XML/1998/namespace'='zh'\n1:23 end 'a' 'xml' 'http://www.w3.org/XML/1998/namespace'\n"},
    {"declarations in their order", "<a xmlns:p='1' xmlns='2' xmlns:q='3'/>", "1:37 start 'a' null '2' declares 'p'='1' declares null='2' declares 'q'='3'\n1:39 end 'a' null '2'\n"},
    {"same local name in two namespaces", "<a x='1' p:x='2' xmlns:p='u'/>", "1:29 start 'a' null null declares 'p'='u' attribute 'x' null null='1' attribute 'x' 'p' 'u'='2'\n1:31 end 'a' null null\n"},
    {"a prefix named xmlns as a local name", "<a p:xmlns='1' xmlns:p='u'/>", "1:27 start 'a' null null declares 'p'='u' attribute 'xmlns' 'p' 'u'='1'\n1:29 end 'a' null null\n"},
    {"names beyond ASCII",          "<\xE9\x85\x8D\xE7\xBD\xAE \xC3\xA9\xC2\xB7='1'/>", "1:11 start '\xE9\x85\x8D\xE7\xBD\xAE' null null attribute '\xC3\xA9\xC2\xB7' null null='1'\n1:13 end '\xE9\x85\x8D\xE7\xBD\xAE' null null\n"},
    {"overlong letters (Kept: they decode)", "<\xC1\x81/>", "1:3 start '\xC1\x81' null null\n1:5 end '\xC1\x81' null null\n"},
    {"leads beyond F4 (Kept: they decode)", "<a>\xF8\x90\x80\x80</a>", "1:3 start 'a' null null\n1:5 text '\xF8\x90\x80\x80'\n1:9 end 'a' null null\n"},
};
// clang-format on

TEST(Scanner, DeliversEachConstruct)
{
    for (const EventCase& row : kEvents) {
        SCOPED_TRACE(row.why);
        const std::string document = row.document;
        const GuardedBytes block{document};
        EventLog log;
        EXPECT_EQ(
            XML_Parser_ByMem(block.data(), static_cast<uint32_t>(block.size()), log.handler()),
            XML_RET_OK);
        const std::string& text = log.text();
        const std::string begin = "1:1 document encoding=0 version=1.0\n";
        const std::size_t end = text.rfind('\n', text.size() - 2);
        ASSERT_NE(end, std::string::npos);
        EXPECT_EQ(text.substr(0, begin.size()), begin);
        EXPECT_EQ(text.substr(begin.size(), end + 1 - begin.size()), row.events);
        EXPECT_NE(text.find("end of document\n", end), std::string::npos);
    }
}

TEST(Scanner, AcceptsEveryFormOfTheDeclaration)
{
    const char* const kDeclarations[] = {
        "<?xml version='1.0'?>",
        "<?xml version=\"1.0\" ?>",
        "<?xml\n\tversion = '1.0'\r\n?>",
        "<?xml version='1.0' encoding='utf-8'?>",
        "<?xml version='1.0' encoding = \"UTF-8\" standalone='yes' ?>",
        "<?xml version='1.0' standalone = 'no'?>",
    };
    for (const char* declaration : kDeclarations) {
        const std::string document = std::string{declaration} + "<a/>";
        EXPECT_EQ(
            XML_Parser_ByMem(bytesOf(document), static_cast<uint32_t>(document.size()), nullptr),
            XML_RET_OK)
            << declaration;
    }
}

// A name longer than the look-ahead, compared in full.
TEST(Scanner, ComparesLongEndTagsInFull)
{
    for (const std::size_t size : {60u, 63u, 64u, 65u, 1000u, 1024u, 5000u}) {
        const std::string name(size, 'n');
        const std::string same = "<" + name + "></" + name + ">";
        const std::string other = "<" + name + "></" + name.substr(1) + "x>";
        for (const std::size_t chunk : {1u, 7u, 100u, 100000u}) {
            const ChunkList good{same, chunk};
            EventLog log;
            EXPECT_EQ(XML_Parser_ByMemList(good.list(), log.handler()), XML_RET_OK) << size;
            const ChunkList bad{other, chunk};
            EventLog errors;
            EXPECT_EQ(XML_Parser_ByMemList(bad.list(), errors.handler()), XML_RET_FAIL) << size;
            EXPECT_EQ(errors.error(), 76u);
            const std::string column = "Column " + std::to_string(size + 5) + " ";
            EXPECT_NE(errors.text().find(column), std::string::npos) << errors.text();
        }
    }
}

// Every construct split at every byte, from a list and from a file, gives what the block gives.
TEST(Scanner, ChunksMayEndAnywhere)
{
    const std::string document =
        "<?xml version='1.0' encoding='UTF-8' standalone='yes'?>\r\n<!DOCTYPE a [<!ENTITY e "
        "'x'>]>\n"
        "<!-- \xE4\xB8\xAD --><?pi data?>\n<p:a xmlns:p='urn:p' xmlns=\"urn:d\" p:x='&lt;&#x4e2d;'>"
        " t\xC3\xA9xt &amp; \xF0\x9F\x98\x80 <b/><![CDATA[ <x> ]]>\r\n</p:a>";
    EventLog whole;
    ASSERT_EQ(XML_Parser_ByMem(bytesOf(document), static_cast<uint32_t>(document.size()),
                               whole.handler()),
              XML_RET_OK);
    for (std::size_t cut = 0; cut <= document.size(); ++cut) {
        const ChunkList chunks{document, std::vector<std::size_t>{cut}};
        EventLog log;
        EXPECT_EQ(XML_Parser_ByMemList(chunks.list(), log.handler()), XML_RET_OK);
        ASSERT_EQ(log.text(), whole.text()) << "cut at " << cut;
    }
    const TempFile file{document};
    EventLog log;
    EXPECT_EQ(XML_Parser_ByFile(file.path(), log.handler()), XML_RET_OK);
    EXPECT_EQ(log.text(), whole.text());
}

// Cut after every byte: never well-formed, never read beyond, one report.
TEST(Scanner, InputMayEndAnywhere)
{
    const std::string document =
        "<?xml version='1.0' encoding='UTF-8' standalone='yes'?><!DOCTYPE a [ ]><!-- c --><?pi d?>"
        "<p:a xmlns:p='u' x='&lt;&#x4e2d;'>t&amp;\xE4\xB8\xAD<b/><![CDATA[x]]></p:a>";
    for (std::size_t size = 1; size < document.size(); ++size) {
        const GuardedBytes block{document.substr(0, size)};
        EventLog log;
        EXPECT_EQ(XML_Parser_ByMem(block.data(), static_cast<uint32_t>(size), log.handler()),
                  XML_RET_FAIL);
        EXPECT_NE(log.error(), 0u) << size;
    }
}

// Folded to eight bytes, this name looks like "xmlns".
TEST(Scan, ANameIsNoDeclarationByItsFoldedBytes)
{
    for (const char* tag : {"<a tGDbXlnLXascbPAa='v'>", "<a tGDbXlnLXascbPAa=''>"}) {
        std::string document = tag;
        for (int i = 0; i < 20; ++i) document += "<c/>";
        document += "</a>";
        XML_DOM_Node* root =
            XML_DOM_BuildTreeByMem(reinterpret_cast<const uint8_t*>(document.data()),
                                   static_cast<uint32_t>(document.size()), 0, nullptr);
        ASSERT_NE(root, nullptr);
        EXPECT_NE(XML_DOM_GetNodeAttrValByName(root, "tGDbXlnLXascbPAa"), nullptr);
        XML_DOM_DelNode(root);
    }
    std::string document = "<a tGDbXlnLXascbPAa:p='v'>";
    for (int i = 0; i < 20; ++i) document += "<c/>";
    document += "</a>";
    char error[200] = "";
    EXPECT_EQ(XML_DOM_BuildTreeByMem(reinterpret_cast<const uint8_t*>(document.data()),
                                     static_cast<uint32_t>(document.size()), sizeof error, error),
              nullptr);
    EXPECT_NE(std::string{error}.find("namespace prefix is not defined."), std::string::npos);
}

// The parser's own records are shown while the start tag that has them is, and at no other event.
TEST(Scanner, ShowsAttributeRecordsDuringTheirEventOnly)
{
    struct Seen {
        static void note(XML_Parser* parser)
        {
            *static_cast<std::string*>(parser->handler->userData) +=
                parser->pendingAttributes ? '1' : '0';
        }
        static void start(XML_Parser* parser, const char*, const char*, const char*, uint32_t,
                          const char**, uint32_t, uint32_t, const char**)
        {
            note(parser);
        }
        static void end(XML_Parser* parser, const char*, const char*, const char*) { note(parser); }
        static void text(XML_Parser* parser, const char*, uint32_t) { note(parser); }
    };
    std::string seen;
    XML_SAX_Handler handler{};
    handler.startElementNs = Seen::start;
    handler.endElementNs = Seen::end;
    handler.characters = Seen::text;
    handler.userData = &seen;
    const std::string document = "<a x='1'>t<b/>u<\xE4\xB8\xAD y='2'/>v<c z='3'/></a>";
    EXPECT_EQ(XML_Parser_ByMem(bytesOf(document), static_cast<uint32_t>(document.size()), &handler),
              XML_RET_OK);
    EXPECT_EQ(seen, "10000100100");
}

}  // namespace
