// The kind of source must not matter: a block, a list of chunks cut anywhere and a file give the
// same events at the same places, the same error and the same tree; and each of them does what the
// plain scanner does with it.
//
// The first five bytes say where the list is cut, the sixth how many blanks come behind the first
// ">", so that places lie beyond what is read ahead; the others are the document.
#include "fuzz/support/fuzz_input.hpp"
#include "fuzz/support/memory_file.hpp"
#include "fuzz/support/require.hpp"
#include "fuzz/support/tree_text.hpp"
#include "tests/support/event_log.hpp"
#include "tests/support/plain_scanner.hpp"
#include "tests/support/sources.hpp"

#include <algorithm>
#include <cstdarg>

namespace {

constexpr std::size_t kLargestDocument = 1 << 16;

// The events, and the error apart from them: of what surrounds it a block shows more than a list
// does, which no longer has all that it has read.
class Watch : public EventLog {
public:
    Watch() { slots().error = onError; }

    const std::string& report() const { return report_; }
    const std::string& excerpt() const { return excerpt_; }
    std::string all() const { return text() + report_ + "\n" + excerpt_ + "\n"; }
    XML_ErrorCode code() const { return code_; }

private:
    static void onError(XML_Parser* parser, const char* format, ...)
    {
        auto* self = static_cast<Watch*>(static_cast<EventLog*>(parser->handler->userData));
        require(self->report_.empty(), "an error is reported once");
        std::va_list arguments;
        va_start(arguments, format);
        const int line = va_arg(arguments, int);
        const int column = va_arg(arguments, int);
        self->excerpt_ = va_arg(arguments, const char*);
        self->report_ = std::to_string(line) + ":" + std::to_string(column) + " " +
                        std::to_string(parser->error) + " " + va_arg(arguments, const char*);
        va_end(arguments);
        self->code_ = parser->error;
    }

    std::string report_;
    std::string excerpt_;
    XML_ErrorCode code_ = 0;
};

// What one kind of source makes of the document.
struct Reading {
    std::string events;
    std::string report;
    std::string all;  // with the excerpt
    XML_ErrorCode code = 0;
    std::string tree;
    std::string message;
};

template <class Parse, class Build>
Reading readingOf(Parse parse, Build build)
{
    Watch watch;
    const uint32_t status = parse(watch.handler());
    require((status == XML_RET_OK) == (watch.code() == 0), "what fails is reported");
    char message[400] = "";
    const Tree tree{build(uint32_t{sizeof message}, message)};
    require(!tree || status == XML_RET_OK, "a tree comes of a document without error only");
    require(!tree == (message[0] != '\0'), "a message comes instead of a tree");
    Reading reading{watch.text(), watch.report(), watch.all(), watch.code(), {}, message};
    if (!tree) return reading;
    const XML_Encoding encoding = XML_DOM_GetEncoding(tree.get());
    XML_DOM_SetEncoding(tree.get(), XML_ENCODING_UTF_8);
    const auto text = translated(tree.get());
    require(text.has_value(), "a tree can be written in UTF-8");
    reading.tree = std::to_string(encoding) + "\n" + described(tree.get()) + *text;
    return reading;
}

Reading ofBlock(const GuardedBytes& bytes)
{
    const auto size = static_cast<uint32_t>(bytes.size());
    return readingOf(
        [&](const XML_SAX_Handler* handler) {
            return XML_Parser_ByMem(bytes.data(), size, handler);
        },
        [&](uint32_t room, char* message) {
            return XML_DOM_BuildTreeByMem(bytes.data(), size, room, message);
        });
}

Reading ofList(const XML_IO_MemList* list)
{
    return readingOf(
        [&](const XML_SAX_Handler* handler) { return XML_Parser_ByMemList(list, handler); },
        [&](uint32_t room, char* message) {
            return XML_DOM_BuildTreeByMemList(list, room, message);
        });
}

Reading ofFile(const char* path)
{
    return readingOf(
        [&](const XML_SAX_Handler* handler) { return XML_Parser_ByFile(path, handler); },
        [&](uint32_t room, char* message) { return XML_DOM_BuildTreeByFile(path, room, message); });
}

std::string plainly(XML_IO_InStream* stream)
{
    Watch watch;
    plainParse(stream, watch.handler());
    return watch.all();
}

std::vector<std::size_t> cutsFrom(FuzzInput& input, std::size_t size)
{
    std::vector<std::size_t> cuts;
    for (int i = 0; i < 4; ++i) cuts.push_back(input.byte());
    std::size_t at = 0;
    for (std::size_t& cut : cuts) cut = at = std::min(at + cut, size);
    return cuts;
}

std::string widened(FuzzInput& input)
{
    constexpr std::size_t kStep = 131;
    const std::size_t blanks = input.byte();
    std::string document{input.rest()};
    const std::size_t tagEnd = document.find('>');
    if (blanks >= 128 && tagEnd != std::string::npos)
        document.insert(tagEnd + 1, (blanks - 127) * kStep, ' ');
    return document;
}

void same(const Reading& a, const Reading& b, const char* which)
{
    requireSame(a.all, b.all, which);
    requireSame(a.tree, b.tree, which);
    requireSame(a.message, b.message, which);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const BalancedHeap heap;
    if (size < 7 || size > kLargestDocument) return 0;
    FuzzInput input{data, size};
    const std::size_t step = input.byte();
    const std::vector<std::size_t> cuts = cutsFrom(input, size - 6);
    const std::string document = widened(input);

    const GuardedBytes bytes{document};
    const Reading block = ofBlock(bytes);
    XML_IO_InStream* stream = XML_IO_ByMem(bytes.data(), bytes.size());
    requireSame(plainly(stream), block.all, "a block is parsed by the plain rules");
    XML_IO_DestroyByMem(stream);

    const ChunkList pieces{document, cuts};
    const Reading list = ofList(pieces.list());
    stream = XML_IO_ByMemList(pieces.list());
    requireSame(plainly(stream), list.all, "a list is parsed by the plain rules");
    XML_IO_DestroyByMemList(stream);

    const ChunkList evenPieces{document, step == 0 ? document.size() : step};
    same(ofList(evenPieces.list()), list, "it does not matter how a list is cut");
    const MemoryFile file{document};
    same(ofFile(file.path()), list, "a file is read as a list is");

    // Kept: where another encoding has an invalid sequence, a list ends, and a block says so.
    if (block.code == XML_ERROR_ENCODING_SWITCH) return 0;
    requireSame(block.events, list.events, "a block and a list give the same events");
    requireSame(block.report, list.report, "a block and a list give the same error");
    requireSame(block.tree, list.tree, "a block and a list give the same tree");
    return 0;
}
