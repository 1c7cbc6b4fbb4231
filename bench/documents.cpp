#include "documents.hpp"

#include <array>
#include <cstdint>
#include <random>
#include <stdexcept>

namespace netxml::bench {
namespace {

constexpr std::size_t kMegabyte = std::size_t{1} << 20;

class Maker {
public:
    explicit Maker(bool indented) : indented_{indented} { text_.reserve(4096); }

    void open(std::string_view tag, std::string_view attributes = {})
    {
        line();
        text_ += '<';
        text_ += tag;
        text_ += attributes;
        text_ += '>';
        tags_.emplace_back(tag);
        ++elements_;
    }
    void close()
    {
        const std::string tag = tags_.back();
        tags_.pop_back();
        line();
        text_ += "</" + tag + ">";
    }
    void leaf(std::string_view tag, std::string_view value, std::string_view attributes = {})
    {
        line();
        text_ += '<';
        text_ += tag;
        text_ += attributes;
        if (value.empty()) {
            text_ += "/>";
        } else {
            text_ += '>';
            text_ += value;
            text_ += "</";
            text_ += tag;
            text_ += '>';
        }
        ++elements_;
    }
    std::size_t size() const { return text_.size(); }
    std::size_t below(std::size_t count) { return random_() % count; }
    std::string number(std::size_t count) { return std::to_string(below(count)); }

    Document finish(std::string_view name)
    {
        while (!tags_.empty()) close();
        if (indented_) text_ += '\n';
        return {std::string{name}, std::move(text_), elements_};
    }

private:
    void line()
    {
        if (!indented_ || text_.empty()) return;
        text_ += '\n';
        text_.append(tags_.size() * 2, ' ');
    }

    bool indented_;
    std::string text_;
    std::vector<std::string> tags_;
    std::size_t elements_ = 0;
    std::mt19937_64 random_{20261121};
};

// One interface of a switch, as a configuration lists them.
void addInterface(Maker& maker, std::size_t number)
{
    maker.open("interface");
    maker.leaf("name", "GigabitEthernet" + std::to_string(number / 48) + "/0/" +
                           std::to_string(number % 48));
    maker.leaf("description", "uplink to access switch " + maker.number(1000));
    maker.leaf("enabled", maker.below(4) == 0 ? "false" : "true");
    maker.leaf("mtu", std::to_string(1500 + maker.below(7700)));
    maker.open("ipv4");
    maker.open("address");
    maker.leaf("ip", "10." + maker.number(256) + "." + maker.number(256) + "." + maker.number(256));
    maker.leaf("netmask", "255.255.255.0");
    maker.close();
    maker.close();
    maker.leaf("vlan", maker.number(4094));
    maker.close();
}

Document message(std::string_view name, std::size_t size)
{
    Maker maker{false};
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
    Maker maker{indented};
    maker.open("config", " xmlns=\"urn:example:config\"");
    maker.open("interfaces");
    for (std::size_t i = 0; maker.size() < size; ++i) addInterface(maker, i);
    return maker.finish(name);
}

Document attributes(std::string_view name)
{
    Maker maker{true};
    maker.open("routes");
    while (maker.size() < kMegabyte) {
        maker.leaf("route", "",
                   " prefix=\"10." + maker.number(256) + ".0.0/16\" next-hop=\"192.168.0." +
                       maker.number(256) + "\" metric=\"" + maker.number(100) + "\" tag=\"" +
                       maker.number(10000) + "\" protocol=\"static\" state=\"up\"");
    }
    return maker.finish(name);
}

Document tiny(std::string_view name)
{
    Maker maker{false};
    maker.open("l");
    while (maker.size() < kMegabyte) maker.leaf("e", maker.below(2) == 0 ? "" : "1");
    return maker.finish(name);
}

Document longText(std::string_view name, std::string_view sentence)
{
    Maker maker{false};
    maker.open("book");
    while (maker.size() < kMegabyte) {
        std::string text;
        while (text.size() < 20000) text += sentence;
        maker.leaf("chapter", text);
    }
    return maker.finish(name);
}

Document namespaces(std::string_view name)
{
    Maker maker{true};
    maker.open("c:config", " xmlns:c=\"urn:c\" xmlns:a=\"urn:a\" xmlns:b=\"urn:b\"");
    while (maker.size() < kMegabyte) {
        maker.open("a:node", " xmlns:n=\"urn:n:" + maker.number(50) + "\" a:id=\"" +
                                 maker.number(100000) + "\"");
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

struct Recipe {
    std::string_view name;
    Document (*make)(std::string_view name);
};

// clang-format off
constexpr std::array kRecipes = {
    Recipe{"message-400",       [](std::string_view n) { return message(n, 400); }},
    Recipe{"message-2k",        [](std::string_view n) { return message(n, 2000); }},
    Recipe{"message-12k",       [](std::string_view n) { return message(n, 12000); }},
    Recipe{"config-1m",         [](std::string_view n) { return configuration(n, kMegabyte, true); }},
    Recipe{"config-1m-compact", [](std::string_view n) { return configuration(n, kMegabyte, false); }},
    Recipe{"config-10m",        [](std::string_view n) { return configuration(n, 10 * kMegabyte, true); }},
    Recipe{"config-100m",       [](std::string_view n) { return configuration(n, 100 * kMegabyte, true); }},
    Recipe{"attributes",        attributes},
    Recipe{"tiny",              tiny},
    Recipe{"text",              [](std::string_view n) { return longText(n, kEnglish); }},
    Recipe{"chinese",           [](std::string_view n) { return longText(n, kChinese); }},
    Recipe{"namespaces",        namespaces},
};
// clang-format on

}  // namespace

std::vector<std::string> documentNames()
{
    std::vector<std::string> names;
    for (const Recipe& recipe : kRecipes) names.emplace_back(recipe.name);
    return names;
}

Document makeDocument(std::string_view name)
{
    for (const Recipe& recipe : kRecipes) {
        if (recipe.name == name) return recipe.make(name);
    }
    throw std::invalid_argument{"no document is called " + std::string{name}};
}

}  // namespace netxml::bench
