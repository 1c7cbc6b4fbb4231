#include "dom/declaration_scope.hpp"

namespace netxml {

bool DeclarationScope::push(PrefixScope& scope, ChunkStack& memory, std::string_view prefix,
                            const XML_DOM_NsDecl* decl, std::size_t depth) noexcept
{
    const ChunkStack::Mark mark = memory.mark();
    void* block = memory.allocate(sizeof(Entry));
    if (!block) return false;
    Entry* entry = new (block) Entry{{nullptr, nullptr, prefix, depth}, decl, mark};
    if (scope.push(entry)) return true;
    memory.release(mark);
    return false;
}

bool DeclarationScope::enter(const XML_DOM_Node* element, std::size_t depth) noexcept
{
    for (const XML_DOM_NsDecl* decl = element->firstNs; decl; decl = decl->next) {
        if (!add(decl, depth)) return false;
    }
    return true;
}

bool DeclarationScope::add(const XML_DOM_NsDecl* decl, std::size_t depth) noexcept
{
    return push(scope_, memory_, decl->prefix ? decl->prefix : "", decl, depth);
}

void DeclarationScope::leave(std::size_t depth) noexcept
{
    while (const PrefixEntry* entry = scope_.newest()) {
        if (entry->depth != depth) return;
        const ChunkStack::Mark mark = static_cast<const Entry*>(entry)->mark;
        scope_.pop();
        memory_.release(mark);
    }
}

// Nearest first, and on one element earliest first: what is found already wins.
bool DeclarationScope::gatherBase() noexcept
{
    for (const XML_DOM_Node* node = base_; node; node = node->parent) {
        for (const XML_DOM_NsDecl* decl = node->firstNs; decl; decl = decl->next) {
            const std::string_view prefix{decl->prefix ? decl->prefix : ""};
            if (!baseScope_.find(prefix) && !push(baseScope_, baseMemory_, prefix, decl, 0))
                return false;
        }
    }
    return true;
}

// The text that was asked for may be gone by the next question; the declaration's own stays.
bool DeclarationScope::remember(std::string_view prefix, const XML_DOM_NsDecl* decl) noexcept
{
    const char* kept = decl ? decl->prefix : nullptr;
    if (!kept) {
        const auto* text = reinterpret_cast<const std::uint8_t*>(prefix.data());
        kept = baseMemory_.copyText(text, prefix.size());
    }
    return kept && push(baseScope_, baseMemory_, {kept, prefix.size()}, decl, 0);
}

bool DeclarationScope::find(const char* prefix, const XML_DOM_NsDecl*& decl) noexcept
{
    const std::string_view wanted{prefix ? prefix : ""};
    const PrefixEntry* entry = known(wanted);
    if (!entry && ++walks_ == kFewWalks) {
        if (!gatherBase()) return false;
        entry = known(wanted);
    }
    if (entry) {
        decl = static_cast<const Entry*>(entry)->decl;
        return true;
    }
    // Once all is gathered, only the built-in declaration can still be found.
    decl = findDeclaration(walks_ < kFewWalks ? base_ : nullptr, prefix);
    return remember(wanted, decl);
}

}  // namespace netxml
