/**
 * @file
 * Errors, and results that are a value or an error.
 */
#ifndef NETXML_CPP_RESULT_HPP
#define NETXML_CPP_RESULT_HPP

#include "netxml/parser.h"

#include <cstdio>
#include <cstdlib>
#include <iosfwd>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>

namespace netxml {
inline namespace face {

/** What kind of thing went wrong. */
enum class ErrorKind {
    Syntax,   /**< a document is not well-formed; `code`, `line` and `column` say what and where */
    Argument, /**< an argument is refused: no name, an unknown prefix, a text with U+0000, ... */
    NotFound, /**< nothing is there */
    Memory,   /**< memory ran out */
    File,     /**< a file, or a sink, cannot be opened, read or written */
    Encoding, /**< a text has no form in the encoding it has to be in */
    Misuse,   /**< a call in the wrong state: an empty handle, an attribute behind a text, ... */
    Schema,   /**< a schema cannot be registered or used */
    Stopped   /**< a handler asked to stop */
};

/** What went wrong, and where. */
struct Error {
    ErrorKind kind = ErrorKind::Misuse;  /**< Misuse where there is no error */
    XML_ErrorCode code = XML_ERROR_NONE; /**< of the parser (parser.h); 0 if it did not speak */
    uint32_t line = 0;                   /**< from 1; 0 where there is no place */
    uint32_t column = 0;                 /**< in characters, from 1; 0 where there is no place */
    std::string message;                 /**< a sentence */
    std::string excerpt;                 /**< some of the input around the place, or empty */

    /** All of it in a line: "2:14: tag name mismatch. [76]", or the message alone. */
    std::string what() const
    {
        std::string text;
        if (line != 0) text = std::to_string(line) + ':' + std::to_string(column) + ": ";
        text += message;
        if (code != XML_ERROR_NONE) text += " [" + std::to_string(code) + ']';
        return text;
    }
};

/** Prints what(). */
template <class Traits>
std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& out,
                                             const Error& error)
{
    return out << error.what();
}

namespace detail {

inline Error failure(ErrorKind kind, std::string message)
{
    Error error;
    error.kind = kind;
    error.message = std::move(message);
    return error;
}

inline Error emptyHandle()
{
    return failure(ErrorKind::Misuse, "the handle is empty");
}

inline Error noMemory()
{
    return failure(ErrorKind::Memory, "memory ran out");
}

// Whoever takes a value that is not there has not looked.
[[noreturn]] inline void endOfMisuse(const char* what)
{
    std::fprintf(stderr, "netxml: a result without a value is used: %s\n", what);
    std::abort();
}

}  // namespace detail

/**
 * A value, or the Error that there is instead of it.
 *
 * Ignoring one warns. Taking the value of an error prints the error on standard error and aborts.
 * What leads into a temporary result (`->`, and a reference by `*`) does not compile.
 */
template <class T>
class [[nodiscard]] Result {
public:
    using value_type = T; /**< what there is if all went well */

    /** A value. */
    Result(T value) : held_{std::in_place_index<0>, std::move(value)} {}
    /** An error instead of a value. */
    Result(Error error) : held_{std::in_place_index<1>, std::move(error)} {}
    /** From the result of something that converts. */
    template <class Other, class = std::enable_if_t<std::is_convertible_v<Other, T> &&
                                                    !std::is_same_v<Other, T>>>
    Result(Result<Other> other)
        : held_{other ? Held{std::in_place_index<0>, std::move(other).value()}
                      : Held{std::in_place_index<1>, other.error()}}
    {
    }

    /** Whether there is a value. */
    explicit operator bool() const noexcept { return held_.index() == 0; }

    /** The value; aborts where there is none. */
    T& value() & { return *held(); }
    /** The value, which cannot be changed; aborts where there is none. */
    const T& value() const& { return *held(); }
    /** The value, moved out of a temporary result; aborts where there is none. */
    T value() && { return std::move(*held()); }

    /** The value; aborts where there is none, too. */
    T& operator*() & { return *held(); }
    /** The value, which cannot be changed; aborts where there is none, too. */
    const T& operator*() const& { return *held(); }
    /** The value, moved out of a temporary result; aborts where there is none, too. */
    T operator*() && { return std::move(*held()); }

    /** A member of the value; aborts where there is none. */
    T* operator->() & { return held(); }
    /** A member of the value, which cannot be changed; aborts where there is none. */
    const T* operator->() const& { return held(); }
    void operator->() && = delete;
    void operator->() const&& = delete;

    /** A copy of the value, or `other` instead of an error. */
    template <class Other>
    T value_or(Other&& other) const&
    {
        return *this ? *held() : static_cast<T>(std::forward<Other>(other));
    }
    /** The value, moved out of a temporary result, or `other` instead of an error. */
    template <class Other>
    T value_or(Other&& other) &&
    {
        return *this ? std::move(*held()) : static_cast<T>(std::forward<Other>(other));
    }

    /** The error; of a result that has a value it is one without a message. */
    const Error& error() const&
    {
        static const Error none{};
        const Error* error = std::get_if<1>(&held_);
        return error ? *error : none;
    }
    /** The error, moved out of a temporary result. */
    Error error() &&
    {
        Error* error = std::get_if<1>(&held_);
        return error ? std::move(*error) : Error{};
    }

    /** What `change` makes of the value, as a result; an error stays what it is. */
    template <class Change>
    auto map(Change&& change) && -> Result<std::invoke_result_t<Change, T>>
    {
        if (!*this) return std::move(*this).error();
        return std::forward<Change>(change)(std::move(*held()));
    }
    /** The result of `next` for the value; an error stays what it is. */
    template <class Next>
    auto and_then(Next&& next) && -> std::invoke_result_t<Next, T>
    {
        if (!*this) return std::move(*this).error();
        return std::forward<Next>(next)(std::move(*held()));
    }

private:
    using Held = std::variant<T, Error>;

    T* held()
    {
        if (T* value = std::get_if<0>(&held_)) return value;
        detail::endOfMisuse(error().what().c_str());
    }
    const T* held() const
    {
        if (const T* value = std::get_if<0>(&held_)) return value;
        detail::endOfMisuse(error().what().c_str());
    }

    Held held_;
};

/** Success, or an Error. */
template <>
class [[nodiscard]] Result<void> {
public:
    using value_type = void; /**< a success carries nothing */

    /** Success. */
    Result() = default;
    /** An error. */
    Result(Error error) : error_{std::move(error)} {}

    /** Whether it went well. */
    explicit operator bool() const noexcept { return !error_.has_value(); }

    /** Aborts if it did not go well. */
    void value() const
    {
        if (error_) detail::endOfMisuse(error_->what().c_str());
    }

    /** The error; of a success it is one without a message. */
    const Error& error() const&
    {
        static const Error none{};
        return error_ ? *error_ : none;
    }
    /** The error, moved out of a temporary result. */
    Error error() && { return error_ ? *std::move(error_) : Error{}; }

    /** The result of `next`; an error stays what it is. */
    template <class Next>
    auto and_then(Next&& next) && -> std::invoke_result_t<Next>
    {
        if (error_) return *std::move(error_);
        return std::forward<Next>(next)();
    }

private:
    std::optional<Error> error_;
};

/** What operations without a value return. */
using Status = Result<void>;

}  // namespace face
}  // namespace netxml

#endif
