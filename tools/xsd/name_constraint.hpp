// Which namespaces a wildcard admits, and how wildcards combine (XML Schema part 1, sections 3.10.6
// and 3.4.2).
#pragma once

#include <set>
#include <string>
#include <vector>

namespace netxml::xsd {

struct NamespaceConstraint {
    enum class Kind { Any, Not, Listed };

    Kind kind = Kind::Any;
    std::string excluded;          // Not: this one, and none
    std::set<std::string> listed;  // the empty text is no namespace
};

// As the attribute `namespace` of a wildcard has it.
NamespaceConstraint readConstraint(const std::string& written, const std::string& target);

NamespaceConstraint intersection(const NamespaceConstraint& a, const NamespaceConstraint& b);
NamespaceConstraint unionOf(const NamespaceConstraint& a, const NamespaceConstraint& b);

// What a record's wildcard says: a constraint and the namespace that "##other" excludes. No
// namespace cannot stand in a list with others, so there may be two.
struct ConstraintText {
    std::string constraint;
    std::string targetNamespace;
};
std::vector<ConstraintText> constraintTexts(const NamespaceConstraint& constraint);

}  // namespace netxml::xsd
