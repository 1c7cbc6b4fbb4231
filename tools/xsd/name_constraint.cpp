#include "xsd/name_constraint.hpp"

#include "markup.hpp"

#include <algorithm>
#include <iterator>

namespace netxml::xsd {

using Kind = NamespaceConstraint::Kind;

NamespaceConstraint readConstraint(const std::string& written, const std::string& target)
{
    NamespaceConstraint result;
    if (written.empty() || written == "##any") return result;
    if (written == "##other") {
        result.kind = Kind::Not;
        result.excluded = target;
        return result;
    }
    result.kind = Kind::Listed;
    std::string_view rest = written;
    while (!rest.empty()) {
        const std::size_t size = std::min(rest.find_first_of(tool::kBlanks), rest.size());
        const std::string word{rest.substr(0, size)};
        rest.remove_prefix(std::min(size + 1, rest.size()));
        if (word == "##targetNamespace") result.listed.insert(target);
        else if (word == "##local") result.listed.insert("");
        else if (!word.empty()) result.listed.insert(word);
    }
    return result;
}

NamespaceConstraint intersection(const NamespaceConstraint& a, const NamespaceConstraint& b)
{
    if (a.kind == Kind::Any) return b;
    if (b.kind == Kind::Any) return a;
    if (a.kind == Kind::Listed && b.kind == Kind::Listed) {
        NamespaceConstraint result{Kind::Listed, {}, {}};
        std::set_intersection(a.listed.begin(), a.listed.end(), b.listed.begin(), b.listed.end(),
                              std::inserter(result.listed, result.listed.end()));
        return result;
    }
    if (a.kind == Kind::Not && b.kind == Kind::Not) return a.excluded.empty() ? b : a;
    NamespaceConstraint result = a.kind == Kind::Listed ? a : b;
    result.listed.erase(a.kind == Kind::Not ? a.excluded : b.excluded);
    result.listed.erase("");
    return result;
}

NamespaceConstraint unionOf(const NamespaceConstraint& a, const NamespaceConstraint& b)
{
    if (a.kind == Kind::Any || b.kind == Kind::Any) return {};
    if (a.kind == Kind::Listed && b.kind == Kind::Listed) {
        NamespaceConstraint result = a;
        result.listed.insert(b.listed.begin(), b.listed.end());
        return result;
    }
    if (a.kind == Kind::Not && b.kind == Kind::Not)
        return a.excluded == b.excluded ? a : NamespaceConstraint{Kind::Not, {}, {}};
    const NamespaceConstraint& negation = a.kind == Kind::Not ? a : b;
    const std::set<std::string>& listed = a.kind == Kind::Not ? b.listed : a.listed;
    const bool excluded = listed.contains(negation.excluded);
    const bool none = listed.contains("");
    if (none) return {};                       // at the most one namespace too many
    if (excluded) return {Kind::Not, {}, {}};  // all but no namespace
    return negation;
}

std::vector<ConstraintText> constraintTexts(const NamespaceConstraint& constraint)
{
    if (constraint.kind == Kind::Any) return {{"##any", {}}};
    if (constraint.kind == Kind::Not) return {{"##other", constraint.excluded}};
    std::string names;
    std::vector<ConstraintText> result;
    for (const std::string& name : constraint.listed) {
        if (name.empty()) result.push_back({{}, {}});
        else names += (names.empty() ? "" : " ") + name;
    }
    if (!names.empty()) result.insert(result.begin(), {names, {}});
    return result;
}

}  // namespace netxml::xsd
