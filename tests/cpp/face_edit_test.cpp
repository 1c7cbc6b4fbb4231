// Documents and editing through the C++ face.
#include "netxml/netxml.hpp"
#include "tests/cpp/parsed.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <functional>

using netxml::Document;
using netxml::Element;
using netxml::Error;
using netxml::ErrorKind;
using netxml::Node;
using netxml::Result;
using netxml::Status;

namespace {

// Texts that were written: blocks that the library made and the face has freed, which the counting
// heap does not see.
long handedOut = 0;

std::string written(const Document& document)
{
    ++handedOut;
    const Result<std::string> text = document.write(XML_DOM_WRITE_NO_DECLARATION);
    return text ? *text : text.error().what();
}

template <class T>
Status statusOf(const Result<T>& result)
{
    return result ? Status{} : Status{result.error()};
}

// The thread's converters stay, so both are there before anything is counted.
void warmConverters()
{
    const Document document = Document::create("名").value();
    EXPECT_EQ(document.root().name(), "名");
}

// -- Documents -----------------------------------------------------------------------------------

struct ParseCase {
    const char* why;
    std::string text;
    ErrorKind kind;
    const char* what;
    const char* excerpt;
};

// clang-format off
const ParseCase kRefused[] = {
    // why                               text                            kind                what                                            excerpt
    {"nothing",                          "",                             ErrorKind::Syntax,  "1:1: document is empty. [4]",                   ""},
    {"a tag that is not the open one",   "<a>\n  <b></c></a>",           ErrorKind::Syntax,  "2:8: tag name mismatch. [76]",                  "<a>\n  <b></c></a>"},
    {"an excerpt that looks like its end", "<a b='\", c'></d>",          ErrorKind::Syntax,  "1:15: tag name mismatch. [76]",                 "<a b='\", c'></d>"},
    {"an excerpt beyond ASCII",          "<名></称>",                    ErrorKind::Syntax,  "1:6: tag name mismatch. [76]",                  "<名></称>"},
    {"an encoding of another world",     "<?xml version='1.0' encoding='EBCDIC'?><a/>", ErrorKind::Syntax, "1:37: unsupported encoding. [32]", nullptr},
    {"a character that no tree holds",   "<a>\n\xEE\x9E\x8D</a>",        ErrorKind::Encoding, "2:2: a tree cannot hold a character here, or memory ran out.", nullptr},
    {"in an attribute, further down",    "<a><b c='1'/><b c='\xEE\x9E\x8D'/></a>", ErrorKind::Encoding, "1:22: a tree cannot hold a character here, or memory ran out.", nullptr},
};
// clang-format on

TEST(FaceDocument, TellsWhatIsWrongAndWhere)
{
    for (const ParseCase& row : kRefused) {
        const Result<Document> block = Document::parse(row.text);
        const Result<Document> pieces =
            Document::parse({std::string_view{row.text}.substr(0, row.text.size() / 2),
                             std::string_view{row.text}.substr(row.text.size() / 2)});
        const TempFile file{row.text};
        const Result<Document> whole = Document::parseFile(file.path());
        for (const Result<Document>* result : {&block, &pieces, &whole}) {
            ASSERT_FALSE(*result) << row.why;
            if (result == &whole && row.text.empty()) continue;  // an empty file, below
            const Error& error = result->error();
            EXPECT_EQ(error.kind, row.kind) << row.why << ": " << error;
            if (row.what) {
                EXPECT_EQ(error.what(), row.what) << row.why;
            }
            if (row.excerpt) {
                EXPECT_EQ(error.excerpt, row.excerpt) << row.why;
            }
        }
    }
    const TempFile nothing;
    EXPECT_EQ(Document::parseFile(nothing.path()).error().what(), "1:1: document is empty. [4]");
}

TEST(FaceDocument, IsParsedFromAnySource)
{
    constexpr std::string_view kText = "<a><名 b='1'>x</名></a>";
    const TempFile file{kText};
    const std::vector<std::string> strings{"<a><\xE5", "\x90\x8D b='1'>x</名", "></a>"};
    EXPECT_EQ(written(parsed(kText)), "<a><名 b=\"1\">x</名></a>");
    EXPECT_EQ(written(Document::parse(netxml::Chunks{strings}).value()), written(parsed(kText)));
    EXPECT_EQ(written(Document::parseFile(file.path()).value()), written(parsed(kText)));
    const char* const begin = "<a>";
    EXPECT_EQ(written(Document::parse({begin, "</a>"}).value()), "<a/>");
    EXPECT_EQ(written(Document::parse({"<a>", "x", "</a>"}).value()), "<a>x</a>");
    EXPECT_EQ(written(Document::parse({begin, std::string_view{"</a>"}}).value()), "<a/>");
    EXPECT_EQ(written(Document::parse({strings[0], strings[1], strings[2]}).value()),
              written(parsed(kText)));
    EXPECT_EQ(written(Document::parse({"<a/><b/>", 4}).value()), "<a/>") << "a text of that size";
    EXPECT_EQ(written(Document::parse({"<a/>"}).value()), "<a/>");
    const Result<Document> missing = Document::parseFile("/nowhere/at/all.xml");
    EXPECT_EQ(missing.error().kind, ErrorKind::File);
    EXPECT_EQ(missing.error().what(), "cannot open /nowhere/at/all.xml");
}

TEST(FaceDocument, IsEmptyOnceMoved)
{
    Document first = parsed("<a><b/></a>");
    const Element root = first.root();
    Document second = std::move(first);
    EXPECT_EQ(second.root(), root) << "handles stay good";
    EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move)
    EXPECT_FALSE(first.root());
    EXPECT_EQ(first.write().error().kind, ErrorKind::Misuse);
    EXPECT_EQ(first.writeAs(XML_ENCODING_GBK).error().kind, ErrorKind::Misuse);
    EXPECT_EQ(first.setEncoding(XML_ENCODING_GBK).error().kind, ErrorKind::Misuse);
    EXPECT_EQ(first.find("/a").error().kind, ErrorKind::NotFound);
    EXPECT_EQ(first.encoding(), static_cast<XML_Encoding>(XML_ENCODING_NONE));
    EXPECT_EQ(first.root().addElement("b").error().kind, ErrorKind::Misuse);
    first = std::move(second);
    EXPECT_EQ(written(first), "<a><b/></a>");
    XML_DOM_Node* released = first.release();
    EXPECT_FALSE(first);
    EXPECT_EQ(written(Document::adopt(released)), "<a><b/></a>");
}

TEST(FaceDocument, IsCreated)
{
    EXPECT_EQ(Document::create("a").value().write().value(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?><a/>");
    EXPECT_EQ(written(Document::create({"名", "urn:é"}, "x").value()),
              "<名 xmlns=\"urn:é\">x</名>");
    EXPECT_EQ(written(Document::create({"o:a", "urn:o"}).value()), "<o:a xmlns:o=\"urn:o\"/>");
    EXPECT_EQ(Document::create("o:a").error().kind, ErrorKind::Argument);
    EXPECT_EQ(Document::create("1").error().kind, ErrorKind::Argument);
    EXPECT_EQ(Document::create({"o:a", "http://www.w3.org/2000/xmlns/"}).error().kind,
              ErrorKind::Argument);
    EXPECT_EQ(Document::create("a", std::string_view{"\0", 1}).error().kind, ErrorKind::Argument);
}

TEST(FaceDocument, IsWrittenInAnyEncoding)
{
    Document document = parsed("<a>中</a>");
    EXPECT_EQ(document.writeAs(XML_ENCODING_GBK).value(),
              "<?xml version=\"1.0\" encoding=\"GBK\"?><a>\xD6\xD0</a>");
    EXPECT_EQ(document.encoding(), static_cast<XML_Encoding>(XML_ENCODING_UTF_8));
    EXPECT_TRUE(document.setEncoding(XML_ENCODING_GB2312));
    EXPECT_EQ(document.write(XML_DOM_WRITE_NO_DECLARATION).value(), "<a>\xD6\xD0</a>");
    EXPECT_EQ(document.setEncoding(XML_ENCODING_NONE).error().kind, ErrorKind::Argument);
    ASSERT_TRUE(document.root().addText("\U0001F4A9"));
    EXPECT_EQ(document.write().error().kind, ErrorKind::Encoding);
    const TempFile file{"before"};
    EXPECT_EQ(document.writeFile(file.path()).error().kind, ErrorKind::Encoding);
    EXPECT_EQ(file.content(), "before");
    ASSERT_TRUE(document.setEncoding(XML_ENCODING_UTF_8));
    EXPECT_TRUE(document.writeFile(file.path(), XML_DOM_WRITE_NO_DECLARATION));
    EXPECT_EQ(file.content(), "<a>中\U0001F4A9</a>");
    EXPECT_EQ(document.writeFile("/nowhere/at/all.xml").error().kind, ErrorKind::File);
    EXPECT_EQ(document.writeFile("/dev/full").error().kind, ErrorKind::File);
}

// -- Editing -------------------------------------------------------------------------------------

struct EditCase {
    const char* why;
    const char* document;
    std::function<Status(Element)> edit;
    const char* after;  // nullptr: refused, and nothing has changed
    ErrorKind kind;
};

// clang-format off
const EditCase kEdits[] = {
    {"add an element", "<a/>", [](Element a) { return statusOf(a.addElement("b")); }, "<a><b/></a>", {}},
    {"with a text", "<a><c/></a>", [](Element a) { return statusOf(a.addElement("b", "é<")); }, "<a><c/><b>é&lt;</b></a>", {}},
    {"beyond ASCII", "<a/>", [](Element a) { return statusOf(a.addElement("名", "中")); }, "<a><名>中</名></a>", {}},
    {"a long name", "<a/>", [](Element a) { return statusOf(a.addElement(std::string(300, 'n'), std::string(3000, 'v'))); }, "LONG", {}},
    {"no name", "<a/>", [](Element a) { return statusOf(a.addElement("1")); }, nullptr, ErrorKind::Argument},
    {"an empty name", "<a/>", [](Element a) { return statusOf(a.addElement("")); }, nullptr, ErrorKind::Argument},
    {"two colons", "<a xmlns:b='u'/>", [](Element a) { return statusOf(a.addElement("b:c:d")); }, nullptr, ErrorKind::Argument},
    {"a zero in a name", "<a/>", [](Element a) { return statusOf(a.addElement(std::string_view{"b\0c", 3})); }, nullptr, ErrorKind::Argument},
    {"a zero in a text", "<a/>", [](Element a) { return statusOf(a.addText(std::string_view{"\0", 1})); }, nullptr, ErrorKind::Argument},
    {"no UTF-8", "<a/>", [](Element a) { return statusOf(a.addText("\xC3")); }, nullptr, ErrorKind::Encoding},
    {"no form in a tree", "<a/>", [](Element a) { return statusOf(a.addText("\xEE\x9E\x8D")); }, nullptr, ErrorKind::Encoding},
    {"after a text cut short comes a whole one", "<a/>", [](Element a) { EXPECT_FALSE(a.addText("\xE4\xB8")); return statusOf(a.addText("中")); }, "<a>中</a>", {}},
    {"a prefix in scope", "<a xmlns:o='u'><b/></a>", [](Element a) { return statusOf(a.child("b").addElement("o:c")); }, "<a xmlns:o=\"u\"><b><o:c/></b></a>", {}},
    {"no such prefix", "<a/>", [](Element a) { return statusOf(a.addElement("o:c")); }, nullptr, ErrorKind::Argument},
    {"declared where it is missing", "<a/>", [](Element a) { return statusOf(a.addElement({"o:c", "u"})); }, "<a><o:c xmlns:o=\"u\"/></a>", {}},
    {"declared otherwise above", "<a xmlns:o='u'/>", [](Element a) { return statusOf(a.addElement({"o:c", "v"})); }, "<a xmlns:o=\"u\"><o:c xmlns:o=\"v\"/></a>", {}},
    {"declared so above", "<a xmlns:o='u'/>", [](Element a) { return statusOf(a.addElement({"o:c", "u"})); }, "<a xmlns:o=\"u\"><o:c/></a>", {}},
    {"another default namespace", "<a xmlns='u'/>", [](Element a) { return statusOf(a.addElement({"c", "v"})); }, "<a xmlns=\"u\"><c xmlns=\"v\"/></a>", {}},
    {"the same default namespace", "<a xmlns='u'/>", [](Element a) { return statusOf(a.addElement({"c", "u"})); }, "<a xmlns=\"u\"><c/></a>", {}},
    {"out of the default namespace", "<a xmlns='u'/>", [](Element a) { return statusOf(a.addElement({"c", ""})); }, "<a xmlns=\"u\"><c xmlns=\"\"/></a>", {}},
    {"a prefix for no namespace", "<a/>", [](Element a) { return statusOf(a.addElement({"o:c", ""})); }, nullptr, ErrorKind::Argument},
    {"xml needs no declaration", "<a/>", [](Element a) { return a.setAttribute("xml:lang", "zh"); }, "<a xml:lang=\"zh\"/>", {}},
    {"xmlns is no prefix", "<a/>", [](Element a) { return a.setAttribute("xmlns:o", "u"); }, nullptr, ErrorKind::Argument},

    {"a text", "<a><b/></a>", [](Element a) { return statusOf(a.addText("x")); }, "<a><b/>x</a>", {}},
    {"a CDATA section", "<a/>", [](Element a) { return statusOf(a.addCData("<x>")); }, "<a><![CDATA[<x>]]></a>", {}},
    {"before", "<a><b/></a>", [](Element a) { return statusOf(a.child("b").insertElementBefore("c")); }, "<a><c/><b/></a>", {}},
    {"after the last", "<a><b/></a>", [](Element a) { return statusOf(a.child("b").insertElementAfter("c")); }, "<a><b/><c/></a>", {}},
    {"after the first", "<a><b/><d/></a>", [](Element a) { return statusOf(a.child("b").insertElementAfter("c")); }, "<a><b/><c/><d/></a>", {}},
    {"a text before", "<a><b/></a>", [](Element a) { return statusOf(a.child("b").insertTextBefore("x")); }, "<a>x<b/></a>", {}},
    {"a text after", "<a><b/><d/></a>", [](Element a) { return statusOf(a.child("b").insertTextAfter("x")); }, "<a><b/>x<d/></a>", {}},
    {"beside the root", "<a/>", [](Element a) { return statusOf(a.insertElementAfter("b")); }, nullptr, ErrorKind::Misuse},
    {"beside nothing", "<a/>", [](Element a) { return statusOf(a.child("b").insertElementBefore("b")); }, nullptr, ErrorKind::Misuse},
    {"into nothing", "<a/>", [](Element a) { return statusOf(a.child("b").addElement("b")); }, nullptr, ErrorKind::Misuse},

    {"the text of an element without one", "<a><b/></a>", [](Element a) { return a.setText("x"); }, "<a>x<b/></a>", {}},
    {"the text of an empty element", "<a/>", [](Element a) { return a.setText("x"); }, "<a>x</a>", {}},
    {"the text in place of several", "<a><b/>1<c/>2<![CDATA[3]]></a>", [](Element a) { return a.setText("x"); }, "<a><b/>x<c/></a>", {}},
    {"the empty text removes", "<a><b/>1<c/>2</a>", [](Element a) { return a.setText(""); }, "<a><b/><c/></a>", {}},
    {"a refused text changes nothing", "<a>1</a>", [](Element a) { return a.setText("\xFF"); }, nullptr, ErrorKind::Encoding},
    {"the value of a text", "<a>1</a>", [](Element a) { return a.firstChild().asText().setValue("é"); }, "<a>é</a>", {}},
    {"no empty value", "<a>1</a>", [](Element a) { return a.firstChild().asText().setValue(""); }, nullptr, ErrorKind::Argument},
    {"no value of an element", "<a><b/></a>", [](Element a) { return a.firstChild().asText().setValue("x"); }, nullptr, ErrorKind::Misuse},
    {"rename", "<o:a xmlns:o='u'/>", [](Element a) { return a.rename("名"); }, "<o:名 xmlns:o=\"u\"/>", {}},
    {"rename to no name", "<a/>", [](Element a) { return a.rename("o:a"); }, nullptr, ErrorKind::Argument},

    {"an attribute", "<a b='1'/>", [](Element a) { return a.setAttribute("c", "é"); }, "<a b=\"1\" c=\"é\"/>", {}},
    {"an attribute again", "<a b='1' c='2'/>", [](Element a) { return a.setAttribute("b", "3"); }, "<a c=\"2\" b=\"3\"/>", {}},
    {"the last attribute again", "<a b='1' c='2'/>", [](Element a) { return a.setAttribute("c", "3"); }, "<a b=\"1\" c=\"3\"/>", {}},
    {"an attribute with a prefix", "<a xmlns:o='u' b='1'/>", [](Element a) { return a.setAttribute("o:b", "2"); }, "<a xmlns:o=\"u\" b=\"1\" o:b=\"2\"/>", {}},
    {"that again", "<a xmlns:o='u' o:b='1' b='1'/>", [](Element a) { return a.setAttribute("o:b", "2"); }, "<a xmlns:o=\"u\" b=\"1\" o:b=\"2\"/>", {}},
    {"the last with a prefix again", "<a xmlns:o='u' b='1' o:b='1'/>", [](Element a) { return a.setAttribute("o:b", "2"); }, "<a xmlns:o=\"u\" b=\"1\" o:b=\"2\"/>", {}},
    {"the plain one again", "<a xmlns:o='u' o:b='1' b='1'/>", [](Element a) { return a.setAttribute("b", "2"); }, "<a xmlns:o=\"u\" o:b=\"1\" b=\"2\"/>", {}},
    {"there by another prefix", "<a xmlns:o='u' xmlns:p='u' o:b='1'/>", [](Element a) { return a.setAttribute("p:b", "2"); }, nullptr, ErrorKind::Argument},
    {"there by another prefix, and this one not declared", "<a xmlns:o='u' o:b='1'/>", [](Element a) { return a.setAttribute({"p:b", "u"}, "2"); }, nullptr, ErrorKind::Argument},
    {"a prefix from above, by another element's binding", "<a xmlns:o='u'><o:b/></a>", [](Element a) { return a.child("b").setAttribute("o:c", "1"); }, "<a xmlns:o=\"u\"><o:b o:c=\"1\"/></a>", {}},
    {"an attribute's prefix that nothing declares", "<a/>", [](Element a) { return a.setAttribute("o:b", "1"); }, nullptr, ErrorKind::Argument},
    {"that is declared", "<a/>", [](Element a) { return a.setAttribute({"o:b", "u"}, "1"); }, "<a xmlns:o=\"u\" o:b=\"1\"/>", {}},
    {"that means something else", "<a xmlns:o='u'/>", [](Element a) { return a.setAttribute({"o:b", "v"}, "1"); }, nullptr, ErrorKind::Argument},
    {"a namespace without a prefix", "<a/>", [](Element a) { return a.setAttribute({"b", "v"}, "1"); }, nullptr, ErrorKind::Argument},
    {"no declaration by an attribute", "<a/>", [](Element a) { return a.setAttribute("xmlns", "v"); }, nullptr, ErrorKind::Argument},
    {"no attribute of nothing", "<a/>", [](Element a) { return a.child("b").setAttribute("b", "v"); }, nullptr, ErrorKind::Misuse},

    {"declare", "<a/>", [](Element a) { return a.declareNamespace("o", "u"); }, "<a xmlns:o=\"u\"/>", {}},
    {"declare the default", "<a/>", [](Element a) { return a.declareNamespace("", "u"); }, "<a xmlns=\"u\"/>", {}},
    {"declare the same again", "<a xmlns:o='u'/>", [](Element a) { return a.declareNamespace("o", "u"); }, "<a xmlns:o=\"u\"/>", {}},
    {"declare otherwise", "<a xmlns:o='u'/>", [](Element a) { return a.declareNamespace("o", "v"); }, nullptr, ErrorKind::Argument},
    {"declare otherwise what is used below", "<a xmlns:o='u'><b><o:c/></b></a>", [](Element a) { return a.child("b").declareNamespace("o", "v"); }, nullptr, ErrorKind::Argument},
    {"what the element is bound by", "<a xmlns:o='u'><o:b/></a>", [](Element a) { return a.child("b").declareNamespace("o", "v"); }, nullptr, ErrorKind::Argument},
    {"what an attribute is bound by", "<a xmlns:o='u'><b><c o:d='1'/></b></a>", [](Element a) { return a.child("b").declareNamespace("o", "v"); }, nullptr, ErrorKind::Argument},
    {"what is used beside it", "<a xmlns:o='u'><b/><o:c/></a>", [](Element a) { return a.child("b").declareNamespace("o", "v"); }, "<a xmlns:o=\"u\"><b xmlns:o=\"v\"/><o:c/></a>", {}},
    {"what is declared again below", "<a xmlns:o='u'><b><o:c xmlns:o='w'/></b></a>", [](Element a) { return a.child("b").declareNamespace("o", "v"); }, "<a xmlns:o=\"u\"><b xmlns:o=\"v\"><o:c xmlns:o=\"w\"/></b></a>", {}},
    {"what is used, as it is", "<a xmlns:o='u'><o:b/></a>", [](Element a) { return a.child("b").declareNamespace("o", "u"); }, "<a xmlns:o=\"u\"><o:b xmlns:o=\"u\"/></a>", {}},
    {"what is used, as it is, and then otherwise", "<a xmlns:o='u'><b><o:c o:d='1'/></b></a>", [](Element a) { Status done = a.child("b").declareNamespace("o", "u"); EXPECT_FALSE(a.child("b").child("c").declareNamespace("o", "v")); return done; }, "<a xmlns:o=\"u\"><b xmlns:o=\"u\"><o:c o:d=\"1\"/></b></a>", {}},
    {"another default namespace for what is below", "<a xmlns='u'><b><c/></b></a>", [](Element a) { Status done = a.child("b").declareNamespace("", "v"); EXPECT_EQ(a.child("b").child("c").namespaceName(), done ? "v" : "u"); return done; }, "<a xmlns=\"u\"><b xmlns=\"v\"><c/></b></a>", {}},
    {"declare xmlns", "<a/>", [](Element a) { return a.declareNamespace("xmlns", "v"); }, nullptr, ErrorKind::Argument},
    {"declare no name", "<a/>", [](Element a) { return a.declareNamespace("1", "v"); }, nullptr, ErrorKind::Argument},
    {"bind", "<a xmlns:o='u'/>", [](Element a) { return a.setPrefix("o"); }, "<o:a xmlns:o=\"u\"/>", {}},
    {"unbind", "<o:a xmlns:o='u'/>", [](Element a) { return a.setPrefix(""); }, "<a xmlns:o=\"u\"/>", {}},
    {"bind to nothing", "<a/>", [](Element a) { return a.setPrefix("o"); }, nullptr, ErrorKind::Argument},

    {"remove", "<a><b><c/></b><d/></a>", [](Element a) { return a.child("b").remove(); }, "<a><d/></a>", {}},
    {"remove the root", "<a/>", [](Element a) { return a.remove(); }, nullptr, ErrorKind::Misuse},
    {"remove nothing", "<a/>", [](Element a) { return a.child("b").remove(); }, nullptr, ErrorKind::Misuse},
    {"clear", "<a b='1'>x<c/></a>", [](Element a) { a.clear(); return Status{}; }, "<a b=\"1\"/>", {}},
};
// clang-format on

TEST(FaceEdit, DoesWhatItSaysOrNothing)
{
    for (const EditCase& row : kEdits) {
        Document document = parsed(row.document);
        const std::string before = written(document);
        const Status status = row.edit(document.root());
        EXPECT_EQ(static_cast<bool>(status), row.after != nullptr) << row.why << status.error();
        if (!row.after) {
            EXPECT_EQ(status.error().kind, row.kind) << row.why << ": " << status.error();
            EXPECT_EQ(written(document), before) << row.why;
        } else if (row.after == std::string{"LONG"}) {
            EXPECT_EQ(written(document).size(), 7 + 2 * 300 + 5 + 3000u) << row.why;
        } else {
            EXPECT_EQ(written(document), row.after) << row.why;
            EXPECT_EQ(written(parsed(written(document))), row.after) << row.why << " (read again)";
        }
    }
}

TEST(FaceEdit, LeavesNothingBehindWhicheverAllocationFails)
{
    for (const EditCase& row : kEdits) {
        if (!row.after) continue;
        for (unsigned allowed = 0;; ++allowed) {
            ASSERT_LT(allowed, 60u) << row.why;
            warmConverters();
            const long before = heapLiveBlocks() - handedOut;
            {
                Document document = parsed(row.document);
                const std::string text = written(document);
                Status status;
                bool refused = false;
                {
                    const FailingHeap heap{allowed};
                    status = row.edit(document.root());
                    refused = FailingHeap::refused();
                }
                if (!refused) break;
                // Only a declaration may stay; and whatever stays is whole.
                if (!status && row.why != std::string{"that is declared"}) {
                    EXPECT_EQ(written(document), text) << row.why << ", " << allowed;
                }
                EXPECT_TRUE(Document::parse(written(document))) << row.why << ", " << allowed;
            }
            warmConverters();
            EXPECT_EQ(heapLiveBlocks() - handedOut, before) << row.why << ", " << allowed;
        }
    }
}

// How many blocks an edit asks for at the bottom of a tree as deep and as wide as that.
std::size_t blocksFor(std::size_t depth, std::size_t width,
                      const std::function<Status(Element)>& edit)
{
    std::string attributes;
    for (std::size_t at = 0; at != width; ++at) attributes += " n" + std::to_string(at) + "='1'";
    std::string text = "<o:a xmlns:o='u' xmlns='v'" + attributes + '>';
    for (std::size_t at = 0; at != depth; ++at) text += "<o:a" + attributes + '>';
    for (std::size_t at = 0; at != depth; ++at) text += "</o:a>";
    Document document = parsed(text + "</o:a>");
    Element bottom = document.root();
    while (const Element below = bottom.firstElement()) bottom = below;
    const FailingHeap heap{FailingHeap::kForever};
    const Status status = edit(bottom);
    EXPECT_TRUE(status) << status.error();
    return FailingHeap::allocations();
}

TEST(FaceEdit, AsksForNoMoreInALargeTree)
{
    const Document source = parsed("<x xmlns='v'><y/></x>");
    const std::function<Status(Element)> kEditsOfOne[] = {
        [](Element at) { return at.setAttribute("o:x", "1"); },
        [](Element at) {
            return at.setAttribute("o:x", "1") ? at.setAttribute("o:x", "2") : Status{};
        },
        [](Element at) {
            return at.setAttribute({"p:x", "w"}, "1");
        },
        [](Element at) {
            return statusOf(at.addElement({"x", "w"}));
        },
        [](Element at) { return at.declareNamespace("p", "w"); },
        [&](Element at) { return statusOf(at.addCopy(source.root())); },
        [&](Element at) { return statusOf(at.addCopy(source.root().child("y"))); },
    };
    for (const auto& edit : kEditsOfOne)
        EXPECT_EQ(blocksFor(100, 20, edit), blocksFor(1, 1, edit)) << &edit - kEditsOfOne;
}

TEST(FaceEdit, RemovedHandlesAreEmpty)
{
    Document document = parsed("<a><b c='1' o:c='2' xmlns:o='u'/></a>");
    Element b = document.root().child("b");
    EXPECT_FALSE(b.removeAttribute("x"));
    EXPECT_FALSE(b.removeAttribute("\xFF"));
    EXPECT_TRUE(b.removeAttribute("c"));
    EXPECT_EQ(written(document), "<a><b xmlns:o=\"u\" o:c=\"2\"/></a>");
    EXPECT_TRUE(b.removeAttribute("o:c"));
    EXPECT_FALSE(b.removeAttribute("o:c"));
    EXPECT_TRUE(b.remove());
    EXPECT_FALSE(b);
    EXPECT_EQ(b.remove().error().kind, ErrorKind::Misuse);
}

struct CopyCase {
    const char* why;
    const char* from;
    const char* path;
    const char* to;
    const char* after;
    const char* alone;  // as a document of its own
};

// clang-format off
constexpr CopyCase kCopies[] = {
    // why                                from                                        path        to                    after                                                              alone
    {"a plain one",                       "<a><b c='1'>x<d/></b></a>",                "/a/b",     "<r/>",               "<r><b c=\"1\">x<d/></b></r>",                                     "<b c=\"1\">x<d/></b>"},
    {"a default namespace from above",    "<a xmlns='u'><b><c/></b></a>",             "/a/b",     "<r/>",               "<r><b xmlns=\"u\"><c/></b></r>",                                  "<b xmlns=\"u\"><c/></b>"},
    {"the same default namespace",        "<a xmlns='u'><b/></a>",                    "/a/b",     "<r xmlns='u'/>",     "<r xmlns=\"u\"><b/></r>",                                         "<b xmlns=\"u\"/>"},
    {"out of a default namespace",        "<a><b/></a>",                              "/a/b",     "<r xmlns='u'/>",     "<r xmlns=\"u\"><b xmlns=\"\"/></r>",                              "<b/>"},
    {"a prefix from above",               "<a xmlns:o='u'><o:b o:c='1'/></a>",        "/a/b",     "<r/>",               "<r><o:b xmlns:o=\"u\" o:c=\"1\"/></r>",                           "<o:b xmlns:o=\"u\" o:c=\"1\"/>"},
    {"a prefix that means something else there", "<a xmlns:o='u'><o:b/></a>",         "/a/b",     "<r xmlns:o='v'/>",   "<r xmlns:o=\"v\"><o:b xmlns:o=\"u\"/></r>",                       "<o:b xmlns:o=\"u\"/>"},
    {"a prefix around a default namespace from above", "<a xmlns='u' xmlns:o='v'><o:b><c/></o:b></a>", "/a/b", "<r/>",  "<r><o:b xmlns:o=\"v\" xmlns=\"u\"><c/></o:b></r>",                "<o:b xmlns:o=\"v\" xmlns=\"u\"><c/></o:b>"},
    {"a prefix and a default namespace of its own", "<a xmlns='u'><o:b xmlns='v' xmlns:o='w'><c/></o:b></a>", "/a/b", "<r xmlns='u'/>", "<r xmlns=\"u\"><o:b xmlns=\"v\" xmlns:o=\"w\"><c/></o:b></r>", "<o:b xmlns=\"v\" xmlns:o=\"w\"><c/></o:b>"},
    {"beyond ASCII",                      "<a><名>中</名></a>",                       "/a/名",    "<r/>",               "<r><名>中</名></r>",                                              "<名>中</名>"},
    {"a prefix around nothing that has a default", "<a xmlns='u' xmlns:o='v'><o:b><o:c/></o:b></a>", "/a/b", "<r/>",    "<r><o:b xmlns:o=\"v\"><o:c/></o:b></r>",                           "<o:b xmlns:o=\"v\"><o:c/></o:b>"},
    {"a default namespace further down",  "<o:a xmlns:o='v'><o:b><c xmlns='u'><d/></c><e/></o:b></o:a>", "/a/b", "<r xmlns='w'/>", "<r xmlns=\"w\"><o:b xmlns:o=\"v\" xmlns=\"\"><c xmlns=\"u\"><d/></c><e/></o:b></r>", "<o:b xmlns:o=\"v\"><c xmlns=\"u\"><d/></c><e/></o:b>"},
    {"a root",                            "<a xmlns='u'><b/></a>",                    "/a",       "<r/>",               "<r><a xmlns=\"u\"><b/></a></r>",                                  "<a xmlns=\"u\"><b/></a>"},
};
// clang-format on

TEST(FaceCopy, KeepsNamesInTheirNamespaces)
{
    for (const CopyCase& row : kCopies) {
        const Document source = parsed(row.from);
        const netxml::ConstElement element = source.find(row.path).value();
        Document target = parsed(row.to);
        const Result<Node> copy = target.root().addCopy(element);
        ASSERT_TRUE(copy) << row.why << copy.error();
        EXPECT_EQ(written(target), row.after) << row.why;
        EXPECT_EQ(copy->parent(), target.root()) << row.why;
        EXPECT_EQ(written(Document::copyOf(element).value()), row.alone) << row.why;
        EXPECT_EQ(written(source), written(parsed(row.from))) << row.why;
    }
}

TEST(FaceCopy, GoesToAnyPlaceAndAlsoIntoItself)
{
    Document document = parsed("<a><b/>x</a>");
    const Element b = document.root().child("b");
    ASSERT_TRUE(b.insertCopyBefore(b.next()));
    ASSERT_TRUE(b.insertCopyAfter(document.root()));
    ASSERT_TRUE(b.addCopy(b));
    EXPECT_EQ(written(document), "<a>x<b><b/></b><a>x<b/>x</a>x</a>");
    EXPECT_EQ(document.root().insertCopyAfter(b).error().kind, ErrorKind::Misuse);
    EXPECT_EQ(b.addCopy({}).error().kind, ErrorKind::Misuse);
    EXPECT_EQ(Document::copyOf({}).error().kind, ErrorKind::Misuse);
}

TEST(FaceCopy, LeavesNothingBehindWhicheverAllocationFails)
{
    const Document source = parsed("<a xmlns='u' xmlns:o='v'><o:b c='1'><d/></o:b></a>");
    warmConverters();
    for (unsigned allowed = 0;; ++allowed) {
        ASSERT_LT(allowed, 60u);
        const FailingHeap heap{allowed};
        const Result<Document> copy = Document::copyOf(source.root().child("b"));
        if (copy) break;
        EXPECT_EQ(copy.error().kind, ErrorKind::Memory) << copy.error();
        EXPECT_EQ(FailingHeap::liveBlocks(), 0) << "with " << allowed << " allowed";
    }
}

TEST(FaceDetach, MakesADocumentOfAnElement)
{
    Document document = parsed("<a xmlns='u'><b><c/></b><d/></a>");
    Element b = document.root().child("b");
    const Result<Document> detached = b.detach();
    ASSERT_TRUE(detached) << detached.error();
    EXPECT_EQ(written(*detached), "<b xmlns=\"u\"><c/></b>");
    EXPECT_EQ(written(document), "<a xmlns=\"u\"><d/></a>");
    EXPECT_FALSE(b);
    EXPECT_EQ(document.root().detach().error().kind, ErrorKind::Misuse);
    EXPECT_EQ(b.detach().error().kind, ErrorKind::Misuse);
}

TEST(FaceDocument, FailsWithAnErrorWhicheverAllocationFails)
{
    for (unsigned allowed = 0;; ++allowed) {
        ASSERT_LT(allowed, 60u);
        warmConverters();
        const long before = heapLiveBlocks();
        bool refused = false;
        {
            const FailingHeap heap{allowed, 1};
            const Result<Document> document =
                Document::parse("<a xmlns:o='u'><o:b c='1'>中</o:b></a>");
            refused = FailingHeap::refused();
            // What a converter lacks memory for looks like what it cannot convert. And a block that
            // only would have saved work is not missed.
            EXPECT_TRUE(document || document.error().kind == ErrorKind::Memory ||
                        document.error().message.ends_with("or memory ran out."))
                << document.error() << ", " << allowed << " allowed";
            EXPECT_TRUE(document || refused);
        }
        warmConverters();
        EXPECT_EQ(heapLiveBlocks(), before) << allowed << " allowed";
        if (!refused) break;
    }
}

}  // namespace
