// The name of an open element, as its end tag has to repeat it.
#pragma once

#include "parser/qname.hpp"

namespace netxml {

// The local name comes one byte behind the prefix, if there is one. Where the text is the input,
// whole blocks may be read from it as far as from the end tag; a copy has room behind it.
struct OpenName {
    const std::uint8_t* text = nullptr;
    std::size_t prefixSize = 0;  // without the colon
    std::size_t localSize = 0;
    bool ascii = true;  // no byte of it is beyond ASCII

    OpenName() = default;
    // The parts lie in the input as they were written, or as keep() has copied them.
    explicit OpenName(const QName& name) noexcept
        : text{name.prefix.empty() ? name.local.data : name.prefix.data},
          prefixSize{name.prefix.size}, localSize{name.local.size}, ascii{name.prefix.ascii &&
                                                                          name.local.ascii}
    {
    }
    Span prefix() const noexcept { return {text, prefixSize, false, false}; }
    Span local() const noexcept { return {localText(), localSize, false, false}; }
    const std::uint8_t* localText() const noexcept
    {
        return text + (prefixSize == 0 ? 0 : prefixSize + 1);
    }
};

}  // namespace netxml
