#include "parser/cursor.hpp"

#include "parser/position.hpp"

namespace netxml {

void Cursor::settle() noexcept
{
    Position position{parser_.line, parser_.column, s_.end};
    position.pass(counted_, s_.cursor);
    parser_.line = position.line();
    parser_.column = position.column();
    counted_ = s_.cursor;
}

// What lies before the mark may go: up to there it has to be counted before.
void Cursor::refill() noexcept
{
    if (counted_ < s_.mark) settle();
    const std::ptrdiff_t fromMark = counted_ - s_.mark;
    XML_IO_Grow(&s_);
    counted_ = s_.mark + fromMark;
}

void Cursor::require(std::size_t bytes) noexcept
{
    if (s_.status != StreamStatus::More || s_.available() >= bytes) return;
    settle();
    fillAhead(s_, bytes);
    counted_ = s_.cursor;
}

StreamStatus Cursor::switchEncoding(XML_Encoding encoding) noexcept
{
    settle();
    static_cast<void>(XML_IO_SwitchEncoding(&s_, encoding));
    counted_ = s_.cursor;
    return s_.status;
}

void Cursor::advanceSingly(std::size_t bytes) noexcept
{
    while (bytes != 0) {
        const std::size_t step = stepOf(peek());
        advance();
        bytes -= step < bytes ? step : bytes;
    }
}

void Cursor::advanceAsOne(std::size_t bytes) noexcept
{
    settle();
    s_.cursor += bytes;
    ++parser_.column;
    counted_ = s_.cursor;
    lookAhead();
}

// By the rule each blank is an advance with its refill, then the mark: a refill that comes due
// behind the run's last blank finds the mark in front of that blank.
void Cursor::skipBlankRun() noexcept
{
    while (atBlank()) {
        std::uint8_t* start = s_.cursor;
        const std::uint8_t* limit = runEnd();
        std::uint8_t* p = start;
        while (p != limit && isBlank(*p)) ++p;
        if (p == start) {
            advance();
        } else if (p == limit && s_.status == StreamStatus::More) {
            if (p - 1 != start) s_.mark = p - 1;
            s_.cursor = p;
            refill();
        } else {
            s_.cursor = p;
        }
        setMark();
    }
}

}  // namespace netxml
