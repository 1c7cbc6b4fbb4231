#include "output/escape.hpp"

#include "support/block.hpp"

namespace netxml {

std::uint32_t putEscaped(const PieceOut& out, std::string_view text) noexcept
{
    const auto* p = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto* end = p + text.size();
    const auto put = [&out](const std::uint8_t* from, const std::uint8_t* to) {
        return from == to ? XML_RET_OK
                          : out.put({reinterpret_cast<const char*>(from),
                                     static_cast<std::size_t>(to - from)});
    };
    std::uint32_t sum = XML_RET_OK;
    if (p != end && isBorderBlank(text.front())) sum = out.put(entityOf(*p++));
    while (sum == XML_RET_OK) {
        const std::uint8_t* stop = findAny<NativeBlock, '<', '>', '&'>(p, end);
        if (stop == end) break;
        sum = put(p, stop);
        if (sum == XML_RET_OK) sum = out.put(entityOf(*stop));
        p = stop + 1;
    }
    if (sum != XML_RET_OK || p == end) return sum;
    if (!isBorderBlank(text.back())) return put(p, end);
    sum = put(p, end - 1);
    return sum == XML_RET_OK ? out.put(entityOf(end[-1])) : sum;
}

}  // namespace netxml
