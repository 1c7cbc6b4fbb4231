// The table of network types, with the namespace in which a schema says that it defines them.
#include "schema/types/network_values.hpp"

#include "netxml/dom.h"
#include "netxml/schema.h"
#include "support/format.hpp"

#include <cstdint>

namespace netxml {
namespace {

template <bool (*IsValid)(const char*)>
std::uint32_t check(const char* value, std::uint32_t size, char* message, const char* sentence)
{
    if (IsValid(value ? value : "")) return 1;
    formatTexts(message, size, sentence, {});
    return 0;
}

std::uint32_t oid(const char* value, std::uint32_t size, char* message)
{
    return check<isObjectIdentifier>(value, size, message, "Invalid OID");
}
std::uint32_t ipv6Address(const char* value, std::uint32_t size, char* message)
{
    return check<isIpv6Address>(value, size, message, "Invalid IPv6");
}
std::uint32_t ipv6Prefix(const char* value, std::uint32_t size, char* message)
{
    return check<isIpv6Prefix>(value, size, message, "Invalid IPv6 prefix");
}
std::uint32_t portRange(const char* value, std::uint32_t size, char* message)
{
    return check<isPortRange>(value, size, message, "Invalid PortRange");
}
std::uint32_t vlanRange(const char* value, std::uint32_t size, char* message)
{
    return check<isVlanRange>(value, size, message, "Invalid VlanRange");
}
std::uint32_t ipv4Mask(const char* value, std::uint32_t size, char* message)
{
    return check<isIpv4Mask>(value, size, message, "Invalid IPv4 mask");
}

// Shared by the whole process; the last entry ends it.
Schema_ExtType networkTypes[] = {
    {oid, nullptr, "OID"},
    {ipv6Address, nullptr, "_Ipv6Address"},
    {ipv6Prefix, nullptr, "IPV6_ADDR_PREFIX"},
    {portRange, nullptr, "_PortRange"},
    {vlanRange, nullptr, "_VlanRange"},
    {ipv4Mask, nullptr, "_Ipv4Mask"},
    {nullptr, nullptr, nullptr},
};

}  // namespace
}  // namespace netxml

Schema_ExtType* Schema_FoundZynBltInType(const char* name, const char* namespaceName)
{
    if (!name) return nullptr;
    for (Schema_ExtType* entry = netxml::networkTypes; entry->name; ++entry) {
        if (*entry->name == *name && XML_Strcmp(entry->name, name) == 0 &&
            XML_Strcmp(entry->namespaceName, namespaceName) == 0)
            return entry;
    }
    return nullptr;
}

uint32_t Schema_checkZynBltInType(const Schema_ExtType* entry, const char* value, uint32_t bufSize,
                                  char* errBuf)
{
    if (!entry) return 0;
    return entry->handler ? entry->handler(value, bufSize, errBuf) : 1;
}

uint32_t Schema_ReplaceInnerTypeNS(const char* typeName, const char* namespaceName,
                                   const char* newNamespace)
{
    if (!typeName || *typeName == '\0') return XML_RET_EMPTY;
    Schema_ExtType* entry = Schema_FoundZynBltInType(typeName, namespaceName);
    if (!entry) return XML_RET_FAIL;
    entry->namespaceName = newNamespace;
    return XML_RET_OK;
}
