#include "support/heap.hpp"

#include <cstdint>
#include <cstring>

namespace netxml::heap {

char* copyText(const char* text, std::size_t size) noexcept
{
    if (size == SIZE_MAX) return nullptr;
    char* copy = static_cast<char*>(allocate(size + 1));
    if (!copy) return nullptr;
    std::memcpy(copy, text, size);
    copy[size] = '\0';
    return copy;
}

}  // namespace netxml::heap
