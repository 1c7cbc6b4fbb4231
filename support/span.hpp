// A piece of text, with what is known of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace netxml {

struct Span {
    const std::uint8_t* data = nullptr;
    std::size_t size = 0;
    bool ascii = true;  // true only when no byte is beyond ASCII
    bool wide = false;  // true only when kSpanSlack more bytes may be read behind it

    bool empty() const noexcept { return size == 0; }
    std::string_view view() const noexcept { return {reinterpret_cast<const char*>(data), size}; }
};

// What copies and comparisons in whole blocks may touch beyond a text.
inline constexpr std::size_t kSpanSlack = 16;

}  // namespace netxml
