// Bytes that are no text: every lead byte with every second byte, overlong, truncated and surrogate
// forms in every encoding, at the very end of the input and inside a document.
#include "tests/schema/guarded_space.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <iconv.h>

#include <array>

namespace {

// Whether bytes are text, by the C library's converter, and of characters that XML allows: the
// rule that trees are held to. A converter of its own for many questions.
class Judge {
public:
    explicit Judge(const char* encoding) : converter_{iconv_open("UCS-4BE", encoding)} {}
    Judge(const Judge&) = delete;
    Judge& operator=(const Judge&) = delete;
    ~Judge() { iconv_close(converter_); }

    bool isText(std::string_view bytes)
    {
        std::array<unsigned char, 256> codes{};
        char* in = const_cast<char*>(bytes.data());
        std::size_t inLeft = bytes.size();
        char* out = reinterpret_cast<char*>(codes.data());
        std::size_t outLeft = codes.size();
        iconv(converter_, nullptr, nullptr, nullptr, nullptr);
        if (iconv(converter_, &in, &inLeft, &out, &outLeft) == static_cast<std::size_t>(-1))
            return false;
        for (std::size_t at = 0; at + 4 <= codes.size() - outLeft; at += 4) {
            const unsigned code = unsigned{codes[at]} << 24 | unsigned{codes[at + 1]} << 16 |
                                  unsigned{codes[at + 2]} << 8 | codes[at + 3];
            if (!isXmlCharacter(code)) return false;
        }
        return true;
    }

private:
    static bool isXmlCharacter(unsigned code)
    {
        if (code < 0x20) return code == '\t' || code == '\n' || code == '\r';
        return code < 0xD800 || (code > 0xDFFF && code < 0xFFFE) ||
               (code > 0xFFFF && code < 0x110000);
    }

    iconv_t converter_;
};

std::string declared(const char* encoding)
{
    return std::string{"<?xml version='1.0' encoding='"} + encoding + "'?>";
}

// Where a character may stand, up to it and from behind it on, and whether a tree holds it.
struct Place {
    const char* before;
    const char* behind;
    bool held;
};
constexpr Place kPlaces[] = {
    {"<a>", "</a>", true},         {"<a b='", "'/>", true},
    {"<a><!--", "--></a>", false}, {"<a><![CDATA[", "]]></a>", true},
    {"<a><?p ", "?></a>", false},
};

// Kept: UTF-8 is decoded by its low bits and judged by what comes out. A tree holds only what is
// UTF-8, but what it does not hold may pass.
bool mayPass(XML_Encoding encoding, const Place& place)
{
    return encoding == XML_ENCODING_UTF_8 && !place.held;
}

XML_DOM_Node* build(GuardedSpace& space, std::string_view document)
{
    char* bytes = space.room(document.size());
    std::memcpy(bytes, document.data(), document.size());
    return XML_DOM_BuildTreeByMem(reinterpret_cast<const uint8_t*>(bytes),
                                  static_cast<uint32_t>(document.size()), 0, nullptr);
}

// Encodings in which text begins as ASCII does.
class LeadByte : public testing::TestWithParam<XML_Encoding> {};

TEST_P(LeadByte, WithEverySecondByteAtTheEndAndInside)
{
    const char* encoding = XML_DOM_EncodingEnumToStr(GetParam());
    const std::string declaration = declared(encoding);
    Judge judge{encoding};
    GuardedSpace space;
    const long before = heapLiveBlocks();
    std::size_t accepted = 0;
    for (unsigned lead = 0x80; lead < 0x100; ++lead) {
        for (unsigned second = 0; second < 0x100; ++second) {
            const std::string pair{static_cast<char>(lead), static_cast<char>(second)};
            const Place& place = kPlaces[(lead + second) % std::size(kPlaces)];
            const std::string start = declaration + place.before;
            ASSERT_EQ(build(space, start + pair), nullptr);
            ASSERT_EQ(build(space, start + pair.substr(0, 1)), nullptr);
            // Markup and the ends of constructs are other questions.
            if (second < 0x80 && std::string_view{"<>&'\"-]?"}.find(static_cast<char>(second)) !=
                                     std::string_view::npos)
                continue;
            for (const char* third : {"", "\x80", "\x81\x30", "\xBF\xBF"}) {
                const std::string text = pair + third;
                XML_DOM_Node* tree = build(space, start + text + place.behind);
                const bool expected = judge.isText(text);
                if (mayPass(GetParam(), place)) {
                    EXPECT_TRUE(tree || !expected);
                } else {
                    ASSERT_EQ(tree != nullptr, expected)
                        << std::hex << lead << " " << second << " " << place.before;
                }
                accepted += expected;
                XML_DOM_DelNode(tree);
            }
        }
    }
    EXPECT_GT(accepted, 100u) << "nothing was accepted";
    EXPECT_EQ(heapLiveBlocks(), before);
}

INSTANTIATE_TEST_SUITE_P(Encodings, LeadByte,
                         testing::Values(XML_ENCODING_UTF_8, XML_ENCODING_GB2312, XML_ENCODING_GBK,
                                         XML_ENCODING_GB18030));

struct Form {
    const char* why;
    XML_Encoding encoding;
    std::string_view bytes;
};
using namespace std::string_view_literals;

// clang-format off
const Form kForms[] = {
    {"overlong slash of two bytes",          XML_ENCODING_UTF_8,    "\xC0\xAF"sv},
    {"overlong NUL",                         XML_ENCODING_UTF_8,    "\xC0\x80"sv},
    {"the last overlong of two bytes",       XML_ENCODING_UTF_8,    "\xC1\xBF"sv},
    {"overlong slash of three bytes",        XML_ENCODING_UTF_8,    "\xE0\x80\xAF"sv},
    {"the last overlong of three bytes",     XML_ENCODING_UTF_8,    "\xE0\x9F\xBF"sv},
    {"overlong slash of four bytes",         XML_ENCODING_UTF_8,    "\xF0\x80\x80\xAF"sv},
    {"the last overlong of four bytes",      XML_ENCODING_UTF_8,    "\xF0\x8F\xBF\xBF"sv},
    {"five bytes",                           XML_ENCODING_UTF_8,    "\xF8\x88\x80\x80\x80"sv},
    {"six bytes",                            XML_ENCODING_UTF_8,    "\xFC\x84\x80\x80\x80\x80"sv},
    {"the first surrogate",                  XML_ENCODING_UTF_8,    "\xED\xA0\x80"sv},
    {"the last surrogate",                   XML_ENCODING_UTF_8,    "\xED\xBF\xBF"sv},
    {"a pair of surrogates",                 XML_ENCODING_UTF_8,    "\xED\xA0\xBD\xED\xB8\x80"sv},
    {"beyond the last character",            XML_ENCODING_UTF_8,    "\xF4\x90\x80\x80"sv},
    {"no character: FFFE",                   XML_ENCODING_UTF_8,    "\xEF\xBF\xBE"sv},
    {"no character: FFFF",                   XML_ENCODING_UTF_8,    "\xEF\xBF\xBF"sv},
    {"a continuation alone",                 XML_ENCODING_UTF_8,    "\x80"sv},
    {"two bytes cut",                        XML_ENCODING_UTF_8,    "\xC3"sv},
    {"three bytes cut",                      XML_ENCODING_UTF_8,    "\xE4\xB8"sv},
    {"four bytes cut",                       XML_ENCODING_UTF_8,    "\xF0\x9F\x98"sv},
    {"FE",                                   XML_ENCODING_UTF_8,    "\xFE"sv},
    {"FF",                                   XML_ENCODING_UTF_8,    "\xFF"sv},
    {"a zero byte",                          XML_ENCODING_UTF_8,    "\0"sv},
    {"a lead byte of GBK alone",             XML_ENCODING_GBK,      "\xD6"sv},
    {"no trail byte",                        XML_ENCODING_GBK,      "\xD6\x7F"sv},
    {"no lead byte",                         XML_ENCODING_GBK,      "\xFF\xD0"sv},
    {"GBK beyond GB2312",                    XML_ENCODING_GB2312,   "\x81\x40"sv},
    {"a lead byte of GB2312 alone",          XML_ENCODING_GB2312,   "\xD6"sv},
    {"two of four bytes",                    XML_ENCODING_GB18030,  "\x81\x30"sv},
    {"three of four bytes",                  XML_ENCODING_GB18030,  "\x81\x30\x81"sv},
    {"four bytes with a bad end",            XML_ENCODING_GB18030,  "\x81\x30\x81\x40"sv},
    {"four bytes beyond all characters",     XML_ENCODING_GB18030,  "\xFE\x39\xFE\x39"sv},
    {"a high surrogate alone",               XML_ENCODING_UTF_16LE, "\x00\xD8"sv},
    {"a low surrogate alone",                XML_ENCODING_UTF_16LE, "\x00\xDC"sv},
    {"surrogates the wrong way round",       XML_ENCODING_UTF_16LE, "\x00\xDC\x00\xD8"sv},
    {"no character",                         XML_ENCODING_UTF_16LE, "\xFE\xFF"sv},
    {"a high surrogate alone",               XML_ENCODING_UTF_16BE, "\xD8\x00"sv},
    {"a low surrogate alone",                XML_ENCODING_UTF_16BE, "\xDC\x00"sv},
    {"two high surrogates",                  XML_ENCODING_UTF_16BE, "\xD8\x00\xD8\x00"sv},
    {"a control character",                  XML_ENCODING_UTF_16BE, "\x00\x01"sv},
    {"a surrogate",                          XML_ENCODING_UTF_32LE, "\x00\xD8\x00\x00"sv},
    {"beyond the last character",            XML_ENCODING_UTF_32LE, "\x00\x00\x11\x00"sv},
    {"the largest number",                   XML_ENCODING_UTF_32LE, "\xFF\xFF\xFF\xFF"sv},
    {"a surrogate",                          XML_ENCODING_UTF_32BE, "\x00\x00\xDF\xFF"sv},
    {"beyond the last character",            XML_ENCODING_UTF_32BE, "\x00\x11\x00\x00"sv},
    {"the sign bit",                         XML_ENCODING_UTF_32BE, "\x80\x00\x00\x41"sv},
    {"a surrogate",                          XML_ENCODING_UCS_4BE,  "\x00\x00\xD8\x00"sv},
    {"beyond the last character",            XML_ENCODING_UCS_4BE,  "\x00\x11\x00\x00"sv},
    {"beyond 31 bits",                       XML_ENCODING_UCS_4LE,  "\xFF\xFF\xFF\xFF"sv},
    {"a surrogate",                          XML_ENCODING_UCS_4LE,  "\x00\xD8\x00\x00"sv},
};
// clang-format on

// GB18030 has no form for a surrogate.
//
// Refused in every place, from every source, near the start and far from it, and at the very end.
TEST(MalformedForms, AreRefusedEverywhere)
{
    GuardedSpace space{8000};
    const long before = heapLiveBlocks();
    for (const Form& form : kForms) {
        const char* name = XML_DOM_EncodingEnumToStr(form.encoding);
        SCOPED_TRACE(std::string{name} + ": " + form.why);
        for (const Place& place : kPlaces) {
            if (mayPass(form.encoding, place)) continue;
            for (const std::size_t distance : {0u, 1u, 15u, 60u, 700u, 1500u}) {
                const std::string start =
                    convertTo(name, declared(name) + place.before + std::string(distance, 'x'));
                const std::string end = convertTo(name, place.behind);
                EXPECT_EQ(build(space, start + std::string{form.bytes}), nullptr);
                const std::string document = start + std::string{form.bytes} + end;
                EXPECT_EQ(build(space, document), nullptr) << place.before << distance;
                for (const std::size_t chunk : {std::size_t{1}, std::size_t{1000}}) {
                    const ChunkList list{document, chunk};
                    EXPECT_EQ(XML_DOM_BuildTreeByMemList(list.list(), 0, nullptr), nullptr)
                        << place.before << distance;
                }
            }
        }
    }
    EXPECT_EQ(heapLiveBlocks(), before);
}

// A mark, and the encoding that follows it.
struct Mark {
    std::string_view bytes;
    const char* encoding;
};

// Which declarations agree with the bytes that stand there.
bool agrees(const Mark& mark, const std::string& declaration)
{
    const std::string actual = mark.encoding;
    if (declaration.empty() || declaration == actual) return true;
    if (actual == "UTF-8")
        return declaration == "GB2312" || declaration == "GBK" || declaration == "GB18030";
    if (actual.starts_with("UTF-16")) return declaration == "UTF-16";
    const std::string order = actual.substr(actual.size() - 2);
    return declaration == "UTF-32" || declaration == "UCS-4" || declaration == "UCS-4" + order;
}

TEST(Marks, WithEveryDeclaration)
{
    const Mark kMarks[] = {
        {"", "UTF-8"},
        {"\xEF\xBB\xBF"sv, "UTF-8"},
        {"\xFF\xFE"sv, "UTF-16LE"},
        {"\xFE\xFF"sv, "UTF-16BE"},
        {"\xFF\xFE\x00\x00"sv, "UTF-32LE"},
        {"\x00\x00\xFE\xFF"sv, "UTF-32BE"},
    };
    GuardedSpace space;
    for (const Mark& mark : kMarks) {
        for (XML_Encoding encoding = 0; encoding <= XML_ENCODING_NONE + 1; ++encoding) {
            std::string name;
            if (encoding < XML_ENCODING_NONE) name = XML_DOM_EncodingEnumToStr(encoding);
            if (encoding == XML_ENCODING_NONE + 1) name = "LATIN1";
            SCOPED_TRACE(std::string{mark.encoding} + " declared as " + name);
            const std::string declaration =
                name.empty() ? "<?xml version='1.0'?>" : declared(name.c_str());
            const std::string source = std::string{mark.bytes} +
                                       convertTo(mark.encoding, declaration + "<a b='c'>text</a>");
            const bool expected = agrees(mark, name);
            XML_DOM_Node* block = build(space, source);
            const ChunkList list{source, 1};
            XML_DOM_Node* chunks = XML_DOM_BuildTreeByMemList(list.list(), 0, nullptr);
            const TempFile path{source};
            XML_DOM_Node* file = XML_DOM_BuildTreeByFile(path.path(), 0, nullptr);
            for (XML_DOM_Node* tree : {block, chunks, file}) {
                EXPECT_EQ(tree != nullptr, expected);
                if (!tree) continue;
                EXPECT_EQ(XML_DOM_GetEncoding(tree),
                          name.empty() ? XML_DOM_EncodingStrToEnum(mark.encoding) : encoding);
                XML_DOM_SetEncoding(tree, XML_ENCODING_UTF_8);
                EXPECT_EQ(written(tree), "<a b=\"c\">text</a>");
                XML_DOM_DelNode(tree);
            }
        }
    }
}

}  // namespace
