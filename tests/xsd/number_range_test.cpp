// Expressions for bounds of numbers, compared with arithmetic.
#include "xsd/number_range.hpp"

#include "netxml/schema.h"
#include "xsd/pattern_translation.hpp"

#include <gtest/gtest.h>
#include <random>

namespace netxml::xsd {
namespace {

bool matchesDecimal(const std::string& expression, const std::string& text)
{
    return XML_IsMatchRegex(anchored(expression).c_str(), text.c_str()) == 1 &&
           XML_IsMatchRegex(anchored(kDecimalExpression).c_str(), text.c_str()) == 1;
}

// Thousandths, so that everything is an integer.
std::string decimalText(long long thousandths, std::mt19937& random)
{
    const bool negative = thousandths < 0;
    const long long size = negative ? -thousandths : thousandths;
    std::string text = negative ? "-" : random() % 4 == 0 ? "+" : "";
    if (thousandths == 0 && random() % 4 == 0) text = "-";
    std::string fraction = std::to_string(1000 + size % 1000).substr(1);
    while (!fraction.empty() && fraction.back() == '0' && random() % 4 != 0) fraction.pop_back();
    if (random() % 8 == 0) fraction += "00";
    std::string integral = std::string(random() % 3, '0') + std::to_string(size / 1000);
    if (size < 1000 && random() % 2 == 0 && !fraction.empty()) integral.clear();
    text += integral;
    if (!fraction.empty() || random() % 4 == 0) text += "." + fraction;
    return text;
}

struct DecimalRow {
    const char* text;
    bool valid;
    bool negative;
    const char* integral;
    const char* fraction;
};

TEST(NumberRange, ReadsDecimals)
{
    const DecimalRow rows[] = {
        {"0", true, false, "", ""},      {"-0.0", true, false, "", ""},
        {"+1", true, false, "1", ""},    {"-12.50", true, true, "12", "5"},
        {".5", true, false, "", "5"},    {"007.", true, false, "7", ""},
        {"", false, false, "", ""},      {".", false, false, "", ""},
        {"1e5", false, false, "", ""},   {"--1", false, false, "", ""},
        {"1.2.3", false, false, "", ""}, {" 1", false, false, "", ""},
    };
    for (const DecimalRow& row : rows) {
        const auto number = readDecimal(row.text);
        ASSERT_EQ(number.has_value(), row.valid) << row.text;
        if (!number) continue;
        EXPECT_EQ(number->negative, row.negative) << row.text;
        EXPECT_EQ(number->integral, row.integral) << row.text;
        EXPECT_EQ(number->fraction, row.fraction) << row.text;
    }
}

TEST(NumberRange, BoundsAndEqualityAgreeWithArithmetic)
{
    std::mt19937 random{1};
#ifdef __SANITIZE_ADDRESS__
    constexpr int kRounds = 80;  // each one takes many times as long
#else
    constexpr int kRounds = 400;
#endif
    for (int round = 0; round != kRounds; ++round) {
        const int size = round % 4 == 0 ? 40 : round % 4 == 1 ? 2500 : round % 4 == 2 ? 120000 : 9;
        const auto draw = [&] { return static_cast<long long>(random()) % (2 * size + 1) - size; };
        long long limit = draw();
        if (round % 3 == 0) limit -= limit % 1000;
        const auto number = readDecimal(decimalText(limit, random));
        ASSERT_TRUE(number);
        const std::string atLeast = boundExpression(Bound::AtLeast, *number);
        const std::string above = boundExpression(Bound::Above, *number);
        const std::string atMost = boundExpression(Bound::AtMost, *number);
        const std::string below = boundExpression(Bound::Below, *number);
        const std::string equal = equalExpression(*number);
        for (int i = 0; i != 60; ++i) {
            long long value = i < 5 ? limit + i - 2 : draw();
            if (i % 3 == 0) value -= value % 1000;
            const std::string text = decimalText(value, random);
            EXPECT_EQ(matchesDecimal(atLeast, text), value >= limit)
                << text << " " << limit << atLeast;
            EXPECT_EQ(matchesDecimal(above, text), value > limit) << text << " " << limit << above;
            EXPECT_EQ(matchesDecimal(atMost, text), value <= limit)
                << text << " " << limit << atMost;
            EXPECT_EQ(matchesDecimal(below, text), value < limit) << text << " " << limit << below;
            EXPECT_EQ(matchesDecimal(equal, text), value == limit) << text << " " << limit << equal;
            if (::testing::Test::HasFailure()) return;
        }
    }
}

struct DigitsRow {
    unsigned count;
    const char* text;
    bool total;
    bool fraction;
};

TEST(NumberRange, CountsDigits)
{
    const DigitsRow rows[] = {
        {2, "12", true, true},   {2, "123", false, true},    {2, "-0012", true, true},
        {2, "1.2", true, true},  {2, "1.23", false, true},   {2, "1.200", true, true},
        {2, "0.01", true, true}, {2, "0.001", false, false}, {3, "0.001", true, true},
        {1, "0", true, true},    {1, "10", false, true},     {4, "+12.34", true, true},
    };
    for (const DigitsRow& row : rows) {
        EXPECT_EQ(matchesDecimal(totalDigitsExpression(row.count), row.text), row.total)
            << row.text;
        EXPECT_EQ(matchesDecimal(fractionDigitsExpression(row.count), row.text), row.fraction)
            << row.text;
    }
}

}  // namespace
}  // namespace netxml::xsd
