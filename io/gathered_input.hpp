// A whole input in one block, where that can be had: a parse that may look at all of it at once is
// faster than one that has to move a window over it.
#pragma once

#include "netxml/io.h"
#include "support/heap.hpp"

#include <cstddef>
#include <cstdint>

namespace netxml {

class GatheredInput {
public:
    // All chunks of a list, or a regular file. Without a block when memory runs out, when there is
    // nothing of that kind, when it is very large, or when the file grows meanwhile; a failing read
    // is its end.
    static GatheredInput ofList(const XML_IO_MemList& list) noexcept;
    static GatheredInput ofFile(const char* path) noexcept;

    bool has() const noexcept { return data_ != nullptr; }
    const std::uint8_t* data() const noexcept { return data_; }
    std::size_t size() const noexcept { return size_; }
    // Whether it begins like UTF-8 and declares nothing else. Other encodings are converted while
    // the window moves: what lies behind the document is then not looked at.
    bool looksLikeUtf8() const noexcept;

private:
    // So much is put together at most: of more, an early error would cost too much reading.
    static constexpr std::size_t kMost = std::size_t{128} * 1024 * 1024;

    bool fill(int descriptor, std::size_t expected) noexcept;

    heap::Owned<std::uint8_t> block_;  // empty when the data is the caller's
    const std::uint8_t* data_ = nullptr;
    std::size_t size_ = 0;
};

}  // namespace netxml
