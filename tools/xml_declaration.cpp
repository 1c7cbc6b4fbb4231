#include "xml_declaration.hpp"

#include "markup.hpp"

namespace netxml::tool {
namespace {

// Where a pseudo-attribute's value stands in a declaration, without its quotes.
struct ValuePlace {
    std::size_t begin;
    std::size_t end;
};

constexpr std::size_t kNowhere = std::string_view::npos;

ValuePlace findValue(std::string_view declaration, std::string_view name)
{
    TagAttributes attributes{declaration};
    for (WrittenAttribute attribute; attributes.next(attribute);) {
        if (attribute.name != name) continue;
        const std::string_view value = attribute.unquoted();
        const auto begin = static_cast<std::size_t>(value.data() - declaration.data());
        return {begin, begin + value.size()};
    }
    return {kNowhere, kNowhere};
}

}  // namespace

std::string declareEncoding(std::string_view text, std::string_view encoding)
{
    Pieces pieces{text};
    Piece declaration{PieceKind::Text, {}};
    pieces.next(declaration);
    const std::string name{encoding};
    if (declaration.kind != PieceKind::Declaration)
        return "<?xml version=\"1.0\" encoding=\"" + name + "\"?>\n" + std::string{text};

    std::string result{text};
    const ValuePlace value = findValue(declaration.text, "encoding");
    if (value.begin != kNowhere) return result.replace(value.begin, value.end - value.begin, name);
    const ValuePlace version = findValue(declaration.text, "version");
    return result.insert(version.end + 1, " encoding=\"" + name + "\"");
}

}  // namespace netxml::tool
