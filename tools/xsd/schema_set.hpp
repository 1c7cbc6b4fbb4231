// The documents of a schema, and what they declare at their top.
#pragma once

#include "xsd/diagnostics.hpp"
#include "xsd/schema_locations.hpp"
#include "xsd/schema_options.hpp"
#include "xsd/schema_tree.hpp"

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace netxml::xsd {

// One document in the role in which it was met: a document without a target namespace takes that of
// whoever includes it.
struct SchemaDocument {
    const SchemaFile* file;
    std::string targetNamespace;
    bool chameleon;
    bool elementsQualified;
    bool attributesQualified;
};

enum class Symbol { Type, Element, Attribute, Group, AttributeGroup };

// A top-level declaration, or a place inside one: the node, and the document that says how its
// names are meant.
struct Component {
    const SchemaNode* node = nullptr;
    const SchemaDocument* document = nullptr;

    Component with(const SchemaNode* other) const { return {other, document}; }
    explicit operator bool() const { return node != nullptr; }
};

class SchemaSet {
public:
    using Symbols = std::map<QName, Component>;

    // Reads the documents and all that they include and import.
    SchemaSet(const SchemaOptions& options, Diagnostics& diagnostics);

    const Symbols& symbols(Symbol kind) const { return symbols_[static_cast<unsigned>(kind)]; }
    // In the order in which they stand in the documents.
    const std::vector<std::pair<QName, Component>>& ordered(Symbol kind) const
    {
        return ordered_[static_cast<unsigned>(kind)];
    }
    // Every file that was read, the first ones first.
    std::vector<std::string> fileNames() const;
    // The catalogs that were read.
    const std::vector<std::string>& catalogs() const { return locations_.catalogs(); }
    const std::string& targetNamespace() const { return documents_.front().targetNamespace; }
    // The prefix that a document binds to a namespace; empty when none does.
    std::string prefixOf(const std::string& nameSpace) const;

    // The name in an attribute such as `type`, or nothing after an error.
    std::optional<QName> resolve(const Component& at, const std::string& written);

    // The component that an attribute refers to; empty after an error, which is reported.
    Component find(Symbol kind, const QName& name, const Component& from);

private:
    struct Waiting {
        std::optional<std::string> path;       // nothing: the document that is built in
        std::optional<std::string> nameSpace;  // of the document that includes it
        bool imported;
        Component from;
    };

    void readWaiting();
    bool hasDocumentOf(std::string_view nameSpace) const;
    void read(const Waiting& waiting);
    const SchemaFile* load(const Waiting& waiting);
    void follow(const SchemaNode& node, const SchemaDocument& document);
    void declare(const SchemaNode& node, const SchemaDocument& document);

    Diagnostics& diagnostics_;
    SchemaLocations locations_;
    std::map<std::string, std::unique_ptr<SchemaFile>> files_;  // by what realpath() says
    std::vector<std::string> fileNames_;
    std::deque<SchemaDocument> documents_;
    std::set<std::pair<const SchemaFile*, std::string>> known_;
    std::deque<Waiting> waiting_;
    std::optional<Component> xmlImport_;  // of the xml: attributes without a document
    Symbols symbols_[5];
    std::vector<std::pair<QName, Component>> ordered_[5];
    std::map<std::string, std::string> missing_;  // namespaces without a document, and who imports
};

}  // namespace netxml::xsd
