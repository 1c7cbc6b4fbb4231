/* The document element, notes, extensions, and the attributes that stand everywhere.
 *
 * A record or array that is not constant gets a built-in type at registration: see the end of the
 * file. */
#include "interfaces_records.h"

/* clang-format off */

/* xml:lang, top level */
Schema_AttributeDecl interfaces_xml_attribute_lang = {
    .name = "lang", .namespaceName = XML_NAMESPACE_XML};

/* <xs:attribute name="tag" type="Name"/> */
const Schema_AttributeDecl interfaces_attribute_tag = {
    .name = "tag", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Name};

/* <xs:attributeGroup name="Audit"> */
/* <xs:attribute name="changedBy" type="Name"/> */
static const Schema_AttributeDecl Audit_group_changedBy_attribute = {
    .name = "changedBy", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Name};
/* <xs:attribute name="changedAt" type="xs:dateTime"/> */
static Schema_AttributeDecl Audit_group_changedAt_attribute = {
    .name = "changedAt", .namespaceName = INTERFACES_NAMESPACE};
static const Schema_AttributeDecl* const Audit_group_attributes[] = {
    &Audit_group_changedBy_attribute, &Audit_group_changedAt_attribute};
const Schema_AttributeGroup interfaces_group_Audit = {
    .name = "Audit", .namespaceName = INTERFACES_NAMESPACE, .attributes = Audit_group_attributes,
    .attributeCount = 2};

/* <xs:attributeGroup name="Common"> */
/* <xs:attribute ref="xml:lang"/> */
static const Schema_AttributeDecl Common_group_lang_attribute = {
    .ref = &interfaces_xml_attribute_lang};
/* <xs:attribute ref="tag"/> */
static const Schema_AttributeDecl Common_group_tag_attribute = {.ref = &interfaces_attribute_tag};
/* <xs:attributeGroup ref="Audit"/> */
static const Schema_AttributeGroup Common_group_Audit_group = {.ref = &interfaces_group_Audit};
static const Schema_AttributeDecl* const Common_group_attributes[] = {
    &Common_group_lang_attribute, &Common_group_tag_attribute};
static const Schema_AttributeGroup* const Common_group_groups[] = {&Common_group_Audit_group};
/* <xs:anyAttribute namespace="##other" processContents="lax"/> */
static const Schema_AttributeWildcard Common_group_anyAttribute = {
    .targetNamespace = INTERFACES_NAMESPACE, .namespaceName = "##other",
    .processContents = SCHEMA_PROCESS_LAX};
const Schema_AttributeGroup interfaces_group_Common = {
    .name = "Common", .namespaceName = INTERFACES_NAMESPACE,
    .attributes = Common_group_attributes, .attributeCount = 2,
    .attributeGroups = Common_group_groups, .attributeGroupCount = 1,
    .anyAttribute = &Common_group_anyAttribute};

/* <xs:complexType name="Empty"/> */

const Schema_ComplexType interfaces_Empty = {
    .name = "Empty", .namespaceName = INTERFACES_NAMESPACE};

/* <xs:complexType name="Note" mixed="true"> */

/* <xs:element name="code" type="xs:string"/> */
static Schema_ElementDecl Note_code = {
    .name = "code", .namespaceName = INTERFACES_NAMESPACE, .typeKind = SCHEMA_KIND_SIMPLE_TYPE,
    .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="see" type="xs:anyURI"/> */
static Schema_ElementDecl Note_see = {
    .name = "see", .namespaceName = INTERFACES_NAMESPACE, .typeKind = SCHEMA_KIND_SIMPLE_TYPE,
    .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="emphasis" type="Note"/> */
static const Schema_ElementDecl Note_emphasis = {
    .name = "emphasis", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Note,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1, .maxOccurs = 1};
static const Schema_Object Note_content_particles[] = {
    {&Note_code, SCHEMA_KIND_ELEMENT},
    {&Note_see, SCHEMA_KIND_ELEMENT},
    {&Note_emphasis, SCHEMA_KIND_ELEMENT},
};
/* <xs:choice minOccurs="0" maxOccurs="unbounded"> */
static const Schema_ModelGroup Note_content = {
    .compositor = SCHEMA_COMPOSITOR_CHOICE, .particles = Note_content_particles,
    .particleCount = 3, .maxOccurs = SCHEMA_UNBOUNDED};
/* <xs:attributeGroup ref="Common"/> */
static const Schema_AttributeGroup Note_Common_group = {.ref = &interfaces_group_Common};
static const Schema_AttributeGroup* const Note_groups[] = {&Note_Common_group};
const Schema_ComplexType interfaces_Note = {
    .name = "Note", .namespaceName = INTERFACES_NAMESPACE, .content = &Note_content, .mixed = 1,
    .attributeGroups = Note_groups, .attributeGroupCount = 1};

/* <xs:element name="note" type="Note"/> */
const Schema_ElementDecl interfaces_element_note = {
    .name = "note", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Note,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1, .maxOccurs = 1};

/* <xs:complexType name="VendorData"> */

/* <xs:any namespace="##any" processContents="skip" minOccurs="0" maxOccurs="unbounded"/> */
static const Schema_Wildcard VendorData_opaque_any = {
    .targetNamespace = INTERFACES_NAMESPACE, .namespaceName = "##any",
    .processContents = SCHEMA_PROCESS_SKIP, .maxOccurs = SCHEMA_UNBOUNDED};
static const Schema_Object VendorData_opaque_content_particles[] = {
    {&VendorData_opaque_any, SCHEMA_KIND_WILDCARD},
};
/* <xs:sequence> */
static const Schema_ModelGroup VendorData_opaque_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = VendorData_opaque_content_particles,
    .particleCount = 1, .minOccurs = 1, .maxOccurs = 1};
/* <xs:anyAttribute namespace="##any" processContents="skip"/> */
static const Schema_AttributeWildcard VendorData_opaque_anyAttribute = {
    .targetNamespace = INTERFACES_NAMESPACE, .namespaceName = "##any",
    .processContents = SCHEMA_PROCESS_SKIP};
static const Schema_ComplexType VendorData_opaque_type = {
    .content = &VendorData_opaque_content, .mixed = 1,
    .anyAttribute = &VendorData_opaque_anyAttribute};

/* <xs:element name="opaque" minOccurs="0"> */
static const Schema_ElementDecl VendorData_opaque = {
    .name = "opaque", .namespaceName = INTERFACES_NAMESPACE, .type = &VendorData_opaque_type,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
/* <xs:any namespace="##other" processContents="lax" minOccurs="0" maxOccurs="unbounded"/> */
static const Schema_Wildcard VendorData_any = {
    .targetNamespace = INTERFACES_NAMESPACE, .namespaceName = "##other",
    .processContents = SCHEMA_PROCESS_LAX, .maxOccurs = SCHEMA_UNBOUNDED};
static const Schema_Object VendorData_content_particles[] = {
    {&VendorData_opaque, SCHEMA_KIND_ELEMENT},
    {&VendorData_any, SCHEMA_KIND_WILDCARD},
};
/* <xs:sequence> */
static const Schema_ModelGroup VendorData_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = VendorData_content_particles,
    .particleCount = 2, .minOccurs = 1, .maxOccurs = 1};
/* <xs:attribute name="vendor" type="Name" use="required"/> */
static const Schema_AttributeDecl VendorData_vendor_attribute = {
    .name = "vendor", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Name,
    .use = SCHEMA_USE_REQUIRED};
static const Schema_AttributeDecl* const VendorData_attributes[] = {&VendorData_vendor_attribute};
const Schema_ComplexType interfaces_VendorData = {
    .name = "VendorData", .namespaceName = INTERFACES_NAMESPACE, .content = &VendorData_content,
    .attributes = VendorData_attributes, .attributeCount = 1};

/* <xs:complexType name="Extensions"> */

/* <xs:any namespace="urn:example:network:qos" processContents="strict" maxOccurs="16"/> */
static const Schema_Wildcard Extensions_any = {
    .targetNamespace = INTERFACES_NAMESPACE, .namespaceName = INTERFACES_QOS_NAMESPACE,
    .processContents = SCHEMA_PROCESS_STRICT, .minOccurs = 1, .maxOccurs = 16};
static const Schema_Object Extensions_content_particles[] = {
    {&Extensions_any, SCHEMA_KIND_WILDCARD},
};
/* <xs:sequence> */
static const Schema_ModelGroup Extensions_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Extensions_content_particles,
    .particleCount = 1, .minOccurs = 1, .maxOccurs = 1};
const Schema_ComplexType interfaces_Extensions = {
    .name = "Extensions", .namespaceName = INTERFACES_NAMESPACE, .content = &Extensions_content};

/* <xs:complexType name="Network"> */

/* <xs:element name="device" type="Device"/> */
static const Schema_ElementDecl Network_device = {
    .name = "device", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Device,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="clock" type="Clock" minOccurs="0"/> */
static const Schema_ElementDecl Network_clock = {
    .name = "clock", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Clock,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
/* <xs:element name="management" type="Management" minOccurs="0"/> */
static const Schema_ElementDecl Network_management = {
    .name = "management", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Management,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
/* <xs:element name="vlans" type="Vlans" minOccurs="0"/> */
static const Schema_ElementDecl Network_vlans = {
    .name = "vlans", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Vlans,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
/* <xs:element name="interfaces" type="Interfaces" minOccurs="0"/> */
static const Schema_ElementDecl Network_interfaces = {
    .name = "interfaces", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Interfaces,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
/* <xs:element name="routing" type="Routing" minOccurs="0"/> */
static const Schema_ElementDecl Network_routing = {
    .name = "routing", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Routing,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
/* <xs:element name="accessLists" type="AccessLists" minOccurs="0"/> */
static const Schema_ElementDecl Network_accessLists = {
    .name = "accessLists", .namespaceName = INTERFACES_NAMESPACE,
    .type = &interfaces_AccessLists, .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
/* <xs:element ref="note" minOccurs="0" maxOccurs="unbounded"/> */
static const Schema_ElementDecl Network_note = {
    .ref = &interfaces_element_note, .maxOccurs = SCHEMA_UNBOUNDED};
/* <xs:element name="extensions" type="Extensions" minOccurs="0"/> */
static const Schema_ElementDecl Network_extensions = {
    .name = "extensions", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Extensions,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
static const Schema_Object Network_content_particles[] = {
    {&Network_device, SCHEMA_KIND_ELEMENT},
    {&Network_clock, SCHEMA_KIND_ELEMENT},
    {&Network_management, SCHEMA_KIND_ELEMENT},
    {&Network_vlans, SCHEMA_KIND_ELEMENT},
    {&Network_interfaces, SCHEMA_KIND_ELEMENT},
    {&Network_routing, SCHEMA_KIND_ELEMENT},
    {&Network_accessLists, SCHEMA_KIND_ELEMENT},
    {&Network_note, SCHEMA_KIND_ELEMENT},
    {&Network_extensions, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Network_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Network_content_particles,
    .particleCount = 9, .minOccurs = 1, .maxOccurs = 1};
/* <xs:attribute name="version" type="xs:string" use="required" fixed="1.2"/> */
static Schema_AttributeDecl Network_version_attribute = {
    .name = "version", .namespaceName = INTERFACES_NAMESPACE, .value = "1.2", .fixed = 1,
    .use = SCHEMA_USE_REQUIRED};
/* <xs:attributeGroup ref="Common"/> */
static const Schema_AttributeGroup Network_Common_group = {.ref = &interfaces_group_Common};
static const Schema_AttributeDecl* const Network_attributes[] = {&Network_version_attribute};
static const Schema_AttributeGroup* const Network_groups[] = {&Network_Common_group};
const Schema_ComplexType interfaces_Network = {
    .name = "Network", .namespaceName = INTERFACES_NAMESPACE, .content = &Network_content,
    .attributes = Network_attributes, .attributeCount = 1, .attributeGroups = Network_groups,
    .attributeGroupCount = 1};

/* <xs:element name="network" type="Network"/> */
const Schema_ElementDecl interfaces_element_network = {
    .name = "network", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Network,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1, .maxOccurs = 1};

/* clang-format on */

void interfaces_fill_network(void)
{
    interfaces_xml_attribute_lang.type = Schema_BLDIN_language();
    Audit_group_changedAt_attribute.type = Schema_BLDIN_dateTime();
    Note_code.type = Schema_BLDIN_string();
    Note_see.type = Schema_BLDIN_anyURI();
    Network_version_attribute.type = Schema_BLDIN_string();
}
