#include "schema/validate/subject.hpp"

#include "support/text_hash.hpp"

namespace netxml {

std::uint32_t Subject::hash() const noexcept
{
    const auto address = reinterpret_cast<std::uintptr_t>(namespaceName);
    return textHash(name()) ^ static_cast<std::uint32_t>(address >> 4);
}

}  // namespace netxml
