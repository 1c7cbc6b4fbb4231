#include "recode.hpp"

#include <algorithm>
#include <memory>
#include <new>

namespace netxml::tool {
namespace {

struct DestroyStream {
    void operator()(XML_IO_OutStream* stream) const { XML_IO_OutStreamDestroy(stream); }
};
using Stream = std::unique_ptr<XML_IO_OutStream, DestroyStream>;

constexpr std::size_t kPiece = 65536;

struct KnownStart {
    std::string_view bytes;
    std::size_t markSize;
    XML_Encoding encoding;
};

using namespace std::string_view_literals;

// In the order in which the parser tries them.
// clang-format off
constexpr KnownStart kKnownStarts[] = {
    {"\xFF\xFE\0\0"sv,  4, XML_ENCODING_UTF_32LE},
    {"\0\0\xFE\xFF"sv,  4, XML_ENCODING_UTF_32BE},
    {"\xFF\xFE"sv,      2, XML_ENCODING_UTF_16LE},
    {"\xFE\xFF"sv,      2, XML_ENCODING_UTF_16BE},
    {"\xEF\xBB\xBF"sv,  3, XML_ENCODING_UTF_8},
    {"<\0?\0"sv,        0, XML_ENCODING_UTF_16LE},
    {"\0<\0?"sv,        0, XML_ENCODING_UTF_16BE},
    {"<\0\0\0"sv,       0, XML_ENCODING_UTF_32LE},
    {"\0\0\0<"sv,       0, XML_ENCODING_UTF_32BE},
};

// By encoding: the bytes of a unit, and whether the name leaves their order open.
struct Units { std::uint8_t size; bool orderOpen; };
constexpr Units kUnits[] = {
    {1, false}, {2, false}, {2, false}, {1, false}, {4, false}, {4, false}, {2, true},
    {4, true},  {1, false}, {1, false}, {4, true},  {4, false}, {4, false},
};
// clang-format on
static_assert(sizeof kUnits / sizeof *kUnits == XML_ENCODING_NONE);

std::string_view lineFeedIn(XML_Encoding encoding)
{
    switch (encoding) {
    case XML_ENCODING_UTF_16LE: return "\n\0"sv;
    case XML_ENCODING_UTF_16BE: return "\0\n"sv;
    case XML_ENCODING_UTF_32LE:
    case XML_ENCODING_UCS_4LE: return "\n\0\0\0"sv;
    case XML_ENCODING_UTF_32BE:
    case XML_ENCODING_UCS_4BE: return "\0\0\0\n"sv;
    default: return "\n"sv;
    }
}

std::string collected(XML_IO_OutStream* stream)
{
    std::size_t size = 0;
    const char* text = XML_IO_MemOutStreamGetBuf(stream, &size);
    return text ? std::string{text, size} : std::string{};
}

Stream openStream(XML_Encoding from, XML_Encoding to)
{
    Stream stream{XML_IO_MemOutStreamCreate(from, to)};
    if (!stream) throw std::bad_alloc{};  // all thirteen are known to iconv where the tool is built
    return stream;
}

// The pieces of the usual size that convert, one after the other.
std::size_t goodPieces(std::string_view bytes, XML_Encoding from)
{
    const Stream stream = openStream(from, XML_ENCODING_UTF_8);
    std::size_t pieces = 0;
    for (; !bytes.empty(); ++pieces) {
        const std::string_view piece = bytes.substr(0, kPiece);
        if (XML_IO_OutStreamAppend(stream.get(), piece.data(), piece.size()) != XML_RET_OK) break;
        bytes.remove_prefix(piece.size());
    }
    return pieces;
}

}  // namespace

ByteStart startOf(std::string_view bytes)
{
    for (const KnownStart& start : kKnownStarts) {
        if (bytes.starts_with(start.bytes)) return {start.markSize, start.encoding};
    }
    return {0, XML_ENCODING_UTF_8};
}

std::optional<XML_Encoding> encodingOf(const ByteStart& start, XML_Encoding declared)
{
    // UTF-8 is also what the parser shows where nothing is declared.
    if (declared >= XML_ENCODING_NONE || declared == XML_ENCODING_UTF_8) return start.encoding;
    if (kUnits[declared].size != kUnits[start.encoding].size) return std::nullopt;
    return kUnits[declared].orderOpen ? start.encoding : declared;
}

// A character that is cut short at the end is held back without a word. So a line feed is sent
// after the text: behind such bytes it does not come out as one character.
std::optional<std::string> recode(std::string_view bytes, XML_Encoding from, XML_Encoding to)
{
    if (from == to) return std::string{bytes};
    const Stream stream = openStream(from, to);
    if (XML_IO_OutStreamAppend(stream.get(), bytes.data(), bytes.size()) != XML_RET_OK)
        return std::nullopt;
    std::string text = collected(stream.get());
    XML_IO_MemOutStreamCleanBuf(stream.get());

    const std::string_view lineFeed = lineFeedIn(from);
    if (XML_IO_OutStreamAppend(stream.get(), lineFeed.data(), lineFeed.size()) != XML_RET_OK)
        return std::nullopt;
    if (!bytes.empty() && collected(stream.get()).size() != kUnits[to].size) return std::nullopt;
    return text;
}

std::string recodeBeginning(std::string_view bytes, XML_Encoding from)
{
    const std::size_t good = std::min(goodPieces(bytes, from) * kPiece, bytes.size());
    const Stream stream = openStream(from, XML_ENCODING_UTF_8);
    XML_IO_OutStreamAppend(stream.get(), bytes.data(), good);
    for (std::size_t at = good; at < bytes.size(); ++at) {
        if (XML_IO_OutStreamAppend(stream.get(), &bytes[at], 1) != XML_RET_OK) break;
    }
    return collected(stream.get());
}

}  // namespace netxml::tool
