// The XML declaration of a text, with another encoding.
#pragma once

#include <string>
#include <string_view>

namespace netxml::tool {

// `text` with `encoding` in its XML declaration, which is added when it has none.
std::string declareEncoding(std::string_view text, std::string_view encoding);

}  // namespace netxml::tool
