// Sizes that do not wrap: every sum that depends on input goes through these.
#pragma once

#include <cstddef>
#include <cstdint>

namespace netxml {

// True, with the sum stored, unless it would wrap.
[[nodiscard]] constexpr bool addSizes(std::size_t a, std::size_t b, std::size_t& sum) noexcept
{
    sum = a + b;
    return sum >= a;
}

// `size` rounded up to a multiple of `step`, a power of two; true unless it would wrap.
[[nodiscard]] constexpr bool roundUp(std::size_t size, std::size_t step,
                                     std::size_t& rounded) noexcept
{
    if (!addSizes(size, step - 1, rounded)) return false;
    rounded &= ~(step - 1);
    return true;
}

}  // namespace netxml
