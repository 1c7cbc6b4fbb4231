// Records of a schema as C, which is C++ as well.
#pragma once

#include "xsd/records.hpp"

#include <string>

namespace netxml::xsd {

enum class Language { C, Cxx };

struct CodeOptions {
    Language language = Language::C;
    std::string prefix;      // of all that other files can see
    std::string headerName;  // as the source includes it
};

struct GeneratedCode {
    std::string header;
    std::string source;
};

GeneratedCode writeCode(const SchemaRecords& records, const CodeOptions& options);

// A text of bytes as a literal in C.
std::string stringLiteral(std::string_view bytes);

}  // namespace netxml::xsd
