// A simple regular expression as a table: one look a byte. What follows a state is found out when
// it is first needed, and kept while there is room.
#pragma once

#include "schema/types/simple_pattern.hpp"
#include "support/heap.hpp"

#include <cstddef>
#include <cstdint>

namespace netxml {

class PatternTable {
public:
    enum class [[nodiscard]] Answer : std::uint8_t{No, Yes, Unsure};

    // nullptr when the pattern is not simple, or memory runs out.
    static heap::Owned<PatternTable> make(const char* pattern) noexcept;

    // Whether the pattern matches, as regexec() says in the C locale. Unsure of a text with bytes
    // beyond ASCII.
    Answer matches(const char* text) noexcept;

private:
    using StateNumber = std::uint8_t;
    static constexpr std::size_t kMostStates = 40;
    static constexpr std::size_t kColumns = 256;
    // In a row: not found out yet. So are the end of the text and what is beyond ASCII, always.
    static constexpr StateNumber kUnknown = 0;
    static constexpr StateNumber kStart = 1;

    StateNumber numberOf(Positions state) noexcept;
    Answer finish(Positions state, const char* rest) const noexcept;

    SimplePattern pattern_;
    StateNumber stateCount_;
    Positions states_[kMostStates + 1];  // by number
    StateNumber next_[kMostStates + 1][kColumns];
};

}  // namespace netxml
