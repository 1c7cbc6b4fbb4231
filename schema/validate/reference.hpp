// Records that stand for others.
#pragma once

#include <cstddef>

namespace netxml {

// The record at the end of a chain of references, or nullptr when the chain runs in a circle
// (Brent's algorithm: one pointer stays behind while the other goes on for twice as long).
template <class Record>
const Record* resolve(const Record* record) noexcept
{
    const Record* behind = record;
    std::size_t steps = 0;
    std::size_t limit = 1;
    while (record->ref) {
        record = record->ref;
        if (record == behind) return nullptr;
        if (++steps == limit) {
            behind = record;
            steps = 0;
            limit *= 2;
        }
    }
    return record;
}

}  // namespace netxml
