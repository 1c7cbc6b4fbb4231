// XML text to a tree.
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
    return buildTree(list != nullptr, 0, errorTextSize, errorText,
                     [&](auto run) { return parseMemoryList(list, run); });
}

XML_DOM_Node* XML_DOM_BuildTreeByFile(const char* path, uint32_t errorTextSize, char* errorText)
{
    return buildTree(path != nullptr, 0, errorTextSize, errorText,
                     [&](auto run) { return parseFile(path, run); });
}
