// The network types: their values, their sentences, and how they are found.
#include "tests/schema/guarded_space.hpp"
#include "tests/support/plain_values.hpp"
#include "tests/support/sources.hpp"

#include "netxml/schema.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

namespace {

constexpr const char* kOid = "OID";
constexpr const char* kIpv6 = "_Ipv6Address";
constexpr const char* kPrefix = "IPV6_ADDR_PREFIX";
constexpr const char* kPorts = "_PortRange";
constexpr const char* kVlans = "_VlanRange";
constexpr const char* kMask = "_Ipv4Mask";

constexpr struct {
    const char* name;
    const char* message;
} kTypes[] = {
    {kOid, "Invalid OID"},         {kIpv6, "Invalid IPv6"},       {kPrefix, "Invalid IPv6 prefix"},
    {kPorts, "Invalid PortRange"}, {kVlans, "Invalid VlanRange"}, {kMask, "Invalid IPv4 mask"},
};

// The sentence; "(valid)" if the value is valid and the buffer was left alone.
std::string checked(const char* name, const char* value, uint32_t size = 512)
{
    const Schema_ExtType* entry = Schema_FoundZynBltInType(name, nullptr);
    if (!entry) return "no such type";
    const Sentence sentence{size};
    const uint32_t result = Schema_checkZynBltInType(entry, value, size, sentence.buffer());
    const std::string text = sentence.text();
    if (result == 1) return text == "(untouched)" ? "(valid)" : "valid, but wrote " + text;
    return result == 0 ? text : "neither 0 nor 1";
}

std::string messageOf(const std::string& name)
{
    for (const auto& type : kTypes) {
        if (name == type.name) return type.message;
    }
    return "";
}

struct NetworkCase {
    const char* why;
    const char* name;
    const char* value;
    bool valid;
};

// clang-format off
constexpr NetworkCase kCases[] = {
    // why                                    type     value                  valid
    {"a mask",                                kMask,   "255.255.255.0",       true},
    {"the shortest mask",                     kMask,   "0.0.0.0",             true},
    {"the longest mask",                      kMask,   "255.255.255.255",     true},
    {"a hole in the mask",                    kMask,   "255.0.255.0",         false},
    {"ones behind zeros",                     kMask,   "0.0.0.255",           false},
    {"the last one alone",                    kMask,   "0.0.0.1",             false},
    {"the first one alone",                   kMask,   "128.0.0.0",           true},
    {"all but the last",                      kMask,   "255.255.255.254",     true},
    {"all but the first",                     kMask,   "127.255.255.255",     false},
    {"three numbers",                         kMask,   "255.255.255",         false},
    {"five numbers",                          kMask,   "255.255.255.0.0",     false},
    {"a number too large",                    kMask,   "256.0.0.0",           false},
    {"an empty number",                       kMask,   "255..255.0",          false},
    {"white space before",                    kMask,   " 255.0.0.0",          false},
    {"white space behind",                    kMask,   "255.0.0.0 ",          false},
    {"one hexadecimal number",                kMask,   "0xFFFFFF00",          false},
    {"a prefix length is no mask",            kMask,   "255.0.0.0/8",         false},
    {"no mask",                               kMask,   "",                    false},
    {"an address",                            kIpv6,   "2001:db8::1",         true},
    {"all zeros",                             kIpv6,   "::",                  true},
    {"capitals",                              kIpv6,   "2001:DB8::AB",        true},
    {"eight groups",                          kIpv6,   "1:2:3:4:5:6:7:8",     true},
    {"seven groups",                          kIpv6,   "1:2:3:4:5:6:7",       false},
    {"nine groups",                           kIpv6,   "1:2:3:4:5:6:7:8:9",   false},
    {"two gaps",                              kIpv6,   "1::2::3",             false},
    {"five digits",                           kIpv6,   "12345::",             false},
    {"an IPv4 address at the end",            kIpv6,   "::ffff:192.0.2.1",    true},
    {"an IPv4 address alone",                 kIpv6,   "192.0.2.1",           false},
    {"45 characters",                         kIpv6,   "0000:0000:0000:0000:0000:ffff:255.255.255.255", true},
    {"46 characters",                         kIpv6,   "0000:0000:0000:0000:0000:ffff:255.255.255.2550", false},
    {"a prefix is no address",                kIpv6,   "2001:db8::/32",       false},
    {"a zone is none either",                 kIpv6,   "fe80::1%eth0",        false},
    {"white space",                           kIpv6,   "::1 ",                false},
    {"no address",                            kIpv6,   "",                    false},
    {"a prefix",                              kPrefix, "2001:db8::/32",       true},
    {"the shortest length",                   kPrefix, "::/1",                true},
    {"the longest length",                    kPrefix, "::/128",              true},
    {"length 0",                              kPrefix, "2001:db8::/0",        false},
    {"length 129",                            kPrefix, "2001:db8::/129",      false},
    {"a space before the length",             kPrefix, "2001:db8::/ 32",      false},
    {"a letter behind the length",            kPrefix, "2001:db8::/32x",      false},
    {"a sign before the length",              kPrefix, "2001:db8::/+32",      false},
    {"a minus",                               kPrefix, "2001:db8::/-32",      false},
    {"zeros before the length",               kPrefix, "::/00032",            true},
    {"a length of many digits",               kPrefix, "::/99999999999999999999999999", false},
    {"one that wraps at 64 bits",             kPrefix, "::/18446744073709551617", false},
    {"one that wraps at 32 bits",             kPrefix, "::/4294967297",       false},
    {"no length",                             kPrefix, "2001:db8::/",         false},
    {"no slash",                              kPrefix, "2001:db8::",          false},
    {"two slashes",                           kPrefix, "2001:db8::/32/32",    false},
    {"no address",                            kPrefix, "/32",                 false},
    {"an IPv4 prefix",                        kPrefix, "192.0.2.0/24",        false},
    {"an address of 45 characters",           kPrefix, "0000:0000:0000:0000:0000:ffff:255.255.255.255/128", true},
    {"an address of 46 characters",           kPrefix, "0000:0000:0000:0000:0000:ffff:255.255.255.2550/128", false},
    {"63 characters",                         kPrefix, "0000:0000:0000:0000:0000:ffff:255.255.255.255/00000000000000128", true},
    {"64 characters",                         kPrefix, "0000:0000:0000:0000:0000:ffff:255.255.255.255/000000000000000128", false},
    {"no prefix",                             kPrefix, "",                    false},
    {"ports and ranges",                      kPorts,  "1-100,200,65535",     true},
    {"port 0",                                kPorts,  "0",                   false},
    {"port 0 as the lower one",               kPorts,  "0-5",                 false},
    {"a range the wrong way round",           kPorts,  "5-3",                 false},
    {"a range of one",                        kPorts,  "5-5",                 true},
    {"a comma at the end",                    kPorts,  "1,",                  false},
    {"two commas",                            kPorts,  "1,,2",                false},
    {"a comma first",                         kPorts,  ",1",                  false},
    {"a comma alone",                         kPorts,  ",",                   false},
    {"a port too large",                      kPorts,  "70000",               false},
    {"by one",                                kPorts,  "65536",               false},
    {"the upper one too large",               kPorts,  "1-65536",             false},
    {"the lower one, too",                    kPorts,  "65536-65536",         false},
    {"the last one of many",                  kPorts,  "1,2,3,65536",         false},
    {"ranges that overlap",                   kPorts,  "5-9,7,1-6,7",         true},
    {"zeros that lead",                       kPorts,  "0000000001-0000065535", true},
    {"eleven digits",                         kPorts,  "00000000001",         false},
    {"eleven digits at the end of a range",   kPorts,  "1-00000000002",       false},
    {"a number beyond 32 bits",               kPorts,  "4294967297",          false},
    {"a range without an end",                kPorts,  "1-",                  false},
    {"a range without a beginning",           kPorts,  "-1",                  false},
    {"a dash alone",                          kPorts,  "-",                   false},
    {"three ends",                            kPorts,  "1-2-3",               false},
    {"white space",                           kPorts,  "1, 2",                false},
    {"a plus",                                kPorts,  "+1",                  false},
    {"an item of 31 digits",                  kPorts,  "0000000000000000000000000000001,1", false},
    {"one of 32 is cut where a comma would be", kPorts, "00000000000000000000000000000001,1", false},
    {"no ports",                              kPorts,  "",                    false},
    {"VLANs",                                 kVlans,  "1-4094",              true},
    {"a VLAN too large",                      kVlans,  "4095",                false},
    {"the upper one too large",               kVlans,  "1-4095",              false},
    {"VLAN 0",                                kVlans,  "0",                   false},
    {"a list",                                kVlans,  "1,2,4094",            true},
    {"a port is no VLAN",                     kVlans,  "65535",               false},
    {"no VLANs",                              kVlans,  "",                    false},
    {"an identifier",                         kOid,    "1.3.6.1.4.1",         true},
    {"one number",                            kOid,    "5",                   true},
    {"zero",                                  kOid,    "0",                   true},
    {"a dot first",                           kOid,    ".1",                  false},
    {"a dot last",                            kOid,    "1.",                  false},
    {"two dots",                              kOid,    "1..2",                false},
    {"a dot alone",                           kOid,    ".",                   false},
    {"the largest number",                    kOid,    "1.4294967295",        true},
    {"beyond it",                             kOid,    "4294967296",          false},
    {"ten nines",                             kOid,    "9999999999",          false},
    {"ten digits with zeros that lead",       kOid,    "0000000001",          true},
    {"eleven digits",                         kOid,    "00000000001",         false},
    {"more than 15 digits",                   kOid,    "1.0000000000000001",  false},
    {"a sign",                                kOid,    "1.-3",                false},
    {"a letter",                              kOid,    "1.a",                 false},
    {"white space",                           kOid,    "1.3 ",                false},
    {"a name",                                kOid,    "iso.3",               false},
    {"no identifier",                         kOid,    "",                    false},
};
// clang-format on

TEST(CheckZynBltInType, Values)
{
    GuardedSpace space;
    for (const NetworkCase& c : kCases) {
        SCOPED_TRACE(std::string{c.name} + ", " + c.why + ": " + c.value);
        const std::string expected = c.valid ? "(valid)" : messageOf(c.name);
        EXPECT_EQ(checked(c.name, space.text(c.value)), expected);
        const GuardedBytes bytes{std::string_view{c.value, std::strlen(c.value) + 1}};
        EXPECT_EQ(checked(c.name, reinterpret_cast<const char*>(bytes.data())), expected);
        EXPECT_EQ(plainNetworkType(c.name, c.value), c.valid) << "the plain rules are wrong";
    }
}

TEST(CheckZynBltInType, AllContiguousMasks)
{
    for (int ones = 0; ones <= 32; ++ones) {
        const auto mask = static_cast<uint32_t>(~(0xFFFFFFFFull >> ones));
        for (int flipped = 0; flipped <= 32; ++flipped) {
            const uint32_t bits = flipped == 32 ? mask : mask ^ (1u << flipped);
            const std::string text =
                std::to_string(bits >> 24) + "." + std::to_string(bits >> 16 & 255) + "." +
                std::to_string(bits >> 8 & 255) + "." + std::to_string(bits & 255);
            // A flip keeps it contiguous only at the border of ones and zeros.
            const bool valid = flipped == 32 || flipped == 32 - ones || flipped == 31 - ones;
            EXPECT_EQ(checked(kMask, text.c_str()), valid ? "(valid)" : "Invalid IPv4 mask")
                << text;
        }
    }
}

TEST(CheckZynBltInType, AllNumbersOfARange)
{
    for (unsigned number = 0; number <= 70000; ++number) {
        const std::string text = std::to_string(number);
        const Schema_ExtType* ports = Schema_FoundZynBltInType(kPorts, nullptr);
        const Schema_ExtType* vlans = Schema_FoundZynBltInType(kVlans, nullptr);
        char buffer[32];
        ASSERT_EQ(Schema_checkZynBltInType(ports, text.c_str(), sizeof buffer, buffer),
                  number >= 1 && number <= 65535 ? 1u : 0u);
        ASSERT_EQ(Schema_checkZynBltInType(vlans, text.c_str(), sizeof buffer, buffer),
                  number >= 1 && number <= 4094 ? 1u : 0u);
    }
}

// The longest list has room for every number with a comma.
TEST(CheckZynBltInType, TheLongestLists)
{
    const struct {
        const char* name;
        std::size_t longest;
    } kLists[] = {{kPorts, 393210}, {kVlans, 20470}};
    GuardedSpace space{393300};
    for (const auto& list : kLists) {
        std::string text;
        while (text.size() + 2 <= list.longest) text += "1,";
        text.pop_back();
        EXPECT_EQ(text.size(), list.longest - 1);
        EXPECT_EQ(checked(list.name, space.text(text)), "(valid)");
        EXPECT_EQ(checked(list.name, space.text(text + "1")), "(valid)") << "as long as the limit";
        EXPECT_EQ(checked(list.name, space.text(text + "11")), messageOf(list.name));
        EXPECT_EQ(checked(list.name, space.text(text + ",")), messageOf(list.name));
        EXPECT_TRUE(plainNetworkType(list.name, text + "1"));
        EXPECT_FALSE(plainNetworkType(list.name, text + "11"));
        EXPECT_EQ(checked(list.name, space.text(std::string(list.longest, '1'))),
                  messageOf(list.name));
    }
}

TEST(CheckZynBltInType, HowManyNumbersAnIdentifierHas)
{
    std::string text = "1";
    for (int count = 1; count <= 140; ++count) {
        EXPECT_EQ(checked(kOid, text.c_str()), count <= 128 ? "(valid)" : "Invalid OID") << count;
        text += ".4294967295";
    }
}

TEST(CheckZynBltInType, SentencesAreCutAtEverySize)
{
    for (const auto& type : kTypes) {
        for (uint32_t size = 1; size < 40; ++size)
            EXPECT_EQ(checked(type.name, "?", size), plainCut(type.message, size)) << size;
        EXPECT_EQ(checked(type.name, "?", 0), "(untouched)");
    }
}

TEST(CheckZynBltInType, NullIsTheEmptyValue)
{
    for (const auto& type : kTypes) EXPECT_EQ(checked(type.name, nullptr), type.message);
}

TEST(CheckZynBltInType, WithoutAHandlerEverythingIsValid)
{
    const Schema_ExtType entry{nullptr, nullptr, "any"};
    char buffer[8] = "as is";
    EXPECT_EQ(Schema_checkZynBltInType(&entry, "x", sizeof buffer, buffer), 1u);
    EXPECT_EQ(Schema_checkZynBltInType(&entry, nullptr, sizeof buffer, buffer), 1u);
    EXPECT_EQ(Schema_checkZynBltInType(nullptr, "x", sizeof buffer, buffer), 0u);
    EXPECT_STREQ(buffer, "as is");
}

TEST(CheckZynBltInType, AHandlersWordIsTakenAsItIs)
{
    const Schema_ExtType entry{[](const char* value, uint32_t size, char* buffer) -> uint32_t {
                                   std::snprintf(buffer, size, "own");
                                   return *value == 'y' ? 1 : 0;
                               },
                               nullptr, "own"};
    char buffer[8] = "";
    EXPECT_EQ(Schema_checkZynBltInType(&entry, "y", sizeof buffer, buffer), 1u);
    EXPECT_EQ(Schema_checkZynBltInType(&entry, "n", sizeof buffer, buffer), 0u);
    EXPECT_STREQ(buffer, "own");
}

// Gives a type a namespace for as long as it lives.
class NamespaceForAWhile {
public:
    NamespaceForAWhile(const char* name, const char* namespaceName)
        : name_{name}, namespace_{namespaceName}
    {
        EXPECT_EQ(Schema_ReplaceInnerTypeNS(name, nullptr, namespaceName), XML_RET_OK);
    }
    NamespaceForAWhile(const NamespaceForAWhile&) = delete;
    NamespaceForAWhile& operator=(const NamespaceForAWhile&) = delete;
    ~NamespaceForAWhile()
    {
        EXPECT_EQ(Schema_ReplaceInnerTypeNS(name_, namespace_, nullptr), XML_RET_OK);
    }

private:
    const char* name_;
    const char* namespace_;
};

TEST(FoundZynBltInType, ByNameWithoutANamespace)
{
    const Schema_ExtType* before = nullptr;
    for (const auto& type : kTypes) {
        Schema_ExtType* entry = Schema_FoundZynBltInType(type.name, nullptr);
        ASSERT_NE(entry, nullptr) << type.name;
        EXPECT_STREQ(entry->name, type.name);
        EXPECT_EQ(entry->namespaceName, nullptr);
        EXPECT_NE(entry->handler, nullptr);
        EXPECT_EQ(Schema_FoundZynBltInType(type.name, ""), entry) << "empty and NULL are the same";
        EXPECT_EQ(Schema_FoundZynBltInType(type.name, "urn:x"), nullptr);
        if (before) {
            EXPECT_EQ(entry, before + 1) << "the order of the table";
        }
        before = entry;
    }
}

TEST(FoundZynBltInType, OtherNamesAreNotFound)
{
    for (const char* name :
         {"oid", "Oid", "Ipv6Address", "_ipv6address", "_Ipv6Address ", "PortRange", "_PortRang",
          "_PortRanges", "IPV6_ADDR_PREFI", "_IPV6_ADDR_PREFIX", "string"})
        EXPECT_EQ(Schema_FoundZynBltInType(name, nullptr), nullptr) << name;
    EXPECT_EQ(Schema_FoundZynBltInType("", nullptr), nullptr);
    EXPECT_EQ(Schema_FoundZynBltInType(nullptr, nullptr), nullptr) << "the end is no entry";
    EXPECT_EQ(Schema_FoundZynBltInType(nullptr, ""), nullptr);
}

TEST(FoundZynBltInType, OnlyInItsNamespaceOnceItHasOne)
{
    Schema_ExtType* entry = Schema_FoundZynBltInType(kPorts, nullptr);
    {
        const char name[] = "urn:ports";
        const NamespaceForAWhile owner{kPorts, name};
        EXPECT_EQ(entry->namespaceName, name) << "stored, not copied";
        EXPECT_EQ(Schema_FoundZynBltInType(kPorts, "urn:ports"), entry);
        EXPECT_EQ(Schema_FoundZynBltInType(kPorts, nullptr), nullptr);
        EXPECT_EQ(Schema_FoundZynBltInType(kPorts, ""), nullptr);
        EXPECT_EQ(Schema_FoundZynBltInType(kPorts, "urn:Ports"), nullptr);
        EXPECT_NE(Schema_FoundZynBltInType(kVlans, nullptr), nullptr) << "the others stay";
        EXPECT_EQ(Schema_FoundZynBltInType(kVlans, "urn:ports"), nullptr);
    }
    EXPECT_EQ(Schema_FoundZynBltInType(kPorts, nullptr), entry);
}

TEST(ReplaceInnerTypeNS, Refuses)
{
    EXPECT_EQ(Schema_ReplaceInnerTypeNS(nullptr, nullptr, "urn:x"), XML_RET_EMPTY);
    EXPECT_EQ(Schema_ReplaceInnerTypeNS("", nullptr, "urn:x"), XML_RET_EMPTY);
    EXPECT_EQ(Schema_ReplaceInnerTypeNS("NoSuchType", nullptr, "urn:x"), XML_RET_FAIL);
    EXPECT_EQ(Schema_ReplaceInnerTypeNS(kOid, "urn:y", "urn:x"), XML_RET_FAIL);
    EXPECT_EQ(Schema_FoundZynBltInType(kOid, "urn:x"), nullptr) << "nothing was changed";
    EXPECT_NE(Schema_FoundZynBltInType(kOid, nullptr), nullptr);
}

TEST(ReplaceInnerTypeNS, MovesFromOneToTheNext)
{
    EXPECT_EQ(Schema_ReplaceInnerTypeNS(kOid, "", "urn:a"), XML_RET_OK);
    EXPECT_EQ(Schema_ReplaceInnerTypeNS(kOid, nullptr, "urn:b"), XML_RET_FAIL) << "it has moved";
    EXPECT_EQ(Schema_ReplaceInnerTypeNS(kOid, "urn:a", "urn:b"), XML_RET_OK);
    EXPECT_EQ(Schema_FoundZynBltInType(kOid, "urn:a"), nullptr);
    EXPECT_NE(Schema_FoundZynBltInType(kOid, "urn:b"), nullptr);
    EXPECT_EQ(Schema_ReplaceInnerTypeNS(kOid, "urn:b", ""), XML_RET_OK) << "and back to none";
    EXPECT_NE(Schema_FoundZynBltInType(kOid, nullptr), nullptr);
    EXPECT_EQ(Schema_ReplaceInnerTypeNS(kOid, nullptr, nullptr), XML_RET_OK);
    EXPECT_EQ(Schema_FoundZynBltInType(kOid, nullptr)->namespaceName, nullptr);
}

}  // namespace
