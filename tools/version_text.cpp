#include "version_text.hpp"

#include "netxml/io.h"

namespace netxml::tool {
namespace {

// The build defines NETXML_VERSION, NETXML_COMPILER, NETXML_BUILD_TYPE, NETXML_ICONV_KIND,
// NETXML_WITHOUT_CXX and NETXML_SANITIZERS as texts.
struct Line {
    const char* name;
    const char* value;
};
constexpr Line kLines[] = {
    {"compiler", NETXML_COMPILER},     {"build type", NETXML_BUILD_TYPE},
    {"iconv", NETXML_ICONV_KIND},      {"library without libstdc++", NETXML_WITHOUT_CXX},
    {"sanitizers", NETXML_SANITIZERS},
};

// The encodings that this iconv really has.
std::string encodings()
{
    std::string names;
    for (XML_Encoding e = 0; e != XML_ENCODING_NONE; ++e) {
        XML_IO_OutStream* stream = XML_IO_MemOutStreamCreate(XML_ENCODING_UTF_8, e);
        if (!stream) continue;
        XML_IO_OutStreamDestroy(stream);
        names += std::string{" "} + XML_DOM_EncodingEnumToStr(e);
    }
    return names;
}

}  // namespace

std::string versionText()
{
    std::string text = "netxml " NETXML_VERSION "\n";
    for (const Line& line : kLines) text += std::string{line.name} + ": " + line.value + "\n";
    return text + "encodings:" + encodings();
}

}  // namespace netxml::tool
