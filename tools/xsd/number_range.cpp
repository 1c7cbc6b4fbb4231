#include "xsd/number_range.hpp"

#include "xsd/alternatives.hpp"

#include <vector>

namespace netxml::xsd {
namespace {

constexpr const char* kAnyFraction = "(\\.[0-9]*)?";
constexpr const char* kNoFraction = "(\\.0*)?";
constexpr std::string_view kDigits = "0123456789";

using Alternatives = std::vector<std::string>;

// The digits from `first` to `last`; nothing when there are none.
std::string digits(int first, int last)
{
    if (first > last) return {};
    if (first == last) return std::to_string(first);
    return "[" + std::to_string(first) + "-" + std::to_string(last) + "]";
}

std::string anyDigits(std::size_t count)
{
    if (count == 0) return {};
    return count == 1 ? "[0-9]" : "[0-9]{" + std::to_string(count) + "}";
}

// The digits that are larger, or smaller, than `digit`; of the first of several no zero.
std::string beside(char digit, bool larger, bool leading)
{
    const int value = digit - '0';
    return larger ? digits(value + 1, 9) : digits(leading ? 1 : 0, value - 1);
}

// Integral parts that are larger, or smaller, than `limit`, written without zeros before them, and
// not 0 itself, which has no digits then.
void integralBeside(Alternatives& to, const std::string& limit, bool larger)
{
    for (std::size_t i = 0; i != limit.size(); ++i) {
        const std::string digit = beside(limit[i], larger, i == 0);
        if (!digit.empty())
            to.push_back(limit.substr(0, i) + digit + anyDigits(limit.size() - i - 1));
    }
    if (larger) to.push_back("[1-9]" + anyDigits(limit.size()) + "[0-9]*");
    else if (limit.size() > 2)
        to.push_back("[1-9][0-9]{0," + std::to_string(limit.size() - 2) + "}");
    else if (limit.size() == 2) to.emplace_back("[1-9]");
}

// The fractions behind an equal integral part that are above or below `limit`, or equal to it.
Alternatives fractionsBeside(const std::string& limit, bool larger, bool equal)
{
    Alternatives result;
    for (std::size_t i = 0; i != limit.size(); ++i) {
        const std::string digit = beside(limit[i], larger, false);
        if (!digit.empty()) result.push_back("\\." + limit.substr(0, i) + digit + "[0-9]*");
        // A fraction that ends here is smaller.
        if (!larger) result.push_back(i == 0 ? "\\.?" : "\\." + limit.substr(0, i));
    }
    if (larger) result.push_back("\\." + limit + "[0-9]*[1-9][0-9]*");
    if (equal) result.push_back(limit.empty() ? kNoFraction : "\\." + limit + "0*");
    return result;
}

// Numbers without a sign on one side of `limit`'s.
std::string magnitude(const DecimalNumber& limit, bool larger, bool equal)
{
    Alternatives whole;
    Alternatives integral;
    integralBeside(integral, limit.integral, larger);
    if (!larger && !limit.integral.empty()) integral.emplace_back();  // 0
    if (!integral.empty()) whole.push_back(groupedAlternatives(integral) + kAnyFraction);
    const Alternatives fractions = fractionsBeside(limit.fraction, larger, equal);
    if (!fractions.empty()) whole.push_back(limit.integral + groupedAlternatives(fractions));
    return whole.empty() ? std::string{} : "0*" + groupedAlternatives(whole);
}

std::string zero()
{
    return std::string{"-0*"} + kNoFraction;
}

}  // namespace

std::optional<DecimalNumber> readDecimal(std::string_view text)
{
    DecimalNumber number;
    if (text.starts_with('-') || text.starts_with('+')) {
        number.negative = text.front() == '-';
        text.remove_prefix(1);
    }
    const std::size_t point = std::min(text.find('.'), text.size());
    std::string_view integral = text.substr(0, point);
    std::string_view fraction = text.substr(std::min(point + 1, text.size()));
    if (integral.empty() && fraction.empty()) return std::nullopt;
    if (integral.find_first_not_of(kDigits) != std::string_view::npos ||
        fraction.find_first_not_of(kDigits) != std::string_view::npos)
        return std::nullopt;
    while (integral.starts_with('0')) integral.remove_prefix(1);
    while (fraction.ends_with('0')) fraction.remove_suffix(1);
    number.integral = integral;
    number.fraction = fraction;
    if (number.isZero()) number.negative = false;
    return number;
}

std::string boundExpression(Bound bound, const DecimalNumber& limit)
{
    if (limit.isZero() && bound == Bound::Below)
        return "-0*([1-9][0-9]*" + std::string{kAnyFraction} + "|\\.0*[1-9][0-9]*)";
    const bool upper = bound == Bound::AtMost || bound == Bound::Below;
    const bool equal = bound == Bound::AtLeast || bound == Bound::AtMost;
    // Of negative numbers the one with the larger magnitude is smaller.
    const std::string same = magnitude(limit, upper == limit.negative, equal);
    const std::string sign = limit.negative ? "-" : "\\+?";
    Alternatives parts;
    if (!same.empty()) parts.push_back(sign + same);
    if (upper != limit.negative) {
        // All numbers with the other sign; 0 has both.
        parts.emplace_back(limit.negative ? "\\+?[.0-9]+" : "-[.0-9]+");
        if (limit.negative) parts.push_back(zero());
    } else if (limit.isZero() && equal) {
        parts.push_back(zero());
    }
    return groupedAlternatives(parts);
}

std::string integersBetween(const std::string& lowest, const std::string& highest)
{
    const auto upTo = [](const std::string& limit) {
        if (limit == "0") return std::string{"0+"};
        Alternatives integral;
        integralBeside(integral, limit, false);
        integral.push_back(limit);
        return "(0+|0*" + groupedAlternatives(integral) + ")";
    };
    return "\\+?" + upTo(highest) + "|-" + upTo(lowest);
}

std::string equalExpression(const DecimalNumber& number)
{
    const std::string fraction =
        number.fraction.empty() ? std::string{kNoFraction} : "\\." + number.fraction + "0*";
    const std::string sign = number.isZero() ? "[-+]?" : number.negative ? "-" : "\\+?";
    return sign + "0*" + number.integral + fraction;
}

std::string totalDigitsExpression(unsigned count)
{
    Alternatives parts;
    for (unsigned integral = 0; integral <= count; ++integral) {
        const std::string fraction = std::to_string(count - integral);
        parts.push_back("[0-9]{" + std::to_string(integral) + "}(\\.[0-9]{0," + fraction + "}0*)?");
    }
    return "[-+]?0*" + groupedAlternatives(parts);
}

std::string fractionDigitsExpression(unsigned count)
{
    return "[-+]?[0-9]*(\\.[0-9]{0," + std::to_string(count) + "}0*)?";
}

}  // namespace netxml::xsd
