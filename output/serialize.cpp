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
PieceOut memoryOut(XML_IO_OutStream& stream) noexcept
{
    return {[](void* context, std::string_view piece) {
                return piece.empty() ? XML_RET_OK
                                     : appendTo(*static_cast<XML_IO_OutStream*>(context),
                                                piece.data(), piece.size());
            },
            &stream};
}

// Hands each piece to a callback.
struct Callback {
    XML_DOM_Write write;
    void* context;
    XML_IO_OutStream* stream;  // converts it first

    PieceOut asItIs() noexcept
    {
        return {[](void* callback, std::string_view piece) {
                    const auto* self = static_cast<const Callback*>(callback);
                    return self->write(self->context, piece.data(), piece.size());
                },
                this};
    }
    PieceOut converted() noexcept
    {
        return {[](void* callback, std::string_view piece) {
                    return static_cast<const Callback*>(callback)->convert(piece);
                },
                this};
    }

private:
    // Whether the stream would give a piece back as it is.
    bool passes(std::string_view piece) const noexcept
    {
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(piece.data());
        return stream->passesAscii && stream->pendingCount == 0 && !piece.empty() &&
               findHigh(bytes, bytes + piece.size()) == bytes + piece.size();
    }
    // Kept: a piece that comes to nothing is a failure.
    std::uint32_t convert(std::string_view piece) const noexcept
    {
        if (passes(piece)) return write(context, piece.data(), piece.size());
        std::uint32_t status = XML_IO_OutStreamAppend(stream, piece.data(), piece.size());
        if (status == XML_RET_OK) {
            std::size_t length = 0;
            const char* bytes = XML_IO_MemOutStreamGetBuf(stream, &length);
            status = bytes ? write(context, bytes, length) : XML_RET_FAIL;
        }
        XML_IO_MemOutStreamCleanBuf(stream);
        return status;
    }
};

// What of a node is rendered; the declaration may come in front of it.
enum class Part { Whole, Children, Begin, End };

template <class SomeRenderer>
std::uint32_t renderChildren(SomeRenderer& renderer, const XML_DOM_Node* node) noexcept
{
    std::uint32_t status = XML_RET_OK;
    const XML_DOM_Node* child = node->firstChild;
    for (; child && status == XML_RET_OK; child = child->nextSibling)
        status = renderer.whole(child);
    return status;
}

// The declaration, unless it is not wanted or the node is no root, and then the part.
template <class SomeRenderer>
std::uint32_t render(SomeRenderer& renderer, const XML_DOM_Node* node, std::uint32_t flags,
                     Part part) noexcept
{
    if ((flags & XML_DOM_WRITE_NO_DECLARATION) == 0) {
        const std::uint32_t status = renderer.declaration(node);
        if (status != XML_RET_OK) return status;
    }
    switch (part) {
    case Part::Children: return renderChildren(renderer, node);
    case Part::Begin: return renderer.begin(node, TagMode::Begin);
    case Part::End: return renderer.end(node, TagMode::Begin);
    default: return renderer.whole(node);
    }
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
std::uint32_t renderToMemory(XML_IO_OutStream& stream, const XML_DOM_Node* node,
                             std::uint32_t flags, Part part) noexcept
{
    if (stream.passesAscii) {
        TreeWriter writer{stream, flags, node};
        if (render(writer, node, flags, part) == XML_RET_OK) {
            writer.finish();
            return XML_RET_OK;
        }
        XML_IO_MemOutStreamCleanBuf(&stream);
        stream.pendingCount = 0;
    }
    const PieceOut out = memoryOut(stream);
    Renderer renderer{out, flags};
    return render(renderer, node, flags, part);
}

// Renders into a new string; `text` is written on success only, `length` in any case.
std::uint32_t renderToString(const XML_DOM_Node* node, std::uint32_t flags, char** text,
                             std::size_t* length, Part part) noexcept
{
    const StreamOwner stream = streamFor(node);
    if (!stream) return XML_RET_FAIL;
    const std::uint32_t status = renderToMemory(*stream, node, flags, part);
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
    return renderToString(node, flags, text, length, Part::Whole);
}

uint32_t XML_DOM_TranslateStr4AllChild(const XML_DOM_Node* node, char** text, size_t* length)
{
    if (!node || !text) return XML_RET_FAIL;
    return renderToString(node, XML_DOM_WRITE_NO_DECLARATION, text, length, Part::Children);
}

uint32_t XML_DOM_OutPutTranslateStr(const XML_DOM_Node* node, uint32_t flags,
                                    XML_DOM_Write callback, void* context)
{
    if (!node || !callback) return XML_RET_FAIL;
    const StreamOwner stream = streamFor(node);
    if (!stream) return XML_RET_FAIL;
    Callback target{callback, context, stream.get()};
    const PieceOut out = target.converted();
    Renderer renderer{out, flags};
    return render(renderer, node, flags, Part::Whole);
}

char* XML_DOM_NodeBegin2Str(const XML_DOM_Node* node, uint32_t flags, size_t* length)
{
    char* text = nullptr;
    if (node) static_cast<void>(renderToString(node, flags, &text, length, Part::Begin));
    return text;
}

char* XML_DOM_NodeEnd2Str(const XML_DOM_Node* node, size_t* length)
{
    char* text = nullptr;
    constexpr std::uint32_t kFlags = XML_DOM_WRITE_NO_DECLARATION;
    if (node) static_cast<void>(renderToString(node, kFlags, &text, length, Part::End));
    return text;
}

uint32_t XML_OutTextString(const char* string, XML_DOM_Write sink, void* context)
{
    if (!string || !sink) return XML_RET_FAIL;
    Callback target{sink, context, nullptr};
    return putEscaped(target.asItIs(), std::string_view{string});
}
