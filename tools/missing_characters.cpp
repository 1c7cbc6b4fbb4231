#include "missing_characters.hpp"

#include "markup.hpp"
#include "recode.hpp"
#include "utf8_text.hpp"

#include <cstdio>

namespace netxml::tool {
namespace {

// Where characters stand, in the words of a message; nullptr where references may stand.
const char* placeName(PieceKind kind)
{
    switch (kind) {
    case PieceKind::Text: return nullptr;
    case PieceKind::Comment: return "a comment";
    case PieceKind::Instruction: return "a processing instruction";
    case PieceKind::CData: return "a CDATA section";
    case PieceKind::Doctype: return "a document type declaration";
    default: return "a name";
    }
}

class Referrer {
public:
    Referrer(std::string_view text, Repertoire& repertoire) : text_{text}, repertoire_{repertoire}
    {
        out_.reserve(text.size());
    }

    std::string run()
    {
        Pieces pieces{text_};
        for (Piece piece; pieces.next(piece);) {
            const bool tag = piece.kind == PieceKind::StartTag || piece.kind == PieceKind::EmptyTag;
            if (tag) startTag(piece.text);
            else copy(piece.text, placeName(piece.kind));
        }
        return std::move(out_);
    }

private:
    void startTag(std::string_view tag)
    {
        TagAttributes attributes{tag};
        const char* done = tag.data();
        for (WrittenAttribute attribute; attributes.next(attribute);) {
            const std::string_view value = attribute.value;
            copy({done, static_cast<std::size_t>(value.data() - done)}, "a name");
            copy(value, nullptr);
            done = value.data() + value.size();
        }
        copy({done, static_cast<std::size_t>(tag.data() + tag.size() - done)}, "a name");
    }

    // `where` names what admits no reference; nullptr where one may stand.
    void copy(std::string_view part, const char* where)
    {
        for (std::size_t at = 0; at < part.size();) {
            std::size_t end = at;
            while (end < part.size() && static_cast<unsigned char>(part[end]) < 0x80) ++end;
            out_ += part.substr(at, end - at);
            at = end;
            if (at == part.size()) break;
            const Character character = firstCharacter(part.substr(at, 8));
            const std::string_view bytes = part.substr(at, character.size);
            at += character.size;
            if (repertoire_.has(bytes)) {
                out_ += bytes;
                continue;
            }
            if (where) {
                throw MissingCharacter{static_cast<std::size_t>(bytes.data() - text_.data()),
                                       character.code, where};
            }
            char reference[16];
            std::snprintf(reference, sizeof reference, "&#x%X;", character.code);
            out_ += reference;
        }
    }

    std::string_view text_;
    Repertoire& repertoire_;
    std::string out_;
};

}  // namespace

bool Repertoire::has(std::string_view character)
{
    const auto [entry, added] = tried_.try_emplace(std::string{character}, false);
    if (added) entry->second = recode(character, XML_ENCODING_UTF_8, encoding_).has_value();
    return entry->second;
}

std::string referMissing(std::string_view text, Repertoire& repertoire)
{
    return Referrer{text, repertoire}.run();
}

}  // namespace netxml::tool
