// The rendering of whole nodes into a memory stream: the text that Renderer (renderer.hpp) makes
// piece by piece, in one go.
#pragma once

#include "dom/slab.hpp"
#include "netxml/dom.h"
#include "output/renderer.hpp"
#include "output/text_writer.hpp"

namespace netxml {

class TreeWriter {
public:
    // `top` is above all that will be written.
    TreeWriter(XML_IO_OutStream& stream, std::uint32_t flags, const XML_DOM_Node* top) noexcept
        : out_{stream}, flags_{flags}, wide_{top}
    {
    }

    // Each as of Renderer. A status is a failure also when the text only does not come out even;
    // what the stream holds then is to be thrown away.
    std::uint32_t declaration(const XML_DOM_Node* node) noexcept;
    std::uint32_t begin(const XML_DOM_Node* node, TagMode mode) noexcept;
    std::uint32_t end(const XML_DOM_Node* node, TagMode mode) noexcept;
    std::uint32_t whole(const XML_DOM_Node* top) noexcept;
    // Counts in the stream what was written.
    void finish() noexcept { out_.finish(); }

private:
    std::uint32_t status() const noexcept { return out_.ok() ? XML_RET_OK : XML_RET_FAIL; }
    void startTag(const XML_DOM_Node* element, TagMode mode) noexcept;
    void content(const XML_DOM_Node* node) noexcept;
    void endTag(const XML_DOM_Node* element) noexcept;
    void nameSpace(const XML_DOM_NsDecl* decl) noexcept;
    void attribute(const XML_DOM_Attr* attr) noexcept;
    void prefix(const XML_DOM_NsDecl* bound) noexcept;
    void value(const char* text, bool wide) noexcept;

    TextWriter out_;
    std::uint32_t flags_;
    WideStrings wide_;
};

}  // namespace netxml
