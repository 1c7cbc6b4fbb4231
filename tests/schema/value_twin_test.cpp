// The matchers of simple values against the expressions that they stand for: the same verdict on
// all short texts, on every small change of a valid one, and on random long ones.
//
// NETXML_TEST_VALUES sets how many random values each type gets, NETXML_TEST_SEED the seed.
#include "tests/schema/value_comparison.hpp"

#include <cstring>
#include <vector>

namespace {

std::size_t randomCount()
{
    return static_cast<std::size_t>(testSetting("NETXML_TEST_VALUES", 5000));
}

// The base value of a `make` that is run for each random value, damaged one time in three.
template <typename Make>
void randomOnes(Comparison& comparison, std::string_view alphabet, Make make)
{
    RandomValues random;
    for (std::size_t i = randomCount(); i != 0; --i) {
        std::string value = make(random);
        while (random.chance(3)) random.damage(value, alphabet);
        comparison.check(value);
    }
}

TEST(ValueTwin, Boolean)
{
    Comparison comparison{SCHEMA_BUILTIN_BOOLEAN};
    comparison.allOver("truefals10x", 4);
    for (const char* word : {"true", "false", "1", "0"}) {
        comparison.oneChange(word, "truefalsTF10 \n\xFF");
        comparison.twoChanges(word, "truefalsTF10 \n\xFF");
    }
    comparison.allBytes();
}

TEST(ValueTwin, HexBinary)
{
    Comparison comparison{SCHEMA_BUILTIN_HEX_BINARY};
    comparison.allBytes();
    comparison.allOver("0fFgx", 6);
    randomOnes(comparison, "09afAF/:@G`g \n\x80", [](RandomValues& random) {
        std::string value;
        for (std::size_t n = 1 + random.below(300); n != 0; --n)
            value += random.letter("0123456789abcdefABCDEF");
        return value;
    });
}

TEST(ValueTwin, Base64Binary)
{
    Comparison comparison{SCHEMA_BUILTIN_BASE64_BINARY};
    comparison.allBytes();
    comparison.allOver("A=/ ", 8);
    comparison.allOver("Az09+/=-", 5);
    randomOnes(comparison, "AZaz09+/=-_. \n\x80", [](RandomValues& random) {
        std::string value;
        for (std::size_t n = 4 * random.below(80); n != 0; --n)
            value += random.letter("ABCXYZabcxyz0123456789+/");
        const std::string ends[] = {"", "AA==", "AAA=", "A===", "=", "A", "AA", "AAA"};
        return value + random.one(ends);
    });
}

TEST(ValueTwin, AnyUri)
{
    Comparison comparison{SCHEMA_BUILTIN_ANY_URI};
    comparison.allBytes();
    comparison.allOver(":/a\x80", 7);
    comparison.allOver(":/\n", 8);
    randomOnes(comparison, "::/a#? \n\xFF", [](RandomValues& random) {
        std::string value;
        for (std::size_t n = random.below(300); n != 0; --n)
            value += random.letter("abc/.?#\xE4\n");
        return random.chance(2) ? value : value + ":" + value;
    });
}

TEST(ValueTwin, Strings)
{
    Comparison comparison{SCHEMA_BUILTIN_STRING};
    comparison.allBytes(1);
    randomOnes(comparison, "a\n\xFF",
               [](RandomValues& random) { return random.digits(300) + "."; });
}

TEST(ValueTwin, NamesAndLanguages)
{
    Comparison name{SCHEMA_BUILTIN_QNAME};
    name.allBytes(1);
    name.allOver("a1:-", 5);
    Comparison language{SCHEMA_BUILTIN_NOTATION};
    language.allOver("abcdefghijklmnopqrstuvwxyz-", 2);
    for (const char* code : plainLanguageCodes()) language.oneChange(code, "aeinrsuxz-EU");
}

// The magnitudes at which a verdict changes.
constexpr const char* kLimits[] = {
    "0",     "1",          "127",        "128",        "129",        "9223372036854775807",
    "255",   "256",        "32767",      "32768",      "65535",      "9223372036854775808",
    "65536", "2147483647", "2147483648", "4294967295", "4294967296", "18446744073709551615",
};

std::string randomInteger(RandomValues& random)
{
    const char* const kSigns[] = {"", "", "+", "-", "|"};
    std::string value = random.one(kSigns);
    if (random.chance(2)) value.append(random.below(25), '0');
    if (random.chance(2)) return value + random.one(kLimits);
    std::string digits = random.digits(22);
    if (random.chance(3)) digits.append(random.below(300), '9');
    return value + (digits.empty() ? "0" : digits);
}

TEST(ValueTwin, Integers)
{
    for (uint32_t kind = SCHEMA_BUILTIN_BYTE; kind <= SCHEMA_BUILTIN_NON_NEGATIVE_INTEGER; ++kind) {
        Comparison comparison{kind};
        comparison.allBytes(1);
        comparison.allOver("+|-019x", 4);
        for (const char* limit : kLimits) {
            for (const char* sign : {"", "+", "-", "|", "-0"})
                comparison.oneChange(std::string{sign} + limit, "0179+-|/:");
        }
        randomOnes(comparison, "0123456789+-|. x", randomInteger);
    }
}

// Every number of up to 17 bits, with every sign.
TEST(ValueTwin, SmallIntegers)
{
    for (uint32_t kind = SCHEMA_BUILTIN_BYTE; kind <= SCHEMA_BUILTIN_UNSIGNED_SHORT; ++kind) {
        Comparison comparison{kind};
        const bool isByte = kind == SCHEMA_BUILTIN_BYTE || kind == SCHEMA_BUILTIN_UNSIGNED_BYTE;
        const int most = isByte ? 1100 : 70000;
        for (int number = -most; number <= most; ++number) {
            comparison.check(std::to_string(number));
            if (number >= 0 && number % 7 == 0) {
                comparison.check("+" + std::to_string(number));
                comparison.check("|" + std::to_string(number));
                comparison.check("-00" + std::to_string(number));
            }
        }
    }
}

std::string joined(std::initializer_list<std::string> parts)
{
    std::string text;
    for (const std::string& part : parts) text += part;
    return text;
}

TEST(ValueTwin, Durations)
{
    Comparison comparison{SCHEMA_BUILTIN_DURATION};
    constexpr std::string_view kAlphabet = "019PYMDTHS-. x";
    comparison.allOver("P1YMT", 5);
    for (const char* seed : {"P1Y2M3DT4H5M6S", "P9999Y65535M65535DT65535H65535M65535S"})
        comparison.oneChange(seed, "0123456789PYMDTHS-+. x");
    comparison.twoChanges("P1Y2M3DT4H5M6S", kAlphabet);
    const char* const kForms[] = {"Y0M0DT0H0M0S", "M0DT0H0M0S", "DT0H0M0S", "H0M0S", "M0S", "S"};
    const char* const kBefore[] = {"P", "P0Y", "P0Y0M", "P0Y0M0DT", "P0Y0M0DT0H", "P0Y0M0DT0H0M"};
    for (std::size_t part = 0; part < std::size(kForms); ++part) {
        for (int number = 0; number <= 100100; number += number < 11000 || number > 65000 ? 1 : 97)
            comparison.check(joined({kBefore[part], std::to_string(number), kForms[part]}));
    }
    randomOnes(comparison, kAlphabet, [](RandomValues& random) {
        std::string value;
        for (const char* letters : {"P", "Y", "M", "DT", "H", "M"})
            value += letters + random.digits(1) + random.digits(4);
        return value + "S";
    });
}

std::string twoDigits(std::size_t number)
{
    return {static_cast<char>('0' + number / 10 % 10), static_cast<char>('0' + number % 10)};
}

std::string fourDigits(std::size_t number)
{
    return twoDigits(number / 100) + twoDigits(number % 100);
}

// Calls back with every pair of numbers of two digits.
template <typename Check>
void allPairs(Check check)
{
    for (std::size_t a = 0; a < 100; ++a) {
        for (std::size_t b = 0; b < 100; ++b) check(twoDigits(a), twoDigits(b));
    }
}

std::string randomZone(RandomValues& random)
{
    const char* const kSigns[] = {"+", "-", "|"};
    switch (random.below(4)) {
    case 0: return "";
    case 1: return "Z";
    default:
        return random.one(kSigns) + twoDigits(random.below(40)) + ":" + twoDigits(random.below(70));
    }
}

std::string randomDate(RandomValues& random)
{
    const char* const kYears[] = {"0000", "0001", "0004", "1900", "2000", "2001", "2004", "9999"};
    return joined(
        {random.one(kYears), "-", twoDigits(random.below(14)), "-", twoDigits(random.below(33))});
}

std::string randomTime(RandomValues& random)
{
    std::string text = joined({twoDigits(random.below(26)), ":", twoDigits(random.below(62)), ":",
                               twoDigits(random.below(62))});
    return random.chance(2) ? text : text + "." + random.digits(22);
}

std::string randomDateTime(uint32_t kind, RandomValues& random)
{
    const std::string date = randomDate(random);
    std::string value;
    switch (kind) {
    case SCHEMA_BUILTIN_DATE_TIME: value = date + "T" + randomTime(random); break;
    case SCHEMA_BUILTIN_DATE: value = date; break;
    case SCHEMA_BUILTIN_TIME: value = randomTime(random); break;
    case SCHEMA_BUILTIN_G_YEAR: value = date.substr(0, 4); break;
    case SCHEMA_BUILTIN_G_MONTH: value = "--" + date.substr(5, 2) + "--"; break;
    case SCHEMA_BUILTIN_G_DAY: value = "---" + date.substr(8); break;
    case SCHEMA_BUILTIN_G_YEAR_MONTH: value = date.substr(0, 7); break;
    default: value = "--" + date.substr(5); break;
    }
    return value + randomZone(random);
}

// What one change, and what two changes, make of valid values.
TEST(ValueTwin, DatesAndTimes)
{
    const char* const kSeeds[] = {
        "2000-02-29T23:59:59.5+14:00",
        "2000-02-29+29:59",
        "23:59:59.5-14:00",
        "2000|14:00",
        "--12--+14:00",
        "---30-14:00",
        "2000-12|14:00",
        "--02-28+14:00",
    };
    for (uint32_t kind = SCHEMA_BUILTIN_DATE_TIME; kind <= SCHEMA_BUILTIN_G_MONTH_DAY; ++kind) {
        Comparison comparison{kind};
        const std::string seed = kSeeds[kind - SCHEMA_BUILTIN_DATE_TIME];
        comparison.everyLength(seed, "0Z+-|:. \n");
        comparison.oneChange(seed, "0123456789|+-Z:.Tz \n\x80");
        comparison.twoChanges(seed, "0123569|-Z:.");
        comparison.allOver("0-2Z", 5);
        const std::string bare = seed.substr(0, seed.find_last_of("+-|"));
        comparison.oneChange(bare, "0123456789|+-Z:.Tz \n\x80");
        comparison.oneChange(bare + "Z", "0123456789|+-Z:.Tz \n\x80");
        randomOnes(comparison, "0123456789|+-Z:.T",
                   [kind](RandomValues& random) { return randomDateTime(kind, random); });
    }
}

TEST(ValueTwin, AllDays)
{
    Comparison date{SCHEMA_BUILTIN_DATE};
    Comparison dateTime{SCHEMA_BUILTIN_DATE_TIME};
    Comparison monthDay{SCHEMA_BUILTIN_G_MONTH_DAY};
    Comparison yearMonth{SCHEMA_BUILTIN_G_YEAR_MONTH};
    Comparison month{SCHEMA_BUILTIN_G_MONTH};
    Comparison day{SCHEMA_BUILTIN_G_DAY};
    Comparison year{SCHEMA_BUILTIN_G_YEAR};
    allPairs([&](const std::string& a, const std::string& b) {
        for (const char* y : {"0000", "1900", "2000", "2001"})
            date.check(joined({y, "-", a, "-", b}));
        dateTime.check(joined({"2004-", a, "-", b, "T00:00:00"}));
        monthDay.check(joined({"--", a, "-", b}));
        year.check(a + b);
        yearMonth.check(joined({"20", a, "-", b}));
    });
    for (std::size_t n = 0; n < 100; ++n) {
        month.check("--" + twoDigits(n) + "--");
        day.check("---" + twoDigits(n));
    }
    // February of every year.
    for (std::size_t n = 0; n < 10000; ++n) {
        date.check(fourDigits(n) + "-02-28");
        date.check(fourDigits(n) + "-02-29");
    }
}

TEST(ValueTwin, AllTimesAndZones)
{
    Comparison time{SCHEMA_BUILTIN_TIME};
    Comparison dateTime{SCHEMA_BUILTIN_DATE_TIME};
    Comparison date{SCHEMA_BUILTIN_DATE};
    Comparison year{SCHEMA_BUILTIN_G_YEAR};
    allPairs([&](const std::string& a, const std::string& b) {
        time.check(joined({a, ":", b, ":59"}));
        time.check(joined({"23:", a, ":", b}));
        dateTime.check(joined({"2001-01-01T", a, ":", b, ":00"}));
        date.check(joined({"2001-01-01-", a, ":", b}));
        year.check(joined({"2001+", a, ":", b}));
        year.check(joined({"2001+", a, b}));
    });
    std::string digits;
    for (int count = 0; count <= 25; ++count) {
        for (const char* zone : {"", "Z", "+00:00", "|00:00", ".", ".1"}) {
            time.check("00:00:00." + digits + zone);
            dateTime.check("2001-01-01T00:00:00." + digits + zone);
        }
        digits += static_cast<char>('0' + count % 10);
    }
}

TEST(ValueTwin, Ipv4Masks)
{
    Comparison comparison{"_Ipv4Mask"};
    const char* const kNumbers[] = {"",    "0",   "1",   "127", "128", "192", "224",
                                    "240", "248", "252", "254", "255", "256", "00"};
    for (const char* a : kNumbers) {
        for (const char* b : kNumbers) {
            for (const char* c : kNumbers) {
                for (const char* d : kNumbers)
                    comparison.check(joined({a, ".", b, ".", c, ".", d}));
            }
        }
    }
    comparison.allOver("025.", 6);
    comparison.oneChange("255.255.254.0", "0123456789./x +-");
    comparison.twoChanges("255.255.254.0", "0145.x");
    randomOnes(comparison, "0123456789.", [](RandomValues& random) {
        return joined({random.digits(3), ".", random.digits(3), ".", random.digits(3), ".0"});
    });
}

std::string randomIpv6(RandomValues& random)
{
    std::string text = random.chance(8) ? "::" : "";
    for (std::size_t n = 1 + random.below(8); n != 0; --n) {
        for (std::size_t digits = random.below(5); digits != 0; --digits)
            text += random.letter("0123456789abcdefABCDEF");
        if (n != 1 || random.chance(4)) text += ':';
        if (random.chance(8)) text += ':';
    }
    return random.chance(6) ? text + ":255.255.255.255" : text;
}

TEST(ValueTwin, Ipv6Addresses)
{
    Comparison comparison{"_Ipv6Address"};
    comparison.allOver(":0f.g", 6);
    for (const char* seed : {"2001:db8::1", "1:2:3:4:5:6:7:8", "::ffff:192.0.2.1"})
        comparison.oneChange(seed, "0123456789abcdefgF:./% ");
    comparison.everyLength("0000:0000:0000:0000:0000:ffff:255.255.255.255", "0:. /");
    comparison.oneChange("0000:0000:0000:0000:0000:ffff:255.255.255.255", "02:.");
    randomOnes(comparison, "0f:./g", randomIpv6);
}

TEST(ValueTwin, Ipv6Prefixes)
{
    Comparison comparison{"IPV6_ADDR_PREFIX"};
    comparison.allOver(":0/1", 7);
    for (int length = 0; length <= 1300; ++length) {
        comparison.check("2001:db8::/" + std::to_string(length));
        comparison.check("::/0" + std::to_string(length));
    }
    comparison.oneChange("2001:db8::/32", "0123456789abcdefgF:./+- x");
    comparison.twoChanges("2001:db8::/32", "0129:/x ");
    const std::string longest = "0000:0000:0000:0000:0000:ffff:255.255.255.255/";
    for (std::size_t zeros = 0; zeros < 30; ++zeros) {
        comparison.check(longest + std::string(zeros, '0') + "128");
        comparison.check("::/" + std::string(3 * zeros, '0') + "1");
        comparison.check("::/1" + std::string(zeros, '0'));
        comparison.check("::/" + std::string(zeros, '9'));
    }
    comparison.check("::/18446744073709551616");
    comparison.check("::/18446744073709551617");
    randomOnes(comparison, "0f:./+1", [](RandomValues& random) {
        return randomIpv6(random) + "/" + std::to_string(random.below(140));
    });
}

std::string randomRange(RandomValues& random, std::size_t most)
{
    std::string item(random.chance(4) ? random.below(9) : 0, '0');
    item += std::to_string(random.chance(20) ? random.below(2 * most) : 1 + random.below(most));
    if (random.chance(2)) return item;
    return item + "-" + std::to_string(random.chance(3) ? random.below(most) : most);
}

void compareRanges(const char* name, std::size_t most)
{
    Comparison comparison{name};
    comparison.allOver("019-,x", 6);
    comparison.allOver("1-,", 8);
    const std::string limit = std::to_string(most);
    comparison.oneChange("1-" + limit + ",2", "0123456789,- +x");
    comparison.twoChanges("1-" + limit + ",2", "0159,-x");
    for (std::size_t number = 0; number <= 70000; ++number) {
        comparison.check(std::to_string(number));
        if (number % 16 == 0) comparison.check(std::to_string(number) + "-" + limit);
    }
    for (std::size_t length = 1; length < 70; ++length) {
        comparison.check(std::string(length, '0') + "1");
        comparison.check("1-" + std::string(length, '0') + "1");
        comparison.check(std::string(length, '1') + ",1");
        comparison.check("2," + std::string(length, '1'));
    }
    randomOnes(comparison, "0123456789,-", [most](RandomValues& random) {
        std::string list = randomRange(random, most);
        for (std::size_t n = random.below(20); n != 0; --n) list += "," + randomRange(random, most);
        return list;
    });
}

TEST(ValueTwin, PortRanges)
{
    compareRanges("_PortRange", 65535);
}

TEST(ValueTwin, VlanRanges)
{
    compareRanges("_VlanRange", 4094);
}

TEST(ValueTwin, ObjectIdentifiers)
{
    Comparison comparison{"OID"};
    comparison.allOver(".01x", 7);
    for (const char* seed : {"1.3.6.1.4.1", "4294967295", "1.4294967295.2", "0000000001.1"})
        comparison.oneChange(seed, "0123456789.-/ x");
    comparison.twoChanges("1.4294967295.2", "0569.x");
    for (std::size_t count = 120; count <= 135; ++count) {
        std::string text = "1";
        for (std::size_t i = 1; i < count; ++i) text += ".1";
        comparison.check(text);
        comparison.check(text + ".");
        comparison.check(text + "..1");
    }
    randomOnes(comparison, "0123456789.", [](RandomValues& random) {
        std::string text = std::to_string(random.below(3));
        const std::string kNumbers[] = {"4294967295", "4294967296", "9999999999", "0000000000",
                                        "00000000000"};
        for (std::size_t n = random.below(140); n != 0; --n)
            text += "." + (random.chance(200) ? random.one(kNumbers)
                                              : std::to_string(random.below(100000)));
        return text;
    });
}

}  // namespace
