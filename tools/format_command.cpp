// netxml format: re-indents a file.
#include "caret.hpp"
#include "commands.hpp"
#include "event_record.hpp"
#include "markup.hpp"
#include "reindent.hpp"
#include "safe_write.hpp"
#include "source_text.hpp"

namespace netxml::tool {
namespace {

void refuseDoctype(const SourceText& source)
{
    Pieces pieces{source.text()};
    for (Piece piece; pieces.next(piece);) {
        if (piece.kind == PieceKind::StartTag || piece.kind == PieceKind::EmptyTag) return;
        if (piece.kind != PieceKind::Doctype) continue;
        const auto offset = static_cast<std::size_t>(piece.text.data() - source.text().data());
        throw Failure{Status::Rejected,
                      problemAt(source.name(), source.text(), offset,
                                "a document type declaration cannot be kept; --drop-doctype "
                                "leaves it out.",
                                ToolCode::DoctypeNotKept)};
    }
}

// The formatted bytes, in the encoding of the source and behind its byte-order mark.
std::string formatted(const SourceText& source, const std::string& indentation)
{
    const std::string text = reindent(source.text(), indentation);
    auto bytes = recode(text, XML_ENCODING_UTF_8, source.encoding());
    if (!bytes) throw internalFailure(source.name(), "the text cannot be written in its encoding");
    return std::string{source.mark()} + *bytes;
}

}  // namespace

Outcome formatFile(const std::string& file, const Options& options, ProgressBar& progress)
{
    SourceText source{file, progress};
    EventRecord events;
    source.parse(&events);
    source.decode();
    if (!options.dropDoctype) refuseDoctype(source);

    std::string result = formatted(source, options.indentation);
    if (!hasEvents(result, events, source.reached()))
        throw internalFailure(source.name(), "formatting changes the document");

    Outcome outcome;
    const bool changes = result != source.bytes();
    if (options.checkOnly) {
        if (!changes) return outcome;
        outcome.status = Status::Rejected;
        if (!options.quiet) outcome.output = source.name() + ": would change\n";
    } else if (!options.inPlace) {
        outcome.output = std::move(result);
    } else if (changes) {
        writeFile(file, result);
    }
    return outcome;
}

}  // namespace netxml::tool
