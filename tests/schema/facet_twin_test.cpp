// Facets against the plain rules: random facets and values, the same status and sentence.
//
// NETXML_TEST_VALUES sets how many for each pair of facet and type, NETXML_TEST_SEED the seed.
#include "tests/schema/value_comparison.hpp"

#include <string>
#include <vector>

namespace {

using Pool = std::vector<std::string>;

// clang-format off
const Pool kNumbers = {
    "0", "1", "2", "3", "5", "9", "10", "11", "-1", "-5", "-0", "+5", "005", "|5", "", " 5", "5x",
    "x5", "--5", "+-5", "5.0", "5e3", "0x10", "\t\n5", "127", "128", "-128", "255", "65535", "+",
    "2147483647", "-2147483648", "4294967295", "9223372036854775806", "9223372036854775807",
    "9223372036854775808", "-9223372036854775808", "-9223372036854775809", "18446744073709551614",
    "18446744073709551615", "18446744073709551616", "99999999999999999999", "-99999999999999999999",
    "00000000000000000000000000000000000005", "-18446744073709551615", "-18446744073709551616",
};
const Pool kDurations = {
    "P0Y0M0DT0H0M0S", "P1Y0M0DT0H0M0S", "P0Y12M0DT0H0M0S", "P0Y11M30DT0H0M0S", "P0Y0M360DT0H0M0S",
    "P0Y11M29DT23H59M59S", "P0Y11M29DT23H59M60S", "P0Y0M0DT0H1M0S", "P0Y0M0DT0H0M60S",
    "P0Y0M0DT0H0M61S", "P0Y0M0DT0H65535M65535S", "P0Y0M0DT65535H65535M0S", "P0Y0M65535DT65535H0M0S",
    "P9999Y65535M65535DT65535H65535M65535S", "P0Y65535M65535DT0H0M0S", "P0Y65536M0DT0H0M0S",
    "P1Y", "", "x", "P1Y0M0DT0H0M0S ", "P0Y0M1DT0H0M0S", "P0Y0M0DT24H0M0S", "P0Y0M0DT23H59M60S",
};
const Pool kSomeTexts = {
    "", "a", "b", "ab", "abc", "abcd", "A", "1", "a1b", "\xC3\xA9", "\xC3\xA9t\xC3\xA9", " ", "\n",
    "true", "0", "00", "-007", "12.3", "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa",
};
const Pool kPatterns = {
    "", "a", "^a$", "[0-9]", "^[0-9]$", "^[0-9]+$", "a|b", "^(a|b)*$", "(", "[", "a{2,1}", "*", "\\",
    "^.{2,3}$", "\\.", "^$", "[[:alpha:]]", "^[a-z][a-z0-9]*$", "a.b", "\\d", "(a)(b)?c", "^[^0-9]*$",
};
// clang-format on

// Dates and times of one kind, some of them wrong, in many zones.
Pool dateTimes(uint32_t kind)
{
    const Pool dates = {"2001-01-01", "2001-01-02", "2000-02-29", "2000-03-01", "1999-12-31",
                        "0001-01-01", "9999-12-31", "2001-02-29", "0000-01-01", "2001-12-30"};
    const Pool times = {"00:00:00", "00:00:01", "00:30:00", "01:00:00", "23:59:59", "24:00:00"};
    const Pool fractions = {"", ".0", ".5", ".50", ".01", ".30", ".12345678901234567890"};
    const Pool zones = {"",       "Z",      "+00:00", "+01:00", "-01:00", "|01:00",
                        "|30:00", "|00:00", "+14:30", "-29:59", "+99:99", "|50:30"};
    const bool hasTime = kind == SCHEMA_BUILTIN_DATE_TIME || kind == SCHEMA_BUILTIN_TIME;
    Pool pool = {"", "x", "2001-01-01T00:00:00Z ", "2001"};
    for (const std::string& date : dates) {
        for (const std::string& time : hasTime ? times : Pool{""}) {
            for (const std::string& fraction : hasTime ? fractions : Pool{""}) {
                for (const std::string& zone : zones) {
                    const std::string tail = time + fraction + zone;
                    switch (kind) {
                    case SCHEMA_BUILTIN_DATE_TIME: pool.push_back(date + "T" + tail); break;
                    case SCHEMA_BUILTIN_DATE: pool.push_back(date + tail); break;
                    case SCHEMA_BUILTIN_TIME: pool.push_back(tail); break;
                    case SCHEMA_BUILTIN_G_YEAR: pool.push_back(date.substr(0, 4) + tail); break;
                    case SCHEMA_BUILTIN_G_MONTH:
                        pool.push_back("--" + date.substr(5, 2) + "--" + tail);
                        break;
                    case SCHEMA_BUILTIN_G_DAY: pool.push_back("---" + date.substr(8) + tail); break;
                    case SCHEMA_BUILTIN_G_YEAR_MONTH:
                        pool.push_back(date.substr(0, 7) + tail);
                        break;
                    default: pool.push_back("--" + date.substr(5) + tail); break;
                    }
                }
            }
        }
    }
    return pool;
}

Pool poolOf(uint32_t kind)
{
    if (kind >= SCHEMA_BUILTIN_BYTE && kind <= SCHEMA_BUILTIN_NON_NEGATIVE_INTEGER) return kNumbers;
    if (kind == SCHEMA_BUILTIN_DURATION) return kDurations;
    if (kind >= SCHEMA_BUILTIN_DATE_TIME && kind <= SCHEMA_BUILTIN_G_MONTH_DAY)
        return dateTimes(kind);
    Pool pool = kSomeTexts;
    pool.insert(pool.end(), kNumbers.begin(), kNumbers.end());
    return pool;
}

class FacetComparison {
public:
    void check(uint32_t kind, uint32_t baseKind, const std::string& text, const std::string& value,
               uint32_t size)
    {
        if (differences_ >= 5) return;
        const Schema_Facet facet{texts_.text(text), kind, baseKind};
        char* buffer = buffers_.room(size);
        std::string message;
        const uint32_t plain = plainFacet(facet, value, message);
        const uint32_t status = Schema_CheckFacet(&facet, values_.text(value), size, buffer);
        ++(plain == XML_RET_OK ? held : failed);
        const bool untouched =
            buffers_.untouchedBefore(size) &&
            std::string_view(buffer, size).find_first_not_of('#') == std::string_view::npos;
        const bool same =
            plain == XML_RET_OK || size == 0
                ? untouched
                : buffers_.untouchedBefore(size) && plainCut(message, size).compare(buffer) == 0;
        if (status == plain && same) return;
        ++differences_;
        ADD_FAILURE() << "facet " << kind << " of kind " << baseKind << " with \"" << shown(text)
                      << "\" on \"" << shown(value) << "\" in " << size << ": " << status
                      << " and not " << plain << ", \"" << shown(std::string_view(buffer, size))
                      << "\" and not \"" << shown(plainCut(message, size)) << "\"";
    }

    uint64_t held = 0;
    uint64_t failed = 0;

private:
    GuardedSpace texts_;
    GuardedSpace values_;
    GuardedSpace buffers_;
    int differences_ = 0;
};

// Every pair of numbers by every facet and class: one kind of each class, and all kinds by chance
// below.
TEST(FacetTwin, AllPairsOfNumbers)
{
    FacetComparison comparison;
    for (uint32_t kind = 14; kind <= 26; ++kind) {
        for (const uint32_t base :
             {SCHEMA_BUILTIN_INT, SCHEMA_BUILTIN_UNSIGNED_LONG, SCHEMA_BUILTIN_STRING}) {
            for (const std::string& text : kNumbers) {
                for (const std::string& value : kNumbers)
                    comparison.check(kind, base, text, value, 100);
            }
        }
    }
    EXPECT_GT(comparison.held, 10000u);
    EXPECT_GT(comparison.failed, 10000u);
}

TEST(FacetTwin, AllPairsOfDurations)
{
    FacetComparison comparison;
    for (uint32_t kind = 15; kind <= 25; ++kind) {
        for (const std::string& text : kDurations) {
            for (const std::string& value : kDurations)
                comparison.check(kind, SCHEMA_BUILTIN_DURATION, text, value, 100);
        }
    }
    EXPECT_GT(comparison.held, 1000u);
    EXPECT_GT(comparison.failed, 1000u);
}

TEST(FacetTwin, RandomOnes)
{
    FacetComparison comparison;
    RandomValues random;
    const auto count = testSetting("NETXML_TEST_VALUES", 5000) / 25;
    for (uint32_t base = 0; base <= 49; ++base) {
        const Pool values = poolOf(base);
        for (uint32_t kind = 14; kind <= 26; ++kind) {
            const bool ofNumber = kind == SCHEMA_FACET_LENGTH || kind == SCHEMA_FACET_MIN_LENGTH ||
                                  kind == SCHEMA_FACET_MAX_LENGTH ||
                                  kind == SCHEMA_FACET_TOTAL_DIGITS;
            const Pool& texts = kind == SCHEMA_FACET_PATTERN ? kPatterns
                                : ofNumber                   ? kNumbers
                                                             : values;
            for (uint64_t i = 0; i < count; ++i) {
                std::string value = values[random.below(values.size())];
                std::string text = texts[random.below(texts.size())];
                if (random.chance(10)) random.damage(value, "0123456789+-|:. \x80");
                if (random.chance(10)) random.damage(text, "0123456789+-|:. \x80");
                const auto size = static_cast<uint32_t>(random.below(random.chance(2) ? 600 : 90));
                comparison.check(kind, base, text, value, size);
            }
        }
    }
    EXPECT_GT(comparison.held, 50 * count);
    EXPECT_GT(comparison.failed, 50 * count);
}

// Dates and times in all zones: the four bounds, more of them than by chance above.
TEST(FacetTwin, DatesAndTimes)
{
    FacetComparison comparison;
    RandomValues random;
    const uint64_t count = testSetting("NETXML_TEST_VALUES", 5000);
    for (uint32_t base = SCHEMA_BUILTIN_DATE_TIME; base <= SCHEMA_BUILTIN_G_MONTH_DAY; ++base) {
        const Pool pool = dateTimes(base);
        for (uint64_t i = 0; i < count; ++i) {
            const std::string& value = pool[random.below(pool.size())];
            const std::string& text = random.chance(10) ? value : pool[random.below(pool.size())];
            for (const uint32_t kind : {SCHEMA_FACET_MAX_EXCLUSIVE, SCHEMA_FACET_MIN_EXCLUSIVE})
                comparison.check(kind, base, text, value, 100);
        }
    }
    EXPECT_GT(comparison.held, count);
    EXPECT_GT(comparison.failed, count);
}

}  // namespace
