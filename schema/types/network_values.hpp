// Values of the network types. Each takes a NUL-terminated text.
#pragma once

namespace netxml {

bool isIpv4Mask(const char* value) noexcept;
bool isIpv6Address(const char* value) noexcept;
bool isIpv6Prefix(const char* value) noexcept;

// Numbers and ranges LOW-HIGH between commas, from 1 to 65535 and from 1 to 4094.
bool isPortRange(const char* value) noexcept;
bool isVlanRange(const char* value) noexcept;

// Numbers of 32 bits between dots, at most 128 of them.
bool isObjectIdentifier(const char* value) noexcept;

}  // namespace netxml
