// Files of Debian packages; a file that the machine lacks is left out.
#pragma once

#include "documents.hpp"

#include <optional>

namespace netxml::bench {

std::vector<std::string> realDocumentNames();
std::optional<Document> readRealDocument(std::string_view name);

}  // namespace netxml::bench
