#include "output/text_writer.hpp"

#include "io/encoding.hpp"

namespace netxml {

const TextWriter::Byte* TextWriter::convertByStream(const Byte* s, const Byte* stop) noexcept
{
    finish();
    const auto size = static_cast<std::size_t>(stop - s);
    if (stream_.targetEncoding == XML_ENCODING_UTF_8) converted_ += size;
    ok_ = ok_ && appendConverted(stream_, s, size) == XML_RET_OK && stream_.pendingCount == 0;
    return ok_ ? stop : nullptr;
}

const TextWriter::Byte* TextWriter::convertByCache(const Byte* s, const Byte* stop) noexcept
{
    while (s && s != stop) {
        if (!room()) return nullptr;
        if (*s < 0x80) {
            *p_++ = static_cast<char>(*s++);
            continue;
        }
        // Twice what is converted must fit.
        const auto most = static_cast<std::size_t>(end_ - p_) / 2;
        const auto left = static_cast<std::size_t>(stop - s);
        const Byte* before = s;
        p_ = cache_.convert(stream_.converter, s, s + (left < most ? left : most), p_);
        if (s == before) s = convertByStream(s, s + characterLength(kTreeEncoding, s, stop));
    }
    return s;
}

}  // namespace netxml
