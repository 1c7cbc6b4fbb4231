// XML text to a tree.
#include "io/gathered_input.hpp"
#include "parser/driver.hpp"
#include "parser/tree_sink.hpp"

namespace netxml {

extern template ParseError Scanner<TreeSink>::plainContent(bool atRoot) noexcept;

namespace {

// Runs one of the parse functions (sink -> status) and turns its end into a tree or a message.
template <class Parse>
XML_DOM_Node* buildTree(bool valid, std::size_t inputSize, std::uint32_t errorTextSize,
                        char* errorText, Parse parse) noexcept
{
    if (!valid) {
        copyErrorText(errorText, errorTextSize, "Invalid parameter.");
        return nullptr;
    }
    TreeSink sink{inputSize, errorTextSize, errorText};
    const std::uint32_t status =
        parse([&sink](XML_IO_InStream& stream) { return runParse(stream, nullptr, sink); });
    if (status == XML_RET_OK) return sink.release();
    if (!sink.hasReported()) copyErrorText(errorText, errorTextSize, "");
    if (sink.discard()) copyErrorText(errorText, errorTextSize, "Failed to initialize DOM SAX.");
    return nullptr;
}

// A tree of a whole input that is plain UTF-8, or nullptr for whatever else there is to it.
XML_DOM_Node* buildAtOnce(const GatheredInput& input) noexcept
{
    if (!input.looksLikeUtf8()) return nullptr;
    TreeSink sink{input.size(), 0, nullptr};
    XML_IO_InStream stream;
    openMemory(stream, input.data(), input.size());
    const bool built = runParse(stream, nullptr, sink) == XML_RET_OK && !stream.transcoding();
    releaseBuffers(stream);
    if (built) return sink.release();
    sink.discard();
    return nullptr;
}

// A tree of a gathered input. What the block does not yield at once is read again as chunks are:
// the window decides what an error is reported with.
XML_DOM_Node* buildGathered(const GatheredInput& input, std::uint32_t errorTextSize,
                            char* errorText) noexcept
{
    if (XML_DOM_Node* root = buildAtOnce(input)) return root;
    XML_IO_MemChunk chunk{nullptr, input.size(), input.data()};
    const XML_IO_MemList list{&chunk};
    return buildTree(true, input.size(), errorTextSize, errorText,
                     [&](auto run) { return parseMemoryList(&list, run); });
}

}  // namespace
}  // namespace netxml

using namespace netxml;

XML_DOM_Node* XML_DOM_BuildTreeByMem(const uint8_t* data, uint32_t length, uint32_t errorTextSize,
                                     char* errorText)
{
    return buildTree(data && length != 0, length, errorTextSize, errorText,
                     [&](auto run) { return parseMemory(data, length, run); });
}

XML_DOM_Node* XML_DOM_BuildTreeByMemList(const XML_IO_MemList* list, uint32_t errorTextSize,
                                         char* errorText)
{
    if (list) {
        const GatheredInput input = GatheredInput::ofList(*list);
        if (input.has()) return buildGathered(input, errorTextSize, errorText);
    }
    return buildTree(list != nullptr, 0, errorTextSize, errorText,
                     [&](auto run) { return parseMemoryList(list, run); });
}

XML_DOM_Node* XML_DOM_BuildTreeByFile(const char* path, uint32_t errorTextSize, char* errorText)
{
    if (path) {
        const GatheredInput input = GatheredInput::ofFile(path);
        if (input.has()) return buildGathered(input, errorTextSize, errorText);
    }
    return buildTree(path != nullptr, 0, errorTextSize, errorText,
                     [&](auto run) { return parseFile(path, run); });
}
