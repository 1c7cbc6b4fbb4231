// Sentences from a form with "%s" in it, into a buffer of limited size. Written here and not left
// to printf: texts may be longer than an int counts, and no locale has a say.
#pragma once

#include <cstddef>
#include <initializer_list>

namespace netxml {

// A text for one "%s", or at most `limit` bytes of it. nullptr is the empty text.
struct FormatText {
    FormatText(const char* t, std::size_t l = static_cast<std::size_t>(-1)) noexcept
        : text{t ? t : ""}, limit{l}
    {
    }
    const char* text;
    std::size_t limit;
};

// Puts the texts in the place of each "%s" of the form, in order. Cuts where the buffer ends,
// always terminates, and writes nothing for a size of 0 or without a buffer. Returns the bytes
// stored, without the terminator.
std::size_t formatTexts(char* to, std::size_t size, const char* form,
                        std::initializer_list<FormatText> texts) noexcept;

}  // namespace netxml
