// The namespace bindings in scope at a place of the document.
#pragma once

#include "netxml/dom.h"
#include "parser/parse_error.hpp"
#include "parser/qname.hpp"
#include "support/chunk_stack.hpp"
#include "support/prefix_scope.hpp"

struct XML_DOM_NsDecl;

namespace netxml {

// One binding, in the memory of the element that declares it; dies with that element.
struct Binding : PrefixEntry {
    Span prefixSpan;  // as `prefix`; both texts have a NUL behind them
    Span name;
    const XML_DOM_NsDecl* declaration;  // what a tree being built made of it
    std::uint64_t nameHash;  // of the name, once `hashed`: a long one is hashed only once
    bool hashed;

    bool isDefault() const noexcept { return prefixSpan.empty(); }
    // NULL for the default namespace.
    const char* prefixText() const noexcept
    {
        return isDefault() ? nullptr : prefixSpan.view().data();
    }
    const Binding* olderBinding() const noexcept { return static_cast<const Binding*>(older); }
};

// What a prefix stands for: a binding, or the XML namespace for `xml` without one.
struct Resolution {
    Binding* binding = nullptr;
    std::string_view name{};  // without data where nothing is bound

    bool bound() const noexcept { return name.data() != nullptr; }
    const char* text() const noexcept { return name.data(); }
};

class Bindings {
public:
    // Adds what an element at `depth` declares; the texts are copied into `memory`, which must be
    // released no earlier than drop() is called.
    ParseError declare(ChunkStack& memory, Span prefix, Span name, std::size_t depth) noexcept;
    // Drops what was declared at `depth`.
    void drop(std::size_t depth) noexcept
    {
        const PrefixEntry* entry = scope_.newest();
        if (entry && entry->depth == depth) dropNewest(depth);
    }

    Binding* newest() const noexcept { return static_cast<Binding*>(scope_.newest()); }
    Resolution resolve(std::string_view prefix) const noexcept
    {
        return prefix.empty() ? default_ : resolvePrefix(prefix);
    }

private:
    Resolution resolvePrefix(std::string_view prefix) const noexcept;
    void dropNewest(std::size_t depth) noexcept;

    PrefixScope scope_;
    Resolution default_;  // what an unprefixed name is in
};

// True when a prefix (empty for the default namespace) may be declared for a namespace name; a
// prefix that is given but empty counts as given.
bool mayDeclare(bool prefixGiven, std::string_view prefix, std::string_view name) noexcept;

}  // namespace netxml
