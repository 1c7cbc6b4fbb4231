// Line and column by the rule: a line feed breaks the line, and so does a carriage return that no
// line feed follows in the buffer; every other character is a column.
#pragma once

#include "support/block.hpp"

#include <cstddef>
#include <cstdint>

namespace netxml {

class Position {
public:
    Position(std::uint32_t line, std::uint32_t column, const std::uint8_t* bufferEnd) noexcept
        : line_{line}, column_{column}, bufferEnd_{bufferEnd}
    {
    }

    // Counts what lies from `p` to `end`, a block at a time.
    void pass(const std::uint8_t* p, const std::uint8_t* end) noexcept
    {
        while (static_cast<std::size_t>(bufferEnd_ - p) >= NativeBlock::kWidth && p != end) {
            const auto left = static_cast<std::size_t>(end - p);
            const std::size_t size = left < NativeBlock::kWidth ? left : NativeBlock::kWidth;
            passBlock(p, size);
            p += size;
        }
        passSingly(p, end);
    }
    std::uint32_t line() const noexcept { return line_; }
    std::uint32_t column() const noexcept { return column_; }

private:
    void passBlock(const std::uint8_t* p, std::size_t size) noexcept
    {
        const NativeBlock block = NativeBlock::load(p);
        if (size == NativeBlock::kWidth && block.controlOrHigh() == 0) {
            column_ += NativeBlock::kWidth;
            return;
        }
        const NativeBlock::Mask counted = NativeBlock::firstBytes(size);
        NativeBlock::Mask breaks = block.equal('\n') & counted;
        if (((block.equal('\r') | block.high()) & counted) != 0) {
            passSingly(p, p + size);
        } else if (breaks == 0) {
            column_ += static_cast<std::uint32_t>(size);
        } else {
            std::size_t last = 0;
            for (; breaks != 0; breaks &= breaks - 1, ++line_) last = NativeBlock::first(breaks);
            column_ = static_cast<std::uint32_t>(size - last);
        }
    }
    void passSingly(const std::uint8_t* p, const std::uint8_t* end) noexcept
    {
        for (; p != end; ++p) {
            const bool pairs = *p == '\r' && p + 1 != bufferEnd_ && p[1] == '\n';
            if (*p == '\n' || (*p == '\r' && !pairs)) {
                ++line_;
                column_ = 1;
            } else if ((*p & 0xC0) != 0x80) {
                ++column_;
            }
        }
    }

    std::uint32_t line_;
    std::uint32_t column_;
    const std::uint8_t* bufferEnd_;
};

}  // namespace netxml
