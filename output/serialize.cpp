// Trees to strings and to callbacks.
#include "io/encoding.hpp"
#include "output/out_stream.hpp"
#include "output/renderer.hpp"
#include "output/tree_writer.hpp"

#include <memory>

namespace netxml {
namespace {

struct DestroyStream {
    void operator()(XML_IO_OutStream* stream) const noexcept { XML_IO_OutStreamDestroy(stream); }
};
using StreamOwner = std::unique_ptr<XML_IO_OutStream, DestroyStream>;

// A memory stream from the tree's encoding to that of the node's document, or UTF-8 without one.
StreamOwner streamFor(const XML_DOM_Node* node) noexcept
{
    const XML_Encoding encoding = XML_DOM_GetEncoding(node);
    const XML_Encoding target =
        encoding == XML_ENCODING_NONE ? XML_Encoding{XML_ENCODING_UTF_8} : encoding;
    return StreamOwner{makeMemoryStream(kTreeEncoding, target, ConverterOpening::AtFirstUse)};
}

// Collects the pieces in a memory stream.
struct MemoryOut {
    XML_IO_OutStream& stream;
    std::uint32_t put(std::string_view piece) noexcept
    {
        return piece.empty() ? XML_RET_OK : appendTo(stream, piece.data(), piece.size());
    }
};

// Hands each piece to a callback as it is.
struct CallbackOut {
    XML_DOM_Write callback;
    void* context;
    std::uint32_t put(std::string_view piece) noexcept
    {
        return callback(context, piece.data(), piece.size());
    }
};

// Converts each piece and hands it to a callback. Kept: a piece that comes to nothing is a failure.
struct ConvertingOut {
    XML_IO_OutStream& stream;
    XML_DOM_Write callback;
    void* context;
    std::uint32_t put(std::string_view piece) noexcept
    {
        std::uint32_t status = XML_IO_OutStreamAppend(&stream, piece.data(), piece.size());
        if (status == XML_RET_OK) {
            std::size_t length = 0;
            const char* bytes = XML_IO_MemOutStreamGetBuf(&stream, &length);
            status = bytes ? callback(context, bytes, length) : XML_RET_FAIL;
        }
        XML_IO_MemOutStreamCleanBuf(&stream);
        return status;
    }
};

// The declaration, unless it is not wanted or the node is no root, and then `render` (renderer ->
// status).
template <class SomeRenderer, class Render>
std::uint32_t withDeclaration(SomeRenderer& renderer, const XML_DOM_Node* node, std::uint32_t flags,
                              Render render) noexcept
{
    if ((flags & XML_DOM_WRITE_NO_DECLARATION) == 0) {
        const std::uint32_t status = renderer.declaration(node);
        if (status != XML_RET_OK) return status;
    }
    return render(renderer);
}

// Appends the NUL of the encoding. Where nothing was rendered it stands alone, without a mark.
std::uint32_t terminate(XML_IO_OutStream& stream) noexcept
{
    MemoryBuffer& memory = *stream.target.memory;
    if (memory.used != 0) return appendTo(stream, "", 1);
    static constexpr char kZeros[4] = {};
    return memory.add(kZeros, unitSize(stream.targetEncoding)) ? XML_RET_OK : XML_RET_FAIL;
}

// Renders into a stream in one go, where it passes ASCII on and everything comes out even. Where it
// does not, the stream's own way decides what that means.
template <class Render>
std::uint32_t renderToMemory(XML_IO_OutStream& stream, const XML_DOM_Node* node,
                             std::uint32_t flags, Render render) noexcept
{
    if (stream.passesAscii) {
        TreeWriter writer{stream, flags};
        if (withDeclaration(writer, node, flags, render) == XML_RET_OK) {
            writer.finish();
            return XML_RET_OK;
        }
        XML_IO_MemOutStreamCleanBuf(&stream);
        stream.pendingCount = 0;
    }
    MemoryOut out{stream};
    Renderer<MemoryOut> renderer{out, flags};
    return withDeclaration(renderer, node, flags, render);
}

// Renders into a new string; `text` is written on success only, `length` in any case.
template <class Render>
std::uint32_t renderToString(const XML_DOM_Node* node, std::uint32_t flags, char** text,
                             std::size_t* length, Render render) noexcept
{
    const StreamOwner stream = streamFor(node);
    if (!stream) return XML_RET_FAIL;
    const std::uint32_t status = renderToMemory(*stream, node, flags, render);
    static_cast<void>(XML_IO_MemOutStreamGetBuf(stream.get(), length));
    if (status != XML_RET_OK) return status;
    if (terminate(*stream) != XML_RET_OK) return XML_RET_FAIL;
    *text = XML_IO_MemOutStreamDetachBuf(stream.get(), nullptr);  // the caller's
    return XML_RET_OK;
}

}  // namespace
}  // namespace netxml

using namespace netxml;

uint32_t XML_DOM_TranslateStr(const XML_DOM_Node* node, uint32_t flags, char** text, size_t* length)
{
    if (!node || !text) return XML_RET_FAIL;
    return renderToString(node, flags, text, length,
                          [node](auto& renderer) { return renderer.whole(node); });
}

uint32_t XML_DOM_TranslateStr4AllChild(const XML_DOM_Node* node, char** text, size_t* length)
{
    if (!node || !text) return XML_RET_FAIL;
    return renderToString(node, XML_DOM_WRITE_NO_DECLARATION, text, length, [node](auto& renderer) {
        std::uint32_t status = XML_RET_OK;
        const XML_DOM_Node* child = node->firstChild;
        for (; child && status == XML_RET_OK; child = child->nextSibling)
            status = renderer.whole(child);
        return status;
    });
}

uint32_t XML_DOM_OutPutTranslateStr(const XML_DOM_Node* node, uint32_t flags,
                                    XML_DOM_Write callback, void* context)
{
    if (!node || !callback) return XML_RET_FAIL;
    const StreamOwner stream = streamFor(node);
    if (!stream) return XML_RET_FAIL;
    ConvertingOut out{*stream, callback, context};
    Renderer<ConvertingOut> renderer{out, flags};
    return withDeclaration(renderer, node, flags, [node](auto& r) { return r.whole(node); });
}

char* XML_DOM_NodeBegin2Str(const XML_DOM_Node* node, uint32_t flags, size_t* length)
{
    char* text = nullptr;
    if (!node) return nullptr;
    static_cast<void>(renderToString(node, flags, &text, length, [node](auto& renderer) {
        return renderer.begin(node, TagMode::Begin);
    }));
    return text;
}

char* XML_DOM_NodeEnd2Str(const XML_DOM_Node* node, size_t* length)
{
    char* text = nullptr;
    if (!node) return nullptr;
    static_cast<void>(
        renderToString(node, XML_DOM_WRITE_NO_DECLARATION, &text, length,
                       [node](auto& renderer) { return renderer.end(node, TagMode::Begin); }));
    return text;
}

uint32_t XML_OutTextString(const char* string, XML_DOM_Write sink, void* context)
{
    if (!string || !sink) return XML_RET_FAIL;
    CallbackOut out{sink, context};
    return putEscaped(out, std::string_view{string});
}
