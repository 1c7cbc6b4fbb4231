#include "utf8_text.hpp"

namespace netxml::tool {
namespace {

// The size that a lead byte announces; 0 for a byte that leads nothing.
std::size_t announcedSize(unsigned char lead)
{
    if (lead < 0x80) return 1;
    if (lead < 0xC2 || lead > 0xF4) return 0;
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

Character brokenCharacter(std::string_view text)
{
    std::size_t size = 1;
    while (size < text.size() && continuesCharacter(text[size])) ++size;
    return {kNoCharacter, size};
}

bool isControl(std::uint32_t code)
{
    return (code < 0x20 && code != '\t') || (code >= 0x7F && code < 0xA0);
}

}  // namespace

Character firstCharacter(std::string_view text)
{
    const auto lead = static_cast<unsigned char>(text[0]);
    const std::size_t size = announcedSize(lead);
    if (size == 1) return {lead, 1};
    if (size == 0 || text.size() < size) return brokenCharacter(text);
    std::uint32_t code = lead & (0xFFu >> (size + 1));
    for (std::size_t i = 1; i < size; ++i) {
        if (!continuesCharacter(text[i])) return brokenCharacter(text);
        code = code * 64 + (static_cast<unsigned char>(text[i]) & 0x3Fu);
    }
    constexpr std::uint32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < kLeast[size] || code > 0x10FFFF || surrogate) return brokenCharacter(text);
    return {code, size};
}

std::size_t findBrokenCharacter(std::string_view text)
{
    for (std::size_t at = 0; at < text.size();) {
        if (static_cast<unsigned char>(text[at]) < 0x80) {
            ++at;
            continue;
        }
        const Character character = firstCharacter(text.substr(at, 8));
        if (character.code == kNoCharacter) return at;
        at += character.size;
    }
    return std::string_view::npos;
}

void appendCharacter(std::string& to, std::uint32_t code)
{
    const auto more = [&](unsigned shift) {
        to += static_cast<char>(0x80 | ((code >> shift) & 0x3F));
    };
    if (code < 0x80) {
        to += static_cast<char>(code);
    } else if (code < 0x800) {
        to += static_cast<char>(0xC0 | (code >> 6));
        more(0);
    } else if (code < 0x10000) {
        to += static_cast<char>(0xE0 | (code >> 12));
        more(6);
        more(0);
    } else {
        to += static_cast<char>(0xF0 | (code >> 18));
        more(12);
        more(6);
        more(0);
    }
}

std::string printable(std::string_view text)
{
    std::string result;
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        if (character.code == kNoCharacter || isControl(character.code))
            appendCharacter(result, 0xFFFD);
        else result += text.substr(0, character.size);
        text.remove_prefix(character.size);
    }
    return result;
}

}  // namespace netxml::tool
