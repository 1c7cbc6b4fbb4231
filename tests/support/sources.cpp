#include "tests/support/sources.hpp"

#include "tests/support/failing_heap.hpp"

#include <iconv.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

ChunkList::ChunkList(std::string_view text, const std::vector<std::size_t>& cuts)
{
    std::size_t from = 0;
    for (const std::size_t cut : cuts) {
        add(text.substr(from, cut - from));
        from = cut;
    }
    add(text.substr(from));
    link();
}

ChunkList::ChunkList(std::string_view text, std::size_t size)
{
    for (std::size_t from = 0; from < text.size(); from += size) add(text.substr(from, size));
    link();
}

void ChunkList::add(std::string_view piece)
{
    pieces_.emplace_back(piece.begin(), piece.end());
}

void ChunkList::link()
{
    chunks_.resize(pieces_.size());
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
        XML_IO_MemChunk* next = i + 1 < pieces_.size() ? &chunks_[i + 1] : nullptr;
        chunks_[i] = {next, pieces_[i].size(), pieces_[i].data()};
    }
    list_.first = chunks_.empty() ? nullptr : &chunks_[0];
}

TempFile::TempFile(std::string_view content)
{
    const char* directory = std::getenv("TMPDIR");
    path_ = std::string{directory ? directory : "/tmp"} + "/netxml-test-XXXXXX";
    const int descriptor = mkstemp(path_.data());
    if (descriptor < 0) throw std::runtime_error{"no temporary file"};
    while (!content.empty()) {
        const ssize_t count = write(descriptor, content.data(), content.size());
        if (count <= 0) throw std::runtime_error{"cannot write a temporary file"};
        content.remove_prefix(static_cast<std::size_t>(count));
    }
    close(descriptor);
}

TempFile::~TempFile()
{
    remove();
}

void TempFile::remove() const
{
    unlink(path_.c_str());
}

std::string TempFile::content() const
{
    std::string text;
    std::FILE* file = std::fopen(path_.c_str(), "rb");
    if (!file) return "no such file";
    for (int c; (c = std::fgetc(file)) != EOF;) text.push_back(static_cast<char>(c));
    std::fclose(file);
    return text;
}

GuardedBytes::GuardedBytes(std::string_view content) : size_{content.size()}
{
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t used = (size_ + page - 1) / page * page;
    pagesSize_ = used + page;
    void* pages =
        mmap(nullptr, pagesSize_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED) throw std::runtime_error{"no pages"};
    pages_ = static_cast<uint8_t*>(pages);
    data_ = pages_ + used - size_;
    std::memcpy(data_, content.data(), size_);
    mprotect(pages_, used, PROT_READ);
    mprotect(pages_ + used, page, PROT_NONE);
}

GuardedBytes::~GuardedBytes()
{
    munmap(pages_, pagesSize_);
}

std::string convertTo(const char* target, std::string_view text, const char* source)
{
    const iconv_t converter = iconv_open(target, source);
    std::string result(text.size() * 4 + 16, '\0');
    char* in = const_cast<char*>(text.data());
    std::size_t inLeft = text.size();
    char* out = result.data();
    std::size_t outLeft = result.size();
    if (iconv(converter, &in, &inLeft, &out, &outLeft) == static_cast<std::size_t>(-1)) {
        iconv_close(converter);
        throw std::runtime_error{"cannot convert"};
    }
    iconv_close(converter);
    result.resize(result.size() - outLeft);
    return result;
}

std::string written(const XML_DOM_Node* node, uint32_t flags)
{
    char* text = nullptr;
    size_t length = 0;
    if (XML_DOM_TranslateStr(node, flags, &text, &length) != XML_RET_OK) return "failed";
    std::string result(text, length);
    heapReleaseHandedOut(text);
    return result;
}

std::string writtenAndDeleted(XML_DOM_Node* node)
{
    std::string text = node ? written(node) : "NULL";
    XML_DOM_DelNode(node);
    return text;
}

XML_DOM_Node* treeOf(std::string_view text)
{
    char error[256] = "";
    XML_DOM_Node* root = XML_DOM_BuildTreeByMem(bytesOf(text), static_cast<uint32_t>(text.size()),
                                                sizeof error, error);
    if (!root) throw std::runtime_error{error};
    return root;
}
