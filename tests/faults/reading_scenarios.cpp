// Text to trees and to events, from a block, a list and a file, in several encodings.
#include "tests/faults/scenario.hpp"
#include "tests/support/event_log.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

namespace {

// Every construct; names, values and text beyond ASCII; more attributes and declarations than are
// compared one by one; a text longer than the steps of a buffer.
std::string everyConstruct(const char* encoding)
{
    std::string text = std::string{"<?xml version='1.0' encoding='"} + encoding +
                       "'?><!DOCTYPE r [ ]><!-- c --><?pi d?><r xmlns='urn:d' xmlns:p='urn:p'>";
    for (int i = 0; i < 12; ++i) {
        const std::string n = std::to_string(i);
        text += "<p:e" + n + " xmlns:q" + n + "='v'";
        for (int k = 0; k < 20; ++k) text += " a" + std::to_string(k) + "='&lt;'";
        text += " p:x='\xE4\xB8\xAD'>" + std::string(i == 5 ? 9000 : 5, 't') +
                "\xE4\xB8\xAD\xE6\x96\x87&amp;<\xE4\xB8\xAD/></p:e" + n + ">";
    }
    return text + "<![CDATA[ <x> ]]></r>";
}

std::string inUtf8()
{
    return everyConstruct("UTF-8");
}
std::string inGbk()
{
    return convertTo("GBK", everyConstruct("GBK"));
}
std::string inUtf16()
{
    return "\xFF\xFE" + convertTo("UTF-16LE", everyConstruct("UTF-16"));
}
std::string brokenAtTheEnd()
{
    return inUtf8() + "<";
}
// More than the converters are asked one by one for.
std::string muchBeyondAscii()
{
    std::string text = "<r><e>";
    for (int i = 0; i < 4000; ++i) text += "\xE4\xB8\xAD\xC3\xA9";
    return text + "</e><e a='\xE4\xB8\xAD'>x\xE4\xB8\xADy\xF0\x9F\x98\x80z\xE6\x96\x87</e></r>";
}

enum class From { Block, List, File };

// The same bytes as a source of each kind.
template <std::string (*makeText)()>
class Source {
public:
    uint32_t parse(From from, const XML_SAX_Handler* handler)
    {
        switch (from) {
        case From::Block: return NOTED(XML_Parser_ByMem)(bytesOf(text_), size(), handler);
        case From::List: return NOTED(XML_Parser_ByMemList)(list_.list(), handler);
        default: return NOTED(XML_Parser_ByFile)(file_.path(), handler);
        }
    }
    XML_DOM_Node* build(From from, uint32_t errorSize, char* error)
    {
        switch (from) {
        case From::Block:
            return NOTED(XML_DOM_BuildTreeByMem)(bytesOf(text_), size(), errorSize, error);
        case From::List: return NOTED(XML_DOM_BuildTreeByMemList)(list_.list(), errorSize, error);
        default: return NOTED(XML_DOM_BuildTreeByFile)(file_.path(), errorSize, error);
        }
    }

private:
    uint32_t size() const { return static_cast<uint32_t>(text_.size()); }

    std::string text_ = makeText();
    ChunkList list_{text_, 700};
    TempFile file_{text_};
};

template <From from, std::string (*makeText)()>
class Build : public Trial {
public:
    bool act() override
    {
        error_.fill('?');
        root_ = source_.build(from, static_cast<uint32_t>(error_.size()), error_.data());
        if (root_) return true;
        EXPECT_NE(std::memchr(error_.data(), '\0', error_.size()), nullptr) << "not terminated";
        return false;
    }
    std::string product() override
    {
        const std::string text = dump(root_);
        NOTED(XML_DOM_DelNode)(root_);
        return text;
    }

private:
    Source<makeText> source_;
    std::array<char, 300> error_{};
    XML_DOM_Node* root_ = nullptr;
};

// A document that is refused for what it holds: with a fault it is refused all the same.
template <From from>
class Refuse : public Trial {
public:
    bool act() override
    {
        std::array<char, 300> error{};
        EXPECT_EQ(source_.build(from, static_cast<uint32_t>(error.size()), error.data()), nullptr);
        report_ = error.data();
        return report_.find("extra content at the end") != std::string::npos ||
               report_.find("the end of") != std::string::npos;
    }
    std::string product() override { return report_; }
    // How much is buffered at the end, and so what the excerpt shows, depends on the readings.
    bool mayComeTo(const std::string& clean, const std::string& got) const override
    {
        return clean.substr(0, clean.find(':')) == got.substr(0, got.find(':'));
    }

private:
    Source<brokenAtTheEnd> source_;
    std::string report_;
};

template <From from, std::string (*makeText)()>
class Parse : public Trial {
public:
    bool act() override
    {
        EventLog log;
        const uint32_t status = source_.parse(from, log.handler());
        EXPECT_TRUE(status == XML_RET_OK || status == XML_RET_FAIL);
        events_ = log.text();
        return status == XML_RET_OK;
    }
    std::string product() override { return events_; }

private:
    Source<makeText> source_;
    std::string events_;
};

}  // namespace

std::vector<Scenario> readingScenarios()
{
    return {
        scenario<Build<From::Block, inUtf8>>("a tree from a block in UTF-8"),
        scenario<Build<From::List, inUtf8>>("a tree from a list in UTF-8"),
        scenario<Build<From::File, inUtf8>>("a tree from a file in UTF-8"),
        scenario<Build<From::Block, inGbk>>("a tree from a block in GBK"),
        scenario<Build<From::List, inGbk>>("a tree from a list in GBK"),
        scenario<Build<From::File, inGbk>>("a tree from a file in GBK"),
        scenario<Build<From::Block, inUtf16>>("a tree from a block in UTF-16"),
        scenario<Build<From::List, inUtf16>>("a tree from a list in UTF-16"),
        scenario<Build<From::File, inUtf16>>("a tree from a file in UTF-16"),
        scenario<Build<From::Block, muchBeyondAscii>>("a tree with much beyond ASCII"),
        scenario<Refuse<From::Block>>("a block that is refused"),
        scenario<Refuse<From::List>>("a list that is refused"),
        scenario<Refuse<From::File>>("a file that is refused"),
        scenario<Parse<From::Block, inUtf8>>("the events of a block in UTF-8"),
        scenario<Parse<From::List, inUtf8>>("the events of a list in UTF-8"),
        scenario<Parse<From::File, inUtf8>>("the events of a file in UTF-8"),
        scenario<Parse<From::Block, inGbk>>("the events of a block in GBK"),
        scenario<Parse<From::List, inUtf16>>("the events of a list in UTF-16"),
        scenario<Parse<From::File, inUtf16>>("the events of a file in UTF-16"),
    };
}
