/**
 * @file
 * Between UTF-8 and the encoding of trees. Nothing here is for users.
 */
#ifndef NETXML_CPP_CONVERT_HPP
#define NETXML_CPP_CONVERT_HPP

#include "netxml/cpp/result.hpp"
#include "netxml/io.h"

#include <cstring>
#include <string_view>

namespace netxml {
inline namespace face {
namespace detail {

inline std::string_view viewOf(const char* text) noexcept
{
    return text ? std::string_view{text} : std::string_view{""};
}

inline std::string_view viewOf(std::string_view text) noexcept
{
    return text;
}

template <class Word>
Word wordAt(const char* text) noexcept
{
    Word word;
    std::memcpy(&word, text, sizeof word);
    return word;
}

// Whether no byte has its high bit set. Eight bytes a step; the last ones overlap.
inline bool isAscii(const char* text, std::size_t size) noexcept
{
    if (size >= 8) {
        const char* last = text + size - 8;
        uint64_t seen = wordAt<uint64_t>(last);
        for (; text < last; text += 8) seen |= wordAt<uint64_t>(text);
        return (seen & UINT64_C(0x8080808080808080)) == 0;
    }
    if (size >= 4) {
        const uint32_t seen = wordAt<uint32_t>(text) | wordAt<uint32_t>(text + size - 4);
        return (seen & UINT32_C(0x80808080)) == 0;
    }
    if (size == 0) return true;
    const int seen = text[0] | text[size / 2] | text[size - 1];
    return (seen & 0x80) == 0;
}

// One direction for one thread. The stream is made when it is first needed.
class Converter {
public:
    Converter(XML_Encoding source, XML_Encoding target) noexcept : source_{source}, target_{target}
    {
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter() { XML_IO_OutStreamDestroy(stream_); }

    // The text converted and terminated, valid until the next call; a null view where it has no
    // form in the target or memory ran out. The terminator goes through the stream, too: behind a
    // character that is cut short it is an error, and nothing is held back for the next text.
    std::string_view convert(std::string_view text) noexcept
    {
        if (stream_ && large_) renew();
        if (!stream_) stream_ = XML_IO_MemOutStreamCreate(source_, target_);
        if (!stream_) return {};
        XML_IO_MemOutStreamCleanBuf(stream_);
        std::size_t size = 0;
        const char* bytes = nullptr;
        if (XML_IO_OutStreamAppend(stream_, text.data(), text.size()) == XML_RET_OK &&
            XML_IO_OutStreamAppend(stream_, "", 1) == XML_RET_OK)
            bytes = XML_IO_MemOutStreamGetBuf(stream_, &size);
        if (!bytes) return renew();
        large_ = size > kKept;
        return {bytes, size - 1};
    }

private:
    static constexpr std::size_t kKept = 65536;  // of a larger text the block is not kept

    std::string_view renew() noexcept
    {
        XML_IO_OutStreamDestroy(stream_);
        stream_ = nullptr;
        large_ = false;
        return {};
    }

    XML_Encoding source_;
    XML_Encoding target_;
    XML_IO_OutStream* stream_ = nullptr;
    bool large_ = false;
};

inline Converter& intoTree() noexcept
{
    thread_local Converter converter{XML_ENCODING_UTF_8, XML_ENCODING_GB18030};
    return converter;
}

inline Converter& outOfTree() noexcept
{
    thread_local Converter converter{XML_ENCODING_GB18030, XML_ENCODING_UTF_8};
    return converter;
}

// What stands for a text that cannot be read: U+FFFD.
inline constexpr std::string_view kUnreadable = "\xEF\xBF\xBD";

// A text of the library that may have been cut within its last character, which is dropped.
inline std::string fromCutText(const char* text)
{
    const std::size_t size = std::strlen(text);
    if (isAscii(text, size)) return {text, size};
    XML_IO_OutStream* stream = XML_IO_MemOutStreamCreate(XML_ENCODING_GB18030, XML_ENCODING_UTF_8);
    std::string converted{kUnreadable};
    if (XML_IO_OutStreamAppend(stream, text, size) == XML_RET_OK) {
        std::size_t length = 0;
        const char* bytes = XML_IO_MemOutStreamGetBuf(stream, &length);
        converted.assign(bytes ? bytes : "", length);
    }
    XML_IO_OutStreamDestroy(stream);
    return converted;
}

// An argument on its way into a tree: converted and terminated, on the stack where it is short.
class TreeText {
public:
    explicit TreeText(std::string_view utf8) noexcept
    {
        if (utf8.find('\0') != std::string_view::npos) fault_ = Fault::Zero;
        else if (isAscii(utf8.data(), utf8.size())) store(utf8);
        else convert(utf8);
    }
    TreeText(const TreeText&) = delete;
    TreeText& operator=(const TreeText&) = delete;
    ~TreeText() { std::free(long_); }

    explicit operator bool() const noexcept { return fault_ == Fault::None; }
    // The text; empty where it could not be made.
    const char* text() const noexcept { return long_ ? long_ : short_; }

    Error error(std::string_view what) const
    {
        std::string message{what};
        switch (fault_) {
        case Fault::Zero: message += " cannot hold U+0000"; break;
        case Fault::NoForm:
            message += " is no UTF-8, or has a character that a tree cannot hold";
            break;
        default: return noMemory();
        }
        return failure(fault_ == Fault::Zero ? ErrorKind::Argument : ErrorKind::Encoding,
                       std::move(message));
    }

private:
    enum class Fault : unsigned char { None, Zero, NoForm, Memory };

    void convert(std::string_view utf8) noexcept
    {
        const std::string_view converted = intoTree().convert(utf8);
        if (converted.data()) store(converted);
        else fault_ = Fault::NoForm;
    }
    void store(std::string_view text) noexcept
    {
        char* place = short_;
        if (text.size() >= sizeof short_) place = long_ = allocate(text.size() + 1);
        if (!place) {
            fault_ = Fault::Memory;
            return;
        }
        if (!text.empty()) std::memcpy(place, text.data(), text.size());
        place[text.size()] = '\0';
    }
    static char* allocate(std::size_t size) noexcept
    {
        return static_cast<char*>(std::malloc(size));
    }

    char* long_ = nullptr;
    Fault fault_ = Fault::None;
    char short_[111] = "";
};

}  // namespace detail
}  // namespace face
}  // namespace netxml

#endif
