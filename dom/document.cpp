// Documents: the record that makes an element a root, found from any node of its tree.
#include "dom/make.hpp"

#include <cstring>

namespace netxml {
namespace {

XML_DOM_Document* documentOf(const XML_DOM_Node* node) noexcept
{
    for (; node; node = node->parent) {
        if (node->document) return node->document;
    }
    return nullptr;
}

}  // namespace
}  // namespace netxml

using namespace netxml;

XML_DOM_Node* XML_DOM_GetRoot(const XML_DOM_Node* node)
{
    const XML_DOM_Document* document = documentOf(node);
    return document ? document->root : nullptr;
}

uint32_t XML_DOM_SetRoot(XML_DOM_Node* node)
{
    if (!node || node->type != XML_DOM_NODE_ELEMENT || node->parent || node->document)
        return XML_RET_FAIL;
    XML_DOM_Document* document = makeDocument(nullptr, node);
    if (!document) return XML_RET_FAIL;
    markEdited(node);
    node->document = document;
    return XML_RET_OK;
}

const char* XML_DOM_GetVersion(const XML_DOM_Node* node)
{
    const XML_DOM_Document* document = documentOf(node);
    return document ? document->version : nullptr;
}

uint32_t XML_DOM_SetVersion(XML_DOM_Node* node, const char* version)
{
    XML_DOM_Document* document = documentOf(node);
    if (!document || !version || std::strcmp(version, kVersion) != 0) return XML_RET_FAIL;
    document->version = kVersion;
    return XML_RET_OK;
}

XML_Encoding XML_DOM_GetEncoding(const XML_DOM_Node* node)
{
    const XML_DOM_Document* document = documentOf(node);
    return document ? document->encoding : XML_Encoding{XML_ENCODING_NONE};
}

uint32_t XML_DOM_SetEncoding(XML_DOM_Node* node, XML_Encoding encoding)
{
    XML_DOM_Document* document = documentOf(node);
    if (!document || encoding >= XML_ENCODING_NONE) return XML_RET_FAIL;
    document->encoding = encoding;
    return XML_RET_OK;
}
