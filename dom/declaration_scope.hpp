// The declarations in scope while a copy walks down a tree: what findDeclaration() would find from
// each element on the way, without walking back up from each.
#pragma once

#include "dom/namespace.hpp"
#include "support/chunk_stack.hpp"
#include "support/prefix_scope.hpp"

namespace netxml {

class DeclarationScope {
public:
    // `base` is the node above the first element to be entered, or nullptr.
    explicit DeclarationScope(const XML_DOM_Node* base) noexcept : base_{base} {}

    // Adds what an element at `depth` (1 for the first level) declares.
    [[nodiscard]] bool enter(const XML_DOM_Node* element, std::size_t depth) noexcept;
    [[nodiscard]] bool add(const XML_DOM_NsDecl* decl, std::size_t depth) noexcept;
    // True when something that was entered or added declares the prefix; the base is not looked at.
    bool holds(std::string_view prefix) const noexcept { return scope_.find(prefix) != nullptr; }
    void leave(std::size_t depth) noexcept;  // drops what was added at that depth

    // False when memory runs out; otherwise `decl` is what is in scope, or nullptr.
    [[nodiscard]] bool find(const char* prefix, const XML_DOM_NsDecl*& decl) noexcept;

private:
    struct Entry : PrefixEntry {
        const XML_DOM_NsDecl* decl;
        ChunkStack::Mark mark;  // of the memory before this entry
    };

    // So many prefixes are looked up from the base by walking; then all it sees is gathered once.
    static constexpr std::size_t kFewWalks = 8;

    bool gatherBase() noexcept;
    bool remember(std::string_view prefix, const XML_DOM_NsDecl* decl) noexcept;
    const PrefixEntry* known(std::string_view prefix) const noexcept
    {
        const PrefixEntry* entry = scope_.find(prefix);
        return entry ? entry : baseScope_.find(prefix);
    }
    static bool push(PrefixScope& scope, ChunkStack& memory, std::string_view prefix,
                     const XML_DOM_NsDecl* decl, std::size_t depth) noexcept;

    const XML_DOM_Node* base_;
    InlineChunkStack<1024> memory_;
    PrefixScope scope_;
    InlineChunkStack<1024> baseMemory_;
    PrefixScope baseScope_;  // what was looked up from `base` before, also in vain
    std::size_t walks_ = 0;
};

}  // namespace netxml
