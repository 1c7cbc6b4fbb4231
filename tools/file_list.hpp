// From the arguments to the files that are worked on.
#pragma once

#include "outcome.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace netxml::tool {

// The endings of the files that are taken from directories.
inline constexpr std::string_view kEndings[] = {".xml", ".xsd", ".xsl", ".xslt", ".wsdl",
                                                ".rng", ".svg", ".yin", ".xhtml"};

struct FileList {
    std::vector<std::string> files;
    Outcome unreadable;  // directories that could not be read
};

// Replaces directories by their files with one of these endings, sorted by path, if `recursive`.
// Symbolic links to directories inside are not followed.
FileList listFiles(const std::vector<std::string>& arguments, bool recursive);

}  // namespace netxml::tool
