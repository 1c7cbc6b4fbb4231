#include "parser/scan_prolog.hpp"

#include "io/encoding.hpp"
#include "support/block.hpp"

namespace netxml {
namespace {

// The "=" and the opening quote of a pseudo-attribute. Left behind the quote.
ParseError openValue(Cursor& cursor, char& quote) noexcept
{
    cursor.skipBlanks();
    if (!cursor.at('=')) return ParseError::EqualRequired;
    cursor.advance();
    cursor.skipBlanks();
    if (!cursor.at('"') && !cursor.at('\'')) return ParseError::StringNotStarted;
    quote = static_cast<char>(cursor.peek());
    cursor.advance();
    return ParseError::None;
}

ParseError closeValue(Cursor& cursor, char quote) noexcept
{
    if (!cursor.at(quote)) return ParseError::StringNotClosed;
    cursor.advance();
    return ParseError::None;
}

ParseError version(Cursor& cursor) noexcept
{
    if (!cursor.at("version")) return ParseError::VersionMissing;
    cursor.advance(7);
    char quote = 0;
    const ParseError error = openValue(cursor, quote);
    if (error != ParseError::None) return error;
    if (!cursor.at("1.0")) return ParseError::VersionUnsupported;
    cursor.advance(3);
    return closeValue(cursor, quote);
}

// Either the declaration ends here (`ended`), or a blank has been passed and something follows.
ParseError endOrBlank(Cursor& cursor, bool& ended) noexcept
{
    const bool blank = cursor.atBlank();
    cursor.skipBlanks();
    ended = cursor.at("?>");
    if (ended) cursor.advance(2);
    else if (!blank) return ParseError::SpaceRequired;
    return ParseError::None;
}

// Moves over one character of an encoding's name, but not over the quote that ends it: the bytes
// need not be well-formed.
void passNameCharacter(Cursor& cursor, char quote) noexcept
{
    const std::size_t step = stepOf(cursor.peek());
    if (step == 1) {
        cursor.advance();
        return;
    }
    std::size_t size = 1;
    const std::uint8_t* p = cursor.marked(cursor.fromMark());
    while (size < step && size < cursor.left() && p[size] != static_cast<std::uint8_t>(quote))
        ++size;
    cursor.advanceAsOne(size);
}

ParseError encodingValue(Cursor& cursor, XML_Encoding& encoding) noexcept
{
    cursor.advance(8);
    char quote = 0;
    const ParseError error = openValue(cursor, quote);
    if (error != ParseError::None) return error;
    const std::size_t start = cursor.fromMark();
    while (!cursor.at(quote)) {
        if (cursor.atEnd()) return ParseError::StringNotClosed;
        passNameCharacter(cursor, quote);
    }
    const Span name{cursor.marked(start), cursor.fromMark() - start, true};
    const XML_Encoding declared = findEncoding(name.view());
    if (declared == XML_ENCODING_NONE) return ParseError::UnsupportedEncoding;
    cursor.advance();
    encoding = declared;
    static_cast<void>(cursor.switchEncoding(declared));  // a failure shows in the stream's status
    return ParseError::None;
}

ParseError standalone(Cursor& cursor) noexcept
{
    if (!cursor.at("standalone")) return ParseError::DeclarationNotFinished;
    cursor.advance(10);
    char quote = 0;
    ParseError error = openValue(cursor, quote);
    if (error != ParseError::None) return error;
    if (cursor.at("yes")) cursor.advance(3);
    else if (cursor.at("no")) cursor.advance(2);
    else return ParseError::StandaloneValue;
    error = closeValue(cursor, quote);
    if (error != ParseError::None) return error;
    cursor.skipBlanks();
    if (!cursor.at("?>")) return ParseError::DeclarationNotFinished;
    cursor.advance(2);
    return ParseError::None;
}

}  // namespace

//     declaration := "<?xml" blank+ version encoding? standalone? blank* "?>"
//
// Kept: any name that begins with "xml" is taken for it here, so "<?xml-stylesheet" asks for a
// space.
ParseError scanXmlDeclaration(Cursor& cursor, XML_Encoding& encoding) noexcept
{
    cursor.advance(5);
    if (!cursor.atBlank()) return ParseError::SpaceRequired;
    cursor.skipBlanks();
    ParseError error = version(cursor);
    bool ended = false;
    if (error == ParseError::None) error = endOrBlank(cursor, ended);
    if (error != ParseError::None || ended) return error;
    if (cursor.at("encoding")) {
        error = encodingValue(cursor, encoding);
        if (error == ParseError::None) error = endOrBlank(cursor, ended);
        if (error != ParseError::None || ended) return error;
    }
    return standalone(cursor);
}

//     doctype := "<!DOCTYPE" blank+ any-char* ("[" any-char* "]" blank*)? ">"
//
// After "]" and its blanks the next character is tested again, so "]]>" ends the declaration.
ParseError scanDoctype(Cursor& cursor) noexcept
{
    cursor.advance(9);
    if (!cursor.atBlank()) return ParseError::SpaceRequired;
    cursor.skipBlanks();
    for (bool subset = false;;) {
        cursor.cross(findStop<NativeBlock, '>', ']', '['>);
        if (subset && cursor.at(']')) {
            cursor.advance();
            cursor.skipBlanks();
            if (cursor.at('>')) break;
            continue;
        }
        if (!subset && cursor.at('>')) break;
        if (cursor.atEnd()) return ParseError::DoctypeNotFinished;
        if (!cursor.atValid()) return ParseError::InvalidCharacter;
        if (cursor.at('[')) subset = true;
        cursor.advance();
    }
    cursor.advance();
    return ParseError::None;
}

}  // namespace netxml
