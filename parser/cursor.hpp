// Moving over the input: every advance, its look-ahead, and the line and column it comes to.
//
// The rule is one character at a time: each advance counts the position and refills the look-ahead.
// Long runs are crossed in one go up to the next place where a refill is due, so that the buffer
// changes at the same moments as by single steps; the position is counted when somebody asks.
#pragma once

#include "io/in_stream.hpp"
#include "netxml/parser.h"
#include "parser/beyond_ascii.hpp"
#include "support/span.hpp"

#include <cstring>

namespace netxml {

class Cursor {
public:
    Cursor(XML_IO_InStream& stream, XML_Parser& parser) noexcept
        : s_{stream}, parser_{parser}, counted_{stream.cursor}
    {
    }

    bool atEnd() const noexcept { return s_.cursor == s_.end; }
    std::uint8_t peek() const noexcept { return *s_.cursor; }  // not at the end
    bool at(char c) const noexcept { return !atEnd() && peek() == static_cast<std::uint8_t>(c); }
    bool atBlank() const noexcept { return !atEnd() && isBlank(peek()); }
    template <std::size_t N>
    bool at(const char (&text)[N]) const noexcept
    {
        return s_.available() >= N - 1 && std::memcmp(s_.cursor, text, N - 1) == 0;
    }
    bool atText(const std::uint8_t* text, std::size_t size) const noexcept
    {
        return s_.available() >= size && std::memcmp(s_.cursor, text, size) == 0;
    }
    // Whether the character at the cursor is in a class; ASCII by table, the rest by decoding. Not
    // at the end of the input.
    bool atNameStart() const noexcept { return atClass(kClassNameStart, isNameStart); }
    bool atName() const noexcept { return atClass(kClassName, isName); }
    bool atValid() const noexcept { return !atEnd() && atClass(kClassValid, isValid); }

    // Moves over one character.
    void advance() noexcept
    {
        const std::size_t step = stepOf(peek());
        s_.cursor += step < s_.available() ? step : s_.available();
        lookAhead();
    }
    // Moves over a valid character and, beyond ASCII, over those that follow it; `ascii` becomes
    // false then.
    void advanceValid(bool& ascii) noexcept
    {
        const bool high = peek() >= 0x80;
        advance();
        if (!high) return;
        ascii = false;
        cross(crossBeyondAscii);
    }
    // Moves over characters that are known to be there and to take so many bytes together.
    void advance(std::size_t bytes) noexcept
    {
        if (s_.status != StreamStatus::More) s_.cursor += bytes;
        else advanceSingly(bytes);
    }
    // Moves over bytes that need not be a character, but count as one.
    void advanceAsOne(std::size_t bytes) noexcept;

    // Moves over what `find` (begin, end -> stop) does not stop at, as far as one go may: the
    // caller looks at what stands there and comes back.
    template <class Find>
    void cross(Find find) noexcept
    {
        const std::uint8_t* from = s_.cursor;
        const std::uint8_t* to = find(from, runEnd());
        if (to == from) return;  // no advance, so no refill is due
        s_.cursor += to - from;
        lookAhead();
    }

    // Moves over blanks and sets the mark behind each; without a blank the mark stays.
    void skipBlanks() noexcept
    {
        if (atBlank()) skipBlankRun();
    }
    // Moves over blanks and leaves the mark.
    void passBlanks() noexcept
    {
        while (atBlank()) advance();
    }

    void setMark() noexcept { s_.mark = s_.cursor; }
    // How far behind the mark the cursor is. What lies between stays in the buffer, so such a
    // distance says where a text began however the buffer moves.
    std::size_t fromMark() const noexcept { return static_cast<std::size_t>(s_.cursor - s_.mark); }
    // The text between two such distances.
    const std::uint8_t* marked(std::size_t distance) const noexcept { return s_.mark + distance; }

    // Makes `bytes` bytes available beyond the usual look-ahead, if the source has them.
    void require(std::size_t bytes) noexcept;

    // The bytes buffered from the cursor on.
    std::size_t left() const noexcept { return s_.available(); }

    // True when the whole rest of the input lies in memory and stays where it is.
    bool inputStays() const noexcept { return s_.status == StreamStatus::End; }

    // Where the cursor stands, and how far it may go without a refill coming due. Nothing is there
    // to be read behind `plainEnd`, but blocks may be loaded up to `bufferEnd`.
    const std::uint8_t* place() const noexcept { return s_.cursor; }
    const std::uint8_t* bufferEnd() const noexcept { return s_.end; }
    const std::uint8_t* plainEnd() const noexcept
    {
        if (s_.status != StreamStatus::More) return s_.end;
        return s_.available() >= kLookAhead ? s_.end - kLookAhead : s_.cursor;
    }
    // Puts cursor and mark where single steps up to `plainEnd` would have put them.
    void moveTo(const std::uint8_t* cursor, const std::uint8_t* mark) noexcept
    {
        s_.mark += mark - s_.mark;
        s_.cursor += cursor - s_.cursor;
    }
    const std::uint8_t* markPlace() const noexcept { return s_.mark; }

    // Switches the encoding of what follows.
    StreamStatus switchEncoding(XML_Encoding encoding) noexcept;

    // Brings the parser's line and column up to the cursor.
    void settle() noexcept;
    // The same when only ASCII was crossed, and no end of a line.
    void countColumns() noexcept
    {
        parser_.column += static_cast<std::uint32_t>(s_.cursor - counted_);
        counted_ = s_.cursor;
    }

private:
    template <class Contains>
    bool atClass(std::uint8_t asciiClass, Contains contains) const noexcept
    {
        if (peek() < 0x80) return (kAsciiClasses[peek()] & asciiClass) != 0;
        return contains(decodeCharacter(s_.cursor, s_.end));
    }
    // Up to here characters may be crossed without a refill coming due in between.
    const std::uint8_t* runEnd() const noexcept
    {
        if (s_.status != StreamStatus::More) return s_.end;
        return s_.available() >= kLookAhead ? s_.end - (kLookAhead - 1) : s_.cursor;
    }
    void lookAhead() noexcept
    {
        if (s_.status == StreamStatus::More && s_.available() < kLookAhead) refill();
    }
    void refill() noexcept;
    void skipBlankRun() noexcept;
    void advanceSingly(std::size_t bytes) noexcept;

    XML_IO_InStream& s_;
    XML_Parser& parser_;
    const std::uint8_t* counted_;  // up to here the position is counted
};

}  // namespace netxml
