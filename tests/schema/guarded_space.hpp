// Texts and buffers that end where memory ends: the next byte is on a page that must not be
// touched. One space serves many values, so it is cheap enough for every value of a long run.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>

class GuardedSpace {
public:
    explicit GuardedSpace(std::size_t most = 4000)
    {
        const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        used_ = (most + 1 + page - 1) / page * page;
        size_ = used_ + page;
        void* pages =
            mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (pages == MAP_FAILED) throw std::runtime_error{"no pages"};
        pages_ = static_cast<char*>(pages);
        mprotect(pages_ + used_, page, PROT_NONE);
    }
    GuardedSpace(const GuardedSpace&) = delete;
    GuardedSpace& operator=(const GuardedSpace&) = delete;
    ~GuardedSpace() { munmap(pages_, size_); }

    // A copy of the text whose terminator is the last byte; valid until the next call.
    const char* text(std::string_view content)
    {
        char* place = room(content.size() + 1);
        std::memcpy(place, content.data(), content.size());
        place[content.size()] = '\0';
        return place;
    }

    // The last `size` bytes, all of them '#', and so are the 16 before them.
    char* room(std::size_t size)
    {
        if (size > used_) throw std::runtime_error{"text too long for its space"};
        char* place = pages_ + used_ - size;
        const std::size_t before = size + 16 <= used_ ? 16 : 0;
        std::memset(place - before, '#', size + before);
        return place;
    }

    // Whether the bytes before the last `size` are still what room() made them.
    bool untouchedBefore(std::size_t size) const
    {
        return size + 16 > used_ ||
               std::string_view(pages_ + used_ - size - 16, 16) == "################";
    }

private:
    char* pages_;
    std::size_t used_;
    std::size_t size_;
};

// What a check left in its buffer: that it is terminated, cut and contained is checked here.
class Sentence {
public:
    explicit Sentence(uint32_t size) : size_{size}, buffer_{space_.room(size)} {}

    char* buffer() const { return buffer_; }
    uint32_t size() const { return size_; }

    // The sentence; "(untouched)" if no byte was written, "(loose)" if it is not terminated or
    // something stands before the buffer. (What lies behind it cannot be written to.)
    std::string text() const
    {
        if (!space_.untouchedBefore(size_)) return "(loose)";
        const std::string_view bytes{buffer_, size_};
        if (bytes.find_first_not_of('#') == std::string_view::npos) return "(untouched)";
        const std::size_t end = bytes.find('\0');
        return end == std::string_view::npos ? "(loose)" : std::string{bytes.substr(0, end)};
    }

private:
    GuardedSpace space_{1023};
    uint32_t size_;
    char* buffer_;
};
