#include "xsd/name_constraint.hpp"

#include "markup.hpp"

#include <algorithm>
#include <iterator>

namespace netxml::xsd {

using Admits = NamespaceConstraint::Kind;

NamespaceConstraint readConstraint(const std::string& written, const std::string& target)
{
    NamespaceConstraint result;
    if (written.empty() || written == "##any") return result;
    if (written == "##other") {
        result.kind = Admits::Not;
        result.excluded = target;
        return result;
    }
    result.kind = Admits::Listed;
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
    if (a.kind == Admits::Any) return b;
    if (b.kind == Admits::Any) return a;
    if (a.kind == Admits::Listed && b.kind == Admits::Listed) {
        NamespaceConstraint result{Admits::Listed, {}, {}};
        std::set_intersection(a.listed.begin(), a.listed.end(), b.listed.begin(), b.listed.end(),
                              std::inserter(result.listed, result.listed.end()));
        return result;
    }
    if (a.kind == Admits::Not && b.kind == Admits::Not) return a.excluded.empty() ? b : a;
    NamespaceConstraint result = a.kind == Admits::Listed ? a : b;
    result.listed.erase(a.kind == Admits::Not ? a.excluded : b.excluded);
    result.listed.erase("");
    return result;
}

NamespaceConstraint unionOf(const NamespaceConstraint& a, const NamespaceConstraint& b)
{
    if (a.kind == Admits::Any || b.kind == Admits::Any) return {};
    if (a.kind == Admits::Listed && b.kind == Admits::Listed) {
        NamespaceConstraint result = a;
        result.listed.insert(b.listed.begin(), b.listed.end());
        return result;
    }
    if (a.kind == Admits::Not && b.kind == Admits::Not)
        return a.excluded == b.excluded ? a : NamespaceConstraint{Admits::Not, {}, {}};
    const NamespaceConstraint& negation = a.kind == Admits::Not ? a : b;
    const std::set<std::string>& listed = a.kind == Admits::Not ? b.listed : a.listed;
    const bool excluded = listed.contains(negation.excluded);
    const bool none = listed.contains("");
    if (none) return {};                         // at the most one namespace too many
    if (excluded) return {Admits::Not, {}, {}};  // all but no namespace
    return negation;
}

std::vector<ConstraintText> constraintTexts(const NamespaceConstraint& constraint)
{
    if (constraint.kind == Admits::Any) return {{"##any", {}}};
    if (constraint.kind == Admits::Not) return {{"##other", constraint.excluded}};
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
