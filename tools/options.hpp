// What the command line asks for.
#pragma once

#include "netxml/base.h"

#include <string>
#include <vector>

namespace netxml::tool {

enum class Command { Check, Format, Convert, Tree, Path, Validate };
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

    std::string schema;  // validate: a name that is known
};

}  // namespace netxml::tool
