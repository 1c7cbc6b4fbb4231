/* One macro a kind of record: what differs between two declarations is all that a line says. */
#include "config_schema.h"

#define NAMESPACE "urn:example:config"
#define COUNT(array) ((uint32_t)(sizeof(array) / sizeof *(array)))

/* A restriction; its base is a built-in record, which is filled in at registration. */
#define RESTRICTION(type)                                                                          \
    static const Schema_SimpleType* type##_base[1];                                                \
    static const Schema_SimpleType type = {.name = #type,                                          \
                                           .namespaceName = NAMESPACE,                             \
                                           .members = type##_base,                                 \
                                           .memberCount = 1,                                       \
                                           .facets = type##_facets,                                \
                                           .facetCount = COUNT(type##_facets)}

#define SIMPLE(record, tag, of, least)                                                             \
    static const Schema_ElementDecl record = {.name = tag,                                         \
                                              .namespaceName = NAMESPACE,                          \
                                              .type = &(of),                                       \
                                              .typeKind = SCHEMA_KIND_SIMPLE_TYPE,                 \
                                              .minOccurs = (least),                                \
                                              .maxOccurs = 1}
#define COMPLEX(record, tag, of, least, most)                                                      \
    static const Schema_ElementDecl record = {.name = tag,                                         \
                                              .namespaceName = NAMESPACE,                          \
                                              .type = &(of),                                       \
                                              .typeKind = SCHEMA_KIND_COMPLEX_TYPE,                \
                                              .minOccurs = (least),                                \
                                              .maxOccurs = (most)}
#define GROUP(record, how, least)                                                                  \
    static const Schema_ModelGroup record = {.compositor = SCHEMA_COMPOSITOR_##how,                \
                                             .particles = record##_particles,                      \
                                             .particleCount = COUNT(record##_particles),           \
                                             .minOccurs = (least),                                 \
                                             .maxOccurs = 1}
#define COMPLEX_TYPE(type)                                                                         \
    static const Schema_ComplexType type = {                                                       \
        .name = #type, .namespaceName = NAMESPACE, .content = &type##_content}

/* clang-format off */

static const Schema_Facet InterfaceName_facets[] = {
    {"^GigabitEthernet[0-9]+/0/[0-9]+$", SCHEMA_FACET_PATTERN, SCHEMA_BUILTIN_STRING},
};
RESTRICTION(InterfaceName);

static const Schema_Facet Description_facets[] = {
    {"1", SCHEMA_FACET_MIN_LENGTH, SCHEMA_BUILTIN_STRING},
    {"64", SCHEMA_FACET_MAX_LENGTH, SCHEMA_BUILTIN_STRING},
};
RESTRICTION(Description);

static const Schema_Facet Mtu_facets[] = {
    {"68", SCHEMA_FACET_MIN_INCLUSIVE, SCHEMA_BUILTIN_UNSIGNED_SHORT},
    {"9216", SCHEMA_FACET_MAX_INCLUSIVE, SCHEMA_BUILTIN_UNSIGNED_SHORT},
};
RESTRICTION(Mtu);

static const Schema_Facet VlanId_facets[] = {
    {"4094", SCHEMA_FACET_MAX_INCLUSIVE, SCHEMA_BUILTIN_UNSIGNED_SHORT},
};
RESTRICTION(VlanId);

static const Schema_Facet Ipv4Address_facets[] = {
    {"^[0-9]{1,3}(\\.[0-9]{1,3}){3}$", SCHEMA_FACET_PATTERN, SCHEMA_BUILTIN_STRING},
};
RESTRICTION(Ipv4Address);

static const Schema_Facet Netmask_facets[] = {
    {"255.255.255.255", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
    {"255.255.255.0", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
    {"255.255.0.0", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
    {"255.0.0.0", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
};
RESTRICTION(Netmask);

SIMPLE(Address_ip, "ip", Ipv4Address, 1);
SIMPLE(Address_netmask, "netmask", Netmask, 1);
static const Schema_Object Address_content_particles[] = {
    {&Address_ip, SCHEMA_KIND_ELEMENT},
    {&Address_netmask, SCHEMA_KIND_ELEMENT},
};
GROUP(Address_content, SEQUENCE, 1);
COMPLEX_TYPE(Address);

COMPLEX(Ipv4_address, "address", Address, 1, 16);
static const Schema_Object Ipv4_content_particles[] = {
    {&Ipv4_address, SCHEMA_KIND_ELEMENT},
};
GROUP(Ipv4_content, SEQUENCE, 1);
COMPLEX_TYPE(Ipv4);

SIMPLE(Interface_name, "name", InterfaceName, 1);
SIMPLE(Interface_description, "description", Description, 0);
SIMPLE(Interface_mtu, "mtu", Mtu, 0);
SIMPLE(Interface_vlan, "vlan", VlanId, 1);
COMPLEX(Interface_ipv4, "ipv4", Ipv4, 1, 1);

/* xs:boolean is a built-in record: filled in at registration. */
static Schema_ElementDecl Interface_shutdown = {
    .name = "shutdown", .namespaceName = NAMESPACE, .typeKind = SCHEMA_KIND_SIMPLE_TYPE,
    .minOccurs = 1, .maxOccurs = 1};
static Schema_ElementDecl Interface_enabled = {
    .name = "enabled", .namespaceName = NAMESPACE, .typeKind = SCHEMA_KIND_SIMPLE_TYPE,
    .minOccurs = 1, .maxOccurs = 1};

static const Schema_Object Interface_up_particles[] = {
    {&Interface_enabled, SCHEMA_KIND_ELEMENT},
    {&Interface_mtu, SCHEMA_KIND_ELEMENT},
};
GROUP(Interface_up, SEQUENCE, 1);
static const Schema_Object Interface_state_particles[] = {
    {&Interface_shutdown, SCHEMA_KIND_ELEMENT},
    {&Interface_up, SCHEMA_KIND_MODEL_GROUP},
};
GROUP(Interface_state, CHOICE, 1);
static const Schema_Object Interface_network_particles[] = {
    {&Interface_ipv4, SCHEMA_KIND_ELEMENT},
    {&Interface_vlan, SCHEMA_KIND_ELEMENT},
};
GROUP(Interface_network, SEQUENCE, 0);
static const Schema_Object Interface_content_particles[] = {
    {&Interface_name, SCHEMA_KIND_ELEMENT},
    {&Interface_description, SCHEMA_KIND_ELEMENT},
    {&Interface_state, SCHEMA_KIND_MODEL_GROUP},
    {&Interface_network, SCHEMA_KIND_MODEL_GROUP},
};
GROUP(Interface_content, SEQUENCE, 1);
COMPLEX_TYPE(Interface);

COMPLEX(Interfaces_interface, "interface", Interface, 0, SCHEMA_UNBOUNDED);
static const Schema_Object Interfaces_content_particles[] = {
    {&Interfaces_interface, SCHEMA_KIND_ELEMENT},
};
GROUP(Interfaces_content, SEQUENCE, 1);
COMPLEX_TYPE(Interfaces);

COMPLEX(Config_interfaces, "interfaces", Interfaces, 1, 1);
static const Schema_Object Config_content_particles[] = {
    {&Config_interfaces, SCHEMA_KIND_ELEMENT},
};
GROUP(Config_content, SEQUENCE, 1);
COMPLEX_TYPE(Config);

COMPLEX(config, "config", Config, 1, 1);

/* clang-format on */

static const Schema_Object top = {&config, SCHEMA_KIND_ELEMENT};

uint32_t config_schema_register(Schema_Root* root)
{
    InterfaceName_base[0] = Schema_BLDIN_string();
    Description_base[0] = Schema_BLDIN_string();
    Mtu_base[0] = Schema_BLDIN_unsignedShort();
    VlanId_base[0] = Schema_BLDIN_unsignedShort();
    Ipv4Address_base[0] = Schema_BLDIN_string();
    Netmask_base[0] = Schema_BLDIN_string();
    Interface_shutdown.type = Schema_BLDIN_boolean();
    Interface_enabled.type = Schema_BLDIN_boolean();
    return Schema_RegTopObject(root, &top);
}

void config_schema_deregister(Schema_Root* root)
{
    Schema_DeregTopObject(root, &top);
}
