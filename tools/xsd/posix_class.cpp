#include "xsd/posix_class.hpp"

#include "recode.hpp"
#include "utf8_text.hpp"
#include "xsd/alternatives.hpp"

#include <algorithm>

namespace netxml::xsd {
namespace {

constexpr std::uint32_t kMostListed = 48;  // characters beyond ASCII that are written one by one
constexpr std::string_view kSpecial = ".[\\()*+?{|^$";
// What must stand at a place of its own in a bracket.
constexpr std::string_view kBracketSpecial = "]-^[";

// Characters that a text in XML may have (XML 1.0, section 2.2), of those in ASCII.
bool mayStand(std::uint32_t code)
{
    return code == '\t' || code == '\n' || code == '\r' || (code >= 0x20 && code <= 0x7F);
}

// The second byte of a character of several bytes may be one of these.
bool mayTrail(std::uint32_t code)
{
    return (code >= '0' && code <= '9') || (code >= 0x40 && code <= 0x7E);
}

void appendRange(std::string& to, std::uint32_t first, std::uint32_t last)
{
    to += static_cast<char>(first);
    if (last > first + 1) to += '-';
    if (last > first) to += static_cast<char>(last);
}

// The runs of neighbours in a set of characters, without those that are special in brackets.
std::string ordinaryRanges(const std::vector<bool>& has)
{
    std::string text;
    for (std::uint32_t code = 1; code < has.size(); ++code) {
        const auto plain = [&](std::uint32_t c) {
            return c < has.size() && has[c] &&
                   kBracketSpecial.find(static_cast<char>(c)) == std::string_view::npos;
        };
        if (!plain(code)) continue;
        const std::uint32_t first = code;
        while (plain(code + 1)) ++code;
        appendRange(text, first, code);
    }
    return text;
}

// A bracket of the characters that `has` says, of which there are at least two.
std::string bracket(const std::vector<bool>& has, bool negated)
{
    std::string text = negated ? "[^" : "[";
    if (has[']']) text += ']';
    std::string rest = ordinaryRanges(has);
    if (has['[']) rest += '[';
    if (has['^']) {
        const bool leads = !negated && text.size() == 1 && rest.empty();
        rest = leads ? "-^" : rest + '^';  // with at least two, "-" is the other one
        if (leads) return text + rest + ']';
    }
    if (has['-']) rest += '-';
    return text + rest + ']';
}

std::string escaped(char c)
{
    return kSpecial.find(c) == std::string_view::npos ? std::string{c} : std::string{'\\', c};
}

struct AsciiPart {
    std::vector<bool> in = std::vector<bool>(128);
    std::vector<bool> out = std::vector<bool>(128);
    unsigned count = 0;
    unsigned missing = 0;
    bool missingTrail = false;  // one of those that are not in it may be the end of another
};

AsciiPart asciiPart(const CodeSet& set)
{
    AsciiPart part;
    for (std::uint32_t code = 1; code <= CodeSet::kLastAscii; ++code) {
        if (!mayStand(code)) continue;
        const bool has = set.has(code);
        (has ? part.in : part.out)[code] = true;
        ++(has ? part.count : part.missing);
        if (!has && mayTrail(code)) part.missingTrail = true;
    }
    return part;
}

std::string asciiText(const AsciiPart& part)
{
    if (part.count > 1) return bracket(part.in, false);
    for (std::uint32_t code = 1; code <= CodeSet::kLastAscii; ++code) {
        if (part.in[code]) return escaped(static_cast<char>(code));
    }
    return {};
}

// The characters beyond ASCII, one by one.
std::vector<std::string> listed(const CodeSet& set)
{
    std::vector<std::string> texts;
    for (const CodeInterval& interval : set.intervals()) {
        for (std::uint32_t code = std::max(interval.first, CodeSet::kLastAscii + 1);
             code <= interval.last; ++code) {
            std::string utf8;
            tool::appendCharacter(utf8, code);
            texts.push_back(posixLiteral(utf8));
        }
    }
    return texts;
}

std::string repeatedClass(const AsciiPart& ascii)
{
    if (ascii.missingTrail) return {};
    if (ascii.missing == 0) return ".";
    if (ascii.missing > 1) return bracket(ascii.out, true);
    for (std::uint32_t code = 1; code <= CodeSet::kLastAscii; ++code) {
        if (ascii.out[code]) return std::string{"[^"} + static_cast<char>(code) + "]";
    }
    return {};
}

}  // namespace

std::string posixLiteral(std::string_view utf8)
{
    const auto bytes = tool::recode(utf8, XML_ENCODING_UTF_8, XML_ENCODING_GB18030);
    std::string text;
    bool inside = false;  // of a character of several bytes
    for (const char c : bytes ? *bytes : std::string{utf8}) {
        const bool high = static_cast<unsigned char>(c) >= 0x80;
        // A second byte that is special must not be escaped in a locale of bytes: it is itself.
        if (inside && !high && kSpecial.find(c) != std::string_view::npos)
            text += std::string{"["} + c + "]";
        else text += high ? std::string{c} : escaped(c);
        inside = high && !inside;
    }
    return text;
}

PosixClass posixClass(const CodeSet& set)
{
    const AsciiPart ascii = asciiPart(set);
    const CodeSet beyond = CodeSet::between(CodeSet::kLastAscii + 1, CodeSet::kLast);
    const std::uint32_t count = set.countBeyondAscii();
    const bool all = beyond.without(set).empty();
    PosixClass result{{}, {}, 1, all || count <= kMostListed, ascii.count == 0 && count == 0};
    if (result.nothing) {
        result.text = "[^\001-\377]";
        return result;
    }
    std::vector<std::string> parts;
    if (ascii.count != 0) parts.push_back(asciiText(ascii));
    if (count != 0 && result.exact && !all) {
        const std::vector<std::string> texts = listed(set);
        parts.insert(parts.end(), texts.begin(), texts.end());
        result.positions += 4 * static_cast<unsigned>(texts.size());
        if (ascii.count == 0) parts.resize(texts.size());
        result.text = parts.size() == 1 ? "(" + parts[0] + ")" : groupedAlternatives(parts);
        return result;
    }
    if (count != 0) {
        parts.emplace_back(kBeyondAscii);
        result.positions += 6;
        result.repeated = repeatedClass(ascii);
    }
    result.text = groupedAlternatives(parts);
    return result;
}

}  // namespace netxml::xsd
