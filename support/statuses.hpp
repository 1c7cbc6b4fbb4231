// Statuses of several writes as one.
#pragma once

#include "netxml/base.h"

#include <cstdint>

namespace netxml {

// The sum of two statuses; a failure stays one even where the sum wraps to 0.
constexpr std::uint32_t addStatus(std::uint32_t a, std::uint32_t b) noexcept
{
    const std::uint32_t sum = a + b;
    return sum == 0 && a != 0 ? XML_RET_FAIL : sum;
}

}  // namespace netxml
