/**
 * @file
 * Documents: from text to a tree, and back.
 */
#ifndef NETXML_CPP_DOCUMENT_HPP
#define NETXML_CPP_DOCUMENT_HPP

#include "netxml/cpp/edit.hpp"
#include "netxml/cpp/source.hpp"

namespace netxml {
inline namespace face {

/**
 * Owns a tree. It can be moved but not copied: see copyOf().
 *
 * Handles into the tree stay good when the document is moved. A document that was moved from has no
 * tree: it is false, its root() is empty, and it is not written. A temporary document gives no
 * handles: that does not compile.
 */
class Document {
public:
    /** No tree. */
    Document() noexcept = default;

    /** Parses a text in any of the thirteen encodings. */
    static Result<Document> parse(std::string_view text)
    {
        return build(detail::MemorySource{text});
    }
    /** Parses a text that lies in pieces, which may be cut anywhere. */
    static Result<Document> parse(const Chunks& chunks) { return build(chunks); }
    /** The same for literals: `Document::parse({"<a>", "</a>"})`. */
    template <class Piece, class = detail::IfLiterals<Piece>>
    static Result<Document> parse(std::initializer_list<Piece> pieces)
    {
        return build(Chunks(pieces));
    }
    /** Parses a file. ErrorKind::File if it cannot be opened; a read error is taken as its end. */
    static Result<Document> parseFile(const std::string& path)
    {
        return build(detail::FileSource{path});
    }
    /** Makes a document of one element, in UTF-8. */
    static Result<Document> create(const Name& rootName, TextArg text = {})
    {
        Result<detail::Detached> made = detail::makeElement(rootName, text);
        if (!made) return std::move(made).error();
        if (Status bound = detail::bindNew((*made).get(), rootName); !bound) return bound.error();
        return own(*std::move(made));
    }
    /** Makes a document of a copy of an element with all below it, in UTF-8. */
    static Result<Document> copyOf(ConstElement source)
    {
        if (!source) return detail::emptyHandle();
        Result<detail::Detached> made = detail::copy(source.raw(), nullptr);
        if (!made) return std::move(made).error();
        return own(*std::move(made));
    }
    /** Takes over the tree of a root of the C functions. */
    static Document adopt(XML_DOM_Node* root) noexcept { return Document{root}; }

    /** Whether there is a tree. */
    explicit operator bool() const noexcept { return root_ != nullptr; }
    /** Gives the tree away, to whoever calls XML_DOM_DelNode(). */
    [[nodiscard]] XML_DOM_Node* release() noexcept { return root_.release(); }

    /** The root element; an empty handle without a tree. */
    Element root() & noexcept { return detail::Access::make<Element>(root_.get()); }
    /** The root element, to be read; an empty handle without a tree. */
    ConstElement root() const& noexcept
    {
        return detail::Access::make<ConstElement, const XML_DOM_Node>(root_.get());
    }
    void root() && = delete;
    void root() const&& = delete;
    /** BasicElement::find() from the root; the path begins with "/" and the root's name. */
    Result<Element> find(TextArg path) & { return root().find(path); }
    /** The same, to be read. */
    Result<ConstElement> find(TextArg path) const& { return root().find(path); }
    void find(TextArg path) && = delete;
    void find(TextArg path) const&& = delete;

    /**
     * The encoding that the document is written in: of a parsed one, that of its text.
     * XML_ENCODING_NONE without a tree.
     */
    XML_Encoding encoding() const noexcept { return XML_DOM_GetEncoding(root_.get()); }
    /** Chooses it, one of the thirteen. ErrorKind::Argument for anything else. */
    Status setEncoding(XML_Encoding encoding)
    {
        if (!root_) return noTree();
        if (XML_DOM_SetEncoding(root_.get(), encoding) == XML_RET_OK) return {};
        return detail::failure(ErrorKind::Argument, "there is no such encoding");
    }

    /**
     * The document as XML text in its encoding. `flags` are 0 or any of the XML_DOM_WRITE_ values
     * (dom.h). The text is compact; nothing is added to what the tree holds.
     */
    Result<std::string> write(uint32_t flags = 0) const
    {
        if (!root_) return noTree();
        return detail::written(root_.get(), flags);
    }
    /** The document in another encoding, which does not become its own. */
    Result<std::string> writeAs(XML_Encoding other, uint32_t flags = 0)
    {
        const XML_Encoding own = encoding();
        if (Status set = setEncoding(other); !set) return set.error();
        Result<std::string> text = write(flags);
        static_cast<void>(XML_DOM_SetEncoding(root_.get(), own));
        return text;
    }
    /** Writes the document over a file. After ErrorKind::File it may hold part of the text. */
    Status writeFile(const std::string& path, uint32_t flags = 0) const
    {
        const Result<std::string> text = write(flags);
        if (!text) return text.error();
        std::FILE* file = std::fopen(path.c_str(), "wb");
        bool done = file && std::fwrite(text->data(), 1, text->size(), file) == text->size();
        if (file && std::fclose(file) != 0) done = false;
        if (done) return {};
        return detail::failure(ErrorKind::File, "cannot write " + path);
    }

private:
    friend class Element;

    explicit Document(XML_DOM_Node* root) noexcept : root_{root} {}
    static Error noTree() { return detail::failure(ErrorKind::Misuse, "the document has no tree"); }
    static Result<Document> own(detail::Detached root)
    {
        if (XML_DOM_SetRoot(root.get()) != XML_RET_OK) return detail::noMemory();
        return Document{root.release()};
    }
    template <class Source>
    static Result<Document> build(const Source& source)
    {
        char report[1024] = "";
        if (XML_DOM_Node* root = source.build(sizeof report, report)) return Document{root};
        return detail::failureOf(source, report);
    }

    detail::Detached root_;
};

inline Result<Document> Element::detach()
{
    if (raw_ && !XML_DOM_GetNodeParent(raw_))
        return detail::failure(ErrorKind::Misuse, "the root is its document's");
    Result<Document> made = Document::copyOf(*this);
    if (made) XML_DOM_DelNode(std::exchange(raw_, nullptr));
    return made;
}

}  // namespace face
}  // namespace netxml

#endif
