// Schema documents as the library can read them: two more encodings, and entities of their own.
#pragma once

#include <string>

namespace netxml::xsd {

// Rewrites the bytes of a document that declares US-ASCII or ISO-8859-1 as UTF-8, and replaces
// references to the entities of its internal subset (XML 1.0, section 4.4) by their text. What is
// neither, or no XML at all, stays as it is: the parser says what is wrong with it.
//
// Lines are kept unless an entity has several; only the columns behind a reference move. Entities
// that come to more than 1 MiB together, or that hold themselves, are left as references.
std::string readableBytes(std::string bytes);

}  // namespace netxml::xsd
