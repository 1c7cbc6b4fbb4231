/**
 * @file
 * Texts that come out of a tree, texts that go in, and names.
 */
#ifndef NETXML_CPP_UTF8_TEXT_HPP
#define NETXML_CPP_UTF8_TEXT_HPP

#include "netxml/cpp/convert.hpp"

#include <optional>

namespace netxml {
inline namespace face {

/**
 * A name or value of a tree, in UTF-8.
 *
 * ASCII is viewed where it lies, in the tree: then the text is valid until the node that it was
 * read from is edited or deleted. Any other text is converted, and the Text owns it. Whoever keeps
 * one takes str().
 *
 * A view of a temporary Text does not compile, because it might own what it shows:
 * `std::string_view name = node.name();`
 *
 * Where memory is missing for the conversion, or a tree holds bytes that are no text, the text is
 * U+FFFD, and failed() says so.
 */
class [[nodiscard]] Text {
public:
    /** No text: it does not exist and reads as the empty one. */
    Text() noexcept = default;
    /** Takes over what the other one views or owns; that is no text then. */
    Text(Text&& other) noexcept
        : data_{std::exchange(other.data_, nullptr)}, size_{std::exchange(other.size_, 0)},
          owned_{std::exchange(other.owned_, nullptr)}, failed_{other.failed_}
    {
    }
    /** Trades with the other one, so that what this one owned ends with that. */
    Text& operator=(Text&& other) noexcept
    {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        std::swap(owned_, other.owned_);
        std::swap(failed_, other.failed_);
        return *this;
    }
    ~Text()
    {
        if (owned_) std::free(owned_);
    }

    /** A string of the C functions, in the encoding of trees; NULL is no text. */
    static Text fromTree(const char* text) noexcept
    {
        if (!text) return {};
        const std::size_t size = std::strlen(text);
        if (detail::isAscii(text, size)) return {text, size};
        return converted(text, size);
    }

    /** Whether there is a text, be it the empty one. */
    bool exists() const noexcept { return data_ != nullptr; }
    /** Whether it could not be read: then it is U+FFFD. */
    bool failed() const noexcept { return failed_; }
    /** Whether it has no characters, as one that does not exist has none. */
    bool empty() const noexcept { return size_ == 0; }
    /** In bytes of UTF-8. */
    std::size_t size() const noexcept { return size_; }

    /** A view of it, good as long as both this object and the node stay as they are. */
    std::string_view view() const& noexcept { return {data_, size_}; }
    void view() const&& = delete;
    /** view(), so that it goes where a std::string_view is wanted. */
    operator std::string_view() const& noexcept { return {data_, size_}; }
    operator std::string_view() const&& = delete;

    /** A copy to keep. */
    std::string str() const { return std::string{std::string_view{data_, size_}}; }

    /** Whether both read alike, byte by byte; one that does not exist reads as the empty one. */
    friend bool operator==(const Text& a, const Text& b) noexcept { return a.view() == b.view(); }
    /** Whether they read differently. */
    friend bool operator!=(const Text& a, const Text& b) noexcept { return a.view() != b.view(); }
    /** Orders by bytes, which for UTF-8 is the order of code points. */
    friend bool operator<(const Text& a, const Text& b) noexcept { return a.view() < b.view(); }
    /** Whether it reads as `b` does. */
    friend bool operator==(const Text& a, std::string_view b) noexcept { return a.view() == b; }
    /** Whether it reads otherwise than `b`. */
    friend bool operator!=(const Text& a, std::string_view b) noexcept { return a.view() != b; }
    /** Whether it reads as `a` does. */
    friend bool operator==(std::string_view a, const Text& b) noexcept { return a == b.view(); }
    /** Whether it reads otherwise than `a`. */
    friend bool operator!=(std::string_view a, const Text& b) noexcept { return a != b.view(); }

private:
    Text(const char* data, std::size_t size) noexcept : data_{data}, size_{size} {}

    // Kept out of line: what stays is short enough for every caller.
#if defined(__GNUC__)
    [[gnu::noinline, gnu::cold]]
#endif
    static Text
    converted(const char* text, std::size_t size) noexcept
    {
        const std::string_view utf8 = detail::outOfTree().convert({text, size});
        char* copy = utf8.data() ? static_cast<char*>(std::malloc(utf8.size())) : nullptr;
        if (copy) std::memcpy(copy, utf8.data(), utf8.size());
        Text made{copy, utf8.size()};
        made.owned_ = copy;
        if (!copy) {
            made.data_ = detail::kUnreadable.data();
            made.size_ = detail::kUnreadable.size();
            made.failed_ = true;
        }
        return made;
    }

    const char* data_ = nullptr;
    std::size_t size_ = 0;
    char* owned_ = nullptr;
    bool failed_ = false;
};

/** Prints view(). */
template <class Traits>
std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& out,
                                             const Text& text)
{
    return out << text.view();
}

/** A text in UTF-8 as an argument, from whatever is one. It lives as long as the call. */
class TextArg {
public:
    /** The empty text. */
    TextArg() noexcept = default;
    /** A terminated text; NULL is the empty one. */
    TextArg(const char* text) noexcept : view_{text ? text : ""} {}
    /** A text of that size, with whatever zero bytes it holds. */
    TextArg(std::string_view text) noexcept : view_{text} {}
    /** A string, with whatever zero bytes it holds. */
    TextArg(const std::string& text) noexcept : view_{text} {}
    /** A text of a tree; one that does not exist is the empty one. */
    TextArg(const Text& text) noexcept : view_{text} {}

    /** The text where the caller has it. */
    std::string_view view() const noexcept { return view_; }

private:
    std::string_view view_{""};
};

/**
 * The name of an element or attribute that is to be made: "name" or "prefix:name", and perhaps the
 * name of its namespace: `{"o:state", "urn:example:ops"}`.
 *
 * With a namespace, the prefix (or the lack of one, for an element) is declared where that is
 * missing. Without one, a prefix means what it means in its place, where it must be declared.
 */
class Name {
public:
    /** "name" or "prefix:name", with no word on the namespace. It is not checked here. */
    template <class Arg, class = std::enable_if_t<std::is_convertible_v<const Arg&, TextArg>>>
    Name(const Arg& qualified) noexcept
    {
        split(TextArg{qualified}.view());
    }
    /** "name" or "prefix:name" in that namespace; the empty one is none. It is not checked here. */
    Name(TextArg qualified, TextArg namespaceName) noexcept : namespace_{namespaceName.view()}
    {
        split(qualified.view());
    }

    /** What stands before the colon, or the empty text. */
    std::string_view prefix() const noexcept { return prefix_; }
    /** The name without its prefix. */
    std::string_view local() const noexcept { return local_; }
    /** The namespace asked for, if one is; the empty text asks for none. */
    std::optional<std::string_view> namespaceName() const noexcept { return namespace_; }

private:
    void split(std::string_view qualified) noexcept
    {
        local_ = qualified;
        const std::size_t colon = qualified.find(':');
        if (colon == std::string_view::npos || colon == 0) return;  // ":x" is refused as a name
        prefix_ = {qualified.data(), colon};
        local_.remove_prefix(colon + 1);
    }

    std::string_view prefix_;
    std::string_view local_;
    std::optional<std::string_view> namespace_;
};

}  // namespace face
}  // namespace netxml

#endif
