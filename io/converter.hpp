// iconv, with the results that matter told apart and ASCII kept out of it.
#pragma once

#include "netxml/base.h"

#include <iconv.h>

#include <cstddef>
#include <cstdint>

namespace netxml {

// Where a conversion stopped.
enum class [[nodiscard]] ConvertEnd{
    Done,        // all of the input is converted
    Full,        // the next character does not fit into the output
    Incomplete,  // the input ends inside a character
    Invalid,     // the next character is none, or has no form in the target encoding
};

// What is left to read, and what is left to fill; both move on.
struct ConvertInput {
    const std::uint8_t* cursor;
    const std::uint8_t* end;
    std::size_t left() const noexcept { return static_cast<std::size_t>(end - cursor); }
};
struct ConvertOutput {
    std::uint8_t* cursor;
    std::uint8_t* end;
    std::size_t left() const noexcept { return static_cast<std::size_t>(end - cursor); }
};

// No conversion: every bit set, as iconv_open() gives it on failure.
inline iconv_t noConverter() noexcept
{
    return reinterpret_cast<iconv_t>(~std::uintptr_t{0});
}
inline bool isOpen(iconv_t converter) noexcept
{
    return converter != noConverter();
}

iconv_t openConverter(const char* target, const char* source) noexcept;  // or noConverter()
void closeConverter(iconv_t& converter) noexcept;                        // does nothing if not open

// Converts until one of the ends above. Cuts the input to the output's size: an iconv that finds
// the output full converts again what it had already read ahead.
ConvertEnd convertThrough(iconv_t converter, ConvertInput& in, ConvertOutput& out) noexcept;

// The same for an input that shares ASCII with the output: runs of ASCII are copied, and the
// converter sees the rest in as few calls as possible. `source` is the input's encoding.
ConvertEnd convertAroundAscii(iconv_t converter, XML_Encoding source, ConvertInput& in,
                              ConvertOutput& out) noexcept;

// Copies text into an encoding that holds all of it with the same bytes, and checks it on the way:
// `checker` converts from the text's encoding to UTF-8.
ConvertEnd copyChecked(iconv_t checker, ConvertInput& in, ConvertOutput& out) noexcept;

// A converter that is closed with its scope.
class ScopedConverter {
public:
    ScopedConverter(const char* target, const char* source) noexcept
        : handle_{openConverter(target, source)}
    {
    }
    ScopedConverter(const ScopedConverter&) = delete;
    ScopedConverter& operator=(const ScopedConverter&) = delete;
    ~ScopedConverter() { closeConverter(handle_); }

    explicit operator bool() const noexcept { return isOpen(handle_); }
    iconv_t get() const noexcept { return handle_; }
    iconv_t release() noexcept
    {
        const iconv_t handle = handle_;
        handle_ = noConverter();
        return handle;
    }

private:
    iconv_t handle_;
};

}  // namespace netxml
