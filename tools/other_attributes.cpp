#include "other_attributes.hpp"

#include "schema_names.hpp"

#include <algorithm>
#include <cstdint>
#include <unordered_set>

namespace netxml::tool {

struct OtherAttributes::Task {
    const Schema_ComplexType* type = nullptr;  // one of these four
    const Schema_Derivation* derivation = nullptr;
    const Schema_AttributeGroup* group = nullptr;
    const Schema_AttributeGroup* endOfGroup = nullptr;
};

OtherAttributes::OtherAttributes(Schema_Form defaultForm)
    : defaultForm_{defaultForm}, anyChild_{&anything_, SCHEMA_KIND_WILDCARD}
{
    anything_.namespaceName = "##any";
    anything_.processContents = SCHEMA_PROCESS_SKIP;
    anything_.maxOccurs = SCHEMA_UNBOUNDED;
    content_.compositor = SCHEMA_COMPOSITOR_SEQUENCE;
    content_.particles = &anyChild_;
    content_.particleCount = 1;
    content_.minOccurs = content_.maxOccurs = 1;
    type_.content = &content_;
    type_.mixed = 1;
}

// In the order of validation: of a type its own attributes, its derivation's, all of its base, and
// its groups; of a group the groups in it and then its own. A group counts once.
void OtherAttributes::addType(const Schema_ComplexType& type)
{
    std::unordered_set<const void*> met;
    std::vector<Task> tasks{Task{&type}};
    const auto pushGroups = [&](const Schema_AttributeGroup* const* groups, std::uint32_t count) {
        for (std::uint32_t i = groups ? count : 0; i-- != 0;)
            tasks.push_back({nullptr, nullptr, groups[i]});
    };
    while (!tasks.empty()) {
        const Task task = tasks.back();
        tasks.pop_back();
        if (task.type) {
            const Schema_ComplexType& t = *task.type;
            if (!met.insert(&t).second) continue;
            addScope(t.attributes, t.attributeCount, t.anyAttribute);
            pushGroups(t.attributeGroups, t.attributeGroupCount);
            if (!t.derivation) continue;
            if (t.derivation->baseKind == SCHEMA_KIND_COMPLEX_TYPE)
                tasks.push_back({static_cast<const Schema_ComplexType*>(t.derivation->base)});
            tasks.push_back({nullptr, t.derivation});
        } else if (task.derivation) {
            const Schema_Derivation& d = *task.derivation;
            addScope(d.attributes, d.attributeCount, d.anyAttribute);
            pushGroups(d.attributeGroups, d.attributeGroupCount);
        } else if (task.endOfGroup) {
            const Schema_AttributeGroup& g = *task.endOfGroup;
            addScope(g.attributes, g.attributeCount, g.anyAttribute);
        } else if (const Schema_AttributeGroup* g = recordAtEnd(task.group)) {
            if (!met.insert(g).second) continue;
            tasks.push_back({nullptr, nullptr, nullptr, g});
            pushGroups(g->attributeGroups, g->attributeGroupCount);
        }
    }
}

// Of these only the language is checked.
void OtherAttributes::addCommon()
{
    struct {
        const char* nameSpace;
        const char* name;
        void* type;
    } const kCommon[] = {
        {XML_NAMESPACE_XML, "lang", Schema_BLDIN_language()},
        {XML_NAMESPACE_XML, "space", Schema_BLDIN_anySimpleType()},
        {XML_NAMESPACE_XML, "base", Schema_BLDIN_anySimpleType()},
        {XML_NAMESPACE_SCHEMA_INSTANCE, "nil", Schema_BLDIN_anySimpleType()},
    };
    Scope scope{{}, nullptr};
    for (const auto& row : kCommon) {
        Schema_AttributeDecl decl{};
        decl.name = row.name;
        decl.namespaceName = row.nameSpace;
        decl.form = SCHEMA_FORM_QUALIFIED;
        decl.type = static_cast<const Schema_SimpleType*>(row.type);
        common_.push_back(decl);
        scope.uses.push_back(&common_.back());
    }
    scopes_.push_back(std::move(scope));
}

void OtherAttributes::addScope(const Schema_AttributeDecl* const* uses, std::uint32_t count,
                               const Schema_AttributeWildcard* wildcard)
{
    if (!uses) count = 0;
    if (count != 0 || wildcard) scopes_.push_back({{uses, uses + count}, wildcard});
}

bool OtherAttributes::leaveOut(const Schema_ValidateResult& result)
{
    LeftOut out{std::string{textOrEmpty(result.attrName)},
                std::string{textOrEmpty(result.attrNamespace)},
                result.code == SCHEMA_ERROR_ATTRIBUTE_MISSING};
    if (std::find(leftOut_.begin(), leftOut_.end(), out) != leftOut_.end()) return false;
    leftOut_.push_back(std::move(out));
    const LeftOut& kept = leftOut_.back();
    if (kept.isMissing) return true;
    Schema_AttributeDecl admitted{};
    admitted.name = kept.name.c_str();
    admitted.namespaceName = kept.nameSpace.c_str();
    admitted.form = SCHEMA_FORM_QUALIFIED;
    admitted.type = static_cast<const Schema_SimpleType*>(Schema_BLDIN_anySimpleType());
    admitted_.push_back(admitted);
    return true;
}

// A missing attribute is named by its declaration, one that stands there by the document.
bool OtherAttributes::isLeftOut(const Schema_AttributeDecl& use) const
{
    const Schema_AttributeDecl* final = recordAtEnd(&use);
    if (!final) return false;
    const std::string_view name = textOrEmpty(final->name);
    const std::string_view declared = textOrEmpty(final->namespaceName);
    const std::string_view expected = textOrEmpty(expectedNamespace(use, *final, defaultForm_));
    return std::any_of(leftOut_.begin(), leftOut_.end(), [&](const LeftOut& out) {
        return out.name == name && out.nameSpace == (out.isMissing ? declared : expected);
    });
}

const Schema_ComplexType& OtherAttributes::type()
{
    uses_.clear();
    groups_.clear();
    groupList_.clear();
    const auto add = [&](const Schema_AttributeWildcard* wildcard) {
        Schema_AttributeGroup group{};
        group.attributes = uses_.back().data();
        group.attributeCount = static_cast<std::uint32_t>(uses_.back().size());
        group.anyAttribute = wildcard;
        groups_.push_back(group);
        groupList_.push_back(&groups_.back());
    };
    uses_.emplace_back();
    for (const Schema_AttributeDecl& decl : admitted_) uses_.back().push_back(&decl);
    add(nullptr);
    for (const Scope& scope : scopes_) {
        uses_.emplace_back();
        for (const Schema_AttributeDecl* use : scope.uses) {
            if (use && !isLeftOut(*use)) uses_.back().push_back(use);
        }
        add(scope.wildcard);
    }
    type_.attributeGroups = groupList_.data();
    type_.attributeGroupCount = static_cast<std::uint32_t>(groupList_.size());
    return type_;
}

}  // namespace netxml::tool
