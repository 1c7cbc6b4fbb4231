#include "io/double_byte_cache.hpp"

#include <cstring>

namespace netxml {

char* DoubleByteCache::convert(iconv_t converter, const std::uint8_t*& p, const std::uint8_t* end,
                               char* to) noexcept
{
    if (!forms_) forms_ = static_cast<Form*>(heap::allocateZeroed(kLeads * kTrails * sizeof(Form)));
    if (!forms_) return to;
    const std::uint8_t* from = p;
    for (; end - from >= 2; from += 2) {
        const std::size_t lead = from[0] - std::size_t{0x81};
        const std::size_t trail = from[1] - std::size_t{0x40};
        if (lead >= kLeads || trail >= kTrails) break;  // four bytes have a digit there
        Form& form = forms_[lead * kTrails + trail];
        if (form[0] == 0 && !ask(converter, from, form)) break;
        std::memcpy(to, form, sizeof form);
        to += form[0] < 0xE0 ? 2 : 3;
    }
    p = from;
    return to;
}

bool DoubleByteCache::ask(iconv_t converter, const std::uint8_t* p, Form& form) noexcept
{
    std::uint8_t converted[8] = {};
    ConvertInput in{p, p + 2};
    ConvertOutput out{converted, converted + sizeof converted};
    if (convertThrough(converter, in, out) != ConvertEnd::Done) return false;
    const auto size = out.cursor - converted;
    if (size != (converted[0] < 0xE0 ? 2 : 3) || converted[0] < 0xC0) return false;
    std::memcpy(form, converted, sizeof form);
    return true;
}

}  // namespace netxml
