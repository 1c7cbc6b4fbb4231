// The pieces of an XML text that the parser has accepted, each as it is written.
#pragma once

#include <string_view>

namespace netxml::tool {

enum class PieceKind {
    Declaration,  // "<?xml ...?>"
    Doctype,
    Comment,
    Instruction,
    StartTag,
    EmptyTag,
    EndTag,
    CData,
    Text,  // up to the next "<"
};

struct Piece {
    PieceKind kind;
    std::string_view text;
};

// Cuts an accepted text into its pieces, one after the other, without a gap. Text that the parser
// would not accept is cut somehow.
class Pieces {
public:
    explicit Pieces(std::string_view text) : text_{text}, atStart_{true} {}

    bool next(Piece& piece);

private:
    Piece cut(PieceKind kind, std::size_t size);
    Piece markup();

    std::string_view text_;
    bool atStart_;
};

constexpr std::string_view kBlanks = " \t\r\n";

inline bool isBlankText(std::string_view text)
{
    return text.find_first_not_of(kBlanks) == std::string_view::npos;
}

// The name of a start or end tag, with its prefix.
std::string_view tagName(std::string_view tag);

// A name with its prefix, in two.
struct NameParts {
    std::string_view prefix;
    std::string_view local;
};
NameParts splitName(std::string_view name);

struct WrittenAttribute {
    std::string_view name;   // with its prefix
    std::string_view value;  // with its quotes

    std::string_view unquoted() const { return value.substr(1, value.size() - 2); }
};

// Goes through the attributes of a start tag, declarations included.
class TagAttributes {
public:
    explicit TagAttributes(std::string_view tag);

    bool next(WrittenAttribute& attribute);

private:
    std::string_view rest_;
};

}  // namespace netxml::tool
