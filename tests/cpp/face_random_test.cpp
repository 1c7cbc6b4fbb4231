// Random calls of the C++ face: what they leave is whole, and reads as what was asked for.
#include "netxml/netxml.hpp"
#include "tests/cpp/parsed.hpp"
#include "tests/support/random.hpp"

#include <gtest/gtest.h>

#include <map>
#include <optional>

using netxml::ConstElement;
using netxml::ConstNode;
using netxml::Document;
using netxml::Element;
using netxml::Name;
using netxml::Node;
using netxml::Result;
using netxml::Status;
using netxml::Writer;

namespace {

// -- What a document says: names in their namespaces, values, and texts
// ----------------------------

std::string expanded(const netxml::Text& space, const netxml::Text& name)
{
    return '{' + space.str() + '}' + name.str();
}

std::string told(ConstElement top)
{
    std::string all;
    const auto begin = [&](ConstElement element) {
        all += "\n<" + expanded(element.namespaceName(), element.name()) + '>';
        std::map<std::string, std::string> attributes;
        for (const netxml::Attribute attribute : element.attributes())
            attributes[expanded(attribute.namespaceName(), attribute.name())] =
                attribute.value().str();
        for (const auto& [name, value] : attributes)
            all.append(" ").append(name).append("=").append(value);
        all += '|';
    };
    begin(top);
    ConstElement open = top;
    for (const ConstNode node : top.descendants()) {
        if (!node.isElement() && node.asText().value().empty()) continue;  // leaves no trace
        for (; open != node.parent(); open = open.parent()) all += "</>";
        if (const ConstElement element = node.asElement()) begin(open = element);
        else all += node.asText().value().str();
    }
    return all;
}

// -- Editing -------------------------------------------------------------------------------------

class Editor {
public:
    explicit Editor(std::uint64_t seed) : random_{seed} {}

    // An edit anywhere in the tree. Whatever it returns is its.
    Status edit(Document& document, const Document& other)
    {
        // One after the other, so that a round is the same with every compiler.
        const Element at = anyElement(document.root());
        const Name name = anyName();
        const char* const text = anyText();
        const char* const prefix = random_.one<const char*>({"", "p", "q", "xml"});
        const char* const space = anySpace();
        switch (random_.below(15)) {
        case 0: return statusOf(at.addElement(name, text));
        case 1: return statusOf(at.addText(text));
        case 2: return statusOf(at.addCData(text));
        case 3: return at.setText(text);
        case 4: return at.rename(random_.one<const char*>({"a", "名", "1", "p:a"}));
        case 5:
        case 6: return at.setAttribute(name, text);
        case 7: return at.removeAttribute(name), Status{};
        case 8:
        case 9: return at.declareNamespace(prefix, space);
        case 10: return at.setPrefix(prefix);
        case 11: return statusOf(at.addCopy(anyElement(other.root())));
        case 12: return statusOf(at.insertCopyBefore(anyElement(document.root())));
        case 13: return statusOf(at.insertElementAfter(name, text));
        default: return removed(at, document);
        }
    }

private:
    template <class T>
    static Status statusOf(const Result<T>& result)
    {
        return result ? Status{} : Status{result.error()};
    }
    template <class Handle>
    Handle anyElement(Handle root)
    {
        std::vector<Handle> all{root};
        for (const auto node : root.descendants()) {
            if (const Handle element = node.asElement()) all.push_back(element);
        }
        return random_.anyOf(all);
    }
    // Copying makes a tree grow; a large one is cut.
    Status removed(Element at, Document& document)
    {
        const auto all = document.root().descendants();
        if (std::distance(all.begin(), all.end()) > 60) return document.root().clear(), Status{};
        if (random_.percent(70)) return at.remove();
        return statusOf(at.detach());
    }
    const char* anySpace() { return random_.one<const char*>({"", "u", "v", XML_NAMESPACE_XML}); }
    const char* anyText() { return random_.one<const char*>({"", "x", " é ", "<&>", "中"}); }
    Name anyName()
    {
        const char* name = random_.one<const char*>({"a", "b", "p:a", "p:b", "q:a", "名", "xml:a"});
        return random_.percent(60) ? Name{name} : Name{name, anySpace()};
    }

    Random random_;
};

TEST(FaceRandom, ATreeIsWhatItIsWrittenAs)
{
    std::size_t done = 0;
    std::size_t refused = 0;
    for (std::size_t round = randomRounds(600); round != 0; --round) {
        Editor editor{round};
        Document document = parsed("<a xmlns:p='u'><b p:a='1'/><p:b/></a>");
        const Document other =
            parsed("<a xmlns='u' xmlns:q='v'><q:b a='1' q:a='2'><a/></q:b><b>x</b></a>");
        for (int step = 0; step != 40; ++step) {
            const std::string before = document.root().write().value();
            const Status status = editor.edit(document, other);
            const std::string after = document.root().write().value();
            ++(status ? done : refused);
            if (!status) {
                ASSERT_EQ(after, before) << round << ", " << status.error();
            }
            const Result<Document> again = Document::parse(after);
            ASSERT_TRUE(again) << round << ", " << again.error() << "\nof " << before;
            ASSERT_EQ(told(again->root()), told(document.root()))
                << round << ": " << before << "\nbecame " << after;
        }
    }
    EXPECT_GT(done, refused / 2);
    EXPECT_GT(refused, 100u);
}

// -- Writing -------------------------------------------------------------------------------------

// What a writer is told: an element that asks for a namespace has to be in it.
class Caller {
public:
    Caller(std::uint64_t seed, Writer& writer) : random_{seed}, writer_{writer} {}

    // Mostly calls that are in place, and at times any.
    void call()
    {
        const bool any = random_.percent(1);
        switch (random_.below(9)) {
        case 0:
        case 1:
            if (depth_ != 0 || !begun_ || any) start();
            return;
        case 2:
            if (inTag_ || any) attribute();
            return;
        case 3:
            if (inTag_ || any) declare();
            return;
        case 4:
            if (depth_ != 0 || any) content(&Writer::text);
            return;
        case 5:
            if (depth_ != 0 || any) content(&Writer::cdata);
            return;
        case 6: inTag_ = false; return static_cast<void>(writer_.comment("c"));
        default:
            if (depth_ != 0 || any) end();
        }
    }
    Status finish()
    {
        if (!begun_) start();
        while (depth_ != 0) end();
        return writer_.finish();
    }
    // The namespaces asked for, in the order of the elements; none where none was.
    const std::vector<std::optional<std::string>>& asked() const { return asked_; }
    const std::string& content() const { return content_; }

private:
    void start()
    {
        const Name given = name();
        writer_.start(given);
        asked_.emplace_back(given.namespaceName());
        begun_ = inTag_ = true;
        ++depth_;
    }
    void attribute()
    {
        const std::string value = text();
        writer_.attribute(name(), value);
    }
    void declare()
    {
        const char* const prefix = random_.one<const char*>({"", "p", "q"});
        writer_.declare(prefix, space());
    }
    void content(Writer& (Writer::*write)(netxml::TextArg))
    {
        const std::string text = this->text();
        (writer_.*write)(text);
        content_ += text;
        inTag_ = false;
    }
    void end()
    {
        writer_.end();
        inTag_ = false;
        depth_ -= depth_ == 0 ? 0 : 1;
    }
    const char* space() { return random_.one<const char*>({"u", "u", "v", ""}); }
    std::string text()
    {
        std::string text;
        for (std::size_t left = random_.below(4); left != 0; --left)
            text += random_.one<const char*>({"x", "]]>", "]]", ">", "\"", "\t", "\n", "&", "é"});
        return text;
    }
    Name name()
    {
        const char* name = random_.one<const char*>({"a", "b", "p:a", "p:b", "q:a", "名"});
        return random_.percent(40) ? Name{name} : Name{name, space()};
    }

    Random random_;
    Writer& writer_;
    std::vector<std::optional<std::string>> asked_;
    std::string content_;
    std::size_t depth_ = 0;
    bool begun_ = false;
    bool inTag_ = false;
};

TEST(FaceRandom, WhatAWriterAcceptsIsWellFormedAndInItsNamespaces)
{
    std::size_t accepted = 0;
    for (std::size_t round = randomRounds(20000); round != 0; --round) {
        std::string text;
        Writer writer{text};
        Caller caller{round, writer};
        for (std::size_t left = round % 25; left != 0; --left) caller.call();
        if (!caller.finish()) continue;
        ++accepted;
        const Result<Document> document = Document::parse(text);
        ASSERT_TRUE(document) << round << ", " << document.error() << "\n" << text;
        std::vector<ConstElement> elements{document->root()};
        std::string content;
        for (const ConstNode node : document->root().descendants()) {
            if (const ConstElement element = node.asElement()) elements.push_back(element);
            else content += node.asText().value().str();
        }
        ASSERT_EQ(content, caller.content()) << round << "\n" << text;
        ASSERT_EQ(elements.size(), caller.asked().size()) << round << "\n" << text;
        for (std::size_t at = 0; at != elements.size(); ++at) {
            const std::optional<std::string>& asked = caller.asked()[at];
            if (asked) {
                ASSERT_EQ(elements[at].namespaceName(), *asked) << round << "\n" << text;
            }
        }
    }
    EXPECT_GT(accepted, randomRounds(20000) / 10);
}

}  // namespace
