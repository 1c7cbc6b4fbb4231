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
    // All chunks of a list, or a regular file. Without a block when memory runs out, or when there
    // is nothing of that kind; a failing read is the end of the file.
    static GatheredInput ofList(const XML_IO_MemList& list) noexcept;
    static GatheredInput ofFile(const char* path) noexcept;

    bool has() const noexcept { return data_ != nullptr; }
    const std::uint8_t* data() const noexcept { return data_; }
    std::size_t size() const noexcept { return size_; }
    // Whether it begins like UTF-8 and declares nothing else. Other encodings are converted while
    // the window moves: what lies behind the document is then not looked at.
    bool looksLikeUtf8() const noexcept;

private:
    bool fill(int descriptor, std::size_t expected) noexcept;

    heap::Owned<std::uint8_t> block_;  // empty when the data is the caller's
    const std::uint8_t* data_ = nullptr;
    std::size_t size_ = 0;
};

}  // namespace netxml
