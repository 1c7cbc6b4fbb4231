// What is parsed and written parses to the same tree, and is then written in the same way, unless
// it holds what is written as it is on purpose. A string, a callback, and begin, children and end
// written one by one agree; and a copy cannot be told from its source.
#include "fuzz/support/require.hpp"
#include "fuzz/support/tree_text.hpp"

namespace {

constexpr std::size_t kLargestDocument = 1 << 16;
constexpr uint32_t kNoDeclaration = XML_DOM_WRITE_NO_DECLARATION;

void readBack(const XML_DOM_Node* root, const std::string& text)
{
    std::string message;
    const Tree again = treeFrom(text, &message);
    if (!again) requireSame(text, message, "what is written can be parsed");
    requireSame(described(root, Texts::Joined), described(again.get()),
                "what is written parses to the same tree");
    const auto secondText = translated(again.get());
    require(secondText.has_value(), "what was read back can be written");
    // Texts side by side are read as one, in which a blank that began or ended one needs no
    // reference.
    if (described(root) == described(again.get()))
        requireSame(text, *secondText, "what was read back is written in the same way");
    const auto thirdText = translated(treeFrom(*secondText).get());
    requireSame(*secondText, thirdText.value_or(""), "what was written twice stays the same");
}

void compareWays(const XML_DOM_Node* root, const std::string& text, const Oddities& oddities)
{
    const auto pieces = translatedByPieces(root);
    require(pieces.has_value() != oddities.emptyCData, "only an empty CDATA section has no pieces");
    if (pieces) requireSame(text, *pieces, "a string and pieces are the same text");

    size_t size = 0;
    char* begin = XML_DOM_NodeBegin2Str(root, 0, &size);
    require(begin != nullptr, "the begin of an element can be written");
    std::string parts(begin, size);
    heapReleaseHandedOut(begin);
    char* children = nullptr;
    require(XML_DOM_TranslateStr4AllChild(root, &children, &size) == XML_RET_OK,
            "the children of an element can be written");
    parts.append(children, size);
    heapReleaseHandedOut(children);
    char* end = XML_DOM_NodeEnd2Str(root, &size);
    require(end != nullptr, "the end of an element can be written");
    parts.append(end, size);
    heapReleaseHandedOut(end);
    if (XML_DOM_GetFirstChild(root)) requireSame(text, parts, "the parts make up the whole");
    else requireSame(described(root), described(treeFrom(parts).get()), "an open tag is the same");
}

void compareCopies(const XML_DOM_Node* root, const std::string& text)
{
    const Tree copy{XML_DOM_CopyRoot(root)};
    require(copy != nullptr, "a root can be copied");
    require(!XML_DOM_GetFirstChild(copy.get()), "a root is copied without its children");
    require(XML_DOM_CopySubTree(copy.get(), root) == XML_RET_OK, "children can be copied");
    requireSame(described(root), described(copy.get()), "a copy is as its source");
    const auto copyText = translated(copy.get());
    require(copyText.has_value(), "a copy can be written");
    requireSame(text, *copyText, "a copy is written as its source");

    // Each child alone lacks the declarations around it, and gets what it needs of them.
    for (const XML_DOM_Node* child = XML_DOM_GetFirstChild(root); child;
         child = XML_DOM_GetNextSibling(child)) {
        const Tree alone{XML_DOM_CopyNode(child)};
        require(alone != nullptr, "every node can be copied");
        if (XML_DOM_GetNodeType(child) != XML_DOM_NODE_ELEMENT) continue;
        require(XML_DOM_CopySubTree(alone.get(), child) == XML_RET_OK, "and its children");
        const Tree around{XML_DOM_CreateElementNode("around")};
        const Tree inner{XML_DOM_CopyNode(alone.get())};
        require(inner != nullptr, "a copy can be copied");
        require(XML_DOM_CopySubTree(around.get(), alone.get()) == XML_RET_OK,
                "what a copy holds can be copied to where nothing is declared");
    }
    requireSame(text, translated(root).value_or(""), "copying leaves the source as it was");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const BalancedHeap heap;
    if (size == 0 || size > kLargestDocument) return 0;
    const std::string_view document{reinterpret_cast<const char*>(data), size};
    const Tree tree = treeFrom(document);
    if (!tree) return 0;
    XML_DOM_SetEncoding(tree.get(), XML_ENCODING_UTF_8);
    const auto text = translated(tree.get());
    require(text.has_value(), "every tree can be written in UTF-8");
    const auto bare = translated(tree.get(), kNoDeclaration);
    require(bare && text->ends_with(*bare), "the declaration comes in front, if at all");

    const Oddities oddities = odditiesOf(tree.get(), document);
    compareCopies(tree.get(), *text);
    if (oddities.quote) return 0;
    readBack(tree.get(), *text);
    compareWays(tree.get(), *text, oddities);
    return 0;
}
