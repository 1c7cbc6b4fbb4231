// The built-in types whose values have a fixed shape of characters. Each of these was a regular
// expression; the tests compare them with it.
#pragma once

namespace netxml {

// ^(1|true|0|false)$
bool isBoolean(const char* value) noexcept;

// ^[0-9A-Fa-f]+$
bool isHexBinary(const char* value) noexcept;

// ^([a-zA-Z0-9/+]{4})*([a-zA-Z0-9/+]{2}==|[a-zA-Z0-9/+]{3}=)?$
bool isBase64Binary(const char* value) noexcept;

// ^[^:]+[://][^:]+$
bool isAnyUri(const char* value) noexcept;

}  // namespace netxml
