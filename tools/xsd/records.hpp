// A compiled schema: what becomes static records in generated code, or records at run time.
//
// The classes mirror the records of netxml/schema.h. All texts are UTF-8; the writers turn them
// into the encoding of trees. A record is referred to by its address, and an arena owns it.
#pragma once

#include "netxml/schema.h"
#include "xsd/diagnostics.hpp"

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace netxml::xsd {

// What all of them have: where they come from, and what generated code calls them.
struct RecordBase {
    SourcePlace place;
    std::string source;      // the declaration as a comment shows it
    std::string identifier;  // what generated code calls it; empty: it is called by where it stands
};

struct FacetRecord {
    Schema_FacetKind kind;
    std::string value;
    Schema_BuiltinKind baseKind;
    bool raw = false;  // the value is in the encoding of trees already
};

struct SimpleTypeRecord : RecordBase {
    std::string builtin;  // of Schema_BLDIN_...(); then the rest is empty
    std::string name;
    std::string nameSpace;
    std::vector<const SimpleTypeRecord*> members;  // one: the base
    std::vector<FacetRecord> facets;
};

struct AttributeRecord : RecordBase {
    const AttributeRecord* ref = nullptr;
    const SimpleTypeRecord* type = nullptr;
    std::string name;
    std::string nameSpace;
    std::optional<std::string> fixed;
    Schema_AttributeUse use = SCHEMA_USE_OPTIONAL;
    Schema_Form form = SCHEMA_FORM_DEFAULT;
};

struct AttributeWildcardRecord : RecordBase {
    std::string targetNamespace;
    std::string constraint;
    Schema_ProcessContents processContents = SCHEMA_PROCESS_STRICT;
};

// Stands for a further wildcard, or for attributes that many types have.
struct AttributeGroupRecord : RecordBase {
    std::vector<const AttributeRecord*> attributes;
    const AttributeWildcardRecord* anyAttribute = nullptr;
};

struct WildcardRecord : RecordBase {
    std::string targetNamespace;
    std::string constraint;
    std::uint32_t min = 1;
    std::uint32_t max = 1;
    Schema_ProcessContents processContents = SCHEMA_PROCESS_STRICT;
};

struct ComplexTypeRecord;

struct ElementRecord : RecordBase {
    const ElementRecord* ref = nullptr;
    std::string name;
    std::string nameSpace;
    std::optional<std::pair<std::string, std::string>> head;  // name and namespace
    const SimpleTypeRecord* simpleType = nullptr;
    const ComplexTypeRecord* complexType = nullptr;
    std::optional<std::string> fixed;
    std::uint32_t min = 1;
    std::uint32_t max = 1;
    Schema_Form form = SCHEMA_FORM_DEFAULT;
    bool top = false;  // registered: others refer to it
    bool abstract = false;
    bool nillable = false;
};

struct GroupRecord;

// One of the three.
struct ParticleRecord {
    const ElementRecord* element = nullptr;
    const WildcardRecord* wildcard = nullptr;
    const GroupRecord* group = nullptr;
};

struct GroupRecord : RecordBase {
    Schema_Compositor compositor = SCHEMA_COMPOSITOR_SEQUENCE;
    std::vector<ParticleRecord> particles;
    std::uint32_t min = 1;
    std::uint32_t max = 1;
};

struct ComplexTypeRecord : RecordBase {
    std::string name;
    std::string nameSpace;
    std::vector<const AttributeRecord*> attributes;
    std::vector<const AttributeGroupRecord*> attributeGroups;
    const AttributeWildcardRecord* anyAttribute = nullptr;
    const SimpleTypeRecord* textType = nullptr;  // of simple content
    const GroupRecord* content = nullptr;
    bool mixed = false;
};

// A compiled schema. Records stay where they are.
struct SchemaRecords {
    std::deque<SimpleTypeRecord> simpleTypes;
    std::deque<AttributeRecord> attributes;
    std::deque<AttributeWildcardRecord> attributeWildcards;
    std::deque<AttributeGroupRecord> attributeGroups;
    std::deque<WildcardRecord> wildcards;
    std::deque<ElementRecord> elements;
    std::deque<GroupRecord> groups;
    std::deque<ComplexTypeRecord> complexTypes;

    // What is registered, in this order.
    std::vector<const SimpleTypeRecord*> topSimpleTypes;
    std::vector<const AttributeRecord*> topAttributes;
    std::vector<const ComplexTypeRecord*> topComplexTypes;
    std::vector<const ElementRecord*> topElements;

    // The network types that are used, and the namespace they are given.
    std::vector<std::string> networkTypes;
    std::string networkNamespace;

    std::string targetNamespace;
    std::map<std::string, std::string> namespaceParts;  // of identifiers, by namespace
    std::vector<std::string> files;
};

}  // namespace netxml::xsd
