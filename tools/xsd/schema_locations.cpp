#include "xsd/schema_locations.hpp"

#include "xsd/schema_tree.hpp"

#include <algorithm>
#include <set>
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
    return location.find("://") != std::string::npos && !location.starts_with("file://");
}

std::string pathOf(const std::string& location, const std::string& from)
{
    std::string path = location;
    if (path.starts_with("file://")) path.erase(0, 7);
    return path.starts_with("/") ? path : directoryOf(from) + path;
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
    std::set<std::string> read;
    while (!waiting.empty()) {
        const std::string path = waiting.back();
        waiting.pop_back();
        if (!read.insert(path).second) continue;
        try {
            const SchemaFile catalog{path};
            std::vector<const SchemaNode*> nodes{&catalog.root()};
            while (!nodes.empty()) {
                const SchemaNode& node = *nodes.back();
                nodes.pop_back();
                if (node.name.nameSpace != kCatalogNamespace) continue;
                const std::string& kind = node.name.local;
                const std::string target = pathOf(node.get("uri"), path);
                if (kind == "uri") known_.emplace(node.get("name"), target);
                else if (kind == "system") known_.emplace(node.get("systemId"), target);
                else if (kind == "rewriteURI")
                    prefixes_.emplace(node.get("uriStartString"),
                                      pathOf(node.get("rewritePrefix"), path));
                else if (kind == "rewriteSystem")
                    prefixes_.emplace(node.get("systemIdStartString"),
                                      pathOf(node.get("rewritePrefix"), path));
                else if (kind == "nextCatalog")
                    waiting.push_back(pathOf(node.get("catalog"), path));
                nodes.insert(nodes.end(), node.children.rbegin(), node.children.rend());
            }
        } catch (const tool::Failure& failure) {
            diagnostics.add(failure.problem());
        }
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
    if (!longest) return std::nullopt;
    return longest->second + key.substr(longest->first.size());
}

std::optional<std::string> SchemaLocations::ofInclude(const std::string& location,
                                                      const std::string& from) const
{
    if (auto file = mapped(location)) return file;
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
    if (location.empty()) return std::nullopt;
    return ofInclude(location, from);
}

}  // namespace netxml::xsd
