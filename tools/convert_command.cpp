// netxml convert: writes a file in another encoding.
#include "caret.hpp"
#include "commands.hpp"
#include "event_record.hpp"
#include "missing_characters.hpp"
#include "safe_write.hpp"
#include "source_text.hpp"
#include "xml_declaration.hpp"

#include <cstdio>

namespace netxml::tool {
namespace {

Failure missing(const SourceText& source, const MissingCharacter& character, const char* target)
{
    char number[16];
    std::snprintf(number, sizeof number, "U+%04X", character.code);
    return Failure{Status::Rejected,
                   problemAt(source.name(), source.text(), character.offset,
                             std::string{"the character "} + number + " in " + character.what() +
                                 " does not exist in " + target + ".",
                             ToolCode::CharacterMissing)};
}

// The whole document in the target encoding. iconv writes a byte-order mark for UTF-16 and UTF-32;
// the other encodings are told by the declaration.
std::string converted(const SourceText& source, XML_Encoding target)
{
    const char* name = XML_DOM_EncodingEnumToStr(target);
    auto bytes = recode(declareEncoding(source.text(), name), XML_ENCODING_UTF_8, target);
    if (bytes) return std::move(*bytes);
    try {
        Repertoire repertoire{target};
        const std::string text = referMissing(source.text(), repertoire);
        bytes = recode(declareEncoding(text, name), XML_ENCODING_UTF_8, target);
    } catch (const MissingCharacter& character) {
        throw missing(source, character, name);
    }
    if (!bytes) throw internalFailure(source.name(), "the text cannot be converted");
    return std::move(*bytes);
}

}  // namespace

Outcome convertFile(const std::string& file, const Options& options, ProgressBar& progress)
{
    SourceText source{file, progress};
    EventRecord events;
    source.parse(&events);
    source.decode();
    if (source.encoding() == XML_ENCODING_UTF_8) source.refuseBrokenText();

    std::string result = converted(source, options.target);
    if (!hasEvents(result, events, source.reached()))
        throw internalFailure(source.name(), "converting changes the document");

    Outcome outcome;
    if (options.outputPath == "-") outcome.output = std::move(result);
    else writeFile(options.outputPath, result);
    return outcome;
}

}  // namespace netxml::tool
