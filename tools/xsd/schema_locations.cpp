#include "xsd/schema_locations.hpp"

#include "xsd/schema_tree.hpp"

#include <algorithm>
#include <sys/stat.h>

namespace netxml::xsd {
namespace {

constexpr std::string_view kCatalogNamespace = "urn:oasis:names:tc:entity:xmlns:xml:catalog";

bool isFile(const std::string& path)
{
    struct stat facts {};
    return stat(path.c_str(), &facts) == 0 && !S_ISDIR(facts.st_mode);
}

// "http://..." and the like; such documents are not fetched.
bool isRemote(const std::string& location)
{
    return location.find("://") != std::string::npos && !location.starts_with("file:///") &&
           !location.starts_with("file://localhost/");
}

// White space around a URI in an attribute is none of it.
std::string withoutBlanksAround(const std::string& text)
{
    constexpr const char* kBlanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string::npos) return {};
    return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

int digitOf(char c)
{
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// "%20" and the like as the bytes they stand for, except for zero, which ends no path of a file.
std::string percentDecoded(const std::string& text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? digitOf(text[i + 1]) : -1;
        const int low = high < 0 ? -1 : digitOf(text[i + 2]);
        if (low < 0 || high * 16 + low == 0) {
            result += text[i];
            continue;
        }
        result += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return result;
}

// The path of a relative or "file:" location (RFC 8089), as it is written in the file `from`.
std::string pathOf(const std::string& location, const std::string& from)
{
    std::string path = location;
    for (const std::string_view scheme : {"file://localhost/", "file:///", "file:"}) {
        if (!path.starts_with(scheme)) continue;
        path.erase(0, scheme.ends_with('/') ? scheme.size() - 1 : scheme.size());
        break;
    }
    return path.starts_with("/") || isRemote(path) ? path : directoryOf(from) + path;
}

// The file that a catalog means.
std::string targetOf(const std::string& uri, const std::string& base)
{
    return pathOf(percentDecoded(withoutBlanksAround(uri)), base);
}

// What the URIs in an element are relative to.
std::string baseOf(const SchemaNode& node, const std::string& outer)
{
    for (const SchemaNode::Attribute& attribute : node.attributes) {
        if (attribute.name.local == "base" && attribute.name.nameSpace == kXmlNamespace)
            return targetOf(attribute.value, outer);
    }
    return outer;
}

}  // namespace

std::string directoryOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string{} : path.substr(0, slash + 1);
}

SchemaLocations::SchemaLocations(const SchemaOptions& options, Diagnostics& diagnostics)
    : options_{options}
{
    for (const auto& [key, file] : options.locations) known_.emplace(key, file);
    for (const std::string& catalog : options.catalogs) readCatalog(catalog, diagnostics);
}

void SchemaLocations::readCatalog(const std::string& first, Diagnostics& diagnostics)
{
    std::vector<std::string> waiting{first};
    while (!waiting.empty()) {
        const std::string path = waiting.back();
        waiting.pop_back();
        if (std::find(catalogs_.begin(), catalogs_.end(), path) != catalogs_.end()) continue;
        catalogs_.push_back(path);
        try {
            const SchemaFile catalog{path};
            const QName& name = catalog.root().name;
            if (name == QName{std::string{kCatalogNamespace}, "catalog"}) {
                readEntries(catalog, waiting);
                continue;
            }
            diagnostics.error(catalog.root().place,
                              "a catalog begins with \"catalog\" of the namespace " +
                                  std::string{kCatalogNamespace} + ", not with \"" + shown(name) +
                                  "\".");
        } catch (const tool::Failure& failure) {
            diagnostics.add(failure.problem());
        }
    }
}

// Further catalogs that it names go to `waiting`.
void SchemaLocations::readEntries(const SchemaFile& catalog, std::vector<std::string>& waiting)
{
    std::vector<std::pair<const SchemaNode*, std::string>> nodes{{&catalog.root(), catalog.name()}};
    while (!nodes.empty()) {
        const SchemaNode& node = *nodes.back().first;
        const std::string base = baseOf(node, nodes.back().second);
        nodes.pop_back();
        if (node.name.nameSpace != kCatalogNamespace) continue;
        const std::string& kind = node.name.local;
        const auto add = [&](std::map<std::string, std::string>& to, const char* key,
                             const char* uri) {
            const std::string name = withoutBlanksAround(node.get(key));
            if (!name.empty()) to.emplace(name, targetOf(node.get(uri), base));
        };
        if (kind == "uri") add(known_, "name", "uri");
        else if (kind == "system") add(known_, "systemId", "uri");
        else if (kind == "rewriteURI") add(prefixes_, "uriStartString", "rewritePrefix");
        else if (kind == "rewriteSystem") add(prefixes_, "systemIdStartString", "rewritePrefix");
        else if (kind == "uriSuffix") add(suffixes_, "uriSuffix", "uri");
        else if (kind == "systemSuffix") add(suffixes_, "systemIdSuffix", "uri");
        else if (kind == "nextCatalog") waiting.push_back(targetOf(node.get("catalog"), base));
        for (auto child = node.children.rbegin(); child != node.children.rend(); ++child)
            nodes.emplace_back(*child, base);
    }
}

std::optional<std::string> SchemaLocations::mapped(const std::string& key) const
{
    if (key.empty()) return std::nullopt;
    if (const auto found = known_.find(key); found != known_.end()) return found->second;
    const std::pair<const std::string, std::string>* longest = nullptr;
    for (const auto& entry : prefixes_) {
        if (key.starts_with(entry.first) &&
            (!longest || entry.first.size() > longest->first.size()))
            longest = &entry;
    }
    if (longest) return longest->second + percentDecoded(key.substr(longest->first.size()));
    for (const auto& entry : suffixes_) {
        if (key.ends_with(entry.first) && (!longest || entry.first.size() > longest->first.size()))
            longest = &entry;
    }
    return longest ? std::optional{longest->second} : std::nullopt;
}

std::optional<std::string> SchemaLocations::ofInclude(const std::string& written,
                                                      const std::string& from) const
{
    const std::string location = withoutBlanksAround(written);
    if (auto file = mapped(location)) return file;
    // A name that holds "%20" itself is found, too.
    for (const std::string& name : {percentDecoded(location), location}) {
        if (auto file = ofName(name, from)) return file;
    }
    return std::nullopt;
}

std::optional<std::string> SchemaLocations::ofName(const std::string& location,
                                                   const std::string& from) const
{
    if (!isRemote(location)) {
        const std::string beside = pathOf(location, from);
        if (isFile(beside)) return beside;
    }
    // In a directory it is found as it is written, or by its last part.
    const std::string last = location.substr(location.rfind('/') + 1);
    for (const std::string& directory : options_.includePaths) {
        for (const std::string& name : {location, last}) {
            std::string path = directory;
            path.append("/").append(name);
            if (!name.empty() && isFile(path)) return path;
        }
    }
    return std::nullopt;
}

std::optional<std::string> SchemaLocations::ofImport(const std::string& nameSpace,
                                                     const std::string& location,
                                                     const std::string& from) const
{
    if (auto file = mapped(nameSpace)) return file;
    if (withoutBlanksAround(location).empty()) return std::nullopt;
    return ofInclude(location, from);
}

}  // namespace netxml::xsd
