// Lengths around 2^31 and 2^32, and those that no memory has: no count wraps.
#include "io/in_stream.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <vector>

// The sanitizers ask for these: a block that is too large is no fault of this program.
extern "C" {

const char* __asan_default_options()
{
    return "allocator_may_return_null=1";
}

const char* __tsan_default_options()
{
    return "allocator_may_return_null=1";
}

}  // extern "C"

namespace {

constexpr std::uint64_t kTwo31 = std::uint64_t{1} << 31;
constexpr std::uint64_t kTwo32 = std::uint64_t{1} << 32;

// A text of any length that takes few pages: a beginning, one piece over and over, and an end.
class LongText {
public:
    LongText(std::string_view begin, char filler, std::string_view end, std::uint64_t length)
        : length_{static_cast<std::size_t>(length)}, mapped_{rounded(length) + kPiece}
    {
        const int descriptor = memfd_create("filler", 0);
        const std::string piece(kPiece, filler);
        if (descriptor < 0 || ::write(descriptor, piece.data(), kPiece) != kPiece) return;
        void* place =
            mmap(nullptr, mapped_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (place == MAP_FAILED) return;
        data_ = static_cast<uint8_t*>(place);
        bool mapped = true;
        for (std::size_t at = 0; at < mapped_; at += kPiece) {
            mapped &= mmap(data_ + at, kPiece, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_FIXED,
                           descriptor, 0) != MAP_FAILED;
        }
        close(descriptor);
        ready_ = mapped;
        if (!ready_) return;
        std::memcpy(data_, begin.data(), begin.size());
        std::memcpy(data_ + length_ - end.size(), end.data(), end.size());
    }
    LongText(const LongText&) = delete;
    LongText& operator=(const LongText&) = delete;
    ~LongText()
    {
        if (data_) munmap(data_, mapped_);
    }

    bool isReady() const { return ready_; }
    const uint8_t* data() const { return data_; }
    std::size_t size() const { return length_; }

private:
    static constexpr ssize_t kPiece = 16 * 1024 * 1024;

    static std::size_t rounded(std::uint64_t length)
    {
        return static_cast<std::size_t>(length) / kPiece * kPiece;
    }

    std::size_t length_;
    std::size_t mapped_;
    uint8_t* data_ = nullptr;
    bool ready_ = false;
};

class LongLengths : public testing::Test {
protected:
    void SetUp() override
    {
        if (sizeof(std::size_t) < 8) GTEST_SKIP() << "there are no such lengths on this machine";
    }
};

// The declaration of a document type is skipped, so that nothing of it is kept.
TEST_F(LongLengths, OfABlock)
{
    for (const std::uint64_t length : {kTwo31 - 1, kTwo31, kTwo31 + 1, kTwo32 - 1}) {
        for (const bool good : {true, false}) {
            if (!good && length != kTwo32 - 1) continue;  // once is enough
            const LongText text{"<!DOCTYPE a ", 'x', good ? "><a/>" : "><a>", length};
            ASSERT_TRUE(text.isReady());
            heapResetPeak();
            const std::size_t before = heapPeakBytes();
            EXPECT_EQ(XML_Parser_ByMem(text.data(), static_cast<uint32_t>(text.size()), nullptr),
                      good ? XML_RET_OK : XML_RET_FAIL)
                << length;
            EXPECT_LT(heapPeakBytes() - before, 65536u);
        }
    }
}

// Columns are counted in 32 bits; one behind that is the first again.
TEST_F(LongLengths, AColumnIsWhereItIs)
{
    const LongText text{"<!DOCTYPE a ", 'x', "><a>", kTwo31 + 10};
    ASSERT_TRUE(text.isReady());
    char error[300] = "";
    EXPECT_EQ(XML_DOM_BuildTreeByMem(text.data(), static_cast<uint32_t>(text.size()), sizeof error,
                                     error),
              nullptr);
    EXPECT_NE(std::string{error}.find("tag not finished"), std::string::npos) << error;
}

TEST_F(LongLengths, OfAChunk)
{
    for (const std::uint64_t length : {kTwo32 - 1, kTwo32, kTwo32 + 1}) {
        const LongText text{"<!--", ' ', "", length};
        ASSERT_TRUE(text.isReady());
        constexpr std::string_view kRest = "--><a/>";
        XML_IO_MemChunk rest{nullptr, kRest.size(), bytesOf(kRest)};
        XML_IO_MemChunk chunk{&rest, text.size(), text.data()};
        const XML_IO_MemList list{&chunk};
        XML_IO_InStream* stream = XML_IO_ByMemList(&list);
        ASSERT_NE(stream, nullptr);
        std::uint64_t seen = 0;
        for (;;) {
            XML_IO_Grow(stream);
            if (stream->cursor == stream->end) break;
            seen += stream->available();
            stream->cursor = stream->mark = stream->end;
        }
        EXPECT_EQ(seen, length + kRest.size());
        XML_IO_DestroyByMemList(stream);
    }
}

TEST_F(LongLengths, OfAStreamOverABlock)
{
    const LongText text{"<!--", ' ', "end", kTwo32 + 7};
    ASSERT_TRUE(text.isReady());
    XML_IO_InStream* stream = XML_IO_ByMem(text.data(), text.size());
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(stream->available(), text.size());
    stream->cursor = stream->end - 3;
    EXPECT_EQ(XML_IO_Strncmp(stream, "end", 3), 1u);
    EXPECT_EQ(XML_IO_Strncmp(stream, "end", static_cast<std::size_t>(kTwo32) + 3), 0u);
    XML_IO_DestroyByMem(stream);
}

// What is appended goes through areas or straight on; the system takes less than 2 GiB at a time.
TEST_F(LongLengths, OfWhatIsAppended)
{
    const LongText text{"", 'x', "", kTwo32 + 7};
    ASSERT_TRUE(text.isReady());
    XML_IO_OutStream* file = XML_IO_FileOutStreamCreate("/dev/null", 0, 0);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(XML_IO_OutStreamAppend(file, text.data(), text.size()), XML_RET_OK);
    XML_IO_OutStreamDestroy(file);
}

// Longer than any memory: refused before a byte is read, and no sum of sizes wraps.
TEST(ImpossibleLengths, AreRefused)
{
    constexpr std::size_t kAll = SIZE_MAX;
    const long before = heapLiveBlocks();
    for (const std::size_t length : {kAll, kAll - 1, kAll - 64, kAll - 4096, kAll / 2 + 1})
        EXPECT_EQ(XML_DOM_CreateTextualNodeInner(XML_DOM_NODE_TEXT, "x", length), nullptr)
            << length;
    EXPECT_EQ(heapLiveBlocks(), before);
}

// Chunks said to be longer than any memory, together or alone, are not put together: what they hold
// is read from the front, up to the first error.
TEST(ImpossibleLengths, OfChunks)
{
    constexpr std::size_t kHalf = SIZE_MAX / 2;
    std::string text = "<a></b>";
    text.resize(65536, ' ');
    constexpr std::size_t kLarge = std::size_t{100} * 1024 * 1024;
    for (const std::vector<std::uint64_t>& lengths : {std::vector<std::uint64_t>{UINT64_MAX},
                                                      {kHalf, kHalf},
                                                      {kHalf, kHalf, kHalf},
                                                      {kLarge, kLarge}}) {
        std::vector<XML_IO_MemChunk> chunks;
        for (const std::uint64_t length : lengths)
            chunks.push_back({nullptr, length, bytesOf(text)});
        for (std::size_t i = 1; i < chunks.size(); ++i) chunks[i - 1].next = &chunks[i];
        const XML_IO_MemList list{chunks.data()};
        heapResetPeak();
        const std::size_t before = heapPeakBytes();
        char error[200] = "";
        EXPECT_EQ(XML_DOM_BuildTreeByMemList(&list, sizeof error, error), nullptr);
        EXPECT_NE(std::string{error}.find("tag name mismatch"), std::string::npos) << error;
        EXPECT_LT(heapPeakBytes() - before, 65536u);
    }
}

// Buffers said to be as large as can be: what is written is what it always is.
TEST(ImpossibleLengths, OfBuffersThatAreNotFilled)
{
    XML_DOM_Node* root = treeOf("<a><b/></a>");
    char path[64];
    EXPECT_EQ(XML_DOM_GetXPath(XML_DOM_GetFirstChild(root), SIZE_MAX, path), 7u);
    EXPECT_STREQ(path, "/a/b[1]");
    XML_DOM_DelNode(root);
    Schema_SimpleType type{};
    type.kind = SCHEMA_BUILTIN_BYTE;
    char text[200] = "";
    EXPECT_EQ(Schema_CheckBaseType(&type, "x", UINT32_MAX, text), 0u);
    EXPECT_STREQ(text, "x is an invalid value of byte type value.");
    char item[16];
    Schema_SplitCtx split;
    EXPECT_STREQ(Schema_GetFirstSplitStr("ab,c", ",", UINT32_MAX, item, &split), "ab");
}

}  // namespace
