#include "xsd/schema_set.hpp"

#include "xsd/schema_grammar.hpp"
#include "xsd/xml_attributes.hpp"

#include <algorithm>
#include <cstdlib>

namespace netxml::xsd {
namespace {

constexpr const char* kSymbolNames[] = {"type", "element", "attribute", "group", "attribute group"};

std::optional<Symbol> symbolOf(const SchemaNode& node)
{
    if (node.is("simpleType") || node.is("complexType")) return Symbol::Type;
    if (node.is("element")) return Symbol::Element;
    if (node.is("attribute")) return Symbol::Attribute;
    if (node.is("group")) return Symbol::Group;
    if (node.is("attributeGroup")) return Symbol::AttributeGroup;
    return std::nullopt;
}

std::string realPath(const std::string& path)
{
    const std::unique_ptr<char, decltype(&std::free)> real{realpath(path.c_str(), nullptr),
                                                           &std::free};
    return real ? real.get() : path;
}

}  // namespace

SchemaSet::SchemaSet(const SchemaOptions& options, Diagnostics& diagnostics)
    : diagnostics_{diagnostics}, locations_{options, diagnostics}
{
    for (const std::string& file : options.files)
        waiting_.push_back({file, std::nullopt, true, {}});
    readWaiting();
    // What is built in stands back behind a document that another import names.
    if (xmlImport_ && !hasDocumentOf(kXmlNamespace)) {
        waiting_.push_back({std::nullopt, std::string{kXmlNamespace}, true, *xmlImport_});
        readWaiting();
    }
    if (documents_.empty()) documents_.push_back({nullptr, {}, false, false, false});
}

void SchemaSet::readWaiting()
{
    while (!waiting_.empty()) {
        const Waiting next = waiting_.front();
        waiting_.pop_front();
        read(next);
    }
}

bool SchemaSet::hasDocumentOf(std::string_view nameSpace) const
{
    return std::any_of(documents_.begin(), documents_.end(), [&](const SchemaDocument& document) {
        return document.targetNamespace == nameSpace;
    });
}

const SchemaFile* SchemaSet::load(const Waiting& waiting)
{
    const std::string key = waiting.path ? realPath(*waiting.path) : "";
    const auto [place, added] = files_.try_emplace(key);
    if (!added) return place->second.get();
    try {
        place->second = waiting.path
                            ? std::make_unique<SchemaFile>(*waiting.path)
                            : std::make_unique<SchemaFile>("<built in>/xml.xsd", kXmlAttributes);
        if (waiting.path) fileNames_.push_back(*waiting.path);
    } catch (const tool::Failure& failure) {
        diagnostics_.add(failure.problem());
        return nullptr;
    }
    const SchemaNode& root = place->second->root();
    if (root.is("schema")) {
        checkGrammar(*place->second, diagnostics_);
        return place->second.get();
    }
    diagnostics_.error(root.place, "a schema document begins with \"schema\" of the namespace " +
                                       std::string{kSchemaNamespace} + ", not with \"" +
                                       shown(root.name) + "\".");
    place->second.reset();
    return nullptr;
}

void SchemaSet::read(const Waiting& waiting)
{
    const SchemaFile* file = load(waiting);
    if (!file) return;
    const SchemaNode& root = file->root();
    const std::string* target = root.find("targetNamespace");
    const std::string own = target ? *target : std::string{};
    const bool chameleon = !target && waiting.nameSpace && !waiting.imported;
    if (waiting.nameSpace && !chameleon && own != *waiting.nameSpace) {
        diagnostics_.error(waiting.from.node->place,
                           "\"" + file->name() + "\" has the target namespace \"" + own +
                               "\"; expected \"" + *waiting.nameSpace + "\".");
        return;
    }
    const std::string nameSpace = chameleon ? *waiting.nameSpace : own;
    if (!known_.emplace(file, nameSpace).second) return;
    documents_.push_back({file, nameSpace, chameleon && !nameSpace.empty(),
                          root.get("elementFormDefault") == "qualified",
                          root.get("attributeFormDefault") == "qualified"});
    const SchemaDocument& document = documents_.back();
    for (const SchemaNode* node : root.children) {
        if (node->is("include") || node->is("import") || node->is("redefine"))
            follow(*node, document);
        else if (symbolOf(*node)) declare(*node, document);
        else if (!node->is("annotation") && !node->is("notation") &&
                 node->name.nameSpace == kSchemaNamespace)
            diagnostics_.error(node->place,
                               "\"" + node->name.local + "\" cannot stand at the top of a schema.");
    }
}

void SchemaSet::follow(const SchemaNode& node, const SchemaDocument& document)
{
    const std::string location = node.get("schemaLocation");
    const Component from{&node, &document};
    if (node.is("import")) {
        const std::string nameSpace = node.get("namespace");
        if (const auto path = locations_.ofImport(nameSpace, location, document.file->name()))
            waiting_.push_back({*path, nameSpace, true, from});
        else if (nameSpace == kXmlNamespace) xmlImport_ = from;
        else missing_.emplace(nameSpace, lineOf(node.place));
        return;
    }
    const auto isChange = [](const SchemaNode* child) { return !child->is("annotation"); };
    if (node.is("redefine") && std::any_of(node.children.begin(), node.children.end(), isChange)) {
        diagnostics_.error(node.place, "\"redefine\" is not supported: declare the changed types "
                                       "in a schema of your own, and include this one's parts.");
        return;
    }
    if (!node.find("schemaLocation")) {
        diagnostics_.error(node.place,
                           "\"" + node.name.local + "\" needs the attribute \"schemaLocation\".");
        return;
    }
    if (const auto path = locations_.ofInclude(location, document.file->name())) {
        waiting_.push_back({*path, document.targetNamespace, false, from});
        return;
    }
    diagnostics_.error(node.place, "cannot find the schema document \"" + location +
                                       "\": give its directory with --include-path, or the file "
                                       "with --location " +
                                       location + "=FILE.");
}

void SchemaSet::declare(const SchemaNode& node, const SchemaDocument& document)
{
    const Symbol kind = *symbolOf(node);
    const std::string* local = node.find("name");
    if (!local) {
        diagnostics_.error(node.place,
                           "a top-level \"" + node.name.local + "\" needs the attribute \"name\".");
        return;
    }
    const QName name{document.targetNamespace, *local};
    const Component component{&node, &document};
    const auto index = static_cast<unsigned>(kind);
    const auto [place, added] = symbols_[index].emplace(name, component);
    if (added) {
        ordered_[index].emplace_back(name, component);
        return;
    }
    // One document may be reached in two ways; the copies say the same.
    if (place->second.node == &node) return;
    diagnostics_.error(node.place, "the " + std::string{kSymbolNames[index]} + " \"" + shown(name) +
                                       "\" is declared at " + lineOf(place->second.node->place) +
                                       " already.");
}

std::vector<std::string> SchemaSet::fileNames() const
{
    return fileNames_;
}

std::string SchemaSet::prefixOf(const std::string& nameSpace) const
{
    for (const SchemaDocument& document : documents_) {
        if (!document.file) continue;
        for (const auto& [prefix, bound] : document.file->root().declarations) {
            if (bound == nameSpace && !prefix.empty()) return prefix;
        }
    }
    return {};
}

std::optional<QName> SchemaSet::resolve(const Component& at, const std::string& written)
{
    const std::size_t colon = written.find(':');
    const std::string prefix = colon == std::string::npos ? "" : written.substr(0, colon);
    const std::string local = colon == std::string::npos ? written : written.substr(colon + 1);
    const std::string* nameSpace = at.node->nameSpaceOf(prefix);
    if (!nameSpace) {
        diagnostics_.error(at.node->place,
                           "the prefix \"" + prefix + "\" of \"" + written + "\" is not declared.");
        return std::nullopt;
    }
    if (prefix.empty() && nameSpace->empty() && at.document->chameleon)
        return QName{at.document->targetNamespace, local};
    return QName{*nameSpace, local};
}

Component SchemaSet::find(Symbol kind, const QName& name, const Component& from)
{
    const auto index = static_cast<unsigned>(kind);
    const auto found = symbols_[index].find(name);
    if (found != symbols_[index].end()) return found->second;
    std::string message =
        "the " + std::string{kSymbolNames[index]} + " \"" + shown(name) + "\" is not declared";
    const auto missing = missing_.find(name.nameSpace);
    if (missing != missing_.end()) {
        message += ": no document was found for its namespace, which is imported at " +
                   missing->second + "; give one with --location " + name.nameSpace + "=FILE";
    }
    diagnostics_.error(from.node->place, message + ".");
    return {};
}

}  // namespace netxml::xsd
