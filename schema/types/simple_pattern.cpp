#include "schema/types/simple_pattern.hpp"

#include "support/ascii.hpp"

#include <bit>
#include <cstring>

namespace netxml {
namespace {

// Reads an expression into positions. Its functions call each other once a group at
// most, and no more than kMostGroups groups may lie one in another.
class PatternReader {
public:
    PatternReader(SimplePattern& into, const char* pattern) noexcept : into_{into}, at_{pattern} {}

    // False when the expression is not simple.
    bool read() noexcept
    {
        into_.openStart = !take('^');
        Part whole{};
        if (!alternatives(whole, 0)) return false;
        into_.openEnd = !take('$');
        // An anchor binds closer than an alternative.
        const bool anchored = !into_.openStart || !into_.openEnd;
        if (*at_ != '\0' || (anchored && forked_)) return false;
        link(whole.last, SimplePattern::kEnd);
        into_.first = whole.first | (whole.emptiable ? SimplePattern::kEnd : 0);
        return true;
    }

private:
    static constexpr unsigned kMostGroups = 8;
    static constexpr unsigned kUnbounded = 1000;

    // A part of the expression: the positions it can begin and end with.
    struct Part {
        Positions first;
        Positions last;
        bool emptiable;
    };
    struct Count {
        unsigned min;
        unsigned max;
    };

    bool take(char c) noexcept
    {
        if (*at_ != c) return false;
        ++at_;
        return true;
    }

    void link(Positions from, Positions to) noexcept
    {
        for (; from != 0; from &= from - 1) into_.following[std::countr_zero(from)] |= to;
    }

    void append(Part& whole, const Part& next) noexcept
    {
        link(whole.last, next.first);
        if (whole.emptiable) whole.first |= next.first;
        whole.last = next.last | (next.emptiable ? whole.last : 0);
        whole.emptiable = whole.emptiable && next.emptiable;
    }

    bool alternatives(Part& whole, unsigned groups) noexcept
    {
        whole = Part{0, 0, false};
        do {
            Part branch{0, 0, true};
            if (!sequence(branch, groups)) return false;
            whole.first |= branch.first;
            whole.last |= branch.last;
            whole.emptiable |= branch.emptiable;
            if (*at_ == '|' && groups == 0) forked_ = true;
        } while (take('|'));
        return true;
    }

    bool sequence(Part& whole, unsigned groups) noexcept
    {
        bool some = false;
        for (; *at_ != '\0' && *at_ != '|' && *at_ != ')' && *at_ != '$'; some = true) {
            if (!piece(whole, groups)) return false;
        }
        return some;
    }

    // An atom as often as its quantifier says. A counted one is read anew for each time.
    bool piece(Part& whole, unsigned groups) noexcept
    {
        const char* start = at_;
        Part part{};
        Count count{1, 1};
        if (!atom(part, groups) || !quantifier(count)) return false;
        const char* end = at_;
        const unsigned copies =
            count.max == kUnbounded ? (count.min > 1 ? count.min : 1) : count.max;
        for (unsigned i = 1;; ++i) {
            if (i == copies && count.max == kUnbounded) link(part.last, part.first);
            part.emptiable |= i > count.min;
            append(whole, part);
            if (i == copies) break;
            at_ = start;
            if (!atom(part, groups)) return false;
        }
        at_ = end;
        return true;
    }

    bool quantifier(Count& count) noexcept
    {
        switch (*at_) {
        case '*': count = {0, kUnbounded}; break;
        case '+': count = {1, kUnbounded}; break;
        case '?': count = {0, 1}; break;
        case '{': return bounds(count) && isEndOfPiece();
        default: return true;
        }
        ++at_;
        return isEndOfPiece();
    }

    bool isEndOfPiece() const noexcept { return *at_ == '\0' || !std::strchr("*+?{", *at_); }

    bool bounds(Count& count) noexcept
    {
        ++at_;
        if (!number(count.min)) return false;
        count.max = count.min;
        if (take(',')) {
            count.max = kUnbounded;
            if (*at_ != '}' && !number(count.max)) return false;
        }
        return take('}') && count.max != 0 && count.min <= count.max;
    }

    // At most two digits: more copies would not find room.
    bool number(unsigned& value) noexcept
    {
        value = 0;
        const char* start = at_;
        for (; isDigit(*at_) && at_ - start < 2; ++at_)
            value = value * 10 + static_cast<unsigned>(*at_ - '0');
        return at_ != start && !isDigit(*at_);
    }

    bool atom(Part& part, unsigned groups) noexcept
    {
        if (take('(')) return groups < kMostGroups && alternatives(part, groups + 1) && take(')');
        if (used_ == SimplePattern::kMostPositions) return false;
        const Positions position = Positions{1} << used_++;
        part = Part{position, position, false};
        return bytes(position);
    }

    // Lets a position match what stands here.
    bool bytes(Positions position) noexcept
    {
        const char c = *at_++;
        switch (c) {
        case '.': fill(1, SimplePattern::kBytes - 1, position); return true;
        case '[': return bracket(position);
        case '\\': return escaped(*at_, position);
        default: return !std::strchr("*+?{}]^", c) && literal(c, position);
        }
    }

    // Letters and some others have meanings of their own behind a backslash.
    bool escaped(char c, Positions position) noexcept
    {
        if (c == '\0' || !std::strchr("\\.[](){}*+?|^$-/", c)) return false;
        ++at_;
        return literal(c, position);
    }

    bool literal(char c, Positions position) noexcept
    {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= SimplePattern::kBytes) return false;
        into_.matching[byte] |= position;
        return true;
    }

    bool bracket(Positions position) noexcept
    {
        const bool negated = take('^');
        const char* start = at_;
        for (; *at_ != ']' || at_ == start; ++at_) {
            const char from = *at_;
            // Between others a hyphen is no character of its own, and regcomp() refuses it.
            const bool isHyphen = from == '-' && at_ != start && at_[1] != ']';
            if (!isPlain(from) || isHyphen) return false;
            char to = from;
            if (at_[1] == '-' && at_[2] != ']') {
                to = at_[2];
                at_ += 2;
                if (!isPlain(to) || to == '-' || to < from) return false;
            }
            fill(static_cast<unsigned char>(from), static_cast<unsigned char>(to), position);
        }
        ++at_;
        if (negated) {
            for (std::size_t byte = 1; byte < SimplePattern::kBytes; ++byte)
                into_.matching[byte] ^= position;
        }
        return true;
    }

    // In a bracket: ASCII, and no beginning of a class.
    bool isPlain(char c) const noexcept
    {
        return c != '\0' && c != '[' && static_cast<unsigned char>(c) < SimplePattern::kBytes;
    }

    void fill(std::size_t from, std::size_t to, Positions position) noexcept
    {
        for (std::size_t byte = from; byte <= to; ++byte) into_.matching[byte] |= position;
    }

    SimplePattern& into_;
    const char* at_;
    unsigned used_ = 0;    // positions
    bool forked_ = false;  // there are alternatives outside of groups
};

}  // namespace

bool SimplePattern::read(const char* pattern) noexcept
{
    *this = SimplePattern{};
    return PatternReader{*this, pattern}.read();
}

}  // namespace netxml
