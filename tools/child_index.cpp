#include "child_index.hpp"

#include "schema_names.hpp"

#include <cstdint>
#include <unordered_set>

namespace netxml::tool {
namespace {

Declared checkedBy(const Schema_ElementDecl& decl)
{
    if (!decl.type) return {Declared::Kind::Unchecked, nullptr};
    return {Declared::Kind::Checked, &decl};
}

bool isSimple(const Schema_Derivation& derivation)
{
    return derivation.kind == SCHEMA_KIND_SIMPLE_RESTRICTION ||
           derivation.kind == SCHEMA_KIND_SIMPLE_EXTENSION;
}

bool areAlike(const Schema_ElementDecl& a, const Schema_ElementDecl& b)
{
    return a.type == b.type && a.fixed == b.fixed && a.nillable == b.nillable &&
           textOrEmpty(a.value) == textOrEmpty(b.value);
}

}  // namespace

ChildIndex::ChildIndex(const Schema_ComplexType& type, const TopLevelIndex& top) : top_{top}
{
    addType(type);
    for (const Schema_ElementDecl& decl : named_)
        particles_.push_back({&decl, SCHEMA_KIND_ELEMENT});
    for (const Schema_ElementDecl& head : heads_)
        particles_.push_back({&head, SCHEMA_KIND_ELEMENT});
    for (const Schema_Wildcard& wildcard : wildcards_)
        particles_.push_back({&wildcard, SCHEMA_KIND_WILDCARD});
}

// The models that make up the content: an extension's follows its base's, a restriction's replaces
// it, and simple content has its base's.
void ChildIndex::addType(const Schema_ComplexType& type)
{
    std::vector<const Schema_ModelGroup*> models;  // the last one comes first
    std::unordered_set<const Schema_ComplexType*> met;
    const Schema_ComplexType* t = &type;
    while (t && t->derivation && met.insert(t).second) {
        const Schema_Derivation& derivation = *t->derivation;
        if (!isSimple(derivation)) models.push_back(derivation.content);
        const bool goesOn = derivation.kind != SCHEMA_KIND_COMPLEX_RESTRICTION &&
                            derivation.baseKind == SCHEMA_KIND_COMPLEX_TYPE;
        t = goesOn ? static_cast<const Schema_ComplexType*>(derivation.base) : nullptr;
    }
    if (t && !t->derivation) models.push_back(t->content);
    for (auto model = models.rbegin(); model != models.rend(); ++model) addModel(*model);
}

void ChildIndex::addModel(const Schema_ModelGroup* model)
{
    if (!model) return;
    std::unordered_set<const Schema_ModelGroup*> met{model};
    std::vector<Schema_Object> waiting{{model, SCHEMA_KIND_MODEL_GROUP}};
    while (!waiting.empty()) {
        const Schema_Object particle = waiting.back();
        waiting.pop_back();
        if (particle.kind == SCHEMA_KIND_ELEMENT) {
            addElement(*static_cast<const Schema_ElementDecl*>(particle.def));
        } else if (particle.kind == SCHEMA_KIND_WILDCARD) {
            wildcards_.push_back(*static_cast<const Schema_Wildcard*>(particle.def));
            wildcards_.back().minOccurs = wildcards_.back().maxOccurs = 1;
        } else if (particle.kind == SCHEMA_KIND_MODEL_GROUP) {
            const auto& group = *static_cast<const Schema_ModelGroup*>(particle.def);
            if (!group.particles) continue;
            for (std::uint32_t i = group.particleCount; i-- != 0;) {
                const Schema_Object& inner = group.particles[i];
                if (!inner.def) continue;
                if (inner.kind == SCHEMA_KIND_MODEL_GROUP &&
                    !met.insert(static_cast<const Schema_ModelGroup*>(inner.def)).second)
                    continue;
                waiting.push_back(inner);
            }
        }
    }
}

void ChildIndex::addElement(const Schema_ElementDecl& particle)
{
    const Schema_ElementDecl* final = recordAtEnd(&particle);
    if (!final) return;
    Schema_ElementDecl decl = *final;
    decl.minOccurs = decl.maxOccurs = 1;
    if (decl.abstract == 1) {
        heads_.push_back(decl);
        return;
    }
    decl.namespaceName = expectedNamespace(particle, *final, top_.root().elementFormDefault);
    decl.form = SCHEMA_FORM_QUALIFIED;
    if (particle.minOccurs > 1) severalTimes_.insert(textOrEmpty(decl.name));
    std::vector<Schema_ElementDecl*>& alike = byName_[textOrEmpty(decl.name)];
    for (Schema_ElementDecl* other : alike) {
        if (textOrEmpty(other->namespaceName) != textOrEmpty(decl.namespaceName)) continue;
        if (!areAlike(*other, decl)) other->type = nullptr;
        return;
    }
    named_.push_back(decl);
    alike.push_back(&named_.back());
}

Declared ChildIndex::find(const XML_DOM_Node* child) const
{
    const auto found = byName_.find(textOrEmpty(XML_DOM_GetNodeName(child)));
    if (found != byName_.end()) {
        const char* nameSpace = namespaceOf(child);
        for (const Schema_ElementDecl* decl : found->second) {
            if (namespaceMatches(nameSpace, decl->namespaceName, nullptr)) return checkedBy(*decl);
        }
    }
    for (const Schema_ElementDecl& head : heads_) {
        if (!top_.isSubstitute(child, head)) continue;
        const Schema_ElementDecl* decl = top_.substitute(child, head);
        return decl ? checkedBy(*decl) : Declared{};
    }
    return findWildcard(child);
}

const Schema_ElementDecl* ChildIndex::onlyOneCalled(const char* name) const
{
    const auto found = byName_.find(textOrEmpty(name));
    return found != byName_.end() && found->second.size() == 1 ? found->second.front() : nullptr;
}

const Schema_ElementDecl* ChildIndex::singleCalled(const char* name) const
{
    return severalTimes_.count(textOrEmpty(name)) == 0 ? onlyOneCalled(name) : nullptr;
}

Declared ChildIndex::findAccepted(const XML_DOM_Node* child) const
{
    const bool byNameOnly = heads_.empty() && wildcards_.empty();
    if (const auto* decl = byNameOnly ? onlyOneCalled(XML_DOM_GetNodeName(child)) : nullptr)
        return checkedBy(*decl);
    return find(child);
}

// A strict wildcard leaves what no top-level declaration knows to those behind it.
Declared ChildIndex::findWildcard(const XML_DOM_Node* child) const
{
    for (const Schema_Wildcard& wildcard : wildcards_) {
        if (!namespaceMatches(namespaceOf(child), wildcard.namespaceName, wildcard.targetNamespace))
            continue;
        if (wildcard.processContents == SCHEMA_PROCESS_SKIP)
            return {Declared::Kind::Unchecked, nullptr};
        if (const Schema_ElementDecl* found = top_.find(child)) {
            const Schema_ElementDecl* decl = recordAtEnd(found);
            if (decl && decl->abstract == 1) decl = top_.substitute(child, *decl);
            return decl ? checkedBy(*decl) : Declared{};
        }
        if (wildcard.processContents == SCHEMA_PROCESS_LAX)
            return {Declared::Kind::Unchecked, nullptr};
    }
    return {};
}

}  // namespace netxml::tool
