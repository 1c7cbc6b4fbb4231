// Every check of a simple value says what its plain rule says: the built-in types, the network
// types, the facets, the tables of simple patterns, splitting, and the order of points in time. No
// check reads beyond its text or writes beyond its buffer, both of which end where memory does.
//
// The first byte chooses what is checked.
#include "fuzz/support/fuzz_input.hpp"
#include "fuzz/support/require.hpp"
#include "schema/types/pattern_table.hpp"
#include "tests/schema/guarded_space.hpp"
#include "tests/support/plain_values.hpp"

#include <algorithm>
#include <vector>

namespace {

constexpr std::size_t kInputBound = 8192;
constexpr std::size_t kLongestPattern = 60;

GuardedSpace& valueSpace()
{
    static GuardedSpace space{kInputBound};
    return space;
}

GuardedSpace& otherSpace()
{
    static GuardedSpace space{kInputBound};
    return space;
}

// What a check wrote into a buffer that holds nothing but '#' before.
class Message {
public:
    explicit Message(uint32_t size) : size_{size}, buffer_{space().room(size)} {}

    char* buffer() const { return buffer_; }
    bool untouched() const { return contained() && all().find_first_not_of('#') == all().npos; }
    // Nothing before the buffer was written to; behind it nothing can be.
    bool contained() const { return space().untouchedBefore(size_); }
    std::string text() const
    {
        const std::size_t end = all().find('\0');
        require(contained() && end != all().npos, "a sentence is terminated and in its buffer");
        return std::string{all().substr(0, end)};
    }

private:
    static GuardedSpace& space()
    {
        static GuardedSpace space{1 << 12};
        return space;
    }
    std::string_view all() const { return {buffer_, size_}; }

    uint32_t size_;
    char* buffer_;
};

void checkBuiltin(FuzzInput& input)
{
    const auto kind = static_cast<uint32_t>(input.below(50));
    const auto size = static_cast<uint32_t>(111 + input.below(600));
    const std::string value = input.text(kInputBound);
    const char* text = valueSpace().text(value);
    require(SCHEMA_CheckBaseTypeNonNull(kind, text) == (plainBuiltin(kind, value) ? 1u : 0u),
            "a built-in type is checked by its plain rule");

    Schema_SimpleType type{};
    type.kind = kind;
    std::string expected;
    const bool valid = plainBaseType(kind, value, size, expected);
    const Message message{size};
    require(Schema_CheckBaseType(&type, text, size, message.buffer()) == (valid ? 1u : 0u),
            "the empty value, too, is checked by the plain rule");
    if (valid) require(message.untouched(), "a value that passes leaves the buffer as it was");
    else requireSame(message.text(), expected, "the sentence about a value");
}

void checkNetworkType(FuzzInput& input)
{
    constexpr const char* kNames[] = {"OID",        "_Ipv6Address", "IPV6_ADDR_PREFIX",
                                      "_PortRange", "_VlanRange",   "_Ipv4Mask"};
    const char* name = kNames[input.below(6)];
    const auto size = static_cast<uint32_t>(input.below(256));
    const std::string value = input.text(kInputBound);
    const Schema_ExtType* type = Schema_FoundZynBltInType(name, nullptr);
    require(type != nullptr, "a network type is known");
    const Message message{size};
    const uint32_t verdict =
        Schema_checkZynBltInType(type, valueSpace().text(value), size, message.buffer());
    require(verdict == (plainNetworkType(name, value) ? 1u : 0u),
            "a network type is checked by its plain rule");
    if (verdict == 1 || size == 0) require(message.untouched(), "the buffer is as it was");
    else static_cast<void>(message.text());
}

// To compile a count of a group that holds repeated groups, such as "((a*)+){n}", takes the C
// library 2^n steps.
bool countsRepeatedGroups(const std::string& pattern)
{
    constexpr unsigned long kMost = 8;
    const std::size_t repeated = pattern.find_first_of("*+?{", pattern.find(')'));
    for (std::size_t at = pattern.find("){"); at < pattern.size();
         at = pattern.find("){", at + 1)) {
        if (repeated < at && std::strtoul(pattern.c_str() + at + 2, nullptr, 10) > kMost)
            return true;
    }
    return false;
}

// The C library takes no end of time and memory for nested counts, and for back references.
bool isTame(const std::string& pattern)
{
    if (pattern.size() > kLongestPattern || countsRepeatedGroups(pattern)) return false;
    unsigned long product = 1;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == '\\' && i + 1 < pattern.size() && std::isdigit(pattern[i + 1] & 0x7F))
            return false;
        if (pattern[i] == '+') product *= 2;  // it is written out as once and then any number
        if (product > 2000) return false;
        if (pattern[i] < '0' || pattern[i] > '9') continue;
        const unsigned long number = std::strtoul(pattern.c_str() + i, nullptr, 10);
        product *= std::clamp(number, 1ul, 100000ul);
        if (product > 2000) return false;
        while (i + 1 < pattern.size() && std::isdigit(pattern[i + 1] & 0x7F)) ++i;
    }
    return true;
}

void checkFacet(FuzzInput& input)
{
    const auto kind = static_cast<uint32_t>(14 + input.below(13));
    const auto base = static_cast<uint32_t>(input.below(50));
    const auto size = static_cast<uint32_t>(input.below(256));
    const std::string text = input.text(200);
    const std::string value = input.text(kInputBound);
    if (kind == SCHEMA_FACET_PATTERN && !isTame(text)) return;
    const Schema_Facet facet{otherSpace().text(text), kind, base};
    const Message message{size};
    const uint32_t status =
        Schema_CheckFacet(&facet, valueSpace().text(value), size, message.buffer());
    std::string expected;
    require(status == plainFacet(facet, value, expected), "a facet is checked by its plain rule");
    if (status == XML_RET_OK || size == 0) require(message.untouched(), "the buffer is as it was");
    else requireSame(message.text(), plainCut(expected, size), "the sentence about a facet");
}

void checkPattern(FuzzInput& input)
{
    const std::string pattern = input.text(400);
    const auto table = netxml::PatternTable::make(otherSpace().text(pattern));
    if (!table || countsRepeatedGroups(pattern)) return;  // the C library is asked only simple ones
    for (int i = 0; i < 8; ++i) {
        const std::string text = input.text(400);
        const auto answer = table->matches(valueSpace().text(text));
        const bool ascii = std::all_of(text.begin(), text.end(), [](char c) { return c >= 0; });
        if (answer == netxml::PatternTable::Answer::Unsure) {
            require(!ascii, "a table is sure of every text in ASCII");
            continue;
        }
        const bool matches = XML_IsMatchRegex(pattern.c_str(), text.c_str()) == 1;
        require((answer == netxml::PatternTable::Answer::Yes) == matches,
                "a table matches what the regular expression does");
    }
}

// Kept: after an item that was cut, a byte is lost if a separator follows somewhere.
std::vector<std::string> plainItems(const std::string& text, char separator, std::size_t size)
{
    std::vector<std::string> items;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t found = text.find(separator, at);
        const std::size_t whole = std::min(found, text.size()) - at;
        items.push_back(text.substr(at, std::min(whole, size - 1)));
        at += items.back().size() + (found != text.npos ? 1 : 0);
    }
    return items;
}

void checkSplit(FuzzInput& input)
{
    const char separator[] = {",; a"[input.below(4)], '\0'};
    const auto size = static_cast<uint32_t>(2 + input.below(40));
    const std::string text = input.text(kInputBound);
    const Message buffer{size};
    Schema_SplitCtx context{};
    const char* item = Schema_GetFirstSplitStr(valueSpace().text(text), separator, size,
                                               buffer.buffer(), &context);
    for (const std::string& expected : plainItems(text, separator[0], size)) {
        require(item == buffer.buffer(), "an item is in its buffer");
        requireSame(buffer.text(), expected, "an item of a text that is split");
        item = Schema_GetNextSplitStr(&context);
    }
    require(!item, "there are no more items");

    const auto codes = plainLanguageCodes();
    const bool known = std::find(codes.begin(), codes.end(), text) != codes.end();
    require(Schema_LanguageHandler(valueSpace().text(text)) == (known ? 1u : 0u),
            "the language codes are those of the list");
}

Schema_DateTimeValue dateTimeFrom(FuzzInput& input)
{
    Schema_DateTimeValue value{};
    value.year = static_cast<uint16_t>(input.below(10001));
    value.month = input.byte();
    value.day = input.byte();
    value.hour = input.byte();
    value.minute = input.byte();
    value.second = input.byte();
    value.zoneHours = input.byte();
    value.zoneMinutes = input.byte();
    value.zoneSign = "+-\0"[input.below(3)];
    for (std::size_t i = 0, count = input.below(21); i < count; ++i)
        value.fraction[i] = static_cast<char>('0' + input.below(10));
    return value;
}

void checkOrder(FuzzInput& input)
{
    const Schema_DateTimeValue a = dateTimeFrom(input);
    const Schema_DateTimeValue b = input.chance(3) ? a : dateTimeFrom(input);
    require(Schema_CmpDateTime(&a, &b) == plainCompareDateTime(a, b),
            "points in time are in the plain order");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const BalancedHeap heap;
    if (size < 2 || size > kInputBound - 8) return 0;
    FuzzInput input{data, size};
    switch (input.below(8)) {
    case 0:
    case 1: checkBuiltin(input); break;
    case 2: checkNetworkType(input); break;
    case 3:
    case 4: checkFacet(input); break;
    case 5: checkPattern(input); break;
    case 6: checkSplit(input); break;
    default: checkOrder(input); break;
    }
    return 0;
}
