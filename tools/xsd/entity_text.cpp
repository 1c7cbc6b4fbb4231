#include "xsd/entity_text.hpp"

#include "markup.hpp"
#include "netxml/io.h"
#include "recode.hpp"
#include "utf8_text.hpp"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <string_view>
#include <utility>

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

// The name of the encoding in the XML declaration; it points into `text`.
std::string_view declaredEncoding(std::string_view text)
{
    if (!text.starts_with("<?xml")) return {};
    return declared(text.substr(0, text.find("?>")), "encoding");
}

void declareUtf8(std::string& bytes)
{
    const std::string_view encoding = declaredEncoding(bytes);
    bytes.replace(static_cast<std::size_t>(encoding.data() - bytes.data()), encoding.size(),
                  "UTF-8");
}

void turnIntoUtf8(std::string& bytes)
{
    const std::string_view text{bytes};
    const std::string_view encoding = declaredEncoding(text);
    const Foreign foreign = foreignEncoding(encoding);
    if (foreign == Foreign::None) return;
    // Where Windows has characters of its own, the two differ.
    const auto isControl = [](char c) { return (static_cast<unsigned char>(c) & 0xE0) == 0x80; };
    if (!equalsIgnoringCase(encoding, "iso-8859-1") &&
        std::any_of(text.begin(), text.end(), isControl))
        return;
    declareUtf8(bytes);
    // A byte beyond ASCII in the former is for the parser to refuse.
    if (foreign == Foreign::Latin1) bytes = latinToUtf8(bytes);
}

// GBK and its kin: a byte of such a character may look like markup.
void recodeToUtf8(std::string& bytes)
{
    const std::string_view name = declaredEncoding(bytes);
    if (name.empty()) return;
    const XML_Encoding encoding = XML_DOM_EncodingStrToEnum(std::string{name}.c_str());
    if (encoding == XML_ENCODING_NONE || encoding == XML_ENCODING_UTF_8) return;
    auto text = tool::recode(bytes, encoding, XML_ENCODING_UTF_8);
    if (!text || declaredEncoding(*text).empty()) return;
    bytes = std::move(*text);
    declareUtf8(bytes);
}

using Entities = std::map<std::string, std::string, std::less<>>;

// The text of an entity's value: references to characters are replaced where it is declared.
std::string replacementText(std::string_view value)
{
    std::string text;
    for (;;) {
        const std::size_t begin = value.find("&#");
        const std::size_t end = value.find(';', std::min(begin, value.size()));
        if (end == std::string_view::npos) break;
        text += value.substr(0, begin);
        value.remove_prefix(begin);
        const bool hex = value.starts_with("&#x");
        const std::string digits{value.substr(hex ? 3 : 2, end - begin - (hex ? 3 : 2))};
        tool::appendCharacter(
            text, static_cast<std::uint32_t>(std::strtoul(digits.c_str(), nullptr, hex ? 16 : 10)));
        value.remove_prefix(end - begin + 1);
    }
    return text.append(value);
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

}  // namespace

// Replaces references, entities inside entities too.
class ReadableText::Expander {
public:
    explicit Expander(ReadableText& result) : result_{result} {}

    void document() { markup(result_.written_); }

private:
    enum class Place {
        Content,  // what an entity holds is markup
        Tag,      // it is text in a value, and the tag stands in the file
        Value,    // the same, and it stands in an entity
    };

    void markup(std::string_view source)
    {
        using tool::PieceKind;
        tool::Pieces pieces{source};
        for (tool::Piece piece{}; !result_.trouble_ && pieces.next(piece);) {
            const bool tag = piece.kind == PieceKind::StartTag || piece.kind == PieceKind::EmptyTag;
            if (piece.kind == PieceKind::Doctype && open_.empty())
                entities_ = entitiesOf(piece.text);
            if (tag) references(piece.text, Place::Tag);
            else if (piece.kind == PieceKind::Text) references(piece.text, Place::Content);
            else result_.text_ += piece.text;
        }
    }

    void references(std::string_view source, Place place)
    {
        while (!source.empty() && !result_.trouble_) {
            const std::size_t size = std::min(source.find('&'), source.size());
            plain(source.substr(0, size), place);
            source.remove_prefix(size);
            if (source.empty()) return;
            const std::size_t end = source.find_first_of(kNameEnd, 1);
            const auto entity = end == std::string_view::npos || source[end] != ';'
                                    ? entities_.end()
                                    : entities_.find(source.substr(1, end - 1));
            const std::size_t taken = entity == entities_.end() ? 1 : end + 1;
            if (entity == entities_.end()) result_.text_ += '&';
            else reference(*entity, source.substr(0, taken), place);
            source.remove_prefix(taken);
        }
    }

    // The outermost reference is the one that stands in the file.
    void reference(const Entities::value_type& entity, std::string_view source, Place place)
    {
        if (open_.empty())
            outer_ = static_cast<std::size_t>(source.data() - result_.written_.data());
        if (const char* why = complaint(entity)) {
            result_.trouble_ = Trouble{outer_, "the entity \"" + entity.first + "\" " + why};
            return;
        }
        expanded_ += entity.second.size();
        const std::size_t begin = result_.text_.size();
        open_.push_back(&entity);
        if (place == Place::Content) markup(entity.second);
        else references(entity.second, Place::Value);
        open_.pop_back();
        if (open_.empty())
            result_.replacements_.push_back(
                {begin, result_.text_.size(), outer_, outer_ + source.size()});
    }

    const char* complaint(const Entities::value_type& entity) const
    {
        if (std::find(open_.begin(), open_.end(), &entity) != open_.end()) return "holds itself.";
        if (open_.size() == kMostEntityNesting)
            return "lies in more than 64 others; that is more than this compiler takes.";
        if (entity.second.size() > kMostExpansion - expanded_)
            return "does not fit: the entities of a document may come to 1 MiB of text.";
        return nullptr;
    }

    // A quote from an entity does not end a value (section 4.4.5).
    void plain(std::string_view source, Place place)
    {
        for (const char c : source) {
            if (place == Place::Value && c == '"') result_.text_ += "&#34;";
            else if (place == Place::Value && c == '\'') result_.text_ += "&#39;";
            else result_.text_ += c;
        }
    }

    ReadableText& result_;
    Entities entities_;
    std::vector<const Entities::value_type*> open_;
    std::size_t outer_ = 0;  // where the outermost reference stands
    std::size_t expanded_ = 0;
};

ReadableText::ReadableText(std::string bytes) : text_{std::move(bytes)}
{
    turnIntoUtf8(text_);
    if (std::string_view{text_}.find("<!ENTITY") == std::string_view::npos) return;
    recodeToUtf8(text_);
    written_.swap(text_);
    Expander{*this}.document();
    if (replacements_.empty() && !trouble_) written_.clear();
}

std::size_t ReadableText::writtenOffset(std::size_t offset) const
{
    const auto next = std::upper_bound(
        replacements_.begin(), replacements_.end(), offset,
        [](std::size_t wanted, const Replacement& entry) { return wanted < entry.begin; });
    if (next == replacements_.begin()) return offset;
    const Replacement& last = *(next - 1);
    return offset < last.end ? last.writtenBegin : last.writtenEnd + (offset - last.end);
}

}  // namespace netxml::xsd
