// Writes a document element by element, and counts what every contestant must find in it.
#pragma once

#include "documents.hpp"

#include <cstddef>
#include <initializer_list>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace netxml::bench {

// The parts of a list are made in their order, so that every compiler draws the same numbers.
inline std::string joined(std::initializer_list<std::string> parts)
{
    std::string text;
    for (const std::string& part : parts) text += part;
    return text;
}

class DocumentMaker {
public:
    explicit DocumentMaker(bool indented) : indented_{indented} {}

    void open(std::string_view tag, std::string_view attributes = {})
    {
        line();
        startTag(tag, attributes);
        text_ += '>';
        tags_.emplace_back(tag);
    }
    void close()
    {
        const std::string tag = tags_.back();
        tags_.pop_back();
        line();
        endTag(tag);
    }
    void leaf(std::string_view tag, std::string_view value, std::string_view attributes = {})
    {
        line();
        inlineLeaf(tag, value, attributes);
    }
    // A leaf within text: it stands on no line of its own.
    void inlineLeaf(std::string_view tag, std::string_view value, std::string_view attributes = {})
    {
        startTag(tag, attributes);
        if (value.empty()) {
            text_ += "/>";
        } else {
            text_ += '>';
            text_ += value;
            endTag(tag);
        }
    }
    void text(std::string_view text) { text_ += text; }

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
    void startTag(std::string_view tag, std::string_view attributes)
    {
        text_ += '<';
        text_ += tag;
        text_ += attributes;
        ++elements_;
    }
    void endTag(std::string_view tag)
    {
        text_ += "</";
        text_ += tag;
        text_ += '>';
    }

    bool indented_;
    std::string text_;
    std::vector<std::string> tags_;
    std::size_t elements_ = 0;
    std::mt19937_64 random_{20261121};
};

}  // namespace netxml::bench
