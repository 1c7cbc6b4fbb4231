// What the command line asks for.
#pragma once

#include "netxml/base.h"
#include "xsd/code_writer.hpp"
#include "xsd/schema_options.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace netxml::tool {

class TopLevelIndex;

enum class Command { Check, Format, Convert, Outline, Path, Validate, CompileSchema };
enum class ColorUse { Auto, Always, Never };
enum class ErrorFormat { Text, Json };

struct Options {
    Command command = Command::Check;
    std::vector<std::string> files;
    bool recursive = false;
    unsigned jobs = 1;
    bool quiet = false;
    ColorUse color = ColorUse::Auto;
    ErrorFormat errorFormat = ErrorFormat::Text;

    std::string indentation = "  ";  // format: of one level
    bool checkOnly = false;
    bool inPlace = false;
    bool dropDoctype = false;

    XML_Encoding target = XML_ENCODING_UTF_8;  // convert
    std::string outputPath = "-";

    std::string path;  // path

    xsd::SchemaOptions schemas;             // validate, schema compile
    const TopLevelIndex* schema = nullptr;  // validate: what the documents declare
    std::uint32_t maxErrors = 20;           // of a file; 0 is no limit

    std::string sourcePath;  // schema compile; empty: named after the schema
    std::string headerPath;
    std::string depfilePath;
    std::string prefix;
    xsd::Language generatedLanguage = xsd::Language::C;
    bool listOutputs = false;
};

}  // namespace netxml::tool
