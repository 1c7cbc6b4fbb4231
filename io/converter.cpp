#include "io/converter.hpp"

#include "io/encoding.hpp"
#include "support/block.hpp"

#include <cerrno>
#include <cstring>

namespace netxml {
namespace {

// iconv() takes its input as char** in some systems and as const char** in others.
template <class Text>
std::size_t call(std::size_t (*convert)(iconv_t, Text**, std::size_t*, char**, std::size_t*),
                 iconv_t converter, ConvertInput& in, ConvertOutput& out) noexcept
{
    Text* from = reinterpret_cast<Text*>(const_cast<std::uint8_t*>(in.cursor));
    char* to = reinterpret_cast<char*>(out.cursor);
    std::size_t fromLeft = in.left();
    std::size_t toLeft = out.left();
    const std::size_t result = convert(converter, &from, &fromLeft, &to, &toLeft);
    in.cursor = in.end - fromLeft;
    out.cursor = out.end - toLeft;
    return result;
}

ConvertEnd convertOnce(iconv_t converter, ConvertInput& in, ConvertOutput& out) noexcept
{
    if (call(iconv, converter, in, out) != static_cast<std::size_t>(-1)) return ConvertEnd::Done;
    switch (errno) {
    case E2BIG: return ConvertEnd::Full;
    case EINVAL: return ConvertEnd::Incomplete;
    default: return ConvertEnd::Invalid;
    }
}

// As much of the input as is worth looking at for the room that is left.
ConvertInput windowFor(const ConvertInput& in, const ConvertOutput& out) noexcept
{
    constexpr std::size_t kSlack = 64;
    const std::size_t most = out.left() + kSlack;
    return {in.cursor, in.left() < most ? in.end : in.cursor + most};
}

// Copies ASCII as far as it goes and fits.
void copyAscii(ConvertInput& in, ConvertOutput& out) noexcept
{
    const std::size_t most = in.left() < out.left() ? in.left() : out.left();
    const std::uint8_t* stop = findHigh(in.cursor, in.cursor + most);
    const std::size_t size = static_cast<std::size_t>(stop - in.cursor);
    if (size == 0) return;
    std::memcpy(out.cursor, in.cursor, size);
    in.cursor = stop;
    out.cursor += size;
}

// Where the next run of ASCII begins that is long enough to be worth leaving the converter for.
const std::uint8_t* endOfMixedRun(XML_Encoding source, const ConvertInput& in) noexcept
{
    constexpr std::ptrdiff_t kWorthwhile = 32;
    const std::uint8_t* p = in.cursor;
    while (p != in.end) {
        if (*p >= 0x80) {
            p += characterLength(source, p, in.end);
            continue;
        }
        const std::uint8_t* stop = findHigh(p, in.end);
        if (stop == in.end || stop - p >= kWorthwhile) return p;
        p = stop;
    }
    return p;
}

}  // namespace

iconv_t openConverter(const char* target, const char* source) noexcept
{
    return target && source ? iconv_open(target, source) : noConverter();
}

void closeConverter(iconv_t& converter) noexcept
{
    if (isOpen(converter)) iconv_close(converter);
    converter = noConverter();
}

ConvertEnd convertThrough(iconv_t converter, ConvertInput& in, ConvertOutput& out) noexcept
{
    for (;;) {
        ConvertInput piece = windowFor(in, out);
        if (piece.end == in.end) return convertOnce(converter, in, out);
        const ConvertEnd end = convertOnce(converter, piece, out);
        in.cursor = piece.cursor;  // a piece may end inside a character: that begins the next piece
        if (end == ConvertEnd::Full || end == ConvertEnd::Invalid) return end;
    }
}

ConvertEnd convertAroundAscii(iconv_t converter, XML_Encoding source, ConvertInput& in,
                              ConvertOutput& out) noexcept
{
    for (;;) {
        copyAscii(in, out);
        if (in.left() == 0) return ConvertEnd::Done;
        if (*in.cursor < 0x80) return ConvertEnd::Full;
        const std::uint8_t* start = in.cursor;
        ConvertInput run{start, endOfMixedRun(source, windowFor(in, out))};
        const bool cut = run.end != in.end;
        ConvertEnd end = convertThrough(converter, run, out);
        in.cursor = run.cursor;
        if (end == ConvertEnd::Incomplete && cut) {
            if (in.cursor != start) continue;          // the window ended inside a character
            end = convertThrough(converter, in, out);  // malformed: judged in full
        }
        if (end != ConvertEnd::Done) return end;
    }
}

ConvertEnd copyChecked(iconv_t checker, ConvertInput& in, ConvertOutput& out) noexcept
{
    for (;;) {
        std::uint8_t scratch[512];
        ConvertOutput checked{scratch, scratch + sizeof scratch};
        const std::size_t size = in.left() < out.left() ? in.left() : out.left();
        const bool cut = size < in.left();
        ConvertInput piece{in.cursor, in.cursor + size};
        const ConvertEnd end = convertThrough(checker, piece, checked);
        const std::size_t valid = static_cast<std::size_t>(piece.cursor - in.cursor);
        std::memcpy(out.cursor, in.cursor, valid);
        in.cursor += valid;
        out.cursor += valid;
        if (end == ConvertEnd::Full) continue;  // of the scratch, not of the output
        if (end == ConvertEnd::Invalid || !cut) return end;
        return ConvertEnd::Full;
    }
}

}  // namespace netxml
