// The indentation of an XML text, without any change to what it says.
#pragma once

#include <string>
#include <string_view>

namespace netxml::tool {

// Puts each element, comment and processing instruction on a line of its own wherever the content
// around it holds nothing else but blanks; `step` is the indentation of one level.
//
// Kept byte for byte: the content of an element that holds text, a reference or a CDATA section;
// the content of one without elements, comments and instructions; and what stands under
// xml:space="preserve". Between siblings one blank line is kept. Inside tags blanks become one
// space between attributes and none elsewhere. Document type declarations are left out. Line ends
// that are put in are like the first one that stays.
//
// `text` is one that the parser has accepted.
std::string reindent(std::string_view text, std::string_view step);

}  // namespace netxml::tool
