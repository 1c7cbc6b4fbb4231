/* VLANs, addresses, and what ports share.
 *
 * A record or array that is not constant gets a built-in type at registration: see the end of the
 * file. */
#include "interfaces_records.h"

/* clang-format off */

/* <xs:complexType name="Vlan"> */

/* <xs:element name="name" type="Name"/> */
static const Schema_ElementDecl Vlan_name = {
    .name = "name", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Name,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="description" type="Text" minOccurs="0"/> */
static const Schema_ElementDecl Vlan_description = {
    .name = "description", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Text,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
/* <xs:element name="isolated" type="Empty" minOccurs="0"/> */
static const Schema_ElementDecl Vlan_isolated = {
    .name = "isolated", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Empty,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
static const Schema_Object Vlan_content_particles[] = {
    {&Vlan_name, SCHEMA_KIND_ELEMENT},
    {&Vlan_description, SCHEMA_KIND_ELEMENT},
    {&Vlan_isolated, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Vlan_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Vlan_content_particles,
    .particleCount = 3, .minOccurs = 1, .maxOccurs = 1};
/* <xs:attribute name="id" type="VlanId" use="required"/> */
static const Schema_AttributeDecl Vlan_id_attribute = {
    .name = "id", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_VlanId,
    .use = SCHEMA_USE_REQUIRED};
static const Schema_AttributeDecl* const Vlan_attributes[] = {&Vlan_id_attribute};
/* <xs:anyAttribute namespace="urn:example:network:qos http://www.w3.org/2001/XMLSchema-instance"
 * processContents="lax"/> */
static const Schema_AttributeWildcard Vlan_anyAttribute = {
    .targetNamespace = INTERFACES_NAMESPACE,
    .namespaceName = INTERFACES_QOS_NAMESPACE " " XML_NAMESPACE_SCHEMA_INSTANCE,
    .processContents = SCHEMA_PROCESS_LAX};
const Schema_ComplexType interfaces_Vlan = {
    .name = "Vlan", .namespaceName = INTERFACES_NAMESPACE, .content = &Vlan_content,
    .attributes = Vlan_attributes, .attributeCount = 1, .anyAttribute = &Vlan_anyAttribute};

/* <xs:complexType name="Vlans"> */

/* <xs:element name="vlan" type="Vlan" minOccurs="0" maxOccurs="unbounded"/> */
static const Schema_ElementDecl Vlans_vlan = {
    .name = "vlan", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Vlan,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = SCHEMA_UNBOUNDED};
static const Schema_Object Vlans_content_particles[] = {
    {&Vlans_vlan, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Vlans_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Vlans_content_particles,
    .particleCount = 1, .minOccurs = 1, .maxOccurs = 1};
const Schema_ComplexType interfaces_Vlans = {
    .name = "Vlans", .namespaceName = INTERFACES_NAMESPACE, .content = &Vlans_content};

/* <xs:complexType name="MaskedAddress"> */

/* <xs:element name="ip" type="Ipv4Address"/> */
static const Schema_ElementDecl MaskedAddress_ip = {
    .name = "ip", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Ipv4Address,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="mask" type="_Ipv4Mask"/> */
static const Schema_ElementDecl MaskedAddress_mask = {
    .name = "mask", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Ipv4Mask,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1};
static const Schema_Object MaskedAddress_content_particles[] = {
    {&MaskedAddress_ip, SCHEMA_KIND_ELEMENT},
    {&MaskedAddress_mask, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup MaskedAddress_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = MaskedAddress_content_particles,
    .particleCount = 2, .minOccurs = 1, .maxOccurs = 1};
/* <xs:attribute name="secondary" type="xs:boolean"/> */
static Schema_AttributeDecl MaskedAddress_secondary_attribute = {
    .name = "secondary", .namespaceName = INTERFACES_NAMESPACE};
static const Schema_AttributeDecl* const MaskedAddress_attributes[] = {
    &MaskedAddress_secondary_attribute};
const Schema_ComplexType interfaces_MaskedAddress = {
    .name = "MaskedAddress", .namespaceName = INTERFACES_NAMESPACE,
    .content = &MaskedAddress_content, .attributes = MaskedAddress_attributes,
    .attributeCount = 1};

/* <xs:complexType name="Ipv4"> */

/* <xs:element name="dhcp" type="Empty"/> */
static const Schema_ElementDecl Ipv4_dhcp = {
    .name = "dhcp", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Empty,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="address" type="MaskedAddress" maxOccurs="16"/> */
static const Schema_ElementDecl Ipv4_address = {
    .name = "address", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_MaskedAddress,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1, .maxOccurs = 16};
/* <xs:element name="gateway" type="Ipv4Address" minOccurs="0"/> */
static const Schema_ElementDecl Ipv4_gateway = {
    .name = "gateway", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Ipv4Address,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
static const Schema_Object Ipv4_content_sequence_particles[] = {
    {&Ipv4_address, SCHEMA_KIND_ELEMENT},
    {&Ipv4_gateway, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Ipv4_content_sequence = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Ipv4_content_sequence_particles,
    .particleCount = 2, .minOccurs = 1, .maxOccurs = 1};
static const Schema_Object Ipv4_content_particles[] = {
    {&Ipv4_dhcp, SCHEMA_KIND_ELEMENT},
    {&Ipv4_content_sequence, SCHEMA_KIND_MODEL_GROUP},
};
/* <xs:choice> */
static const Schema_ModelGroup Ipv4_content = {
    .compositor = SCHEMA_COMPOSITOR_CHOICE, .particles = Ipv4_content_particles,
    .particleCount = 2, .minOccurs = 1, .maxOccurs = 1};
const Schema_ComplexType interfaces_Ipv4 = {
    .name = "Ipv4", .namespaceName = INTERFACES_NAMESPACE, .content = &Ipv4_content};

/* <xs:complexType name="Ipv6"> */

/* <xs:element name="autoconfiguration" type="Empty" minOccurs="0"/> */
static const Schema_ElementDecl Ipv6_autoconfiguration = {
    .name = "autoconfiguration", .namespaceName = INTERFACES_NAMESPACE,
    .type = &interfaces_Empty, .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
/* <xs:element name="address" type="_Ipv6Address" minOccurs="0" maxOccurs="16"/> */
static const Schema_ElementDecl Ipv6_address = {
    .name = "address", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Ipv6Address,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 16};
/* <xs:element name="prefix" type="IPV6_ADDR_PREFIX" minOccurs="0" maxOccurs="16"/> */
static const Schema_ElementDecl Ipv6_prefix = {
    .name = "prefix", .namespaceName = INTERFACES_NAMESPACE,
    .type = &interfaces_IPV6_ADDR_PREFIX, .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 16};
static const Schema_Object Ipv6_content_particles[] = {
    {&Ipv6_autoconfiguration, SCHEMA_KIND_ELEMENT},
    {&Ipv6_address, SCHEMA_KIND_ELEMENT},
    {&Ipv6_prefix, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Ipv6_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Ipv6_content_particles,
    .particleCount = 3, .minOccurs = 1, .maxOccurs = 1};
const Schema_ComplexType interfaces_Ipv6 = {
    .name = "Ipv6", .namespaceName = INTERFACES_NAMESPACE, .content = &Ipv6_content};

/* <xs:complexType name="Threshold"> */

/* <xs:simpleType> <xs:restriction base="xs:string"> */
static const Schema_SimpleType* Threshold_direction_attribute_type_base[1];
static const Schema_Facet Threshold_direction_attribute_type_facets[] = {
    {"in", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
    {"out", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
};
static const Schema_SimpleType Threshold_direction_attribute_type = {
    .members = Threshold_direction_attribute_type_base, .memberCount = 1,
    .facets = Threshold_direction_attribute_type_facets, .facetCount = 2};

/* <xs:attribute name="direction" use="required"> */
static const Schema_AttributeDecl Threshold_direction_attribute = {
    .name = "direction", .namespaceName = INTERFACES_NAMESPACE,
    .type = &Threshold_direction_attribute_type, .use = SCHEMA_USE_REQUIRED};
static const Schema_AttributeDecl* const Threshold_attributes[] = {&Threshold_direction_attribute};
/* <xs:extension base="Percent"> */
static const Schema_Derivation Threshold_derivation = {
    .kind = SCHEMA_KIND_SIMPLE_EXTENSION, .base = &interfaces_Percent,
    .baseKind = SCHEMA_KIND_SIMPLE_TYPE, .attributes = Threshold_attributes, .attributeCount = 1};
const Schema_ComplexType interfaces_Threshold = {
    .name = "Threshold", .namespaceName = INTERFACES_NAMESPACE,
    .derivation = &Threshold_derivation};

/* <xs:complexType name="AlarmThreshold"> */

static const Schema_Facet AlarmThreshold_facets[] = {
    {"50", SCHEMA_FACET_MIN_INCLUSIVE, SCHEMA_BUILTIN_UNSIGNED_BYTE},
};
/* <xs:restriction base="Threshold"> */
static const Schema_Derivation AlarmThreshold_derivation = {
    .kind = SCHEMA_KIND_SIMPLE_RESTRICTION, .base = &interfaces_Threshold,
    .baseKind = SCHEMA_KIND_COMPLEX_TYPE, .facets = AlarmThreshold_facets, .facetCount = 1};
const Schema_ComplexType interfaces_AlarmThreshold = {
    .name = "AlarmThreshold", .namespaceName = INTERFACES_NAMESPACE,
    .derivation = &AlarmThreshold_derivation};

/* <xs:complexType name="Trunk"> */

/* <xs:element name="native" type="VlanId" minOccurs="0"/> */
static const Schema_ElementDecl Trunk_native = {
    .name = "native", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_VlanId,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
/* <xs:element name="allowed" type="_VlanRange"/> */
static const Schema_ElementDecl Trunk_allowed = {
    .name = "allowed", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_VlanRange,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="all" type="Empty"/> */
static const Schema_ElementDecl Trunk_all = {
    .name = "all", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Empty,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1, .maxOccurs = 1};
static const Schema_Object Trunk_content_choice_particles[] = {
    {&Trunk_allowed, SCHEMA_KIND_ELEMENT},
    {&Trunk_all, SCHEMA_KIND_ELEMENT},
};
/* <xs:choice> */
static const Schema_ModelGroup Trunk_content_choice = {
    .compositor = SCHEMA_COMPOSITOR_CHOICE, .particles = Trunk_content_choice_particles,
    .particleCount = 2, .minOccurs = 1, .maxOccurs = 1};
static const Schema_Object Trunk_content_particles[] = {
    {&Trunk_native, SCHEMA_KIND_ELEMENT},
    {&Trunk_content_choice, SCHEMA_KIND_MODEL_GROUP},
};
/* <xs:sequence> */
static const Schema_ModelGroup Trunk_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Trunk_content_particles,
    .particleCount = 2, .minOccurs = 1, .maxOccurs = 1};
const Schema_ComplexType interfaces_Trunk = {
    .name = "Trunk", .namespaceName = INTERFACES_NAMESPACE, .content = &Trunk_content};

/* <xs:complexType name="SwitchPort"> */

/* <xs:element name="access" type="VlanId"/> */
static const Schema_ElementDecl SwitchPort_access = {
    .name = "access", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_VlanId,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="trunk" type="Trunk"/> */
static const Schema_ElementDecl SwitchPort_trunk = {
    .name = "trunk", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Trunk,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1, .maxOccurs = 1};
static const Schema_Object SwitchPort_content_particles[] = {
    {&SwitchPort_access, SCHEMA_KIND_ELEMENT},
    {&SwitchPort_trunk, SCHEMA_KIND_ELEMENT},
};
/* <xs:choice> */
static const Schema_ModelGroup SwitchPort_content = {
    .compositor = SCHEMA_COMPOSITOR_CHOICE, .particles = SwitchPort_content_particles,
    .particleCount = 2, .minOccurs = 1, .maxOccurs = 1};
const Schema_ComplexType interfaces_SwitchPort = {
    .name = "SwitchPort", .namespaceName = INTERFACES_NAMESPACE, .content = &SwitchPort_content};

/* clang-format on */

void interfaces_fill_ports(void)
{
    MaskedAddress_secondary_attribute.type = Schema_BLDIN_boolean();
    Threshold_direction_attribute_type_base[0] = Schema_BLDIN_string();
}
