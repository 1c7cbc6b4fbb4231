#include "top_level_index.hpp"

#include "schema_names.hpp"

#include <cstdint>

namespace netxml::tool {

const char* namespaceOf(const XML_DOM_Node* element)
{
    const char* name = nullptr;
    XML_DOM_GetNodeNameSpace(element, nullptr, &name);
    return name;
}

TopLevelIndex::TopLevelIndex(const Schema_Root& root) : root_{root}, untyped_{root}
{
    untypedElements_.reserve(root.elements.count);
    for (std::uint32_t i = 0; i < root.elements.count; ++i) {
        const auto* decl = static_cast<const Schema_ElementDecl*>(root.elements.items[i]);
        if (!decl) continue;
        byName_[textOrEmpty(decl->name)].push_back(decl);
        untypedElements_.push_back(*decl);
        untypedElements_.back().ref = nullptr;
        untypedElements_.back().type = nullptr;
        untypedItems_.push_back(&untypedElements_.back());
    }
    untyped_.elements.items = untypedItems_.data();
    untyped_.elements.count = untyped_.elements.capacity =
        static_cast<std::uint32_t>(untypedItems_.size());
}

const Schema_ElementDecl* TopLevelIndex::find(const XML_DOM_Node* element) const
{
    return firstThat(element, [](const Schema_ElementDecl&) { return true; });
}

bool TopLevelIndex::isSubstitute(const XML_DOM_Node* element, const Schema_ElementDecl& head) const
{
    const Schema_ElementDecl* found = find(element);
    return found && standsFor(*found, head);
}

const Schema_ElementDecl* TopLevelIndex::substitute(const XML_DOM_Node* element,
                                                    const Schema_ElementDecl& head) const
{
    return recordAtEnd(
        firstThat(element, [&](const Schema_ElementDecl& decl) { return standsFor(decl, head); }));
}

const Schema_ElementDecl* TopLevelIndex::documentElement(const XML_DOM_Node* element) const
{
    const Schema_ElementDecl* decl = recordAtEnd(find(element));
    return decl && decl->abstract == 1 ? substitute(element, *decl) : decl;
}

template <class Test>
const Schema_ElementDecl* TopLevelIndex::firstThat(const XML_DOM_Node* element, Test test) const
{
    const auto found = byName_.find(textOrEmpty(XML_DOM_GetNodeName(element)));
    if (found == byName_.end()) return nullptr;
    const char* nameSpace = namespaceOf(element);
    for (const Schema_ElementDecl* decl : found->second) {
        if (namespaceMatches(nameSpace, decl->namespaceName, nullptr) && test(*decl)) return decl;
    }
    return nullptr;
}

}  // namespace netxml::tool
