// A schema document as a tree of its elements, with names resolved and places kept.
#pragma once

#include "outcome.hpp"
#include "xsd/diagnostics.hpp"

#include <deque>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace netxml::xsd {

inline constexpr std::string_view kSchemaNamespace = "http://www.w3.org/2001/XMLSchema";
inline constexpr std::string_view kInstanceNamespace = "http://www.w3.org/2001/XMLSchema-instance";
inline constexpr std::string_view kXmlNamespace = "http://www.w3.org/XML/1998/namespace";

// A name with its namespace; an empty one is none.
struct QName {
    std::string nameSpace;
    std::string local;

    bool operator==(const QName&) const = default;
    bool operator<(const QName& other) const
    {
        return std::tie(nameSpace, local) < std::tie(other.nameSpace, other.local);
    }
};

// "{namespace}local", or the local name alone.
std::string shown(const QName& name);

struct SchemaNode {
    struct Attribute {
        QName name;
        std::string value;
    };

    // An attribute without a namespace; nothing when it is absent.
    const std::string* find(std::string_view name) const;
    std::string get(std::string_view name, std::string_view otherwise = "") const;
    // Of the namespace of XML Schema.
    bool is(std::string_view local) const
    {
        return name.local == local && name.nameSpace == kSchemaNamespace;
    }
    // The first child element of this name, or nothing.
    const SchemaNode* child(std::string_view local) const;
    // The namespace that a prefix is bound to here; nothing when it is not bound. The empty prefix
    // is bound to no namespace unless something else is declared.
    const std::string* nameSpaceOf(std::string_view prefix) const;

    QName name;
    std::vector<Attribute> attributes;
    std::vector<std::pair<std::string, std::string>> declarations;  // prefix and namespace
    const SchemaNode* parent = nullptr;
    std::vector<const SchemaNode*> children;
    std::string text;  // of its own, without that of its children
    SourcePlace place;
};

// One document. Neither copied nor moved: its nodes know each other's addresses.
class SchemaFile {
public:
    // Reads the file at `path`. Throws tool::Failure when it cannot be read, is not well-formed, or
    // nests deeper than kMostNesting elements.
    explicit SchemaFile(const std::string& path);
    // A document that is built in; `name` stands in messages.
    SchemaFile(std::string name, std::string_view text);
    SchemaFile(const SchemaFile&) = delete;
    SchemaFile& operator=(const SchemaFile&) = delete;

    const SchemaNode& root() const { return nodes_.front(); }
    const std::string& name() const { return name_; }

private:
    static constexpr unsigned kMostNesting = 200;
    class Builder;

    void build(std::string bytes);

    std::string name_;
    std::deque<SchemaNode> nodes_;
};

}  // namespace netxml::xsd
