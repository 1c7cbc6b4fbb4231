// Bounds of decimal numbers of any size as POSIX extended expressions.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace netxml::xsd {

// A decimal number as its digits: no zeros before the integral part, none behind the fraction.
struct DecimalNumber {
    bool negative = false;
    std::string integral;  // empty for 0
    std::string fraction;

    bool isZero() const { return integral.empty() && fraction.empty(); }
};

// Nothing when the text is no decimal (XML Schema part 2, section 3.2.3).
std::optional<DecimalNumber> readDecimal(std::string_view text);

// What of a bound's side is admitted.
enum class Bound { AtLeast, Above, AtMost, Below };

// Matches, among the texts of decimals, those whose number is on the right side. Not anchored; has
// alternatives at its top.
std::string boundExpression(Bound bound, const DecimalNumber& limit);

// Matches the texts of the integers from -`lowest` to `highest`, both given without a sign.
std::string integersBetween(const std::string& lowest, const std::string& highest);

// Matches the texts of one number.
std::string equalExpression(const DecimalNumber& number);

// Decimals of at most so many digits altogether, and of at most so many in the fraction.
std::string totalDigitsExpression(unsigned count);
std::string fractionDigitsExpression(unsigned count);

// Any number, and any integer.
inline constexpr const char* kDecimalExpression = "[-+]?([0-9]+(\\.[0-9]*)?|\\.[0-9]+)";
inline constexpr const char* kIntegerExpression = "[-+]?[0-9]+";

}  // namespace netxml::xsd
