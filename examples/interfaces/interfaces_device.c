/* What and where the device is, and its clock.
 *
 * A record or array that is not constant gets a built-in type at registration: see the end of the
 * file. */
#include "interfaces_records.h"

/* clang-format off */

/* <xs:complexType name="Location"> */

/* <xs:element name="site" type="Text"/> */
static const Schema_ElementDecl Location_site = {
    .name = "site", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Text,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="room" type="Text"/> */
static const Schema_ElementDecl Location_room = {
    .name = "room", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Text,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="rack" type="Name" minOccurs="0"/> */
static const Schema_ElementDecl Location_rack = {
    .name = "rack", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Name,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
/* <xs:element name="unit" type="xs:positiveInteger" minOccurs="0"/> */
static Schema_ElementDecl Location_unit = {
    .name = "unit", .namespaceName = INTERFACES_NAMESPACE, .typeKind = SCHEMA_KIND_SIMPLE_TYPE,
    .maxOccurs = 1};
static const Schema_Object Location_content_sequence_particles[] = {
    {&Location_room, SCHEMA_KIND_ELEMENT},
    {&Location_rack, SCHEMA_KIND_ELEMENT},
    {&Location_unit, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence minOccurs="0"> */
static const Schema_ModelGroup Location_content_sequence = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Location_content_sequence_particles,
    .particleCount = 3, .maxOccurs = 1};
static const Schema_Object Location_content_particles[] = {
    {&Location_site, SCHEMA_KIND_ELEMENT},
    {&Location_content_sequence, SCHEMA_KIND_MODEL_GROUP},
};
/* <xs:sequence> */
static const Schema_ModelGroup Location_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Location_content_particles,
    .particleCount = 2, .minOccurs = 1, .maxOccurs = 1};
const Schema_ComplexType interfaces_Location = {
    .name = "Location", .namespaceName = INTERFACES_NAMESPACE, .content = &Location_content};

/* <xs:complexType name="Contact"> */

/* <xs:simpleType> <xs:restriction base="xs:string"> */
static const Schema_SimpleType* Contact_role_attribute_type_base[1];
static const Schema_Facet Contact_role_attribute_type_facets[] = {
    {"operator", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
    {"owner", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
};
static const Schema_SimpleType Contact_role_attribute_type = {
    .members = Contact_role_attribute_type_base, .memberCount = 1,
    .facets = Contact_role_attribute_type_facets, .facetCount = 2};

/* <xs:attribute name="role" use="required"> */
static const Schema_AttributeDecl Contact_role_attribute = {
    .name = "role", .namespaceName = INTERFACES_NAMESPACE, .type = &Contact_role_attribute_type,
    .use = SCHEMA_USE_REQUIRED};
/* <xs:attribute name="phone" type="xs:string"/> */
static Schema_AttributeDecl Contact_phone_attribute = {
    .name = "phone", .namespaceName = INTERFACES_NAMESPACE};
static const Schema_AttributeDecl* const Contact_attributes[] = {
    &Contact_role_attribute, &Contact_phone_attribute};
/* <xs:extension base="Text"> */
static const Schema_Derivation Contact_derivation = {
    .kind = SCHEMA_KIND_SIMPLE_EXTENSION, .base = &interfaces_Text,
    .baseKind = SCHEMA_KIND_SIMPLE_TYPE, .attributes = Contact_attributes, .attributeCount = 2};
const Schema_ComplexType interfaces_Contact = {
    .name = "Contact", .namespaceName = INTERFACES_NAMESPACE, .derivation = &Contact_derivation};

/* <xs:complexType name="Device"> */

/* <xs:element name="hostname" type="Name"/> */
static const Schema_ElementDecl Device_hostname = {
    .name = "hostname", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Name,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="model" type="Text"/> */
static const Schema_ElementDecl Device_model = {
    .name = "model", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Text,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="assetNumber" type="AssetNumber" minOccurs="0"/> */
static const Schema_ElementDecl Device_assetNumber = {
    .name = "assetNumber", .namespaceName = INTERFACES_NAMESPACE,
    .type = &interfaces_AssetNumber, .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
/* <xs:element name="location" type="Location" minOccurs="0"/> */
static const Schema_ElementDecl Device_location = {
    .name = "location", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Location,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
/* <xs:element name="contact" type="Contact" minOccurs="0" maxOccurs="3"/> */
static const Schema_ElementDecl Device_contact = {
    .name = "contact", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Contact,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 3};
/* <xs:element name="installed" type="ServiceDate" minOccurs="0"/> */
static const Schema_ElementDecl Device_installed = {
    .name = "installed", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_ServiceDate,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
/* <xs:element name="certificateUntil" type="xs:gYearMonth" minOccurs="0"/> */
static Schema_ElementDecl Device_certificateUntil = {
    .name = "certificateUntil", .namespaceName = INTERFACES_NAMESPACE,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
/* <xs:element name="temperatureLimit" type="Temperature" minOccurs="0"/> */
static const Schema_ElementDecl Device_temperatureLimit = {
    .name = "temperatureLimit", .namespaceName = INTERFACES_NAMESPACE,
    .type = &interfaces_Temperature, .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
/* <xs:element name="hostKey" type="Key" nillable="true" minOccurs="0"/> */
static const Schema_ElementDecl Device_hostKey = {
    .name = "hostKey", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Key,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1, .nillable = 1};
/* <xs:element name="documentation" type="xs:anyURI" minOccurs="0"/> */
static Schema_ElementDecl Device_documentation = {
    .name = "documentation", .namespaceName = INTERFACES_NAMESPACE,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
/* <xs:element name="language" type="xs:language" minOccurs="0"/> */
static Schema_ElementDecl Device_language = {
    .name = "language", .namespaceName = INTERFACES_NAMESPACE,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
/* <xs:element name="profile" type="xs:QName" minOccurs="0"/> */
static Schema_ElementDecl Device_profile = {
    .name = "profile", .namespaceName = INTERFACES_NAMESPACE,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
static const Schema_Object Device_content_particles[] = {
    {&Device_hostname, SCHEMA_KIND_ELEMENT},
    {&Device_model, SCHEMA_KIND_ELEMENT},
    {&Device_assetNumber, SCHEMA_KIND_ELEMENT},
    {&Device_location, SCHEMA_KIND_ELEMENT},
    {&Device_contact, SCHEMA_KIND_ELEMENT},
    {&Device_installed, SCHEMA_KIND_ELEMENT},
    {&Device_certificateUntil, SCHEMA_KIND_ELEMENT},
    {&Device_temperatureLimit, SCHEMA_KIND_ELEMENT},
    {&Device_hostKey, SCHEMA_KIND_ELEMENT},
    {&Device_documentation, SCHEMA_KIND_ELEMENT},
    {&Device_language, SCHEMA_KIND_ELEMENT},
    {&Device_profile, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Device_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Device_content_particles,
    .particleCount = 12, .minOccurs = 1, .maxOccurs = 1};
/* <xs:attributeGroup ref="Audit"/> */
static const Schema_AttributeGroup Device_Audit_group = {.ref = &interfaces_group_Audit};
static const Schema_AttributeGroup* const Device_groups[] = {&Device_Audit_group};
const Schema_ComplexType interfaces_Device = {
    .name = "Device", .namespaceName = INTERFACES_NAMESPACE, .content = &Device_content,
    .attributeGroups = Device_groups, .attributeGroupCount = 1};

/* <xs:complexType name="Clock"> */

/* <xs:element name="timeZone" type="Name"/> */
static const Schema_ElementDecl Clock_timeZone = {
    .name = "timeZone", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Name,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="offset" type="xs:int" minOccurs="0"/> */
static Schema_ElementDecl Clock_offset = {
    .name = "offset", .namespaceName = INTERFACES_NAMESPACE, .typeKind = SCHEMA_KIND_SIMPLE_TYPE,
    .maxOccurs = 1};
/* <xs:element name="summerTime" type="xs:boolean" minOccurs="0"/> */
static Schema_ElementDecl Clock_summerTime = {
    .name = "summerTime", .namespaceName = INTERFACES_NAMESPACE,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
/* <xs:element name="reboot" type="xs:time" minOccurs="0"/> */
static Schema_ElementDecl Clock_reboot = {
    .name = "reboot", .namespaceName = INTERFACES_NAMESPACE, .typeKind = SCHEMA_KIND_SIMPLE_TYPE,
    .maxOccurs = 1};
static const Schema_Object Clock_content_particles[] = {
    {&Clock_timeZone, SCHEMA_KIND_ELEMENT},
    {&Clock_offset, SCHEMA_KIND_ELEMENT},
    {&Clock_summerTime, SCHEMA_KIND_ELEMENT},
    {&Clock_reboot, SCHEMA_KIND_ELEMENT},
};
/* <xs:all> */
static const Schema_ModelGroup Clock_content = {
    .compositor = SCHEMA_COMPOSITOR_ALL, .particles = Clock_content_particles,
    .particleCount = 4, .minOccurs = 1, .maxOccurs = 1};
const Schema_ComplexType interfaces_Clock = {
    .name = "Clock", .namespaceName = INTERFACES_NAMESPACE, .content = &Clock_content};

/* clang-format on */

void interfaces_fill_device(void)
{
    Location_unit.type = Schema_BLDIN_positiveInteger();
    Contact_role_attribute_type_base[0] = Schema_BLDIN_string();
    Contact_phone_attribute.type = Schema_BLDIN_string();
    Device_certificateUntil.type = Schema_BLDIN_gYearMonth();
    Device_documentation.type = Schema_BLDIN_anyURI();
    Device_language.type = Schema_BLDIN_language();
    Device_profile.type = Schema_BLDIN_QName();
    Clock_offset.type = Schema_BLDIN_int();
    Clock_summerTime.type = Schema_BLDIN_boolean();
    Clock_reboot.type = Schema_BLDIN_time();
}
