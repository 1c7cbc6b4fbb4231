// The example's records one by one: a valid document with one change, and what is said of it.
#include "examples/interfaces/interfaces_schema.h"
#include "netxml/netxml.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

namespace {

struct ChangeCase {
    const char* why;
    const char* from;  // its first place in the document is replaced
    const char* to;
    unsigned code;
    const char* sentence;  // what it ends in
};

// clang-format off
const ChangeCase kSwitchChanges[] = {
    // simple types and their facets
    {"enumeration of numbers, by value", "<speed>100<", "<speed>0100<", 0, ""},
    {"enumeration of numbers", "<speed>100<", "<speed>101<", 3,
     "The value does not match the enumeration."},
    {"enumeration of texts", "<duplex>auto<", "<duplex>Auto<", 3,
     "The value does not match the enumeration."},
    {"minInclusive", "<mtu>1600<", "<mtu>68<", 0, ""},
    {"below minInclusive", "<mtu>1600<", "<mtu>67<", 3,
     "The value must be greater than or equal to 68."},
    {"above maxInclusive", "<mtu>9216<", "<mtu>9217<", 3,
     "The value must be less than or equal to 9216."},
    {"not even the base type", "<mtu>1600<", "<mtu>-1600<", 3,
     "-1600 is an invalid value of unsignedShort type value."},
    {"minExclusive", "<access>10<", "<access>0<", 3, "The value must be greater than 0."},
    {"maxExclusive", "<access>10<", "<access>4095<", 3, "The value must be less than 4095."},
    {"minExclusive of a negative number", "<temperatureLimit>55<", "<temperatureLimit>-40<", 0, ""},
    {"at minExclusive", "<temperatureLimit>55<", "<temperatureLimit>-41<", 3,
     "The value must be greater than -41."},
    {"totalDigits", "<assetNumber>104233<", "<assetNumber>4233<", 3,
     "The total digit length must be equal to 6."},
    {"length", "<mac>00:1b:21:3c:9d:01<", "<mac>00:1b:21:3c:9d<", 3,
     "The length must be equal to 17."},
    {"minLength", "<engineId>80001f8880e9630000d61ff449<", "<engineId>80001f88<", 3,
     "The length must be greater than or equal to 10."},
    {"minLength of the base's base", "<hostname>acc-b2-07<", "<hostname><", 3,
     "The length must be greater than or equal to 1."},
    {"pattern, from the first character", "<hostname>acc", "<hostname>-acc", 3,
     "The value does not match the regular expression."},
    {"pattern, to the last character", "<member>xe0-1-0<", "<member>xe0-1-0a<", 3,
     "The value does not match the regular expression."},
    {"fractionDigits passes always", "<weight>100<", "<weight>099<", 0, ""},
    {"duration", "<interval>P0Y0M0DT0H1M4S<", "<interval>P0Y0M1DT0H0M0S<", 3,
     "The value must be less than P0Y0M1DT0H0M0S."},
    {"date", "<installed>2021-06-14<", "<installed>1989-12-31<", 3,
     "The value must be greater than or equal to 1990-01-01."},
    {"month of a year", "<certificateUntil>2026-06<", "<certificateUntil>2026-13<", 3,
     "2026-13 is an invalid value of gYearMonth type value."},
    {"language", "<language>en-gb<", "<language>en-GB<", 3,
     "en-GB is an invalid value of NOTATION type value."},
    {"a URI, which has one colon at most", "docs.example.net", "docs.example.net:8443", 3,
     "https://docs.example.net:8443 is an invalid value of anyURI type value."},
    {"a qualified name has no colon", "<profile>access-switch<", "<profile>a:b<", 3,
     "a:b is an invalid value of QName type value."},
    {"time", "<reboot>03:30:00<", "<reboot>24:00:00<", 3,
     "24:00:00 is an invalid value of time type value."},
    // network types and unions
    {"object identifier", "<include>1.3.6.1.2.1<", "<include>1.3..6<", 3, "Invalid OID"},
    {"mask", "<mask>255.255.255.128<", "<mask>255.255.255.129<", 3, "Invalid IPv4 mask"},
    {"IPv6 address", "<address>2001:db8:0:99::77<", "<address>2001:db8::99::77<", 3,
     "Invalid IPv6"},
    {"IPv6 prefix", "<prefix>2001:db8:0:99::/64<", "<prefix>2001:db8:0:99::/129<", 3,
     "Invalid IPv6 prefix"},
    {"VLAN ranges", "<allowed>10,30,99<", "<allowed>10,30-20<", 3, "Invalid VlanRange"},
    {"port ranges", "<ports>161-162<", "<ports>161-65536<", 3, "Invalid PortRange"},
    {"a member of a union", "<protocol>tcp<", "<protocol>255<", 0, ""},
    {"no member of a union", "<protocol>tcp<", "<protocol>256<", 3,
     "256 does not match any member of union"},
    {"no member of a union in a union", "<nextHop>192.0.2.1<", "<nextHop>192.0.2.256<", 3,
     "192.0.2.256 does not match any member of union"},
    {"no member of a union below an extension", ">192.0.2.123<", ">192.0.2<", 3,
     "192.0.2 does not match any member of union"},
    // content
    {"a sequence in another order", "<assetNumber>104233</assetNumber>", "<language>de</language>",
     6, "under element '/network/device[1]"},
    {"a nested sequence that has begun", "<room>2.117</room>", "", 6,
     "under element '/network/device[1]/location[1]"},
    {"an all group twice", "<offset>3600</offset>", "<summerTime>1</summerTime>", 5,
     "The number of occurrences of element '/network/clock[1]/summerTime' is invalid."},
    {"an all group without what it needs", "<timeZone>Europe-Berlin</timeZone>", "", 1,
     "Expecting element 'urn:example:network':'timeZone' under element '/network/clock[1]'."},
    {"one more than maxOccurs",
     "<alarm direction=\"in\">90<", "<alarm direction=\"in\">90</alarm><alarm direction=\"in\">90<",
     6, "under element '/network/interfaces[1]/ethernet[23]"},
    {"both alternatives of a choice", "<dhcp/>", "<dhcp/><dhcp/>", 6,
     "under element '/network/interfaces[1]/vlanInterface[2]/ipv4[1]"},
    {"no alternative of a choice", "<dhcp/>", "<any/>", 11,
     "'/network/interfaces[1]/vlanInterface[2]/ipv4[1]'."},
    {"a choice as often as one likes", "<console/>", "<console/><console/><file>x</file>", 0, ""},
    {"a fixed text", "<encapsulation>dot1q<", "<encapsulation>qinq<", 3, "must equal dot1q"},
    {"nillable, with a text", "<hostKey/>", "<hostKey>=</hostKey>", 3,
     "= is an invalid value of base64Binary type value."},
    {"text in a simple type only", "<model>EX-2400-24P<", "<model>EX<b/><", 6,
     "under element '/network/device[1]/model[1]"},
    {"mixed content still has its elements", "<code>ge0-0-6</code>", "<mtu/>", 6,
     "under element '/network/note[1]"},
    {"recursion", "<emphasis>on purpose", "<emphasis><see>x</see>", 3,
     "x is an invalid value of anyURI type value."},
    // derivation
    {"an extension of an extension: the base first", "<member>xe0-1-0<", "<mac/><member>xe0-1-0<",
     1, "'member' under element '/network/interfaces[1]/aggregate[1]'."},
    {"a restriction leaves elements out", "<description>Router ID</description>", "<mtu>1500</mtu>",
     6, "under element '/network/interfaces[1]/loopback[1]"},
    {"a restriction takes an attribute away", "<loopback name=\"lo0\"",
     "<loopback name=\"lo0\" slot=\"1\"", 7,
     "Unexpected attribute '':'slot' of element '/network/interfaces[1]/loopback[1]'."},
    {"a restriction of simple content", "<alarm direction=\"in\">90<",
     "<alarm direction=\"in\">49<", 3, "The value must be greater than or equal to 50."},
    {"an attribute from the base of simple content", "<alarm direction=\"in\">", "<alarm>", 2,
     "should have an attribute 'urn:example:network':'direction'."},
    {"an extension of an extension of simple content", "severity=\"warning\"",
     "severity=\"warning\" prefer=\"yes\"", 4, "yes is an invalid value of boolean type value."},
    // substitution
    {"the abstract head itself", "<vlanInterface name=\"vlan30\">",
     "<interface name=\"vlan30\"/><vlanInterface name=\"vlan30\">", 6,
     "Unexpected element 'urn:example:network':'interface' under element "
     "'/network/interfaces[1]"},
    {"a substitute of another head", "<established/>", "<q:tunnel/>", 6,
     "'tunnel' under element "
     "'/network/accessLists[1]/accessList[2]/group[1]/group[1]/rule[1]/match[1]"},
    {"a substitute from the other namespace", "<q:dscp>af21<", "<q:dscp>64<", 3,
     "64 does not match any member of union"},
    // wildcards
    {"strict needs a declaration", "</extensions>", "<q:other/></extensions>", 6,
     "under element '/network/extensions[1]"},
    {"strict applies it", "<load>12.5<", "<load>12.55<", 3,
     "The value does not match the regular expression."},
    {"lax applies a declaration, too", "<rate xmlns=\"\">2000000<", "<rate xmlns=\"\">fast<", 3,
     "fast is an invalid value of unsignedLong type value."},
    {"other excludes the own namespace", "<led:panel xmlns:led=\"urn:acme:led\" mode=\"bright\"/>",
     "<note/>", 6, "under element '/network/interfaces[1]/vlanInterface[1]/vendorData[1]"},
    {"other excludes none", "<led:panel xmlns:led=\"urn:acme:led\" mode=\"bright\"/>",
     "<panel xmlns=\"\"/>", 6,
     "under element '/network/interfaces[1]/vlanInterface[1]/vendorData[1]"},
    {"a lax attribute wildcard applies a declaration", "q:priority=\"46\"", "q:priority=\"64\"", 4,
     "The value must be less than 64."},
    {"one of two namespaces", "q:priority=\"46\"", "xsi:nil=\"x\"", 0, ""},
    {"neither of two namespaces", "q:priority=\"46\"", "n:tag=\"x\"", 7,
     "Unexpected attribute 'urn:example:network':'tag' of element '/network/vlans[1]/vlan[2]'."},
    // attributes and forms
    {"fixed", "version=\"1.2\"", "version=\"1.3\"", 4, "must equal 1.2"},
    {"required", "version=\"1.2\"", "", 2,
     "should have an attribute 'urn:example:network':'version'."},
    {"in a group in a group", "changedAt=\"2024-03-11T08:15:00Z\"", "changedAt=\"2024-03-11\"", 4,
     "2024-03-11 is an invalid value of datetime type value."},
    {"of an inner group alone", "<device changedBy=\"jmeier\">", "<device xml:lang=\"en\">", 7,
     "Unexpected attribute 'http://www.w3.org/XML/1998/namespace':'lang' of element "
     "'/network/device[1]'."},
    {"a reference is qualified", "n:tag=\"oob\"", "tag=\"oob\"", 7,
     "Unexpected attribute '':'tag' of element '/network/interfaces[1]/vlanInterface[1]'."},
    {"the value of a reference", "n:tag=\"oob\"", "n:tag=\"o b\"", 4,
     "The value does not match the regular expression."},
    {"xml:lang", "xml:lang=\"zh-cn\"", "xml:lang=\"zh-CN\"", 4,
     "zh-CN is an invalid value of NOTATION type value."},
    {"unqualified among qualified ones", "<q:shaper name=\"uplink\">",
     "<q:shaper q:name=\"uplink\">", 2,
     "should have an attribute 'urn:example:network:qos':'name'."},
    {"unqualified attributes have no namespace", "<view name=\"all\">", "<view n:name=\"all\">", 2,
     "should have an attribute 'urn:example:network':'name'."},
    {"a qualified attribute", "q:color=\"red\"", "color=\"red\"", 7,
     "Unexpected attribute '':'color' of element '/network/extensions[1]/shaper[1]/queue[1]'."},
    {"an unqualified element", "<burst xmlns=\"\">", "<burst xmlns=\"urn:example:network:qos\">", 1,
     "Expecting element 'urn:example:network:qos':'queue' under element "
     "'/network/extensions[1]/shaper[1]'."},
    {"a qualified element among unqualified ones", "<q:limit>900000000</q:limit>",
     "<limit>900000000</limit>", 6, "under element '/network/extensions[1]/shaper[1]/queue[2]"},
};
// clang-format on

class InterfacesRules : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_EQ(Schema_InitRoot(&root_), XML_RET_OK);
        ASSERT_EQ(interfaces_schema_register(&root_), XML_RET_OK);
        std::ifstream file{EXAMPLE_DIRECTORY "/documents/valid-02-access-switch.xml"};
        std::ostringstream text;
        text << file.rdbuf();
        document_ = text.str();
    }
    void TearDown() override
    {
        interfaces_schema_deregister(&root_);
        Schema_ExitRoot(&root_);
    }
    // The code, and in `sentence` what it says.
    unsigned validate(const std::string& document, std::string& sentence) const
    {
        char error[256] = "";
        XML_DOM_Node* tree =
            XML_DOM_BuildTreeByMem(reinterpret_cast<const uint8_t*>(document.data()),
                                   static_cast<uint32_t>(document.size()), sizeof error, error);
        EXPECT_NE(tree, nullptr) << error;
        Schema_ValidateResult result{};
        EXPECT_EQ(Schema_ValidateXml(tree, &root_, &result), XML_RET_OK);
        char buffer[2048] = "";
        EXPECT_EQ(Schema_GetErrorDesc(&result, sizeof buffer, buffer), XML_RET_OK);
        sentence = buffer;
        XML_DOM_DelNode(tree);
        return result.code;
    }

    Schema_Root root_;
    std::string document_;
};

TEST_F(InterfacesRules, EachRecordSaysWhatTheSchemaSays)
{
    for (const ChangeCase& c : kSwitchChanges) {
        std::string document = document_;
        const std::size_t at = document.find(c.from);
        if (at == std::string::npos) {
            ADD_FAILURE() << c.why << ": " << c.from << " is not in the document";
            continue;
        }
        document.replace(at, std::string_view{c.from}.size(), c.to);
        std::string sentence;
        EXPECT_EQ(validate(document, sentence), c.code) << c.why << ": " << sentence;
        EXPECT_TRUE(sentence.ends_with(c.sentence)) << c.why << ": " << sentence;
    }
}

}  // namespace
