// The elements that may stand in an element of a complex type, without their order and number.
#pragma once

#include "top_level_index.hpp"

#include <deque>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace netxml::tool {

// What a child is checked by.
struct Declared {
    enum class Kind {
        Unknown,    // by nothing: it may not stand there at all
        Unchecked,  // by nothing: whatever it holds is fine
        Checked
    };

    Kind kind = Kind::Unknown;
    const Schema_ElementDecl* decl = nullptr;  // of Checked; not abstract, references followed
};

// Particles are looked up in this order: elements by name, substitutes of abstract heads,
// wildcards. Of several elements with one name and namespace nobody can tell which one a child is
// unless they are alike; then it is not checked.
class ChildIndex {
public:
    // The type and the top-level elements must live as long as this.
    ChildIndex(const Schema_ComplexType& type, const TopLevelIndex& top);
    ChildIndex(const ChildIndex&) = delete;
    ChildIndex& operator=(const ChildIndex&) = delete;

    Declared find(const XML_DOM_Node* child) const;

    // The same for a child that validation has accepted here: mostly its name alone tells, and the
    // namespace need not be searched for.
    Declared findAccepted(const XML_DOM_Node* child) const;

    // The element particle of a name, with the namespace that it expects, when one element of that
    // name is all that may have to stand; else nothing.
    const Schema_ElementDecl* singleCalled(const char* name) const;

    // Whether a choice of all particles finds for each child what find() does. A run of a wildcard
    // takes what another particle is looked up for.
    bool isChoice() const { return wildcards_.empty() || particles_.size() == 1; }

    // All particles in the order in which they are looked up, each to occur once.
    const std::vector<Schema_Object>& particles() const { return particles_; }

private:
    void addType(const Schema_ComplexType& type);
    void addModel(const Schema_ModelGroup* model);
    void addElement(const Schema_ElementDecl& particle);
    const Schema_ElementDecl* onlyOneCalled(const char* name) const;
    Declared findWildcard(const XML_DOM_Node* child) const;

    const TopLevelIndex& top_;
    std::deque<Schema_ElementDecl> named_;  // each expects its namespace as it is
    std::deque<Schema_ElementDecl> heads_;
    std::deque<Schema_Wildcard> wildcards_;
    std::unordered_map<std::string_view, std::vector<Schema_ElementDecl*>> byName_;
    std::unordered_set<std::string_view>
        severalTimes_;  // names of those that must stand twice or more
    std::vector<Schema_Object> particles_;
};

}  // namespace netxml::tool
