/* Interfaces of all kinds: an abstract head, and what substitutes for it.
 *
 * A record or array that is not constant gets a built-in type at registration: see the end of the
 * file. */
#include "interfaces_records.h"

/* clang-format off */

/* <xs:complexType name="Interface"> */

/* <xs:element name="description" type="Text" minOccurs="0"/> */
static const Schema_ElementDecl Interface_description = {
    .name = "description", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Text,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
/* <xs:element name="adminState" type="AdminState" minOccurs="0"/> */
static const Schema_ElementDecl Interface_adminState = {
    .name = "adminState", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_AdminState,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
/* <xs:element name="mtu" type="Mtu" minOccurs="0"/> */
static const Schema_ElementDecl Interface_mtu = {
    .name = "mtu", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Mtu,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
/* <xs:element name="ipv4" type="Ipv4" minOccurs="0"/> */
static const Schema_ElementDecl Interface_ipv4 = {
    .name = "ipv4", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Ipv4,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
/* <xs:element name="ipv6" type="Ipv6" minOccurs="0"/> */
static const Schema_ElementDecl Interface_ipv6 = {
    .name = "ipv6", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Ipv6,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
/* <xs:element name="vendorData" type="VendorData" minOccurs="0"/> */
static const Schema_ElementDecl Interface_vendorData = {
    .name = "vendorData", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_VendorData,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
static const Schema_Object Interface_content_particles[] = {
    {&Interface_description, SCHEMA_KIND_ELEMENT},
    {&Interface_adminState, SCHEMA_KIND_ELEMENT},
    {&Interface_mtu, SCHEMA_KIND_ELEMENT},
    {&Interface_ipv4, SCHEMA_KIND_ELEMENT},
    {&Interface_ipv6, SCHEMA_KIND_ELEMENT},
    {&Interface_vendorData, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Interface_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Interface_content_particles,
    .particleCount = 6, .minOccurs = 1, .maxOccurs = 1};
/* <xs:attribute name="name" type="InterfaceName" use="required"/> */
static const Schema_AttributeDecl Interface_name_attribute = {
    .name = "name", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_InterfaceName,
    .use = SCHEMA_USE_REQUIRED};
/* <xs:attribute name="slot" type="xs:unsignedByte"/> */
static Schema_AttributeDecl Interface_slot_attribute = {
    .name = "slot", .namespaceName = INTERFACES_NAMESPACE};
/* <xs:attributeGroup ref="Common"/> */
static const Schema_AttributeGroup Interface_Common_group = {.ref = &interfaces_group_Common};
static const Schema_AttributeDecl* const Interface_attributes[] = {
    &Interface_name_attribute, &Interface_slot_attribute};
static const Schema_AttributeGroup* const Interface_groups[] = {&Interface_Common_group};
const Schema_ComplexType interfaces_Interface = {
    .name = "Interface", .namespaceName = INTERFACES_NAMESPACE, .content = &Interface_content,
    .attributes = Interface_attributes, .attributeCount = 2, .attributeGroups = Interface_groups,
    .attributeGroupCount = 1};

/* <xs:element name="interface" type="Interface" abstract="true"/> */
const Schema_ElementDecl interfaces_element_interface = {
    .name = "interface", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Interface,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1, .maxOccurs = 1, .abstract = 1};

/* <xs:complexType name="Ethernet"> */

/* <xs:element name="mac" type="MacAddress" minOccurs="0"/> */
static const Schema_ElementDecl Ethernet_mac = {
    .name = "mac", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_MacAddress,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
/* <xs:element name="speed" type="Speed" minOccurs="0"/> */
static const Schema_ElementDecl Ethernet_speed = {
    .name = "speed", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Speed,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
/* <xs:element name="duplex" type="Duplex" minOccurs="0"/> */
static const Schema_ElementDecl Ethernet_duplex = {
    .name = "duplex", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Duplex,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
/* <xs:element name="holdTime" type="HoldTime" minOccurs="0"/> */
static const Schema_ElementDecl Ethernet_holdTime = {
    .name = "holdTime", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_HoldTime,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
/* <xs:element name="alarm" type="AlarmThreshold" minOccurs="0" maxOccurs="2"/> */
static const Schema_ElementDecl Ethernet_alarm = {
    .name = "alarm", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_AlarmThreshold,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 2};
/* <xs:element name="switchPort" type="SwitchPort" minOccurs="0"/> */
static const Schema_ElementDecl Ethernet_switchPort = {
    .name = "switchPort", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_SwitchPort,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
static const Schema_Object Ethernet_content_particles[] = {
    {&Ethernet_mac, SCHEMA_KIND_ELEMENT},
    {&Ethernet_speed, SCHEMA_KIND_ELEMENT},
    {&Ethernet_duplex, SCHEMA_KIND_ELEMENT},
    {&Ethernet_holdTime, SCHEMA_KIND_ELEMENT},
    {&Ethernet_alarm, SCHEMA_KIND_ELEMENT},
    {&Ethernet_switchPort, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Ethernet_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Ethernet_content_particles,
    .particleCount = 6, .minOccurs = 1, .maxOccurs = 1};
/* <xs:extension base="Interface"> */
static const Schema_Derivation Ethernet_derivation = {
    .kind = SCHEMA_KIND_COMPLEX_EXTENSION, .base = &interfaces_Interface,
    .baseKind = SCHEMA_KIND_COMPLEX_TYPE, .content = &Ethernet_content};
const Schema_ComplexType interfaces_Ethernet = {
    .name = "Ethernet", .namespaceName = INTERFACES_NAMESPACE, .derivation = &Ethernet_derivation};

/* <xs:element name="ethernet" type="Ethernet" substitutionGroup="interface"/> */
const Schema_ElementDecl interfaces_element_ethernet = {
    .name = "ethernet", .namespaceName = INTERFACES_NAMESPACE,
    .substitutionGroupName = "interface", .substitutionGroupNamespace = INTERFACES_NAMESPACE,
    .type = &interfaces_Ethernet, .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1,
    .maxOccurs = 1};

/* <xs:complexType name="Aggregate"> */

/* <xs:element name="member" type="InterfaceName" maxOccurs="8"/> */
static const Schema_ElementDecl Aggregate_member = {
    .name = "member", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_InterfaceName,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 8};
/* <xs:element name="minimumLinks" type="xs:unsignedByte" minOccurs="0"/> */
static Schema_ElementDecl Aggregate_minimumLinks = {
    .name = "minimumLinks", .namespaceName = INTERFACES_NAMESPACE,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
static const Schema_Object Aggregate_content_particles[] = {
    {&Aggregate_member, SCHEMA_KIND_ELEMENT},
    {&Aggregate_minimumLinks, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Aggregate_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Aggregate_content_particles,
    .particleCount = 2, .minOccurs = 1, .maxOccurs = 1};
/* <xs:extension base="Ethernet"> */
static const Schema_Derivation Aggregate_derivation = {
    .kind = SCHEMA_KIND_COMPLEX_EXTENSION, .base = &interfaces_Ethernet,
    .baseKind = SCHEMA_KIND_COMPLEX_TYPE, .content = &Aggregate_content};
const Schema_ComplexType interfaces_Aggregate = {
    .name = "Aggregate", .namespaceName = INTERFACES_NAMESPACE,
    .derivation = &Aggregate_derivation};

/* <xs:element name="aggregate" type="Aggregate" substitutionGroup="interface"/> */
const Schema_ElementDecl interfaces_element_aggregate = {
    .name = "aggregate", .namespaceName = INTERFACES_NAMESPACE,
    .substitutionGroupName = "interface", .substitutionGroupNamespace = INTERFACES_NAMESPACE,
    .type = &interfaces_Aggregate, .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1,
    .maxOccurs = 1};

/* <xs:complexType name="Loopback"> */

/* <xs:element name="description" type="Text" minOccurs="0"/> */
static const Schema_ElementDecl Loopback_description = {
    .name = "description", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Text,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
/* <xs:element name="ipv4" type="Ipv4" minOccurs="0"/> */
static const Schema_ElementDecl Loopback_ipv4 = {
    .name = "ipv4", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Ipv4,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
/* <xs:element name="ipv6" type="Ipv6" minOccurs="0"/> */
static const Schema_ElementDecl Loopback_ipv6 = {
    .name = "ipv6", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Ipv6,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
static const Schema_Object Loopback_content_particles[] = {
    {&Loopback_description, SCHEMA_KIND_ELEMENT},
    {&Loopback_ipv4, SCHEMA_KIND_ELEMENT},
    {&Loopback_ipv6, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Loopback_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Loopback_content_particles,
    .particleCount = 3, .minOccurs = 1, .maxOccurs = 1};
/* <xs:attribute name="slot" type="xs:unsignedByte" use="prohibited"/> */
static Schema_AttributeDecl Loopback_slot_attribute = {
    .name = "slot", .namespaceName = INTERFACES_NAMESPACE, .use = SCHEMA_USE_PROHIBITED};
static const Schema_AttributeDecl* const Loopback_attributes[] = {&Loopback_slot_attribute};
/* <xs:restriction base="Interface"> */
static const Schema_Derivation Loopback_derivation = {
    .kind = SCHEMA_KIND_COMPLEX_RESTRICTION, .base = &interfaces_Interface,
    .baseKind = SCHEMA_KIND_COMPLEX_TYPE, .content = &Loopback_content,
    .attributes = Loopback_attributes, .attributeCount = 1};
const Schema_ComplexType interfaces_Loopback = {
    .name = "Loopback", .namespaceName = INTERFACES_NAMESPACE, .derivation = &Loopback_derivation};

/* <xs:element name="loopback" type="Loopback" substitutionGroup="interface"/> */
const Schema_ElementDecl interfaces_element_loopback = {
    .name = "loopback", .namespaceName = INTERFACES_NAMESPACE,
    .substitutionGroupName = "interface", .substitutionGroupNamespace = INTERFACES_NAMESPACE,
    .type = &interfaces_Loopback, .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1,
    .maxOccurs = 1};

/* <xs:complexType name="VlanInterface"> */

/* <xs:element name="vlanId" type="VlanId"/> */
static const Schema_ElementDecl VlanInterface_vlanId = {
    .name = "vlanId", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_VlanId,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="encapsulation" type="xs:string" fixed="dot1q" minOccurs="0"/> */
static Schema_ElementDecl VlanInterface_encapsulation = {
    .name = "encapsulation", .namespaceName = INTERFACES_NAMESPACE,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .value = "dot1q", .fixed = 1, .maxOccurs = 1};
static const Schema_Object VlanInterface_content_particles[] = {
    {&VlanInterface_vlanId, SCHEMA_KIND_ELEMENT},
    {&VlanInterface_encapsulation, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup VlanInterface_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = VlanInterface_content_particles,
    .particleCount = 2, .minOccurs = 1, .maxOccurs = 1};
/* <xs:extension base="Interface"> */
static const Schema_Derivation VlanInterface_derivation = {
    .kind = SCHEMA_KIND_COMPLEX_EXTENSION, .base = &interfaces_Interface,
    .baseKind = SCHEMA_KIND_COMPLEX_TYPE, .content = &VlanInterface_content};
const Schema_ComplexType interfaces_VlanInterface = {
    .name = "VlanInterface", .namespaceName = INTERFACES_NAMESPACE,
    .derivation = &VlanInterface_derivation};

/* <xs:element name="vlanInterface" type="VlanInterface" substitutionGroup="interface"/> */
const Schema_ElementDecl interfaces_element_vlanInterface = {
    .name = "vlanInterface", .namespaceName = INTERFACES_NAMESPACE,
    .substitutionGroupName = "interface", .substitutionGroupNamespace = INTERFACES_NAMESPACE,
    .type = &interfaces_VlanInterface, .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1,
    .maxOccurs = 1};

/* <xs:complexType name="Interfaces"> */

/* <xs:element ref="interface" minOccurs="0" maxOccurs="unbounded"/> */
static const Schema_ElementDecl Interfaces_interface = {
    .ref = &interfaces_element_interface, .maxOccurs = SCHEMA_UNBOUNDED};
static const Schema_Object Interfaces_content_particles[] = {
    {&Interfaces_interface, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Interfaces_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Interfaces_content_particles,
    .particleCount = 1, .minOccurs = 1, .maxOccurs = 1};
const Schema_ComplexType interfaces_Interfaces = {
    .name = "Interfaces", .namespaceName = INTERFACES_NAMESPACE, .content = &Interfaces_content};

/* clang-format on */

void interfaces_fill_kinds(void)
{
    Interface_slot_attribute.type = Schema_BLDIN_unsignedByte();
    Aggregate_minimumLinks.type = Schema_BLDIN_unsignedByte();
    Loopback_slot_attribute.type = Schema_BLDIN_unsignedByte();
    VlanInterface_encapsulation.type = Schema_BLDIN_string();
}
