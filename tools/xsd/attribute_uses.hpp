// The attributes of complex types as records.
#pragma once

#include "xsd/name_constraint.hpp"
#include "xsd/records.hpp"
#include "xsd/schema_set.hpp"
#include "xsd/simple_types.hpp"

#include <map>
#include <optional>
#include <set>
#include <vector>

namespace netxml::xsd {

// What a type says of attributes, its bases and groups included.
struct AttributeUses {
    struct Wildcard {
        NamespaceConstraint constraint;
        Schema_ProcessContents processContents;
        SourcePlace place;
    };

    std::vector<std::pair<QName, const AttributeRecord*>> uses;  // in their order
    std::optional<Wildcard> wildcard;

    void put(const QName& name, const AttributeRecord* record);
};

class Attributes {
public:
    Attributes(SchemaSet& set, SchemaRecords& records, SimpleTypes& types,
               Diagnostics& diagnostics);

    // The record of a top-level declaration.
    const AttributeRecord* top(const QName& name, const Component& from);
    // What the children of a complexType, extension or restriction say, without any base.
    AttributeUses declaredIn(const Component& at);
    // Of a derived type: with what it takes from its base.
    static AttributeUses derived(const AttributeUses& base, const AttributeUses& own,
                                 bool extension);
    // Puts the attributes and wildcards into a type.
    void fill(ComplexTypeRecord& type, const AttributeUses& uses);

private:
    void addUse(AttributeUses& to, std::set<QName>& own, const Component& at);
    void addGroup(AttributeUses& to, const Component& at);
    void addWildcard(AttributeUses& to, const AttributeUses::Wildcard& wildcard);
    const AttributeRecord* local(const Component& at);
    const AttributeRecord* reference(const Component& at, const QName& name);
    void describe(AttributeRecord& record, const Component& at);
    void fix(AttributeRecord& record, const SchemaNode& node, const SimpleType* type);
    const AttributeGroupRecord* instanceAttributes();

    SchemaSet& set_;
    SchemaRecords& records_;
    SimpleTypes& types_;
    Diagnostics& diagnostics_;
    std::map<QName, const AttributeRecord*> tops_;
    std::map<const SchemaNode*, const AttributeRecord*> locals_;
    std::vector<const SchemaNode*> open_;  // attribute groups that are being read
    std::map<std::pair<const SchemaNode*, const SchemaDocument*>, AttributeUses> groups_;
    const AttributeGroupRecord* instance_ = nullptr;
};

// "true" and "1".
bool isTrue(const std::string& value);

}  // namespace netxml::xsd
