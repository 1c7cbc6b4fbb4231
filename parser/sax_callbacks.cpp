// The exported callbacks: events to a tree through a caller's handler table.
#include "parser/error_text.hpp"
#include "parser/internal_text.hpp"

#include "netxml/dom.h"

#include <cstddef>
#include <cstring>

static_assert(offsetof(XML_SAX_Builder, nameConverter) == 2 * sizeof(void*));
static_assert(offsetof(XML_SAX_Builder, errorText) == 4 * sizeof(void*));
static_assert(offsetof(XML_SAX_Builder, errorTextSize) == 5 * sizeof(void*));

namespace netxml {
namespace {

XML_SAX_Builder& builderOf(const XML_Parser* parser) noexcept
{
    return *static_cast<XML_SAX_Builder*>(parser->handler->userData);
}

void fail(XML_Parser* parser) noexcept
{
    parser->error = XML_ERROR_INTERNAL;
}

// A terminated text, converted with its terminator; NULL for NULL or on failure, valid until the
// converter's next use.
const char* converted(XML_IO_OutStream* stream, const char* text) noexcept
{
    return text ? convertText(stream, text, std::strlen(text) + 1).data() : nullptr;
}

// As converted(), where NULL means that there is no such text.
bool convertedIfAny(XML_IO_OutStream* stream, const char* text, const char*& result) noexcept
{
    result = converted(stream, text);
    return result || !text;
}

// Makes the element, puts it in its place and steps into it.
bool enterElement(XML_SAX_Builder& builder, const char* localName) noexcept
{
    const char* name = converted(builder.nameConverter, localName);
    XML_DOM_Node* element = name ? XML_DOM_CreateElementNodeInner(name) : nullptr;
    if (!element) return false;
    const std::uint32_t status =
        builder.root ? XML_DOM_AddChildNode(builder.current, element) : XML_DOM_SetRoot(element);
    if (status != XML_RET_OK) {
        XML_DOM_DelNode(element);
        builder.current = nullptr;
        return false;
    }
    if (!builder.root) builder.root = element;
    builder.current = element;
    return true;
}

bool declareAll(XML_SAX_Builder& builder, std::uint32_t count, const char** declarations) noexcept
{
    for (std::uint32_t i = 0; i < count; ++i, declarations += 2) {
        const char* prefix = nullptr;
        const char* name = converted(builder.valueConverter, declarations[1]);
        if (!name || !convertedIfAny(builder.nameConverter, declarations[0], prefix)) return false;
        if (XML_DOM_AddNodeNameSpaceInner(builder.current, prefix, name, 0) != XML_RET_OK)
            return false;
    }
    return true;
}

bool bindElement(XML_SAX_Builder& builder, const char* prefix) noexcept
{
    const char* text = nullptr;
    return convertedIfAny(builder.nameConverter, prefix, text) &&
           XML_DOM_SetNodeNameSpace(builder.current, text) == XML_RET_OK;
}

bool addAttributes(XML_SAX_Builder& builder, std::uint32_t count, const char** attributes) noexcept
{
    for (std::uint32_t i = 0; i < count; ++i, attributes += 5) {
        const char* name = converted(builder.nameConverter, attributes[0]);
        const char* value = converted(builder.valueConverter, attributes[3]);
        XML_DOM_Attr* attr = XML_DOM_AddAttrInner(builder.current, name, value);
        const char* prefix = nullptr;
        if (!attr || !convertedIfAny(builder.nameConverter, attributes[1], prefix)) return false;
        if (XML_DOM_SetAttrNsInner(attr, prefix) != XML_RET_OK) return false;
    }
    return true;
}

// Kept: a text that begins with a zero byte is ignored; an empty one makes an empty node.
void addTextual(XML_Parser* parser, XML_DOM_NodeType type, const char* text,
                std::uint32_t length) noexcept
{
    if (*text == '\0') return;
    if (length == 0) {
        text = "";
        length = 1;
    }
    XML_SAX_Builder& builder = builderOf(parser);
    if (!builder.current) return fail(parser);
    const std::string_view value = convertText(builder.nameConverter, text, length);
    XML_DOM_Node* node = XML_DOM_CreateTextualNodeInner(type, value.data(), value.size());
    if (node && XML_DOM_AddChildNode(builder.current, node) == XML_RET_OK) return;
    XML_DOM_DelNode(node);
    fail(parser);
}

}  // namespace
}  // namespace netxml

using namespace netxml;

void XML_SAX_StartElementNs(XML_Parser* parser, const char* localName, const char* prefix,
                            const char*, uint32_t declarationCount, const char** declarations,
                            uint32_t attributeCount, uint32_t, const char** attributes)
{
    XML_SAX_Builder& builder = builderOf(parser);
    const bool done =
        enterElement(builder, localName) && declareAll(builder, declarationCount, declarations) &&
        bindElement(builder, prefix) && addAttributes(builder, attributeCount, attributes);
    if (!done) fail(parser);
}

void XML_SAX_EndElementNs(XML_Parser* parser, const char*, const char*, const char*)
{
    XML_SAX_Builder& builder = builderOf(parser);
    builder.current = XML_DOM_GetNodeParent(builder.current);
}

void XML_SAX_Characters(XML_Parser* parser, const char* text, uint32_t length)
{
    addTextual(parser, XML_DOM_NODE_TEXT, text, length);
}

void XML_SAX_CData(XML_Parser* parser, const char* text, uint32_t length)
{
    addTextual(parser, XML_DOM_NODE_CDATA, text, length);
}

void XML_SAX_EndDocument(XML_Parser* parser)
{
    XML_DOM_Node* root = builderOf(parser).root;
    if (XML_DOM_SetEncoding(root, parser->encoding) != XML_RET_OK ||
        XML_DOM_SetVersion(root, parser->version) != XML_RET_OK)
        fail(parser);
}

void XML_SAX_Error(XML_Parser* parser, const char* format, ...)
{
    XML_SAX_Builder& builder = builderOf(parser);
    va_list arguments;
    va_start(arguments, format);
    writeErrorText(builder.errorText, builder.errorTextSize, format, arguments);
    va_end(arguments);
    XML_DOM_DelNode(builder.root);
    builder.root = nullptr;
    builder.current = nullptr;
}
