#include "real_documents.hpp"

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <unistd.h>

namespace netxml::bench {
namespace {

struct RealDocument {
    std::string_view name;
    const char* path;
};

// clang-format off
constexpr std::array kRealDocuments = {
    RealDocument{"mime-database", "/usr/share/mime/packages/freedesktop.org.xml"},
    RealDocument{"cldr-zh",       "/usr/share/unicode/cldr/common/main/zh.xml"},
    RealDocument{"iso-639-3",     "/usr/share/xml/iso-codes/iso_639-3.xml"},
    RealDocument{"docbook-xhtml", "/usr/share/doc/xtrans-dev/xtrans.html"},
    RealDocument{"gvim-svg",      "/usr/share/icons/hicolor/scalable/apps/gvim.svg"},
};
// clang-format on

bool present(const RealDocument& document)
{
    return access(document.path, R_OK) == 0;
}

}  // namespace

std::vector<std::string> realDocumentNames()
{
    std::vector<std::string> names;
    for (const RealDocument& document : kRealDocuments) {
        if (present(document)) names.emplace_back(document.name);
        else std::fprintf(stderr, "%s is not here: left out\n", document.path);
    }
    return names;
}

std::optional<Document> readRealDocument(std::string_view name)
{
    for (const RealDocument& document : kRealDocuments) {
        if (document.name == name && present(document))
            return Document{
                .name = std::string{name}, .text = readFile(document.path), .real = true};
    }
    return std::nullopt;
}

std::string readFile(const char* path)
{
    std::ifstream file{path, std::ios::binary};
    std::string text{std::istreambuf_iterator<char>{file}, {}};
    if (!file || text.empty()) throw std::runtime_error{std::string{"cannot read "} + path};
    return text;
}

}  // namespace netxml::bench
