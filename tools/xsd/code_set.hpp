// Sets of characters, as the expressions of schemas name them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace netxml::xsd {

struct CodeInterval {
    std::uint32_t first;
    std::uint32_t last;

    bool operator==(const CodeInterval&) const = default;
};

// Sorted intervals that do not touch.
class CodeSet {
public:
    static constexpr std::uint32_t kLast = 0x10FFFF;
    static constexpr std::uint32_t kLastAscii = 0x7F;

    CodeSet() = default;
    static CodeSet of(std::string_view asciiCharacters);
    static CodeSet between(std::uint32_t first, std::uint32_t last);

    void add(CodeInterval interval);
    void add(const CodeSet& other);
    CodeSet complement() const;
    CodeSet without(const CodeSet& other) const;

    bool has(std::uint32_t code) const;
    bool empty() const { return intervals_.empty(); }
    // Of those beyond ASCII.
    std::uint32_t countBeyondAscii() const;
    const std::vector<CodeInterval>& intervals() const { return intervals_; }

private:
    std::vector<CodeInterval> intervals_;
};

}  // namespace netxml::xsd
