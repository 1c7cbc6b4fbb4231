#include "markup.hpp"

#include <algorithm>
#include <cstddef>

namespace netxml::tool {
namespace {

constexpr std::string_view kDoctype = "<!DOCTYPE";
constexpr std::string_view kCData = "<![CDATA[";

// The size up to and with the next `end` at or behind `from`; all when there is none.
std::size_t sizeTo(std::string_view text, std::string_view end, std::size_t from)
{
    const std::size_t at = text.find(end, from);
    return at == std::string_view::npos ? text.size() : at + end.size();
}

// A ">" in a value does not end a tag.
std::size_t tagSize(std::string_view text)
{
    for (std::size_t at = 1; at < text.size(); ++at) {
        if (text[at] == '>') return at + 1;
        if (text[at] == '"' || text[at] == '\'') {
            at = text.find(text[at], at + 1);
            if (at == std::string_view::npos) break;
        }
    }
    return text.size();
}

// As the parser skips it: a "[" opens the internal subset, a "]" with blanks and ">" behind it ends
// the declaration; without a subset the first ">" does.
std::size_t doctypeSize(std::string_view text)
{
    bool subset = false;
    for (std::size_t at = kDoctype.size(); at < text.size();) {
        if (subset && text[at] == ']') {
            at = std::min(text.find_first_not_of(kBlanks, at + 1), text.size());
            if (at < text.size() && text[at] == '>') return at + 1;
            continue;
        }
        if (!subset && text[at] == '>') return at + 1;
        if (text[at] == '[') subset = true;
        ++at;
    }
    return text.size();
}

std::string_view withoutBlanks(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text;
}

}  // namespace

Piece Pieces::cut(PieceKind kind, std::size_t size)
{
    const Piece piece{kind, text_.substr(0, size)};
    text_.remove_prefix(size);
    return piece;
}

Piece Pieces::markup()
{
    if (text_.starts_with("</")) return cut(PieceKind::EndTag, sizeTo(text_, ">", 2));
    if (text_.starts_with("<!--")) return cut(PieceKind::Comment, sizeTo(text_, "-->", 4));
    if (text_.starts_with("<?")) return cut(PieceKind::Instruction, sizeTo(text_, "?>", 2));
    if (text_.starts_with(kCData))
        return cut(PieceKind::CData, sizeTo(text_, "]]>", kCData.size()));
    if (text_.starts_with(kDoctype)) return cut(PieceKind::Doctype, doctypeSize(text_));
    const std::size_t size = tagSize(text_);
    const bool empty = size > 2 && text_[size - 2] == '/';
    return cut(empty ? PieceKind::EmptyTag : PieceKind::StartTag, size);
}

bool Pieces::next(Piece& piece)
{
    if (text_.empty()) return false;
    const bool first = atStart_;
    atStart_ = false;
    if (text_[0] != '<') {
        piece = cut(PieceKind::Text, std::min(text_.find('<'), text_.size()));
        return true;
    }
    const bool declaration = first && text_.starts_with("<?xml");
    piece = markup();
    if (declaration) piece.kind = PieceKind::Declaration;
    return true;
}

std::string_view tagName(std::string_view tag)
{
    tag.remove_prefix(tag.starts_with("</") ? 2 : 1);
    return tag.substr(0, tag.find_first_of(" \t\r\n/>"));
}

NameParts splitName(std::string_view name)
{
    const std::size_t colon = name.find(':');
    if (colon == std::string_view::npos) return {{}, name};
    return {name.substr(0, colon), name.substr(colon + 1)};
}

TagAttributes::TagAttributes(std::string_view tag) : rest_{tag}
{
    const std::string_view name = tagName(tag);
    rest_.remove_prefix(static_cast<std::size_t>(name.data() - tag.data()) + name.size());
}

bool TagAttributes::next(WrittenAttribute& attribute)
{
    rest_ = withoutBlanks(rest_);
    const std::size_t nameEnd = rest_.find_first_of(" \t\r\n=");
    const std::size_t open = rest_.find_first_of("\"'");
    if (nameEnd == std::string_view::npos || open == std::string_view::npos) return false;
    const std::size_t close = rest_.find(rest_[open], open + 1);
    if (close == std::string_view::npos) return false;
    attribute = {rest_.substr(0, nameEnd), rest_.substr(open, close + 1 - open)};
    rest_.remove_prefix(close + 1);
    return true;
}

}  // namespace netxml::tool
