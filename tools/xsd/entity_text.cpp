#include "xsd/entity_text.hpp"

#include "markup.hpp"
#include "utf8_text.hpp"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <string_view>

namespace netxml::xsd {
namespace {

constexpr std::size_t kMostExpansion = std::size_t{1} << 20;  // bytes of all replacements together
constexpr unsigned kMostEntityNesting = 64;
constexpr std::string_view kNameEnd = " \t\r\n\"'<>&;%";

bool equalsIgnoringCase(std::string_view text, std::string_view lower)
{
    if (text.size() != lower.size()) return false;
    for (std::size_t i = 0; i != text.size(); ++i) {
        const char c = text[i] >= 'A' && text[i] <= 'Z' ? static_cast<char>(text[i] + 32) : text[i];
        if (c != lower[i]) return false;
    }
    return true;
}

// What stands between the quotes behind `name` in an XML declaration.
std::string_view declared(std::string_view declaration, std::string_view name)
{
    const std::size_t at = declaration.find(name);
    if (at == std::string_view::npos) return {};
    const std::size_t open = declaration.find_first_of("\"'", at);
    if (open == std::string_view::npos) return {};
    const std::size_t close = declaration.find(declaration[open], open + 1);
    if (close == std::string_view::npos) return {};
    return declaration.substr(open + 1, close - open - 1);
}

std::string latinToUtf8(std::string_view bytes)
{
    std::string text;
    for (const char byte : bytes) tool::appendCharacter(text, static_cast<unsigned char>(byte));
    return text;
}

// The name of an encoding that is taken for UTF-8's part or turned into it; else nothing.
enum class Foreign { None, Ascii, Latin1 };
Foreign foreignEncoding(std::string_view name)
{
    if (equalsIgnoringCase(name, "us-ascii") || equalsIgnoringCase(name, "ascii"))
        return Foreign::Ascii;
    if (equalsIgnoringCase(name, "iso-8859-1") || equalsIgnoringCase(name, "latin1") ||
        equalsIgnoringCase(name, "windows-1252"))
        return Foreign::Latin1;
    return Foreign::None;
}

void turnIntoUtf8(std::string& bytes)
{
    constexpr std::string_view kOpen = "<?xml";
    const std::string_view text{bytes};
    if (text.substr(0, kOpen.size()) != kOpen) return;
    const std::string_view encoding = declared(text.substr(0, text.find("?>")), "encoding");
    const Foreign foreign = foreignEncoding(encoding);
    if (foreign == Foreign::None) return;
    // Where Windows has characters of its own, the two differ.
    const auto isControl = [](char c) { return (static_cast<unsigned char>(c) & 0xE0) == 0x80; };
    if (!equalsIgnoringCase(encoding, "iso-8859-1") &&
        std::any_of(text.begin(), text.end(), isControl))
        return;
    bytes.replace(static_cast<std::size_t>(encoding.data() - text.data()), encoding.size(),
                  "UTF-8");
    // A byte beyond ASCII in the former is for the parser to refuse.
    if (foreign == Foreign::Latin1) bytes = latinToUtf8(bytes);
}

using Entities = std::map<std::string, std::string, std::less<>>;

// The text of an entity's value: references to characters are replaced where it is declared.
std::string replacementText(std::string_view value)
{
    std::string text;
    while (!value.empty()) {
        const std::size_t end = value.find(';');
        if (value.starts_with("&#") && end != std::string_view::npos) {
            const bool hex = value.starts_with("&#x");
            const std::string digits{value.substr(hex ? 3 : 2, end - (hex ? 3 : 2))};
            tool::appendCharacter(text, static_cast<std::uint32_t>(
                                            std::strtoul(digits.c_str(), nullptr, hex ? 16 : 10)));
            value.remove_prefix(end + 1);
        } else {
            text += value.front();
            value.remove_prefix(1);
        }
    }
    return text;
}

// The general entities with a value of their own in "<!ENTITY name "value">".
Entities entitiesOf(std::string_view doctype)
{
    constexpr std::string_view kOpen = "<!ENTITY";
    Entities entities;
    for (std::size_t at = doctype.find('['); at < doctype.size();) {
        if (doctype.substr(at).starts_with("<!--")) {
            at = doctype.find("-->", at);
            continue;
        }
        if (!doctype.substr(at).starts_with(kOpen)) {
            ++at;
            continue;
        }
        const std::size_t name = doctype.find_first_not_of(tool::kBlanks, at + kOpen.size());
        const std::size_t end = doctype.find_first_of(kNameEnd, name);
        const std::size_t open = doctype.find_first_not_of(tool::kBlanks, end);
        at += kOpen.size();
        if (open >= doctype.size() || (doctype[open] != '"' && doctype[open] != '\'')) continue;
        const std::size_t close = doctype.find(doctype[open], open + 1);
        if (close == std::string_view::npos) break;
        // Of several with one name the first counts.
        entities.emplace(doctype.substr(name, end - name),
                         replacementText(doctype.substr(open + 1, close - open - 1)));
        at = close + 1;
    }
    return entities;
}

// Replaces references, entities inside entities too. A quote is written as a reference, so that it
// ends no attribute's value.
class Expander {
public:
    explicit Expander(const Entities& entities) : entities_{entities} {}

    std::string expand(std::string_view text)
    {
        std::string result;
        append(result, text, 0);
        return result;
    }

private:
    void append(std::string& to, std::string_view text, unsigned nesting)
    {
        while (!text.empty()) {
            const std::size_t size = std::min(text.find('&'), text.size());
            appendPlain(to, text.substr(0, size), nesting);
            text.remove_prefix(size);
            if (text.empty()) return;
            const std::size_t end = text.find_first_of(kNameEnd, 1);
            const auto entity = end == std::string_view::npos || text[end] != ';'
                                    ? entities_.end()
                                    : entities_.find(text.substr(1, end - 1));
            if (entity == entities_.end() || nesting == kMostEntityNesting ||
                entity->second.size() > kMostExpansion - expanded_) {
                to += '&';
                text.remove_prefix(1);
                continue;
            }
            expanded_ += entity->second.size();
            append(to, entity->second, nesting + 1);
            text.remove_prefix(end + 1);
        }
    }
    static void appendPlain(std::string& to, std::string_view text, unsigned nesting)
    {
        for (const char c : text) {
            if (nesting != 0 && c == '"') to += "&#34;";
            else if (nesting != 0 && c == '\'') to += "&#39;";
            else to += c;
        }
    }

    const Entities& entities_;
    std::size_t expanded_ = 0;
};

}  // namespace

std::string readableBytes(std::string bytes)
{
    turnIntoUtf8(bytes);
    if (std::string_view{bytes}.find("<!ENTITY") == std::string_view::npos) return bytes;
    Entities entities;
    std::string result;
    tool::Pieces pieces{std::string_view{bytes}};
    using tool::PieceKind;
    for (tool::Piece piece{}; pieces.next(piece);) {
        if (piece.kind == PieceKind::Doctype) entities = entitiesOf(piece.text);
        const bool refers = piece.kind == PieceKind::StartTag ||
                            piece.kind == PieceKind::EmptyTag || piece.kind == PieceKind::Text;
        if (refers && !entities.empty()) result += Expander{entities}.expand(piece.text);
        else result += piece.text;
    }
    return result;
}

}  // namespace netxml::xsd
