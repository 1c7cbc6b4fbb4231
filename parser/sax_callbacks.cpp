// The exported callbacks: events to a tree through a caller's handler table.
#include "dom/declaration_scope.hpp"
#include "parser/error_text.hpp"
#include "parser/internal_text.hpp"
#include "parser/tree_builder.hpp"

#include <cstddef>
#include <cstring>

static_assert(offsetof(XML_SAX_Builder, root) == 0);
static_assert(offsetof(XML_SAX_Builder, current) == sizeof(void*));
static_assert(offsetof(XML_SAX_Builder, nameConverter) == 2 * sizeof(void*));
static_assert(offsetof(XML_SAX_Builder, valueConverter) == 3 * sizeof(void*));
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

// A terminated text in the tree's encoding; a view without data for NULL.
struct Converted {
    std::string_view text;
    bool ok;  // false when there is a text that cannot be converted
};

Converted converted(XML_IO_OutStream* stream, const char* text) noexcept
{
    if (!text) return {{}, true};
    std::string_view result = convertText(stream, text, std::strlen(text) + 1);
    if (!result.empty()) result.remove_suffix(1);  // the terminator
    return {result, result.data() != nullptr};
}

// One start tag on its way into a tree. What it declares and looks up is kept in an index of its
// own, so that many declarations and attributes take time in proportion.
// Kept: the index is for one event, because a caller may change the tree before the next one.
class StartEvent {
public:
    explicit StartEvent(XML_SAX_Builder& builder) noexcept
        : builder_{builder}, tree_{builder.root, builder.current, nullptr}, scope_{builder.current}
    {
    }

    bool enter(const char* localName) noexcept
    {
        const Converted name = converted(builder_.nameConverter, localName);
        return name.text.data() && tree_.enterElement(name.text);
    }
    bool declareAll(std::uint32_t count, const char** declarations) noexcept
    {
        for (std::uint32_t i = 0; i < count; ++i, declarations += 2) {
            const Converted name = converted(builder_.valueConverter, declarations[1]);
            const Converted prefix = converted(builder_.nameConverter, declarations[0]);
            if (!name.text.data() || !prefix.ok || scope_.holds(prefix.text)) return false;
            const XML_DOM_NsDecl* decl = tree_.declare(prefix.text, name.text);
            if (!decl || !scope_.add(decl, kDepth)) return false;
        }
        return true;
    }
    bool bindElement(const char* prefix) noexcept
    {
        return resolve(prefix, builder_.current->nameSpace);
    }
    bool addAttributes(std::uint32_t count, const char** attributes) noexcept
    {
        for (std::uint32_t i = 0; i < count; ++i, attributes += 5) {
            const Converted name = converted(builder_.nameConverter, attributes[0]);
            const Converted value = converted(builder_.valueConverter, attributes[3]);
            if (!name.text.data() || !value.text.data()) return false;
            XML_DOM_Attr* attr = tree_.addAttribute(name.text, value.text);
            if (!attr || !resolve(attributes[1], attr->nameSpace)) return false;
        }
        return true;
    }

private:
    static constexpr std::size_t kDepth = 1;

    // An empty prefix binds to nothing.
    bool resolve(const char* prefix, const XML_DOM_NsDecl*& bound) noexcept
    {
        const Converted text = converted(builder_.nameConverter, prefix);
        if (!text.ok || text.text.empty()) return text.ok;
        return scope_.find(text.text.data(), bound) && bound;
    }

    XML_SAX_Builder& builder_;
    TreeBuilder tree_;
    DeclarationScope scope_;  // this tag's declarations, and what is in scope of its parent
};

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
    const std::string_view value = convertText(builder.nameConverter, text, length);
    TreeBuilder tree{builder.root, builder.current, nullptr};
    if (!value.data() || !tree.addTextual(type, value)) fail(parser);
}

}  // namespace
}  // namespace netxml

using namespace netxml;

void XML_SAX_StartElementNs(XML_Parser* parser, const char* localName, const char* prefix,
                            const char*, uint32_t declarationCount, const char** declarations,
                            uint32_t attributeCount, uint32_t, const char** attributes)
{
    StartEvent event{builderOf(parser)};
    const bool done = event.enter(localName) && event.declareAll(declarationCount, declarations) &&
                      event.bindElement(prefix) && event.addAttributes(attributeCount, attributes);
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
