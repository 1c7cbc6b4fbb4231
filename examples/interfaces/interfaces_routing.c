/* Static routes and OSPF.
 *
 * A record or array that is not constant gets a built-in type at registration: see the end of the
 * file. */
#include "interfaces_records.h"

/* clang-format off */

/* <xs:complexType name="StaticRoute"> */

/* <xs:element name="prefix" type="IpPrefix"/> */
static const Schema_ElementDecl StaticRoute_prefix = {
    .name = "prefix", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_IpPrefix,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="nextHop" type="NextHop" maxOccurs="8"/> */
static const Schema_ElementDecl StaticRoute_nextHop = {
    .name = "nextHop", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_NextHop,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 8};
/* <xs:element name="metric" type="xs:unsignedInt" minOccurs="0"/> */
static Schema_ElementDecl StaticRoute_metric = {
    .name = "metric", .namespaceName = INTERFACES_NAMESPACE, .typeKind = SCHEMA_KIND_SIMPLE_TYPE,
    .maxOccurs = 1};
/* <xs:element name="distance" type="xs:unsignedByte" minOccurs="0"/> */
static Schema_ElementDecl StaticRoute_distance = {
    .name = "distance", .namespaceName = INTERFACES_NAMESPACE,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
static const Schema_Object StaticRoute_content_particles[] = {
    {&StaticRoute_prefix, SCHEMA_KIND_ELEMENT},
    {&StaticRoute_nextHop, SCHEMA_KIND_ELEMENT},
    {&StaticRoute_metric, SCHEMA_KIND_ELEMENT},
    {&StaticRoute_distance, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup StaticRoute_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = StaticRoute_content_particles,
    .particleCount = 4, .minOccurs = 1, .maxOccurs = 1};
/* <xs:attribute ref="tag"/> */
static const Schema_AttributeDecl StaticRoute_tag_attribute = {.ref = &interfaces_attribute_tag};
static const Schema_AttributeDecl* const StaticRoute_attributes[] = {&StaticRoute_tag_attribute};
const Schema_ComplexType interfaces_StaticRoute = {
    .name = "StaticRoute", .namespaceName = INTERFACES_NAMESPACE,
    .content = &StaticRoute_content, .attributes = StaticRoute_attributes, .attributeCount = 1};

/* <xs:complexType name="OspfArea"> */

/* <xs:element name="prefix" type="IpPrefix" maxOccurs="64"/> */
static const Schema_ElementDecl OspfArea_prefix = {
    .name = "prefix", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_IpPrefix,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 64};
/* <xs:element name="stub" type="Empty" minOccurs="0"/> */
static const Schema_ElementDecl OspfArea_stub = {
    .name = "stub", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Empty,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
static const Schema_Object OspfArea_content_particles[] = {
    {&OspfArea_prefix, SCHEMA_KIND_ELEMENT},
    {&OspfArea_stub, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup OspfArea_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = OspfArea_content_particles,
    .particleCount = 2, .minOccurs = 1, .maxOccurs = 1};
/* <xs:attribute name="id" type="Ipv4Address" use="required"/> */
static const Schema_AttributeDecl OspfArea_id_attribute = {
    .name = "id", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Ipv4Address,
    .use = SCHEMA_USE_REQUIRED};
static const Schema_AttributeDecl* const OspfArea_attributes[] = {&OspfArea_id_attribute};
const Schema_ComplexType interfaces_OspfArea = {
    .name = "OspfArea", .namespaceName = INTERFACES_NAMESPACE, .content = &OspfArea_content,
    .attributes = OspfArea_attributes, .attributeCount = 1};

/* <xs:complexType name="Redistribute"> */

/* <xs:element name="connected" type="Empty" minOccurs="0"/> */
static const Schema_ElementDecl Redistribute_connected = {
    .name = "connected", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Empty,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
/* <xs:element name="static" type="Empty" minOccurs="0"/> */
static const Schema_ElementDecl Redistribute_static = {
    .name = "static", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Empty,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
static const Schema_Object Redistribute_content_particles[] = {
    {&Redistribute_connected, SCHEMA_KIND_ELEMENT},
    {&Redistribute_static, SCHEMA_KIND_ELEMENT},
};
/* <xs:all> */
static const Schema_ModelGroup Redistribute_content = {
    .compositor = SCHEMA_COMPOSITOR_ALL, .particles = Redistribute_content_particles,
    .particleCount = 2, .minOccurs = 1, .maxOccurs = 1};
const Schema_ComplexType interfaces_Redistribute = {
    .name = "Redistribute", .namespaceName = INTERFACES_NAMESPACE,
    .content = &Redistribute_content};

/* <xs:complexType name="Ospf"> */

/* <xs:element name="area" type="OspfArea" maxOccurs="unbounded"/> */
static const Schema_ElementDecl Ospf_area = {
    .name = "area", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_OspfArea,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1, .maxOccurs = SCHEMA_UNBOUNDED};
/* <xs:element name="redistribute" type="Redistribute" minOccurs="0"/> */
static const Schema_ElementDecl Ospf_redistribute = {
    .name = "redistribute", .namespaceName = INTERFACES_NAMESPACE,
    .type = &interfaces_Redistribute, .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
static const Schema_Object Ospf_content_particles[] = {
    {&Ospf_area, SCHEMA_KIND_ELEMENT},
    {&Ospf_redistribute, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Ospf_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Ospf_content_particles,
    .particleCount = 2, .minOccurs = 1, .maxOccurs = 1};
/* <xs:attribute name="process" type="xs:unsignedShort" use="required"/> */
static Schema_AttributeDecl Ospf_process_attribute = {
    .name = "process", .namespaceName = INTERFACES_NAMESPACE, .use = SCHEMA_USE_REQUIRED};
static const Schema_AttributeDecl* const Ospf_attributes[] = {&Ospf_process_attribute};
const Schema_ComplexType interfaces_Ospf = {
    .name = "Ospf", .namespaceName = INTERFACES_NAMESPACE, .content = &Ospf_content,
    .attributes = Ospf_attributes, .attributeCount = 1};

/* <xs:complexType name="Routing"> */

/* <xs:element name="routerId" type="Ipv4Address" minOccurs="0"/> */
static const Schema_ElementDecl Routing_routerId = {
    .name = "routerId", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Ipv4Address,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
/* <xs:element name="route" type="StaticRoute" minOccurs="0" maxOccurs="unbounded"/> */
static const Schema_ElementDecl Routing_static_route = {
    .name = "route", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_StaticRoute,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = SCHEMA_UNBOUNDED};
static const Schema_Object Routing_static_content_particles[] = {
    {&Routing_static_route, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Routing_static_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Routing_static_content_particles,
    .particleCount = 1, .minOccurs = 1, .maxOccurs = 1};
static const Schema_ComplexType Routing_static_type = {.content = &Routing_static_content};

/* <xs:element name="static" minOccurs="0"> */
static const Schema_ElementDecl Routing_static = {
    .name = "static", .namespaceName = INTERFACES_NAMESPACE, .type = &Routing_static_type,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
/* <xs:element name="ospf" type="Ospf" minOccurs="0" maxOccurs="4"/> */
static const Schema_ElementDecl Routing_ospf = {
    .name = "ospf", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Ospf,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 4};
static const Schema_Object Routing_content_particles[] = {
    {&Routing_routerId, SCHEMA_KIND_ELEMENT},
    {&Routing_static, SCHEMA_KIND_ELEMENT},
    {&Routing_ospf, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Routing_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Routing_content_particles,
    .particleCount = 3, .minOccurs = 1, .maxOccurs = 1};
const Schema_ComplexType interfaces_Routing = {
    .name = "Routing", .namespaceName = INTERFACES_NAMESPACE, .content = &Routing_content};

/* clang-format on */

void interfaces_fill_routing(void)
{
    StaticRoute_metric.type = Schema_BLDIN_unsignedInt();
    StaticRoute_distance.type = Schema_BLDIN_unsignedByte();
    Ospf_process_attribute.type = Schema_BLDIN_unsignedShort();
}
