// Wrong use of the C++ face, which must not compile, and beside each what is meant.
//
// wrong_use_test.py compiles this file with WRONG as the number of a case, as 0 for none, and as -1
// for all. Each case says which message is expected, as a regular expression over those of the
// compilers.
#include <netxml/netxml.hpp>

#define IS_WRONG(number) (WRONG == (number) || WRONG == -1)

using netxml::ConstElement;
using netxml::ConstNode;
using netxml::Document;
using netxml::Element;
using netxml::Node;
using netxml::Result;

struct Silent {
    int events = 0;
};

struct Counting {
    int events = 0;
#if IS_WRONG(21)  // a handler whose member takes something else: does not take what the event gives
    void text(int)
    {
        ++events;
    }
#else
    void text(std::string_view)
    {
        ++events;
    }
#endif
};

struct Fleeting {
    struct Iterator {
        std::string operator*() const { return "<a/>"; }
        Iterator& operator++() { return *this; }
        bool operator!=(const Iterator&) const { return false; }
    };
    Iterator begin() const { return {}; }
    Iterator end() const { return {}; }
};

void wrongUse(Document& document, const Document& shared, netxml::Schema& schema)
{
    Element root = document.root();
    const ConstElement seen = shared.root();

#if IS_WRONG(1)  // a view of a temporary text: deleted
    const std::string_view name = root.name();
#else
    const netxml::Text name = root.name();
#endif
#if IS_WRONG(2)  // the view() of a temporary text: deleted
    const auto path = root.text().view();
#else
    const auto path = root.text().str();
#endif
#if IS_WRONG(3)  // the root of a temporary document: deleted
    const Element gone = Document::create("a").value().root();
#else
    const Document created = Document::create("a").value();
    const ConstElement gone = created.root();
#endif
    Result<Document> made = Document::create("a");
#if IS_WRONG(4)  // the root of a temporary result: deleted
    const Element lost = Document::create("a")->root();
#else
    const Element lost = made->root();
#endif
#if IS_WRONG(5)  // a range over a temporary document: deleted
    for (const ConstNode node : (*Document::parse("<a/>")).root().children())
#else
    for (const ConstNode node : made->root().children())
#endif
        static_cast<void>(node);
#if IS_WRONG(6)  // a document copied: deleted
    Document copy = document;
#else
    Document copy = std::move(document);
#endif
#if IS_WRONG(7)  // a result ignored: ignoring return|unused-result
    root.addElement("a");
#else
    if (!root.addElement("a")) return;
#endif
#if IS_WRONG(8)  // a status ignored: ignoring return|unused-result
    root.setAttribute("a", "b");
#else
    if (!root.setAttribute("a", "b")) return;
#endif
#if IS_WRONG(9)  // an element of a const document edited: no member
    if (!seen.addElement("a")) return;
#else
    if (!root.addElement("a")) return;
#endif
#if IS_WRONG(10)  // an attribute of a const document set: no member
    if (!seen.setAttribute("a", "b")) return;
#else
    if (!root.setAttribute("a", "b")) return;
#endif
#if IS_WRONG(11)  // a node of a const document removed: no member
    if (!seen.firstChild().remove()) return;
#else
    if (!root.firstChild().remove()) return;
#endif
#if IS_WRONG(12)  // the root of a const document made editable: conversion from|convert|no viable
    const Element editable = shared.root();
#else
    const ConstElement editable = shared.root();
#endif
#if IS_WRONG(13)  // a ConstNode made a Node: conversion from|convert|no viable
    const Node node = seen.firstChild();
#else
    const ConstNode node = root.firstChild();
#endif
#if IS_WRONG(14)  // a Node taken for an Element: conversion from|convert|no viable
    const Element element = root.firstChild();
#else
    const Element element = root.firstChild().asElement();
#endif
#if IS_WRONG(15)  // a child added to an attribute: no member
    if (!root.firstAttribute().addElement("a")) return;
#else
    if (!root.addElement("a")) return;
#endif
#if IS_WRONG(16)  // a child added to a text: no member
    if (!root.firstChild().asText().addElement("a")) return;
#else
    if (!root.firstChild().asElement().addElement("a")) return;
#endif
#if IS_WRONG(17)  // the children of a text: no member
    for (const Node child : root.firstChild().asText().children())
#else
    for (const Node child : root.children())
#endif
        static_cast<void>(child);
#if IS_WRONG(18)  // the value of an element: no member
    const netxml::Text value = root.value();
#else
    const netxml::Text value = root.text();
#endif
#if IS_WRONG(19)  // a schema copied: deleted
    const netxml::Schema second = schema;
#else
    const netxml::Schema second = std::move(schema);
#endif
#if IS_WRONG(20)  // a handler without a member for any event: no member that an event would call
    Silent handler;
#else
    Counting handler;
#endif
    if (!netxml::read("<a/>", handler)) return;
#if IS_WRONG(22)  // a writer to a temporary: no matching (function|constructor)
    netxml::Writer writer{std::string{}};
#else
    std::string text;
    netxml::Writer writer{text};
#endif
#if IS_WRONG(23)  // the end of a writer's document ignored: ignoring return|unused-result
    writer.start("a").end().finish();
#else
    if (!writer.start("a").end().finish()) return;
#endif
#if IS_WRONG(24)  // a verdict ignored, after its result was taken: ignoring return|unused-result
    second.validate(gone).value();
#else
    if (!second.validate(gone).value().valid()) return;
#endif
#if IS_WRONG(25)  // the iterators of a temporary range by name: deleted
    const auto first = root.children("a").begin();
#else
    const auto named = root.children("a");
    const auto first = named.begin();
#endif
#if IS_WRONG(26)  // a text tested for its being there as if it were a handle: convert|conversion
    if (root.text()) return;
#else
    if (root.text().exists()) return;
#endif
#if IS_WRONG(27)  // a const document given another encoding: discards qualifiers|not marked const
    if (!shared.setEncoding(XML_ENCODING_GBK)) return;
#else
    if (!copy.setEncoding(XML_ENCODING_GBK)) return;
#endif
#if IS_WRONG(29)  // pieces that end at once, being made anew: no matching
    const netxml::Chunks chunks{Fleeting{}};
#else
    const netxml::Chunks chunks{"<a>", "</a>"};
#endif
    if (!Document::parse(chunks) || !Document::parse({"<a>", "</a>"})) return;
    if (!netxml::read({"<a>", "</a>"}, handler) || !Document::parse({"<a/>", 4})) return;
#if IS_WRONG(28)  // a writer copied: deleted
    const netxml::Writer other = writer;
#else
    const netxml::Writer& other = writer;
#endif
    static_cast<void>(name.size() + path.size());
    static_cast<void>(lost == gone && editable == seen && node == ConstNode{element});
    static_cast<void>(value == "" && *first == root && other.status());
}
