// The kind of source must not matter: same verdict and the same tree from a block and from a list
// of chunks. And writing is stable: what is written parses to what is written again, unless a value
// holds a double quote or a CDATA section its own end, which are deliberately written as they are.
#include "netxml/netxml.h"

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kLargestInput = 1 << 16;

void require(bool holds)
{
    if (!holds) std::abort();
}

struct Outcome {
    bool built = false;
    bool plain = true;  // nothing in it that is written as it is on purpose
    std::string written;
};

uint32_t look(XML_DOM_Node* node, void* context)
{
    auto* outcome = static_cast<Outcome*>(context);
    const char* value = XML_DOM_GetNodeValue(node);
    if (XML_DOM_GetNodeType(node) == XML_DOM_NODE_CDATA && std::strstr(value, "]]>"))
        outcome->plain = false;
    for (const XML_DOM_Attr* a = XML_DOM_GetFirstAttr(node); a; a = XML_DOM_GetNextAttr(a)) {
        if (std::strchr(XML_DOM_GetAttrValByHandle(a), '"')) outcome->plain = false;
    }
    return 0;
}

Outcome outcomeOf(XML_DOM_Node* root)
{
    Outcome outcome;
    if (!root) return outcome;
    outcome.built = true;
    XML_DOM_SetEncoding(root, XML_ENCODING_UTF_8);
    require(XML_DOM_ScanTree(root, look, &outcome) == XML_RET_OK);
    char* text = nullptr;
    size_t length = 0;
    require(XML_DOM_TranslateStr(root, 0, &text, &length) == XML_RET_OK);
    outcome.written.assign(text, length);
    outcome.plain = outcome.plain && outcome.written.find("xmlns=\"\"\"") == std::string::npos;
    std::free(text);
    XML_DOM_DelNode(root);
    return outcome;
}

Outcome fromBlock(const std::uint8_t* data, std::size_t size)
{
    return outcomeOf(XML_DOM_BuildTreeByMem(data, static_cast<uint32_t>(size), 0, nullptr));
}

Outcome fromChunks(const std::uint8_t* data, std::size_t size, std::size_t step)
{
    std::vector<XML_IO_MemChunk> chunks;
    for (std::size_t at = 0; at < size; at += step)
        chunks.push_back({nullptr, size - at < step ? size - at : step, data + at});
    for (std::size_t i = 0; i + 1 < chunks.size(); ++i) chunks[i].next = &chunks[i + 1];
    const XML_IO_MemList list{chunks.data()};
    return outcomeOf(XML_DOM_BuildTreeByMemList(&list, 0, nullptr));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2 || size > kLargestInput) return 0;
    const std::size_t step = 1 + data[0] % 7;
    const Outcome whole = fromBlock(data + 1, size - 1);
    const Outcome pieces = fromChunks(data + 1, size - 1, step);
    // An invalid sequence is found at once in a block of another encoding, and in a list when the
    // text comes to it: the verdict is the same, since either way the document does not end as it
    // should.
    require(whole.built == pieces.built && whole.written == pieces.written);
    if (!whole.built || !whole.plain) return 0;
    const Outcome again = fromBlock(reinterpret_cast<const std::uint8_t*>(whole.written.data()),
                                    whole.written.size());
    if (whole.written.find("\"\"\"") != std::string::npos)
        return 0;  // a namespace name with a quote
    require(again.built && again.written == whole.written);
    return 0;
}
