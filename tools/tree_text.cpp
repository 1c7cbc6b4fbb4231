#include "tree_text.hpp"

#include "recode.hpp"
#include "utf8_text.hpp"

namespace netxml::tool {
namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

bool isIn(char byte, unsigned char least, unsigned char most)
{
    const auto value = static_cast<unsigned char>(byte);
    return least <= value && value <= most;
}

struct Bytes {
    std::size_t count;  // at least 1
    bool character;     // whole; else what is there of it
};

// How far the character at the front goes.
//
//     character := 00-80 | 81-FE (40-7E | 80-FE) | 81-FE 30-39 81-FE 30-39
Bytes firstOf(std::string_view text)
{
    if (!isIn(text[0], 0x81, 0xFE)) return {1, isIn(text[0], 0, 0x7F)};
    if (text.size() < 2) return {1, false};
    if (isIn(text[1], 0x40, 0x7E) || isIn(text[1], 0x80, 0xFE)) return {2, true};
    if (!isIn(text[1], '0', '9')) return {1, false};
    if (text.size() < 3 || !isIn(text[2], 0x81, 0xFE)) return {2, false};
    if (text.size() < 4 || !isIn(text[3], '0', '9')) return {3, false};
    return {4, true};
}

// A run of whole characters.
void appendRun(std::string& to, std::string_view run)
{
    if (const auto whole = recode(run, XML_ENCODING_GB18030, XML_ENCODING_UTF_8)) {
        to += *whole;
        return;
    }
    while (!run.empty()) {
        const std::size_t count = firstOf(run).count;
        const auto one = recode(run.substr(0, count), XML_ENCODING_GB18030, XML_ENCODING_UTF_8);
        if (one) to += *one;
        else appendCharacter(to, kReplacement);
        run.remove_prefix(count);
    }
}

}  // namespace

std::string textOfTree(std::string_view text)
{
    std::string result;
    while (!text.empty()) {
        std::size_t run = 0;
        while (run < text.size()) {
            const Bytes next = firstOf(text.substr(run));
            if (!next.character) break;
            run += next.count;
        }
        if (run != 0) appendRun(result, text.substr(0, run));
        text.remove_prefix(run);
        if (text.empty()) break;
        appendCharacter(result, kReplacement);
        text.remove_prefix(firstOf(text).count);
    }
    return result;
}

}  // namespace netxml::tool
