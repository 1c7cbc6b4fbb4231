#include "fuzz/support/conversion.hpp"

#include "fuzz/support/require.hpp"
#include "netxml/io.h"

#include <iconv.h>

#include <cerrno>

Conversion convertWhole(const char* target, const char* source, std::string_view text)
{
    const iconv_t converter = iconv_open(target, source);
    require(converter != reinterpret_cast<iconv_t>(-1), "the C library knows the encodings");
    Conversion result;
    result.output.resize(text.size() * 4 + 16);  // a byte of any comes to four at most
    char* in = const_cast<char*>(text.data());
    std::size_t inLeft = text.size();
    char* out = result.output.data();
    std::size_t outLeft = result.output.size();
    if (iconv(converter, &in, &inLeft, &out, &outLeft) == static_cast<std::size_t>(-1)) {
        require(errno != E2BIG, "the room is enough");
        result.end = errno == EINVAL ? Conversion::End::Incomplete : Conversion::End::Invalid;
    }
    iconv_close(converter);
    result.output.resize(result.output.size() - outLeft);
    return result;
}

void keepConvertersLoaded()
{
    static iconv_t kept[XML_ENCODING_NONE] = {};
    if (kept[0]) return;
    for (XML_Encoding i = 0; i < XML_ENCODING_NONE; ++i)
        kept[i] = iconv_open("UTF-8", XML_DOM_EncodingEnumToStr(i));
}
