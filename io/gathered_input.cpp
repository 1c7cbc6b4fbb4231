#include "io/gathered_input.hpp"

#include "support/ascii.hpp"
#include "support/checked.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string_view>

namespace netxml {
namespace {

// The size of all chunks together; false when no block could be as large.
bool sizeOf(const XML_IO_MemList& list, std::size_t& size) noexcept
{
    size = 0;
    for (const XML_IO_MemChunk* chunk = list.first; chunk; chunk = chunk->next) {
        if (chunk->length > SIZE_MAX / 2 ||
            !addSizes(size, static_cast<std::size_t>(chunk->length), size))
            return false;
    }
    return size <= SIZE_MAX / 2;
}

}  // namespace

GatheredInput GatheredInput::ofList(const XML_IO_MemList& list) noexcept
{
    GatheredInput input;
    std::size_t size = 0;
    if (!sizeOf(list, size) || size == 0) return input;
    if (!list.first->next) {
        input.data_ = list.first->data;
        input.size_ = size;
        return input;
    }
    if (size <= kMost) input.block_.reset(static_cast<std::uint8_t*>(heap::allocate(size)));
    if (!input.block_) return input;
    for (const XML_IO_MemChunk* chunk = list.first; chunk; chunk = chunk->next) {
        const std::size_t length = static_cast<std::size_t>(chunk->length);
        if (length != 0) std::memcpy(input.block_.get() + input.size_, chunk->data, length);
        input.size_ += length;
    }
    input.data_ = input.block_.get();
    return input;
}

GatheredInput GatheredInput::ofFile(const char* path) noexcept
{
    GatheredInput input;
    struct stat status;
    // Only a regular file is opened twice without anybody noticing.
    if (stat(path, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size <= 0 ||
        static_cast<std::uint64_t>(status.st_size) > kMost)
        return input;
    const int descriptor = open(path, O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return input;
    if (input.fill(descriptor, static_cast<std::size_t>(status.st_size)))
        input.data_ = input.block_.get();
    close(descriptor);
    return input;
}

// Reads what is expected, and sees that nothing follows.
bool GatheredInput::fill(int descriptor, std::size_t expected) noexcept
{
    const std::size_t capacity = expected + 1;
    block_.reset(static_cast<std::uint8_t*>(heap::allocate(capacity)));
    while (block_ && size_ != capacity) {
        const ssize_t count = read(descriptor, block_.get() + size_, capacity - size_);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return size_ != 0;
        size_ += static_cast<std::size_t>(count);
    }
    return false;
}

bool GatheredInput::looksLikeUtf8() const noexcept
{
    const std::uint8_t first = data_[0];
    if (first == 0 || first >= 0xFE || (size_ > 1 && data_[1] == 0)) return false;
    const std::string_view text{reinterpret_cast<const char*>(data_), size_ < 256 ? size_ : 256};
    const std::size_t encoding = text.find("encoding");
    if (encoding == std::string_view::npos || text.find("<?xml") >= encoding) return true;
    constexpr std::string_view kUtf8 = "UTF-8";
    for (std::size_t at = encoding; at + kUtf8.size() <= text.size() && text[at] != '>'; ++at) {
        if (equalIgnoringCase(text.data() + at, kUtf8.data(), kUtf8.size())) return true;
    }
    return false;
}

}  // namespace netxml
