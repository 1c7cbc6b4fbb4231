/* Registration: all top-level declarations in, or none. */
#include "interfaces_records.h"

static const Schema_Object topObjects[] = {
    {&interfaces_OID, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_Ipv6Address, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_IPV6_ADDR_PREFIX, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_PortRange, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_VlanRange, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_Ipv4Mask, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_Text, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_Name, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_InterfaceName, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_MacAddress, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_EngineId, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_Key, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_Mtu, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_Speed, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_VlanId, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_Percent, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_Temperature, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_AssetNumber, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_HoldTime, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_ServiceDate, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_Duplex, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_AdminState, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_Severity, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_Action, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_Discard, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_ProtocolName, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_Ipv4Address, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_Ipv4Prefix, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_IpAddress, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_IpPrefix, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_NextHop, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_Protocol, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_qos_Load, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_qos_DscpName, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_qos_DscpNumber, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_qos_Dscp, SCHEMA_KIND_SIMPLE_TYPE},
    {&interfaces_xml_attribute_lang, SCHEMA_KIND_ATTRIBUTE},
    {&interfaces_attribute_tag, SCHEMA_KIND_ATTRIBUTE},
    {&interfaces_qos_attribute_priority, SCHEMA_KIND_ATTRIBUTE},
    {&interfaces_group_Audit, SCHEMA_KIND_ATTRIBUTE_GROUP},
    {&interfaces_group_Common, SCHEMA_KIND_ATTRIBUTE_GROUP},
    {&interfaces_Empty, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Note, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_VendorData, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Extensions, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Network, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Location, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Contact, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Device, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Clock, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Server, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_LogServer, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_SnmpView, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Snmp, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Ntp, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Management, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Vlan, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Vlans, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_MaskedAddress, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Ipv4, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Ipv6, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Interface, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Threshold, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_AlarmThreshold, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Trunk, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_SwitchPort, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Ethernet, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Aggregate, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Loopback, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_VlanInterface, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Interfaces, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_StaticRoute, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_OspfArea, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Redistribute, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Ospf, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Routing, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Endpoint, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Match, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_Rule, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_RuleGroup, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_AccessList, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_AccessLists, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_qos_Tunnel, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_qos_Queue, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_qos_Shaper, SCHEMA_KIND_COMPLEX_TYPE},
    {&interfaces_element_note, SCHEMA_KIND_ELEMENT},
    {&interfaces_element_network, SCHEMA_KIND_ELEMENT},
    {&interfaces_element_interface, SCHEMA_KIND_ELEMENT},
    {&interfaces_element_ethernet, SCHEMA_KIND_ELEMENT},
    {&interfaces_element_aggregate, SCHEMA_KIND_ELEMENT},
    {&interfaces_element_loopback, SCHEMA_KIND_ELEMENT},
    {&interfaces_element_vlanInterface, SCHEMA_KIND_ELEMENT},
    {&interfaces_element_condition, SCHEMA_KIND_ELEMENT},
    {&interfaces_element_protocol, SCHEMA_KIND_ELEMENT},
    {&interfaces_element_source, SCHEMA_KIND_ELEMENT},
    {&interfaces_element_destination, SCHEMA_KIND_ELEMENT},
    {&interfaces_element_established, SCHEMA_KIND_ELEMENT},
    {&interfaces_qos_element_dscp, SCHEMA_KIND_ELEMENT},
    {&interfaces_qos_element_tunnel, SCHEMA_KIND_ELEMENT},
    {&interfaces_qos_element_shaper, SCHEMA_KIND_ELEMENT},
};
static const size_t topObjectCount = sizeof topObjects / sizeof topObjects[0];

static const char* const networkTypes[] = {"OID",        "_Ipv6Address", "IPV6_ADDR_PREFIX",
                                           "_PortRange", "_VlanRange",   "_Ipv4Mask"};
static const size_t networkTypeCount = sizeof networkTypes / sizeof networkTypes[0];

/* How many roots hold the schema. The first one fills the records and names the network types, the
 * last one takes the names back. */
static uint32_t rootCount;

static void fillRecords(void)
{
    static int filled;
    if (filled) return;
    filled = 1;
    interfaces_fill_types();
    interfaces_fill_network();
    interfaces_fill_device();
    interfaces_fill_management();
    interfaces_fill_ports();
    interfaces_fill_kinds();
    interfaces_fill_routing();
    interfaces_fill_acl();
    interfaces_fill_qos();
}

/* Takes back the first `count` names. */
static void unnameNetworkTypes(size_t count)
{
    while (count != 0) Schema_ReplaceInnerTypeNS(networkTypes[--count], INTERFACES_NAMESPACE, NULL);
}

static uint32_t nameNetworkTypes(void)
{
    for (size_t i = 0; i < networkTypeCount; ++i) {
        const uint32_t status =
            Schema_ReplaceInnerTypeNS(networkTypes[i], NULL, INTERFACES_NAMESPACE);
        if (status == XML_RET_OK) continue;
        unnameNetworkTypes(i);
        return status;
    }
    return XML_RET_OK;
}

/* Takes out the first `count` objects, the last one first: so the others stay in their order. */
static void deregisterObjects(Schema_Root* root, size_t count)
{
    while (count != 0) Schema_DeregTopObject(root, &topObjects[--count]);
}

static uint32_t registerObjects(Schema_Root* root)
{
    for (size_t i = 0; i < topObjectCount; ++i) {
        const uint32_t status = Schema_RegTopObject(root, &topObjects[i]);
        if (status == XML_RET_OK) continue;
        deregisterObjects(root, i);
        return status;
    }
    return XML_RET_OK;
}

uint32_t interfaces_schema_register(Schema_Root* root)
{
    fillRecords();
    if (rootCount == 0) {
        const uint32_t status = nameNetworkTypes();
        if (status != XML_RET_OK) return status;
    }
    const uint32_t status = registerObjects(root);
    if (status == XML_RET_OK) ++rootCount;
    else if (rootCount == 0) unnameNetworkTypes(networkTypeCount);
    return status;
}

void interfaces_schema_deregister(Schema_Root* root)
{
    if (!root) return;
    deregisterObjects(root, topObjectCount);
    if (rootCount != 0 && --rootCount == 0) unnameNetworkTypes(networkTypeCount);
}
