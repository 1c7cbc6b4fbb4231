// The fuzzer's bytes, taken from the front as numbers and texts. Once they are used up every number
// is 0, so whatever repeats itself must ask done().
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size) : rest_{data, size} {}

    bool done() const { return rest_.empty(); }

    std::uint8_t byte()
    {
        if (rest_.empty()) return 0;
        const std::uint8_t first = rest_.front();
        rest_ = rest_.subspan(1);
        return first;
    }
    // A number below `count`, which is from 1 to 65536.
    std::size_t below(std::size_t count)
    {
        const std::size_t number = count <= 256 ? byte() : std::size_t{byte()} << 8 | byte();
        return number % count;
    }
    bool chance(std::size_t oneIn) { return below(oneIn) == 1 % oneIn; }

    // Bytes up to the next zero byte or `most`; the zero byte is used up.
    std::string text(std::size_t most)
    {
        std::string result;
        while (!done() && result.size() < most) {
            const auto c = static_cast<char>(byte());
            if (c == '\0') break;
            result += c;
        }
        return result;
    }
    std::string_view rest()
    {
        const std::string_view all{reinterpret_cast<const char*>(rest_.data()), rest_.size()};
        rest_ = {};
        return all;
    }
    std::span<const std::uint8_t> restBytes()
    {
        const auto all = rest_;
        rest_ = {};
        return all;
    }

private:
    std::span<const std::uint8_t> rest_;
};
