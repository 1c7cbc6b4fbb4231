// Simple types of a schema as records.
#pragma once

#include "xsd/builtin_types.hpp"
#include "xsd/records.hpp"
#include "xsd/schema_set.hpp"

#include <map>
#include <optional>

namespace netxml::xsd {

// What is known of a simple type beside its record.
struct SimpleType {
    const SimpleTypeRecord* record = nullptr;
    const BuiltinRow* builtin = nullptr;  // the nearest built-in type; nothing for lists and unions
    bool isList = false;
    bool ascii = false;  // all its values are in ASCII
    bool spelt = false;  // equal values may be different texts
    // One that says what its values are, for items of lists; empty when there is none.
    std::string expression;
    bool loose = false;  // the expression admits more
    std::string item;    // of a list: that of its items
};

class SimpleTypes {
public:
    SimpleTypes(SchemaSet& set, SchemaRecords& records, const SchemaOptions& options,
                Diagnostics& diagnostics);

    // The type of this name; the one that admits everything after an error.
    const SimpleType& named(const QName& name, const Component& from);
    // The type that a simpleType element inside a declaration declares.
    const SimpleType& declared(const Component& at);
    // The type of an element or attribute that has `type` or a simpleType inside; nothing when it
    // has neither.
    const SimpleType* ofDeclaration(const Component& at);
    // The type of values that equal one, by the rules of a type.
    const SimpleType* fixedTo(const SimpleType& type, const std::string& value,
                              const SourcePlace& place);
    // A type restricted by the facets among the children of a node.
    const SimpleType& restricted(const SimpleType& base, const Component& at, SimpleTypeRecord& to);
    // A record for a type without a name.
    SimpleTypeRecord& anonymous(const Component& at);

    const SimpleType& builtin(const std::string& name, const Component& from);
    // Of an attribute of the XML Schema instance namespace.
    const SimpleType& instanceType(std::string_view attribute);
    static bool isSimple(const Component& component);

private:
    struct Facets;

    const SimpleType& add(SimpleType type);
    const SimpleType& lower(const Component& at, SimpleTypeRecord& to);
    const SimpleType& lowerList(const Component& at, SimpleTypeRecord& to);
    const SimpleType& lowerUnion(const Component& at, SimpleTypeRecord& to);
    const SimpleTypeRecord* native(const std::string& name);
    const SimpleType& nativeType(const BuiltinRow& row);
    const SimpleType& standing(const BuiltinRow& row);
    const SimpleType& network(const QName& name);
    const SimpleType& listOf(const SimpleType& item, SimpleTypeRecord& to, const SourcePlace& at);
    void addBounds(const SimpleType& base, const SchemaNode& facet, SimpleTypeRecord& to);
    void addLength(const SimpleType& base, const SchemaNode& facet, SimpleTypeRecord& to);
    void addDigits(const SimpleType& base, const SchemaNode& facet, SimpleTypeRecord& to);
    void addEnumerations(const SimpleType& base, const Facets& facets, SimpleTypeRecord& to,
                         SimpleType& type);
    void addPatterns(const Facets& facets, SimpleTypeRecord& to, SimpleType& type);

    SchemaSet& set_;
    SchemaRecords& records_;
    const SchemaOptions& options_;
    Diagnostics& diagnostics_;
    std::deque<SimpleType> types_;
    std::map<QName, const SimpleType*> known_;
    std::map<const SchemaNode*, const SimpleType*> declared_;
    std::map<std::string, const SimpleTypeRecord*> natives_;
    std::map<std::string, const SimpleType*> builtins_;
    std::vector<const SchemaNode*> open_;  // types that are being made
};

}  // namespace netxml::xsd
