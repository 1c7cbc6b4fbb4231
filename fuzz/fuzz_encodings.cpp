// A document means the same in every encoding: transcoded, and declared or marked as that encoding,
// it gives the tree that it gives in UTF-8. Written in an encoding it is what the C library makes
// of it in UTF-8, or fails where that has no form, and reads back. And bytes that are no text of
// the encoding that they claim do no harm.
//
// The first byte is the encoding, the second says how it is told; the others are the document.
#include "fuzz/support/conversion.hpp"
#include "fuzz/support/fuzz_input.hpp"
#include "fuzz/support/require.hpp"
#include "fuzz/support/tree_text.hpp"
#include "tests/support/event_log.hpp"
#include "tests/support/plain_scanner.hpp"
#include "tests/support/sources.hpp"

#include <algorithm>

namespace {

constexpr std::size_t kLargestDocument = 1 << 14;

std::string markOf(XML_Encoding encoding)
{
    using namespace std::string_literals;
    switch (encoding) {
    case XML_ENCODING_UTF_8: return "\xEF\xBB\xBF";
    case XML_ENCODING_UTF_16LE: return "\xFF\xFE";
    case XML_ENCODING_UTF_16BE: return "\xFE\xFF";
    case XML_ENCODING_UTF_32LE:
    case XML_ENCODING_UCS_4LE: return "\xFF\xFE\0\0"s;
    case XML_ENCODING_UTF_32BE:
    case XML_ENCODING_UCS_4BE: return "\0\0\xFE\xFF"s;
    default: return {};  // none, or iconv writes it itself
    }
}

std::string declarationOf(XML_Encoding encoding)
{
    return std::string{"<?xml version=\"1.0\" encoding=\""} + XML_DOM_EncodingEnumToStr(encoding) +
           "\"?>";
}

// The tree, or the code of the error, without where it is.
std::string meaning(std::string_view document)
{
    EventLog log;
    const uint32_t status =
        XML_Parser_ByMem(bytesOf(document), static_cast<uint32_t>(document.size()), log.handler());
    if (status != XML_RET_OK) return "error " + std::to_string(log.error());
    const Tree tree = treeFrom(document);
    return tree ? described(tree.get()) : "no tree";
}

void compareReading(XML_Encoding encoding, bool marked, std::string_view body)
{
    // The C library takes numbers beyond Unicode in UTF-8 and UCS-4, but not in UTF-16.
    if (convertWhole("UTF-16LE", "UTF-8", std::string{body}).end != Conversion::End::Done) return;
    const std::string inUtf8 = declarationOf(XML_ENCODING_UTF_8) + std::string{body};
    const std::string declared = declarationOf(encoding) + std::string{body};
    const Conversion whole = convertWhole(XML_DOM_EncodingEnumToStr(encoding), "UTF-8", declared);
    if (whole.end != Conversion::End::Done) return;
    const std::string text = (marked ? markOf(encoding) : "") + whole.output;
    requireSame(meaning(inUtf8), meaning(text), "a document means the same in another encoding");
    for (const std::size_t size : {std::size_t{1}, std::size_t{63}}) {
        const ChunkList pieces{text, size};
        const Tree tree{XML_DOM_BuildTreeByMemList(pieces.list(), 0, nullptr)};
        const Tree whole8 = treeFrom(inUtf8);
        requireSame(tree ? described(tree.get()) : "", whole8 ? described(whole8.get()) : "",
                    "a document means the same in pieces");
    }
}

void compareWriting(XML_Encoding encoding, std::string_view body)
{
    const Tree tree = treeFrom(body);
    if (!tree) return;
    XML_DOM_SetEncoding(tree.get(), XML_ENCODING_UTF_8);
    const auto inUtf8 = translated(tree.get(), XML_DOM_WRITE_NO_DECLARATION);
    require(inUtf8.has_value(), "every tree can be written in UTF-8");

    require(XML_DOM_SetEncoding(tree.get(), encoding) == XML_RET_OK, "all encodings can be set");
    const auto text = translated(tree.get(), XML_DOM_WRITE_NO_DECLARATION);
    const char* name = XML_DOM_EncodingEnumToStr(encoding);
    const Conversion expected = convertWhole(name, "UTF-8", *inUtf8);
    require(text.has_value() == (expected.end == Conversion::End::Done),
            "a tree can be written where every character has a form");
    if (!text) return;
    requireSame(*text, expected.output, "what is written is what the C library makes of it");

    const auto declared = translated(tree.get());
    require(declared.has_value(), "a declaration can be written in front");
    const Oddities oddities = odditiesOf(tree.get(), body);
    const auto pieces = translatedByPieces(tree.get());
    require(pieces.has_value() != oddities.emptyCData, "only an empty CDATA section has no pieces");
    if (pieces) requireSame(*declared, *pieces, "pieces are the same text");
    if (oddities.quote) return;
    std::string message;
    const Tree again = treeFrom(*declared, &message);
    if (!again) requireSame(*declared, message, "what is written in an encoding can be read");
    require(XML_DOM_GetEncoding(again.get()) == encoding, "a declaration says the encoding");
    requireSame(described(tree.get(), Texts::Joined), described(again.get()),
                "what is written in an encoding reads back");
}

// A block with an invalid sequence is refused; any other means what the C library makes of it.
void compareClaim(XML_Encoding encoding, const std::string& claimed, const GuardedBytes& document)
{
    const Conversion whole = convertWhole("UTF-8", XML_DOM_EncodingEnumToStr(encoding), claimed);
    const std::string_view text{reinterpret_cast<const char*>(document.data()), document.size()};
    const std::string read = meaning(text);
    if (whole.end == Conversion::End::Invalid) {
        require(read.starts_with("error"), "what is no text of its encoding is refused");
        return;
    }
    if (whole.end == Conversion::End::Incomplete) return;
    const std::size_t body = whole.output.find("?>") + 2;
    const std::string inUtf8 = declarationOf(XML_ENCODING_UTF_8) + whole.output.substr(body);
    requireSame(meaning(inUtf8), read, "what is text of its encoding means the same in UTF-8");
}

// Bytes that only claim to be in an encoding.
void readRaw(XML_Encoding encoding, bool marked, std::string_view bytes)
{
    const Conversion declaration =
        convertWhole(XML_DOM_EncodingEnumToStr(encoding), "UTF-8", declarationOf(encoding));
    const std::string claimed = declaration.output + std::string{bytes};
    const GuardedBytes document{(marked ? markOf(encoding) : "") + claimed};
    // The C library takes numbers of UCS-4 that are no characters; those of UTF-8 come as they are.
    const bool judged = encoding != XML_ENCODING_UTF_8 && encoding < XML_ENCODING_UCS_4;
    if (judged) compareClaim(encoding, claimed, document);
    EventLog log;
    XML_Parser_ByMem(document.data(), static_cast<uint32_t>(document.size()), log.handler());
    EventLog plain;
    XML_IO_InStream* stream = XML_IO_ByMem(document.data(), document.size());
    plainParse(stream, plain.handler());
    XML_IO_DestroyByMem(stream);
    requireSame(plain.text(), log.text(), "any bytes are parsed by the plain rules");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const BalancedHeap heap;
    if (size < 3 || size > kLargestDocument) return 0;
    FuzzInput input{data, size};
    const auto encoding = static_cast<XML_Encoding>(input.below(XML_ENCODING_NONE));
    const std::uint8_t how = input.byte();
    const bool marked = (how & 1) != 0;
    const std::string_view body = input.rest();
    if (body.starts_with("<?xml")) return 0;  // the declaration is this target's own
    compareReading(encoding, marked, body);
    compareWriting(encoding, body);
    readRaw(encoding, marked, body);
    return 0;
}
