// Files that are none, or are not what they were a moment ago.
#include "tests/support/failing_heap.hpp"
#include "tests/support/small_stack.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <filesystem>
#include <functional>
#include <thread>

namespace {

// What happens to the file in front of the n-th reading of it.
std::function<void()> interference;
int readingsBefore = 0;
std::size_t mostOfAReading = SIZE_MAX;

}  // namespace

extern "C" {

ssize_t __real_read(int descriptor, void* to, std::size_t size);

ssize_t __wrap_read(int descriptor, void* to, std::size_t size)
{
    if (interference && readingsBefore-- == 0) interference();
    return __real_read(descriptor, to, size < mostOfAReading ? size : mostOfAReading);
}

}  // extern "C"

namespace {

// The verdict on a path, from the parser and the builder; both leave nothing behind.
struct Verdict {
    bool parsed;
    bool built;
    std::string error;
};

Verdict verdictOn(const char* path)
{
    const long before = heapLiveBlocks();
    char error[300] = "untouched";
    Verdict verdict{};
    verdict.parsed = XML_Parser_ByFile(path, nullptr) == XML_RET_OK;
    XML_DOM_Node* tree = XML_DOM_BuildTreeByFile(path, sizeof error, error);
    verdict.built = tree != nullptr;
    verdict.error = error;
    XML_DOM_DelNode(tree);
    EXPECT_EQ(heapLiveBlocks(), before);
    return verdict;
}

std::size_t openDescriptors()
{
    const std::filesystem::directory_iterator all{"/proc/self/fd"};
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

constexpr char kEmptyDocument[] = "document is empty";

TEST(OddFiles, ADirectoryIsAnEmptyDocument)
{
    const std::size_t before = openDescriptors();
    const Verdict verdict = verdictOn("/");
    EXPECT_FALSE(verdict.parsed || verdict.built);
    EXPECT_NE(verdict.error.find(kEmptyDocument), std::string::npos) << verdict.error;
    EXPECT_EQ(openDescriptors(), before);
}

TEST(OddFiles, WhatIsNoFileIsRefusedWithoutAText)
{
    const TempFile link;
    link.remove();
    ASSERT_EQ(symlink(link.path(), link.path()), 0);
    for (const std::string& path :
         {std::string{"/nonexistent/file"}, std::string{}, std::string{"/dev/null/file"},
          std::string(5000, 'x'), std::string{link.path()}}) {
        const Verdict verdict = verdictOn(path.c_str());
        EXPECT_FALSE(verdict.parsed || verdict.built) << path;
        EXPECT_EQ(verdict.error, "") << path;
    }
}

TEST(OddFiles, ASocketDoesNotOpen)
{
    const TempFile path;
    path.remove();
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_GE(descriptor, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(std::strlen(path.path()), sizeof address.sun_path);
    std::strcpy(address.sun_path, path.path());
    ASSERT_EQ(bind(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    const Verdict verdict = verdictOn(path.path());
    EXPECT_FALSE(verdict.parsed || verdict.built);
    EXPECT_EQ(verdict.error, "");
    close(descriptor);
}

TEST(OddFiles, DevicesEndAtOnceOrAtTheFirstByte)
{
    for (const char* path : {"/dev/null", "/dev/zero"}) {
        const Verdict verdict = verdictOn(path);
        EXPECT_FALSE(verdict.parsed || verdict.built) << path;
        EXPECT_NE(verdict.error, "") << path;
    }
}

// Files that tell no size are read until they end.
TEST(OddFiles, AFileWithoutASizeIsReadToItsEnd)
{
    const Verdict verdict = verdictOn("/proc/self/status");
    EXPECT_FALSE(verdict.parsed || verdict.built);
    EXPECT_NE(verdict.error.find("Line 1 Column 1 "), std::string::npos) << verdict.error;
}

TEST(OddFiles, AFifo)
{
    const TempFile path;
    path.remove();
    ASSERT_EQ(mkfifo(path.path(), 0600), 0);
    struct Row {
        std::string sent;
        bool good;
    };
    for (const Row& row : {Row{"", false}, Row{"<a>", false}, Row{"<a/>", true},
                           Row{"<a>" + std::string(200000, 'x') + "</a>", true}}) {
        for (const bool build : {false, true}) {
            std::thread writer{[&] {
                const int descriptor = open(path.path(), O_WRONLY);
                std::size_t sent = 0;
                while (sent < row.sent.size()) {
                    const ssize_t count =
                        write(descriptor, row.sent.data() + sent, row.sent.size() - sent);
                    ASSERT_GT(count, 0);
                    sent += static_cast<std::size_t>(count);
                }
                close(descriptor);
            }};
            if (build) {
                XML_DOM_Node* tree = XML_DOM_BuildTreeByFile(path.path(), 0, nullptr);
                EXPECT_EQ(tree != nullptr, row.good);
                XML_DOM_DelNode(tree);
            } else {
                EXPECT_EQ(XML_Parser_ByFile(path.path(), nullptr) == XML_RET_OK, row.good);
            }
            writer.join();
        }
    }
}

// With a writer that sends all at once, to whoever still listens.
class Fifo {
public:
    explicit Fifo(const std::string& sent)
    {
        std::signal(SIGPIPE, SIG_IGN);
        path_.remove();
        EXPECT_EQ(mkfifo(path_.path(), 0600), 0);
        writer_ = std::thread{[this, sent] {
            const int descriptor = open(path_.path(), O_WRONLY);
            EXPECT_NE(write(descriptor, sent.data(), sent.size()), 0);
            close(descriptor);
        }};
    }
    Fifo(const Fifo&) = delete;
    Fifo& operator=(const Fifo&) = delete;
    ~Fifo() { writer_.join(); }

    const char* path() const { return path_.path(); }

private:
    TempFile path_;
    std::thread writer_;
};

// Readings that end inside characters are no end of the text.
TEST(OddFiles, AFifoThatGivesAByteAtATime)
{
    for (const char* encoding : {"GBK", "UTF-8"}) {
        const std::string document = std::string{"<?xml version='1.0' encoding='"} + encoding +
                                     "'?><a b='" + std::string(200, 'x') +
                                     "'>\xE4\xB8\xAD\xE6\x96\x87</a>";
        const Fifo fifo{convertTo(encoding, document)};
        mostOfAReading = 1;
        XML_DOM_Node* tree = XML_DOM_BuildTreeByFile(fifo.path(), 0, nullptr);
        mostOfAReading = SIZE_MAX;
        ASSERT_NE(tree, nullptr) << encoding;
        EXPECT_STREQ(XML_DOM_GetFirstTextChildValue(tree), "\xD6\xD0\xCE\xC4");
        XML_DOM_DelNode(tree);
    }
}

// Nothing says how much will come, so the first slab is small: a root may leave no room in it for
// its document's record.
TEST(OddFiles, AFifoWhoseRootFillsTheFirstSlab)
{
    bool failed = false;
    for (std::size_t size = 700; size < 1000; size += 4) {
        for (std::size_t allowed = 0;; ++allowed) {
            const long before = heapLiveBlocks();
            const std::string name(size, 'n');
            const Fifo fifo{"<" + name + ">" + std::string(size % 16 == 0 ? 0 : 120, 'x') + "</" +
                            name + ">"};
            bool refused = false;
            XML_DOM_Node* tree = nullptr;
            {
                const FailingHeap heap{allowed};
                tree = XML_DOM_BuildTreeByFile(fifo.path(), 0, nullptr);
                refused = FailingHeap::refused();
            }
            // A file that was not opened leaves its writer waiting for somebody.
            if (refused && !tree && allowed == 0) close(open(fifo.path(), O_RDONLY));
            failed |= refused && !tree;
            ASSERT_TRUE(tree || refused);
            XML_DOM_DelNode(tree);
            ASSERT_EQ(heapLiveBlocks(), before) << size << ", after " << allowed;
            if (!refused) break;
        }
    }
    EXPECT_TRUE(failed);
}

// Cut to any length, lengthened, emptied or removed in front of any reading: a tree is made of what
// was a whole document, and of nothing else.
TEST(OddFiles, AFileThatChangesWhileItIsRead)
{
    const std::string document = "<a>" + std::string(100000, 'x') + "</a>";
    int changed = 0;
    for (const off_t length : {0, 1, 3, 4096, 50000, 99999, 100006, 100007, 100008, 1000000}) {
        for (int readings = 0; readings < 8; ++readings) {
            for (const bool build : {false, true}) {
                const TempFile file{document};
                readingsBefore = readings;
                bool cutInTime = false;
                interference = [&] {
                    cutInTime = true;
                    ASSERT_EQ(truncate(file.path(), length), 0);
                };
                if (build) {
                    XML_DOM_Node* tree = XML_DOM_BuildTreeByFile(file.path(), 0, nullptr);
                    if (!cutInTime || length == 100007) {
                        EXPECT_NE(tree, nullptr) << length << " before " << readings;
                    }
                    if (tree) {
                        EXPECT_EQ(written(tree), document) << length << " before " << readings;
                    }
                    XML_DOM_DelNode(tree);
                } else {
                    const uint32_t status = XML_Parser_ByFile(file.path(), nullptr);
                    EXPECT_TRUE(status == XML_RET_OK || cutInTime);
                }
                interference = nullptr;
                changed += cutInTime;
            }
        }
    }
    EXPECT_GE(changed, 100) << "of 160; the others were read before";
    const TempFile file{document};
    readingsBefore = 0;
    interference = [&file] { file.remove(); };
    EXPECT_TRUE(verdictOn(file.path()).parsed) << "a removed file is still open";
    interference = nullptr;
}

// A file far beyond what is gathered, of which nothing is stored.
TEST(OddFiles, AVeryLargeSparseFileCostsLittle)
{
    const TempFile file{"<a>"};
    ASSERT_EQ(truncate(file.path(), off_t{3} * 1024 * 1024 * 1024), 0);
    heapResetPeak();
    const std::size_t before = heapPeakBytes();
    onSmallStack([&file] {
        const Verdict verdict = verdictOn(file.path());
        EXPECT_FALSE(verdict.parsed || verdict.built);
        EXPECT_NE(verdict.error.find("invalid character"), std::string::npos) << verdict.error;
    });
    EXPECT_LT(heapPeakBytes() - before, std::size_t{256} * 1024);
}

}  // namespace
