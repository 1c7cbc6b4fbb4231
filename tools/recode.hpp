// Text from one encoding to another, and what the bytes of a file say about theirs.
#pragma once

#include "netxml/io.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace netxml::tool {

// How the bytes of a document begin.
struct ByteStart {
    std::size_t markSize;   // of the byte-order mark; 0 without one
    XML_Encoding encoding;  // of the mark, or of the first four bytes; else UTF-8
};
ByteStart startOf(std::string_view bytes);

// The encoding that a document is really in, with its byte order, when the parser says `declared`;
// nothing when the two do not go together: the text changes its encoding on the way.
std::optional<XML_Encoding> encodingOf(const ByteStart& start, XML_Encoding declared);

// Converts a whole text; `from` tells the byte order. Nothing when some bytes are no text, a
// character lacks in the target, or the text ends inside a character.
std::optional<std::string> recode(std::string_view bytes, XML_Encoding from, XML_Encoding to);

// Converts to UTF-8 up to the first bytes that are no text.
std::string recodeBeginning(std::string_view bytes, XML_Encoding from);

}  // namespace netxml::tool
