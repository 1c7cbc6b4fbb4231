// Input streams as a caller drives them, and their buffers from inside.
#include "io/in_stream.hpp"
#include "io/stream_buffer.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/sources.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/stat.h>
#include <unistd.h>

#include <bit>
#include <cstring>
#include <memory>
#include <thread>
#include <utility>

namespace {

struct DestroyMem {
    void operator()(XML_IO_InStream* s) const { XML_IO_DestroyByMem(s); }
};
struct DestroyList {
    void operator()(XML_IO_InStream* s) const { XML_IO_DestroyByMemList(s); }
};
struct DestroyFile {
    void operator()(XML_IO_InStream* s) const { XML_IO_DestroyByFile(s); }
};
using Mem = std::unique_ptr<XML_IO_InStream, DestroyMem>;
using List = std::unique_ptr<XML_IO_InStream, DestroyList>;
using File = std::unique_ptr<XML_IO_InStream, DestroyFile>;

uint32_t statusOf(const XML_IO_InStream& s)
{
    return static_cast<uint32_t>(s.status);
}

std::string textOf(const XML_IO_InStream& s)
{
    return {reinterpret_cast<const char*>(s.cursor), s.available()};
}

// Reads to the end, one byte at a time.
std::string readAll(XML_IO_InStream& s)
{
    std::string text;
    while (s.available() != 0) {
        text.push_back(static_cast<char>(*s.cursor++));
        s.mark = s.cursor;
        XML_IO_Grow(&s);
    }
    return text;
}

TEST(InStream, RefusesBadArguments)
{
    EXPECT_EQ(XML_IO_ByMem(nullptr, 1), nullptr);
    EXPECT_EQ(XML_IO_ByMem(bytesOf("x"), 0), nullptr);
    EXPECT_EQ(XML_IO_ByMemList(nullptr), nullptr);
    EXPECT_EQ(XML_IO_ByFile(nullptr), nullptr);
    EXPECT_EQ(XML_IO_ByFile("/nonexistent/file"), nullptr);
    XML_IO_DestroyByMem(nullptr);
    XML_IO_DestroyByMemList(nullptr);
    XML_IO_DestroyByFile(nullptr);
    XML_IO_Grow(nullptr);
    EXPECT_EQ(XML_IO_SwitchEncoding(nullptr, 1), 2u);
}

TEST(InStream, ABlockIsUsedInPlace)
{
    const std::string text = "hello";
    const Mem s{XML_IO_ByMem(bytesOf(text), text.size())};
    EXPECT_EQ(s->base, bytesOf(text));
    EXPECT_EQ(s->cursor, s->base);
    EXPECT_EQ(s->mark, s->base);
    EXPECT_EQ(s->end, s->base + 5);
    EXPECT_EQ(s->capacity, 5u);
    EXPECT_EQ(statusOf(*s), 1u);
    EXPECT_EQ(s->encoding, 0u);
}

TEST(InStream, AnEmptyListHasStatusOneAndNoData)
{
    const XML_IO_MemList empty{nullptr};
    const List s{XML_IO_ByMemList(&empty)};
    ASSERT_TRUE(s);
    EXPECT_EQ(statusOf(*s), 1u);
    EXPECT_EQ(s->available(), 0u);
}

TEST(InStream, ReadsEveryKindOfChunk)
{
    std::string text;
    for (int i = 0; i < 5000; ++i) text += std::to_string(i);
    for (const std::size_t size : {1u, 2u, 63u, 64u, 65u, 1023u, 1024u, 1025u, 100000u}) {
        const ChunkList chunks{text, size};
        const List s{XML_IO_ByMemList(chunks.list())};
        EXPECT_EQ(readAll(*s), text) << size;
        EXPECT_EQ(statusOf(*s), 1u);
    }
    const ChunkList withEmpty{text,
                              std::vector<std::size_t>{0, 0, 10, 10, 10, text.size(), text.size()}};
    const List s{XML_IO_ByMemList(withEmpty.list())};
    EXPECT_EQ(readAll(*s), text);
    const TempFile file{text};
    const File f{XML_IO_ByFile(file.path())};
    EXPECT_EQ(readAll(*f), text);
}

TEST(InStream, GrowKeepsSixtyFourBytesAhead)
{
    const std::string text(5000, 'x');
    const ChunkList chunks{text, 1};
    const List s{XML_IO_ByMemList(chunks.list())};
    EXPECT_EQ(s->available(), 1024u);
    s->cursor += 960;
    s->mark = s->cursor;
    XML_IO_Grow(s.get());
    EXPECT_EQ(s->available(), 64u) << "64 are enough";
    ++s->cursor;
    XML_IO_Grow(s.get());
    EXPECT_EQ(s->available(), 63u + 960u) << "compacted to the mark, then filled";
    EXPECT_EQ(s->mark, s->base);
}

TEST(InStream, AMarkedTokenStaysWholeAndTheBufferGrowsByItsStep)
{
    const std::string text(10000, 'x');
    const ChunkList chunks{text, 100};
    const List s{XML_IO_ByMemList(chunks.list())};
    for (std::size_t i = 0; i < 5000; ++i) {
        ++s->cursor;
        XML_IO_Grow(s.get());
    }
    EXPECT_EQ(s->mark, s->base);
    EXPECT_EQ(s->cursor - s->mark, 5000);
    EXPECT_EQ(s->capacity % 1024, 0u);
    EXPECT_LE(s->capacity, 5000u + 64u + 1024u);
    EXPECT_EQ(std::string(s->mark, s->cursor), std::string(5000, 'x'));
}

TEST(InStream, ComparesWithoutMoving)
{
    const std::string text = "<!DOCTYPE";
    const Mem s{XML_IO_ByMem(bytesOf(text), text.size())};
    EXPECT_EQ(XML_IO_Strncmp(s.get(), "<!DOC", 5), 1u);
    EXPECT_EQ(XML_IO_Strncmp(s.get(), "<!doc", 5), 0u);
    EXPECT_EQ(XML_IO_Strncasecmp(s.get(), "<!doc", 5), 1u);
    EXPECT_EQ(XML_IO_Strncasecmp(s.get(), "<!dox", 5), 0u);
    EXPECT_EQ(XML_IO_Strncmp(s.get(), "<!DOCTYPE ", 10), 0u) << "too few bytes, though all agree";
    EXPECT_EQ(XML_IO_Strncasecmp(s.get(), "<!DOCTYPE ", 10), 0u);
    EXPECT_EQ(XML_IO_Strncmp(s.get(), "", 0), 1u);
    EXPECT_EQ(XML_IO_Strncmp(s.get(), "<!DOCTYPE", 9), 1u) << "all that there is";
    EXPECT_EQ(XML_IO_Strncasecmp(s.get(), "<!doctype", 9), 1u);
    EXPECT_EQ(XML_IO_Strncmp(s.get(), nullptr, 0), 0u);
    EXPECT_EQ(XML_IO_Strncasecmp(s.get(), nullptr, 0), 0u);
    EXPECT_EQ(XML_IO_Strncmp(nullptr, "x", 1), 0u);
    EXPECT_EQ(XML_IO_Strncasecmp(nullptr, "x", 1), 0u);
    EXPECT_EQ(textOf(*s), text);
}

TEST(InStream, SkipsTheMarkAndSwitches)
{
    struct Case {
        const char* why;
        std::string bytes;
        XML_Encoding encoding;
        std::string text;
    };
    const Case kMarks[] = {
        {"UTF-8", "\xEF\xBB\xBFx", 0, "x"},
        {"UTF-8, the mark alone", "\xEF\xBB\xBF", 0, ""},
        {"not a whole mark", "\xEF\xBB", 0, "\xEF\xBB"},
        {"UTF-16LE", std::string("\xFF\xFEx\0", 4), 1, "x"},
        {"UTF-16BE", std::string("\xFE\xFF\0x", 4), 2, "x"},
        {"UTF-32LE before UTF-16LE", std::string("\xFF\xFE\0\0x\0\0\0", 8), 4, "x"},
        {"UTF-32BE", std::string("\0\0\xFE\xFF\0\0\0x", 8), 5, "x"},
        {"too short for UTF-32LE", std::string("\xFF\xFE\0", 3), 0, std::string("\0", 1)},
        {"none", "xy", 0, "xy"},
    };
    for (const Case& row : kMarks) {
        SCOPED_TRACE(row.why);
        const Mem s{XML_IO_ByMem(bytesOf(row.bytes), row.bytes.size())};
        ASSERT_TRUE(s);
        EXPECT_EQ(s->encoding, row.encoding);
        EXPECT_EQ(textOf(*s), row.text);
        EXPECT_EQ(s->mark, s->cursor);
    }
}

TEST(InStream, SwitchingThereAndBackLosesNothing)
{
    const std::string text = "a\xE4\xB8\xAD<b>\xE6\x96\x87 and more text here";
    for (const char* name :
         {"GBK", "GB18030", "GB2312", "UTF-16LE", "UTF-16BE", "UTF-32LE", "UTF-32BE"}) {
        SCOPED_TRACE(name);
        const XML_Encoding encoding = XML_DOM_EncodingStrToEnum(name);
        const std::string source = convertTo(name, text);
        const Mem s{XML_IO_ByMem(bytesOf(source), source.size())};
        EXPECT_EQ(XML_IO_SwitchEncoding(s.get(), encoding), 0u);
        EXPECT_EQ(textOf(*s), text);
        s->cursor += 4;  // "a" and the first Chinese character are pending
        EXPECT_EQ(XML_IO_SwitchEncoding(s.get(), XML_ENCODING_UTF_8), 0u);
        const std::size_t pending = convertTo(name, text.substr(0, 4)).size();
        EXPECT_EQ(s->cursor - s->mark, static_cast<std::ptrdiff_t>(pending));
        EXPECT_EQ(textOf(*s), source.substr(pending));
        EXPECT_EQ(s->base, bytesOf(source)) << "the caller's block again";
        EXPECT_EQ(XML_IO_SwitchEncoding(s.get(), encoding), 0u);
        EXPECT_EQ(textOf(*s), text.substr(4));
        EXPECT_EQ(s->cursor - s->mark, 4);
    }
}

TEST(StreamBuffer, RoomThatCannotBeIsRefused)
{
    XML_IO_InStream s{};
    EXPECT_FALSE(netxml::StreamBuffer::text(s).enlarge(SIZE_MAX)) << "no such step";
    s.capacity = SIZE_MAX - 100;
    EXPECT_FALSE(netxml::StreamBuffer::text(s).enlarge(0)) << "no such capacity";
    EXPECT_EQ(s.capacity, SIZE_MAX - 100);
    s.capacity = SIZE_MAX / 2;
    const FailingHeap heap{0};
    EXPECT_FALSE(netxml::StreamBuffer::text(s).enlarge(0)) << "no such memory";
    EXPECT_EQ(s.capacity, SIZE_MAX / 2);
}

// A switch in any state of the window, with any allocation failing: it is done, or the stream is as
// it was.
TEST(InStream, ASwitchMayRunOutOfMemoryAnywhere)
{
    const std::string chinese = convertTo("GBK", "\xE4\xB8\xAD\xE6\x96\x87\xE5\xAD\x97");
    for (std::size_t plain = 0; plain<3200; plain += plain> 990 && plain < 1030 ? 1 : 33) {
        std::string source(plain, 'x');
        for (int i = 0; i < 300; ++i) source += chinese;
        for (const std::size_t pending : {std::size_t{0}, plain}) {
            for (std::size_t allowed = 0;; ++allowed) {
                const ChunkList chunks{source, 500};
                const Mem block{XML_IO_ByMem(bytesOf(source), source.size())};
                const List list{XML_IO_ByMemList(chunks.list())};
                bool refused = false;
                for (XML_IO_InStream* s : {block.get(), list.get()}) {
                    s->cursor += pending < s->available() ? pending : 0;
                    const std::string before = textOf(*s);
                    uint32_t status = 0;
                    {
                        const FailingHeap heap{allowed};
                        status = XML_IO_SwitchEncoding(s, XML_ENCODING_GBK);
                        refused |= FailingHeap::refused();
                    }
                    ASSERT_TRUE(status == 0 || (status == 2 && refused)) << status;
                    if (status == 0) {
                        ASSERT_EQ(s->encoding, XML_Encoding{XML_ENCODING_GBK});
                    } else if (s->encoding == XML_ENCODING_UTF_8) {
                        ASSERT_EQ(textOf(*s), before);
                    }
                }
                if (!refused) break;
            }
        }
    }
}

// A source that is being converted is not what another declaration says: it begins anew.
TEST(InStream, ADeclarationOfOtherUnitsEndsAConversion)
{
    const std::string text = "abcd";
    const Mem s{XML_IO_ByMem(bytesOf(text), text.size())};
    EXPECT_EQ(XML_IO_SwitchEncoding(s.get(), XML_ENCODING_GBK), 0u);
    EXPECT_EQ(XML_IO_SwitchEncoding(s.get(), XML_ENCODING_UTF_16), 0u);
    EXPECT_EQ(s->available(), 6u) << "two characters of three bytes";
}

struct OpenOrder {
    const char* written;  // the encoding of the text
    const char* mark;     // that encoding's
    std::size_t markSize;
    const char* declared;  // leaves the order open
};

// A declaration that leaves the byte order open confirms the mark; going back and there again keeps
// the mark's order.
TEST(InStream, AMarkSaysTheOrderThatADeclarationLeavesOpen)
{
    // clang-format off
    constexpr OpenOrder kCases[] = {
        {"UTF-16LE", "\xFF\xFE",     2, "UTF-16"},
        {"UTF-16BE", "\xFE\xFF",     2, "UTF-16"},
        {"UTF-32LE", "\xFF\xFE\0\0", 4, "UTF-32"},
        {"UTF-32BE", "\0\0\xFE\xFF", 4, "UTF-32"},
        {"UTF-32LE", "\xFF\xFE\0\0", 4, "UCS-4"},
        {"UTF-32BE", "\0\0\xFE\xFF", 4, "UCS-4"},
    };
    // clang-format on
    const std::string text = "a\xE4\xB8\xAD text";
    for (const OpenOrder& row : kCases) {
        SCOPED_TRACE(std::string{row.written} + ", then " + row.declared);
        const std::string source =
            std::string{row.mark, row.markSize} + convertTo(row.written, text);
        const XML_Encoding declared = XML_DOM_EncodingStrToEnum(row.declared);
        const Mem s{XML_IO_ByMem(bytesOf(source), source.size())};
        ASSERT_EQ(s->encoding, XML_DOM_EncodingStrToEnum(row.written));
        EXPECT_EQ(XML_IO_SwitchEncoding(s.get(), declared), 0u);
        EXPECT_EQ(s->encoding, declared);
        EXPECT_EQ(textOf(*s), text);
        EXPECT_EQ(XML_IO_SwitchEncoding(s.get(), XML_ENCODING_UTF_8), 0u);
        EXPECT_EQ(textOf(*s), source.substr(row.markSize));
        EXPECT_EQ(XML_IO_SwitchEncoding(s.get(), declared), 0u);
        EXPECT_EQ(textOf(*s), text);
    }
    const std::string wide = "\xFF\xFE" + convertTo("UTF-16LE", "text");
    const Mem s{XML_IO_ByMem(bytesOf(wide), wide.size())};
    EXPECT_EQ(XML_IO_SwitchEncoding(s.get(), XML_ENCODING_UTF_32), 4u) << "units of another width";
}

// Without a mark iconv reads UTF-16 and UTF-32 in the machine's order, and UCS-4 in the other one's
// if that is not big-endian: what is read back is in the same.
TEST(InStream, WithoutAMarkTheOrderStaysTheConverters)
{
    const bool little = std::endian::native == std::endian::little;
    const std::string text = "a\xE4\xB8\xAD text";
    for (const auto& [written, declared] :
         {std::pair{little ? "UTF-16LE" : "UTF-16BE", "UTF-16"},
          std::pair{little ? "UTF-32LE" : "UTF-32BE", "UTF-32"}, std::pair{"UTF-32BE", "UCS-4"}}) {
        SCOPED_TRACE(declared);
        const std::string source = convertTo(written, text);
        const XML_Encoding encoding = XML_DOM_EncodingStrToEnum(declared);
        const Mem s{XML_IO_ByMem(bytesOf(source), source.size())};
        EXPECT_EQ(XML_IO_SwitchEncoding(s.get(), encoding), 0u);
        EXPECT_EQ(textOf(*s), text);
        EXPECT_EQ(XML_IO_SwitchEncoding(s.get(), XML_ENCODING_UTF_8), 0u);
        EXPECT_EQ(textOf(*s), source);
        EXPECT_EQ(XML_IO_SwitchEncoding(s.get(), encoding), 0u);
        EXPECT_EQ(textOf(*s), text);
    }
}

// The raw bytes of what is buffered are gone: they are made again from the text.
TEST(InStream, SwitchingBackFarInAListRestoresTheRawBytes)
{
    std::string text;
    for (int i = 0; i < 3000; ++i) text += "\xE4\xB8\xAD" + std::to_string(i);
    const std::string source = convertTo("UTF-16LE", text);
    const ChunkList chunks{source, 77};
    const List s{XML_IO_ByMemList(chunks.list())};
    ASSERT_EQ(XML_IO_SwitchEncoding(s.get(), XML_ENCODING_UTF_16LE), 0u);
    std::string read;
    for (int i = 0; i < 9000; ++i) {
        read.push_back(static_cast<char>(*s->cursor++));
        s->mark = s->cursor;
        XML_IO_Grow(s.get());
    }
    while ((*s->cursor & 0xC0) == 0x80) {
        read.push_back(static_cast<char>(*s->cursor++));
        s->mark = s->cursor;
        XML_IO_Grow(s.get());
    }
    ASSERT_EQ(XML_IO_SwitchEncoding(s.get(), XML_ENCODING_UTF_8), 0u);
    ASSERT_EQ(XML_IO_SwitchEncoding(s.get(), XML_ENCODING_UTF_16LE), 0u);
    EXPECT_EQ(read + readAll(*s), text);
}

TEST(InStream, SwitchReportsWhatFailed)
{
    const std::string text = "text";
    Mem s{XML_IO_ByMem(bytesOf(text), text.size())};
    EXPECT_EQ(XML_IO_SwitchEncoding(s.get(), XML_ENCODING_UTF_8), 1u) << "nothing to do";
    EXPECT_EQ(XML_IO_SwitchEncoding(s.get(), XML_ENCODING_NONE), 3u);
    EXPECT_EQ(XML_IO_SwitchEncoding(s.get(), XML_ENCODING_GBK), 3u)
        << "a failed stream stays as it is";
    EXPECT_EQ(textOf(*s), text);
    const std::string odd = "abc";
    s.reset(XML_IO_ByMem(bytesOf(odd), odd.size()));
    EXPECT_EQ(XML_IO_SwitchEncoding(s.get(), XML_ENCODING_UTF_16LE), 4u);
    EXPECT_EQ(textOf(*s), odd) << "the old buffer is unchanged";
}

TEST(InStream, LeavesNothingBehindWhicheverAllocationFails)
{
    const std::string source =
        std::string("\xFF\xFE") + convertTo("UTF-16LE", std::string(3000, 'x'));
    const ChunkList chunks{source, 100};
    const TempFile file{source};
    for (std::size_t allowed = 0; allowed < 12; ++allowed) {
        FailingHeap heap{allowed};
        List list{XML_IO_ByMemList(chunks.list())};
        if (list) readAll(*list);
        list.reset();
        EXPECT_EQ(FailingHeap::liveBlocks(), 0) << allowed;
        File reading{XML_IO_ByFile(file.path())};
        if (reading) readAll(*reading);
        reading.reset();
        EXPECT_EQ(FailingHeap::liveBlocks(), 0) << allowed;
        Mem block{XML_IO_ByMem(bytesOf(source), source.size())};
        EXPECT_TRUE(!block || statusOf(*block) == 2 || statusOf(*block) == 0);
        block.reset();
        EXPECT_EQ(FailingHeap::liveBlocks(), 0) << allowed;
    }
}

// A pipe whose writer is slow: the look-ahead is waited for, so keywords and characters come whole.
TEST(InStream, APipeMayDeliverByteByByte)
{
    const TempFile path;
    path.remove();
    ASSERT_EQ(mkfifo(path.path(), 0600), 0);
    for (const std::string& start :
         {std::string{"<?xml version='1.0' encoding='UTF-8'?>"}, std::string{"\xEF\xBB\xBF"},
          std::string{"<?xml version='1.0' encoding='GBK'?>"}}) {
        const bool gbk = start.find("GBK") != std::string::npos;
        const std::string document = start + "<!DOCTYPE a [ ]><a><![CDATA[x]]>" +
                                     (gbk ? "\xD6\xD0" : "\xE4\xB8\xAD") + "</a>";
        std::thread writer{[&path, &document] {
            const int descriptor = open(path.path(), O_WRONLY);
            for (const char c : document) {
                ASSERT_EQ(write(descriptor, &c, 1), 1);
                sched_yield();
            }
            close(descriptor);
        }};
        char error[200] = "";
        XML_DOM_Node* root = XML_DOM_BuildTreeByFile(path.path(), sizeof error, error);
        writer.join();
        ASSERT_NE(root, nullptr) << error;
        XML_DOM_SetEncoding(root, XML_ENCODING_UTF_8);
        EXPECT_EQ(written(root), "<a><![CDATA[x]]>\xE4\xB8\xAD</a>");
        XML_DOM_DelNode(root);
    }
}

// A block that was transcoded and is read plainly again: the caller's bytes are read-only here, and
// so stay where they are.
TEST(InStream, ACallersBlockIsNeverMovedOrWritten)
{
    const std::string source = "\xFF\xFE" + convertTo("UTF-16LE", std::string(300, 'x'));
    const GuardedBytes block{source};
    const Mem s{XML_IO_ByMem(block.data(), block.size())};
    ASSERT_EQ(s->encoding, XML_ENCODING_UTF_16LE);
    ASSERT_EQ(XML_IO_SwitchEncoding(s.get(), XML_ENCODING_UTF_8), 0u);
    EXPECT_EQ(statusOf(*s), 0u);
    EXPECT_EQ(readAll(*s), source.substr(2));
    EXPECT_EQ(statusOf(*s), 1u);
    EXPECT_EQ(s->end, block.data() + block.size());
}

}  // namespace
