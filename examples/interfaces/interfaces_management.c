/* SNMP, time servers, name servers and logs.
 *
 * A record or array that is not constant gets a built-in type at registration: see the end of the
 * file. */
#include "interfaces_records.h"

/* clang-format off */

/* <xs:complexType name="Server"> */

/* <xs:attribute name="port" type="xs:unsignedShort"/> */
static Schema_AttributeDecl Server_port_attribute = {
    .name = "port", .namespaceName = INTERFACES_NAMESPACE};
/* <xs:attribute name="prefer" type="xs:boolean"/> */
static Schema_AttributeDecl Server_prefer_attribute = {
    .name = "prefer", .namespaceName = INTERFACES_NAMESPACE};
static const Schema_AttributeDecl* const Server_attributes[] = {
    &Server_port_attribute, &Server_prefer_attribute};
/* <xs:extension base="IpAddress"> */
static const Schema_Derivation Server_derivation = {
    .kind = SCHEMA_KIND_SIMPLE_EXTENSION, .base = &interfaces_IpAddress,
    .baseKind = SCHEMA_KIND_SIMPLE_TYPE, .attributes = Server_attributes, .attributeCount = 2};
const Schema_ComplexType interfaces_Server = {
    .name = "Server", .namespaceName = INTERFACES_NAMESPACE, .derivation = &Server_derivation};

/* <xs:complexType name="LogServer"> */

/* <xs:attribute name="severity" type="Severity"/> */
static const Schema_AttributeDecl LogServer_severity_attribute = {
    .name = "severity", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Severity};
static const Schema_AttributeDecl* const LogServer_attributes[] = {&LogServer_severity_attribute};
/* <xs:extension base="Server"> */
static const Schema_Derivation LogServer_derivation = {
    .kind = SCHEMA_KIND_SIMPLE_EXTENSION, .base = &interfaces_Server,
    .baseKind = SCHEMA_KIND_COMPLEX_TYPE, .attributes = LogServer_attributes, .attributeCount = 1};
const Schema_ComplexType interfaces_LogServer = {
    .name = "LogServer", .namespaceName = INTERFACES_NAMESPACE,
    .derivation = &LogServer_derivation};

/* <xs:complexType name="SnmpView"> */

/* <xs:element name="include" type="OID"/> */
static const Schema_ElementDecl SnmpView_include = {
    .name = "include", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_OID,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="exclude" type="OID"/> */
static const Schema_ElementDecl SnmpView_exclude = {
    .name = "exclude", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_OID,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1};
static const Schema_Object SnmpView_content_particles[] = {
    {&SnmpView_include, SCHEMA_KIND_ELEMENT},
    {&SnmpView_exclude, SCHEMA_KIND_ELEMENT},
};
/* <xs:choice maxOccurs="unbounded"> */
static const Schema_ModelGroup SnmpView_content = {
    .compositor = SCHEMA_COMPOSITOR_CHOICE, .particles = SnmpView_content_particles,
    .particleCount = 2, .minOccurs = 1, .maxOccurs = SCHEMA_UNBOUNDED};
/* <xs:attribute name="name" type="Name" use="required"/> */
static const Schema_AttributeDecl SnmpView_name_attribute = {
    .name = "name", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Name,
    .use = SCHEMA_USE_REQUIRED};
static const Schema_AttributeDecl* const SnmpView_attributes[] = {&SnmpView_name_attribute};
const Schema_ComplexType interfaces_SnmpView = {
    .name = "SnmpView", .namespaceName = INTERFACES_NAMESPACE, .content = &SnmpView_content,
    .attributes = SnmpView_attributes, .attributeCount = 1};

/* <xs:complexType name="Snmp"> */

/* <xs:element name="engineId" type="EngineId"/> */
static const Schema_ElementDecl Snmp_engineId = {
    .name = "engineId", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_EngineId,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="view" type="SnmpView" minOccurs="0" maxOccurs="unbounded"/> */
static const Schema_ElementDecl Snmp_view = {
    .name = "view", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_SnmpView,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = SCHEMA_UNBOUNDED};
/* <xs:element name="trapTarget" type="Server" minOccurs="0" maxOccurs="8"/> */
static const Schema_ElementDecl Snmp_trapTarget = {
    .name = "trapTarget", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Server,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 8};
static const Schema_Object Snmp_content_particles[] = {
    {&Snmp_engineId, SCHEMA_KIND_ELEMENT},
    {&Snmp_view, SCHEMA_KIND_ELEMENT},
    {&Snmp_trapTarget, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Snmp_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Snmp_content_particles,
    .particleCount = 3, .minOccurs = 1, .maxOccurs = 1};
const Schema_ComplexType interfaces_Snmp = {
    .name = "Snmp", .namespaceName = INTERFACES_NAMESPACE, .content = &Snmp_content};

/* <xs:complexType name="Ntp"> */

/* <xs:element name="server" type="Server" maxOccurs="4"/> */
static const Schema_ElementDecl Ntp_server = {
    .name = "server", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Server,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1, .maxOccurs = 4};
/* <xs:element name="interval" type="HoldTime" minOccurs="0"/> */
static const Schema_ElementDecl Ntp_interval = {
    .name = "interval", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_HoldTime,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 1};
static const Schema_Object Ntp_content_particles[] = {
    {&Ntp_server, SCHEMA_KIND_ELEMENT},
    {&Ntp_interval, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Ntp_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Ntp_content_particles,
    .particleCount = 2, .minOccurs = 1, .maxOccurs = 1};
const Schema_ComplexType interfaces_Ntp = {
    .name = "Ntp", .namespaceName = INTERFACES_NAMESPACE, .content = &Ntp_content};

/* <xs:complexType name="Management"> */

/* <xs:element name="snmp" type="Snmp" minOccurs="0"/> */
static const Schema_ElementDecl Management_snmp = {
    .name = "snmp", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Snmp,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
/* <xs:element name="ntp" type="Ntp" minOccurs="0"/> */
static const Schema_ElementDecl Management_ntp = {
    .name = "ntp", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Ntp,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
/* <xs:element name="server" type="IpAddress" maxOccurs="3"/> */
static const Schema_ElementDecl Management_dns_server = {
    .name = "server", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_IpAddress,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 3};
/* <xs:element name="search" type="Name" minOccurs="0" maxOccurs="6"/> */
static const Schema_ElementDecl Management_dns_search = {
    .name = "search", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Name,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .maxOccurs = 6};
static const Schema_Object Management_dns_content_particles[] = {
    {&Management_dns_server, SCHEMA_KIND_ELEMENT},
    {&Management_dns_search, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Management_dns_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Management_dns_content_particles,
    .particleCount = 2, .minOccurs = 1, .maxOccurs = 1};
static const Schema_ComplexType Management_dns_type = {.content = &Management_dns_content};

/* <xs:element name="dns" minOccurs="0"> */
static const Schema_ElementDecl Management_dns = {
    .name = "dns", .namespaceName = INTERFACES_NAMESPACE, .type = &Management_dns_type,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
/* <xs:element name="host" type="LogServer"/> */
static const Schema_ElementDecl Management_syslog_host = {
    .name = "host", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_LogServer,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="file" type="Text"/> */
static const Schema_ElementDecl Management_syslog_file = {
    .name = "file", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Text,
    .typeKind = SCHEMA_KIND_SIMPLE_TYPE, .minOccurs = 1, .maxOccurs = 1};
/* <xs:element name="console" type="Empty"/> */
static const Schema_ElementDecl Management_syslog_console = {
    .name = "console", .namespaceName = INTERFACES_NAMESPACE, .type = &interfaces_Empty,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .minOccurs = 1, .maxOccurs = 1};
static const Schema_Object Management_syslog_content_particles[] = {
    {&Management_syslog_host, SCHEMA_KIND_ELEMENT},
    {&Management_syslog_file, SCHEMA_KIND_ELEMENT},
    {&Management_syslog_console, SCHEMA_KIND_ELEMENT},
};
/* <xs:choice maxOccurs="unbounded"> */
static const Schema_ModelGroup Management_syslog_content = {
    .compositor = SCHEMA_COMPOSITOR_CHOICE, .particles = Management_syslog_content_particles,
    .particleCount = 3, .minOccurs = 1, .maxOccurs = SCHEMA_UNBOUNDED};
static const Schema_ComplexType Management_syslog_type = {.content = &Management_syslog_content};

/* <xs:element name="syslog" minOccurs="0"> */
static const Schema_ElementDecl Management_syslog = {
    .name = "syslog", .namespaceName = INTERFACES_NAMESPACE, .type = &Management_syslog_type,
    .typeKind = SCHEMA_KIND_COMPLEX_TYPE, .maxOccurs = 1};
static const Schema_Object Management_content_particles[] = {
    {&Management_snmp, SCHEMA_KIND_ELEMENT},
    {&Management_ntp, SCHEMA_KIND_ELEMENT},
    {&Management_dns, SCHEMA_KIND_ELEMENT},
    {&Management_syslog, SCHEMA_KIND_ELEMENT},
};
/* <xs:sequence> */
static const Schema_ModelGroup Management_content = {
    .compositor = SCHEMA_COMPOSITOR_SEQUENCE, .particles = Management_content_particles,
    .particleCount = 4, .minOccurs = 1, .maxOccurs = 1};
const Schema_ComplexType interfaces_Management = {
    .name = "Management", .namespaceName = INTERFACES_NAMESPACE, .content = &Management_content};

/* clang-format on */

void interfaces_fill_management(void)
{
    Server_port_attribute.type = Schema_BLDIN_unsignedShort();
    Server_prefer_attribute.type = Schema_BLDIN_boolean();
}
