// What may stand in front of the root element and raises no event.
#pragma once

#include "parser/cursor.hpp"
#include "parser/parse_error.hpp"

namespace netxml {

// The XML declaration. Entered at "<?xml", left after "?>". Switches the input to the encoding that
// it declares, and stores that in `encoding`.
ParseError scanXmlDeclaration(Cursor& cursor, XML_Encoding& encoding) noexcept;

// A document type declaration, of which nothing is used. Entered at "<!DOCTYPE", left after its
// ">".
ParseError scanDoctype(Cursor& cursor) noexcept;

}  // namespace netxml
