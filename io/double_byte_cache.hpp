// What iconv makes of the characters that have two bytes in GB18030, asked once for each: for
// writing them in UTF-8.
#pragma once

#include "io/converter.hpp"
#include "support/heap.hpp"

#include <cstddef>
#include <cstdint>

namespace netxml {

class DoubleByteCache {
public:
    DoubleByteCache() = default;
    DoubleByteCache(const DoubleByteCache&) = delete;
    DoubleByteCache& operator=(const DoubleByteCache&) = delete;
    ~DoubleByteCache() { heap::release(forms_); }

    // Converts a run of such characters as far as it goes: up to the first that is none, or that
    // `converter` (from GB18030 to UTF-8) refuses or makes more than three bytes of. There must be
    // room for twice the input in `to`, whose end is returned.
    char* convert(iconv_t converter, const std::uint8_t*& p, const std::uint8_t* end,
                  char* to) noexcept;

private:
    static constexpr std::size_t kLeads = 0xFE - 0x81 + 1;
    static constexpr std::size_t kTrails = 0xFE - 0x40 + 1;

    using Form = std::uint8_t[4];  // zeros while nothing is known

    bool ask(iconv_t converter, const std::uint8_t* p, Form& form) noexcept;

    Form* forms_ = nullptr;
};

}  // namespace netxml
