#include "fuzz/support/tree_text.hpp"

#include "fuzz/support/require.hpp"

#include <cstring>

namespace {

std::string shown(const char* text)
{
    return text ? "'" + std::string{text} + "'" : "none";
}

std::string describedElement(const XML_DOM_Node* element)
{
    const char* prefix = nullptr;
    const char* nameSpace = nullptr;
    require(XML_DOM_GetNodeNameSpace(element, &prefix, &nameSpace) == XML_RET_OK,
            "an element tells its namespace");
    std::string line = "element " + shown(XML_DOM_GetNodeName(element)) + " " + shown(prefix) +
                       " " + shown(nameSpace);
    for (const XML_DOM_Attr* a = XML_DOM_GetFirstAttr(element); a; a = XML_DOM_GetNextAttr(a)) {
        const char* name = nullptr;
        require(XML_DOM_GetAttrNameSpace(a, &name, &nameSpace) == XML_RET_OK,
                "an attribute tells its namespace");
        line += " attribute " + shown(name) + " " + shown(nameSpace) + "=" +
                shown(XML_DOM_GetAttrValByHandle(a));
    }
    return line;
}

std::string describedText(const XML_DOM_Node*& node, Texts texts)
{
    std::string value = XML_DOM_GetNodeValue(node);
    if (XML_DOM_GetNodeType(node) == XML_DOM_NODE_CDATA) return "cdata " + shown(value.c_str());
    const XML_DOM_Node* next = XML_DOM_GetNextSibling(node);
    while (texts == Texts::Joined && next && XML_DOM_GetNodeType(next) == XML_DOM_NODE_TEXT) {
        node = next;
        value += XML_DOM_GetNodeValue(node);
        next = XML_DOM_GetNextSibling(node);
    }
    return "text " + shown(value.c_str());
}

uint32_t lookForOddities(XML_DOM_Node* node, void* context)
{
    auto& found = *static_cast<Oddities*>(context);
    if (XML_DOM_GetNodeType(node) == XML_DOM_NODE_CDATA) {
        const char* value = XML_DOM_GetNodeValue(node);
        if (std::strstr(value, "]]>")) found.cdataEnd = true;
        if (*value == '\0') found.emptyCData = true;
    }
    for (const XML_DOM_Attr* a = XML_DOM_GetFirstAttr(node); a; a = XML_DOM_GetNextAttr(a))
        if (std::strchr(XML_DOM_GetAttrValByHandle(a), '"')) found.quote = true;
    return 0;
}

// Declarations do not show in the tree, other than through what is bound to them.
void lookForQuotes(XML_Parser* parser, const char*, const char*, const char*, uint32_t count,
                   const char** declarations, uint32_t, uint32_t, const char**)
{
    for (uint32_t i = 0; i < count; ++i)
        if (std::strchr(declarations[2 * i + 1], '"'))
            static_cast<Oddities*>(parser->handler->userData)->quote = true;
}

uint32_t collect(void* context, const char* bytes, size_t length)
{
    static_cast<std::string*>(context)->append(bytes, length);
    return 0;
}

}  // namespace

std::string described(const XML_DOM_Node* top, Texts texts)
{
    std::string lines;
    std::size_t depth = 0;
    for (const XML_DOM_Node* node = top; node;) {
        const bool isElement = XML_DOM_GetNodeType(node) == XML_DOM_NODE_ELEMENT;
        lines += std::to_string(depth) + " ";
        lines += (isElement ? describedElement(node) : describedText(node, texts)) + "\n";
        if (const XML_DOM_Node* child = XML_DOM_GetFirstChild(node)) {
            require(XML_DOM_GetNodeParent(child) == node, "a child knows its parent");
            node = child;
            ++depth;
            continue;
        }
        while (depth != 0 && !XML_DOM_GetNextSibling(node)) {
            node = XML_DOM_GetNodeParent(node);
            --depth;
        }
        node = depth == 0 ? nullptr : XML_DOM_GetNextSibling(node);
    }
    return lines;
}

std::optional<std::string> translated(const XML_DOM_Node* node, uint32_t flags)
{
    char* text = nullptr;
    size_t length = 0;
    if (XML_DOM_TranslateStr(node, flags, &text, &length) != XML_RET_OK) {
        require(!text, "a failed writing leaves its output as it was");
        return std::nullopt;
    }
    require(text && text[length] == '\0', "what is written is terminated");
    std::string result(text, length);
    heapReleaseHandedOut(text);
    return result;
}

std::optional<std::string> translatedByPieces(const XML_DOM_Node* node, uint32_t flags)
{
    std::string result;
    if (XML_DOM_OutPutTranslateStr(node, flags, collect, &result) != XML_RET_OK)
        return std::nullopt;
    return result;
}

Tree treeFrom(std::string_view document, std::string* message)
{
    char error[400] = "";
    Tree tree{XML_DOM_BuildTreeByMem(reinterpret_cast<const uint8_t*>(document.data()),
                                     static_cast<uint32_t>(document.size()), sizeof error, error)};
    if (message) *message = error;
    return tree;
}

Oddities odditiesOf(XML_DOM_Node* root, std::string_view document)
{
    Oddities found;
    require(XML_DOM_ScanTree(root, lookForOddities, &found) == XML_RET_OK, "a tree can be visited");
    XML_SAX_Handler handler{};
    handler.userData = &found;
    handler.startElementNs = lookForQuotes;
    require(XML_Parser_ByMem(reinterpret_cast<const uint8_t*>(document.data()),
                             static_cast<uint32_t>(document.size()), &handler) == XML_RET_OK,
            "what a tree was made of can be parsed");
    return found;
}
