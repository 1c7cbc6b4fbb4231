// A start tag as the scanner hands it to a sink, and the rule that its attributes differ.
#pragma once

#include "parser/bindings.hpp"
#include "support/grow_buffer.hpp"

namespace netxml {

struct TagAttribute {
    QName name;
    Span value;
    Resolution nameSpace;
};

struct StartTag {
    const QName& name;
    Resolution nameSpace;
    Binding* newestBinding;  // of all in scope; those of this tag come first, newest first
    std::size_t depth;       // tells them from the others
    std::size_t declarationCount;
    const TagAttribute* attributes;
    std::size_t attributeCount;
};

// Finds two attributes with the same local name and the same namespace name.
class AttributeCheck {
public:
    // None, AttributeRedefined or NoMemory.
    ParseError distinct(const TagAttribute* attributes, std::size_t count) noexcept;

private:
    // Few are compared pair by pair; more go through a table with a key nobody knows.
    static constexpr std::size_t kFew = 16;

    // Of a namespace name, kept with its binding: many attributes may share a long one.
    std::uint64_t nameHash(const Resolution& nameSpace) const noexcept;

    GrowBuffer<const TagAttribute*> table_;
    HashKey key_{};
    bool keyed_ = false;
};

}  // namespace netxml
