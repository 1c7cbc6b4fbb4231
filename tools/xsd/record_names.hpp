// What the records of a schema are called in generated code, and in which order they stand there.
#pragma once

#include "xsd/records.hpp"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace netxml::xsd {

class RecordNames {
public:
    // `prefix` begins what other files can see.
    RecordNames(const SchemaRecords& records, std::string prefix);

    const std::string& of(const void* record) const { return names_.at(record); }
    bool has(const void* record) const { return names_.contains(record); }

    // What is reached from the top of the schema; each stands behind those it refers to, except
    // that complex types and top-level elements may be referred to before.
    const std::vector<const SimpleTypeRecord*>& simpleTypes() const { return simpleTypes_; }
    const std::vector<const AttributeRecord*>& attributes() const { return attributes_; }
    const std::vector<const AttributeGroupRecord*>& groups() const { return groups_; }
    const std::vector<const ComplexTypeRecord*>& complexTypes() const { return complexTypes_; }
    const std::set<std::string>& builtins() const { return builtins_; }

private:
    std::string topName(const std::string& kind, const RecordBase& record, const std::string& name,
                        const std::string& nameSpace) const;
    bool name(const RecordBase* record, const std::string& proposed);
    void visit(const SimpleTypeRecord* type, const std::string& outer);
    void visit(const AttributeRecord* attribute, const std::string& outer);
    void visit(const AttributeGroupRecord* group, const std::string& outer);
    void visit(const GroupRecord* group, const std::string& outer);
    void visit(const ComplexTypeRecord* type);
    void visitElement(const ElementRecord* element, const std::string& outer);
    void visitTypeOf(const ElementRecord* element);

    std::string prefix_;
    const std::map<std::string, std::string>& namespaces_;
    std::map<const void*, std::string> names_;
    std::set<std::string> taken_;
    std::set<std::string> builtins_;
    std::vector<const SimpleTypeRecord*> simpleTypes_;
    std::vector<const AttributeRecord*> attributes_;
    std::vector<const AttributeGroupRecord*> groups_;
    std::vector<const ComplexTypeRecord*> complexTypes_;
};

// With every character that C does not take in identifiers replaced.
std::string identifierText(std::string_view text);

}  // namespace netxml::xsd
