// Tables indexed by kind: that their rows stand in the order of the kinds is checked by the
// compiler.
#pragma once

namespace netxml {

template <class Row, unsigned count, class Kind>
constexpr bool kindsFollow(const Row (&rows)[count], Kind first) noexcept
{
    for (const Row& row : rows) {
        if (row.kind != first++) return false;
    }
    return true;
}

}  // namespace netxml
