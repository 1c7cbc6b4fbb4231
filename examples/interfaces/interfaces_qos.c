/* What a vendor adds in a namespace of its own: tunnels, shapers, and matching by DSCP.
 *
 * A record or array that is not constant gets a built-in type at registration: see the end of the
 * file. */
#include "interfaces_records.h"

/* clang-format off */

/* <xs:simpleType name="Load"> <xs:restriction base="xs:string"> */
static const Schema_SimpleType* Load_base[1];
static const Schema_Facet Load_facets[] = {
    {"^([0-9]{1,2}[.][0-9])$", SCHEMA_FACET_PATTERN, SCHEMA_BUILTIN_STRING},
};
const Schema_SimpleType interfaces_qos_Load = {
    .name = "Load", .namespaceName = INTERFACES_QOS_NAMESPACE, .members = Load_base,
    .memberCount = 1, .facets = Load_facets, .facetCount = 1};

/* <xs:simpleType name="DscpName"> <xs:restriction base="xs:string"> */
static const Schema_SimpleType* DscpName_base[1];
static const Schema_Facet DscpName_facets[] = {
    {"ef", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
    {"af11", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
    {"af21", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
    {"cs6", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
};
const Schema_SimpleType interfaces_qos_DscpName = {
    .name = "DscpName", .namespaceName = INTERFACES_QOS_NAMESPACE, .members = DscpName_base,
    .memberCount = 1, .facets = DscpName_facets, .facetCount = 4};

/* <xs:simpleType name="DscpNumber"> <xs:restriction base="xs:unsignedByte"> */
static const Schema_SimpleType* DscpNumber_base[1];
static const Schema_Facet DscpNumber_facets[] = {
    {"64", SCHEMA_FACET_MAX_EXCLUSIVE, SCHEMA_BUILTIN_UNSIGNED_BYTE},
};
const Schema_SimpleType interfaces_qos_DscpNumber = {
    .name = "DscpNumber", .namespaceName = INTERFACES_QOS_NAMESPACE, .members = DscpNumber_base,
    .memberCount = 1, .facets = DscpNumber_facets, .facetCount = 1};

/* <xs:simpleType name="Dscp"> <xs:union memberTypes="DscpName DscpNumber"/> */
static const Schema_SimpleType* const Dscp_members[] = {
    &interfaces_qos_DscpName, &interfaces_qos_DscpNumber};
const Schema_SimpleType interfaces_qos_Dscp = {
    .name = "Dscp", .namespaceName = INTERFACES_QOS_NAMESPACE, .members = Dscp_members,
    .memberCount = 2};

/* <xs:attribute name="priority" type="DscpNumber"/> */
const Schema_AttributeDecl interfaces_qos_attribute_priority = {
    .name = "priority", .namespaceName = INTERFACES_QOS_NAMESPACE,
    .type = &interfaces_qos_DscpNumber};

/* <xs:element name="dscp" type="Dscp" substitutionGroup="n:condition"/> */
const Schema_ElementDecl interfaces_qos_element_dscp = {
    .name = "dscp", .namespaceName = INTERFACES_QOS_NAMESPACE,
    .substitutionGroupName = "condition", .substitutionGroupNamespace = INTERFACES_NAMESPACE,
    .type = &interfaces_qos_Dscp, .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1,
    .maxOccurs = 1};

/* <xs:complexType name="Tunnel"> */

/* <xs:element name="source" type="n:IpAddress"/> */
static const Schema_ElementDecl Tunnel_source = {
    .name = "source", .namespaceName = INTERFACES_QOS_NAMESPACE, .type = &interfaces_IpAddress,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1,
    .form = SCHEMA_FORM_UNQUALIFIED};
/* <xs:element name="destination" type="n:IpAddress"/> */
static const Schema_ElementDecl Tunnel_destination = {
    .name = "destination", .namespaceName = INTERFACES_QOS_NAMESPACE,
    .type = &interfaces_IpAddress, .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1,
    .maxOccurs = 1, .form = SCHEMA_FORM_UNQUALIFIED};
/* <xs:element name="key" type="xs:unsignedInt" minOccurs="0"/> */
static Schema_ElementDecl Tunnel_key = {
    .name = "key", .namespaceName = INTERFACES_QOS_NAMESPACE,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1, .form = SCHEMA_FORM_UNQUALIFIED};
static const Schema_Object Tunnel_content_particles[] = {
    {&Tunnel_source, SCHEMA_KIND_ELEMENT},
    {&Tunnel_destination, SCHEMA_KIND_ELEMENT},
    {&Tunnel_key, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Tunnel_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Tunnel_content_particles,
    .particleCount = 3, .minOccurs = 1, .maxOccurs = 1};
/* <xs:attribute name="mode" type="n:Name"/> */
static const Schema_AttributeDecl Tunnel_mode_attribute = {
    .name = "mode", .namespaceName = INTERFACES_QOS_NAMESPACE, .type = &interfaces_Name,
    .form = SCHEMA_FORM_QUALIFIED};
static const Schema_AttributeDecl* const Tunnel_attributes[] = {&Tunnel_mode_attribute};
/* <xs:extension base="n:Interface"> */
static const Schema_Derivation Tunnel_derivation = {
    .kind = SCHEMA_KIND_COMPLEX_EXTENSION, .base = &interfaces_Interface,
    .baseKind = SCHEMA_KIND_COMPLEX_TYPE, .content = &Tunnel_content,
    .attributes = Tunnel_attributes, .attributeCount = 1};
const Schema_ComplexType interfaces_qos_Tunnel = {
    .name = "Tunnel", .namespaceName = INTERFACES_QOS_NAMESPACE, .derivation = &Tunnel_derivation};

/* <xs:element name="tunnel" type="Tunnel" substitutionGroup="n:interface"/> */
const Schema_ElementDecl interfaces_qos_element_tunnel = {
    .name = "tunnel", .namespaceName = INTERFACES_QOS_NAMESPACE,
    .substitutionGroupName = "interface", .substitutionGroupNamespace = INTERFACES_NAMESPACE,
    .type = &interfaces_qos_Tunnel, .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1,
    .maxOccurs = 1};

/* <xs:complexType name="Queue"> */

/* <xs:element name="weight" type="n:Percent"/> */
static const Schema_ElementDecl Queue_weight = {
    .name = "weight", .namespaceName = INTERFACES_QOS_NAMESPACE, .type = &interfaces_Percent,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1,
    .form = SCHEMA_FORM_UNQUALIFIED};
/* <xs:element name="load" type="Load" minOccurs="0"/> */
static const Schema_ElementDecl Queue_load = {
    .name = "load", .namespaceName = INTERFACES_QOS_NAMESPACE, .type = &interfaces_qos_Load,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1, .form = SCHEMA_FORM_UNQUALIFIED};
/* <xs:element name="limit" type="xs:unsignedLong" form="qualified" minOccurs="0"/> */
static Schema_ElementDecl Queue_limit = {
    .name = "limit", .namespaceName = INTERFACES_QOS_NAMESPACE,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1, .form = SCHEMA_FORM_QUALIFIED};
static const Schema_Object Queue_content_particles[] = {
    {&Queue_weight, SCHEMA_KIND_ELEMENT},
    {&Queue_load, SCHEMA_KIND_ELEMENT},
    {&Queue_limit, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Queue_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Queue_content_particles,
    .particleCount = 3, .minOccurs = 1, .maxOccurs = 1};
/* <xs:attribute name="name" type="n:Name" form="unqualified" use="required"/> */
static const Schema_AttributeDecl Queue_name_attribute = {
    .name = "name", .namespaceName = INTERFACES_QOS_NAMESPACE, .type = &interfaces_Name,
    .use = SCHEMA_USE_REQUIRED, .form = SCHEMA_FORM_UNQUALIFIED};
/* <xs:attribute name="color" type="n:Name"/> */
static const Schema_AttributeDecl Queue_color_attribute = {
    .name = "color", .namespaceName = INTERFACES_QOS_NAMESPACE, .type = &interfaces_Name,
    .form = SCHEMA_FORM_QUALIFIED};
static const Schema_AttributeDecl* const Queue_attributes[] = {
    &Queue_name_attribute, &Queue_color_attribute};
const Schema_ComplexType interfaces_qos_Queue = {
    .name = "Queue", .namespaceName = INTERFACES_QOS_NAMESPACE, .content = &Queue_content,
    .attributes = Queue_attributes, .attributeCount = 2};

/* <xs:complexType name="Shaper"> */

/* <xs:element name="rate" type="xs:unsignedLong"/> */
static Schema_ElementDecl Shaper_rate = {
    .name = "rate", .namespaceName = INTERFACES_QOS_NAMESPACE,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1,
    .form = SCHEMA_FORM_UNQUALIFIED};
/* <xs:element name="burst" type="xs:unsignedLong" minOccurs="0"/> */
static Schema_ElementDecl Shaper_burst = {
    .name = "burst", .namespaceName = INTERFACES_QOS_NAMESPACE,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1, .form = SCHEMA_FORM_UNQUALIFIED};
/* <xs:element name="queue" type="Queue" maxOccurs="8"/> */
static const Schema_ElementDecl Shaper_queue = {
    .name = "queue", .namespaceName = INTERFACES_QOS_NAMESPACE, .type = &interfaces_qos_Queue,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1, .maxOccurs = 8,
    .form = SCHEMA_FORM_UNQUALIFIED};
static const Schema_Object Shaper_content_particles[] = {
    {&Shaper_rate, SCHEMA_KIND_ELEMENT},
    {&Shaper_burst, SCHEMA_KIND_ELEMENT},
    {&Shaper_queue, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Shaper_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Shaper_content_particles,
    .particleCount = 3, .minOccurs = 1, .maxOccurs = 1};
/* <xs:attribute name="name" type="n:Name" form="unqualified" use="required"/> */
static const Schema_AttributeDecl Shaper_name_attribute = {
    .name = "name", .namespaceName = INTERFACES_QOS_NAMESPACE, .type = &interfaces_Name,
    .use = SCHEMA_USE_REQUIRED, .form = SCHEMA_FORM_UNQUALIFIED};
static const Schema_AttributeDecl* const Shaper_attributes[] = {&Shaper_name_attribute};
const Schema_ComplexType interfaces_qos_Shaper = {
    .name = "Shaper", .namespaceName = INTERFACES_QOS_NAMESPACE, .content = &Shaper_content,
    .attributes = Shaper_attributes, .attributeCount = 1};

/* <xs:element name="shaper" type="Shaper"/> */
const Schema_ElementDecl interfaces_qos_element_shaper = {
    .name = "shaper", .namespaceName = INTERFACES_QOS_NAMESPACE, .type = &interfaces_qos_Shaper,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1, .maxOccurs = 1};

/* clang-format on */

void interfaces_fill_qos(void)
{
    Load_base[0] = Schema_BLDIN_string();
    DscpName_base[0] = Schema_BLDIN_string();
    DscpNumber_base[0] = Schema_BLDIN_unsignedByte();
    Tunnel_key.type = Schema_BLDIN_unsignedInt();
    Queue_limit.type = Schema_BLDIN_unsignedLong();
    Shaper_rate.type = Schema_BLDIN_unsignedLong();
    Shaper_burst.type = Schema_BLDIN_unsignedLong();
}
