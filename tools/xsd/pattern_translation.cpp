#include "xsd/pattern_translation.hpp"

#include "utf8_text.hpp"
#include "xsd/code_set.hpp"
#include "xsd/posix_class.hpp"

#include <optional>

namespace netxml::xsd {
namespace {

constexpr unsigned kMostParentheses = 40;
// What the C library makes of an expression grows with its counts written out.
constexpr std::size_t kMostCharacters = 3000;
constexpr unsigned kMostCount = 255;  // what every C library takes (RE_DUP_MAX)

constexpr std::string_view kTenDigits = "0123456789";
constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

// General categories and blocks: which characters of ASCII they have, and whether any beyond.
struct Property {
    std::string_view name;
    std::string_view ascii;
    bool beyond;
};

constexpr Property kProperties[] = {
    {"L", kLetters, true},
    {"Lu", "ABCDEFGHIJKLMNOPQRSTUVWXYZ", true},
    {"Ll", "abcdefghijklmnopqrstuvwxyz", true},
    {"Lt", "", true},
    {"Lm", "", true},
    {"Lo", "", true},
    {"M", "", true},
    {"Mn", "", true},
    {"Mc", "", true},
    {"Me", "", true},
    {"N", kTenDigits, true},
    {"Nd", kTenDigits, false},
    {"Nl", "", true},
    {"No", "", true},
    {"P", "!\"#%&'()*,-./:;?@[\\]_{}", true},
    {"Pc", "_", true},
    {"Pd", "-", true},
    {"Ps", "([{", true},
    {"Pe", ")]}", true},
    {"Pi", "", true},
    {"Pf", "", true},
    {"Po", "!\"#%&'*,./:;?@\\", true},
    {"Z", " ", true},
    {"Zs", " ", true},
    {"Zl", "", true},
    {"Zp", "", true},
    {"S", "$+<=>^`|~", true},
    {"Sm", "+<=>|~", true},
    {"Sc", "$", true},
    {"Sk", "^`", true},
    {"So", "", true},
    {"C", "\t\n\r\177", true},
    {"Cc", "\t\n\r\177", false},
    {"Cf", "", true},
    {"Co", "", true},
    {"Cn", "", true},
};

CodeSet beyondAscii()
{
    return CodeSet::between(CodeSet::kLastAscii + 1, CodeSet::kLast);
}

CodeSet setOf(std::string_view ascii, bool beyond)
{
    CodeSet set = CodeSet::of(ascii);
    if (beyond) set.add(beyondAscii());
    return set;
}

// Reads an expression and writes the other one. Its functions call each other once a parenthesis or
// bracket, of which kMostParentheses may lie one in another.
class Translator {
public:
    explicit Translator(std::string_view pattern) : rest_{pattern}, size_{pattern.size()} {}

    TranslatedPattern translate()
    {
        const Part whole = alternatives(0);
        if (mistake_.empty() && !rest_.empty()) fail("a \")\" without its \"(\"");
        if (mistake_.empty() && whole.positions > kMostCharacters)
            fail("its counts come to too large an expression");
        return {whole.text, mistake_, ascii_, blanks_, difference_};
    }

private:
    struct Part {
        std::string text;
        std::size_t positions = 0;
    };
    struct Count {
        unsigned min = 1;
        std::optional<unsigned> max = 1;
    };

    void fail(const std::string& what)
    {
        if (mistake_.empty())
            mistake_ = what + ", at character " + std::to_string(size_ - rest_.size() + 1);
    }
    void differ(const std::string& what)
    {
        if (difference_.empty()) difference_ = what;
    }
    bool take(std::string_view text)
    {
        if (!rest_.starts_with(text)) return false;
        rest_.remove_prefix(text.size());
        return true;
    }
    bool atEnd() const { return rest_.empty() || !mistake_.empty(); }

    Part alternatives(unsigned nesting)
    {
        Part whole;
        bool emptiable = false;
        do {
            const Part part = branch(nesting);
            whole.positions += part.positions;
            if (part.text.empty()) emptiable = true;
            else whole.text += (whole.text.empty() ? "" : "|") + part.text;
        } while (take("|"));
        if (emptiable && !whole.text.empty()) whole.text = "(" + whole.text + ")?";
        return whole;
    }

    Part branch(unsigned nesting)
    {
        Part whole;
        while (!atEnd() && rest_.front() != '|' && rest_.front() != ')') {
            const Part part = piece(nesting);
            whole.text += part.text;
            whole.positions += part.positions;
        }
        return whole;
    }

    Part piece(unsigned nesting)
    {
        if (take("(")) {
            if (nesting == kMostParentheses) {
                fail("more parentheses one in another than are taken");
                return {};
            }
            const Part inner = alternatives(nesting + 1);
            if (!take(")")) fail("a \"(\" without its \")\"");
            const Count count = quantifier();
            if (inner.text.empty()) return {};
            return repeat("(" + inner.text + ")", inner.positions, count);
        }
        const CodeSet characters = atom();
        if (characters.countBeyondAscii() != 0) ascii_ = false;
        if (characters.has(' ') || characters.has('\t')) blanks_ = true;
        const PosixClass one = posixClass(characters);
        if (!one.exact) {
            differ("it admits every character beyond ASCII where the original admits some");
        }
        const Count count = quantifier();
        const bool shorter = !count.max && count.min <= 1 && !one.repeated.empty();
        return repeat(shorter ? one.repeated : one.text, one.positions, count);
    }

    Part repeat(const std::string& text, std::size_t positions, Count count)
    {
        if (count.max && *count.max == 0) return {};
        const std::size_t times = std::max(count.min, count.max.value_or(count.min));
        if (count.min > kMostCount || count.max.value_or(0) > kMostCount) {
            fail("a count above " + std::to_string(kMostCount));
            return {};
        }
        // A group that comes once or more is written out once, and once repeated.
        const bool again = !count.max && count.min != 0 && text.starts_with('(');
        const std::size_t all = positions * (std::max<std::size_t>(times, 1) + (again ? 1 : 0));
        if (all > kMostCharacters) fail("its counts come to too large an expression");
        if (count.min == 1 && count.max == 1u) return {text, all};
        if (count.min == 0 && !count.max) return {text + "*", all};
        if (count.min == 1 && !count.max) return {text + "+", all};
        if (count.min == 0 && count.max == 1u) return {text + "?", all};
        std::string numbers = std::to_string(count.min);
        if (count.max != count.min)
            numbers += "," + (count.max ? std::to_string(*count.max) : std::string{});
        return {text + "{" + numbers + "}", all};
    }

    unsigned number()
    {
        unsigned value = 0;
        if (rest_.empty() || kTenDigits.find(rest_.front()) == std::string_view::npos)
            fail("expected a number");
        while (!rest_.empty() && kTenDigits.find(rest_.front()) != std::string_view::npos) {
            value = std::min(value * 10 + static_cast<unsigned>(rest_.front() - '0'), 100000u);
            rest_.remove_prefix(1);
        }
        return value;
    }

    Count quantifier()
    {
        if (take("?")) return {0, 1};
        if (take("*")) return {0, std::nullopt};
        if (take("+")) return {1, std::nullopt};
        if (!take("{")) return {};
        Count count;
        count.min = number();
        count.max = count.min;
        if (take(",")) {
            if (rest_.starts_with("}")) count.max.reset();
            else count.max = number();
        }
        if (!take("}")) fail("expected \"}\"");
        if (count.max && *count.max < count.min) fail("a count that ends below its begin");
        return count;
    }

    std::uint32_t character()
    {
        const tool::Character next = tool::firstCharacter(rest_);
        rest_.remove_prefix(next.size);
        return next.code;
    }

    CodeSet atom()
    {
        if (take(".")) return CodeSet::of("\n\r").complement();
        if (take("[")) return group(0);
        if (take("\\")) return escape();
        constexpr std::string_view kNotAlone = "?*+{}]";
        if (kNotAlone.find(rest_.front()) != std::string_view::npos) {
            fail(std::string{"a \""} + rest_.front() + "\" that stands for nothing");
            return {};
        }
        const std::uint32_t code = character();
        return CodeSet::between(code, code);
    }

    // Behind a backslash.
    CodeSet escape()
    {
        if (rest_.empty()) {
            fail("a backslash at the end");
            return {};
        }
        const char letter = rest_.front();
        rest_.remove_prefix(1);
        constexpr std::string_view kThemselves = "\\|.-^?*+{}()[]";
        if (kThemselves.find(letter) != std::string_view::npos) return CodeSet::of({&letter, 1});
        switch (letter) {
        case 'n': return CodeSet::of("\n");
        case 'r': return CodeSet::of("\r");
        case 't': return CodeSet::of("\t");
        case 's': return CodeSet::of(" \t\n\r");
        case 'S': return CodeSet::of(" \t\n\r").complement();
        case 'd': return CodeSet::of(kTenDigits);
        case 'D': return CodeSet::of(kTenDigits).complement();
        case 'w': return word();
        case 'W': return word().complement();
        case 'i': return nameStart();
        case 'I': return nameStart().complement();
        case 'c': return nameCharacter();
        case 'C': return nameCharacter().complement();
        case 'p': return property();
        case 'P': return property().complement();
        default: break;
        }
        fail(std::string{"the escape \"\\"} + letter + "\", which there is not");
        return {};
    }

    CodeSet word()
    {
        differ("\\w admits every character beyond ASCII");
        return setOf(std::string{kLetters} + std::string{kTenDigits} + "$+<=>^`|~", true);
    }
    static CodeSet nameStart()
    {
        CodeSet set = CodeSet::of(std::string{kLetters} + "_:");
        constexpr CodeInterval kBeyond[] = {{0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x2FF},
                                            {0x370, 0x37D},   {0x37F, 0x1FFF},  {0x200C, 0x200D},
                                            {0x2070, 0x218F}, {0x2C00, 0x2FEF}, {0x3001, 0xD7FF},
                                            {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF}};
        for (const CodeInterval& interval : kBeyond) set.add(interval);
        return set;
    }
    static CodeSet nameCharacter()
    {
        CodeSet set = nameStart();
        set.add(CodeSet::of(std::string{kTenDigits} + "-."));
        set.add({0xB7, 0xB7});
        set.add({0x300, 0x36F});
        set.add({0x203F, 0x2040});
        return set;
    }

    CodeSet property()
    {
        const std::size_t end = rest_.find('}');
        if (!take("{") || end == std::string_view::npos) {
            fail("expected a property such as \"{L}\"");
            return {};
        }
        const std::string_view name = rest_.substr(0, end - 1);
        rest_.remove_prefix(end);
        for (const Property& known : kProperties) {
            if (known.name != name) continue;
            if (known.beyond)
                differ("\\p{" + std::string{name} +
                       "} takes the characters beyond ASCII for all "
                       "or none");
            return setOf(known.ascii, known.beyond);
        }
        if (name == "IsBasicLatin") return CodeSet::between(0, CodeSet::kLastAscii);
        if (name == "IsLatin-1Supplement") return CodeSet::between(0x80, 0xFF);
        if (name.starts_with("Is")) {
            differ("the block \"" + std::string{name} + "\" is taken for all beyond ASCII");
            return beyondAscii();
        }
        fail("the property \"" + std::string{name} + "\", which there is not");
        return {};
    }

    // Behind "[", up to the "]" that closes it.
    CodeSet group(unsigned nesting)
    {
        const bool negated = take("^");
        CodeSet set;
        CodeSet taken;
        for (bool first = true; !take("]"); first = false) {
            if (atEnd()) {
                fail("a \"[\" without its \"]\"");
                return {};
            }
            if (!first && take("-[")) {
                if (nesting == kMostParentheses) {
                    fail("more brackets one in another than are taken");
                    return {};
                }
                taken = group(nesting + 1);
                if (!take("]")) fail("expected \"]\" behind what is subtracted");
                break;
            }
            member(set);
        }
        return (negated ? set.complement() : set).without(taken);
    }

    // One character, escape or range of a bracket.
    void member(CodeSet& set)
    {
        if (rest_.front() == '\\' && rest_.size() > 1 &&
            std::string_view{"sSdDwWiIcCpP"}.find(rest_[1]) != std::string_view::npos) {
            rest_.remove_prefix(1);
            set.add(escape());
            return;
        }
        const std::uint32_t first = single();
        // A minus before the end or before what is subtracted is itself.
        const bool range =
            rest_.starts_with("-") && rest_.size() > 1 && rest_[1] != ']' && rest_[1] != '[';
        if (!range) {
            set.add({first, first});
            return;
        }
        rest_.remove_prefix(1);
        const std::uint32_t last = single();
        if (last < first) fail("a range that ends below its begin");
        else set.add({first, last});
    }

    std::uint32_t single()
    {
        if (take("\\")) {
            const CodeSet one = escape();
            return one.empty() ? 0 : one.intervals().front().first;
        }
        if (rest_.empty()) return 0;
        if (rest_.front() == '[') fail("a \"[\" inside of brackets");
        return character();
    }

    std::string_view rest_;
    const std::size_t size_;
    std::string mistake_;
    std::string difference_;
    bool ascii_ = true;
    bool blanks_ = false;
};

// Whether an alternative stands outside of all parentheses and brackets.
bool forks(const std::string& expression)
{
    unsigned depth = 0;
    for (std::size_t i = 0; i < expression.size(); ++i) {
        const char c = expression[i];
        if (c == '\\') {
            ++i;
        } else if (c == '[') {
            i += expression[i + 1] == '^' ? 2 : 1;  // a "]" right here is a member
            i = expression.find(']', i + 1);
            if (i == std::string::npos) return true;
        } else if (c == '(') {
            ++depth;
        } else if (c == ')') {
            --depth;
        } else if (c == '|' && depth == 0) {
            return true;
        }
    }
    return false;
}

}  // namespace

TranslatedPattern translatePattern(std::string_view pattern)
{
    return Translator{pattern}.translate();
}

std::string anchored(const std::string& expression)
{
    return forks(expression) ? "^(" + expression + ")$" : "^" + expression + "$";
}

}  // namespace netxml::xsd
