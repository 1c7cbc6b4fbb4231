// Text that is appended to an output stream piece by piece, cut anywhere, comes out as when the C
// library converts it as a whole, in memory and in a file alike; what cannot be converted is
// refused, and what was stored by then is the begin of what comes before it.
//
// Two bytes choose the encodings and one how the text is made; then a byte says the size of each
// piece, and after a zero byte comes the text.
#include "fuzz/support/conversion.hpp"
#include "fuzz/support/fuzz_input.hpp"
#include "fuzz/support/memory_file.hpp"
#include "fuzz/support/require.hpp"
#include "netxml/netxml.h"

#include <memory>
#include <vector>

namespace {

constexpr std::size_t kLargestText = 1 << 13;

struct DestroyStream {
    void operator()(XML_IO_OutStream* stream) const { XML_IO_OutStreamDestroy(stream); }
};
using Stream = std::unique_ptr<XML_IO_OutStream, DestroyStream>;

struct Case {
    XML_Encoding source;
    XML_Encoding target;
    std::vector<std::size_t> sizes;
    std::string text;
};

// Appends the pieces from copies that end where their memory does. Whether all were taken.
bool appendAll(XML_IO_OutStream* stream, const Case& c)
{
    std::size_t at = 0;
    for (std::size_t i = 0; at < c.text.size(); ++i) {
        const std::size_t asked = i < c.sizes.size() ? c.sizes[i] : c.text.size();
        const std::size_t size = std::min(asked, c.text.size() - at);
        const std::vector<char> piece(c.text.begin() + static_cast<std::ptrdiff_t>(at),
                                      c.text.begin() + static_cast<std::ptrdiff_t>(at + size));
        if (XML_IO_OutStreamAppend(stream, piece.data(), size) != XML_RET_OK) return false;
        at += size;
    }
    return true;
}

std::string collected(XML_IO_OutStream* stream)
{
    size_t length = 1;
    const char* bytes = XML_IO_MemOutStreamGetBuf(stream, &length);
    require((bytes == nullptr) == (length == 0), "without output there is no buffer");
    return bytes ? std::string(bytes, length) : std::string{};
}

// What the whole comes to, with whether it is one that a stream takes.
Conversion expectedOf(const Case& c)
{
    if (c.source == c.target) return {c.text, Conversion::End::Done};
    const char* source = XML_DOM_EncodingEnumToStr(c.source);
    const char* target = XML_DOM_EncodingEnumToStr(c.target);
    // The direct converter of glibc 2.36 has an error; GBK holds all of GB2312 with the same bytes.
    if (c.source == XML_ENCODING_GB2312 && c.target == XML_ENCODING_GBK) {
        Conversion checked = convertWhole("UTF-8", source, c.text);
        checked.output = convertWhole(source, "UTF-8", checked.output).output;
        return checked;
    }
    return convertWhole(target, source, c.text);
}

void compareMemory(const Case& c, const Conversion& expected)
{
    const Stream stream{XML_IO_MemOutStreamCreate(c.source, c.target)};
    require(stream != nullptr, "every pair of encodings makes a stream");
    const bool taken = appendAll(stream.get(), c);
    // Of the six bytes that UTF-8 once had, the C library waits for the last; a stream need not.
    const bool begun =
        expected.end == Conversion::End::Incomplete && c.source == XML_ENCODING_UTF_8;
    require(taken == (expected.end != Conversion::End::Invalid) || (begun && !taken),
            "what is no text or has no form is refused, and nothing else");
    const std::string output = collected(stream.get());
    if (!taken) {
        require(expected.output.starts_with(output), "nothing but the begin was stored");
        return;
    }
    requireSame(output, expected.output, "pieces come out as the whole does");
    size_t length = 0;
    char* block = XML_IO_MemOutStreamDetachBuf(stream.get(), &length);
    requireSame(block ? std::string_view(block, length) : "", output, "detaching gives the same");
    heapReleaseHandedOut(block);
    require(collected(stream.get()).empty(), "a stream starts afresh after detaching");
}

void compareFile(const Case& c, const Conversion& expected)
{
    const MemoryFile file{"before"};
    const Stream stream{XML_IO_FileOutStreamCreate(file.path(), c.source, c.target)};
    require(stream != nullptr, "a file can be appended to");
    const bool taken = appendAll(stream.get(), c);
    XML_IO_FileOutStreamFlush(stream.get());
    const bool begun =
        expected.end == Conversion::End::Incomplete && c.source == XML_ENCODING_UTF_8;
    require(taken == (expected.end != Conversion::End::Invalid) || (begun && !taken),
            "a file refuses the same");
    const std::string content = file.content();
    if (taken) requireSame(content, "before" + expected.output, "a file gets the same");
    else require(("before" + expected.output).starts_with(content), "a file gets the begin of it");
}

// Cleaning keeps the converter: the second time there is no mark.
void compareCleaned(const Case& c, const Conversion& expected)
{
    if (expected.end != Conversion::End::Done) return;
    const Stream stream{XML_IO_MemOutStreamCreate(c.source, c.target)};
    require(appendAll(stream.get(), c), "what was taken once is taken again");
    XML_IO_MemOutStreamCleanBuf(stream.get());
    require(collected(stream.get()).empty(), "cleaning empties a stream");
    const bool bySource = c.source == XML_ENCODING_UTF_16 || c.source == XML_ENCODING_UTF_32;
    if (bySource) return;  // a mark inside the text is a character
    require(appendAll(stream.get(), c), "a clean stream takes text");
    const std::string again = collected(stream.get());
    require(again.size() <= expected.output.size() && expected.output.ends_with(again),
            "a clean stream goes on as it was");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const BalancedHeap heap;
    if (size < 4 || size > kLargestText) return 0;
    FuzzInput input{data, size};
    Case c;
    c.source = static_cast<XML_Encoding>(input.below(XML_ENCODING_NONE));
    c.target = static_cast<XML_Encoding>(input.below(XML_ENCODING_NONE));
    const bool raw = input.chance(2);
    while (const std::size_t piece = input.byte()) c.sizes.push_back(piece);
    c.text = std::string{input.rest()};
    // Mostly it is text: UTF-8 in the input, converted to the source encoding as far as that goes.
    if (!raw) c.text = convertWhole(XML_DOM_EncodingEnumToStr(c.source), "UTF-8", c.text).output;

    const Conversion expected = expectedOf(c);
    compareMemory(c, expected);
    compareFile(c, expected);
    compareCleaned(c, expected);
    return 0;
}
