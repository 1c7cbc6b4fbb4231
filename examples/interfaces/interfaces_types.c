/* Simple types: what the texts and the attribute values of the schema may be.
 *
 * A record or array that is not constant gets a built-in type at registration: see the end of the
 * file. */
#include "interfaces_records.h"

/* clang-format off */

/* <xs:simpleType name="OID"> <xs:restriction base="xs:string"/> */
static const Schema_SimpleType* OID_base[1];
const Schema_SimpleType interfaces_OID = {
    .name = "OID", .namespaceName = INTERFACES_NAMESPACE, .members = OID_base, .memberCount = 1};

/* <xs:simpleType name="_Ipv6Address"> <xs:restriction base="xs:string"/> */
static const Schema_SimpleType* Ipv6Address_base[1];
const Schema_SimpleType interfaces_Ipv6Address = {
    .name = "_Ipv6Address", .namespaceName = INTERFACES_NAMESPACE, .members = Ipv6Address_base,
    .memberCount = 1};

/* <xs:simpleType name="IPV6_ADDR_PREFIX"> <xs:restriction base="xs:string"/> */
static const Schema_SimpleType* IPV6_ADDR_PREFIX_base[1];
const Schema_SimpleType interfaces_IPV6_ADDR_PREFIX = {
    .name = "IPV6_ADDR_PREFIX", .namespaceName = INTERFACES_NAMESPACE,
    .members = IPV6_ADDR_PREFIX_base, .memberCount = 1};

/* <xs:simpleType name="_PortRange"> <xs:restriction base="xs:string"/> */
static const Schema_SimpleType* PortRange_base[1];
const Schema_SimpleType interfaces_PortRange = {
    .name = "_PortRange", .namespaceName = INTERFACES_NAMESPACE, .members = PortRange_base,
    .memberCount = 1};

/* <xs:simpleType name="_VlanRange"> <xs:restriction base="xs:string"/> */
static const Schema_SimpleType* VlanRange_base[1];
const Schema_SimpleType interfaces_VlanRange = {
    .name = "_VlanRange", .namespaceName = INTERFACES_NAMESPACE, .members = VlanRange_base,
    .memberCount = 1};

/* <xs:simpleType name="_Ipv4Mask"> <xs:restriction base="xs:string"/> */
static const Schema_SimpleType* Ipv4Mask_base[1];
const Schema_SimpleType interfaces_Ipv4Mask = {
    .name = "_Ipv4Mask", .namespaceName = INTERFACES_NAMESPACE, .members = Ipv4Mask_base,
    .memberCount = 1};

/* <xs:simpleType name="Text"> <xs:restriction base="xs:string"> */
static const Schema_SimpleType* Text_base[1];
static const Schema_Facet Text_facets[] = {
    {"255", SCHEMA_FACET_MAX_LENGTH, SCHEMA_BUILTIN_STRING},
};
const Schema_SimpleType interfaces_Text = {
    .name = "Text", .namespaceName = INTERFACES_NAMESPACE, .members = Text_base,
    .memberCount = 1, .facets = Text_facets, .facetCount = 1};

/* <xs:simpleType name="Name"> <xs:restriction base="Text"> */
static const Schema_SimpleType* const Name_base[] = {&interfaces_Text};
static const Schema_Facet Name_facets[] = {
    {"1", SCHEMA_FACET_MIN_LENGTH, SCHEMA_BUILTIN_STRING},
    {"63", SCHEMA_FACET_MAX_LENGTH, SCHEMA_BUILTIN_STRING},
    {"^([A-Za-z0-9][A-Za-z0-9._-]*)$", SCHEMA_FACET_PATTERN, SCHEMA_BUILTIN_STRING},
};
const Schema_SimpleType interfaces_Name = {
    .name = "Name", .namespaceName = INTERFACES_NAMESPACE, .members = Name_base,
    .memberCount = 1, .facets = Name_facets, .facetCount = 3};

/* <xs:simpleType name="InterfaceName"> <xs:restriction base="Name"> */
static const Schema_SimpleType* const InterfaceName_base[] = {&interfaces_Name};
static const Schema_Facet InterfaceName_facets[] = {
    {"^((ge|xe|et)[0-9]+(-[0-9]+){0,2}|(ae|lo|vlan|tun)[0-9]+)$",
     SCHEMA_FACET_PATTERN, SCHEMA_BUILTIN_STRING},
};
const Schema_SimpleType interfaces_InterfaceName = {
    .name = "InterfaceName", .namespaceName = INTERFACES_NAMESPACE,
    .members = InterfaceName_base, .memberCount = 1, .facets = InterfaceName_facets,
    .facetCount = 1};

/* <xs:simpleType name="MacAddress"> <xs:restriction base="xs:string"> */
static const Schema_SimpleType* MacAddress_base[1];
static const Schema_Facet MacAddress_facets[] = {
    {"17", SCHEMA_FACET_LENGTH, SCHEMA_BUILTIN_STRING},
    {"^([0-9a-f]{2}(:[0-9a-f]{2}){5})$", SCHEMA_FACET_PATTERN, SCHEMA_BUILTIN_STRING},
};
const Schema_SimpleType interfaces_MacAddress = {
    .name = "MacAddress", .namespaceName = INTERFACES_NAMESPACE, .members = MacAddress_base,
    .memberCount = 1, .facets = MacAddress_facets, .facetCount = 2};

/* <xs:simpleType name="EngineId"> <xs:restriction base="xs:hexBinary"> */
static const Schema_SimpleType* EngineId_base[1];
static const Schema_Facet EngineId_facets[] = {
    {"10", SCHEMA_FACET_MIN_LENGTH, SCHEMA_BUILTIN_HEX_BINARY},
    {"64", SCHEMA_FACET_MAX_LENGTH, SCHEMA_BUILTIN_HEX_BINARY},
};
const Schema_SimpleType interfaces_EngineId = {
    .name = "EngineId", .namespaceName = INTERFACES_NAMESPACE, .members = EngineId_base,
    .memberCount = 1, .facets = EngineId_facets, .facetCount = 2};

/* <xs:simpleType name="Key"> <xs:restriction base="xs:base64Binary"/> */
static const Schema_SimpleType* Key_base[1];
const Schema_SimpleType interfaces_Key = {
    .name = "Key", .namespaceName = INTERFACES_NAMESPACE, .members = Key_base, .memberCount = 1};

/* <xs:simpleType name="Mtu"> <xs:restriction base="xs:unsignedShort"> */
static const Schema_SimpleType* Mtu_base[1];
static const Schema_Facet Mtu_facets[] = {
    {"68", SCHEMA_FACET_MIN_INCLUSIVE, SCHEMA_BUILTIN_UNSIGNED_SHORT},
    {"9216", SCHEMA_FACET_MAX_INCLUSIVE, SCHEMA_BUILTIN_UNSIGNED_SHORT},
};
const Schema_SimpleType interfaces_Mtu = {
    .name = "Mtu", .namespaceName = INTERFACES_NAMESPACE, .members = Mtu_base, .memberCount = 1,
    .facets = Mtu_facets, .facetCount = 2};

/* <xs:simpleType name="Speed"> <xs:restriction base="xs:unsignedInt"> */
static const Schema_SimpleType* Speed_base[1];
static const Schema_Facet Speed_facets[] = {
    {"10", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_UNSIGNED_INT},
    {"100", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_UNSIGNED_INT},
    {"1000", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_UNSIGNED_INT},
    {"10000", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_UNSIGNED_INT},
    {"100000", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_UNSIGNED_INT},
};
const Schema_SimpleType interfaces_Speed = {
    .name = "Speed", .namespaceName = INTERFACES_NAMESPACE, .members = Speed_base,
    .memberCount = 1, .facets = Speed_facets, .facetCount = 5};

/* <xs:simpleType name="VlanId"> <xs:restriction base="xs:unsignedShort"> */
static const Schema_SimpleType* VlanId_base[1];
static const Schema_Facet VlanId_facets[] = {
    {"0", SCHEMA_FACET_MIN_EXCLUSIVE, SCHEMA_BUILTIN_UNSIGNED_SHORT},
    {"4095", SCHEMA_FACET_MAX_EXCLUSIVE, SCHEMA_BUILTIN_UNSIGNED_SHORT},
};
const Schema_SimpleType interfaces_VlanId = {
    .name = "VlanId", .namespaceName = INTERFACES_NAMESPACE, .members = VlanId_base,
    .memberCount = 1, .facets = VlanId_facets, .facetCount = 2};

/* <xs:simpleType name="Percent"> <xs:restriction base="xs:unsignedByte"> */
static const Schema_SimpleType* Percent_base[1];
static const Schema_Facet Percent_facets[] = {
    {"100", SCHEMA_FACET_MAX_INCLUSIVE, SCHEMA_BUILTIN_UNSIGNED_BYTE},
    {"0", SCHEMA_FACET_FRACTION_DIGITS, SCHEMA_BUILTIN_UNSIGNED_BYTE},
};
const Schema_SimpleType interfaces_Percent = {
    .name = "Percent", .namespaceName = INTERFACES_NAMESPACE, .members = Percent_base,
    .memberCount = 1, .facets = Percent_facets, .facetCount = 2};

/* <xs:simpleType name="Temperature"> <xs:restriction base="xs:short"> */
static const Schema_SimpleType* Temperature_base[1];
static const Schema_Facet Temperature_facets[] = {
    {"-41", SCHEMA_FACET_MIN_EXCLUSIVE, SCHEMA_BUILTIN_SHORT},
    {"85", SCHEMA_FACET_MAX_INCLUSIVE, SCHEMA_BUILTIN_SHORT},
};
const Schema_SimpleType interfaces_Temperature = {
    .name = "Temperature", .namespaceName = INTERFACES_NAMESPACE, .members = Temperature_base,
    .memberCount = 1, .facets = Temperature_facets, .facetCount = 2};

/* <xs:simpleType name="AssetNumber"> <xs:restriction base="xs:unsignedInt"> */
static const Schema_SimpleType* AssetNumber_base[1];
static const Schema_Facet AssetNumber_facets[] = {
    {"6", SCHEMA_FACET_TOTAL_DIGITS, SCHEMA_BUILTIN_UNSIGNED_INT},
};
const Schema_SimpleType interfaces_AssetNumber = {
    .name = "AssetNumber", .namespaceName = INTERFACES_NAMESPACE, .members = AssetNumber_base,
    .memberCount = 1, .facets = AssetNumber_facets, .facetCount = 1};

/* <xs:simpleType name="HoldTime"> <xs:restriction base="xs:duration"> */
static const Schema_SimpleType* HoldTime_base[1];
static const Schema_Facet HoldTime_facets[] = {
    {"P0Y0M0DT0H0M1S", SCHEMA_FACET_MIN_INCLUSIVE, SCHEMA_BUILTIN_DURATION},
    {"P0Y0M1DT0H0M0S", SCHEMA_FACET_MAX_EXCLUSIVE, SCHEMA_BUILTIN_DURATION},
};
const Schema_SimpleType interfaces_HoldTime = {
    .name = "HoldTime", .namespaceName = INTERFACES_NAMESPACE, .members = HoldTime_base,
    .memberCount = 1, .facets = HoldTime_facets, .facetCount = 2};

/* <xs:simpleType name="ServiceDate"> <xs:restriction base="xs:date"> */
static const Schema_SimpleType* ServiceDate_base[1];
static const Schema_Facet ServiceDate_facets[] = {
    {"1990-01-01", SCHEMA_FACET_MIN_INCLUSIVE, SCHEMA_BUILTIN_DATE},
    {"2100-01-01", SCHEMA_FACET_MAX_EXCLUSIVE, SCHEMA_BUILTIN_DATE},
};
const Schema_SimpleType interfaces_ServiceDate = {
    .name = "ServiceDate", .namespaceName = INTERFACES_NAMESPACE, .members = ServiceDate_base,
    .memberCount = 1, .facets = ServiceDate_facets, .facetCount = 2};

/* <xs:simpleType name="Duplex"> <xs:restriction base="xs:string"> */
static const Schema_SimpleType* Duplex_base[1];
static const Schema_Facet Duplex_facets[] = {
    {"auto", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
    {"full", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
    {"half", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
};
const Schema_SimpleType interfaces_Duplex = {
    .name = "Duplex", .namespaceName = INTERFACES_NAMESPACE, .members = Duplex_base,
    .memberCount = 1, .facets = Duplex_facets, .facetCount = 3};

/* <xs:simpleType name="AdminState"> <xs:restriction base="xs:string"> */
static const Schema_SimpleType* AdminState_base[1];
static const Schema_Facet AdminState_facets[] = {
    {"up", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
    {"down", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
    {"testing", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
};
const Schema_SimpleType interfaces_AdminState = {
    .name = "AdminState", .namespaceName = INTERFACES_NAMESPACE, .members = AdminState_base,
    .memberCount = 1, .facets = AdminState_facets, .facetCount = 3};

/* <xs:simpleType name="Severity"> <xs:restriction base="xs:string"> */
static const Schema_SimpleType* Severity_base[1];
static const Schema_Facet Severity_facets[] = {
    {"error", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
    {"warning", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
    {"info", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
};
const Schema_SimpleType interfaces_Severity = {
    .name = "Severity", .namespaceName = INTERFACES_NAMESPACE, .members = Severity_base,
    .memberCount = 1, .facets = Severity_facets, .facetCount = 3};

/* <xs:simpleType name="Action"> <xs:restriction base="xs:string"> */
static const Schema_SimpleType* Action_base[1];
static const Schema_Facet Action_facets[] = {
    {"permit", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
    {"deny", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
    {"reject", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
};
const Schema_SimpleType interfaces_Action = {
    .name = "Action", .namespaceName = INTERFACES_NAMESPACE, .members = Action_base,
    .memberCount = 1, .facets = Action_facets, .facetCount = 3};

/* <xs:simpleType name="Discard"> <xs:restriction base="xs:string"> */
static const Schema_SimpleType* Discard_base[1];
static const Schema_Facet Discard_facets[] = {
    {"discard", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
};
const Schema_SimpleType interfaces_Discard = {
    .name = "Discard", .namespaceName = INTERFACES_NAMESPACE, .members = Discard_base,
    .memberCount = 1, .facets = Discard_facets, .facetCount = 1};

/* <xs:simpleType name="ProtocolName"> <xs:restriction base="xs:string"> */
static const Schema_SimpleType* ProtocolName_base[1];
static const Schema_Facet ProtocolName_facets[] = {
    {"icmp", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
    {"tcp", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
    {"udp", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
    {"ospf", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
};
const Schema_SimpleType interfaces_ProtocolName = {
    .name = "ProtocolName", .namespaceName = INTERFACES_NAMESPACE, .members = ProtocolName_base,
    .memberCount = 1, .facets = ProtocolName_facets, .facetCount = 4};

/* <xs:simpleType name="Ipv4Address"> <xs:restriction base="xs:string"> */
static const Schema_SimpleType* Ipv4Address_base[1];
static const Schema_Facet Ipv4Address_facets[] = {
    {"^(((25[0-5]|2[0-4][0-9]|1[0-9][0-9]|[1-9]?[0-9])[.]){3}"
     "(25[0-5]|2[0-4][0-9]|1[0-9][0-9]|[1-9]?[0-9]))$",
     SCHEMA_FACET_PATTERN, SCHEMA_BUILTIN_STRING},
};
const Schema_SimpleType interfaces_Ipv4Address = {
    .name = "Ipv4Address", .namespaceName = INTERFACES_NAMESPACE, .members = Ipv4Address_base,
    .memberCount = 1, .facets = Ipv4Address_facets, .facetCount = 1};

/* <xs:simpleType name="Ipv4Prefix"> <xs:restriction base="xs:string"> */
static const Schema_SimpleType* Ipv4Prefix_base[1];
static const Schema_Facet Ipv4Prefix_facets[] = {
    {"^(([0-9]{1,3}[.]){3}[0-9]{1,3}/([0-9]|[12][0-9]|3[0-2]))$",
     SCHEMA_FACET_PATTERN, SCHEMA_BUILTIN_STRING},
};
const Schema_SimpleType interfaces_Ipv4Prefix = {
    .name = "Ipv4Prefix", .namespaceName = INTERFACES_NAMESPACE, .members = Ipv4Prefix_base,
    .memberCount = 1, .facets = Ipv4Prefix_facets, .facetCount = 1};

/* <xs:simpleType name="IpAddress"> <xs:union memberTypes="Ipv4Address _Ipv6Address"/> */
static const Schema_SimpleType* const IpAddress_members[] = {
    &interfaces_Ipv4Address, &interfaces_Ipv6Address};
const Schema_SimpleType interfaces_IpAddress = {
    .name = "IpAddress", .namespaceName = INTERFACES_NAMESPACE, .members = IpAddress_members,
    .memberCount = 2};

/* <xs:simpleType name="IpPrefix"> <xs:union memberTypes="Ipv4Prefix IPV6_ADDR_PREFIX"/> */
static const Schema_SimpleType* const IpPrefix_members[] = {
    &interfaces_Ipv4Prefix, &interfaces_IPV6_ADDR_PREFIX};
const Schema_SimpleType interfaces_IpPrefix = {
    .name = "IpPrefix", .namespaceName = INTERFACES_NAMESPACE, .members = IpPrefix_members,
    .memberCount = 2};

/* <xs:simpleType name="NextHop"> <xs:union memberTypes="Discard InterfaceName IpAddress"/> */
static const Schema_SimpleType* const NextHop_members[] = {
    &interfaces_Discard, &interfaces_InterfaceName, &interfaces_IpAddress};
const Schema_SimpleType interfaces_NextHop = {
    .name = "NextHop", .namespaceName = INTERFACES_NAMESPACE, .members = NextHop_members,
    .memberCount = 3};

/* <xs:simpleType name="Protocol"> <xs:union memberTypes="ProtocolName xs:unsignedByte"/> */
static const Schema_SimpleType* Protocol_members[] = {&interfaces_ProtocolName, NULL};
const Schema_SimpleType interfaces_Protocol = {
    .name = "Protocol", .namespaceName = INTERFACES_NAMESPACE, .members = Protocol_members,
    .memberCount = 2};

/* clang-format on */

void interfaces_fill_types(void)
{
    OID_base[0] = Schema_BLDIN_string();
    Ipv6Address_base[0] = Schema_BLDIN_string();
    IPV6_ADDR_PREFIX_base[0] = Schema_BLDIN_string();
    PortRange_base[0] = Schema_BLDIN_string();
    VlanRange_base[0] = Schema_BLDIN_string();
    Ipv4Mask_base[0] = Schema_BLDIN_string();
    Text_base[0] = Schema_BLDIN_string();
    MacAddress_base[0] = Schema_BLDIN_string();
    EngineId_base[0] = Schema_BLDIN_hexBinary();
    Key_base[0] = Schema_BLDIN_base64Binary();
    Mtu_base[0] = Schema_BLDIN_unsignedShort();
    Speed_base[0] = Schema_BLDIN_unsignedInt();
    VlanId_base[0] = Schema_BLDIN_unsignedShort();
    Percent_base[0] = Schema_BLDIN_unsignedByte();
    Temperature_base[0] = Schema_BLDIN_short();
    AssetNumber_base[0] = Schema_BLDIN_unsignedInt();
    HoldTime_base[0] = Schema_BLDIN_duration();
    ServiceDate_base[0] = Schema_BLDIN_date();
    Duplex_base[0] = Schema_BLDIN_string();
    AdminState_base[0] = Schema_BLDIN_string();
    Severity_base[0] = Schema_BLDIN_string();
    Action_base[0] = Schema_BLDIN_string();
    Discard_base[0] = Schema_BLDIN_string();
    ProtocolName_base[0] = Schema_BLDIN_string();
    Ipv4Address_base[0] = Schema_BLDIN_string();
    Ipv4Prefix_base[0] = Schema_BLDIN_string();
    Protocol_members[1] = Schema_BLDIN_unsignedByte();
}
