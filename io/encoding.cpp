#include "io/encoding.hpp"

#include "netxml/io.h"
#include "support/ascii.hpp"

#include <bit>

namespace netxml {
namespace {

// Row i names encoding i.
constexpr const char* kEncodingNames[] = {
    "UTF-8",  "UTF-16LE", "UTF-16BE", "GB2312", "UTF-32LE", "UTF-32BE", "UTF-16",
    "UTF-32", "GBK",      "GB18030",  "UCS-4",  "UCS-4BE",  "UCS-4LE",
};
static_assert(sizeof kEncodingNames / sizeof *kEncodingNames == kEncodingCount);

std::size_t utf8Length(std::uint8_t lead) noexcept
{
    if (lead < 0xC0) return 1;
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

std::size_t gbLength(XML_Encoding encoding, const std::uint8_t* p, const std::uint8_t* end) noexcept
{
    if (*p < 0x81 || *p == 0xFF) return 1;
    const bool four = encoding == XML_ENCODING_GB18030 && end - p > 1 && p[1] >= '0' && p[1] <= '9';
    return four ? 4 : 2;
}

std::size_t utf16Length(XML_Encoding encoding, const std::uint8_t* p,
                        const std::uint8_t* end) noexcept
{
    if (end - p < 2) return 1;
    const bool big = encoding == XML_ENCODING_UTF_16BE ||
                     (encoding == XML_ENCODING_UTF_16 && std::endian::native == std::endian::big);
    const std::uint8_t high = p[big ? 0 : 1];
    return high >= 0xD8 && high <= 0xDB ? 4 : 2;
}

std::size_t announcedLength(XML_Encoding encoding, const std::uint8_t* p,
                            const std::uint8_t* end) noexcept
{
    switch (encoding) {
    case XML_ENCODING_UTF_8: return utf8Length(*p);
    case XML_ENCODING_GB2312:
    case XML_ENCODING_GBK:
    case XML_ENCODING_GB18030: return gbLength(encoding, p, end);
    case XML_ENCODING_UTF_16:  // without a mark iconv writes the machine's byte order
    case XML_ENCODING_UTF_16LE:
    case XML_ENCODING_UTF_16BE: return utf16Length(encoding, p, end);
    default: return 4;
    }
}

}  // namespace

const char* encodingName(XML_Encoding encoding) noexcept
{
    return encoding < kEncodingCount ? kEncodingNames[encoding] : nullptr;
}

XML_Encoding findEncoding(std::string_view name) noexcept
{
    for (XML_Encoding i = 0; i < kEncodingCount; ++i) {
        const std::string_view known{kEncodingNames[i]};
        if (known.size() == name.size() &&
            equalIgnoringCase(known.data(), name.data(), name.size()))
            return i;
    }
    return XML_ENCODING_NONE;
}

std::size_t characterLength(XML_Encoding encoding, const std::uint8_t* p,
                            const std::uint8_t* end) noexcept
{
    const std::size_t left = static_cast<std::size_t>(end - p);
    const std::size_t announced = announcedLength(encoding, p, end);
    return announced < left ? announced : left;
}

}  // namespace netxml

XML_Encoding XML_DOM_EncodingStrToEnum(const char* name)
{
    return name ? netxml::findEncoding(name) : XML_Encoding{XML_ENCODING_NONE};
}

const char* XML_DOM_EncodingEnumToStr(XML_Encoding value)
{
    return netxml::encodingName(value);
}
