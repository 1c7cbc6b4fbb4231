/* Access lists: rules in groups, and their conditions.
 *
 * A record or array that is not constant gets a built-in type at registration: see the end of the
 * file. */
#include "interfaces_records.h"

/* clang-format off */

/* <xs:complexType name="Endpoint"> */

/* <xs:element name="prefix" type="IpPrefix"/> */
static const Schema_ElementDecl Endpoint_prefix = {
    .name = "prefix", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_IpPrefix,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="host" type="IpAddress"/> */
static const Schema_ElementDecl Endpoint_host = {
    .name = "host", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_IpAddress,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1};
static const Schema_Object Endpoint_content_choice_particles[] = {
    {&Endpoint_prefix, SCHEMA_KIND_ELEMENT},
    {&Endpoint_host, SCHEMA_KIND_ELEMENT},
};
/* <xs:choice> */
static const Schema_ModelGroup Endpoint_content_choice = {
    .compositor = SCHEMA_COMPOSITOR_CHOICE, .particles = Endpoint_content_choice_particles,
    .particleCount = 2, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="ports" type="_PortRange" minOccurs="0"/> */
static const Schema_ElementDecl Endpoint_ports = {
    .name = "ports", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_PortRange,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
static const Schema_Object Endpoint_content_particles[] = {
    {&Endpoint_content_choice, SCHEMA_KIND_MODEL_GROUP},
    {&Endpoint_ports, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Endpoint_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Endpoint_content_particles,
    .particleCount = 2, .minOccurs = 1, .maxOccurs = 1};
const Schema_ComplexType interfaces_Endpoint = {
    .name = "Endpoint", .namespaceName = INTERFACES_NAMESPACE, .content = &Endpoint_content};

/* <xs:element name="condition" abstract="true"/> */
const Schema_ElementDecl interfaces_element_condition = {
    .name = "condition", .namespaceName = INTERFACES_NAMESPACE, .minOccurs = 1, .maxOccurs = 1,
    .abstract = 1};

/* <xs:element name="protocol" type="Protocol" substitutionGroup="condition"/> */
const Schema_ElementDecl interfaces_element_protocol = {
    .name = "protocol", .namespaceName = INTERFACES_NAMESPACE,
    .substitutionGroupName = "condition", .substitutionGroupNamespace = INTERFACES_NAMESPACE,
    .type = &interfaces_Protocol, .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1,
    .maxOccurs = 1};

/* <xs:element name="source" type="Endpoint" substitutionGroup="condition"/> */
const Schema_ElementDecl interfaces_element_source = {
    .name = "source", .namespaceName = INTERFACES_NAMESPACE,
    .substitutionGroupName = "condition", .substitutionGroupNamespace = INTERFACES_NAMESPACE,
    .type = &interfaces_Endpoint, .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1,
    .maxOccurs = 1};

/* <xs:element name="destination" type="Endpoint" substitutionGroup="condition"/> */
const Schema_ElementDecl interfaces_element_destination = {
    .name = "destination", .namespaceName = INTERFACES_NAMESPACE,
    .substitutionGroupName = "condition", .substitutionGroupNamespace = INTERFACES_NAMESPACE,
    .type = &interfaces_Endpoint, .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1,
    .maxOccurs = 1};

/* <xs:element name="established" type="Empty" substitutionGroup="condition"/> */
const Schema_ElementDecl interfaces_element_established = {
    .name = "established", .namespaceName = INTERFACES_NAMESPACE,
    .substitutionGroupName = "condition", .substitutionGroupNamespace = INTERFACES_NAMESPACE,
    .type = &interfaces_Empty, .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1,
    .maxOccurs = 1};

/* <xs:complexType name="Match"> */

/* <xs:element name="any" type="Empty"/> */
static const Schema_ElementDecl Match_any = {
    .name = "any", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Empty,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element ref="condition" maxOccurs="8"/> */
static const Schema_ElementDecl Match_condition = {
    .ref = &interfaces_element_condition, .minOccurs = 1, .maxOccurs = 8};
static const Schema_Object Match_content_particles[] = {
    {&Match_any, SCHEMA_KIND_ELEMENT},
    {&Match_condition, SCHEMA_KIND_ELEMENT},
};
/* <xs:choice> */
static const Schema_ModelGroup Match_content = {
    .compositor = SCHEMA_COMPOSITOR_CHOICE, .particles = Match_content_particles,
    .particleCount = 2, .minOccurs = 1, .maxOccurs = 1};
const Schema_ComplexType interfaces_Match = {
    .name = "Match", .namespaceName = INTERFACES_NAMESPACE, .content = &Match_content};

/* <xs:complexType name="Rule"> */

/* <xs:element name="action" type="Action"/> */
static const Schema_ElementDecl Rule_action = {
    .name = "action", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Action,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="match" type="Match"/> */
static const Schema_ElementDecl Rule_match = {
    .name = "match", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Match,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="log" type="Empty" minOccurs="0"/> */
static const Schema_ElementDecl Rule_log = {
    .name = "log", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Empty,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
/* <xs:element name="expires" type="xs:dateTime" minOccurs="0"/> */
static Schema_ElementDecl Rule_expires = {
    .name = "expires", .namespaceName = INTERFACES_NAMESPACE,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
static const Schema_Object Rule_content_particles[] = {
    {&Rule_action, SCHEMA_KIND_ELEMENT},
    {&Rule_match, SCHEMA_KIND_ELEMENT},
    {&Rule_log, SCHEMA_KIND_ELEMENT},
    {&Rule_expires, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Rule_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Rule_content_particles,
    .particleCount = 4, .minOccurs = 1, .maxOccurs = 1};
/* <xs:attribute name="number" type="xs:positiveInteger" use="required"/> */
static Schema_AttributeDecl Rule_number_attribute = {
    .name = "number", .namespaceName = INTERFACES_NAMESPACE, .use = SCHEMA_USE_REQUIRED};
static const Schema_AttributeDecl* const Rule_attributes[] = {&Rule_number_attribute};
const Schema_ComplexType interfaces_Rule = {
    .name = "Rule", .namespaceName = INTERFACES_NAMESPACE, .content = &Rule_content,
    .attributes = Rule_attributes, .attributeCount = 1};

/* <xs:complexType name="RuleGroup"> */

/* <xs:element name="title" type="Text"/> */
static const Schema_ElementDecl RuleGroup_title = {
    .name = "title", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Text,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="rule" type="Rule"/> */
static const Schema_ElementDecl RuleGroup_rule = {
    .name = "rule", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Rule,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="group" type="RuleGroup"/> */
static const Schema_ElementDecl RuleGroup_group = {
    .name = "group", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_RuleGroup,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1, .maxOccurs = 1};
static const Schema_Object RuleGroup_content_choice_particles[] = {
    {&RuleGroup_rule, SCHEMA_KIND_ELEMENT},
    {&RuleGroup_group, SCHEMA_KIND_ELEMENT},
};
/* <xs:choice minOccurs="0" maxOccurs="unbounded"> */
static const Schema_ModelGroup RuleGroup_content_choice = {
    .compositor = SCHEMA_COMPOSITOR_CHOICE, .particles = RuleGroup_content_choice_particles,
    .particleCount = 2, .maxOccurs = SCHEMA_UNBOUNDED};
static const Schema_Object RuleGroup_content_particles[] = {
    {&RuleGroup_title, SCHEMA_KIND_ELEMENT},
    {&RuleGroup_content_choice, SCHEMA_KIND_MODEL_GROUP},
};
/* <xs:sequence> */
static const Schema_ModelGroup RuleGroup_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = RuleGroup_content_particles,
    .particleCount = 2, .minOccurs = 1, .maxOccurs = 1};
const Schema_ComplexType interfaces_RuleGroup = {
    .name = "RuleGroup", .namespaceName = INTERFACES_NAMESPACE, .content = &RuleGroup_content};

/* <xs:complexType name="AccessList"> */

/* <xs:element name="rule" type="Rule"/> */
static const Schema_ElementDecl AccessList_rule = {
    .name = "rule", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Rule,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="group" type="RuleGroup"/> */
static const Schema_ElementDecl AccessList_group = {
    .name = "group", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_RuleGroup,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1, .maxOccurs = 1};
static const Schema_Object AccessList_content_particles[] = {
    {&AccessList_rule, SCHEMA_KIND_ELEMENT},
    {&AccessList_group, SCHEMA_KIND_ELEMENT},
};
/* <xs:choice maxOccurs="unbounded"> */
static const Schema_ModelGroup AccessList_content = {
    .compositor = SCHEMA_COMPOSITOR_CHOICE, .particles = AccessList_content_particles,
    .particleCount = 2, .minOccurs = 1, .maxOccurs = SCHEMA_UNBOUNDED};
/* <xs:attribute name="name" type="Name" use="required"/> */
static const Schema_AttributeDecl AccessList_name_attribute = {
    .name = "name", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Name,
    .use = SCHEMA_USE_REQUIRED};
/* <xs:simpleType> <xs:restriction base="xs:string"> */
static const Schema_SimpleType* AccessList_family_attribute_type_base[1];
static const Schema_Facet AccessList_family_attribute_type_facets[] = {
    {"ipv4", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
    {"ipv6", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
};
static const Schema_SimpleType AccessList_family_attribute_type = {
    .members = AccessList_family_attribute_type_base, .memberCount = 1,
    .facets = AccessList_family_attribute_type_facets, .facetCount = 2};

/* <xs:attribute name="family"> */
static const Schema_AttributeDecl AccessList_family_attribute = {
    .name = "family", .namespaceName = INTERFACES_NAMESPACE,
    .type = &AccessList_family_attribute_type};
static const Schema_AttributeDecl* const AccessList_attributes[] = {
    &AccessList_name_attribute, &AccessList_family_attribute};
const Schema_ComplexType interfaces_AccessList = {
    .name = "AccessList", .namespaceName = INTERFACES_NAMESPACE, .content = &AccessList_content,
    .attributes = AccessList_attributes, .attributeCount = 2};

/* <xs:complexType name="AccessLists"> */

/* <xs:element name="accessList" type="AccessList" minOccurs="0" maxOccurs="unbounded"/> */
static const Schema_ElementDecl AccessLists_accessList = {
    .name = "accessList", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_AccessList,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = SCHEMA_UNBOUNDED};
static const Schema_Object AccessLists_content_particles[] = {
    {&AccessLists_accessList, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup AccessLists_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = AccessLists_content_particles,
    .particleCount = 1, .minOccurs = 1, .maxOccurs = 1};
const Schema_ComplexType interfaces_AccessLists = {
    .name = "AccessLists", .namespaceName = INTERFACES_NAMESPACE, .content = &AccessLists_content};

/* clang-format on */

void interfaces_fill_acl(void)
{
    Rule_expires.type = Schema_BLDIN_dateTime();
    Rule_number_attribute.type = Schema_BLDIN_positiveInteger();
    AccessList_family_attribute_type_base[0] = Schema_BLDIN_string();
}
