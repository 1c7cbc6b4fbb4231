/* The records that the files of the schema share, and how each file completes its own. */
#ifndef INTERFACES_RECORDS_H
#define INTERFACES_RECORDS_H

#include "interfaces_schema.h"

extern const Schema_SimpleType interfaces_OID;
extern const Schema_SimpleType interfaces_Ipv6Address;
extern const Schema_SimpleType interfaces_IPV6_ADDR_PREFIX;
extern const Schema_SimpleType interfaces_PortRange;
extern const Schema_SimpleType interfaces_VlanRange;
extern const Schema_SimpleType interfaces_Ipv4Mask;
extern const Schema_SimpleType interfaces_Text;
extern const Schema_SimpleType interfaces_Name;
extern const Schema_SimpleType interfaces_InterfaceName;
extern const Schema_SimpleType interfaces_MacAddress;
extern const Schema_SimpleType interfaces_EngineId;
extern const Schema_SimpleType interfaces_Key;
extern const Schema_SimpleType interfaces_Mtu;
extern const Schema_SimpleType interfaces_Speed;
extern const Schema_SimpleType interfaces_VlanId;
extern const Schema_SimpleType interfaces_Percent;
extern const Schema_SimpleType interfaces_Temperature;
extern const Schema_SimpleType interfaces_AssetNumber;
extern const Schema_SimpleType interfaces_HoldTime;
extern const Schema_SimpleType interfaces_ServiceDate;
extern const Schema_SimpleType interfaces_Duplex;
extern const Schema_SimpleType interfaces_AdminState;
extern const Schema_SimpleType interfaces_Severity;
extern const Schema_SimpleType interfaces_Action;
extern const Schema_SimpleType interfaces_Discard;
extern const Schema_SimpleType interfaces_ProtocolName;
extern const Schema_SimpleType interfaces_Ipv4Address;
extern const Schema_SimpleType interfaces_Ipv4Prefix;
extern const Schema_SimpleType interfaces_IpAddress;
extern const Schema_SimpleType interfaces_IpPrefix;
extern const Schema_SimpleType interfaces_NextHop;
extern const Schema_SimpleType interfaces_Protocol;
extern const Schema_SimpleType interfaces_qos_Load;
extern const Schema_SimpleType interfaces_qos_DscpName;
extern const Schema_SimpleType interfaces_qos_DscpNumber;
extern const Schema_SimpleType interfaces_qos_Dscp;

extern Schema_AttributeDecl interfaces_xml_attribute_lang;
extern const Schema_AttributeDecl interfaces_attribute_tag;
extern const Schema_AttributeDecl interfaces_qos_attribute_priority;

extern const Schema_AttributeGroup interfaces_group_Audit;
extern const Schema_AttributeGroup interfaces_group_Common;

extern const Schema_ComplexType interfaces_Empty;
extern const Schema_ComplexType interfaces_Note;
extern const Schema_ComplexType interfaces_VendorData;
extern const Schema_ComplexType interfaces_Extensions;
extern const Schema_ComplexType interfaces_Network;
extern const Schema_ComplexType interfaces_Location;
extern const Schema_ComplexType interfaces_Contact;
extern const Schema_ComplexType interfaces_Device;
extern const Schema_ComplexType interfaces_Clock;
extern const Schema_ComplexType interfaces_Server;
extern const Schema_ComplexType interfaces_LogServer;
extern const Schema_ComplexType interfaces_SnmpView;
extern const Schema_ComplexType interfaces_Snmp;
extern const Schema_ComplexType interfaces_Ntp;
extern const Schema_ComplexType interfaces_Management;
extern const Schema_ComplexType interfaces_Vlan;
extern const Schema_ComplexType interfaces_Vlans;
extern const Schema_ComplexType interfaces_MaskedAddress;
extern const Schema_ComplexType interfaces_Ipv4;
extern const Schema_ComplexType interfaces_Ipv6;
extern const Schema_ComplexType interfaces_Interface;
extern const Schema_ComplexType interfaces_Threshold;
extern const Schema_ComplexType interfaces_AlarmThreshold;
extern const Schema_ComplexType interfaces_Trunk;
extern const Schema_ComplexType interfaces_SwitchPort;
extern const Schema_ComplexType interfaces_Ethernet;
extern const Schema_ComplexType interfaces_Aggregate;
extern const Schema_ComplexType interfaces_Loopback;
extern const Schema_ComplexType interfaces_VlanInterface;
extern const Schema_ComplexType interfaces_Interfaces;
extern const Schema_ComplexType interfaces_StaticRoute;
extern const Schema_ComplexType interfaces_OspfArea;
extern const Schema_ComplexType interfaces_Redistribute;
extern const Schema_ComplexType interfaces_Ospf;
extern const Schema_ComplexType interfaces_Routing;
extern const Schema_ComplexType interfaces_Endpoint;
extern const Schema_ComplexType interfaces_Match;
extern const Schema_ComplexType interfaces_Rule;
extern const Schema_ComplexType interfaces_RuleGroup;
extern const Schema_ComplexType interfaces_AccessList;
extern const Schema_ComplexType interfaces_AccessLists;
extern const Schema_ComplexType interfaces_qos_Tunnel;
extern const Schema_ComplexType interfaces_qos_Queue;
extern const Schema_ComplexType interfaces_qos_Shaper;

extern const Schema_ElementDecl interfaces_element_note;
extern const Schema_ElementDecl interfaces_element_network;
extern const Schema_ElementDecl interfaces_element_interface;
extern const Schema_ElementDecl interfaces_element_ethernet;
extern const Schema_ElementDecl interfaces_element_aggregate;
extern const Schema_ElementDecl interfaces_element_loopback;
extern const Schema_ElementDecl interfaces_element_vlanInterface;
extern const Schema_ElementDecl interfaces_element_condition;
extern const Schema_ElementDecl interfaces_element_protocol;
extern const Schema_ElementDecl interfaces_element_source;
extern const Schema_ElementDecl interfaces_element_destination;
extern const Schema_ElementDecl interfaces_element_established;
extern const Schema_ElementDecl interfaces_qos_element_dscp;
extern const Schema_ElementDecl interfaces_qos_element_tunnel;
extern const Schema_ElementDecl interfaces_qos_element_shaper;

/* Put the addresses of the built-in types, which functions give, into the records. */
void interfaces_fill_types(void);
void interfaces_fill_network(void);
void interfaces_fill_device(void);
void interfaces_fill_management(void);
void interfaces_fill_ports(void);
void interfaces_fill_kinds(void);
void interfaces_fill_routing(void);
void interfaces_fill_acl(void);
void interfaces_fill_qos(void);

#endif
