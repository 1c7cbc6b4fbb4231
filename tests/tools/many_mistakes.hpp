// Documents of the example schema with several mistakes, and what is said of each.
#pragma once

namespace netxml::testing {

#define NETWORK "<network xmlns='urn:example:network' version='1.2'>"
#define DEVICE "<device><hostname>a</hostname><model>m</model></device>"
#define END "</network>"

// A document, and what is wrong with it: "line:column violation sentence".
struct ManyMistakes {
    const char* why;
    const char* text;
    const char* found;
};

// clang-format off
inline const ManyMistakes kManyMistakes[] = {
    {"values of siblings",
     NETWORK DEVICE "\n"
     "<vlans>\n"
     "<vlan id='1'><name>?</name></vlan>\n"
     "<vlan id='2'><name>b</name><description/></vlan>\n"
     "<vlan id='3'><name/></vlan></vlans>\n"
     "<accessLists><accessList name='a'>\n"
     "<rule number='1'><action>go</action><match><any/></match></rule></accessList></accessLists>" END,
     "3:14 3 The value of element '/network/vlans[1]/vlan[1]/name[1]' is invalid. The value does not match the regular expression.\n"
     "5:14 3 The value of element '/network/vlans[1]/vlan[3]/name[1]' is invalid. The length must be greater than or equal to 1.\n"
     "7:18 3 The value of element '/network/accessLists[1]/accessList[1]/rule[1]/action[1]' is invalid. The value does not match the enumeration.\n"},
    {"each kind of attribute violation",
     NETWORK DEVICE "\n"
     "<vlans>\n"
     "<vlan><name>a</name></vlan>\n"
     "<vlan id='4095'><name>b</name></vlan>\n"
     "<vlan id='5' color='red'><name>c</name></vlan></vlans>" END,
     "3:1 2 The element '/network/vlans[1]/vlan[1]' should have an attribute 'urn:example:network':'id'.\n"
     "4:1 4 The value of attribute '':'id' for element '/network/vlans[1]/vlan[2]' is invalid. The value must be less than 4095.\n"
     "5:1 7 Unexpected attribute '':'color' of element '/network/vlans[1]/vlan[3]'.\n"},
    {"all attributes of an element",
     NETWORK "\n"
     "<device changedBy='?' changedAt='now' size='1' weight='2'><hostname>a</hostname><model>m</model></device>" END,
     "2:1 4 The value of attribute '':'changedBy' for element '/network/device[1]' is invalid. The value does not match the regular expression.\n"
     "2:1 4 The value of attribute '':'changedAt' for element '/network/device[1]' is invalid. now is an invalid value of datetime type value.\n"
     "2:1 7 Unexpected attribute '':'size' of element '/network/device[1]'.\n"
     "2:1 7 Unexpected attribute '':'weight' of element '/network/device[1]'.\n"},
    {"an attribute is missing and another one wrong",
     NETWORK DEVICE "\n"
     "<routing><ospf process='x'>\n"
     "<area name='a'><prefix>10.0.0.0/8</prefix></area></ospf></routing>" END,
     "2:10 4 The value of attribute '':'process' for element '/network/routing[1]/ospf[1]' is invalid. x is an invalid value of unsignedShort type value.\n"
     "3:1 2 The element '/network/routing[1]/ospf[1]/area[1]' should have an attribute 'urn:example:network':'id'.\n"
     "3:1 7 Unexpected attribute '':'name' of element '/network/routing[1]/ospf[1]/area[1]'.\n"},
    {"attributes around a violation are seen",
     NETWORK DEVICE "\n"
     "<vlans>\n"
     "<vlan id='0'><name>a</name>\n"
     "<isolated>x</isolated></vlan></vlans>" END,
     "3:1 4 The value of attribute '':'id' for element '/network/vlans[1]/vlan[1]' is invalid. The value must be greater than 0.\n"
     "4:1 9 Element '/network/vlans[1]/vlan[1]/isolated[1]' can not have a textual child element.\n"},
    {"unknown elements and what stands between them",
     NETWORK DEVICE "\n"
     "<clocks/>\n"
     "<vlans>\n"
     "<vlan id='x'><name>a</name></vlan>\n"
     "<van/></vlans>\n"
     "<note>n</note>\n"
     "<rest/>" END,
     "2:1 6 Unexpected element 'urn:example:network':'clocks' under element '/network\n"
     "4:1 4 The value of attribute '':'id' for element '/network/vlans[1]/vlan[1]' is invalid. x is an invalid value of unsignedShort type value.\n"
     "5:1 6 Unexpected element 'urn:example:network':'van' under element '/network/vlans[1]\n"
     "7:1 6 Unexpected element 'urn:example:network':'rest' under element '/network\n"},
    {"a misspelt element that is required is one mistake",
     NETWORK "\n"
     "<device><hostnme>a</hostnme><model>m</model></device>\n"
     "<vlans>\n"
     "<vlan id='1'><nam>a</nam></vlan></vlans>" END,
     "2:1 1 Expecting element 'urn:example:network':'hostname' under element '/network/device[1]'.\n"
     "4:1 1 Expecting element 'urn:example:network':'name' under element '/network/vlans[1]/vlan[1]'.\n"},
    {"an element is missing, and another one is unknown",
     NETWORK "\n"
     "<device><hostname>a</hostname>\n"
     "<location><site>s</site><room>1</room>\n"
     "<desk/></location>\n"
     "<weight/></device>" END,
     "2:1 1 Expecting element 'urn:example:network':'model' under element '/network/device[1]'.\n"
     "4:1 6 Unexpected element 'urn:example:network':'desk' under element '/network/device[1]/location[1]\n"
     "5:1 6 Unexpected element 'urn:example:network':'weight' under element '/network/device[1]\n"},
    {"elements in another order are one mistake",
     NETWORK "\n"
     "<device><model>m</model><hostname>a</hostname>\n"
     "<language>xx</language></device>\n"
     "<interfaces/>\n"
     "<vlans>\n"
     "<vlan id='9'/></vlans>" END,
     "2:1 1 Expecting element 'urn:example:network':'hostname' under element '/network/device[1]'.\n"
     "3:1 3 The value of element '/network/device[1]/language[1]' is invalid. xx is an invalid value of NOTATION type value.\n"
     "5:1 6 Unexpected element 'urn:example:network':'vlans' under element '/network\n"
     "6:1 5 The number of occurrences of element '/network/vlans[1]/vlan[1]/name' is invalid.\n"},
    {"too many and too few",
     NETWORK "<device><hostname>a</hostname><model>m</model>\n"
     "<contact role='owner'>1</contact><contact role='owner'>2</contact><contact role='owner'>3</contact>\n"
     "<contact role='owner'>4</contact>\n"
     "<contact role='boss'>5</contact></device>\n"
     "<interfaces>\n"
     "<loopback name='lo0'><ipv4>\n"
     "<address><ip>1.2.3.4</ip></address>\n"
     "<address><ip>1.2.3</ip><mask>255.0.255.0</mask></address></ipv4></loopback></interfaces>" END,
     "3:1 6 Unexpected element 'urn:example:network':'contact' under element '/network/device[1]\n"
     "4:1 4 The value of attribute '':'role' for element '/network/device[1]/contact[5]' is invalid. The value does not match the enumeration.\n"
     "7:1 5 The number of occurrences of element '/network/interfaces[1]/loopback[1]/ipv4[1]/address[1]/mask' is invalid.\n"
     "8:10 3 The value of element '/network/interfaces[1]/loopback[1]/ipv4[1]/address[2]/ip[1]' is invalid. The value does not match the regular expression.\n"
     "8:24 3 The value of element '/network/interfaces[1]/loopback[1]/ipv4[1]/address[2]/mask[1]' is invalid. Invalid IPv4 mask\n"},
    {"an all group",
     NETWORK DEVICE "\n"
     "<clock><offset>x</offset>\n"
     "<summerTime>maybe</summerTime></clock>\n"
     "<management><ntp>\n"
     "<server>1.2.3</server>\n"
     "<interval>P1D</interval></ntp></management>" END,
     "2:1 1 Expecting element 'urn:example:network':'timeZone' under element '/network/clock[1]'.\n"
     "2:8 3 The value of element '/network/clock[1]/offset[1]' is invalid. x is an invalid value of int type value.\n"
     "3:1 3 The value of element '/network/clock[1]/summerTime[1]' is invalid. maybe is an invalid value of boolean type value.\n"
     "5:1 3 The value of element '/network/management[1]/ntp[1]/server[1]' is invalid. 1.2.3 does not match any member of union\n"
     "6:1 3 The value of element '/network/management[1]/ntp[1]/interval[1]' is invalid. P1D is an invalid value of duration type value.\n"},
    {"an element twice in an all group",
     NETWORK DEVICE "\n"
     "<clock><timeZone>a</timeZone><offset>1</offset>\n"
     "<timeZone>?</timeZone></clock>\n"
     "<vlans>text</vlans>" END,
     "2:1 5 The number of occurrences of element '/network/clock[1]/timeZone' is invalid.\n"
     "3:1 3 The value of element '/network/clock[1]/timeZone[2]' is invalid. The value does not match the regular expression.\n"
     "4:1 9 Element '/network/vlans[1]' can not have a textual child element.\n"},
    {"extensions that nobody knows",
     NETWORK DEVICE "\n"
     "<extensions><q:shape xmlns:q='urn:example:network:qos' name='a'/>\n"
     "<q:shaper xmlns:q='urn:example:network:qos' name='?'>\n"
     "<rate xmlns=''>fast</rate></q:shaper>\n"
     "<q:meter xmlns:q='urn:example:network:qos'/></extensions>" END,
     "2:1 8 The child elements of '/network/extensions[1]' are invalid.\n"
     "3:1 5 The number of occurrences of element '/network/extensions[1]/shaper[1]/queue' is invalid.\n"
     "3:1 4 The value of attribute '':'name' for element '/network/extensions[1]/shaper[1]' is invalid. The value does not match the regular expression.\n"
     "4:1 3 The value of element '/network/extensions[1]/shaper[1]/rate[1]' is invalid. fast is an invalid value of unsignedLong type value.\n"
     "5:1 6 Unexpected element 'urn:example:network:qos':'meter' under element '/network/extensions[1]\n"},
    {"text where there may be none, and what it hides",
     NETWORK DEVICE "\n"
     "<vlans>some text\n"
     "<vlan id='1'>more<nme>a</nme></vlan>\n"
     "<vlan id='0'><name>b</name></vlan></vlans>\n"
     "<clock>now</clock>" END,
     "2:1 9 Element '/network/vlans[1]' can not have a textual child element.\n"
     "3:1 9 Element '/network/vlans[1]/vlan[1]' can not have a textual child element.\n"
     "3:1 1 Expecting element 'urn:example:network':'name' under element '/network/vlans[1]/vlan[1]'.\n"
     "4:1 4 The value of attribute '':'id' for element '/network/vlans[1]/vlan[2]' is invalid. The value must be greater than 0.\n"
     "5:1 6 Unexpected element 'urn:example:network':'clock' under element '/network\n"
     "5:1 9 Element '/network/clock[1]' can not have a textual child element.\n"
     "5:1 1 Expecting element 'urn:example:network':'timeZone' under element '/network/clock[1]'.\n"},
    {"elements where there may be none",
     NETWORK DEVICE "\n"
     "<vlans>\n"
     "<vlan id='1'><name>a</name>\n"
     "<isolated by='me'><port/><port/></isolated></vlan>\n"
     "<vlan id='2'><name>\n"
     "<b/><i/></name></vlan></vlans>" END,
     "4:1 10 Element '/network/vlans[1]/vlan[1]/isolated[1]' can not have a child element.\n"
     "4:1 7 Unexpected attribute '':'by' of element '/network/vlans[1]/vlan[1]/isolated[1]'.\n"
     "6:1 6 Unexpected element 'urn:example:network':'b' under element '/network/vlans[1]/vlan[2]/name[1]\n"},
    {"no condition, and conditions that are wrong",
     NETWORK DEVICE "\n"
     "<accessLists><accessList name='a'>\n"
     "<rule number='1'><action>permit</action><match/></rule>\n"
     "<rule number='2'><action>permit</action><match><any/><any/></match></rule>\n"
     "<rule number='3'><action>permit</action><match><anny/></match></rule>\n"
     "<rule number='0'><action>permit</action><match><protocol>x</protocol><established/></match></rule></accessList></accessLists>" END,
     "3:41 11 Required child elements are missing for element '/network/accessLists[1]/accessList[1]/rule[1]/match[1]'.\n"
     "4:54 6 Unexpected element 'urn:example:network':'any' under element '/network/accessLists[1]/accessList[1]/rule[2]/match[1]\n"
     "5:41 11 Required child elements are missing for element '/network/accessLists[1]/accessList[1]/rule[3]/match[1]'.\n"
     "6:1 4 The value of attribute '':'number' for element '/network/accessLists[1]/accessList[1]/rule[4]' is invalid. 0 is an invalid value of positiveInteger type value.\n"
     "6:48 3 The value of element '/network/accessLists[1]/accessList[1]/rule[4]/match[1]/protocol[1]' is invalid. x does not match any member of union\n"},
    {"groups in groups",
     NETWORK DEVICE "\n"
     "<accessLists><accessList name='a'><group><title>t</title><group><title>u</title>\n"
     "<rule number='1'><action>no</action><match><any/></match></rule>\n"
     "<group><rule number='2'/></group></group>\n"
     "<group/></group>\n"
     "</accessList>\n"
     "<accessList/></accessLists>" END,
     "3:18 3 The value of element '/network/accessLists[1]/accessList[1]/group[1]/group[1]/rule[1]/action[1]' is invalid. The value does not match the enumeration.\n"
     "4:1 1 Expecting element 'urn:example:network':'title' under element '/network/accessLists[1]/accessList[1]/group[1]/group[1]/group[1]'.\n"
     "4:8 5 The number of occurrences of element '/network/accessLists[1]/accessList[1]/group[1]/group[1]/group[1]/rule[1]/action' is invalid.\n"
     "5:1 5 The number of occurrences of element '/network/accessLists[1]/accessList[1]/group[1]/group[2]/title' is invalid.\n"
     "7:1 11 Required child elements are missing for element '/network/accessLists[1]/accessList[2]'.\n"
     "7:1 2 The element '/network/accessLists[1]/accessList[2]' should have an attribute 'urn:example:network':'name'.\n"},
    {"substitutes of an abstract head",
     NETWORK DEVICE "\n"
     "<interfaces>\n"
     "<ethernet name='ge0'><mtu>1</mtu><mac>0</mac></ethernet>\n"
     "<bridge name='br0'/>\n"
     "<loopback name='lo0' slot='1'><mtu>1500</mtu></loopback>\n"
     "<aggregate name='ae0'/></interfaces>" END,
     "3:22 3 The value of element '/network/interfaces[1]/ethernet[1]/mtu[1]' is invalid. The value must be greater than or equal to 68.\n"
     "3:34 3 The value of element '/network/interfaces[1]/ethernet[1]/mac[1]' is invalid. The length must be equal to 17.\n"
     "4:1 6 Unexpected element 'urn:example:network':'bridge' under element '/network/interfaces[1]\n"
     "5:1 7 Unexpected attribute '':'slot' of element '/network/interfaces[1]/loopback[1]'.\n"
     "5:31 6 Unexpected element 'urn:example:network':'mtu' under element '/network/interfaces[1]/loopback[1]\n"
     "6:1 5 The number of occurrences of element '/network/interfaces[1]/aggregate[1]/member' is invalid.\n"},
    {"substitutes in another namespace",
     NETWORK DEVICE "\n"
     "<interfaces xmlns:q='urn:example:network:qos'>\n"
     "<q:tunnel name='tun0'><mtu>1</mtu>\n"
     "<source xmlns=''>x</source><destination xmlns=''>1.2.3.4</destination></q:tunnel>\n"
     "<tunnel name='tun1'/></interfaces>" END,
     "3:23 3 The value of element '/network/interfaces[1]/tunnel[1]/mtu[1]' is invalid. The value must be greater than or equal to 68.\n"
     "4:1 3 The value of element '/network/interfaces[1]/tunnel[1]/source[1]' is invalid. x does not match any member of union\n"
     "5:1 6 Unexpected element 'urn:example:network':'tunnel' under element '/network/interfaces[1]\n"},
    {"the bases of an extension",
     NETWORK DEVICE "\n"
     "<interfaces>\n"
     "<aggregate name='ae0'><description>d</description><mtu>0</mtu>\n"
     "<speed>1</speed>\n"
     "<member>x</member>\n"
     "<minimumLinks>-1</minimumLinks></aggregate></interfaces>" END,
     "3:51 3 The value of element '/network/interfaces[1]/aggregate[1]/mtu[1]' is invalid. The value must be greater than or equal to 68.\n"
     "4:1 3 The value of element '/network/interfaces[1]/aggregate[1]/speed[1]' is invalid. The value does not match the enumeration.\n"
     "5:1 3 The value of element '/network/interfaces[1]/aggregate[1]/member[1]' is invalid. The value does not match the regular expression.\n"
     "6:1 3 The value of element '/network/interfaces[1]/aggregate[1]/minimumLinks[1]' is invalid. -1 is an invalid value of unsignedByte type value.\n"},
    {"simple content: values and attributes",
     NETWORK DEVICE "\n"
     "<management><syslog>\n"
     "<host severity='loud' port='x'>nowhere</host>\n"
     "<host>1.2.3.4</host>\n"
     "<file>f</file>\n"
     "<files/></syslog></management>" END,
     "3:1 3 The value of element '/network/management[1]/syslog[1]/host[1]' is invalid. nowhere does not match any member of union\n"
     "3:1 4 The value of attribute '':'severity' for element '/network/management[1]/syslog[1]/host[1]' is invalid. The value does not match the enumeration.\n"
     "3:1 4 The value of attribute '':'port' for element '/network/management[1]/syslog[1]/host[1]' is invalid. x is an invalid value of unsignedShort type value.\n"
     "6:1 6 Unexpected element 'urn:example:network':'files' under element '/network/management[1]/syslog[1]\n"},
    {"simple types: attributes, value and elements",
     NETWORK DEVICE "\n"
     "<vlans>\n"
     "<vlan id='1'><name a='1' xml:lang='xx'>?</name></vlan>\n"
     "<vlan id='2'><name b='1'><c/></name></vlan>\n"
     "<vlan id='3'><name xml:lang='d-'>a</name></vlan></vlans>" END,
     "3:14 7 Unexpected attribute '':'a' of element '/network/vlans[1]/vlan[1]/name[1]'.\n"
     "3:14 4 The value of attribute 'http://www.w3.org/XML/1998/namespace':'lang' for element '/network/vlans[1]/vlan[1]/name[1]' is invalid. xx is an invalid value of NOTATION type value.\n"
     "3:14 3 The value of element '/network/vlans[1]/vlan[1]/name[1]' is invalid. The value does not match the regular expression.\n"
     "4:14 7 Unexpected attribute '':'b' of element '/network/vlans[1]/vlan[2]/name[1]'.\n"
     "4:26 6 Unexpected element 'urn:example:network':'c' under element '/network/vlans[1]/vlan[2]/name[1]\n"
     "5:14 4 The value of attribute 'http://www.w3.org/XML/1998/namespace':'lang' for element '/network/vlans[1]/vlan[3]/name[1]' is invalid. d- is not a valid value for http://www.w3.org/XML/1998/namespace:lang\n"},
    {"mixed content",
     NETWORK DEVICE "\n"
     "<note>a <code>b</code> <see>c</see>\n"
     "<emphasis tag='1'>d <emphasis><see/></emphasis></emphasis>\n"
     "<bold>e</bold></note>\n"
     "<note xml:lang='xx'>f</note>" END,
     "2:24 3 The value of element '/network/note[1]/see[1]' is invalid. c is an invalid value of anyURI type value.\n"
     "3:1 7 Unexpected attribute '':'tag' of element '/network/note[1]/emphasis[1]'.\n"
     "3:31 3 The value of element '/network/note[1]/emphasis[1]/emphasis[1]/see[1]' is invalid. anyURI cannot be empty.\n"
     "4:1 6 Unexpected element 'urn:example:network':'bold' under element '/network/note[1]\n"
     "5:1 4 The value of attribute 'http://www.w3.org/XML/1998/namespace':'lang' for element '/network/note[2]' is invalid. xx is an invalid value of NOTATION type value.\n"},
    {"wildcards: skipped, lax and strict",
     NETWORK DEVICE "\n"
     "<interfaces>\n"
     "<ethernet name='ge0'><vendorData>\n"
     "<opaque><mtu>x</mtu></opaque>\n"
     "<q:shaper xmlns:q='urn:example:network:qos'/>\n"
     "<x:y xmlns:x='urn:x'/>\n"
     "<mtu/></vendorData></ethernet></interfaces>" END,
     "3:22 2 The element '/network/interfaces[1]/ethernet[1]/vendorData[1]' should have an attribute 'urn:example:network':'vendor'.\n"
     "5:1 5 The number of occurrences of element '/network/interfaces[1]/ethernet[1]/vendorData[1]/shaper[1]/rate' is invalid.\n"
     "5:1 2 The element '/network/interfaces[1]/ethernet[1]/vendorData[1]/shaper[1]' should have an attribute 'urn:example:network:qos':'name'.\n"
     "7:1 6 Unexpected element 'urn:example:network':'mtu' under element '/network/interfaces[1]/ethernet[1]/vendorData[1]\n"},
    {"elements in no namespace",
     NETWORK "\n"
     "<device xmlns=''><hostname>?</hostname></device>\n"
     "<vlans>\n"
     "<vlan id='0' xmlns=''/>\n"
     "<vlan id='0'><name>a</name></vlan></vlans>" END,
     "1:1 1 Expecting element 'urn:example:network':'device' under element '/network'.\n"
     "4:1 6 Unexpected element '':'vlan' under element '/network/vlans[1]\n"
     "5:1 4 The value of attribute '':'id' for element '/network/vlans[1]/vlan[2]' is invalid. The value must be greater than 0.\n"},
    {"a local element without a namespace",
     NETWORK DEVICE "\n"
     "<extensions><q:shaper xmlns:q='urn:example:network:qos' name='a'><rate xmlns=''>1</rate>\n"
     "<burst xmlns=''>x</burst>\n"
     "<queue xmlns='' name='a'><weight>200</weight>\n"
     "<limit>1</limit></queue>\n"
     "<q:queue name='b'/></q:shaper></extensions>" END,
     "3:1 3 The value of element '/network/extensions[1]/shaper[1]/burst[1]' is invalid. x is an invalid value of unsignedLong type value.\n"
     "4:26 3 The value of element '/network/extensions[1]/shaper[1]/queue[1]/weight[1]' is invalid. The value must be less than or equal to 100.\n"
     "5:1 6 Unexpected element '':'limit' under element '/network/extensions[1]/shaper[1]/queue[1]\n"
     "6:1 6 Unexpected element 'urn:example:network:qos':'queue' under element '/network/extensions[1]/shaper[1]\n"},
    {"a choice is empty, and its neighbours",
     NETWORK DEVICE "\n"
     "<interfaces>\n"
     "<ethernet name='ge0'><ipv4/>\n"
     "<ipv6><address>x</address></ipv6>\n"
     "<switchPort/></ethernet>\n"
     "<ethernet name='ge1'><switchPort><trunk>\n"
     "<native>0</native></trunk></switchPort></ethernet></interfaces>" END,
     "3:22 11 Required child elements are missing for element '/network/interfaces[1]/ethernet[1]/ipv4[1]'.\n"
     "4:7 3 The value of element '/network/interfaces[1]/ethernet[1]/ipv6[1]/address[1]' is invalid. Invalid IPv6\n"
     "5:1 11 Required child elements are missing for element '/network/interfaces[1]/ethernet[1]/switchPort[1]'.\n"
     "6:34 11 Required child elements are missing for element '/network/interfaces[1]/ethernet[2]/switchPort[1]/trunk[1]'.\n"
     "7:1 3 The value of element '/network/interfaces[1]/ethernet[2]/switchPort[1]/trunk[1]/native[1]' is invalid. The value must be greater than 0.\n"},
    {"simple content with a facet of its own",
     NETWORK DEVICE "\n"
     "<interfaces><ethernet name='ge0'>\n"
     "<alarm direction='up'>200</alarm>\n"
     "<alarm>10</alarm>\n"
     "<alarm direction='in'>60</alarm></ethernet></interfaces>" END,
     "3:1 3 The value of element '/network/interfaces[1]/ethernet[1]/alarm[1]' is invalid. The value must be less than or equal to 100.\n"
     "3:1 4 The value of attribute '':'direction' for element '/network/interfaces[1]/ethernet[1]/alarm[1]' is invalid. The value does not match the enumeration.\n"
     "4:1 3 The value of element '/network/interfaces[1]/ethernet[1]/alarm[2]' is invalid. The value must be greater than or equal to 50.\n"
     "4:1 2 The element '/network/interfaces[1]/ethernet[1]/alarm[2]' should have an attribute 'urn:example:network':'direction'.\n"
     "5:1 6 Unexpected element 'urn:example:network':'alarm' under element '/network/interfaces[1]/ethernet[1]\n"},
    {"the root element is another: nothing else can be said",
     "<config xmlns='urn:example:network'><device/></config>",
     "1:1 12 The root element of XML document is invalid.\n"},
    {"the last element of a document",
     NETWORK DEVICE "\n"
     "<extensions/>\n"
     "<note/>" END,
     "2:1 8 The child elements of '/network/extensions[1]' are invalid.\n"
     "3:1 6 Unexpected element 'urn:example:network':'note' under element '/network\n"},
};
// clang-format on

}  // namespace netxml::testing
