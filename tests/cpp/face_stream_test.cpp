// Reading events and writing pieces through the C++ face.
#include "netxml/netxml.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/random.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

using netxml::Document;
using netxml::ErrorKind;
using netxml::Status;
using netxml::Writer;

namespace {

// -- Reading -------------------------------------------------------------------------------------

struct Log {
    std::string text;
    std::string stopAt;

    void startDocument() { text += "start;"; }
    void endDocument() { text += "end;"; }
    bool startElement(const netxml::StartTag& tag)
    {
        text += '<' + std::string{tag.prefix} + ':' + std::string{tag.name} + '{' +
                std::string{tag.namespaceName} + '}';
        for (const netxml::EventDeclaration declared : tag.declarations)
            text += " !" + std::string{declared.prefix} + '=' + std::string{declared.namespaceName};
        for (const netxml::EventAttribute attribute : tag.attributes)
            text += " @" + std::string{attribute.prefix} + ':' + std::string{attribute.name} + '{' +
                    std::string{attribute.namespaceName} + "}=" + std::string{attribute.value};
        text += '>';
        return tag.name != stopAt;
    }
    void endElement(const netxml::EndTag& tag) { text += "</" + std::string{tag.name} + '>'; }
    void cdata(std::string_view data) { text += '[' + std::string{data} + ']'; }
    void comment(std::string_view data) { text += "--" + std::string{data} + "--"; }
    void instruction(std::string_view target, std::string_view data)
    {
        text += '?' + std::string{target} + ' ' + std::string{data} + '?';
    }
    bool is(std::string_view expected) const { return text == expected; }
};

struct OnlyText {
    std::string all;
    bool text(std::string_view piece)
    {
        all += piece;
        return piece != "stop";
    }
};

constexpr std::string_view kEvents =
    "<?xml version='1.0'?><a xmlns='u' xmlns:o='v' b='&lt;é' o:c=''><!--x--><?p d?><?q?>"
    "<o:名/><![CDATA[<>]]>t</a>";

TEST(FaceReader, TellsEveryEvent)
{
    constexpr std::string_view kExpected =
        "start;<:a{u} !=u !o=v @:b{}=<é @o:c{v}=>--x--?p d??q ?<o:名{v}></名>[<>]</a>end;";
    Log block;
    EXPECT_TRUE(netxml::read(kEvents, block));
    EXPECT_EQ(block.text, kExpected);
    Log pieces;
    EXPECT_TRUE(netxml::read({kEvents.substr(0, 50), kEvents.substr(50)}, pieces));
    EXPECT_EQ(pieces.text, kExpected);
    OnlyText literals;
    EXPECT_TRUE(netxml::read({"<a>x", "y</a>"}, literals));
    EXPECT_EQ(literals.all, "xy");
    const TempFile file{kEvents};
    Log whole;
    EXPECT_TRUE(netxml::readFile(file.path(), whole));
    EXPECT_EQ(whole.text, kExpected);
    OnlyText text;
    EXPECT_TRUE(netxml::read(kEvents, text));
    EXPECT_EQ(text.all, "t");
}

TEST(FaceReader, FindsAttributesOfATag)
{
    struct Names {
        std::string found;
        void startElement(const netxml::StartTag& tag)
        {
            found += std::string{tag.attribute("b").value_or("none")};
            EXPECT_FALSE(tag.attribute("c")) << "is in a namespace";
        }
    } names;
    EXPECT_TRUE(netxml::read("<a xmlns:o='v' b='1' o:c='2'><d/></a>", names));
    EXPECT_EQ(names.found, "1none");
}

TEST(FaceReader, StopsWhereItIsTold)
{
    Log log;
    log.stopAt = "b";
    const Status status = netxml::read("<a>\n<b/><c/></a>", log);
    EXPECT_EQ(status.error().kind, ErrorKind::Stopped);
    EXPECT_EQ(status.error().line, 2u);
    EXPECT_EQ(log.text, "start;<:a{}><:b{}>");
    OnlyText text;
    EXPECT_EQ(netxml::read("<a>go<b/>stop<b/>on</a>", text).error().kind, ErrorKind::Stopped);
    EXPECT_EQ(text.all, "gostop");
}

TEST(FaceReader, TellsWhatIsWrongAndWhere)
{
    Log log;
    const Status status = netxml::read("<a>\n<é></b></a>", log);
    EXPECT_EQ(status.error().kind, ErrorKind::Syntax);
    EXPECT_EQ(status.error().what(), "2:6: tag name mismatch. [76]");
    EXPECT_EQ(status.error().excerpt, "<a>\n<é></b></a>");
    EXPECT_EQ(netxml::read("", log).error().what(), "1:1: document is empty. [4]");
    EXPECT_EQ(netxml::read(netxml::Chunks{}, log).error().what(), "1:1: document is empty. [4]");
    EXPECT_EQ(netxml::readFile("/nowhere", log).error().what(), "cannot open /nowhere");
}

TEST(FaceReader, FailsWithAnErrorWhicheverAllocationFails)
{
    const std::string text = "<a b='1' c='2'><b>" + std::string(5000, 'x') + "&lt;</b></a>";
    for (unsigned allowed = 0;; ++allowed) {
        ASSERT_LT(allowed, 60u);
        OnlyText handler;
        const FailingHeap heap{allowed};
        const Status status = netxml::read({text, "", ""}, handler);
        if (status) {
            EXPECT_GT(allowed, 0u);
            break;
        }
        EXPECT_EQ(status.error().kind, ErrorKind::Memory) << status.error();
        EXPECT_EQ(FailingHeap::liveBlocks(), 0);
    }
}

// -- Writing -------------------------------------------------------------------------------------

struct WriteCase {
    const char* why;
    std::function<void(Writer&)> write;
    const char* text;  // or nullptr: refused
    ErrorKind kind;
};

// clang-format off
const WriteCase kWrites[] = {
    {"an empty root", [](Writer& w) { w.start("a").end(); }, "<a/>", {}},
    {"a text", [](Writer& w) { w.start("a").text("x").end(); }, "<a>x</a>", {}},
    {"an empty text", [](Writer& w) { w.start("a").text("").end(); }, "<a></a>", {}},
    {"escapes", [](Writer& w) { w.start("a").text("<&>\"'é").end(); }, "<a>&lt;&amp;&gt;\"'é</a>", {}},
    {"blanks at the ends", [](Writer& w) { w.start("a").text(" x y\n").end(); }, "<a>&#x20;x y&#x0a;</a>", {}},
    {"attributes", [](Writer& w) { w.start("a").attribute("b", "1").attribute("名", "<é>").end(); }, "<a b=\"1\" 名=\"&lt;é&gt;\"/>", {}},
    {"quotes in a value", [](Writer& w) { w.start("a").attribute("b", "\"x\" \"").end(); }, "<a b=\"&quot;x&quot;&#x20;&quot;\"/>", {}},
    {"blanks that a parser changes in a value", [](Writer& w) { w.start("a").attribute("b", "1\t2\n3\r4 5").end(); }, "<a b=\"1&#x09;2&#x0a;3&#x0d;4 5\"/>", {}},
    {"blanks that a parser changes in a text", [](Writer& w) { w.start("a").text("1\t2\n3\r4 5").end(); }, "<a>1\t2\n3&#x0d;4 5</a>", {}},
    {"children", [](Writer& w) { w.start("a").element("b", "1").element("c", "").start("d").end().end(); }, "<a><b>1</b><c/><d/></a>", {}},
    {"comments all over", [](Writer& w) { w.comment("1").start("a").comment("2").end().comment("3"); }, "<!--1--><a><!--2--></a><!--3-->", {}},
    {"a CDATA section", [](Writer& w) { w.start("a").cdata("<&").end(); }, "<a><![CDATA[<&]]></a>", {}},
    {"the end of one in it", [](Writer& w) { w.start("a").cdata("x]]>y]]>").end(); }, "<a><![CDATA[x]]]]><![CDATA[>y]]]]><![CDATA[>]]></a>", {}},
    {"a declaration", [](Writer& w) { w.start("o:a").declare("o", "u").attribute("o:b", "1").end(); }, "<o:a xmlns:o=\"u\" o:b=\"1\"/>", {}},
    {"a namespace declares", [](Writer& w) { w.start({"o:a", "u"}).start({"o:b", "u"}).start({"o:c", "v"}).end().end().end(); }, "<o:a xmlns:o=\"u\"><o:b><o:c xmlns:o=\"v\"/></o:b></o:a>", {}},
    {"a default namespace", [](Writer& w) { w.start({"a", "u"}).start({"b", ""}).start("c").end().end().end(); }, "<a xmlns=\"u\"><b xmlns=\"\"><c/></b></a>", {}},
    {"a prefix that is declared as it is", [](Writer& w) { w.start({"o:a", "u"}).start({"o:b", "u"}).declare("o", "u").end().end(); }, "<o:a xmlns:o=\"u\"><o:b xmlns:o=\"u\"/></o:a>", {}},
    {"a prefix that is declared otherwise, with no word on the namespace", [](Writer& w) { w.start({"o:a", "u"}).start("o:b").declare("o", "v").end().end(); }, "<o:a xmlns:o=\"u\"><o:b xmlns:o=\"v\"/></o:a>", {}},
    {"an attribute's prefix that is declared otherwise", [](Writer& w) { w.start({"o:a", "u"}).start("b").attribute({"o:c", "v"}, "1").end().end(); }, "<o:a xmlns:o=\"u\"><b xmlns:o=\"v\" o:c=\"1\"/></o:a>", {}},
    {"no namespace where there is none", [](Writer& w) { w.start({"a", ""}).end(); }, "<a/>", {}},
    {"an attribute's namespace", [](Writer& w) { w.start("a").attribute({"o:b", "u"}, "1").attribute({"p:b", "v"}, "2").end(); }, "<a xmlns:o=\"u\" xmlns:p=\"v\" o:b=\"1\" p:b=\"2\"/>", {}},
    {"xml is declared", [](Writer& w) { w.start("a").attribute("xml:lang", "zh").end(); }, "<a xml:lang=\"zh\"/>", {}},
    {"prefixes end with their element", [](Writer& w) { w.start("a").start({"o:b", "u"}).end().start({"o:b", "u"}).end().end(); }, "<a><o:b xmlns:o=\"u\"/><o:b xmlns:o=\"u\"/></a>", {}},

    {"nothing", [](Writer&) {}, nullptr, ErrorKind::Misuse},
    {"a comment alone", [](Writer& w) { w.comment("x"); }, nullptr, ErrorKind::Misuse},
    {"not ended", [](Writer& w) { w.start("a"); }, nullptr, ErrorKind::Misuse},
    {"an end without a start", [](Writer& w) { w.end(); }, nullptr, ErrorKind::Misuse},
    {"an end too many", [](Writer& w) { w.start("a").end().end(); }, nullptr, ErrorKind::Misuse},
    {"two roots", [](Writer& w) { w.start("a").end().start("b").end(); }, nullptr, ErrorKind::Misuse},
    {"an attribute behind a text", [](Writer& w) { w.start("a").text("x").attribute("b", "1").end(); }, nullptr, ErrorKind::Misuse},
    {"an attribute behind a child", [](Writer& w) { w.start("a").element("b", "").attribute("b", "1").end(); }, nullptr, ErrorKind::Misuse},
    {"an attribute without an element", [](Writer& w) { w.attribute("b", "1"); }, nullptr, ErrorKind::Misuse},
    {"a declaration behind a text", [](Writer& w) { w.start("a").text("x").declare("o", "u").end(); }, nullptr, ErrorKind::Misuse},
    {"a text before the root", [](Writer& w) { w.text("x").start("a").end(); }, nullptr, ErrorKind::Misuse},
    {"a CDATA section behind the root", [](Writer& w) { w.start("a").end().cdata("x"); }, nullptr, ErrorKind::Misuse},
    {"an attribute twice", [](Writer& w) { w.start("a").attribute("b", "1").attribute("c", "1").attribute("b", "2").end(); }, nullptr, ErrorKind::Misuse},
    {"an attribute twice by two prefixes", [](Writer& w) { w.start("a").attribute({"o:b", "u"}, "1").attribute({"p:b", "u"}, "2").end(); }, nullptr, ErrorKind::Misuse},
    {"a prefix declared twice", [](Writer& w) { w.start("a").declare("o", "u").declare("o", "v").end(); }, nullptr, ErrorKind::Misuse},
    {"a prefix declared otherwise than its element wants", [](Writer& w) { w.start({"o:a", "u"}).start({"o:b", "u"}).declare("o", "v").end().end(); }, nullptr, ErrorKind::Misuse},
    {"by an attribute", [](Writer& w) { w.start({"o:a", "u"}).start({"o:b", "u"}).attribute({"o:c", "v"}, "1").end().end(); }, nullptr, ErrorKind::Misuse},
    {"by an attribute, of an element with no word on it", [](Writer& w) { w.start({"o:a", "u"}).start("o:b").attribute({"o:c", "v"}, "1").end().end(); }, nullptr, ErrorKind::Misuse},
    {"otherwise than an attribute wants", [](Writer& w) { w.start({"o:a", "u"}).start("b").attribute({"o:c", "u"}, "1").declare("o", "v").end().end(); }, nullptr, ErrorKind::Misuse},
    {"a default namespace that the element does not want", [](Writer& w) { w.start({"a", "u"}).start({"b", "u"}).declare("", "v").end().end(); }, nullptr, ErrorKind::Misuse},
    {"a default namespace where none is wanted", [](Writer& w) { w.start({"a", ""}).declare("", "v").end(); }, nullptr, ErrorKind::Misuse},
    {"an undeclared prefix", [](Writer& w) { w.start("o:a").end(); }, nullptr, ErrorKind::Argument},
    {"an undeclared prefix of an attribute", [](Writer& w) { w.start("a").attribute("o:b", "1").text("x").end(); }, nullptr, ErrorKind::Argument},
    {"no name", [](Writer& w) { w.start("1a").end(); }, nullptr, ErrorKind::Argument},
    {"no name of an attribute", [](Writer& w) { w.start("a").attribute("", "1").end(); }, nullptr, ErrorKind::Argument},
    {"two colons", [](Writer& w) { w.start({"a:b:c", "u"}).end(); }, nullptr, ErrorKind::Argument},
    {"xmlns as an attribute", [](Writer& w) { w.start("a").attribute("xmlns", "1").end(); }, nullptr, ErrorKind::Argument},
    {"xmlns as a prefix", [](Writer& w) { w.start("a").attribute("xmlns:o", "1").end(); }, nullptr, ErrorKind::Argument},
    {"a prefix for nothing", [](Writer& w) { w.start("a").declare("o", "").end(); }, nullptr, ErrorKind::Argument},
    {"a namespace without a prefix", [](Writer& w) { w.start("a").attribute({"b", "u"}, "1").end(); }, nullptr, ErrorKind::Argument},
    {"hyphens in a comment", [](Writer& w) { w.start("a").comment("x--y").end(); }, nullptr, ErrorKind::Argument},
    {"a hyphen that ends a comment", [](Writer& w) { w.start("a").comment("x-").end(); }, nullptr, ErrorKind::Argument},
    {"a control character", [](Writer& w) { w.start("a").text("x\x01").end(); }, nullptr, ErrorKind::Argument},
    {"a zero", [](Writer& w) { w.start("a").text(std::string_view{"x\0y", 3}).end(); }, nullptr, ErrorKind::Argument},
    {"no UTF-8", [](Writer& w) { w.start("a").text("\xC3(").end(); }, nullptr, ErrorKind::Argument},
    {"cut short", [](Writer& w) { w.start("a").text("\xE4\xB8").end(); }, nullptr, ErrorKind::Argument},
    {"too long a form", [](Writer& w) { w.start("a").cdata("\xE0\x80\xAF").end(); }, nullptr, ErrorKind::Argument},
    {"a surrogate", [](Writer& w) { w.start("a").attribute("b", "\xED\xA0\x80").end(); }, nullptr, ErrorKind::Argument},
    {"U+FFFE", [](Writer& w) { w.start("a").comment("\xEF\xBF\xBE").end(); }, nullptr, ErrorKind::Argument},
    {"beyond Unicode", [](Writer& w) { w.start("a").text("\xF4\x90\x80\x80").end(); }, nullptr, ErrorKind::Argument},
};
// clang-format on

TEST(FaceWriter, WritesWhatIsWellFormedAndNothingElse)
{
    for (const WriteCase& row : kWrites) {
        std::string text;
        Writer writer{text, {XML_ENCODING_UTF_8, false}};
        row.write(writer);
        const Status status = writer.finish();
        EXPECT_EQ(static_cast<bool>(status), row.text != nullptr) << row.why << status.error();
        if (row.text) {
            EXPECT_EQ(text, row.text) << row.why;
            EXPECT_TRUE(Document::parse(text)) << row.why;
        } else {
            EXPECT_EQ(status.error().kind, row.kind) << row.why << ": " << status.error();
            const std::string before = text;
            writer.start("a").text("x").end();
            EXPECT_EQ(text, before) << row.why;
            EXPECT_EQ(writer.finish().error().message, status.error().message) << row.why;
        }
    }
}

void writeSample(Writer& writer)
{
    writer.start("a").attribute("b", "中").text("中\"").end();
    const Status status = writer.finish();
    EXPECT_TRUE(status) << status.error();
}

TEST(FaceWriter, WritesToAnySink)
{
    constexpr std::string_view kSample =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?><a b=\"中\">中\"</a>";
    std::string string;
    Writer toString{string};
    writeSample(toString);
    EXPECT_EQ(string, kSample);

    const TempFile file;
    std::FILE* open = std::fopen(file.path(), "wb");
    Writer toFile{open};
    writeSample(toFile);
    std::fclose(open);
    EXPECT_EQ(file.content(), kSample);

    std::string pieces;
    const auto take = [&](std::string_view piece) { pieces += piece; };
    Writer toCallable{take};
    writeSample(toCallable);
    EXPECT_EQ(pieces, kSample);

    static std::string called;
    struct Plain {
        static void take(std::string_view piece) { called += piece; }
    };
    Writer toFunction{Plain::take};
    writeSample(toFunction);
    EXPECT_EQ(called, kSample);

    Writer toNothing{static_cast<std::FILE*>(nullptr)};
    EXPECT_EQ(toNothing.start("a").end().finish().error().kind, ErrorKind::File);

    auto refuse = [left = 3](std::string_view) mutable { return left-- != 0; };
    Writer toFailing{refuse};
    EXPECT_EQ(toFailing.start("a").end().finish().error().kind, ErrorKind::File);
}

TEST(FaceWriter, WritesInAnyEncoding)
{
    for (XML_Encoding encoding = 0; encoding != XML_ENCODING_NONE; ++encoding) {
        std::string text;
        Writer writer{text, {encoding, true}};
        writeSample(writer);
        const netxml::Result<Document> document = Document::parse(text);
        ASSERT_TRUE(document) << XML_DOM_EncodingEnumToStr(encoding) << ' ' << document.error();
        EXPECT_EQ(document->root().text(), "中\"");
        EXPECT_EQ(document->root().attribute("b").value(), "中");
    }
    std::string text;
    Writer lacking{text, {XML_ENCODING_GB2312, true}};
    EXPECT_EQ(lacking.start("a").text("\U0001F4A9").end().finish().error().kind,
              ErrorKind::Encoding);
    Writer none{text, {XML_ENCODING_NONE, true}};
    EXPECT_EQ(none.start("a").end().finish().error().kind, ErrorKind::Encoding);
}

// Writes a tree as it stands, through a writer.
void copyTo(Writer& writer, netxml::ConstElement top)
{
    netxml::ConstElement open = top;
    const auto begin = [&](netxml::ConstElement element) {
        writer.start({element.name(), element.namespaceName()});
        for (const netxml::Attribute attribute : element.attributes())
            writer.attribute(attribute.name(), attribute.value());
    };
    begin(top);
    for (const netxml::ConstNode node : top.descendants()) {
        for (; open != node.parent(); open = open.parent()) writer.end();
        if (const netxml::ConstElement element = node.asElement()) begin(open = element);
        else if (node.asText().isCData()) writer.cdata(node.asText().value());
        else writer.text(node.asText().value());
    }
    for (; open != top; open = open.parent()) writer.end();
    writer.end();
}

TEST(FaceWriter, WhatItWritesIsReadAsItWas)
{
    Random random{20261};
    for (std::size_t round = randomRounds(300); round != 0; --round) {
        netxml::Result<Document> made = Document::create({"r", "u"});
        ASSERT_TRUE(made);
        std::vector<netxml::Element> elements{made->root()};
        for (std::size_t left = random.below(30); left != 0; --left) {
            const netxml::Element at = random.anyOf(elements);
            const std::string text =
                random.one<const char*>({"x", " ", "\"'<>&", "中 é", "]]>", "\n\t", "0"});
            switch (random.below(4)) {
            case 0:
                elements.push_back(at.addElement({random.one<const char*>({"a", "名"}),
                                                  random.one<const char*>({"u", "v", ""})})
                                       .value());
                break;
            case 1: ASSERT_TRUE(at.addText(text)); break;
            case 2:
                ASSERT_TRUE(at.setAttribute(random.one<const char*>({"b", "c", "属"}), text));
                break;
            default: ASSERT_TRUE(at.addCData(text.find("]]>") ? text : "c")); break;
            }
        }
        std::string text;
        Writer writer{text};
        copyTo(writer, made->root());
        ASSERT_TRUE(writer.finish()) << writer.status().error();
        const netxml::Result<Document> again = Document::parse(text);
        ASSERT_TRUE(again) << again.error() << text;
        std::string second;
        Writer rewriter{second};
        copyTo(rewriter, again->root());
        ASSERT_TRUE(rewriter.finish());
        // Texts side by side become one; a second writing shows whether that changed anything.
        const auto log = [](const Document& document) {
            std::string all;
            for (const netxml::ConstNode node : document.root().descendants()) {
                const netxml::ConstElement element = node.asElement();
                if (element) all += '<' + element.name().str() + element.namespaceName().str();
                for (const netxml::Attribute attribute : element.attributes())
                    all += '@' + attribute.name().str() + '=' + attribute.value().str();
                if (!element) all += node.asText().value().str();
            }
            return all;
        };
        EXPECT_EQ(log(*again), log(*made)) << text;
        EXPECT_EQ(log(Document::parse(second).value()), log(*made)) << second;
    }
}

}  // namespace
