// What a contestant's tree holds, for comparison with the document and with the other trees.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <type_traits>

namespace netxml::bench {

struct Tally {
    std::size_t elements = 0;
    std::size_t attributes = 0;    // namespace declarations are none
    std::uint64_t characters = 0;  // the sum of all characters of text and values, without blanks

    template <class Character>
    void add(const Character* text, std::size_t length)
    {
        for (std::size_t i = 0; i < length; ++i) {
            const auto character = static_cast<std::make_unsigned_t<Character>>(text[i]);
            if (character > ' ') characters += character;
        }
    }
    template <class Character>
    void add(const Character* text)
    {
        if (text) add(text, std::char_traits<Character>::length(text));
    }

    bool operator==(const Tally&) const = default;
};

// Throws std::runtime_error unless both counts are the same.
inline void requireSame(std::size_t counted, std::size_t expected, const char* what)
{
    if (counted == expected) return;
    throw std::runtime_error{std::string{what} + ": " + std::to_string(counted) + " instead of " +
                             std::to_string(expected)};
}

// A contestant does not take a document.
struct Refused : std::runtime_error {
    using runtime_error::runtime_error;
};

// Throws std::runtime_error with the reason unless the condition holds.
inline void require(bool condition, const char* reason)
{
    if (!condition) throw std::runtime_error{reason};
}

}  // namespace netxml::bench
