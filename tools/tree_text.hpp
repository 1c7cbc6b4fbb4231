// Texts of the tree, and sentences about it, in UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace netxml::tool {

// GB18030 to UTF-8. The library cuts what does not fit, also inside a character: in the place of
// bytes that are none comes one replacement character.
std::string textOfTree(std::string_view text);

}  // namespace netxml::tool
