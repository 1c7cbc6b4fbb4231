#include "reindent.hpp"

#include "markup.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <vector>

namespace netxml::tool {
namespace {

// Deeper levels are not indented further: the output of a very deep text would grow with the square
// of its depth.
constexpr std::size_t kDeepestIndentation = 200;

struct Item {
    Piece piece;
    std::size_t end = 0;     // of a start tag: the index of its end tag
    bool verbatim = false;   // of a start tag: the content is kept as it stands
    bool hasMarkup = false;  // of a start tag: the content has elements, comments, instructions
};

// The pieces with what a start tag must know of its content beforehand.
std::vector<Item> readItems(std::string_view text)
{
    std::vector<Item> items;
    std::vector<std::size_t> open;
    Pieces pieces{text};
    for (Piece piece; pieces.next(piece);) {
        const bool ends = piece.kind == PieceKind::EndTag;
        if (ends && !open.empty()) {
            Item& start = items[open.back()];
            start.end = items.size();
            start.verbatim = start.verbatim || !start.hasMarkup;
            open.pop_back();
        } else if (!open.empty()) {
            Item& around = items[open.back()];
            if (piece.kind == PieceKind::CData) around.verbatim = true;
            else if (piece.kind != PieceKind::Text) around.hasMarkup = true;
            else if (!isBlankText(piece.text)) around.verbatim = true;
        }
        if (piece.kind == PieceKind::StartTag) open.push_back(items.size());
        items.push_back({piece});
    }
    return items;
}

// How content is treated, unless the element keeps it anyway.
enum class Space { Default, Preserve };

// The value of xml:space may be written with character references.
std::string plainValue(std::string_view value)
{
    std::string plain;
    for (std::size_t at = 0; at < value.size(); ++at) {
        const std::size_t semicolon = value.find(';', at);
        if (value.substr(at, 2) != "&#" || semicolon == std::string_view::npos) {
            plain += value[at];
            continue;
        }
        const bool hexadecimal = value.substr(at, 3) == "&#x";
        const std::size_t digits = at + (hexadecimal ? 3 : 2);
        const std::string number{value.substr(digits, semicolon - digits)};
        plain += static_cast<char>(std::strtoul(number.c_str(), nullptr, hexadecimal ? 16 : 10));
        at = semicolon;
    }
    return plain;
}

Space spaceInside(std::string_view tag, Space around)
{
    TagAttributes attributes{tag};
    for (WrittenAttribute attribute; attributes.next(attribute);) {
        if (attribute.name != "xml:space") continue;
        const std::string value = plainValue(attribute.unquoted());
        if (value == "preserve") return Space::Preserve;
        if (value == "default") return Space::Default;
    }
    return around;
}

// Line breaks in blank text, two at most: a second one is a blank line.
int lineBreaks(std::string_view blanks)
{
    int breaks = 0;
    for (std::size_t at = 0; at < blanks.size() && breaks < 2; ++at) {
        const bool pair = blanks[at] == '\r' && blanks.substr(at + 1, 1) == "\n";
        if (blanks[at] == '\n' || (blanks[at] == '\r' && !pair)) ++breaks;
    }
    return breaks;
}

std::string_view lineEndOf(std::string_view text)
{
    const std::size_t at = text.find_first_of("\r\n");
    if (at == std::string_view::npos || text[at] == '\n') return "\n";
    return text.substr(at, 2) == "\r\n" ? "\r\n" : "\r";
}

class Reindenter {
public:
    Reindenter(std::string_view text, std::string_view step, std::string_view lineEnd)
        : items_{readItems(text)}, step_{step}, lineEnd_{lineEnd}
    {
        out_.reserve(text.size() + text.size() / 4);
    }

    std::string run()
    {
        for (std::size_t i = 0; i < items_.size(); ++i) {
            if (space() == Space::Preserve) i = preserved(i);
            else i = indented(i);
        }
        out_ += lineEnd_;
        return std::move(out_);
    }

private:
    Space space() const { return open_.empty() ? Space::Default : open_.back(); }

    // A piece in content that is re-indented. Returns the index of the last piece done.
    std::size_t indented(std::size_t i)
    {
        const Item& item = items_[i];
        switch (item.piece.kind) {
        case PieceKind::Doctype: return i;
        case PieceKind::Text: blankLine_ = blankLine_ || lineBreaks(item.piece.text) == 2; return i;
        case PieceKind::EndTag:
            open_.pop_back();
            breakLine(false);
            tag(item.piece.text);
            return i;
        case PieceKind::StartTag:
            breakLine(true);
            tag(item.piece.text);
            return enter(i);
        case PieceKind::EmptyTag:
            breakLine(true);
            tag(item.piece.text);
            return i;
        default:
            breakLine(true);
            out_ += item.piece.text;
            return i;
        }
    }

    // A piece in content that is kept.
    std::size_t preserved(std::size_t i)
    {
        const Item& item = items_[i];
        out_ += item.piece.text;
        if (item.piece.kind == PieceKind::StartTag) return enter(i);
        if (item.piece.kind != PieceKind::EndTag) return i;
        open_.pop_back();
        first_ = false;
        blankLine_ = false;
        return i;
    }

    // Behind a start tag: opens its content, or writes it as it stands with its end tag.
    std::size_t enter(std::size_t i)
    {
        const Item& item = items_[i];
        const Space inside = spaceInside(item.piece.text, space());
        if (!item.verbatim) {
            open_.push_back(inside);
            first_ = true;
            blankLine_ = false;
            return i;
        }
        const char* begin = item.piece.text.data() + item.piece.text.size();
        const std::string_view end = items_[item.end].piece.text;
        out_.append(begin, end.data());
        if (space() == Space::Preserve) out_ += end;
        else tag(end);
        return item.end;
    }

    // Begins a line, after a blank one where the text has one between siblings.
    void breakLine(bool sibling)
    {
        if (!out_.empty()) out_ += lineEnd_;
        if (sibling && !first_ && blankLine_) out_ += lineEnd_;
        for (std::size_t i = std::min(open_.size(), kDeepestIndentation); i != 0; --i)
            out_ += step_;
        first_ = false;
        blankLine_ = false;
    }

    void tag(std::string_view text)
    {
        const std::string_view name = tagName(text);
        out_.append(text.data(), name.data() + name.size());
        if (!text.starts_with("</")) {
            TagAttributes attributes{text};
            for (WrittenAttribute a; attributes.next(a);) {
                out_ += ' ';
                out_ += a.name;
                out_ += '=';
                out_ += a.value;
            }
        }
        out_ += text.ends_with("/>") ? "/>" : ">";
    }

    std::vector<Item> items_;
    std::string_view step_;
    std::string_view lineEnd_;
    std::string out_;
    std::vector<Space> open_;  // of the elements whose content is gone through
    bool first_ = true;        // nothing stands before in this content
    bool blankLine_ = false;   // the blanks before hold a blank line
};

}  // namespace

std::string reindent(std::string_view text, std::string_view step)
{
    const std::string_view lineEnd = lineEndOf(text);
    std::string result = Reindenter{text, step, lineEnd}.run();
    const std::string_view first = lineEndOf(result);
    if (first == lineEnd) return result;
    // The text's first line end stood among blanks that went, and one that is kept comes first now:
    // by that one the result would be formatted the next time.
    const std::string kept{first};
    return Reindenter{text, step, kept}.run();
}

}  // namespace netxml::tool
