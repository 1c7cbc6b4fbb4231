#include "schema/types/pattern_table.hpp"

#include <bit>
#include <cstring>
#include <type_traits>

namespace netxml {

static_assert(std::is_trivially_copyable_v<PatternTable>);

Positions SimplePattern::step(Positions state, unsigned byte) const noexcept
{
    Positions next = openStart ? first : 0;
    for (Positions met = state & matching[byte]; met != 0; met &= met - 1)
        next |= following[std::countr_zero(met)];
    return next;
}

heap::Owned<PatternTable> PatternTable::make(const char* pattern) noexcept
{
    SimplePattern simple;
    if (!simple.read(pattern)) return {};
    heap::Owned<PatternTable> table{
        static_cast<PatternTable*>(heap::allocate(sizeof(PatternTable)))};
    if (!table) return table;
    table->pattern_ = simple;
    table->stateCount_ = 0;
    table->numberOf(simple.first);
    return table;
}

PatternTable::Answer PatternTable::matches(const char* text) noexcept
{
    if (pattern_.isDecided(pattern_.first)) return finish(pattern_.first, text);
    StateNumber at = kStart;
    for (;;) {
        const auto byte = static_cast<unsigned char>(*text);
        StateNumber next = next_[at][byte];
        if (next == kUnknown) {
            if (byte == 0 || byte >= SimplePattern::kBytes) return finish(states_[at], text);
            const Positions state = pattern_.step(states_[at], byte);
            if (!pattern_.isDecided(state)) next = numberOf(state);
            if (next == kUnknown) return finish(state, text + 1);
            next_[at][byte] = next;
        }
        at = next;
        ++text;
    }
}

// Goes on without the table.
PatternTable::Answer PatternTable::finish(Positions state, const char* rest) const noexcept
{
    for (; !pattern_.isDecided(state) && *rest != '\0'; ++rest) {
        const auto byte = static_cast<unsigned char>(*rest);
        if (byte >= SimplePattern::kBytes) return Answer::Unsure;
        state = pattern_.step(state, byte);
    }
    return (state & SimplePattern::kEnd) != 0 ? Answer::Yes : Answer::No;
}

// The number of a state, a new one when it has none yet; kUnknown when there is no room.
PatternTable::StateNumber PatternTable::numberOf(Positions state) noexcept
{
    for (StateNumber i = kStart; i <= stateCount_; ++i) {
        if (states_[i] == state) return i;
    }
    if (stateCount_ == kMostStates) return kUnknown;
    ++stateCount_;
    states_[stateCount_] = state;
    std::memset(next_[stateCount_], kUnknown, kColumns);
    return stateCount_;
}

}  // namespace netxml
