/**
 * @file
 * Writing a document as it comes, without a tree.
 */
#ifndef NETXML_CPP_WRITER_HPP
#define NETXML_CPP_WRITER_HPP

#include "netxml/cpp/scope.hpp"
#include "netxml/dom.h"

#include <memory>

namespace netxml {
inline namespace face {

/** How a Writer writes. */
struct WriterOptions {
    XML_Encoding encoding = XML_ENCODING_UTF_8; /**< of what the sink gets */
    bool declaration = true;                    /**< begin with the XML declaration */
};

/**
 * Writes a document piece by piece:
 *
 * @code
 * std::string text;
 * netxml::Writer writer{text};
 * writer.start("config").attribute("version", "2").start("mtu").text("1500").end().end();
 * if (netxml::Status done = writer.finish(); !done) std::cerr << done.error() << '\n';
 * @endcode
 *
 * What it writes is well-formed, namespaces included. A call that would make it otherwise is an
 * error: ErrorKind::Misuse for an attribute behind a text, an end without a start, a second root,
 * an attribute given twice, or a document that is not finished; ErrorKind::Argument for what is no
 * name or cannot stand in a document, and for a prefix that nothing declares (declare() may follow
 * the start that uses it). The first error stays, and nothing is written after it; finish() returns
 * it.
 *
 * Texts are escaped as the library does (dom.h), and so that any parser gives them back: blanks at
 * the ends as references, and, unlike there, every carriage return, and in a value the double quote
 * and every line feed and tab. CDATA sections and comments are written as they are. Nothing is
 * added for looks.
 *
 * A writer neither owns nor closes what it writes to.
 */
class Writer {
public:
    /** Appends to a string. */
    explicit Writer(std::string& sink, WriterOptions options = {})
        : Writer{&sink,
                 [](void* to, const char* bytes, std::size_t size) {
                     static_cast<std::string*>(to)->append(bytes, size);
                     return true;
                 },
                 options}
    {
    }
    /** Writes to an open file; for NULL, which a file that cannot be opened is, as if that failed.
     */
    explicit Writer(std::FILE* sink, WriterOptions options = {})
        : Writer{sink,
                 [](void* to, const char* bytes, std::size_t size) {
                     return to && std::fwrite(bytes, 1, size, static_cast<std::FILE*>(to)) == size;
                 },
                 options}
    {
    }
    /**
     * Calls `sink(std::string_view)`, which returns nothing, or false if it failed. An object that
     * can be called must live as long as the writer; what it throws ends the program.
     */
    template <class Sink, class = std::enable_if_t<std::is_invocable_v<Sink&, std::string_view>>>
    explicit Writer(Sink& sink, WriterOptions options = {})
        : Writer{addressOf(sink),
                 [](void* to, const char* bytes, std::size_t size) noexcept {
                     Sink& called = *reinterpret_cast<Sink*>(to);
                     const std::string_view piece{bytes, size};
                     if constexpr (std::is_void_v<std::invoke_result_t<Sink&, std::string_view>>)
                         return called(piece), true;
                     else return static_cast<bool>(called(piece));
                 },
                 options}
    {
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;
    ~Writer() { XML_IO_OutStreamDestroy(converter_); }

    /** Opens an element, "name" or "prefix:name"; with a namespace, what is missing is declared. */
    Writer& start(const Name& name)
    {
        if (closeTag() && checkName(name) && checkPlace()) {
            scope_.open(name);
            inTag_ = true;
            if (name.namespaceName()) declareFor(name);
        }
        return *this;
    }
    /** Declares a prefix, or with the empty one the default namespace, on the element just opened.
     */
    Writer& declare(TextArg prefix, TextArg namespaceName)
    {
        if (!inTag()) return *this;
        if (!checkText(namespaceName.view()) || !checkNamespace(prefix, namespaceName))
            return *this;
        if (!scope_.declare(prefix.view(), namespaceName.view()))
            fail(ErrorKind::Misuse, "the prefix stands for another namespace there already");
        return *this;
    }
    /** Gives the element just opened an attribute. */
    Writer& attribute(const Name& name, TextArg value)
    {
        if (!inTag() || !checkName(name) || !checkText(value.view())) return *this;
        if (name.prefix().empty() && name.local() == "xmlns")
            return fail(ErrorKind::Argument, "declare() declares namespaces");
        if (name.namespaceName() && name.namespaceName()->empty() != name.prefix().empty())
            return fail(ErrorKind::Argument, "an attribute has a prefix if it has a namespace");
        if (name.namespaceName() && !name.prefix().empty()) {
            const std::string* bound = scope_.find(name.prefix());
            if (bound && *bound != *name.namespaceName() && scope_.hasPrefix(name.prefix()))
                return fail(ErrorKind::Misuse, "the prefix stands for another namespace there");
            declareFor(name);
        }
        scope_.add(name, value.view());
        return *this;
    }
    /** Writes a text. */
    Writer& text(TextArg text)
    {
        if (inContent(text.view())) putText(text.view(), "\r");
        return *this;
    }
    /** Writes a CDATA section, or two where the text holds the end of one. */
    Writer& cdata(TextArg text)
    {
        if (!inContent(text.view())) return *this;
        put("<![CDATA[");
        std::string_view left = text.view();
        for (std::size_t at = 0; (at = left.find("]]>")) != std::string_view::npos;) {
            put({left.data(), at + 2});
            put("]]><![CDATA[");
            left.remove_prefix(at + 2);
        }
        put(left);
        put("]]>");
        return *this;
    }
    /** Writes a comment, inside or outside the root. */
    Writer& comment(TextArg text)
    {
        const std::string_view view = text.view();
        if (!closeTag() || !checkText(view)) return *this;
        if (view.find("--") != std::string_view::npos || (!view.empty() && view.back() == '-'))
            return fail(ErrorKind::Argument, "a comment must not hold \"--\" or end in \"-\"");
        begin();
        put("<!--");
        put(view);
        put("-->");
        return *this;
    }
    /** Closes the element that was opened last. */
    Writer& end()
    {
        if (status_ && scope_.depth() == 0) return fail(ErrorKind::Misuse, "no element is open");
        if (inTag_) {
            if (openTag()) put("/>");
        } else if (status_) {
            put("</");
            put(scope_.name());
            put(">");
        }
        inTag_ = false;
        if (status_) scope_.close();
        return *this;
    }
    /** start(), text() and end() in one. */
    Writer& element(const Name& name, TextArg content)
    {
        start(name);
        if (!content.view().empty()) text(content);
        return end();
    }

    /** How it went so far. */
    const Status& status() const noexcept { return status_; }
    /** The end of the document: what was wrong, if anything, or that it is not whole. */
    Status finish()
    {
        if (status_ && (!hasRoot_ || scope_.depth() != 0))
            fail(ErrorKind::Misuse,
                 hasRoot_ ? "an element is still open" : "a document needs a root");
        return status_;
    }

private:
    using Sink = bool (*)(void* to, const char* bytes, std::size_t size);

    template <class Callable>
    static void* addressOf(Callable& sink) noexcept
    {
        if constexpr (std::is_function_v<Callable>) return reinterpret_cast<void*>(&sink);
        else return const_cast<void*>(static_cast<const void*>(std::addressof(sink)));
    }

    Writer(void* to, Sink sink, WriterOptions options) : to_{to}, sink_{sink}, options_{options}
    {
        if (options.encoding == XML_ENCODING_UTF_8) return;
        converter_ = XML_IO_MemOutStreamCreate(XML_ENCODING_UTF_8, options.encoding);
        if (!converter_)
            fail(ErrorKind::Encoding, "the encoding is not supported, or memory ran out");
    }

    Writer& fail(ErrorKind kind, std::string message)
    {
        if (status_) status_ = detail::failure(kind, std::move(message));
        return *this;
    }
    bool inTag()
    {
        if (status_ && !inTag_) fail(ErrorKind::Misuse, "no start tag is open");
        return static_cast<bool>(status_);
    }
    bool checkName(const Name& name)
    {
        if (!status_) return false;
        if (detail::isName(name.local()) &&
            (name.prefix().empty() || detail::isName(name.prefix())))
            return true;
        fail(ErrorKind::Argument, '"' + std::string{name.local()} + "\" is no name");
        return false;
    }
    bool checkText(std::string_view text)
    {
        if (status_ && !detail::canStand(text))
            fail(ErrorKind::Argument, "a text has a character that no document can hold");
        return static_cast<bool>(status_);
    }
    bool checkPlace()
    {
        if (hasRoot_ && scope_.depth() == 0) fail(ErrorKind::Misuse, "a document has one root");
        hasRoot_ = true;
        return static_cast<bool>(status_);
    }
    bool checkNamespace(TextArg prefix, TextArg namespaceName)
    {
        const detail::TreeText prefixText{prefix.view()};
        const detail::TreeText nameText{namespaceName.view()};
        const bool none = prefix.view().empty();
        if (status_ &&
            ((!none && !detail::isName(prefix.view())) || !nameText ||
             XML_CheckNamespace(none ? nullptr : prefixText.text(), nameText.text()) != XML_RET_OK))
            fail(ErrorKind::Argument, "the prefix may not stand for that namespace");
        return static_cast<bool>(status_);
    }
    void declareFor(const Name& name)
    {
        const std::string* bound = scope_.find(name.prefix());
        if (bound ? *bound != *name.namespaceName()
                  : !name.namespaceName()->empty() || !name.prefix().empty())
            declare(name.prefix(), *name.namespaceName());
        else scope_.relyOn(name.prefix(), *name.namespaceName());
    }
    bool inContent(std::string_view text)
    {
        if (status_ && scope_.depth() == 0) fail(ErrorKind::Misuse, "a text stands in an element");
        return checkText(text) && closeTag();
    }

    // Ends the start tag that is open, if one is.
    bool closeTag()
    {
        if (inTag_ && openTag()) put(">");
        inTag_ = false;
        return static_cast<bool>(status_);
    }
    // Writes the start tag up to its end. Only now it is known what is declared.
    bool openTag()
    {
        if (status_) {
            if (const char* wrong = scope_.check()) {
                fail(wrong == detail::kGivenTwice ? ErrorKind::Misuse : ErrorKind::Argument, wrong);
                return false;
            }
        }
        begin();
        put("<");
        put(scope_.name());
        for (const detail::Scope::Binding& binding : scope_.declared()) {
            put(binding.prefix.empty() ? " xmlns" : " xmlns:");
            put(binding.prefix);
            putValue(binding.name);
        }
        for (const detail::Scope::Attribute& attribute : scope_.attributes()) {
            put(" ");
            put(attribute.qualified);
            putValue(attribute.value);
        }
        return static_cast<bool>(status_);
    }
    // The declaration, before everything else.
    void begin()
    {
        if (begun_) return;
        begun_ = true;
        if (!options_.declaration) return;
        put("<?xml version=\"1.0\" encoding=\"");
        put(detail::viewOf(XML_DOM_EncodingEnumToStr(options_.encoding)));
        put("\"?>");
    }

    void putValue(std::string_view value)
    {
        put("=\"");
        for (std::size_t at = 0; (at = value.find('"')) != std::string_view::npos;) {
            putText({value.data(), at}, "\r\n\t");
            put("&quot;");
            value.remove_prefix(at + 1);
        }
        putText(value, "\r\n\t");
        put("\"");
    }
    // A text in which these blanks do not stand for themselves, wherever they are: each is the end
    // of a piece, where the library writes a reference.
    void putText(std::string_view text, const char* blanks)
    {
        for (std::size_t at = 0; (at = text.find_first_of(blanks)) != std::string_view::npos;) {
            putEscaped({text.data(), at + 1});
            text.remove_prefix(at + 1);
        }
        putEscaped(text);
    }
    void putEscaped(std::string_view text)
    {
        if (text.empty()) return;
        escaping_.assign(text);  // the library wants it terminated
        static_cast<void>(XML_OutTextString(
            escaping_.c_str(),
            [](void* self, const char* bytes, std::size_t size) noexcept {
                static_cast<Writer*>(self)->put({bytes, size});
                return XML_RET_OK;
            },
            this));
    }
    void put(std::string_view piece)
    {
        if (!status_ || piece.empty()) return;
        if (converter_) {
            XML_IO_MemOutStreamCleanBuf(converter_);
            if (XML_IO_OutStreamAppend(converter_, piece.data(), piece.size()) != XML_RET_OK) {
                fail(ErrorKind::Encoding, "the encoding lacks a character, or memory ran out");
                return;
            }
            std::size_t size = 0;
            const char* bytes = XML_IO_MemOutStreamGetBuf(converter_, &size);
            piece = {bytes ? bytes : "", size};
        }
        if (!piece.empty() && !sink_(to_, piece.data(), piece.size()))
            fail(ErrorKind::File, "the sink failed");
    }

    void* to_;
    Sink sink_;
    WriterOptions options_;
    XML_IO_OutStream* converter_ = nullptr;
    Status status_;
    detail::Scope scope_;
    std::string escaping_;
    bool begun_ = false;
    bool hasRoot_ = false;
    bool inTag_ = false;
};

}  // namespace face
}  // namespace netxml

#endif
