#include "documents.hpp"

#include "document_maker.hpp"
#include "real_documents.hpp"

#include <array>
#include <iconv.h>
#include <stdexcept>

namespace netxml::bench {
namespace {

constexpr std::size_t kMegabyte = std::size_t{1} << 20;

// One interface of a switch, as a configuration lists them.
void addInterface(DocumentMaker& maker, std::size_t number)
{
    maker.open("interface");
    maker.leaf("name", "GigabitEthernet" + std::to_string(number / 48) + "/0/" +
                           std::to_string(number % 48));
    maker.leaf("description", "uplink to access switch " + maker.number(1000));
    maker.leaf("enabled", maker.below(4) == 0 ? "false" : "true");
    maker.leaf("mtu", std::to_string(1500 + maker.below(7700)));
    maker.open("ipv4");
    maker.open("address");
    maker.leaf("ip",
               joined({"10.", maker.number(256), ".", maker.number(256), ".", maker.number(256)}));
    maker.leaf("netmask", "255.255.255.0");
    maker.close();
    maker.close();
    maker.leaf("vlan", maker.number(4094));
    maker.close();
}

Document message(std::string_view name, std::size_t size)
{
    DocumentMaker maker{false};
    maker.open("rpc", " message-id=\"101\" xmlns=\"urn:ietf:params:xml:ns:netconf:base:1.0\"");
    maker.open("edit-config");
    maker.open("target");
    maker.leaf("running", "");
    maker.close();
    maker.open("config");
    maker.open("interfaces", " xmlns=\"urn:example:interfaces\"");
    for (std::size_t i = 0; i == 0 || maker.size() < size; ++i) addInterface(maker, i);
    return maker.finish(name);
}

Document configuration(std::string_view name, std::size_t size, bool indented)
{
    DocumentMaker maker{indented};
    maker.open("config", " xmlns=\"urn:example:config\"");
    maker.open("interfaces");
    for (std::size_t i = 0; maker.size() < size; ++i) addInterface(maker, i);
    return maker.finish(name);
}

Document attributes(std::string_view name)
{
    DocumentMaker maker{true};
    maker.open("routes");
    while (maker.size() < kMegabyte) {
        maker.leaf("route", "",
                   joined({" prefix=\"10.", maker.number(256), ".0.0/16\" next-hop=\"192.168.0.",
                           maker.number(256), "\" metric=\"", maker.number(100), "\" tag=\"",
                           maker.number(10000), "\" protocol=\"static\" state=\"up\""}));
    }
    return maker.finish(name);
}

Document tiny(std::string_view name)
{
    DocumentMaker maker{false};
    maker.open("l");
    while (maker.size() < kMegabyte) maker.leaf("e", maker.below(2) == 0 ? "" : "1");
    return maker.finish(name);
}

Document longText(std::string_view name, std::string_view sentence)
{
    DocumentMaker maker{false};
    maker.open("book");
    while (maker.size() < kMegabyte) {
        std::string text;
        while (text.size() < 20000) text += sentence;
        maker.leaf("chapter", text);
    }
    return maker.finish(name);
}

// Sections of paragraphs with links, code and references to characters in the running text.
Document prose(std::string_view name)
{
    constexpr std::array<std::string_view, 6> kSentences = {
        "The switch learns the address of a frame's sender and the port it came in by. ",
        "A frame for an unknown address is sent to every port of its VLAN. ",
        "Entries age: after five minutes without a frame an address is forgotten. ",
        "What arrives on a blocked port is dropped &amp; counted. ",
        "The counters are read with a query &lt;get&gt; and never reset by it. ",
        "Where two paths lead to one place, the shorter one is taken. ",
    };
    DocumentMaker maker{true};
    maker.open("article", " xmlns:xl=\"http://www.w3.org/1999/xlink\"");
    while (maker.size() < kMegabyte) {
        maker.open("section", " id=\"s" + std::to_string(maker.size()) + "\"");
        maker.leaf("title", "Chapter " + maker.number(100));
        for (int paragraph = 0; paragraph < 6; ++paragraph) {
            maker.open("para");
            for (std::size_t left = 2 + maker.below(8); left != 0; --left) {
                maker.text(kSentences[maker.below(kSentences.size())]);
                if (maker.below(3) == 0) maker.inlineLeaf("emphasis", "at most once");
                if (maker.below(5) == 0)
                    maker.inlineLeaf("link", "see there",
                                     " xl:href=\"#s" + maker.number(100000) + "\"");
            }
            maker.close();
        }
        maker.close();
    }
    return maker.finish(name);
}

// A drawing: few elements, whose curves are long attributes.
Document drawing(std::string_view name)
{
    DocumentMaker maker{true};
    maker.open("svg", " xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 1000 1000\"");
    while (maker.size() < kMegabyte) {
        std::string path = joined({"M ", maker.number(1000), ",", maker.number(1000)});
        for (std::size_t left = 20 + maker.below(400); left != 0; --left)
            path += joined({" c ", maker.number(90), ".", maker.number(999), ",-", maker.number(90),
                            ".", maker.number(999)});
        maker.leaf("path", "",
                   joined({" id=\"path", maker.number(10000), "\" style=\"fill:#30",
                           maker.number(90), "00;stroke:none\" d=\"", path, " z\""}));
    }
    return maker.finish(name);
}

Document namespaces(std::string_view name)
{
    DocumentMaker maker{true};
    maker.open("c:config", " xmlns:c=\"urn:c\" xmlns:a=\"urn:a\" xmlns:b=\"urn:b\"");
    while (maker.size() < kMegabyte) {
        maker.open("a:node", joined({" xmlns:n=\"urn:n:", maker.number(50), "\" a:id=\"",
                                     maker.number(100000), "\""}));
        maker.leaf("n:name", "node" + maker.number(1000));
        maker.leaf("b:state", "up", " b:since=\"" + maker.number(100000) + "\"");
        maker.close();
    }
    return maker.finish(name);
}

constexpr std::string_view kEnglish =
    "The forwarding plane copies frames between ports and keeps counters of each one. ";
constexpr std::string_view kChinese =
    "\xE8\xBD\xAC\xE5\x8F\x91\xE5\xB9\xB3\xE9\x9D\xA2\xE5\x9C\xA8\xE7\xAB\xAF\xE5\x8F\xA3"
    "\xE4\xB9\x8B\xE9\x97\xB4\xE5\xA4\x8D\xE5\x88\xB6\xE5\xB8\xA7\xE3\x80\x82";

std::string toGb18030(std::string utf8)
{
    std::string converted(utf8.size() * 2, '\0');
    char* from = utf8.data();
    char* to = converted.data();
    std::size_t left = utf8.size();
    std::size_t room = converted.size();
    iconv_t converter = iconv_open("GB18030", "UTF-8");
    const bool done =
        converter != iconv_t(-1) && iconv(converter, &from, &left, &to, &room) != std::size_t(-1);
    if (converter != iconv_t(-1)) iconv_close(converter);
    if (!done) throw std::runtime_error{"iconv does not convert to GB18030"};
    converted.resize(converted.size() - room);
    return converted;
}

Document chineseInGb18030(std::string_view name)
{
    Document document = longText(name, kChinese);
    document.text = "<?xml version=\"1.0\" encoding=\"GB18030\"?>\n" + toGb18030(document.text);
    return document;
}

using Name = std::string_view;

struct Recipe {
    Name name;
    Document (*make)(Name name);
};

// clang-format off
constexpr std::array kRecipes = {
    Recipe{"message-400",        [](Name n) { return message(n, 400); }},
    Recipe{"message-2k",         [](Name n) { return message(n, 2000); }},
    Recipe{"message-12k",        [](Name n) { return message(n, 12000); }},
    Recipe{"config-12k-compact", [](Name n) { return configuration(n, 12000, false); }},
    Recipe{"config-1m",          [](Name n) { return configuration(n, kMegabyte, true); }},
    Recipe{"config-1m-compact",  [](Name n) { return configuration(n, kMegabyte, false); }},
    Recipe{"config-10m",         [](Name n) { return configuration(n, 10 * kMegabyte, true); }},
    Recipe{"config-100m",        [](Name n) { return configuration(n, 100 * kMegabyte, true); }},
    Recipe{"attributes",         attributes},
    Recipe{"tiny",               tiny},
    Recipe{"text",               [](Name n) { return longText(n, kEnglish); }},
    Recipe{"prose",              prose},
    Recipe{"svg",                drawing},
    Recipe{"chinese",            [](Name n) { return longText(n, kChinese); }},
    Recipe{"chinese-gb18030",    chineseInGb18030},
    Recipe{"namespaces",         namespaces},
};
// clang-format on

}  // namespace

std::vector<std::string> documentNames()
{
    std::vector<std::string> names;
    for (const Recipe& recipe : kRecipes) names.emplace_back(recipe.name);
    for (std::string& name : realDocumentNames()) names.push_back(std::move(name));
    return names;
}

Document makeDocument(std::string_view name)
{
    for (const Recipe& recipe : kRecipes) {
        if (recipe.name == name) return recipe.make(name);
    }
    if (std::optional<Document> real = readRealDocument(name)) return std::move(*real);
    throw std::invalid_argument{"no document is called " + std::string{name}};
}

}  // namespace netxml::bench
