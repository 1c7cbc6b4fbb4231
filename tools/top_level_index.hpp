// The top-level elements of a schema by their names.
#pragma once

#include "netxml/dom.h"
#include "netxml/schema.h"

#include <string_view>
#include <unordered_map>
#include <vector>

namespace netxml::tool {

// The namespace of an element; NULL: none.
const char* namespaceOf(const XML_DOM_Node* element);

// The schema must live as long as the index.
class TopLevelIndex {
public:
    explicit TopLevelIndex(const Schema_Root& root);
    TopLevelIndex(const TopLevelIndex&) = delete;
    TopLevelIndex& operator=(const TopLevelIndex&) = delete;

    const Schema_Root& root() const { return root_; }
    // The same with top-level elements that have no type, so that nothing in them is checked.
    const Schema_Root& untyped() const { return untyped_; }

    // The first registered declaration of the element's name and namespace, as it is registered; or
    // nothing.
    const Schema_ElementDecl* find(const XML_DOM_Node* element) const;

    // Whether the declaration that find() has for an element names an abstract head.
    bool isSubstitute(const XML_DOM_Node* element, const Schema_ElementDecl& head) const;

    // What is used in the place of an abstract head: the first declaration of the element's name
    // and namespace that names it, references followed; or nothing.
    const Schema_ElementDecl* substitute(const XML_DOM_Node* element,
                                         const Schema_ElementDecl& head) const;

    // What a document element is checked by, references and abstract heads followed; or nothing.
    const Schema_ElementDecl* documentElement(const XML_DOM_Node* element) const;

private:
    template <class Test>
    const Schema_ElementDecl* firstThat(const XML_DOM_Node* element, Test test) const;

    const Schema_Root& root_;
    Schema_Root untyped_;
    std::vector<Schema_ElementDecl> untypedElements_;
    std::vector<const void*> untypedItems_;
    std::unordered_map<std::string_view, std::vector<const Schema_ElementDecl*>> byName_;
};

}  // namespace netxml::tool
