#include "output/out_stream.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/random.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <memory>
#include <random>

namespace {

struct Destroy {
    void operator()(XML_IO_OutStream* s) const { XML_IO_OutStreamDestroy(s); }
};
using Stream = std::unique_ptr<XML_IO_OutStream, Destroy>;

Stream memory(XML_Encoding source, XML_Encoding target)
{
    return Stream{XML_IO_MemOutStreamCreate(source, target)};
}

std::string held(const Stream& s)
{
    size_t length = 0;
    const char* bytes = XML_IO_MemOutStreamGetBuf(s.get(), &length);
    return bytes ? std::string(bytes, length) : std::string{};
}

uint32_t append(const Stream& s, std::string_view bytes)
{
    return XML_IO_OutStreamAppend(s.get(), bytes.data(), bytes.size());
}

TEST(OutStream, EqualEncodingsPassBytesUnchanged)
{
    for (XML_Encoding e = 0; e < 13; ++e) {
        const Stream s = memory(e, e);
        EXPECT_EQ(append(s, "\xFF\x80x"), XML_RET_OK);
        EXPECT_EQ(held(s), "\xFF\x80x");
    }
    const Stream unknown = memory(13, 13);
    EXPECT_EQ(append(unknown, "xy"), XML_RET_OK) << "nothing to convert";
    EXPECT_EQ(held(unknown), "xy");
}

TEST(OutStream, UnknownEncodingsAreRefused)
{
    EXPECT_EQ(XML_IO_MemOutStreamCreate(0, 13), nullptr);
    EXPECT_EQ(XML_IO_MemOutStreamCreate(13, 0), nullptr);
    EXPECT_EQ(XML_IO_MemOutStreamCreate(0, 99), nullptr);
    const TempFile file{"old"};
    EXPECT_EQ(XML_IO_FileOutStreamCreate(file.path(), 0, 13), nullptr);
    EXPECT_EQ(file.content(), "old");
}

TEST(OutStream, NothingToAppendSucceedsBeforeTheStreamIsLookedAt)
{
    EXPECT_EQ(XML_IO_OutStreamAppend(nullptr, "x", 0), XML_RET_OK);
    EXPECT_EQ(XML_IO_OutStreamAppend(nullptr, nullptr, 5), XML_RET_OK);
    EXPECT_EQ(XML_IO_OutStreamAppend(nullptr, "x", 1), XML_RET_FAIL);
}

TEST(OutStream, GetBufOfAFreshAndOfANoStream)
{
    size_t length = 7;
    const Stream s = memory(0, 0);
    EXPECT_EQ(XML_IO_MemOutStreamGetBuf(s.get(), &length), nullptr);
    EXPECT_EQ(length, 0u);
    length = 7;
    EXPECT_EQ(XML_IO_MemOutStreamGetBuf(nullptr, &length), nullptr);
    EXPECT_EQ(XML_IO_MemOutStreamDetachBuf(nullptr, &length), nullptr);
    const TempFile path;
    const Stream file{XML_IO_FileOutStreamCreate(path.path(), 0, 0)};
    EXPECT_EQ(XML_IO_MemOutStreamGetBuf(file.get(), &length), nullptr);
    EXPECT_EQ(XML_IO_MemOutStreamDetachBuf(file.get(), &length), nullptr);
    EXPECT_EQ(length, 7u) << "left as it was";
    XML_IO_MemOutStreamCleanBuf(file.get());
    XML_IO_MemOutStreamCleanBuf(nullptr);
    XML_IO_FileOutStreamFlush(s.get());
    XML_IO_FileOutStreamFlush(nullptr);
    XML_IO_OutStreamDestroy(nullptr);
}

TEST(OutStream, CapacityIsTheNextStepStrictlyAboveTheNeed)
{
    struct Case {
        std::size_t first, second, capacity;
    };
    for (const Case& row : {Case{1000, 0, 1024}, Case{1000, 100, 2048}, Case{2048, 0, 3072},
                            Case{1024, 0, 2048}, Case{1000, 24, 1024}, Case{1, 5000, 5120}}) {
        const Stream s = memory(0, 0);
        append(s, std::string(row.first, 'x'));
        append(s, std::string(row.second, 'x'));
        EXPECT_EQ(s->target.memory->capacity, row.capacity) << row.first << "+" << row.second;
    }
}

TEST(OutStream, RoomThatCannotBeIsRefused)
{
    const Stream s = memory(0, 0);
    append(s, "abc");
    EXPECT_FALSE(s->target.memory->reserve(SIZE_MAX));
    EXPECT_FALSE(s->target.memory->reserve(SIZE_MAX - 500)) << "the next step is beyond all sizes";
    {
        const FailingHeap heap{0};
        EXPECT_FALSE(s->target.memory->reserve(SIZE_MAX / 2)) << "nor is it doubled";
    }
    EXPECT_EQ(held(s), "abc");
}

TEST(OutStream, DetachHandsTheBlockOutAndStartsAfresh)
{
    const Stream s = memory(0, 0);
    append(s, "abc");
    size_t length = 0;
    char* block = XML_IO_MemOutStreamDetachBuf(s.get(), &length);
    EXPECT_EQ(std::string(block, length), "abc");
    EXPECT_EQ(XML_IO_MemOutStreamGetBuf(s.get(), nullptr), nullptr);
    append(s, "d");
    EXPECT_EQ(held(s), "d");
    EXPECT_EQ(std::string(block, length), "abc");
    heapReleaseHandedOut(block);
}

TEST(OutStream, DetachOfAnEmptiedStreamFreesTheBlockLeftOver)
{
    const FailingHeap heap{1000};
    Stream s = memory(0, 0);
    append(s, "abc");
    XML_IO_MemOutStreamCleanBuf(s.get());
    size_t length = 7;
    EXPECT_EQ(XML_IO_MemOutStreamDetachBuf(s.get(), &length), nullptr);
    EXPECT_EQ(length, 0u);
    s.reset();
    EXPECT_EQ(FailingHeap::liveBlocks(), 0);
}

TEST(OutStream, CleanKeepsTheBlockAndWhatIsHeldBack)
{
    const Stream s = memory(0, 9);
    EXPECT_EQ(append(s, "x\xE4\xB8"), XML_RET_OK);
    EXPECT_EQ(held(s), "x");
    XML_IO_MemOutStreamCleanBuf(s.get());
    EXPECT_EQ(held(s), "");
    EXPECT_EQ(append(s, "\xADy"), XML_RET_OK);
    EXPECT_EQ(held(s), "\xD6\xD0y");
}

struct HeldCase {
    const char* why;
    std::vector<std::string> pieces;
    std::string text;  // "!" at the end: the last append fails
};

TEST(OutStream, CompletesCharactersAcrossAppends)
{
    const HeldCase kCases[] = {
        {"two bytes apart", {"\xC3", "\xA9"}, "\xA8\xA6"},
        {"three bytes, one at a time", {"\xE4", "\xB8", "\xAD"}, "\xD6\xD0"},
        {"four bytes, one at a time", {"\xF0", "\x9F", "\x98", "\x80"}, "\x94\x39\xFC\x36"},
        {"completed and more behind",
         {"\xE4\xB8", "\xAD"
                      "abc"},
         "\xD6\xD0"
         "abc"},
        {"completed, and the next one begins",
         {"\xE4\xB8", "\xAD\xE6", "\x96\x87"},
         "\xD6\xD0\xCE\xC4"},
        {"completed by the cap of four, the next one begins inside",
         {"\xC3", "\xA9\xE4\xB8\xAD"
                  "x"},
         "\xA8\xA6\xD6\xD0x"},
        {"nothing is held back then",
         {"\xC3", "\xA9\xE4\xB8\xAD", "x\xC3\xA9"},
         "\xA8\xA6\xD6\xD0x\xA8\xA6"},
        {"the cap cuts the next one", {"\xC3", "\xA9\xF0\x9F\x98\x80"}, "\xA8\xA6\x94\x39\xFC\x36"},
        {"held back and never completed", {"a\xE4\xB8"}, "a"},
        {"held back, then something else", {"a\xE4\xB8", "b"}, "a!"},
        {"ASCII after something held back", {"\xE4\xB8", "\xAD", "plain"}, "\xD6\xD0plain"},
    };
    for (const HeldCase& row : kCases) {
        SCOPED_TRACE(row.why);
        const Stream s = memory(0, 9);
        uint32_t status = XML_RET_OK;
        for (const std::string& piece : row.pieces) status = append(s, piece);
        EXPECT_EQ(held(s) + (status == XML_RET_OK ? "" : "!"), row.text);
    }
}

// The plain rule: areas of 256 bytes, each written when the next character does not fit.
struct PlainResult {
    std::string text;
    bool failed;
};

PlainResult plainConversion(const char* target, const std::string& source)
{
    PlainResult result{{}, false};
    std::string area;
    std::size_t at = 0;
    while (at < source.size()) {
        std::size_t size = 1;
        const auto lead = static_cast<uint8_t>(source[at]);
        if (lead >= 0xC0) size = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        std::string character;
        try {
            character = convertTo(target, source.substr(at, size));
        } catch (const std::exception&) {
            result.failed = true;
            return result;  // what is in the area is lost
        }
        if (area.size() + character.size() > 256) {
            result.text += area;
            area.clear();
        }
        area += character;
        at += size;
    }
    result.text += area;
    return result;
}

// glibc waits for all six bytes of a form that UTF-8 no longer has, and refuses it then.
TEST(OutStream, TheOldFormsOfUtf8AreRefusedWhereverTheyAreCut)
{
    const XML_Encoding targets[] = {XML_ENCODING_UTF_32, XML_ENCODING_UTF_16LE,
                                    XML_ENCODING_GB18030};
    for (const std::string old : {"\xFD\x9D\x9D\x9D\x9D\x9D", "\xF8\x9D\x9D\x9D\x9D"}) {
        for (const XML_Encoding target : targets) {
            for (std::size_t cut = 1; cut != old.size(); ++cut) {
                const Stream s = memory(XML_ENCODING_UTF_8, target);
                ASSERT_EQ(append(s, "x" + old.substr(0, cut)), XML_RET_OK) << cut;
                const std::string before = held(s);
                EXPECT_EQ(append(s, old.substr(cut) + std::string(60, 'y')), XML_RET_FAIL) << cut;
                EXPECT_EQ(held(s), before);
            }
        }
    }
}

TEST(OutStream, AFailingConversionKeepsWholeAreasInMemoryAndFile)
{
#ifdef __SANITIZE_ADDRESS__
    const std::size_t rounds = 100;
#else
    const std::size_t rounds = 400 / caseStep(8);
#endif
    std::mt19937 random{1};
    for (std::size_t round = 0; round < rounds; ++round) {
        std::string source;
        const std::size_t count = random() % 900;
        for (std::size_t i = 0; i < count; ++i) {
            const char* const pieces[] = {"a", "\xE4\xB8\xAD", "\xC3\xA9", "\xF0\x9F\x98\x80",
                                          "some plain text in between which is long"};
            source += pieces[random() % (round % 3 == 0 ? 5 : 4)];
        }
        if (round % 2 == 0)
            source += "\xFF"
                      "tail";
        for (const char* target : {"GB18030", "UTF-16LE", "UTF-16BE", "UTF-32BE"}) {
            const PlainResult plain = plainConversion(target, source);
            const XML_Encoding encoding = XML_DOM_EncodingStrToEnum(target);
            const Stream s = memory(0, encoding);
            EXPECT_EQ(append(s, source) != XML_RET_OK, plain.failed);
            ASSERT_EQ(held(s), plain.text) << target;
            const TempFile path;
            const Stream file{XML_IO_FileOutStreamCreate(path.path(), 0, encoding)};
            EXPECT_EQ(append(file, source) != XML_RET_OK, plain.failed);
            ASSERT_EQ(path.content(), plain.text) << target;
        }
    }
}

TEST(OutStream, ConvertsBetweenAnyTwoEncodings)
{
    const std::string text = "ab\xE4\xB8\xAD\xE6\x96\x87 cd";
    for (XML_Encoding from = 0; from < 13; ++from) {
        for (XML_Encoding to = 0; to < 13; ++to) {
            SCOPED_TRACE(std::string{XML_DOM_EncodingEnumToStr(from)} + " to " +
                         XML_DOM_EncodingEnumToStr(to));
            const std::string source = convertTo(XML_DOM_EncodingEnumToStr(from), text);
            const std::string target = from == to ? source
                                                  : convertTo(XML_DOM_EncodingEnumToStr(to), source,
                                                              XML_DOM_EncodingEnumToStr(from));
            const Stream whole = memory(from, to);
            ASSERT_TRUE(whole);
            EXPECT_EQ(append(whole, source), XML_RET_OK);
            EXPECT_EQ(held(whole), target);
            const Stream bytes = memory(from, to);
            for (const char c : source) EXPECT_EQ(append(bytes, {&c, 1}), XML_RET_OK);
            EXPECT_EQ(held(bytes), target) << "byte by byte";
        }
    }
}

TEST(OutStream, AFileIsAppendedToAndCreatedForOwnerAndGroup)
{
    const TempFile path{"old content"};
    Stream s{XML_IO_FileOutStreamCreate(path.path(), 0, 9)};
    ASSERT_TRUE(s);
    EXPECT_EQ(append(s, "x"), XML_RET_OK);
    EXPECT_EQ(append(s, "\xE4\xB8"), XML_RET_OK);
    EXPECT_EQ(append(s, "\xAD"), XML_RET_OK);
    XML_IO_FileOutStreamFlush(s.get());
    EXPECT_EQ(path.content(), "old contentx\xD6\xD0");
    s.reset();

    path.remove();
    const mode_t before = umask(0);
    s.reset(XML_IO_FileOutStreamCreate(path.path(), 0, 0));
    umask(before);
    ASSERT_TRUE(s);
    struct stat info {};
    ASSERT_EQ(stat(path.path(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777u, 0640u);
    EXPECT_EQ(XML_IO_FileOutStreamCreate("/nonexistent/dir/file", 0, 0), nullptr);
    EXPECT_EQ(XML_IO_FileOutStreamCreate(nullptr, 0, 0), nullptr);
}

TEST(OutStream, AFileThatCannotBeWrittenFails)
{
    const Stream s{XML_IO_FileOutStreamCreate("/dev/full", 0, 0)};
    ASSERT_TRUE(s);
    EXPECT_EQ(append(s, "x"), XML_RET_FAIL);
}

TEST(OutStream, FailedGrowthKeepsTheContent)
{
    const Stream s = memory(0, 9);
    append(s, "abc");
    const FailingHeap heap{0};
    EXPECT_EQ(append(s, std::string(5000, 'x')), XML_RET_FAIL);
    EXPECT_EQ(append(s, "\xE4\xB8\xAD" + std::string(5000, 'x')), XML_RET_FAIL);
    EXPECT_EQ(held(s), "abc");
}

TEST(OutStream, LeavesNothingBehindWhicheverAllocationFails)
{
    const TempFile path;
    for (std::size_t allowed = 0; allowed < 8; ++allowed) {
        const FailingHeap heap{allowed};
        Stream s = memory(0, 9);
        if (s) append(s, std::string(3000, 'x'));
        s.reset(XML_IO_FileOutStreamCreate(path.path(), 0, 9));
        if (s) append(s, "\xE4\xB8\xAD");
        s.reset();
        EXPECT_EQ(FailingHeap::liveBlocks(), 0) << allowed;
    }
}

// GB2312 is copied into GBK, and checked.
TEST(OutStream, LongGb2312IntoGbk)
{
    std::string text;
    for (int i = 0; i < 3000; ++i) text += i % 5 == 0 ? "x" : "\xD6\xD0";
    const Stream s = memory(XML_ENCODING_GB2312, XML_ENCODING_GBK);
    EXPECT_EQ(append(s, text), XML_RET_OK);
    EXPECT_EQ(held(s), text);
    const TempFile path;
    const Stream file{
        XML_IO_FileOutStreamCreate(path.path(), XML_ENCODING_GB2312, XML_ENCODING_GBK)};
    EXPECT_EQ(append(file, text), XML_RET_OK);
    EXPECT_EQ(path.content(), text);
    EXPECT_EQ(append(s, "\x81\x40"), XML_RET_FAIL) << "GBK, but no GB2312";
}

}  // namespace
